#include "model/ColorSet.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <numbers>

#include "colour/FatalError.h"

namespace tintwork {
namespace {

bool bitwiseEqual(const ColorValue& a, const ColorValue& b) {
    const std::array<double, 4> x = a.rgbaComponents();
    const std::array<double, 4> y = b.rgbaComponents();
    return a.encoding() == b.encoding() && std::memcmp(x.data(), y.data(), sizeof(double) * 4) == 0;
}

// Mixes like linearLegacy but refuses the positions in the middle third.
class PickyInterpolator : public ColorInterpolator {
public:
    using ColorInterpolator::ColorInterpolator;
    std::optional<ColorValue> mix(const ColorValue& start, const ColorValue& end, double p) const override {
        if (p > 0.3 && p < 0.7) {
            return std::nullopt;
        }
        return LinearLegacyInterpolator(steps, middleColorIndex).mix(start, end, p);
    }
};

TEST(ColorSet, CurvesWarpThePosition) {
    EXPECT_DOUBLE_EQ(0.3, applyCurve(CurveType::linear, 0.7, 0.3));
    EXPECT_DOUBLE_EQ(0.3, applyCurve(CurveType::cosine, 0, 0.3));
    EXPECT_DOUBLE_EQ(0.3, applyCurve(CurveType::lame, 1.0, 0.3));
    EXPECT_DOUBLE_EQ(0.5 - 0.5 * std::cos(std::numbers::pi * 0.25), applyCurve(CurveType::cosine, 1, 0.25));
    EXPECT_DOUBLE_EQ(0.25 + (0.15625 - 0.25) * 0.5, applyCurve(CurveType::hermite3, 0.5, 0.25));
    EXPECT_DOUBLE_EQ(0.5, applyCurve(CurveType::hermite5, 1, 0.5));
    EXPECT_DOUBLE_EQ(0.103515625, applyCurve(CurveType::hermite5, 1, 0.25));
    EXPECT_DOUBLE_EQ(1 - std::pow(1 - 0.25 * 0.25, 0.5), applyCurve(CurveType::lame, 2, 0.25));
}

TEST(ColorSet, MiddleIndexIsNeverAnEnd) {
    EXPECT_EQ(1, middleColorIndex(3, 0.5));
    EXPECT_EQ(1, middleColorIndex(9, 0));
    EXPECT_EQ(7, middleColorIndex(9, 1.0));
    EXPECT_EQ(4, middleColorIndex(9, 0.5));
    EXPECT_EQ(5, middleColorIndex(10, 0.59));
    EXPECT_EQ(1, middleColorIndex(9, -0.05));
    EXPECT_THROW(middleColorIndex(9, std::numeric_limits<double>::quiet_NaN()), FatalError);
    EXPECT_THROW(middleColorIndex(9, std::numeric_limits<double>::infinity()), FatalError);
    EXPECT_THROW(middleColorIndex(9, 1e300), FatalError);
}

TEST(ColorSet, RampsEndOnTheEndColourExactly) {
    const ColorValue start = ColorValue::sRGB(0.91, 0.2, 0.33, 1);
    const ColorValue end = ColorValue::sRGB(0.1, 0.47, 0.83, 0.4);
    for (InterpolationMethod method : {InterpolationMethod::linear, InterpolationMethod::linearLegacy,
                                       InterpolationMethod::oklch, InterpolationMethod::oklab}) {
        for (CurveType curve :
             {CurveType::linear, CurveType::cosine, CurveType::hermite3, CurveType::hermite5, CurveType::lame}) {
            for (int steps : {2, 3, 7, 10}) {
                const auto interpolator = makeInterpolator(method, steps, middleColorIndex(steps, 0.5));
                const std::vector<ColorValue> ramp = interpolator->generateTwoItemSet(start, end, curve, 0.6);
                ASSERT_EQ(static_cast<std::size_t>(steps), ramp.size());
                EXPECT_TRUE(bitwiseEqual(start, ramp.front()));
                EXPECT_TRUE(bitwiseEqual(end, ramp.back()));
                if (steps >= 3) {
                    const ColorValue middle = ColorValue::sRGB(0.5, 0.5, 0.5);
                    const std::vector<ColorValue> split =
                        interpolator->generateThreeItemSet(start, middle, end, curve, 0.6);
                    ASSERT_EQ(static_cast<std::size_t>(steps), split.size());
                    EXPECT_TRUE(bitwiseEqual(middle, split[static_cast<std::size_t>(interpolator->middleColorIndex)]));
                    EXPECT_TRUE(bitwiseEqual(end, split.back()));
                }
            }
        }
    }
}

TEST(ColorSet, InterpolatorsMixInTheirOwnSpaces) {
    const ColorValue black = ColorValue::sRGB(0, 0, 0);
    const ColorValue white = ColorValue::sRGB(1, 1, 1);
    const ColorValue legacy = *LinearLegacyInterpolator(3, 1).mix(black, white, 0.5);
    EXPECT_DOUBLE_EQ(0.5, legacy.red());
    // Half the light of white, encoded again.
    const ColorValue linear = *LinearInterpolator(3, 1).mix(black, white, 0.5);
    EXPECT_NEAR(0.735357, linear.red(), 1e-6);
    EXPECT_EQ(ColorEncoding::sRGB, linear.encoding());
    // Perceptual mixes land in between, and position 0 gives the start.
    const ColorValue oklab = *OKLABInterpolator(3, 1).mix(black, white, 0.5);
    EXPECT_GT(oklab.red(), 0.3);
    EXPECT_LT(oklab.red(), 0.6);
    EXPECT_NEAR(oklab.red(), oklab.blue(), 1e-6);
    const ColorValue red = ColorValue::sRGB(1, 0, 0);
    const ColorValue blue = ColorValue::sRGB(0, 0, 1);
    const ColorValue atStart = *OKLCHInterpolator(3, 1).mix(red, blue, 0);
    EXPECT_NEAR(1, atStart.red(), 1e-6);
    EXPECT_NEAR(0, atStart.blue(), 1e-6);
    const ColorValue purple = *OKLCHInterpolator(3, 1).mix(red, blue, 0.5);
    EXPECT_GT(purple.red(), 0.4);
    EXPECT_GT(purple.blue(), 0.4);
}

TEST(ColorSet, MixesThatGiveNothingLeaveGaps) {
    const PickyInterpolator interpolator(5, 2);
    const std::vector<ColorValue> ramp =
        interpolator.generateTwoItemSet(ColorValue::sRGB(0, 0, 0), ColorValue::sRGB(1, 1, 1), CurveType::linear, 1);
    ASSERT_EQ(4u, ramp.size());
    EXPECT_DOUBLE_EQ(0.25, ramp[1].red());
    EXPECT_DOUBLE_EQ(0.75, ramp[2].red());
    EXPECT_TRUE(PickyInterpolator(0, 1).generateTwoItemSet(ColorValue(), ColorValue(), CurveType::linear, 1).empty());
}

TEST(ColorSet, ShadowMixKeepsThreeDecimals) {
    const LinearLegacyInterpolator interpolator(3, 1);
    ShadowDetails start;
    start.xOffset = 0;
    start.yOffset = 0;
    start.blur = 1;
    start.spread = 0;
    ShadowDetails end = start;
    end.yOffset = 1;
    end.blur = 2;
    end.spread = -0.001;
    const ShadowDetails third = *mixShadow(interpolator, start, end, 1.0 / 3.0);
    EXPECT_DOUBLE_EQ(0.333, third.yOffset);
    EXPECT_DOUBLE_EQ(1.333, third.blur);
    const ShadowDetails half = *mixShadow(interpolator, start, end, 0.5);
    EXPECT_DOUBLE_EQ(-0.001, half.spread);
    EXPECT_DOUBLE_EQ(0.5, half.yOffset);
}

TEST(ColorSet, RegeneratesMembersForEveryStoredAppearance) {
    OchreColorSet set;
    ThemeableColor first;
    first.name = "light";
    first.uuid = "FIRST";
    first.lightVariant = ColorValue::sRGB(1, 1, 1);
    first.darkVariant = ColorValue::sRGB(0.2, 0.2, 0.2);
    ThemeableColor last;
    last.name = "dark";
    last.uuid = "LAST";
    last.lightVariant = ColorValue::sRGB(0, 0, 0);
    set.colors = {first, last};
    set.steps = 5;
    set.interpolationMethod = InterpolationMethod::linearLegacy;
    set.namingScheme = ColorNamingScheme::largeNumeric;
    regenerate(set);
    ASSERT_EQ(5u, set.colors.size());
    EXPECT_EQ("100", set.colors[0].name);
    EXPECT_EQ("500", set.colors[4].name);
    EXPECT_EQ("FIRST", set.colors[0].uuid);
    EXPECT_EQ("LAST", set.colors[4].uuid);
    EXPECT_DOUBLE_EQ(0.75, set.colors[1].lightVariant.red());
    // The last member has no dark variant of its own, so its light one stands in.
    ASSERT_TRUE(set.colors[2].darkVariant);
    EXPECT_DOUBLE_EQ(0.1, set.colors[2].darkVariant->red());
    EXPECT_FALSE(set.colors[2].lightVariantHighContrast);

    set.type = SetType::threeItems;
    set.steps = 7;
    set.middleLocation = 0.5;
    set.namingScheme = ColorNamingScheme::manual;
    const ColorValue middle = set.colors[2].lightVariant;
    regenerate(set);
    ASSERT_EQ(7u, set.colors.size());
    EXPECT_EQ(middle, set.colors[3].lightVariant);
    EXPECT_EQ("100", set.colors[0].name);
    EXPECT_EQ("Unnamed", set.colors[6].name);

    set.type = SetType::manual;
    set.steps = 3;
    regenerate(set);
    EXPECT_EQ(7u, set.colors.size());
}

TEST(ColorSet, RegeneratesShadowSets) {
    OchreColorShadowSet set;
    ThemeableShadow low;
    low.lightVariant.yOffset = 1;
    ThemeableShadow high;
    high.lightVariant.yOffset = 2;
    high.lightVariant.color = ColorValue::sRGB(0.1, 0.2, 0.3, 0.6);
    set.shadows = {low, high};
    set.steps = 4;
    set.namingScheme = ColorNamingScheme::mediumNumeric;
    regenerate(set);
    ASSERT_EQ(4u, set.shadows.size());
    EXPECT_DOUBLE_EQ(1.333, set.shadows[1].lightVariant.yOffset);
    EXPECT_EQ("40", set.shadows[3].name);
    EXPECT_TRUE(bitwiseEqual(high.lightVariant.color, set.shadows[3].lightVariant.color));
}

}  // namespace
}  // namespace tintwork
