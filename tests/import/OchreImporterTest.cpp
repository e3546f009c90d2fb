#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "import/ImportKinds.h"
#include "import/OchreDocument.h"
#include "import/OchreImporter.h"

namespace tintwork {
namespace {

std::string document(const std::string& body) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<document xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" id="DOC-1" size="800 600">
)" + body + "</document>\n";
}

std::string constantColour(const std::string& name, const std::string& components,
                           const std::string& profile = "sRGB") {
    return R"(<constant xsi:type="Data.ConstantColour" name=")" + name + R"("><colour xsi:type="Data.Colour" profile=")" +
           profile + R"(" components=")" + components + R"("/></constant>)";
}

std::string colourMaterial(const std::string& name, const std::string& colour) {
    return R"(<material name=")" + name + R"(" id="M-)" + name + R"(" shared="1"><layerList><layer id="L1" name="Fill">)"
           R"(<content xsi:type="Data.MaterialColourGenerator">)" + colour + "</content></layer></layerList></material>";
}

std::string colour(const std::string& components, const std::string& profile = "sRGB") {
    return R"(<colour xsi:type="Data.Colour" profile=")" + profile + R"(" components=")" + components + R"("/>)";
}

std::string colourName(const std::string& name) {
    return R"(<colour xsi:type="Data.ColourName" name=")" + name + R"("/>)";
}

struct Imported {
    ProjectItemPtr group = std::make_shared<OchreColorProjectItem>("Root", "ROOT", OchreColorGroup{});
    std::vector<std::string> lines;

    std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const ProjectItemPtr& child : group->group->items) {
            result.push_back(child->name);
        }
        return result;
    }
    const ColorValue& colourOf(std::size_t index) const {
        return group->group->items.at(index)->color->color.lightVariant;
    }
};

Imported importDocument(const std::string& text) {
    Imported result;
    OchreImporter importer;
    importer.diagnostics = [&result](std::string_view line) { result.lines.emplace_back(line); };
    importer.importBytes(text, *result.group);
    return result;
}

std::string readError(const std::string& text) {
    try {
        DocumentReader().readBytes(text);
    } catch (const DocumentReadError& error) {
        return error.message;
    }
    return "no error";
}

TEST(OchreImporter, TakesConstantsThenMaterials) {
    const Imported imported = importDocument(document(
        "<constantList>" + constantColour("Brand", "0.2 0.4 0.6 1") + constantColour("Brand Copy", "0.2 0.4 0.6 1") +
        R"(<constant xsi:type="Data.ConstantValue" name="Radius" value="4"/>)" +
        constantColour("Vivid", "1 0 0.5 0.5", "DisplayP3") + constantColour("Broken", "0.1 x") +
        "</constantList><materialList>" +
        colourMaterial("Plain", colour("0.9 0.8 0.7")) +            // no alpha: opaque
        colourMaterial("Same As Brand", colour("0.2 0.4 0.6 1")) +  // equal to a colour before it
        colourMaterial("By Name", colourName("Vivid")) +            // equal to the constant too
        colourMaterial("Missing", colourName("Nowhere")) +
        colourMaterial("Channel", colour("{Brand} 0.5 {Brand} {Vivid}")) +
        colourMaterial("Formula", colour("0.5*2 0 0 1")) + "</materialList>"));
    EXPECT_EQ(imported.lines, std::vector<std::string>{"TODO parse constant value"});
    ASSERT_EQ(imported.names(), (std::vector<std::string>{"Brand", "Brand Copy", "Vivid", "Plain", "Channel"}));

    EXPECT_EQ(imported.colourOf(0), ColorValue::sRGB(0.2, 0.4, 0.6, 1));
    EXPECT_EQ(imported.colourOf(2), ColorValue(ColorEncoding::displayP3, 1, 0, 0.5, 0.5));
    EXPECT_EQ(imported.group->group->items[2]->color->colorSpace, ColorSpace::displayP3);
    EXPECT_EQ(imported.colourOf(3), ColorValue::sRGB(0.9, 0.8, 0.7, 1));
    // A reference takes the same channel of the constant: red and blue of Brand, alpha of Vivid.
    EXPECT_EQ(imported.colourOf(4), ColorValue::sRGB(0.2, 0.5, 0.6, 0.5));
}

