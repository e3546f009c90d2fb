#include "colour/ColorValue.h"

#include <algorithm>
#include <cmath>

#include "colour/Oklab.h"

namespace tintwork {

namespace {

using Matrix = std::array<std::array<double, 3>, 3>;
using Triple = std::array<double, 3>;

// Linear-light conversions between the sRGB and Display P3 primaries, both with
// the D65 white point; derived from the published chromaticities of the two spaces.
constexpr Matrix linearSRGBToDisplayP3 = {{
    {0.82246196871436228, 0.17753803128563775, 0.0},
    {0.033194198850961622, 0.96680580114903836, 0.0},
    {0.017082630721120033, 0.072397440663963475, 0.91051992861491649},
}};

constexpr Matrix linearDisplayP3ToSRGB = {{
    {1.2249401762805598, -0.22494017628055996, 0.0},
    {-0.042056954709688163, 1.0420569547096881, 0.0},
    {-0.019637554590334432, -0.078636045550631889, 1.0982736001409663},
}};

Triple multiply(const Matrix& matrix, const Triple& v) {
    return {
        matrix[0][0] * v[0] + matrix[0][1] * v[1] + matrix[0][2] * v[2],
        matrix[1][0] * v[0] + matrix[1][1] * v[1] + matrix[1][2] * v[2],
        matrix[2][0] * v[0] + matrix[2][1] * v[1] + matrix[2][2] * v[2],
    };
}

// The sRGB transfer curve, mirrored for negative values so that extended
// components keep their sign.
double decodeTransfer(double encoded) {
    const double magnitude = std::fabs(encoded);
    const double linear = magnitude <= 0.04045 ? magnitude / 12.92 : std::pow((magnitude + 0.055) / 1.055, 2.4);
    return std::copysign(linear, encoded);
}

double encodeTransfer(double linear) {
    const double magnitude = std::fabs(linear);
    const double encoded = magnitude <= 0.0031308 ? magnitude * 12.92 : 1.055 * std::pow(magnitude, 1.0 / 2.4) - 0.055;
    return std::copysign(encoded, linear);
}

// Clamp to 0..1, with NaN taking 0.
double clampUnit(double value) {
    if (!(value > 0.0)) {
        return 0.0;
    }
    return std::min(value, 1.0);
}

bool usesSRGBPrimaries(ColorEncoding encoding) {
    return encoding != ColorEncoding::displayP3;
}

bool isLinear(ColorEncoding encoding) {
    return encoding == ColorEncoding::extendedLinearSRGB;
}

Triple apply(Triple components, double (*function)(double)) {
    for (double& component : components) {
        component = function(component);
    }
    return components;
}

} // namespace

ColorValue::ColorValue(ColorEncoding encoding, double red, double green, double blue, double alpha)
    : encoding_(encoding), red_(red), green_(green), blue_(blue), alpha_(alpha) {}

ColorValue ColorValue::sRGB(double red, double green, double blue, double alpha) {
    return ColorValue(ColorEncoding::sRGB, red, green, blue, alpha);
}

ColorValue ColorValue::fromHSB(ColorEncoding encoding, double hue, double saturation, double brightness,
                               double alpha) {
    if (!std::isfinite(hue)) {
        hue = 0.0;
    }
    const double sector = (hue - std::floor(hue)) * 6.0;
    const double whole = std::floor(sector);
    const double fraction = sector - whole;
    const double p = brightness * (1.0 - saturation);
    const double q = brightness * (1.0 - saturation * fraction);
    const double t = brightness * (1.0 - saturation * (1.0 - fraction));
    const double v = brightness;
    switch (static_cast<int>(whole) % 6) {
    case 0:
        return ColorValue(encoding, v, t, p, alpha);
    case 1:
        return ColorValue(encoding, q, v, p, alpha);
    case 2:
        return ColorValue(encoding, p, v, t, alpha);
    case 3:
        return ColorValue(encoding, p, q, v, alpha);
    case 4:
        return ColorValue(encoding, t, p, v, alpha);
    default:
        return ColorValue(encoding, v, p, q, alpha);
    }
}

double ColorValue::hue() const {
    const double maximum = std::max({red_, green_, blue_});
    const double delta = maximum - std::min({red_, green_, blue_});
    if (!(delta > 0.0)) {
        return 0.0;
    }
    double sixths = 0.0;
    if (maximum == red_) {
        sixths = (green_ - blue_) / delta;
    } else if (maximum == green_) {
        sixths = 2.0 + (blue_ - red_) / delta;
    } else {
        sixths = 4.0 + (red_ - green_) / delta;
    }
    double result = sixths / 6.0;
    if (result < 0.0) {
        result += 1.0;
    }
    return result;
}

double ColorValue::saturation() const {
    const double maximum = std::max({red_, green_, blue_});
    if (maximum == 0.0 || !std::isfinite(maximum)) {
        return 0.0;
    }
    return (maximum - std::min({red_, green_, blue_})) / maximum;
}

double ColorValue::brightness() const {
    return std::max({red_, green_, blue_});
}

std::optional<ColorValue> ColorValue::converted(ColorEncoding target) const {
    Triple components = {red_, green_, blue_};
    if (encoding_ != target) {
        // sRGB and extended sRGB share primaries and curve: only a move between
        // them and Display P3 or the linear encoding changes the numbers.
        const bool sameCurveAndPrimaries = !isLinear(encoding_) && !isLinear(target) &&
                                           usesSRGBPrimaries(encoding_) == usesSRGBPrimaries(target);
        if (!sameCurveAndPrimaries) {
            Triple linear = isLinear(encoding_) ? components : apply(components, decodeTransfer);
            if (usesSRGBPrimaries(encoding_) && !usesSRGBPrimaries(target)) {
                linear = multiply(linearSRGBToDisplayP3, linear);
            } else if (!usesSRGBPrimaries(encoding_) && usesSRGBPrimaries(target)) {
                linear = multiply(linearDisplayP3ToSRGB, linear);
            }
            components = isLinear(target) ? linear : apply(linear, encodeTransfer);
        }
    }
    if (target == ColorEncoding::sRGB) {
        components = apply(components, clampUnit);
    }
    return ColorValue(target, components[0], components[1], components[2], alpha_);
}

std::array<double, 4> ColorValue::rgbaComponents() const {
    return {red_, green_, blue_, alpha_};
}

std::array<double, 4> ColorValue::hsbaComponents() const {
    return {hue(), saturation(), brightness(), alpha_};
}

bool isOutsideSRGB(const ColorValue& color) {
    std::optional<ColorValue> extended;
    switch (color.encoding()) {
    case ColorEncoding::sRGB:
    case ColorEncoding::extendedLinearSRGB:
        return false;
    case ColorEncoding::displayP3:
        extended = color.converted(ColorEncoding::sRGBExtended);
        break;
    case ColorEncoding::sRGBExtended:
        extended = color;
        break;
    }
    if (!extended) {
        return false;
    }
    for (double component : {extended->red(), extended->green(), extended->blue()}) {
        if (component < 0.0 || component > 1.0) {
            return true;
        }
    }
    return false;
}

ColorValue pushLightness(const ColorValue& color, double amount) {
    const std::optional<ColorValue> linear = color.converted(ColorEncoding::extendedLinearSRGB);
    if (!linear) {
        return color;
    }
    RawLCHValues lch = toOKLCH(linear->red(), linear->green(), linear->blue(), linear->alpha());
    const double target = lch.lightness > 0.5 ? 1.15 : -0.15;
    lch.lightness = lch.lightness * (1.0 - amount) + amount * target;
    const RawRGBValues rgb = fromOKLCH(lch);
    const ColorValue pushed(ColorEncoding::extendedLinearSRGB, rgb.red, rgb.green, rgb.blue, rgb.alpha);
    return pushed.converted(color.encoding()).value_or(color);
}

bool isNear(const ColorValue& first, const ColorValue& second, double tolerance) {
    if (first.encoding() != second.encoding()) {
        return false;
    }
    const auto a = first.rgbaComponents();
    const auto b = second.rgbaComponents();
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!(std::fabs(a[i] - b[i]) < tolerance)) {
            return false;
        }
    }
    return true;
}

double roundPlaces(double value, int places) {
    const double factor = std::pow(10.0, places);
    return std::round(value * factor) / factor;
}

} // namespace tintwork
