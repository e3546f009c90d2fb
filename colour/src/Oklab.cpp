#include "colour/Oklab.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tintwork {

namespace {

// Cube root through pow with a fixed exponent, as the stored values were made;
// std::cbrt gives slightly different results and must not replace it.
double signedCubeRoot(double x) {
    constexpr double third = 0.3333333333333333;
    return x >= 0.0 ? std::pow(x, third) : -std::pow(-x, third);
}

double clampUnit(double t) {
    if (t <= 0.0 || std::isnan(t)) {
        return 0.0;
    }
    return t > 1.0 ? 1.0 : t;
}

// (first - second) * t + second: t = 1 is `first`, t = 0 is `second`.
double mix(double first, double t, double second) {
    return (first - second) * t + second;
}

constexpr double chromaThreshold = 0.00001;

} // namespace

RawRGBValues fromOKLAB(double l, double a, double b, double alpha) {
    const double lp = l + 0.3963377774 * a + 0.2158037573 * b;
    const double mp = l - 0.1055613458 * a - 0.0638541728 * b;
    const double sp = l - 0.0894841775 * a - 1.291485548 * b;
    const double l3 = lp * lp * lp;
    const double m3 = mp * mp * mp;
    const double s3 = sp * sp * sp;
    return {
        4.0767416621 * l3 - 3.3077115913 * m3 + 0.2309699292 * s3,
        -1.2684380046 * l3 + 2.6097574011 * m3 - 0.3413193965 * s3,
        -0.0041960863 * l3 - 0.7034186147 * m3 + 1.707614701 * s3,
        alpha,
    };
}

RawRGBValues fromOKLAB(const RawLABValues& lab) {
    return fromOKLAB(lab.l, lab.a, lab.b, lab.alpha);
}

RawRGBValues fromOKLCH(double lightness, double chroma, double hue, double alpha) {
    return fromOKLAB(lightness, chroma * std::cos(hue), chroma * std::sin(hue), alpha);
}

RawRGBValues fromOKLCH(const RawLCHValues& lch) {
    return fromOKLCH(lch.lightness, lch.chroma, lch.hue, lch.alpha);
}

RawLABValues toOKLAB(double red, double green, double blue, double alpha) {
    const double l = signedCubeRoot(0.4122214708 * red + 0.5363325363 * green + 0.0514459929 * blue);
    const double m = signedCubeRoot(0.2119034982 * red + 0.6806995451 * green + 0.1073969566 * blue);
    const double s = signedCubeRoot(0.0883024619 * red + 0.2817188376 * green + 0.6299787005 * blue);
    return {
        0.2104542553 * l + 0.793617785 * m - 0.0040720468 * s,
        1.9779984951 * l - 2.428592205 * m + 0.4505937099 * s,
        0.0259040371 * l + 0.7827717662 * m - 0.808675766 * s,
        alpha,
    };
}

RawLABValues toOKLAB(const ColorValue& color) {
    const ColorValue linear = color.converted(ColorEncoding::extendedLinearSRGB).value_or(color);
    return toOKLAB(linear.red(), linear.green(), linear.blue(), linear.alpha());
}

RawLCHValues toOKLCH(double red, double green, double blue, double alpha) {
    const RawLABValues lab = toOKLAB(red, green, blue, alpha);
    return {lab.l, std::sqrt(lab.a * lab.a + lab.b * lab.b), std::atan2(lab.b, lab.a), alpha};
}

RawLCHValues toOKLCH(const ColorValue& color) {
    const ColorValue linear = color.converted(ColorEncoding::extendedLinearSRGB).value_or(color);
    return toOKLCH(linear.red(), linear.green(), linear.blue(), linear.alpha());
}

RawLABValues lerpLAB(const RawLABValues& first, double t, const RawLABValues& second) {
    t = clampUnit(t);
    return {mix(first.l, t, second.l), mix(first.a, t, second.a), mix(first.b, t, second.b),
            mix(first.alpha, t, second.alpha)};
}

RawLCHValues lerpLCH(const RawLCHValues& first, double t, const RawLCHValues& second) {
    t = clampUnit(t);
    // A grey has no meaningful hue: it borrows the other side's so that only
    // lightness and chroma move.
    double secondHue = second.hue;
    double firstHue = first.hue;
    if (second.chroma <= chromaThreshold) {
        secondHue = firstHue;
    }
    if (first.chroma <= chromaThreshold) {
        firstHue = secondHue;
    }
    double difference = firstHue - secondHue;
    if (difference > std::numbers::pi) {
        difference -= 2.0 * std::numbers::pi;
    } else if (difference < -std::numbers::pi) {
        difference += 2.0 * std::numbers::pi;
    }
    return {mix(first.lightness, t, second.lightness), mix(first.chroma, t, second.chroma),
            difference * t + secondHue, mix(first.alpha, t, second.alpha)};
}

} // namespace tintwork