TEST(OchreImporter, MakesASetOfEachGradient) {
    const std::string gradient = R"(<material name="Sunset" id="G1" shared="0"><layerList>
        <layer id="L1" name="Ramp" hidden="1"><content xsi:type="Data.MaterialGradientGenerator"><vertexList>
          <vertex><position x="0" y="0" z="0"/>)" + colour("1 0.5 0 1") + R"(</vertex>
          <vertex><position x="0.5" y="0" z="0"/>)" + colourName("Missing") + R"(</vertex>
          <vertex><position x="1" y="0" z="0"/>)" + colourName("Night") + R"(</vertex>
        </vertexList></content></layer>
        <layer id="L2" name="Tint"><content xsi:type="Data.MaterialColourGenerator">)" +
                                 colour("0.1 0.1 0.3 1") + R"(</content></layer>
      </layerList></material>)";
    const Imported imported = importDocument(document(
        "<constantList>" + constantColour("Night", "0 0 0.2 1") + "</constantList><materialList>" + gradient +
        gradient + "</materialList>"));
    // The second copy of the material adds neither an equal set nor an equal colour.
    ASSERT_EQ(imported.names(), (std::vector<std::string>{"Night", "Sunset", "Sunset"}));
    const ProjectItemPtr& set = imported.group->group->items[1];
    ASSERT_TRUE(set->colorSet.has_value());
    ASSERT_EQ(set->colorSet->colors.size(), 2u);
    // Stops keep their vertex's number; the unreadable second vertex leaves a gap.
    EXPECT_EQ(set->colorSet->colors[0].name, "Gradient Stop 1");
    EXPECT_EQ(set->colorSet->colors[1].name, "Gradient Stop 3");
    EXPECT_EQ(set->colorSet->colors[1].lightVariant, ColorValue::sRGB(0, 0, 0.2, 1));
    EXPECT_TRUE(imported.group->group->items[2]->color.has_value());
}

TEST(OchreImporter, ReadsTheDocumentRecords) {
    const std::string text = document(R"(
      <constantList>)" + constantColour("Ink", "0 0 0 1") + R"(</constantList>
      <materialList><material name="Wash" id="M9" shared="1"><layerList>
        <layer id="L1" name="Ramp"><content xsi:type="Data.MaterialGradientGenerator"><vertexList>
          <vertex><position x="0.25" y="{Ink}" z="1"/>)" + colour("1 1 1 1") + R"(</vertex>
        </vertexList></content></layer>
        <layer id="L2" name="Odd"><content xsi:type="Data.MaterialNoiseGenerator"/></layer>
      </layerList></material></materialList>
      <pageList><page id="P1" name="Cover"><layerList>
        <layer id="A" name="Card" expanded="1"><transform><scale x="1" y="1" z="1"/><centreRotate x="0" y="0" z="1" angle="45"/></transform>
          <content xsi:type="Data.PageGroup"/>
          <layerList>
            <layer id="B" name="Shape" hidden="1"><content xsi:type="Data.PageVectorGroup" materialKey="M9"/></layer>
            <layer id="C" name="Star"><content xsi:type="Data.PageStarShape"/></layer>
            <layer id="D" name="Unknown"><content xsi:type="Data.PageHologram"/></layer>
          </layerList>
        </layer>
      </layerList></page></pageList>)");
    const OchreDocument read = DocumentReader().readBytes(text);
    EXPECT_EQ(read.id, "DOC-1");
    EXPECT_EQ(read.width, 800);
    EXPECT_EQ(read.height, 600);
    ASSERT_EQ(read.materials.size(), 1u);
    EXPECT_TRUE(read.materials[0].isShared);
    ASSERT_EQ(read.materials[0].layers.size(), 1u);  // the unknown generator is left out
    const auto& gradient = std::get<MaterialGradient>(read.materials[0].layers[0].layerContent);
    ASSERT_EQ(gradient.vertices.size(), 1u);
    EXPECT_EQ(gradient.vertices[0].position.x->value, 0.25);
    EXPECT_EQ(gradient.vertices[0].position.y->equation, "{Ink}");
    EXPECT_EQ(gradient.vertices[0].position.y->constantReference(), "Ink");

    ASSERT_EQ(read.pages.size(), 1u);
    ASSERT_EQ(read.pages[0].layers.size(), 1u);
    const OchreDataPageLayer& card = read.pages[0].layers[0];
    EXPECT_TRUE(card.isExpanded);
    EXPECT_EQ(card.layerContent, LayerType::group);
    ASSERT_EQ(card.layers.size(), 2u);
    EXPECT_TRUE(card.layers[0].isHidden);
    EXPECT_EQ(card.layers[0].materialId, "M9");
    EXPECT_EQ(card.layers[1].layerContent, LayerType::star);

    // Expressions: numbers with blanks around them, everything else kept as written.
    EXPECT_EQ(OchreDataExpression::parse(" 1.5 ").value, 1.5);
    EXPECT_EQ(OchreDataExpression::parse("1.5px").type, ExpressionType::equation);
    EXPECT_EQ(OchreDataExpression::parse("inf").type, ExpressionType::equation);
    EXPECT_EQ(OchreDataExpression::parse("{Brand Blue}").constantReference(), "Brand Blue");
    EXPECT_EQ(OchreDataExpression::parse("{A} + {B}").constantReference(), std::nullopt);
    EXPECT_EQ(OchreDataExpression::parse("{}").constantReference(), std::nullopt);
}

