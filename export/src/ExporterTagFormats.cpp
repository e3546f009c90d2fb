// Texts of the exporter's template tags, independent of the template engine.

#include <cmath>

#include "export/CodeName.h"
#include "export/ExporterTags.h"
#include "export/NumberFormat.h"

namespace tintwork {

namespace {

constexpr std::string_view p3Prefix = "p3: ";
constexpr std::string_view clippedSuffix = " /* Clipped due to being outside sRGB */";

// The working space of a record's colour; `fallback` stands in for an unknown space.
ColorSpace workingSpace(const TemplateRGBAColor& color, ColorSpace fallback) {
    switch (color.colorSpace) {
        case TemplateColorSpace::sRGB: return ColorSpace::sRGB;
        case TemplateColorSpace::displayP3: return ColorSpace::displayP3;
        case TemplateColorSpace::extendedSRGB: return ColorSpace::sRGBExtended;
    }
    return fallback;
}

// The colour text of the colour tags and of lightDark: four places, the P3 prefix,
// the clip note, and forced clipping for the sRGB-only forms.
std::optional<std::string> colorTagText(const TemplateRGBAColor& color, ColorFormat format) {
    ColorConverterOptions options;
    options.roundedTo = 4;
    options.p3Prefix = std::string(p3Prefix);
    options.suffixWhenClipped = std::string(clippedSuffix);
    options.forceClip = format == ColorFormat::htmlRGB || format == ColorFormat::cssRGB;
    return colorString(colorValue(color), format, workingSpace(color, ColorSpace::displayP3), options).colorString;
}

// "0" for zero (also negative zero), else the decimal text with "px".
std::string cssLength(double value) {
    if (value == 0) {
        return "0";
    }
    return formatDecimalNumber(value) + "px";
}

ColorFormat shadowColorFormat(ColorFormatType type) {
    switch (type) {
        case ColorFormatType::swift: return ColorFormat::swiftColorRGBA;
        case ColorFormatType::uiKit: return ColorFormat::swiftUIColorRGBA;
        case ColorFormatType::appKit: return ColorFormat::swiftNSColorRGBA;
        case ColorFormatType::kotlin: return ColorFormat::hexARGB;
    }
    return ColorFormat::swiftColorRGBA;
}

}  // namespace

const std::array<ColorTagName, 15> colorTagNames = {{
    {"colorAsFloatRGBA", ColorFormat::floatRGBA},
    {"colorAsFloatHSVA", ColorFormat::floatHSVA},
    {"colorAsHex", ColorFormat::hexRGB},
    {"colorAsHexRGBA", ColorFormat::hexRGBA},
    {"colorAsHexARGB", ColorFormat::hexARGB},
    {"colorAsSwiftUIColor", ColorFormat::swiftColorRGBA},
    {"colorAsSwiftUIKitColor", ColorFormat::swiftUIColorRGBA},
    {"colorAsSwiftAppKitColor", ColorFormat::swiftNSColorRGBA},
    {"colorAsSwiftUIColorHSBA", ColorFormat::swiftColorHSBA},
    {"colorAsSwiftUIKitColorHSBA", ColorFormat::swiftUIColorHSBA},
    {"colorAsSwiftAppKitColorHSBA", ColorFormat::swiftNSColorHSBA},
    {"colorAsCSSHexRGB", ColorFormat::htmlRGB},
    {"colorAsCSSRgb", ColorFormat::cssRGB},
    {"colorAsCSSColor", ColorFormat::cssColor},
    {"colorAsCSSOklch", ColorFormat::cssOKLCH},
}};

ColorFormat lightDarkFormat(std::string_view word) {
    const std::string lower = lowercased(word);
    if (lower == "csshex") {
        return ColorFormat::htmlRGB;
    }
    if (lower == "cssrgb") {
        return ColorFormat::cssRGB;
    }
    if (lower == "cssoklch") {
        return ColorFormat::cssOKLCH;
    }
    return ColorFormat::cssColor;
}

std::string formatColorTag(const TemplateRGBAColor* color, ColorFormat format) {
    if (!color) {
        return std::string(colorRenderingFailedText);
    }
    auto text = colorTagText(*color, format);
    return text ? std::move(*text) : std::string(colorRenderingFailedText);
}

std::string formatLightDarkTag(const TemplateRGBAColor* light, const TemplateRGBAColor* dark, ColorFormat format) {
    if (!light || !dark) {
        return std::string(lightDarkFailedText);
    }
    const auto lightText = colorTagText(*light, format);
    if (!lightText) {
        return std::string(lightDarkLightConversionText) + std::string(displayName(format));
    }
    const auto darkText = colorTagText(*dark, format);
    if (!darkText) {
        return std::string(lightDarkDarkConversionText) + std::string(displayName(format));
    }
    return "light-dark(" + *lightText + ", " + *darkText + ")";
}

std::string formatCSSBoxShadowTag(const TemplateShadow* shadow) {
    if (!shadow) {
        return std::string(shadowFailedText);
    }
    ColorConverterOptions options;
    options.roundedTo = 4;
    options.p3Prefix = std::string(p3Prefix);
    options.forceClip = false;
    const auto color = colorString(colorValue(shadow->color), ColorFormat::cssColor,
                                   workingSpace(shadow->color, ColorSpace::sRGB), options)
                           .colorString;
    if (!color) {
        return std::string(shadowColorFailedText);
    }
    return cssLength(shadow->x) + " " + cssLength(shadow->y) + " " + cssLength(shadow->blur) + " " +
           cssLength(shadow->spread) + " " + *color;
}

std::string formatTintworkShadowTag(const TemplateShadow* shadow, ColorFormatType type) {
    if (!shadow) {
        return std::string(shadowFailedText);
    }
    ColorConverterOptions options;
    options.roundedTo = 4;
    options.forceClip = false;
    const auto color =
        colorString(colorValue(shadow->color), shadowColorFormat(type), workingSpace(shadow->color, ColorSpace::sRGB),
                    options)
            .colorString;
    if (!color) {
        return std::string(shadowColorFailedText);
    }
    if (type == ColorFormatType::kotlin) {
        return "TintworkShadow(x = " + roundTripDoubleText(shadow->x) + ", y = " + roundTripDoubleText(shadow->y) +
               ", blur = " + roundTripDoubleText(shadow->blur) + ", spread = " + roundTripDoubleText(shadow->spread) +
               ", color = Color(" + *color + "))";
    }
    return "TintworkShadow(x: " + formatDecimalNumber(shadow->x) + ", y: " + formatDecimalNumber(shadow->y) +
           ", blur: " + formatDecimalNumber(shadow->blur) + ", spread: " + formatDecimalNumber(shadow->spread) +
           ", color: " + *color + ")";
}

std::string formatCodeSafeNameTag(const std::string* name) {
    if (!name) {
        return std::string(nameFailedText);
    }
    return codeSafeName(*name, "color");
}

}  // namespace tintwork
