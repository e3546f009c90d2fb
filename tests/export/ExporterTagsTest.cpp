#include "export/ExporterTags.h"

#include <gtest/gtest.h>

#include "export/TemplateValues.h"
#include "template/Environment.h"

namespace tintwork {
namespace {

using stencil::Value;

// Renders `source` with the exporter tags and a context holding a few records.
std::string render(const std::string& source) {
    auto extension = std::make_shared<stencil::Extension>();
    registerExporterTags(*extension);
    const stencil::Environment environment(nullptr, {extension});
    const auto blue = std::make_shared<const TemplateRGBAColor>(TemplateRGBAColor{0, 0.4, 0.8, 1, TemplateColorSpace::sRGB});
    const auto sky = std::make_shared<const TemplateRGBAColor>(TemplateRGBAColor{0.4, 0.6, 1, 1, TemplateColorSpace::sRGB});
    const auto pink =
        std::make_shared<const TemplateRGBAColor>(TemplateRGBAColor{1, 0.2, 0.4, 1, TemplateColorSpace::displayP3});
    const auto vivid = std::make_shared<const TemplateRGBAColor>(
        TemplateRGBAColor{1.2, -0.1, 0.5, 0.5, TemplateColorSpace::extendedSRGB});
    const auto card = std::make_shared<const TemplateShadow>(
        TemplateShadow{0, 8, 16, 0, TemplateRGBAColor{0, 0, 0, 0.25, TemplateColorSpace::sRGB}});
    const auto odd = std::make_shared<const TemplateShadow>(
        TemplateShadow{-0.0, 1.23456, 2.5, -3, TemplateRGBAColor{1, 1, 1, 1, TemplateColorSpace::sRGB}});
    const stencil::Map context{
        {"blue", templateValue(blue)}, {"sky", templateValue(sky)},   {"pink", templateValue(pink)},
        {"vivid", templateValue(vivid)}, {"card", templateValue(card)}, {"odd", templateValue(odd)},
        {"name", Value("3 Blue")},       {"number", Value(4.0)},
    };
    return environment.renderTemplate(source, context);
}

TEST(ExporterTags, ColourTagsPrintEachFormat) {
    EXPECT_EQ(render("{% colorAsCSSHexRGB blue %}"), "#0066CC");
    EXPECT_EQ(render("{% colorAsCSSRgb blue %}"), "rgb(0, 102, 204)");
    EXPECT_EQ(render("{% colorAsCSSColor blue %}"), "color(srgb 0 0.4 0.8)");
    EXPECT_EQ(render("{% colorAsHex blue %}"), "0x0066CC");
    EXPECT_EQ(render("{% colorAsHexARGB blue %}"), "0xFF0066CC");
    EXPECT_EQ(render("{% colorAsHexRGBA blue %}"), "0x0066CCFF");
    EXPECT_EQ(render("{% colorAsFloatRGBA blue %}"), "0 0.4 0.8 1");
    EXPECT_EQ(render("{% colorAsSwiftUIColor blue %}"), "Color(red: 0, green: 0.4, blue: 0.8, opacity: 1)");
    EXPECT_EQ(render("{% colorAsSwiftUIKitColor blue %}"), "UIColor(red: 0, green: 0.4, blue: 0.8, alpha: 1)");
    EXPECT_EQ(render("{% colorAsSwiftAppKitColor blue %}"), "NSColor(red: 0, green: 0.4, blue: 0.8, alpha: 1)");
    // Extra words behind the argument are ignored.
    EXPECT_EQ(render("{% colorAsCSSHexRGB blue and more %}"), "#0066CC");
}

TEST(ExporterTags, DisplayP3AndClippedColours) {
    EXPECT_EQ(render("{% colorAsCSSHexRGB pink %}"), "p3: #FF3366");
    EXPECT_EQ(render("{% colorAsCSSColor pink %}"), "color(display-p3 1 0.2 0.4)");
    EXPECT_EQ(render("{% colorAsCSSRgb vivid %}"),
              "rgb(255, 0, 128 / 0.5) /* Clipped due to being outside sRGB */");
    EXPECT_EQ(render("{% colorAsCSSColor vivid %}"), "color(srgb 1.2 -0.1 0.5 / 0.5)");
}

TEST(ExporterTags, LightDarkPairsTwoColours) {
    EXPECT_EQ(render("{% lightDark blue sky %}"), "light-dark(color(srgb 0 0.4 0.8), color(srgb 0.4 0.6 1))");
    EXPECT_EQ(render("{% lightDark blue sky CSSHEX %}"), "light-dark(#0066CC, #6699FF)");
    EXPECT_EQ(render("{% lightDark blue sky cssRgb %}"), "light-dark(rgb(0, 102, 204), rgb(102, 153, 255))");
    EXPECT_EQ(render("{% lightDark blue vivid csshex %}"),
              "light-dark(#0066CC, #FF008080 /* Clipped due to being outside sRGB */)");
    EXPECT_EQ(render("{% lightDark blue sky nonsense %}"), render("{% lightDark blue sky cssColor %}"));
}

TEST(ExporterTags, ShadowTagsPrintLengthsAndColour) {
    EXPECT_EQ(render("{% shadowAsCSSBoxShadow card %}"), "0 8px 16px 0 color(srgb 0 0 0 / 0.25)");
    EXPECT_EQ(render("{% shadowAsCSSBoxShadow odd %}"), "0 1.2346px 2.5px -3px color(srgb 1 1 1)");
    EXPECT_EQ(render("{% shadowAsSwiftUITintworkShadow card %}"),
              "TintworkShadow(x: 0, y: 8, blur: 16, spread: 0, color: Color(red: 0, green: 0, blue: 0, opacity: 0.25))");
    EXPECT_EQ(render("{% shadowAsSwiftUIKitTintworkShadow odd %}"),
              "TintworkShadow(x: 0, y: 1.2346, blur: 2.5, spread: -3, color: UIColor(red: 1, green: 1, blue: 1, "
              "alpha: 1))");
    EXPECT_EQ(render("{% shadowAsSwiftAppKitTintworkShadow card %}"),
              "TintworkShadow(x: 0, y: 8, blur: 16, spread: 0, color: NSColor(red: 0, green: 0, blue: 0, alpha: 0.25))");
    EXPECT_EQ(render("{% shadowAsKotlinTintworkShadow card %}"),
              "TintworkShadow(x = 0.0, y = 8.0, blur = 16.0, spread = 0.0, color = Color(0x40000000))");
}

TEST(ExporterTags, CodeSafeName) {
    EXPECT_EQ(render("{% codeSafeName name %}"), "color3Blue");
    EXPECT_EQ(render("{% codeSafeName \"Blue-Green\" %}"), "BlueGreen");
    EXPECT_EQ(render("{% codeSafeName \"\" %}"), "");
}

TEST(ExporterTags, FailuresRenderTheirTextInsteadOfThrowing) {
    EXPECT_EQ(render("{% colorAsHex %}"), "Rendering color failed");
    EXPECT_EQ(render("{% colorAsHex name %}"), "Rendering color failed");
    EXPECT_EQ(render("{% colorAsCSSColor missing.key %}"), "Rendering color failed");
    EXPECT_EQ(render("{% colorAsCSSColor card %}"), "Rendering color failed");
    EXPECT_EQ(render("{% colorAsHex bad[[name %}"), "Rendering color failed");
    EXPECT_EQ(render("{% lightDark blue %}"), "light-dark formatting failed");
    EXPECT_EQ(render("{% lightDark blue missing %}"), "light-dark formatting failed");
    EXPECT_EQ(render("{% lightDark name sky %}"), "light-dark formatting failed");
    EXPECT_EQ(render("{% shadowAsCSSBoxShadow %}"), "Formatting shadow failed");
    EXPECT_EQ(render("{% shadowAsKotlinTintworkShadow blue %}"), "Formatting shadow failed");
    EXPECT_EQ(render("{% codeSafeName %}"), "Formatting name failed");
    EXPECT_EQ(render("{% codeSafeName number %}"), "Formatting name failed");
}

}  // namespace
}  // namespace tintwork