TEST(OchreImporter, ReportsUnreadableDocuments) {
    EXPECT_EQ(readError(""), "Unable to read document");
    EXPECT_EQ(readError("\x89PNG\r\n\x1a\n binary"), "Unable to read document");
    EXPECT_EQ(readError("<document id=\"A\" size=\"1 2\">"), "Unable to read document");  // never closed
    EXPECT_EQ(readError("<drawing id=\"A\" size=\"800 600\"/>"), "Invalid document structure");
    EXPECT_EQ(readError("<document id=\"A\"/>"), "Invalid document structure");
    EXPECT_EQ(readError("<document id=\"A\" size=\"800\"/>"), "Invalid document structure");
    EXPECT_EQ(readError("<document id=\"A\" size=\"wide tall\"/>"), "Invalid document structure");
    EXPECT_EQ(readError("<document size=\"800,600\"/>"), "no error");

    // Through the importer every reading failure gives one text, and nothing is added.
    for (const std::string& text : {std::string("not xml at all"), std::string("<drawing size=\"1 1\"/>")}) {
        ProjectItemPtr group = std::make_shared<OchreColorProjectItem>("Root", "ROOT", OchreColorGroup{});
        try {
            OchreImporter().importBytes(text, *group);
            ADD_FAILURE() << "no error for " << text;
        } catch (const DocumentColorParsingError& error) {
            EXPECT_EQ(error.message, "Unable to open Ochre file");
        }
        EXPECT_TRUE(group->group->items.empty());
    }
    ProjectItemPtr group = std::make_shared<OchreColorProjectItem>("Root", "ROOT", OchreColorGroup{});
    EXPECT_THROW(OchreImporter().importColors("/nonexistent/drawing.ochre", *group), DocumentColorParsingError);
}

TEST(OchreImporter, LeavesOutLayersNestedTooDeeply) {
    std::string layers;
    std::string closing;
    for (int depth = 0; depth < 400; ++depth) {
        layers += "<layerList><layer id=\"L\" name=\"n\"><content xsi:type=\"Data.PageGroup\"/>";
        closing += "</layer></layerList>";
    }
    const OchreDocument read =
        DocumentReader().readBytes(document("<pageList><page id=\"P\" name=\"p\">" + layers + closing + "</page></pageList>"));
    int depth = 0;
    for (const auto* level = &read.pages.at(0).layers; !level->empty(); level = &level->front().layers) {
        ++depth;
    }
    EXPECT_EQ(depth, DocumentReader::maxLayerDepth);
}

TEST(OchreImporter, ImportsFilesThroughItsKind) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "tintwork-ochre-tests";
    std::filesystem::create_directories(folder);
    const std::filesystem::path path = folder / "Poster.ochre";
    std::ofstream(path) << document("<constantList>" + constantColour("Ink", "0 0 0 1") + "</constantList>");
    std::vector<std::string> lines;
    ImportOptions options;
    options.diagnostics = [&lines](std::string_view line) { lines.emplace_back(line); };
    const ImportKind* kind = findImportKind("ochre");
    ASSERT_NE(kind, nullptr);
    ProjectItemPtr group = importSource(*kind, path, options);
    EXPECT_EQ(group->name, "Ochre Import - Poster.ochre");
    ASSERT_EQ(group->group->items.size(), 1u);
    EXPECT_EQ(group->group->items[0]->name, "Ink");
    EXPECT_TRUE(lines.empty());
}

}  // namespace
}  // namespace tintwork
