// Runs the tintwork command on images, drawing documents and palette JSON files.

#include <gtest/gtest.h>

#include <filesystem>

#include "RunTool.h"

using namespace tintwork::testing;
namespace fs = std::filesystem;

namespace {

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

fs::path corpus() {
    return fs::path(TINTWORK_SHARED_DIR) / "corpus";
}

const char* const drawing = R"(<?xml version="1.0" encoding="UTF-8"?>
<document xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" id="D" size="800 600">
  <constantList>
    <constant xsi:type="Data.ConstantColour" name="Ink"><colour xsi:type="Data.Colour" profile="sRGB" components="0.1 0.2 0.3 1"/></constant>
    <constant xsi:type="Data.ConstantValue" name="Radius" value="4"/>
  </constantList>
  <materialList>
    <material name="Sunset" id="M" shared="1"><layerList><layer id="L" name="Ramp">
      <content xsi:type="Data.MaterialGradientGenerator"><vertexList>
        <vertex><position x="0" y="0" z="0"/><colour xsi:type="Data.Colour" profile="sRGB" components="1 0.5 0 1"/></vertex>
        <vertex><position x="1" y="0" z="0"/><colour xsi:type="Data.ColourName" name="Ink"/></vertex>
      </vertexList></content></layer></layerList></material>
  </materialList>
</document>
)";

}  // namespace

TEST(PaletteCommand, ImportsImagesDrawingsAndPaletteFiles) {
    if (!fs::exists(corpus())) {
        GTEST_SKIP() << "no sample corpus beside the checkout";
    }
    TemporaryFolder folder;
    ToolRun image = runTintwork({"import", "image", (corpus() / "images/known-counts.png").string()});
    ASSERT_EQ(image.status, 0) << image.err;
    EXPECT_TRUE(contains(image.out, "\"Image Import - known-counts.png\"")) << image.out;
    EXPECT_TRUE(contains(image.out, "\"Color 4000\"")) << image.out;
    EXPECT_TRUE(contains(image.out, "\"$hex\": \"#1E50C8FF\"")) << image.out;
    EXPECT_FALSE(contains(image.out, "\"Color 800\"")) << image.out;

    // The drawing's diagnostic line goes to standard error, the tokens to standard output.
    writeText(folder.path() / "Poster.xml", drawing);
    ToolRun poster = runTintwork({"import", "ochre", "Poster.xml"}, folder.path());
    ASSERT_EQ(poster.status, 0) << poster.err;
    EXPECT_EQ(poster.err, "TODO parse constant value\n");
    EXPECT_TRUE(contains(poster.out, "\"Ochre Import - Poster.xml\"")) << poster.out;
    EXPECT_TRUE(contains(poster.out, "\"Gradient Stop 2\"")) << poster.out;

    ToolRun palettes = runTintwork({"import", "material", (corpus() / "json/material-colors.json").string(),
                                    "-o", "palettes.tintwork"},
                                   folder.path());
    ASSERT_EQ(palettes.status, 0) << palettes.err;
    const std::string document = readText(folder.path() / "palettes.tintwork");
    EXPECT_TRUE(contains(document, "<name>Material Import - material-colors.json</name>"));
    EXPECT_TRUE(contains(document, "<name>a700</name>"));

    ToolRun sets = runTintwork({"import", "generic-json", (corpus() / "json/generic-radix-colors-p3.json").string()});
    ASSERT_EQ(sets.status, 0) << sets.err;
    EXPECT_TRUE(contains(sets.out, "\"JSON Import - generic-radix-colors-p3.json\"")) << sets.out;
    EXPECT_TRUE(contains(sets.out, "\"name\": \"display-p3\"")) << sets.out;
}

TEST(PaletteCommand, UnreadableSourcesFailAndWriteNothing) {
    TemporaryFolder folder;
    writeText(folder.path() / "photo.png", "not a picture");
    writeText(folder.path() / "drawing.xml", "<drawing size=\"1 1\"/>");
    writeText(folder.path() / "palette.json", "{\"Brand\": \"#ff0000\"}");
    const std::vector<std::pair<std::vector<std::string>, std::string>> calls = {
        {{"import", "image", "photo.png", "-o", "out.json"}, "tintwork: photo.png: Unable to open image file\n"},
        {{"import", "ochre", "drawing.xml", "-o", "out.json"}, "tintwork: drawing.xml: Unable to open Ochre file\n"},
        {{"import", "generic-json", "palette.json", "-o", "out.json"},
         "tintwork: palette.json: palette.json is not a palette of colour sets: \"Brand\" is not an object of "
         "colour texts\n"},
    };
    for (const auto& [args, message] : calls) {
        ToolRun run = runTintwork(args, folder.path());
        EXPECT_EQ(run.status, 1) << ::testing::PrintToString(args);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, message);
    }
    EXPECT_FALSE(fs::exists(folder.path() / "out.json"));
}
