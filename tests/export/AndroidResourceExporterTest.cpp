// The Android values resource file of the realistic test document: what it holds,
// how it is printed, and whether Android's resource packager accepts it.

#include <gtest/gtest.h>

#include <pugixml.hpp>
#include <regex>

#include "ExportTestDocument.h"
#include "NativeConsumers.h"
#include "export/AndroidResourceExporter.h"
#include "export/TemplateRecords.h"

namespace tintwork {
namespace {

using namespace tintwork::testing;

std::filesystem::path buildResources(const std::string& caseName, BuildNameTransform transform) {
    const TestDocument document = makeTestDocument();
    const auto folder = freshFolder("native-" + caseName);
    const BuildTask buildTask = task("Android", BuildFileType::androidResource, "tokens", transform);
    AndroidResourceExporter(document.project)
        .exportTo(folder, buildTask, document.project->itemsForBuildGroup(*document.web), folder / "Doc.tintwork");
    return folder / "tokens.xml";
}

TEST(AndroidResourceExporter, WritesEveryKindWithADarkStyle) {
    const std::string xml = readText(buildResources("android", BuildNameTransform::snakeCase));

    EXPECT_EQ(xml.rfind("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<resources>\n", 0), 0u) << xml;
    // Colours in Android's #AARRGGBB, Display P3 converted into sRGB first.
    EXPECT_NE(xml.find("\n  <color name=\"brand_primary\">#FF0066CC</color>\n"), std::string::npos);
    EXPECT_NE(xml.find("\n  <color name=\"brand_accent\">#FFFF0063</color>\n"), std::string::npos);
    // A set: its members as colours and a typed array of references to them.
    EXPECT_NE(xml.find("\n  <color name=\"brand_grey_100\">#FFE6E6E6</color>\n"), std::string::npos);
    EXPECT_NE(xml.find("\n  <array name=\"brand_grey\">\n    <item>@color/brand_grey_100</item>\n"
                       "    <item>@color/brand_grey_200</item>\n  </array>\n"),
              std::string::npos);
    EXPECT_NE(xml.find("\n  <integer name=\"corner_radius\">8</integer>\n"), std::string::npos);
    EXPECT_NE(xml.find("\n  <bool name=\"rounded_corners\">true</bool>\n"), std::string::npos);
    EXPECT_NE(xml.find("\n  <string name=\"font_family\">Inter</string>\n"), std::string::npos);
    // A shadow: its colour and four lengths in dp.
    EXPECT_NE(xml.find("\n  <color name=\"card_color\">#40000000</color>\n"
                       "  <dimen name=\"card_x\">0dp</dimen>\n  <dimen name=\"card_y\">8dp</dimen>\n"
                       "  <dimen name=\"card_blur\">16dp</dimen>\n  <dimen name=\"card_spread\">0dp</dimen>\n"),
              std::string::npos);
    EXPECT_NE(xml.find("\n  <dimen name=\"elevation_2_y\">2dp</dimen>\n"), std::string::npos);
    // Every value is also an attribute, so that the "Dark" style can set it.
    EXPECT_NE(xml.find("\n  <attr format=\"color\" name=\"brand_primary\"/>\n"), std::string::npos);
    EXPECT_NE(xml.find("\n  <attr format=\"integer\" name=\"corner_radius\"/>\n"), std::string::npos);

    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(xml.c_str()));
    const pugi::xml_node style = document.child("resources").find_child_by_attribute("style", "name", "Dark");
    ASSERT_TRUE(style);
    EXPECT_EQ(style, document.child("resources").last_child());
    EXPECT_STREQ(style.find_child_by_attribute("item", "name", "brand_primary").text().get(), "#FF6699FF");
    EXPECT_STREQ(style.find_child_by_attribute("item", "name", "corner_radius").text().get(), "6");
    EXPECT_STREQ(style.find_child_by_attribute("item", "name", "rounded_corners").text().get(), "false");
    EXPECT_STREQ(style.find_child_by_attribute("item", "name", "card_spread").text().get(), "2dp");
    // Without a dark variant the light value stands in the style.
    EXPECT_STREQ(style.find_child_by_attribute("item", "name", "font_family").text().get(), "Inter");
    EXPECT_EQ(xml.find("ghost"), std::string::npos);

