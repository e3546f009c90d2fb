// The tintwork command's import of SVG drawings, style sheets and HTML pages, and asset
// catalog folders: what reaches standard output and documents, and what bad sources say.

#include <gtest/gtest.h>

#include <filesystem>

#include "RunTool.h"

using namespace tintwork::testing;
namespace fs = std::filesystem;

namespace {

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

const char* const colorSet = R"({"colors":[{"idiom":"universal","color":{"color-space":"srgb",
  "components":{"red":"0.2","green":"0.4","blue":"0.6","alpha":"1.000"}}},
  {"idiom":"universal","appearances":[{"appearance":"luminosity","value":"dark"}],
  "color":{"color-space":"srgb","components":{"red":"0.8","green":"0.6","blue":"0.4","alpha":"1.000"}}}]})";

}  // namespace

TEST(TintworkWebImport, EachKindPrintsTokensAndWritesDocuments) {
    TemporaryFolder folder;
    writeText(folder.path() / "drawing.svg", R"(<svg><rect fill="#336699"/><stop stop-color="red"/></svg>)");
    writeText(folder.path() / "theme.css", ":root{--brand-100:#010203;--brand-200:#040506;--brand-300:#070809;--ink:#0a0b0c}");
    writeText(folder.path() / "page.html", "<style>p{color:#102030}</style><p>#405060</p>");
    fs::create_directories(folder.path() / "Colors.xcassets" / "Accent.colorset");
    writeText(folder.path() / "Colors.xcassets" / "Accent.colorset" / "Contents.json", colorSet);

    ToolRun svg = runTintwork({"import", "svg", "drawing.svg"}, folder.path());
    ASSERT_EQ(svg.status, 0) << svg.err;
    EXPECT_EQ(svg.err, "");
    EXPECT_TRUE(contains(svg.out, "\"SVG Import - drawing.svg\"")) << svg.out;
    EXPECT_TRUE(contains(svg.out, "\"fill\"")) << svg.out;
    EXPECT_TRUE(contains(svg.out, "\"Gradient Color\"")) << svg.out;

    ToolRun css = runTintwork({"import", "css", "theme.css", "page.html", "-o", "web.tintwork"}, folder.path());
    ASSERT_EQ(css.status, 0) << css.err;
    const std::string document = readText(folder.path() / "web.tintwork");
    EXPECT_TRUE(contains(document, "CSS Import - theme.css")) << document;
    EXPECT_TRUE(contains(document, "CSS Import - page.html")) << document;
    EXPECT_TRUE(contains(document, "brand")) << document;

    ToolRun page = runTintwork({"import", "css", "page.html"}, folder.path());
    EXPECT_TRUE(contains(page.out, "\"color\"")) << page.out;
    EXPECT_FALSE(contains(page.out, "\"Color\"")) << page.out;

    ToolRun catalog = runTintwork({"import", "asset-catalog", "Colors.xcassets"}, folder.path());
    ASSERT_EQ(catalog.status, 0) << catalog.err;
    EXPECT_TRUE(contains(catalog.out, "\"Asset Catalog - Colors.xcassets\"")) << catalog.out;
    EXPECT_TRUE(contains(catalog.out, "\"Accent\"")) << catalog.out;
    EXPECT_TRUE(contains(catalog.out, "\"Dark\"")) << catalog.out;
}

TEST(TintworkWebImport, BadSourcesSayWhyAndWriteNothing) {
    TemporaryFolder folder;
    writeText(folder.path() / "broken.svg", "this is no drawing");
    writeText(folder.path() / "binary.css", std::string("\xff\xfe\x00#abcdef", 10));
    fs::create_directories(folder.path() / "folder.svg");
    const std::vector<std::pair<std::vector<std::string>, std::string>> calls = {
        {{"import", "svg", "broken.svg", "-o", "out.json"}, "tintwork: broken.svg: SVG is invalid\n"},
        {{"import", "svg", "missing.svg", "-o", "out.json"}, "tintwork: missing.svg: The file \u201cmissing.svg\u201d"},
        {{"import", "svg", "folder.svg", "-o", "out.json"}, "tintwork: folder.svg: The file \u201cfolder.svg\u201d"},
        {{"import", "css", "binary.css", "-o", "out.tintwork"}, "tintwork: binary.css: Unable to read document\n"},
        {{"import", "css", "missing.css", "-o", "out.tintwork"}, "tintwork: missing.css: Unable to read document\n"},
        {{"import", "asset-catalog", "Missing.xcassets", "-o", "out.json"},
         "tintwork: Missing.xcassets: The asset catalog \u201cMissing.xcassets\u201d couldn\u2019t be opened because "
         "there is no such folder.\n"},
    };
    for (const auto& [args, message] : calls) {
        ToolRun run = runTintwork(args, folder.path());
        EXPECT_EQ(run.status, 1) << ::testing::PrintToString(args);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err.rfind(message, 0), 0u) << run.err;
    }
    EXPECT_FALSE(fs::exists(folder.path() / "out.json"));
    EXPECT_FALSE(fs::exists(folder.path() / "out.tintwork"));

    // A page without styles reads nothing and says so on standard error.
    writeText(folder.path() / "plain.html", "<p>#123456</p>");
    ToolRun plain = runTintwork({"import", "css", "plain.html"}, folder.path());
    EXPECT_EQ(plain.status, 0);
    EXPECT_EQ(plain.err, "The page has no style elements or style attributes, so no colours were read from it\n");
}
