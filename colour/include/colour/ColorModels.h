// The colour spaces of CSS Color 4 that token files name, and their conversion to
// linear-light sRGB (through CIE XYZ where the space has other primaries or white).
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace tintwork {

enum class ColorModel {
    srgb,
    srgbLinear,
    hsl,
    hwb,
    lab,
    lch,
    oklab,
    oklch,
    displayP3,
    a98RGB,
    prophotoRGB,
    rec2020,
    xyzD65,
    xyzD50,
};

// The model a token file's name selects ("srgb", "display-p3", "xyz-d65", ...); nullopt otherwise.
std::optional<ColorModel> colorModelNamed(std::string_view name);
// The name a token file uses for the model.
std::string_view colorModelName(ColorModel model);

// Components as CSS writes them: hues in degrees, HSL and HWB percentages as 0..100,
// CIE Lab and LCH lightness as 0..100, OKLab and OKLCH lightness as 0..1. The result
// is extended linear-light sRGB (no clamping). OKLab and OKLCH go through the same
// conversion as the document's own OKLAB and OKLCH colours.
std::array<double, 3> linearSRGBFromModel(ColorModel model, const std::array<double, 3>& components);

// The sRGB transfer function and its inverse, extended to negative values by symmetry.
double srgbEncode(double linear);
double srgbDecode(double encoded);

}  // namespace tintwork
