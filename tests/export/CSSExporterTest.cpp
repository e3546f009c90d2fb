#include "export/CSSExporter.h"

#include <gtest/gtest.h>

#include "ExportTestDocument.h"
#include "export/Builder.h"
#include "model/FileIO.h"

namespace tintwork {
namespace {

using namespace tintwork::testing;

// Builds one style sheet task of the test document and gives the file's text.
std::string buildStyleSheet(BuildTask buildTask, const std::string& folderName) {
    auto document = makeTestDocument();
    const auto folder = freshFolder(folderName);
    document.web->tasks = {buildTask};
    Builder builder(document.project, folder / "Acme.tintwork", "", {document.web->uuid}, true, std::nullopt);
    builder.buildAll();
    return readText(folder / buildTask.exportFileNameWithExtension());
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// The text from `start` up to the next line that is just "}" (a top-level block).
std::string block(const std::string& text, const std::string& start) {
    const auto from = text.find(start);
    if (from == std::string::npos) {
        return {};
    }
    const auto to = text.find("\n}\n", from);
    return text.substr(from, to == std::string::npos ? std::string::npos : to + 1 - from);
}

TEST(CSSExporter, PlaceholdersAreReplacedEverywhereBeforeParsing) {
    EXPECT_EQ(fillColorFormatPlaceholders("{% COLOR_FORMAT_TAG a %}{% COLOR_FORMAT_TAG b %}{% COLOR_FORMAT_TAG c %}",
                                          BuildExportFormat::cssHex),
              "{% colorAsCSSHexRGB a %}{% colorAsCSSHexRGB b %}{% colorAsCSSHexRGB c %}");
    EXPECT_EQ(fillColorFormatPlaceholders("{% lightDark a b LIGHT_DARK_FORMAT_TAG %}", BuildExportFormat::cssRGBA),
              "{% lightDark a b cssRgb %}");
    EXPECT_EQ(fillColorFormatPlaceholders("COLOR_FORMAT_TAG LIGHT_DARK_FORMAT_TAG", BuildExportFormat::cssOKLCH),
              "colorAsCSSOklch cssOKLCH");
    EXPECT_EQ(fillColorFormatPlaceholders("COLOR_FORMAT_TAG LIGHT_DARK_FORMAT_TAG", BuildExportFormat::cssColor),
              "colorAsCSSColor cssColor");
    EXPECT_EQ(fillColorFormatPlaceholders("no placeholders", BuildExportFormat::cssHex), "no placeholders");
}

TEST(CSSExporter, AppearanceColorTypeChoosesTheTemplateByExactWord) {
    const StyleSheetTemplates css{"cssBase", "cssBaseLightDark"};
    auto plain = task("CSS", BuildFileType::css, "tokens");
    const auto individual = styleSheetTemplateSource(css, plain);
    EXPECT_TRUE(contains(individual, "colorAsCSSColor"));
    EXPECT_FALSE(contains(individual, "COLOR_FORMAT_TAG"));
    EXPECT_FALSE(contains(individual, "lightDark"));

    plain.customData["appearanceColorType"] = "lightDark";
    EXPECT_TRUE(contains(styleSheetTemplateSource(css, plain), "{% lightDark "));
    for (const std::string other : {"LightDark", "individual", "light-dark", ""}) {
        plain.customData["appearanceColorType"] = other;
        EXPECT_EQ(styleSheetTemplateSource(css, plain), individual) << other;
    }
}

TEST(CSSExporter, IndividualStyleSheetHasEveryItemAndAppearance) {
    const auto css = buildStyleSheet(task("CSS", BuildFileType::css, "tokens"), "css-individual");
    const auto root = block(css, ":root {");
    EXPECT_TRUE(contains(root, "  --brand-primary: color(srgb 0 0.4 0.8);\n"));
    EXPECT_TRUE(contains(root, "  --brand-accent: color(display-p3 1 0.2 0.4);\n"));
    EXPECT_TRUE(contains(root, "  --brand-grey-100: color(srgb 0.9 0.9 0.9);\n  --brand-grey-200: color(srgb 0.6 0.6 0.6);\n"));
    EXPECT_TRUE(contains(root, "  --corner-radius: 8.0;\n"));
    EXPECT_TRUE(contains(root, "  --rounded-corners: true;\n"));
    EXPECT_TRUE(contains(root, "  --font-family: Inter;\n"));
    EXPECT_TRUE(contains(root, "  --card: 0 8px 16px 0 color(srgb 0 0 0 / 0.25);\n"));
    EXPECT_TRUE(contains(root, "  --elevation-1: 0 1px 2px 0 color(srgb 0 0 0 / 0.2);\n"));
    EXPECT_TRUE(contains(root, "  --link: color(srgb 0 0.4 0.8);\n"));

    const auto dark = block(css, "@media (prefers-color-scheme: dark) {");
    EXPECT_TRUE(contains(dark, "    --brand-primary: color(srgb 0.4 0.6 1);\n"));
    EXPECT_TRUE(contains(dark, "    --brand-grey-100: color(srgb 0.1 0.1 0.1);\n"));
    EXPECT_TRUE(contains(dark, "    --corner-radius: 6.0;\n"));
    EXPECT_TRUE(contains(dark, "    --rounded-corners: false;\n"));
    EXPECT_TRUE(contains(dark, "    --card: 0 4px 12px 2px color(srgb 0 0 0 / 0.5);\n"));
    // Nothing for variants an item lacks.
    EXPECT_FALSE(contains(dark, "--brand-accent"));
    EXPECT_FALSE(contains(dark, "--brand-grey-200"));
    EXPECT_FALSE(contains(dark, "--font-family"));

    const auto highContrast = block(css, "@media (prefers-contrast: more) and (prefers-color-scheme: light) {");
    EXPECT_TRUE(contains(highContrast, "    --brand-primary: color(srgb 0 0.2 0.6);\n"));
    EXPECT_TRUE(contains(highContrast, "    --font-family: Atkinson Hyperlegible;\n"));
    EXPECT_FALSE(contains(highContrast, "--corner-radius"));
    const auto darkHighContrast = block(css, "@media (prefers-contrast: more) and (prefers-color-scheme: dark) {");
    EXPECT_TRUE(contains(darkHighContrast, "    --brand-primary: color(srgb 0.6 0.8 1);\n"));
    EXPECT_FALSE(contains(darkHighContrast, "--font-family"));
}

TEST(CSSExporter, ExportFormatSelectsTheColourText) {
    auto hex = task("CSS", BuildFileType::css, "hex");
    hex.exportFormat = BuildExportFormat::cssHex;
    const auto hexSheet = buildStyleSheet(hex, "css-hex");
    EXPECT_TRUE(contains(hexSheet, "  --brand-primary: #0066CC;\n"));
    EXPECT_TRUE(contains(hexSheet, "  --brand-accent: p3: #FF3366;\n"));

    auto oklch = task("CSS", BuildFileType::css, "oklch");
    oklch.exportFormat = BuildExportFormat::cssOKLCH;
    EXPECT_TRUE(contains(buildStyleSheet(oklch, "css-oklch"), "  --brand-primary: oklch("));
}

TEST(CSSExporter, LightDarkStyleSheetPairsColours) {
    auto lightDark = task("CSS", BuildFileType::css, "pairs");
    lightDark.customData["appearanceColorType"] = "lightDark";
    lightDark.exportFormat = BuildExportFormat::cssHex;
    const auto css = buildStyleSheet(lightDark, "css-light-dark");
    const auto root = block(css, ":root {");
    EXPECT_TRUE(contains(root, "  color-scheme: light dark;\n"));
    EXPECT_TRUE(contains(root, "  --brand-primary: light-dark(#0066CC, #6699FF);\n"));
    EXPECT_TRUE(contains(root, "  --brand-accent: p3: #FF3366;\n"));
    EXPECT_TRUE(contains(root, "  --brand-grey-100: light-dark(#E6E6E6, #1A1A1A);\n"));
    EXPECT_TRUE(contains(root, "  --brand-grey-200: #999999;\n"));
    EXPECT_TRUE(contains(root, "  --corner-radius: 8.0;\n"));
    const auto contrast = block(css, "@media (prefers-contrast: more) {");
    EXPECT_TRUE(contains(contrast, "    --brand-primary: light-dark(#003399, #99CCFF);\n"));
    EXPECT_FALSE(contains(contrast, "--brand-accent"));
    const auto dark = block(css, "@media (prefers-color-scheme: dark) {");
    EXPECT_TRUE(contains(dark, "    --corner-radius: 6.0;\n"));
    EXPECT_FALSE(contains(dark, "--brand-primary"));
}

TEST(CSSExporter, PreprocessorSheetsDeclareVariablesPerAppearance) {
    const auto scss = buildStyleSheet(task("SCSS", BuildFileType::scss, "tokens"), "scss");
    EXPECT_TRUE(contains(scss, "$brand-primary: #{\"color(srgb 0 0.4 0.8)\"};\n"));
    EXPECT_TRUE(contains(scss, "$brand-primary-dark: #{\"color(srgb 0.4 0.6 1)\"};\n"));
    EXPECT_TRUE(contains(scss, "$font-family-high-contrast: \"Atkinson Hyperlegible\";\n"));
    EXPECT_TRUE(contains(scss, "  --brand-primary: #{$brand-primary};\n"));
    EXPECT_TRUE(contains(scss, "    --brand-primary: #{$brand-primary-dark-high-contrast};\n"));

    const auto less = buildStyleSheet(task("LESS", BuildFileType::less, "tokens"), "less");
    EXPECT_TRUE(contains(less, "@brand-primary: ~\"color(srgb 0 0.4 0.8)\";\n"));
    EXPECT_TRUE(contains(less, "@corner-radius-dark: 6.0;\n"));
    EXPECT_TRUE(contains(less, "    --corner-radius: @corner-radius-dark;\n"));
}

TEST(CSSExporter, AppearanceBlocksOnlyWhereAnItemHasThatVariant) {
    // Only light values and one dark colour: the dark block is written, the
    // high-contrast blocks are left out rather than written empty.
    TestDocument document;
    document.web->uuid = "WEB-GROUP";
    document.project->buildGroups.push_back(document.web);
    for (auto item : {colorItem("Plain", "PLAIN", themed("Plain", srgb(0.2, 0.4, 0.6))),
                      colorItem("Themed", "THEMED", themed("Themed", srgb(0, 0, 0), srgb(1, 1, 1)))}) {
        item->buildGroup = document.web;
        document.project->items.push_back(item);
    }
    const auto folder = freshFolder("appearance-blocks");
    const std::pair<BuildFileType, const char*> sheets[] = {
        {BuildFileType::css, "css"}, {BuildFileType::scss, "scss"}, {BuildFileType::less, "less"}};
    for (const auto& [type, extension] : sheets) {
        for (const std::string kind : {"individual", "lightDark"}) {
            BuildTask sheet = task("Sheet", type, kind);
            sheet.customData["appearanceColorType"] = kind;
            document.web->tasks = {sheet};
            Builder(document.project, folder / "Doc.tintwork", "", {"WEB-GROUP"}, true, std::nullopt).buildAll();
            const std::string text = readText(folder / sheet.exportFileNameWithExtension());
            EXPECT_FALSE(contains(text, "prefers-contrast")) << extension << " " << kind << "\n" << text;
            EXPECT_EQ(contains(text, "@media (prefers-color-scheme: dark)"), kind == "individual")
                << extension << " " << kind << "\n" << text;
        }
    }
}

TEST(CSSExporter, MissingStockTemplateEndsTheExport) {
    const StyleSheetTemplates missing{"noSuchTemplate", "noSuchTemplateEither"};
    EXPECT_THROW(styleSheetTemplateSource(missing, task("CSS", BuildFileType::css, "x")), FileError);
}

// A NUL from a JSON key or value would end up as a NUL byte in the sheet.
TEST(CSSExporter, NulInNamesAndValuesNeverReachesTheSheet) {
    for (const BuildFileType type : {BuildFileType::css, BuildFileType::scss, BuildFileType::less}) {
        auto document = makeTestDocument();
        OchreColorString text;
        text.value.lightVariant = std::string("x") + '\0' + "y";
        auto item = std::make_shared<OchreColorProjectItem>(std::string("Key") + '\0' + "Name", "NUL", std::move(text));
        item->buildGroup = document.web;
        document.project->items.push_back(item);
        const auto buildTask = task("Sheet", type, "tokens");
        document.web->tasks = {buildTask};
        const auto folder = freshFolder("css-nul");
        Builder builder(document.project, folder / "Acme.tintwork", "", {document.web->uuid}, true, std::nullopt);
        builder.buildAll();
        const std::string sheet = readText(folder / buildTask.exportFileNameWithExtension());
        EXPECT_EQ(sheet.find('\0'), std::string::npos);
        EXPECT_TRUE(contains(sheet, "key-name")) << sheet;
        EXPECT_TRUE(contains(sheet, "fffd y")) << sheet;
    }
}

}  // namespace
}  // namespace tintwork
