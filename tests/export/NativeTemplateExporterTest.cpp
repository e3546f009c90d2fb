// The Swift, Compose, Metal and GLSL outputs of the realistic test document: the
// values they carry, and whether their languages' own tools accept them.

#include <gtest/gtest.h>

#include "ExportTestDocument.h"
#include "NativeConsumers.h"
#include "export/AndroidComposeExporter.h"
#include "export/AndroidResourceExporter.h"
#include "export/MetalExporter.h"
#include "export/OpenGLExporter.h"
#include "export/SwiftEnumExporter.h"

namespace tintwork {
namespace {

using namespace tintwork::testing;

// Builds one output of the test document with camel-case names and returns its path.
template <typename Exporter, typename... Extra>
std::filesystem::path build(const std::string& caseName, BuildFileType type, Extra... extra) {
    const TestDocument document = makeTestDocument();
    const auto folder = freshFolder("native-" + caseName);
    const BuildTask buildTask = task(caseName, type, "Tokens", BuildNameTransform::camelCase);
    Exporter exporter(document.project, extra...);
    exporter.exportTo(folder, buildTask, document.project->itemsForBuildGroup(*document.web), folder / "Doc.tintwork");
    return folder / buildTask.exportFileNameWithExtension();
}

void expectParses(const std::string& language, const std::filesystem::path& file) {
    const auto checker = syntaxChecker();
    if (!checker) {
        GTEST_SKIP() << "tree-sitter grammars not installed (cd tests/native && npm install)";
    }
    const ToolResult result = checkSyntax(*checker, language, file);
    EXPECT_EQ(result.status, 0) << result.output;
}

TEST(NativeTemplates, SwiftUIEnumFollowsAppearanceAndCarriesEveryKind) {
    const auto file = build<SwiftEnumExporter>("swiftui", BuildFileType::swiftUIEnum, SwiftExportType::swiftUI);
    const std::string swift = readText(file);

    EXPECT_NE(swift.find("import SwiftUI\n"), std::string::npos);
    EXPECT_NE(swift.find("public enum Tokens {"), std::string::npos);
    EXPECT_NE(swift.find("public struct TintworkShadow {"), std::string::npos);
    // All four variants go into one dynamic colour; a colour with one variant stays plain.
    EXPECT_NE(swift.find("public static let brandPrimary: Color = dynamic(light: Color(red: 0, green: 0.4, blue: 0.8, "
                         "opacity: 1), dark: Color(red: 0.4, green: 0.6, blue: 1, opacity: 1), highContrast: "
                         "Color(red: 0, green: 0.2, blue: 0.6, opacity: 1), darkHighContrast: Color(red: 0.6, green: "
                         "0.8, blue: 1, opacity: 1))\n"),
              std::string::npos)
        << swift;
    EXPECT_NE(swift.find("public static let brandAccent: Color = Color(.displayP3, red: 1, green: 0.2, blue: 0.4, "
                         "opacity: 1)\n"),
              std::string::npos);
    EXPECT_NE(swift.find("public static let brandGrey: [Color] = [\n"
                         "        dynamic(light: Color(red: 0.9, green: 0.9, blue: 0.9, opacity: 1), dark: Color(red: "
                         "0.1, green: 0.1, blue: 0.1, opacity: 1)), // 100\n"
                         "        Color(red: 0.6, green: 0.6, blue: 0.6, opacity: 1), // 200\n"
                         "    ]"),
              std::string::npos);
    // Other kinds: one constant per stored variant, a false or zero variant included.
    EXPECT_NE(swift.find("public static let cornerRadius: CGFloat = 8.0\n"
                         "    public static let cornerRadiusDark: CGFloat = 6.0\n"),
              std::string::npos);
    EXPECT_NE(swift.find("public static let roundedCorners: Bool = true\n"
                         "    public static let roundedCornersDark: Bool = false\n"),
              std::string::npos);
    EXPECT_NE(swift.find("public static let fontFamily: String = #\"Inter\"#\n"
                         "    public static let fontFamilyHighContrast: String = #\"Atkinson Hyperlegible\"#\n"),
              std::string::npos);
    EXPECT_NE(swift.find("public static let card = TintworkShadow(x: 0, y: 8, blur: 16, spread: 0, color: Color(red: "
                         "0, green: 0, blue: 0, opacity: 0.25))\n"
                         "    public static let cardDark = TintworkShadow(x: 0, y: 4, blur: 12, spread: 2, color: "
                         "Color(red: 0, green: 0, blue: 0, opacity: 0.5))\n"),
              std::string::npos);
    EXPECT_NE(swift.find("public static let elevation: [TintworkShadow] = [\n        TintworkShadow(x: 0, y: 1, "),
              std::string::npos);
    // The working alias is exported with its target's values; the broken one is not.
    EXPECT_NE(swift.find("public static let link: Color = dynamic(light: Color(red: 0, green: 0.4, "),
              std::string::npos);
    EXPECT_EQ(swift.find("ghost"), std::string::npos);
    EXPECT_EQ(swift.find("failed"), std::string::npos);

    expectParses("swift", file);
}

TEST(NativeTemplates, UIKitAndAppKitEnumsUseTheirColourClasses) {
    const auto uiKitFile = build<SwiftEnumExporter>("uikit", BuildFileType::swiftUIKitEnum, SwiftExportType::uiKit);
    const std::string uiKit = readText(uiKitFile);
    EXPECT_NE(uiKit.find("import UIKit\n"), std::string::npos);
    EXPECT_NE(uiKit.find("traits.accessibilityContrast == .high"), std::string::npos);
    EXPECT_NE(uiKit.find("public static let brandAccent: UIColor = UIColor(displayP3Red: 1, green: 0.2, blue: 0.4, "
                         "alpha: 1)\n"),
              std::string::npos);
    EXPECT_NE(uiKit.find("public static let card = TintworkShadow(x: 0, y: 8, blur: 16, spread: 0, color: "
                         "UIColor(red: 0, green: 0, blue: 0, alpha: 0.25))\n"),
              std::string::npos);
    expectParses("swift", uiKitFile);

    const auto appKitFile = build<SwiftEnumExporter>("appkit", BuildFileType::swiftAppKitEnum, SwiftExportType::appKit);
    const std::string appKit = readText(appKitFile);
    EXPECT_NE(appKit.find("import AppKit\n"), std::string::npos);
    EXPECT_NE(appKit.find(".accessibilityHighContrastDarkAqua"), std::string::npos);
    EXPECT_NE(appKit.find("public static let brandPrimary: NSColor = dynamic(light: NSColor(red: 0, green: 0.4, "
                          "blue: 0.8, alpha: 1), dark: NSColor(red: 0.4, green: 0.6, blue: 1, alpha: 1)"),
              std::string::npos);
    EXPECT_NE(appKit.find("NSColor(displayP3Red: 1, green: 0.2, blue: 0.4, alpha: 1)"), std::string::npos);
    expectParses("swift", appKitFile);
}

TEST(NativeTemplates, ComposeObjectSwitchesOnTheSystemTheme) {
    const auto file = build<AndroidComposeExporter>("compose", BuildFileType::androidCompose);
    const std::string kotlin = readText(file);

    EXPECT_NE(kotlin.find("object Tokens {"), std::string::npos);
    EXPECT_NE(kotlin.find("data class TintworkShadow(val x: Double, val y: Double, val blur: Double, val spread: "
                          "Double, val color: Color)"),
              std::string::npos);
    EXPECT_NE(kotlin.find("    val brandPrimaryLight: Color = Color(0xFF0066CC)\n"
                          "    val brandPrimaryDark: Color = Color(0xFF6699FF)\n"
                          "    val brandPrimary: Color\n"
                          "        @Composable get() = if (isSystemInDarkTheme()) brandPrimaryDark else "
                          "brandPrimaryLight\n"
                          "    val brandPrimaryHighContrast: Color = Color(0xFF003399)\n"
                          "    val brandPrimaryDarkHighContrast: Color = Color(0xFF99CCFF)\n"),
              std::string::npos)
        << kotlin;
    // Display P3 keeps its components and names its colour space.
    EXPECT_NE(kotlin.find("val brandAccent: Color = Color(red = 1.0f, green = 0.2f, blue = 0.4f, alpha = 1.0f, "
                          "colorSpace = ColorSpaces.DisplayP3)\n"),
              std::string::npos);
    EXPECT_NE(kotlin.find("    val brandGreyLight: List<Color> = listOf(\n        Color(0xFFE6E6E6), // 100\n"
                          "        Color(0xFF999999), // 200\n    )\n"
                          "    val brandGreyDark: List<Color> = listOf(\n        Color(0xFF1A1A1A), // 100\n"
                          "        Color(0xFF999999), // 200\n    )\n"
                          "    val brandGrey: List<Color>\n"
                          "        @Composable get() = if (isSystemInDarkTheme()) brandGreyDark else brandGreyLight\n"),
              std::string::npos);
    EXPECT_NE(kotlin.find("val roundedCornersLight: Boolean = true\n    val roundedCornersDark: Boolean = false\n"),
              std::string::npos);
    EXPECT_NE(kotlin.find("val cornerRadiusLight: Double = 8.0\n"), std::string::npos);
    EXPECT_NE(kotlin.find("val fontFamily: String = \"\"\"Inter\"\"\"\n"), std::string::npos);
    EXPECT_NE(kotlin.find("val cardLight: TintworkShadow = TintworkShadow(x = 0.0, y = 8.0, blur = 16.0, spread = "
                          "0.0, color = Color(0x40000000))\n"),
              std::string::npos);
    EXPECT_EQ(kotlin.find("failed"), std::string::npos);

    expectParses("kotlin", file);
}

TEST(NativeTemplates, MetalConstantsCompileAsCpp) {
    const auto file = build<MetalExporter>("metal", BuildFileType::metal);
    const std::string metal = readText(file);

    EXPECT_NE(metal.find("namespace Tokens {"), std::string::npos);
    EXPECT_NE(metal.find("constant float4 brandPrimary = float4(0.0, 0.4, 0.8, 1.0); // sRGB\n"
                         "constant float4 brandPrimaryDark = float4(0.4, 0.6, 1.0, 1.0); // sRGB\n"
                         "constant float4 brandPrimaryHighContrast = float4(0.0, 0.2, 0.6, 1.0); // sRGB\n"
                         "constant float4 brandPrimaryDarkHighContrast = float4(0.6, 0.8, 1.0, 1.0); // sRGB\n"),
              std::string::npos)
        << metal;
    EXPECT_NE(metal.find("constant float4 brandAccent = float4(1.0, 0.2, 0.4, 1.0); // displayP3\n"),
              std::string::npos);
    EXPECT_NE(metal.find("constant float4 brandGrey[] = {\n    float4(0.9, 0.9, 0.9, 1.0), // 100, sRGB\n"),
              std::string::npos);
    EXPECT_NE(metal.find("constant float cornerRadius = 8.0;\nconstant float cornerRadiusDark = 6.0;\n"),
              std::string::npos);
    EXPECT_NE(metal.find("constant bool roundedCornersDark = false;\n"), std::string::npos);
    EXPECT_NE(metal.find("/* fontFamily: Inter */\n/* fontFamilyHighContrast: Atkinson Hyperlegible */\n"),
              std::string::npos);
    EXPECT_NE(metal.find("constant TintworkShadow card = { float2(0.0, 8.0), 16.0, 0.0, float4(0.0, 0.0, 0.0, 0.25) "
                         "};\n"),
              std::string::npos);

    const ToolResult compiled = compileMetalAsCpp(file.parent_path(), file);
    EXPECT_EQ(compiled.status, 0) << compiled.output;
}

TEST(NativeTemplates, OpenGLConstantsPassGlslang) {
    const auto file = build<OpenGLExporter>("opengl", BuildFileType::gl);
    const std::string glsl = readText(file);

    EXPECT_NE(glsl.find("const vec4 brandPrimary = vec4(0.0, 0.4, 0.8, 1.0); // sRGB\n"), std::string::npos) << glsl;
    EXPECT_NE(glsl.find("const vec4 brandGrey[] = vec4[](\n    vec4(0.9, 0.9, 0.9, 1.0) /* 100, sRGB */,\n"
                        "    vec4(0.6, 0.6, 0.6, 1.0) /* 200, sRGB */\n);"),
              std::string::npos);
    EXPECT_NE(glsl.find("const float cornerRadius = 8.0;\n"), std::string::npos);
    EXPECT_NE(glsl.find("const TintworkShadow cardDark = TintworkShadow(vec2(0.0, 4.0), 12.0, 2.0, vec4(0.0, 0.0, "
                        "0.0, 0.5));\n"),
              std::string::npos);
    EXPECT_NE(glsl.find("const TintworkShadow elevation[] = TintworkShadow[]("), std::string::npos);

    if (!hasTool("glslangValidator")) {
        GTEST_SKIP() << "glslangValidator not installed";
    }
    const ToolResult desktop = validateGLSL(file.parent_path(), "#version 330 core", glsl, "desktop");
    EXPECT_EQ(desktop.status, 0) << desktop.output;
    const ToolResult embedded =
        validateGLSL(file.parent_path(), "#version 300 es\nprecision mediump float;", glsl, "embedded");
    EXPECT_EQ(embedded.status, 0) << embedded.output;
}

// Values at the edges of each language's literals: exponents, negative numbers,
// quotes and backslashes, out-of-gamut colours, names starting with a digit and
// empty sets.
std::vector<ProjectItemPtr> awkwardItems() {
    OchreColorNumber tiny;
    tiny.value.lightVariant = 0.00001;
    tiny.value.darkVariant = -2.5;
    OchreColorNumber huge;
    huge.value.lightVariant = 1e20;
    OchreColorString quoted;
    quoted.value.lightVariant = R"(say "hi" \ it's 100% $x)";
    OchreColorString closing;
    closing.value.lightVariant = "ends \"# raw, \"\"\" and \\#(x) */ \\";
    closing.value.darkVariant = std::string("line\nfeed, tab\t, nul ") + '\0' + " end\"";
    closing.value.lightVariantHighContrast = "C:\\";
    OchreColorBoolean off;
    off.value.lightVariant = false;
    OchreColorSet emptySet;
    OchreColorShadowSet emptyShadows;
    return {colorItem("3 Blue", "A", themed("", ColorValue(ColorEncoding::sRGBExtended, 1.2, -0.1, 0.5, 1),
                                            ColorValue(ColorEncoding::sRGBExtended, 0.1, 0.2, 0.3, 0.5))),
            std::make_shared<OchreColorProjectItem>("Tiny", "B", std::move(tiny)),
            std::make_shared<OchreColorProjectItem>("Huge", "C", std::move(huge)),
            std::make_shared<OchreColorProjectItem>("Quoted", "D", std::move(quoted)),
            std::make_shared<OchreColorProjectItem>("Closing", "H", std::move(closing)),
            std::make_shared<OchreColorProjectItem>("Off", "E", std::move(off)),
            std::make_shared<OchreColorProjectItem>("No Colours", "F", std::move(emptySet)),
            std::make_shared<OchreColorProjectItem>("No Shadows", "G", std::move(emptyShadows))};
}

TEST(NativeTemplates, AwkwardValuesStillGiveValidSources) {
    const auto project = std::make_shared<OchreColorProject>();
    const auto items = awkwardItems();
    const auto folder = freshFolder("native-awkward");
    const auto make = [&](BuildTaskExporter&& exporter, BuildFileType type) {
        const BuildTask buildTask = task("Awkward", type, "Awkward", BuildNameTransform::camelCase);
        exporter.exportTo(folder, buildTask, items, folder / "Doc.tintwork");
        return folder / buildTask.exportFileNameWithExtension();
    };
    const auto metal = make(MetalExporter(project), BuildFileType::metal);
    const auto gl = make(OpenGLExporter(project), BuildFileType::gl);
    const auto kotlin = make(AndroidComposeExporter(project), BuildFileType::androidCompose);

    const std::string metalText = readText(metal);
    EXPECT_NE(metalText.find("constant float4 color3Blue = float4(1.2, -0.1, 0.5, 1.0); // extendedSRGB\n"),
              std::string::npos)
        << metalText;
    EXPECT_NE(metalText.find("constant float tiny = 1e-05;\nconstant float tinyDark = -2.5;\n"), std::string::npos);
    const ToolResult compiled = compileMetalAsCpp(folder, metal);
    EXPECT_EQ(compiled.status, 0) << compiled.output;
    if (hasTool("glslangValidator")) {
        const ToolResult validated = validateGLSL(folder, "#version 330 core", readText(gl), "awkward");
        EXPECT_EQ(validated.status, 0) << validated.output;
    }
    EXPECT_NE(readText(kotlin).find("val noColours: List<Color> = emptyList()\n"), std::string::npos);
    // A dollar sign would start a string template in Kotlin.
    EXPECT_NE(readText(kotlin).find(R"(val quoted: String = """say "hi" \ it's 100% ${'$'}x""")"), std::string::npos);
    // Values that would close a raw string or hold control characters use plain literals.
    EXPECT_NE(readText(kotlin).find(R"(val closingLight: String = "ends \"# raw, \"\"\" and \\#(x) */ \\")"),
              std::string::npos)
        << readText(kotlin);
    EXPECT_NE(readText(kotlin).find(R"(val closingDark: String = "line\nfeed, tab\t, nul \u0000 end\"")"),
              std::string::npos);
    EXPECT_NE(readText(kotlin).find(R"(val closingHighContrast: String = "C:\\")"), std::string::npos);
    EXPECT_NE(metalText.find(R"(/* closing: ends "# raw, """ and \x5c#(x) *\x2f \x5c */)"), std::string::npos);
    expectParses("kotlin", kotlin);
    // Android resources: quotes, backslashes and control characters (NUL included) escaped.
    const auto resources = make(AndroidResourceExporter(project), BuildFileType::androidResource);
    EXPECT_EQ(readText(resources).find('\0'), std::string::npos);
    if (hasTool("aapt")) {
        std::filesystem::create_directories(folder / "res" / "values");
        std::filesystem::copy_file(resources, folder / "res" / "values" / "tokens.xml",
                                   std::filesystem::copy_options::overwrite_existing);
        writeText(folder / "AndroidManifest.xml",
                  "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                  "<manifest xmlns:android=\"http://schemas.android.com/apk/res/android\" package=\"com.example\"/>\n");
        const ToolResult packaged = runTool("aapt package -f -M " + shellQuoted((folder / "AndroidManifest.xml").string()) +
                                            " -S " + shellQuoted((folder / "res").string()) + " -F " +
                                            shellQuoted((folder / "tokens.apk").string()));
        EXPECT_EQ(packaged.status, 0) << packaged.output;
    }
    for (const SwiftExportType type : {SwiftExportType::swiftUI, SwiftExportType::uiKit, SwiftExportType::appKit}) {
        const BuildTask buildTask = task("Awkward", BuildFileType::swiftUIEnum, "Awkward" + std::to_string(static_cast<int>(type)),
                                         BuildNameTransform::camelCase);
        SwiftEnumExporter(project, type).exportTo(folder, buildTask, items, folder / "Doc.tintwork");
        const auto swift = folder / buildTask.exportFileNameWithExtension();
        EXPECT_NE(readText(swift).find(R"(public static let quoted: String = #"say "hi" \ it's 100% $x"#)"),
                  std::string::npos);
        EXPECT_NE(readText(swift).find(R"(public static let closing: String = "ends \"# raw, \"\"\" and \\#(x) */ \\")"),
                  std::string::npos)
            << readText(swift);
        EXPECT_NE(readText(swift).find(R"(public static let closingHighContrast: String = #"C:\"#)"), std::string::npos);
        EXPECT_NE(readText(swift).find(R"(public static let closingDark: String = "line\nfeed, tab\t, nul \0 end\"")"),
                  std::string::npos);
        expectParses("swift", swift);
    }
}

}  // namespace
}  // namespace tintwork
