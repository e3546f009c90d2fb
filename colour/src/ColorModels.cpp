#include "colour/ColorModels.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "colour/Oklab.h"

namespace tintwork {

namespace {

using Vector = std::array<double, 3>;
using Matrix = std::array<Vector, 3>;

Vector multiply(const Matrix& m, const Vector& v) {
    return {m[0][0] * v[0] + m[0][1] * v[1] + m[0][2] * v[2], m[1][0] * v[0] + m[1][1] * v[1] + m[1][2] * v[2],
            m[2][0] * v[0] + m[2][1] * v[1] + m[2][2] * v[2]};
}

// Primaries to CIE XYZ and back, as CSS Color 4 publishes them (D65 unless named D50).
constexpr Matrix xyzD65ToLinearSRGB = {{{3.2409699419045226, -1.537383177570094, -0.4986107602930034},
                                        {-0.9692436362808796, 1.8759675015077202, 0.04155505740717559},
                                        {0.05563007969699366, -0.20397695888897652, 1.0569715142428786}}};
constexpr Matrix linearDisplayP3ToXYZ = {{{0.4865709486482162, 0.26566769316909306, 0.1982172852343625},
                                          {0.2289745640697488, 0.6917385218365064, 0.079286914093745},
                                          {0.0, 0.04511338185890264, 1.043944368900976}}};
constexpr Matrix linearA98ToXYZ = {{{0.5766690429101305, 0.1855582379065463, 0.1882286462349947},
                                    {0.29734497525053605, 0.6273635662554661, 0.07529145849399788},
                                    {0.02703136138641234, 0.07068885253582723, 0.9913375368376388}}};
constexpr Matrix linearRec2020ToXYZ = {{{0.6369580483012914, 0.14461690358620832, 0.1688809751641721},
                                        {0.2627002120112671, 0.6779980715188708, 0.05930171646986196},
                                        {0.0, 0.028072693049087428, 1.060985057710791}}};
constexpr Matrix linearProPhotoToXYZD50 = {{{0.79776664490064230, 0.13518129740053308, 0.03134773412839220},
                                            {0.28807482881940130, 0.71183523424187300, 0.00008993693872564},
                                            {0.0, 0.0, 0.82510460251046020}}};
// Bradford chromatic adaptation from the D50 white to D65.
constexpr Matrix d50ToD65 = {{{0.955473421488075, -0.02309845494876471, 0.06325924320057072},
                              {-0.0283697093338637, 1.0099953980813041, 0.021041441191917323},
                              {0.012314014864481998, -0.020507649298898964, 1.330365926242124}}};
// The D50 white as CSS Color 4 derives it from its chromaticity.
constexpr Vector whiteD50 = {0.3457 / 0.3585, 1.0, (1.0 - 0.3457 - 0.3585) / 0.3585};

double degreesToRadians(double degrees) {
    return degrees * std::numbers::pi / 180.0;
}

Vector decodeAll(const Vector& v, double (*decode)(double)) {
    return {decode(v[0]), decode(v[1]), decode(v[2])};
}

double a98Decode(double encoded) {
    return std::copysign(std::pow(std::fabs(encoded), 563.0 / 256.0), encoded);
}

double prophotoDecode(double encoded) {
    const double magnitude = std::fabs(encoded);
    return magnitude <= 16.0 / 512.0 ? encoded / 16.0 : std::copysign(std::pow(magnitude, 1.8), encoded);
}

// The reference display's transfer function of BT.1886 (gamma 2.4, no black lift),
// as CSS Color 4 now defines rec2020.
double rec2020Decode(double encoded) {
    return std::copysign(std::pow(std::fabs(encoded), 2.4), encoded);
}

// CSS Color 4: hsl() to sRGB, hue in degrees, saturation and lightness as fractions.
Vector hslToSRGB(double hue, double saturation, double lightness) {
    hue = std::fmod(hue, 360.0);
    if (hue < 0) {
        hue += 360.0;
    }
    auto channel = [&](double n) {
        const double k = std::fmod(n + hue / 30.0, 12.0);
        const double a = saturation * std::min(lightness, 1.0 - lightness);
        return lightness - a * std::max(-1.0, std::min({k - 3.0, 9.0 - k, 1.0}));
    };
    return {channel(0), channel(8), channel(4)};
}

Vector hwbToSRGB(double hue, double whiteness, double blackness) {
    if (whiteness + blackness >= 1.0) {
        const double grey = whiteness / (whiteness + blackness);
        return {grey, grey, grey};
    }
    Vector rgb = hslToSRGB(hue, 1.0, 0.5);
    for (double& channel : rgb) {
        channel = channel * (1.0 - whiteness - blackness) + whiteness;
    }
    return rgb;
}

Vector labToXYZD50(double lightness, double a, double b) {
    constexpr double kappa = 24389.0 / 27.0;
    constexpr double epsilon = 216.0 / 24389.0;
    const double fy = (lightness + 16.0) / 116.0;
    const double fx = a / 500.0 + fy;
    const double fz = fy - b / 200.0;
    const double x = fx * fx * fx > epsilon ? fx * fx * fx : (116.0 * fx - 16.0) / kappa;
    const double y = lightness > kappa * epsilon ? fy * fy * fy : lightness / kappa;
    const double z = fz * fz * fz > epsilon ? fz * fz * fz : (116.0 * fz - 16.0) / kappa;
    return {x * whiteD50[0], y * whiteD50[1], z * whiteD50[2]};
}

Vector fromXYZD65(const Vector& xyz) {
    return multiply(xyzD65ToLinearSRGB, xyz);
}

Vector fromXYZD50(const Vector& xyz) {
    return fromXYZD65(multiply(d50ToD65, xyz));
}

}  // namespace

double srgbDecode(double encoded) {
    const double magnitude = std::fabs(encoded);
    if (magnitude <= 0.04045) {
        return encoded / 12.92;
    }
    return std::copysign(std::pow((magnitude + 0.055) / 1.055, 2.4), encoded);
}

double srgbEncode(double linear) {
    const double magnitude = std::fabs(linear);
    if (magnitude <= 0.0031308) {
        return linear * 12.92;
    }
    return std::copysign(1.055 * std::pow(magnitude, 1.0 / 2.4) - 0.055, linear);
}

namespace {

struct ModelName {
    ColorModel model;
    std::string_view name;
};

constexpr ModelName modelNames[] = {
    {ColorModel::srgb, "srgb"},           {ColorModel::srgbLinear, "srgb-linear"},
    {ColorModel::hsl, "hsl"},             {ColorModel::hwb, "hwb"},
    {ColorModel::lab, "lab"},             {ColorModel::lch, "lch"},
    {ColorModel::oklab, "oklab"},         {ColorModel::oklch, "oklch"},
    {ColorModel::displayP3, "display-p3"}, {ColorModel::a98RGB, "a98-rgb"},
    {ColorModel::prophotoRGB, "prophoto-rgb"}, {ColorModel::rec2020, "rec2020"},
    {ColorModel::xyzD65, "xyz-d65"},      {ColorModel::xyzD50, "xyz-d50"},
};

}  // namespace

std::optional<ColorModel> colorModelNamed(std::string_view name) {
    for (const ModelName& entry : modelNames) {
        if (entry.name == name) {
            return entry.model;
        }
    }
    return std::nullopt;
}

std::string_view colorModelName(ColorModel model) {
    for (const ModelName& entry : modelNames) {
        if (entry.model == model) {
            return entry.name;
        }
    }
    return "";
}

std::array<double, 3> linearSRGBFromModel(ColorModel model, const std::array<double, 3>& c) {
    switch (model) {
        case ColorModel::srgb: return decodeAll(c, srgbDecode);
        case ColorModel::srgbLinear: return c;
        case ColorModel::hsl: return decodeAll(hslToSRGB(c[0], c[1] / 100.0, c[2] / 100.0), srgbDecode);
        case ColorModel::hwb: return decodeAll(hwbToSRGB(c[0], c[1] / 100.0, c[2] / 100.0), srgbDecode);
        case ColorModel::lab: return fromXYZD50(labToXYZD50(c[0], c[1], c[2]));
        case ColorModel::lch: {
            const double hue = degreesToRadians(c[2]);
            return fromXYZD50(labToXYZD50(c[0], c[1] * std::cos(hue), c[1] * std::sin(hue)));
        }
        case ColorModel::oklab: {
            const RawRGBValues rgb = fromOKLAB(c[0], c[1], c[2], 1.0);
            return {rgb.red, rgb.green, rgb.blue};
        }
        case ColorModel::oklch: {
            const RawRGBValues rgb = fromOKLCH(c[0], c[1], degreesToRadians(c[2]), 1.0);
            return {rgb.red, rgb.green, rgb.blue};
        }
        case ColorModel::displayP3: return fromXYZD65(multiply(linearDisplayP3ToXYZ, decodeAll(c, srgbDecode)));
        case ColorModel::a98RGB: return fromXYZD65(multiply(linearA98ToXYZ, decodeAll(c, a98Decode)));
        case ColorModel::prophotoRGB: return fromXYZD50(multiply(linearProPhotoToXYZD50, decodeAll(c, prophotoDecode)));
        case ColorModel::rec2020: return fromXYZD65(multiply(linearRec2020ToXYZ, decodeAll(c, rec2020Decode)));
        case ColorModel::xyzD65: return fromXYZD65(c);
        case ColorModel::xyzD50: return fromXYZD50(c);
    }
    return c;
}

}  // namespace tintwork
