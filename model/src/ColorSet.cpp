#include "model/ColorSet.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <numbers>
#include <string>

#include "colour/FatalError.h"
#include "colour/Oklab.h"
#include "model/Uuid.h"

namespace tintwork {

namespace {

template <typename Enum>
std::optional<Enum> enumFromRaw(long long raw, Enum last) {
    if (raw < 0 || raw > static_cast<long long>(last)) {
        return std::nullopt;
    }
    return static_cast<Enum>(raw);
}

// A ramp of `count` members from start to end: t = i / (count - 1) through the curve,
// the last member being `end` itself. A mix that yields nothing leaves its member out.
template <typename T, typename Mix>
std::vector<T> generateRamp(const T& start, const T& end, int count, CurveType curve, double curveAmount,
                            const Mix& mix) {
    std::vector<T> ramp;
    if (count <= 0) {
        return ramp;
    }
    ramp.reserve(static_cast<std::size_t>(count));
    ramp.push_back(start);
    for (int i = 1; i < count; ++i) {
        const double t = static_cast<double>(i) / static_cast<double>(count - 1);
        if (t == 1.0) {
            ramp.push_back(end);
            continue;
        }
        if (std::optional<T> mixed = mix(start, end, applyCurve(curve, curveAmount, t))) {
            ramp.push_back(std::move(*mixed));
        }
    }
    return ramp;
}

// Two ramps meeting at `middleIndex`: start..middle and middle..end, the middle standing once.
template <typename T, typename Mix>
std::vector<T> generateSplitRamp(const T& start, const T& middle, const T& end, int steps, int middleIndex,
                                 CurveType curve, double curveAmount, const Mix& mix) {
    if (steps <= 0) {
        return {};
    }
    const int split = std::clamp(middleIndex, 0, steps - 1);
    std::vector<T> ramp = generateRamp(start, middle, split + 1, curve, curveAmount, mix);
    std::vector<T> second = generateRamp(middle, end, steps - split, curve, curveAmount, mix);
    if (!second.empty()) {
        ramp.insert(ramp.end(), std::next(second.begin()), second.end());
    }
    return ramp;
}

std::optional<ColorValue> toLinear(const ColorValue& color) {
    return color.converted(ColorEncoding::extendedLinearSRGB);
}

ColorValue lerpComponents(const ColorValue& start, const ColorValue& end, double p, ColorEncoding encoding) {
    auto lerp = [p](double a, double b) { return a + (b - a) * p; };
    return ColorValue(encoding, lerp(start.red(), end.red()), lerp(start.green(), end.green()),
                      lerp(start.blue(), end.blue()), lerp(start.alpha(), end.alpha()));
}

// Members of a set, as the interpolation of one appearance variant sees them.
template <typename Member>
using VariantOf = std::remove_cvref_t<decltype(std::declval<Member>().lightVariant)>;

// Regenerates the members of a colour or shadow set from its fixed members.
template <typename Set, typename Member, typename Mix>
void regenerateMembers(Set& set, std::vector<Member>& members, const Mix& mixWith) {
    if (set.type == SetType::manual || members.empty() || set.steps < 1) {
        return;
    }
    const int steps = set.steps;
    const Member first = members.front();
    const Member last = members.back();
    int middleIndex = 0;
    Member middle = first;
    if (set.type == SetType::threeItems) {
        middleIndex = middleColorIndex(steps, set.middleLocation);
        const int existingMiddle = members.size() >= 3
                                       ? middleColorIndex(static_cast<int>(members.size()), set.middleLocation)
                                       : static_cast<int>(members.size()) / 2;
        middle = members[static_cast<std::size_t>(existingMiddle)];
    }
    const std::unique_ptr<ColorInterpolator> interpolator =
        makeInterpolator(set.interpolationMethod, steps, middleIndex);
    auto mix = [&](const auto& a, const auto& b, double p) { return mixWith(*interpolator, a, b, p); };

    auto rampFor = [&](ColorSource source) {
        using Value = VariantOf<Member>;
        const Value& a = first.variant(source);
        const Value& b = last.variant(source);
        if (set.type == SetType::threeItems) {
            return generateSplitRamp<Value>(a, middle.variant(source), b, steps, middleIndex, set.curveType,
                                            set.curveAmount, mix);
        }
        return generateRamp<Value>(a, b, steps, set.curveType, set.curveAmount, mix);
    };

    const auto lightRamp = rampFor(ColorSource::light);
    std::vector<Member> generated(lightRamp.size());
    for (std::size_t i = 0; i < lightRamp.size(); ++i) {
        generated[i].lightVariant = lightRamp[i];
    }
    for (ColorSource source : {ColorSource::lightHighContrast, ColorSource::dark, ColorSource::darkHighContrast}) {
        const bool present = first.storedVariant(source) || last.storedVariant(source) ||
                             (set.type == SetType::threeItems && middle.storedVariant(source));
        if (!present) {
            continue;
        }
        const auto ramp = rampFor(source);
        for (std::size_t i = 0; i < generated.size() && i < ramp.size(); ++i) {
            generated[i].setVariant(source, ramp[i]);
        }
    }

    for (std::size_t i = 0; i < generated.size(); ++i) {
        Member& member = generated[i];
        const int index = static_cast<int>(i);
        if (set.namingScheme == ColorNamingScheme::manual) {
            member.name = i < members.size() && !members[i].name.empty() ? members[i].name : "Unnamed";
        } else {
            member.name = memberName(set.namingScheme, index);
        }
        if (i == 0) {
            member.uuid = first.uuid;
        } else if (i + 1 == generated.size()) {
            member.uuid = last.uuid;
        } else {
            member.uuid = newUUID();
        }
    }
    members = std::move(generated);
}

}  // namespace

std::optional<SetType> setTypeFromRaw(long long raw) {
    return enumFromRaw(raw, SetType::manual);
}

std::optional<ColorNamingScheme> colorNamingSchemeFromRaw(long long raw) {
    return enumFromRaw(raw, ColorNamingScheme::mediumNumeric);
}

std::optional<InterpolationMethod> interpolationMethodFromRaw(long long raw) {
    return enumFromRaw(raw, InterpolationMethod::oklab);
}

std::optional<CurveType> curveTypeFromRaw(long long raw) {
    return enumFromRaw(raw, CurveType::lame);
}

double applyCurve(CurveType curve, double amount, double t) {
    switch (curve) {
        case CurveType::linear: return t;
        case CurveType::cosine: {
            const double c = 0.5 - 0.5 * std::cos(std::numbers::pi * t);
            return t + (c - t) * amount;
        }
        case CurveType::hermite3: {
            const double h = t * t * (3 - 2 * t);
            return t + (h - t) * amount;
        }
        case CurveType::hermite5: {
            const double h = t * t * t * (t * (6 * t - 15) + 10);
            return t + (h - t) * amount;
        }
        case CurveType::lame: return 1 - std::pow(1 - std::pow(t, amount), 1 / amount);
    }
    return t;
}

std::string memberName(ColorNamingScheme scheme, int index) {
    const long long number = static_cast<long long>(index) + 1;
    switch (scheme) {
        case ColorNamingScheme::smallNumeric: return std::to_string(number);
        case ColorNamingScheme::mediumNumeric: return std::to_string(number * 10);
        case ColorNamingScheme::largeNumeric:
        case ColorNamingScheme::manual: return std::to_string(number * 100);
    }
    return "Unnamed";
}

int middleColorIndex(int steps, double middleLocation) {
    const double x = static_cast<double>(steps) * middleLocation;
    // 2^63 is the first double beyond the range of a 64-bit integer.
    if (!std::isfinite(x) || x >= 9223372036854775808.0 || x < -9223372036854775808.0) {
        throw FatalError("The middle location of a colour set is out of range");
    }
    const auto k = static_cast<std::int64_t>(x);
    if (k == 0) {
        return 1;
    }
    if (k < static_cast<std::int64_t>(steps) - 1) {
        return static_cast<int>(k);
    }
    return steps - 2;
}

std::vector<ColorValue> ColorInterpolator::generateTwoItemSet(const ColorValue& start, const ColorValue& end,
                                                              CurveType curve, double curveAmount) const {
    return generateRamp(start, end, steps, curve, curveAmount,
                        [this](const ColorValue& a, const ColorValue& b, double p) { return mix(a, b, p); });
}

std::vector<ColorValue> ColorInterpolator::generateThreeItemSet(const ColorValue& start, const ColorValue& middle,
                                                                const ColorValue& end, CurveType curve,
                                                                double curveAmount) const {
    return generateSplitRamp(start, middle, end, steps, middleColorIndex, curve, curveAmount,
                             [this](const ColorValue& a, const ColorValue& b, double p) { return mix(a, b, p); });
}

std::optional<ColorValue> LinearInterpolator::mix(const ColorValue& start, const ColorValue& end, double p) const {
    const std::optional<ColorValue> a = toLinear(start);
    const std::optional<ColorValue> b = toLinear(end);
    if (!a || !b) {
        return std::nullopt;
    }
    return lerpComponents(*a, *b, p, ColorEncoding::extendedLinearSRGB).converted(start.encoding());
}

std::optional<ColorValue> LinearLegacyInterpolator::mix(const ColorValue& start, const ColorValue& end,
                                                        double p) const {
    return lerpComponents(start, end, p, start.encoding());
}

std::optional<ColorValue> OKLABInterpolator::mix(const ColorValue& start, const ColorValue& end, double p) const {
    const std::optional<ColorValue> a = toLinear(start);
    const std::optional<ColorValue> b = toLinear(end);
    if (!a || !b) {
        return std::nullopt;
    }
    // lerpLAB weighs its first argument by p, so the end goes first.
    const RawRGBValues rgb = fromOKLAB(lerpLAB(toOKLAB(*b), p, toOKLAB(*a)));
    return ColorValue(ColorEncoding::extendedLinearSRGB, rgb.red, rgb.green, rgb.blue, rgb.alpha)
        .converted(start.encoding());
}

std::optional<ColorValue> OKLCHInterpolator::mix(const ColorValue& start, const ColorValue& end, double p) const {
    const std::optional<ColorValue> a = toLinear(start);
    const std::optional<ColorValue> b = toLinear(end);
    if (!a || !b) {
        return std::nullopt;
    }
    const RawRGBValues rgb = fromOKLCH(lerpLCH(toOKLCH(*b), p, toOKLCH(*a)));
    return ColorValue(ColorEncoding::extendedLinearSRGB, rgb.red, rgb.green, rgb.blue, rgb.alpha)
        .converted(start.encoding());
}

std::unique_ptr<ColorInterpolator> makeInterpolator(InterpolationMethod method, int steps, int middleColorIndex) {
    switch (method) {
        case InterpolationMethod::linearLegacy:
            return std::make_unique<LinearLegacyInterpolator>(steps, middleColorIndex);
        case InterpolationMethod::oklch: return std::make_unique<OKLCHInterpolator>(steps, middleColorIndex);
        case InterpolationMethod::oklab: return std::make_unique<OKLABInterpolator>(steps, middleColorIndex);
        case InterpolationMethod::linear: break;
    }
    return std::make_unique<LinearInterpolator>(steps, middleColorIndex);
}

std::optional<ShadowDetails> mixShadow(const ColorInterpolator& interpolator, const ShadowDetails& start,
                                       const ShadowDetails& end, double p) {
    std::optional<ColorValue> color = interpolator.mix(start.color, end.color, p);
    if (!color) {
        return std::nullopt;
    }
    // Offsets keep three decimals.
    auto lerp = [p](double a, double b) { return std::round((a + (b - a) * p) * 1000.0) / 1000.0; };
    ShadowDetails mixed;
    mixed.xOffset = lerp(start.xOffset, end.xOffset);
    mixed.yOffset = lerp(start.yOffset, end.yOffset);
    mixed.blur = lerp(start.blur, end.blur);
    mixed.spread = lerp(start.spread, end.spread);
    mixed.color = *color;
    return mixed;
}

void regenerate(OchreColorSet& set) {
    regenerateMembers(set, set.colors,
                      [](const ColorInterpolator& interpolator, const ColorValue& a, const ColorValue& b, double p) {
                          return interpolator.mix(a, b, p);
                      });
}

void regenerate(OchreColorShadowSet& set) {
    regenerateMembers(set, set.shadows,
                      [](const ColorInterpolator& interpolator, const ShadowDetails& a, const ShadowDetails& b,
                         double p) { return mixShadow(interpolator, a, b, p); });
}

}  // namespace tintwork
