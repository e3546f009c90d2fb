// Colour text: writing a working colour in one of seventeen forms, and reading
// text back by trying form after form.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "colour/ColorSpace.h"
#include "colour/ColorValue.h"

namespace tintwork {

enum class ColorFormat {
    floatRGBA,
    floatHSVA,
    htmlRGB,
    cssRGB,
    cssColor,
    cssHSL,
    cssOKLAB,
    cssOKLCH,
    hexRGB,
    hexARGB,
    hexRGBA,
    swiftUIColorRGBA,
    swiftUIColorHSBA,
    swiftNSColorRGBA,
    swiftNSColorHSBA,
    swiftColorRGBA,
    swiftColorHSBA,
};

// Every case, in declaration order.
inline constexpr std::array<ColorFormat, 17> allColorFormats = {
    ColorFormat::floatRGBA,        ColorFormat::floatHSVA,        ColorFormat::htmlRGB,
    ColorFormat::cssRGB,           ColorFormat::cssColor,         ColorFormat::cssHSL,
    ColorFormat::cssOKLAB,         ColorFormat::cssOKLCH,         ColorFormat::hexRGB,
    ColorFormat::hexARGB,          ColorFormat::hexRGBA,          ColorFormat::swiftUIColorRGBA,
    ColorFormat::swiftUIColorHSBA, ColorFormat::swiftNSColorRGBA, ColorFormat::swiftNSColorHSBA,
    ColorFormat::swiftColorRGBA,   ColorFormat::swiftColorHSBA};

// "Float RGBA", "CSS Hex", "SwiftUI Color HSBA", ...
std::string_view displayName(ColorFormat format);

// How colorString prints.
struct ColorConverterOptions {
    int roundedTo = 4;                            // decimal places before %g
    std::optional<std::string> p3Prefix;          // put in front of some forms in Display P3
    std::optional<std::string> suffixWhenClipped; // appended when the colour had to be clipped to sRGB
    bool forceClip = false;                       // rgb() with integers, clipped to sRGB
};

// What colorString gives.
struct ColorConverterResult {
    std::optional<std::string> colorString; // absent when the form has no text in the space
    bool clipped = false;
};

// What parseColor gives.
struct ConvertedColor {
    std::optional<ColorValue> color;
    std::optional<ColorFormat> detectedFormat;
    std::optional<ColorSpace> detectedColorSpace;
};

// Prints `color` in `format` for a caller working in `colorSpace`.
ColorConverterResult colorString(const ColorValue& color, ColorFormat format, ColorSpace colorSpace,
                                 const ColorConverterOptions& options = {});

// Reads `text`, trying `format` first and then the fixed fallback list; with
// `detectP3`, text containing "p3" reads into Display P3.
ConvertedColor parseColor(std::string_view text, ColorFormat format, ColorSpace colorSpace, bool detectP3);

// Reads `text` in exactly one format.
std::optional<ColorValue> parseFormat(std::string_view text, ColorSpace colorSpace, ColorFormat format);

} // namespace tintwork
