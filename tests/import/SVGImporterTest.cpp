#include <gtest/gtest.h>

#include <set>

#include "ImportTestSupport.h"
#include "import/SVGColor.h"
#include "import/SVGImporter.h"
#include "import/SVGStyleSheet.h"
#include "model/FileIO.h"

namespace tintwork {
namespace {

using testing::describe;

std::string importSVG(std::string_view text) {
    ProjectItemPtr root = testing::newGroupItem();
    SVGImporter().importText(text, *root);
    return describe(*root);
}

std::string errorOf(std::string_view text) {
    ProjectItemPtr root = testing::newGroupItem();
    try {
        SVGImporter().importText(text, *root);
    } catch (const DocumentColorParsingError& error) {
        EXPECT_TRUE(root->group->items.empty());
        return error.message;
    }
    return "no error";
}

TEST(SVGImporter, ReadsStrokeFillAndStopsByElementKind) {
    const std::string result = importSVG(R"svg(<svg fill="#123456" xmlns="http://www.w3.org/2000/svg">
        <defs>
          <linearGradient id="a"><stop offset="0" stop-color="#000"/><stop stop-color="red" fill="#0000ff"/></linearGradient>
        </defs>
        <rect fill="red" stroke-width="2"/>
        <rect stop-color="#00ff00" fill="none" stroke="url(#a)"/>
        <g stroke="#abcdef" fill="Red"><circle fill="rgb(0, 128, 255)"/></g>
        <path style="fill: #FF8800 !important; stroke:#112233"/>
        <text fill=""/>
        <animateTransform fill="freeze"/>
      </svg>)svg");
    // The root's own fill, a stop's fill, a rect's stop colour, "none", "url(...)" and "Red" (names
    // are lower case) count for nothing; red met twice stays under the name it had first.
    EXPECT_EQ(result,
              "Gradient Color: #000000\n"
              "Gradient Color: #FF0000\n"
              "stroke: #ABCDEF\n"
              "fill: #0080FF\n"
              "stroke: #112233\n"
              "fill: #FF8800\n");
}

TEST(SVGImporter, StyleSheetsGiveStyleColors) {
    const std::string result = importSVG(R"(<svg><style><![CDATA[
        /* .old { fill: #111111 } */
        .st0, .st1 { stroke: #434242; opacity: .5 }
        .st2 { fill: url(#SVGID_1_) } .st3{fill:#72a536} .st0 { stroke: #ff0000 }
      ]]></style><path class="st3" fill="#72a536"/></svg>)");
    EXPECT_EQ(result,
              "Style Color: #FF0000\n"
              "Style Color: #434242\n"
              "Style Color: #72A536\n");
}

TEST(SVGStyleSheet, SplitsRulesSelectorsAndDeclarations) {
    SVGStyleSheet sheet;
    sheet.parse(" a , b{fill: red ;stroke:blue; broken ; :x} /* c{fill:green} */ a{fill:#fff}\nc{stroke:#000");
    ASSERT_EQ(sheet.styles.size(), 3u);
    EXPECT_EQ(sheet.styles[0].first, "a");
    EXPECT_EQ(sheet.styles[1].first, "b");
    EXPECT_EQ(sheet.styles[2].first, "c");
    EXPECT_EQ(*sheet.declarations("a"), (SVGStyleSheet::Declarations{{"", "x"}, {"fill", "#fff"}, {"stroke", "blue"}}));
    EXPECT_EQ(sheet.declarations("b")->at("fill"), "red");
    // A block left open runs to the end of the text.
    EXPECT_EQ(sheet.declarations("c")->at("stroke"), "#000");
    EXPECT_EQ(sheet.values({"stroke", "fill"}), (std::vector<std::string>{"blue", "#fff", "blue", "red", "#000"}));
    EXPECT_EQ(sheet.declarations("d"), nullptr);
}

TEST(SVGColor, NamesAndColourText) {
    EXPECT_EQ(SVGColor("gray").nsColor, ColorValue::sRGB(128 / 255.0, 128 / 255.0, 128 / 255.0));
    EXPECT_EQ(SVGColor("rebeccapurple").nsColor, std::nullopt);
    EXPECT_EQ(SVGColor("currentcolor").nsColor, ColorValue::sRGB(0, 0, 0));
    EXPECT_EQ(SVGColor("currentColor").nsColor, std::nullopt);
    EXPECT_EQ(SVGColor("Red").nsColor, std::nullopt);
    EXPECT_EQ(SVGColor("#F").nsColor, ColorValue::sRGB(1, 1, 1));
    EXPECT_EQ(SVGColor("#abc").nsColor, ColorValue::sRGB(0xAA / 255.0, 0xBB / 255.0, 0xCC / 255.0));
    EXPECT_EQ(SVGColor("0x102030").nsColor, ColorValue::sRGB(0x10 / 255.0, 0x20 / 255.0, 0x30 / 255.0));
    EXPECT_EQ(SVGColor("none").nsColor, std::nullopt);
    EXPECT_EQ(SVGColor("").nsColor, std::nullopt);
}

TEST(SVGImporter, BadDocumentsFailWithTheirMessages) {
    EXPECT_EQ(errorOf("<svg><g></svg>"), "SVG is invalid");
    EXPECT_EQ(errorOf(std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16)), "SVG is invalid");
    EXPECT_EQ(errorOf("{\"fill\": \"red\"}"), "SVG is invalid");
    EXPECT_EQ(errorOf(""), "SVG has no root element, unable to parse");
    EXPECT_EQ(errorOf("<?xml version=\"1.0\"?><!-- nothing -->"), "SVG has no root element, unable to parse");
    EXPECT_EQ(importSVG("<svg/>"), "");

    testing::ScratchFolder folder;
    ProjectItemPtr root = testing::newGroupItem();
    EXPECT_THROW(SVGImporter().importColors(folder.path / "missing.svg", *root), FileError);
    EXPECT_THROW(SVGImporter().importColors(folder.path, *root), FileError);
    const auto file = folder.write("drawing.svg", "<svg><rect fill='#010203'/></svg>");
    SVGImporter().importColors(file, *root);
    EXPECT_EQ(describe(*root), "fill: #010203\n");
}

TEST(SVGImporter, DeepNestingReadsWithoutRecursion) {
    std::string text = "<svg>";
    for (int i = 0; i < 200000; ++i) {
        text += "<g>";
    }
    text += "<rect fill='#0a0b0c'/>";
    for (int i = 0; i < 200000; ++i) {
        text += "</g>";
    }
    text += "<rect stroke='#0d0e0f'/></svg>";
    EXPECT_EQ(importSVG(text), "fill: #0A0B0C\nstroke: #0D0E0F\n");
}

TEST(SVGImporter, RealDrawingsImport) {
    const auto folder = testing::corpusFolder("svg");
    if (folder.empty()) {
        GTEST_SKIP() << "no sample folder";
    }
    const std::set<std::string> names = {"fill", "stroke", "Gradient Color", "Style Color"};
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        SCOPED_TRACE(entry.path().filename().string());
        ProjectItemPtr root = testing::newGroupItem();
        SVGImporter().importColors(entry.path(), *root);
        EXPECT_FALSE(root->group->items.empty());
        std::vector<ColorValue> seen;
        for (const ProjectItemPtr& item : root->group->items) {
            ASSERT_TRUE(item->color);
            EXPECT_TRUE(names.count(item->name)) << item->name;
            const ColorValue& value = item->color->color.lightVariant;
            EXPECT_EQ(std::count(seen.begin(), seen.end(), value), 0);
            seen.push_back(value);
        }
        ++files;
    }
    EXPECT_EQ(files, 10u);

    ProjectItemPtr flag = testing::newGroupItem();
    SVGImporter().importColors(folder / "flag-icons-fr.svg", *flag);
    EXPECT_EQ(describe(*flag), "fill: #FFFFFF\nfill: #000091\nfill: #E1000F\n");
    ProjectItemPtr weather = testing::newGroupItem();
    SVGImporter().importColors(folder / "weather-icons-clear-day.svg", *weather);
    EXPECT_EQ(describe(*weather), "Gradient Color: #FBBF24\nGradient Color: #F59E0B\nstroke: #F8AF18\n");
    ProjectItemPtr icon = testing::newGroupItem();
    SVGImporter().importColors(folder / "file-icon-vectors-vivid-css.svg", *icon);
    EXPECT_EQ(describe(*icon), "Style Color: #72A536\nfill: #FFFFFF\n");
}

}  // namespace
}  // namespace tintwork