    // Every name is a valid resource name and every colour in Android's notation.
    const std::regex name("[A-Za-z_][A-Za-z0-9_]*");
    const std::regex color("#[0-9A-F]{8}");
    for (const pugi::xml_node node : document.child("resources").children()) {
        if (node.attribute("name")) {
            EXPECT_TRUE(std::regex_match(node.attribute("name").value(), name)) << node.attribute("name").value();
        }
        if (std::string(node.name()) == "color") {
            EXPECT_TRUE(std::regex_match(node.text().get(), color)) << node.text().get();
        }
    }
}

TEST(AndroidResourceExporter, AcceptedByTheResourcePackager) {
    if (!hasTool("aapt")) {
        GTEST_SKIP() << "aapt not installed";
    }
    for (const BuildNameTransform transform : {BuildNameTransform::none, BuildNameTransform::camelCase,
                                               BuildNameTransform::kebabCase}) {
        const auto file = buildResources("android-aapt", transform);
        const auto root = file.parent_path();
        std::filesystem::create_directories(root / "res" / "values");
        std::filesystem::copy_file(file, root / "res" / "values" / "tokens.xml");
        writeText(root / "AndroidManifest.xml",
                  "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                  "<manifest xmlns:android=\"http://schemas.android.com/apk/res/android\" package=\"com.example\"/>\n");
        const ToolResult packaged = runTool("aapt package -f -M " + shellQuoted((root / "AndroidManifest.xml").string()) +
                                            " -S " + shellQuoted((root / "res").string()) + " -F " +
                                            shellQuoted((root / "tokens.apk").string()));
        EXPECT_EQ(packaged.status, 0) << packaged.output;
        EXPECT_EQ(packaged.output.find("rror"), std::string::npos) << packaged.output;
    }
}

TEST(AndroidResourceExporter, NumbersStringsAndPrinting) {
    BuildTask buildTask = task("Android", BuildFileType::androidResource, "values", BuildNameTransform::none);
    std::vector<TemplateItem> items(4);
    items[0].name = "Opacity";
    items[0].number = TemplateNumberItem{{0.5, std::nullopt, 0.75, std::nullopt}};
    items[1].name = "Big";
    items[1].number = TemplateNumberItem{{8, std::nullopt, 8.5, std::nullopt}};
    items[2].name = "Quote";
    items[2].string = TemplateStringItem{{"  @it's \"x\" & <y>\\", std::nullopt, std::nullopt, std::nullopt}};
    items[3].name = "Empty";
    items[3].string = TemplateStringItem{{"", std::nullopt, std::nullopt, std::nullopt}};
    const std::string xml = AndroidResourceExporter::resourceText(items, buildTask);

    // A fraction can't be an <integer>: it becomes a float item, and so does a whole
    // number whose dark variant has a fraction.
    EXPECT_NE(xml.find("<item format=\"float\" name=\"Opacity\" type=\"dimen\">0.5</item>"), std::string::npos) << xml;
    EXPECT_NE(xml.find("<item format=\"float\" name=\"Big\" type=\"dimen\">8</item>"), std::string::npos);
    EXPECT_NE(xml.find("<attr format=\"float\" name=\"Opacity\"/>"), std::string::npos);
    // Android escapes first, XML escapes after; the printer trims the value.
    EXPECT_NE(xml.find("<string name=\"Quote\">\\@it\\&apos;s \\&quot;x\\&quot; &amp; &lt;y&gt;\\\\</string>"),
              std::string::npos);
    EXPECT_NE(xml.find("  <string name=\"Empty\"/>\n"), std::string::npos);
    EXPECT_NE(xml.find("  <style name=\"Dark\">\n    <item name=\"Opacity\">0.75</item>\n"), std::string::npos);

    // An empty document still has its (empty) style.
    EXPECT_EQ(AndroidResourceExporter::resourceText({}, buildTask),
              "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<resources>\n  <style name=\"Dark\"/>\n</resources>\n");
}

TEST(AndroidResourceExporter, NamesAndColourNotation) {
    EXPECT_EQ(androidResourceName("brand-primary"), "brand_primary");
    EXPECT_EQ(androidResourceName("Brand Primary"), "Brand_Primary");
    EXPECT_EQ(androidResourceName("a -- b"), "a_b");
    EXPECT_EQ(androidResourceName("_x"), "_x");
    EXPECT_EQ(androidResourceName("3Blue"), "color3Blue");
    EXPECT_EQ(androidResourceName("Grün"), "Gr_n");
    EXPECT_EQ(androidResourceName("--"), "unnamed");

    EXPECT_EQ(androidColorText(ColorValue(ColorEncoding::sRGB, 1, 0.5, 0, 0.5)), "#80FF8000");
    EXPECT_EQ(androidColorText(ColorValue(ColorEncoding::sRGBExtended, 1.2, -0.1, 0.5, 1)), "#FFFF0080");
    EXPECT_EQ(androidColorText(ColorValue(ColorEncoding::displayP3, 1, 1, 1, 1)), "#FFFFFFFF");

    EXPECT_EQ(androidStringText("?a\nb\t@c"), "\\?a\\nb\\t@c");
}

}  // namespace
}  // namespace tintwork
