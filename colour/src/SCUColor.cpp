#include "colour/SCUColor.h"

#include <cmath>
#include <numbers>
#include <string>

#include "colour/FatalError.h"
#include "colour/Oklab.h"

namespace tintwork {

namespace {

ColorValue linearColor(const RawRGBValues& linear) {
    return ColorValue(ColorEncoding::extendedLinearSRGB, linear.red, linear.green, linear.blue, linear.alpha);
}

// A perceptual colour always enters the working world in Display P3.
ColorValue perceptualToWorking(const RawRGBValues& linear) {
    const std::optional<ColorValue> working = linearColor(linear).converted(ColorEncoding::displayP3);
    if (!working) {
        throw FatalError("Unable to convert a perceptual colour to Display P3");
    }
    return *working;
}

[[noreturn]] void missingRecord(const char* operation) {
    throw FatalError(std::string("Colour has no component values for its colour space in ") + operation);
}

// Hue in 0..1 from an angle in radians.
double unitHue(double radians) {
    double degrees = radians * 180.0 / std::numbers::pi;
    if (degrees < 0.0) {
        degrees += 360.0;
    }
    return degrees / 360.0;
}

bool allNear(const std::array<double, 4>& lhs, const std::array<double, 4>& rhs, double tolerance) {
    for (std::size_t i = 0; i < lhs.size(); ++i) {
        if (!(std::fabs(lhs[i] - rhs[i]) < tolerance)) {
            return false;
        }
    }
    return true;
}

std::array<double, 4> values(const RawRGBValues& v) {
    return {v.red, v.green, v.blue, v.alpha};
}

std::array<double, 4> values(const RawLABValues& v) {
    return {v.l, v.a, v.b, v.alpha};
}

std::array<double, 4> values(const RawLCHValues& v) {
    return {v.lightness, v.chroma, v.hue, v.alpha};
}

// The four values of the record the space calls for, or nothing when it is absent.
std::optional<std::array<double, 4>> spaceValues(const SCUColor& color) {
    if (isRGBSpace(color.colorSpace)) {
        return color.rgbValues ? std::optional(values(*color.rgbValues)) : std::nullopt;
    }
    if (color.colorSpace == ColorSpace::oklab) {
        return color.labValues ? std::optional(values(*color.labValues)) : std::nullopt;
    }
    return color.lchValues ? std::optional(values(*color.lchValues)) : std::nullopt;
}

} // namespace

SCUColor::SCUColor() : rgbValues(RawRGBValues{1.0, 1.0, 1.0, 1.0}) {}

SCUColor::SCUColor(const ColorValue& color, ColorSpace space) : colorSpace(space) {
    if (isRGBSpace(space)) {
        const ColorValue converted = color.converted(encodingForSpace(space)).value_or(color);
        rgbValues = RawRGBValues{converted.red(), converted.green(), converted.blue(), converted.alpha()};
        return;
    }
    const ColorValue linear = color.converted(ColorEncoding::extendedLinearSRGB).value_or(color);
    if (space == ColorSpace::oklab) {
        labValues = toOKLAB(linear.red(), linear.green(), linear.blue(), linear.alpha());
    } else {
        lchValues = toOKLCH(linear.red(), linear.green(), linear.blue(), linear.alpha());
    }
}

SCUColor::SCUColor(ColorSpace space, double red, double green, double blue, double alpha)
    : colorSpace(space), rgbValues(RawRGBValues{red, green, blue, alpha}) {}

SCUColor::SCUColor(const RawLCHValues& lch) : colorSpace(ColorSpace::oklch), lchValues(lch) {}

// The space is oklch although the record is OKLAB: documents rely on this.
SCUColor::SCUColor(const RawLABValues& lab) : colorSpace(ColorSpace::oklch), labValues(lab) {}

SCUColor SCUColor::fromLCH(double lightness, double chroma, double hue, double alpha) {
    return SCUColor(RawLCHValues{lightness, chroma, hue, alpha});
}

SCUColor SCUColor::fromLAB(double l, double a, double b, double alpha) {
    return SCUColor(RawLABValues{l, a, b, alpha});
}

SCUColor SCUColor::black() {
    return SCUColor(ColorSpace::sRGB, 0.0, 0.0, 0.0, 1.0);
}

ColorValue SCUColor::colorValue() const {
    if (isRGBSpace(colorSpace)) {
        if (!rgbValues) {
            missingRecord("colorValue");
        }
        return ColorValue(encodingForSpace(colorSpace), rgbValues->red, rgbValues->green, rgbValues->blue,
                          rgbValues->alpha);
    }
    if (colorSpace == ColorSpace::oklab) {
        if (!labValues) {
            missingRecord("colorValue");
        }
        return perceptualToWorking(fromOKLAB(*labValues));
    }
    if (!lchValues) {
        missingRecord("colorValue");
    }
    return perceptualToWorking(fromOKLCH(*lchValues));
}

double SCUColor::alpha() const {
    const auto components = spaceValues(*this);
    return components ? (*components)[3] : 0.0;
}

double SCUColor::hue() const {
    if (isRGBSpace(colorSpace)) {
        return rgbValues ? colorValue().hue() : 0.0;
    }
    if (colorSpace == ColorSpace::oklab) {
        return labValues ? unitHue(std::atan2(labValues->b, labValues->a)) : 0.0;
    }
    return lchValues ? unitHue(lchValues->hue) : 0.0;
}

double SCUColor::saturation() const {
    return colorValue().saturation();
}

double SCUColor::brightness() const {
    return colorValue().brightness();
}

SCUColor SCUColor::withAlpha(double newAlpha) const {
    if (isRGBSpace(colorSpace)) {
        if (!rgbValues) {
            missingRecord("withAlpha");
        }
        return SCUColor(colorSpace, rgbValues->red, rgbValues->green, rgbValues->blue, newAlpha);
    }
    if (colorSpace == ColorSpace::oklab) {
        if (!labValues) {
            missingRecord("withAlpha");
        }
        return fromLAB(labValues->l, labValues->a, labValues->b, newAlpha);
    }
    if (!lchValues) {
        missingRecord("withAlpha");
    }
    // Stored documents were written by this exact mapping, so it is kept:
    // lightness feeds the chroma and, read as degrees, the hue.
    const double lightness = lchValues->lightness;
    return fromLCH(lightness, lightness, lightness * std::numbers::pi / 180.0, newAlpha);
}

SCUColor SCUColor::withHue(double newHue) const {
    if (isRGBSpace(colorSpace)) {
        if (!rgbValues) {
            missingRecord("withHue");
        }
        const ColorValue current = colorValue();
        const ColorValue turned = ColorValue::fromHSB(current.encoding(), newHue, current.saturation(),
                                                      current.brightness(), current.alpha());
        return SCUColor(ColorSpace::sRGB, turned.red(), turned.green(), turned.blue(), turned.alpha());
    }
    if (colorSpace == ColorSpace::oklab) {
        if (!labValues) {
            missingRecord("withHue");
        }
        const double angle = 2.0 * std::numbers::pi * newHue;
        return fromLAB(labValues->l, std::cos(angle), std::sin(angle), alpha());
    }
    if (!lchValues) {
        missingRecord("withHue");
    }
    return fromLCH(lchValues->lightness, lchValues->chroma, newHue * 360.0 * std::numbers::pi / 180.0,
                   lchValues->alpha);
}

SCUColor SCUColor::converted(ColorSpace to) const {
    if (to == colorSpace || !spaceValues(*this)) {
        return *this;
    }
    const ColorValue working = colorValue();
    if (isRGBSpace(to)) {
        const std::optional<ColorValue> target = working.converted(encodingForSpace(to));
        if (!target) {
            return *this;
        }
        return SCUColor(to, target->red(), target->green(), target->blue(), target->alpha());
    }
    const std::optional<ColorValue> linear = working.converted(ColorEncoding::extendedLinearSRGB);
    if (!linear) {
        return *this;
    }
    if (to == ColorSpace::oklab) {
        return SCUColor(toOKLAB(linear->red(), linear->green(), linear->blue(), linear->alpha()));
    }
    return SCUColor(toOKLCH(linear->red(), linear->green(), linear->blue(), linear->alpha()));
}

bool SCUColor::isEqual(const SCUColor& other, double tolerance) const {
    if (colorSpace != other.colorSpace) {
        return false;
    }
    const auto mine = spaceValues(*this);
    const auto theirs = spaceValues(other);
    return mine && theirs && allNear(*mine, *theirs, tolerance);
}

bool operator==(const SCUColor& lhs, const SCUColor& rhs) {
    if (lhs.colorSpace != rhs.colorSpace) {
        return false;
    }
    const auto mine = spaceValues(lhs);
    const auto theirs = spaceValues(rhs);
    return mine && theirs && *mine == *theirs;
}

} // namespace tintwork
