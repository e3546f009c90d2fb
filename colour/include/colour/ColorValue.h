// The working colour: an RGB encoding tag and four doubles, with conversion
// between encodings and the few colour operations the rest of the tool needs.
#pragma once

#include <array>
#include <optional>

namespace tintwork {

// The RGB encodings a working colour can be in. Display P3 shares the sRGB
// transfer function; extended linear sRGB has no transfer function at all.
enum class ColorEncoding { sRGB, sRGBExtended, displayP3, extendedLinearSRGB };

class ColorValue {
public:
    // Opaque black in sRGB.
    ColorValue() = default;
    // A colour with the given encoded components, stored as they are (no clamping).
    ColorValue(ColorEncoding encoding, double red, double green, double blue, double alpha);

    // A colour in sRGB, as used for fixed colours.
    static ColorValue sRGB(double red, double green, double blue, double alpha = 1.0);
    // A colour from hue, saturation and brightness (each 0..1) in the given encoding.
    static ColorValue fromHSB(ColorEncoding encoding, double hue, double saturation, double brightness,
                              double alpha = 1.0);

    ColorEncoding encoding() const { return encoding_; }
    double red() const { return red_; }
    double green() const { return green_; }
    double blue() const { return blue_; }
    double alpha() const { return alpha_; }

    // HSB of the encoded components, each 0..1; a grey has hue 0, black has saturation 0.
    double hue() const;
    double saturation() const;
    double brightness() const;

    // The same colour in another encoding; conversion into sRGB clamps to 0..1,
    // the others keep values outside the gamut.
    std::optional<ColorValue> converted(ColorEncoding target) const;

    // red, green, blue, alpha.
    std::array<double, 4> rgbaComponents() const;
    // hue, saturation, brightness, alpha.
    std::array<double, 4> hsbaComponents() const;

    // Exact equality of encoding and all four components.
    friend bool operator==(const ColorValue&, const ColorValue&) = default;

private:
    ColorEncoding encoding_ = ColorEncoding::sRGB;
    double red_ = 0.0;
    double green_ = 0.0;
    double blue_ = 0.0;
    double alpha_ = 1.0;
};

// True when the colour has components strictly outside 0..1 once expressed in
// extended sRGB. Colours tagged sRGB or extended linear sRGB are never outside.
bool isOutsideSRGB(const ColorValue& color);

// Moves the OKLCH lightness by `amount` toward 1.15 (lightness above 0.5) or
// -0.15, keeping chroma, hue and alpha; the result has the input's encoding.
ColorValue pushLightness(const ColorValue& color, double amount);

// True when both colours are in the same RGB encoding and every component
// differs by strictly less than `tolerance`.
bool isNear(const ColorValue& first, const ColorValue& second, double tolerance);

// `value` rounded to `places` decimals, halves away from zero.
double roundPlaces(double value, int places);

} // namespace tintwork
