#pragma once
// Colour and shadow ramps: their stored settings and the interpolators that
// generate the members between the author's fixed colours.

#include <memory>
#include <optional>
#include <vector>

#include "colour/ColorSpace.h"
#include "colour/ColorValue.h"
#include "model/Themeable.h"

namespace tintwork {

// The raw integer stored in a document is the case position.
enum class SetType { twoItems = 0, threeItems = 1, manual = 2 };
enum class ColorNamingScheme { smallNumeric = 0, largeNumeric = 1, manual = 2, mediumNumeric = 3 };
enum class InterpolationMethod { linear = 0, linearLegacy = 1, oklch = 2, oklab = 3 };
enum class CurveType { linear = 0, cosine = 1, hermite3 = 2, hermite5 = 3, lame = 4 };

std::optional<SetType> setTypeFromRaw(long long raw);
std::optional<ColorNamingScheme> colorNamingSchemeFromRaw(long long raw);
std::optional<InterpolationMethod> interpolationMethodFromRaw(long long raw);
std::optional<CurveType> curveTypeFromRaw(long long raw);

// The warped position of t in 0..1 along a curve with the given amount.
double applyCurve(CurveType curve, double amount, double t);

// The member name for index i (from 0) of a numerically named set: "1", "10", "100", ...
std::string memberName(ColorNamingScheme scheme, int index);

// The middle member index of a three-item set; a non-finite or out-of-range
// steps * middleLocation throws FatalError.
int middleColorIndex(int steps, double middleLocation);

struct OchreColorSet {
    std::vector<ThemeableColor> colors;
    bool ignoreColorspaceChange = false;
    ColorSpace colorSpace = ColorSpace::sRGB;
    AppearanceType appearanceType = AppearanceType::none;
    double autoContrastAmount = defaultAutoContrastAmount;
    InterpolationMethod interpolationMethod = InterpolationMethod::linear;
    CurveType curveType = CurveType::linear;
    double curveAmount = 1.0;
    SetType type = SetType::twoItems;
    int steps = 0;
    ColorNamingScheme namingScheme = ColorNamingScheme::smallNumeric;
    double middleLocation = 0.5;
};

struct OchreColorShadowSet {
    std::vector<ThemeableShadow> shadows;
    bool ignoreColorspaceChange = false;
    ColorSpace colorSpace = ColorSpace::sRGB;
    AppearanceType appearanceType = AppearanceType::none;
    double autoContrastAmount = defaultAutoContrastAmount;
    InterpolationMethod interpolationMethod = InterpolationMethod::linear;
    CurveType curveType = CurveType::linear;
    double curveAmount = 1.0;
    SetType type = SetType::twoItems;
    int steps = 0;
    ColorNamingScheme namingScheme = ColorNamingScheme::smallNumeric;
    double middleLocation = 0.5;
};

// Mixes two colours at position p (0 gives start, 1 gives end); nullopt when a
// conversion yields nothing.
class ColorInterpolator {
public:
    ColorInterpolator(int stepCount, int middleIndex) : steps(stepCount), middleColorIndex(middleIndex) {}
    virtual ~ColorInterpolator() = default;
    virtual std::optional<ColorValue> mix(const ColorValue& start, const ColorValue& end, double p) const = 0;
    // A ramp of `steps` members from start to end along the curve; the last member is `end` exactly.
    std::vector<ColorValue> generateTwoItemSet(const ColorValue& start, const ColorValue& end, CurveType curve,
                                               double curveAmount) const;
    // Two ramps meeting at middleColorIndex, the middle colour standing once.
    std::vector<ColorValue> generateThreeItemSet(const ColorValue& start, const ColorValue& middle,
                                                 const ColorValue& end, CurveType curve, double curveAmount) const;

    int steps;
    int middleColorIndex;
};

class LinearInterpolator : public ColorInterpolator {
public:
    using ColorInterpolator::ColorInterpolator;
    std::optional<ColorValue> mix(const ColorValue& start, const ColorValue& end, double p) const override;
};
class LinearLegacyInterpolator : public ColorInterpolator {
public:
    using ColorInterpolator::ColorInterpolator;
    std::optional<ColorValue> mix(const ColorValue& start, const ColorValue& end, double p) const override;
};
class OKLABInterpolator : public ColorInterpolator {
public:
    using ColorInterpolator::ColorInterpolator;
    std::optional<ColorValue> mix(const ColorValue& start, const ColorValue& end, double p) const override;
};
class OKLCHInterpolator : public ColorInterpolator {
public:
    using ColorInterpolator::ColorInterpolator;
    std::optional<ColorValue> mix(const ColorValue& start, const ColorValue& end, double p) const override;
};

// The interpolator of a method.
std::unique_ptr<ColorInterpolator> makeInterpolator(InterpolationMethod method, int steps, int middleColorIndex);

// Shadow mix: offsets, blur and spread linearly with three decimals kept, colour by the method.
std::optional<ShadowDetails> mixShadow(const ColorInterpolator& interpolator, const ShadowDetails& start,
                                       const ShadowDetails& end, double p);

// Regenerates a set's members (every appearance variant from the matching variants of
// the fixed members: first and last, and the middle for three-item sets), named by its
// naming scheme. A manual set is left as it is.
void regenerate(OchreColorSet& set);
void regenerate(OchreColorShadowSet& set);

}  // namespace tintwork
