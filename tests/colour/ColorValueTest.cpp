#include "colour/ColorSpace.h"
#include "colour/ColorValue.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tintwork {
namespace {

// Expected numbers come from tests/colour/reference_values.py, which takes the
// route through CIE XYZ instead of the direct matrices of the library.
void expectComponents(const ColorValue& color, ColorEncoding encoding, double red, double green, double blue,
                      double tolerance = 1e-6) {
    EXPECT_EQ(color.encoding(), encoding);
    EXPECT_NEAR(color.red(), red, tolerance);
    EXPECT_NEAR(color.green(), green, tolerance);
    EXPECT_NEAR(color.blue(), blue, tolerance);
}

ColorValue convert(const ColorValue& color, ColorEncoding target) {
    const auto result = color.converted(target);
    EXPECT_TRUE(result.has_value());
    return result.value_or(color);
}

TEST(ColorValue, ConvertsBetweenSRGBAndDisplayP3LikeTheReference) {
    using enum ColorEncoding;
    expectComponents(convert(ColorValue::sRGB(0.2, 0.4, 0.6), displayP3), displayP3, 0.249851333, 0.395240072,
                     0.584033771);
    expectComponents(convert(ColorValue::sRGB(0.9, 0.1, 0.3), displayP3), displayP3, 0.826315665, 0.208538098,
                     0.314952959);
    expectComponents(convert(ColorValue(displayP3, 1, 0, 0, 1), sRGBExtended), sRGBExtended, 1.093066362,
                     -0.226741974, -0.150134581);
    expectComponents(convert(ColorValue(displayP3, 0, 1, 0, 1), sRGBExtended), sRGBExtended, -0.511604983,
                     1.018265658, -0.310674621);
    expectComponents(convert(ColorValue(displayP3, 0.25, 0.5, 0.75, 1), sRGB), sRGB, 0.124075966, 0.507345769,
                     0.771127407);
    expectComponents(convert(ColorValue(sRGBExtended, -0.1, 1.2, 0.5, 1), displayP3), displayP3, 0.547868656,
                     1.182354155, 0.587835579);
}

TEST(ColorValue, LinearEncodingUsesTheTransferCurveMirroredForNegatives) {
    using enum ColorEncoding;
    expectComponents(convert(ColorValue(sRGBExtended, 0.5, -0.5, 0.02, 1), extendedLinearSRGB), extendedLinearSRGB,
                     0.214041140, -0.214041140, 0.001547988);
    const ColorValue back = convert(ColorValue(extendedLinearSRGB, 0.214041140482, -0.214041140482, 0.5, 1),
                                    sRGBExtended);
    expectComponents(back, sRGBExtended, 0.5, -0.5, 0.735356983);
}

TEST(ColorValue, OnlyConversionIntoSRGBClamps) {
    using enum ColorEncoding;
    const ColorValue wideRed(displayP3, 1, 0, 0, 0.25);
    expectComponents(convert(wideRed, sRGB), sRGB, 1, 0, 0, 0);
    EXPECT_EQ(convert(wideRed, sRGB).alpha(), 0.25);
    EXPECT_GT(convert(wideRed, sRGBExtended).red(), 1.0);
    EXPECT_LT(convert(wideRed, extendedLinearSRGB).green(), 0.0);
    expectComponents(convert(ColorValue(sRGBExtended, 1.5, -0.5, 0.5, 1), sRGB), sRGB, 1, 0, 0.5, 0);
    EXPECT_EQ(convert(ColorValue(sRGBExtended, 1.5, -0.5, 0.5, 1), sRGBExtended).red(), 1.5);
}

TEST(ColorValue, RoundTripsThroughEveryEncoding) {
    using enum ColorEncoding;
    const ColorValue start(sRGBExtended, -0.3, 0.45, 1.4, 0.8);
    for (ColorEncoding via : {displayP3, extendedLinearSRGB, sRGBExtended}) {
        const ColorValue back = convert(convert(start, via), sRGBExtended);
        expectComponents(back, sRGBExtended, -0.3, 0.45, 1.4, 1e-12);
        EXPECT_EQ(back.alpha(), 0.8);
    }
}

TEST(ColorValue, HSBReadingAndConstructionAreInverse) {
    EXPECT_NEAR(ColorValue::sRGB(0.5, 0.25, 0.5).hue(), 300.0 / 360.0, 1e-12);
    EXPECT_NEAR(ColorValue::sRGB(0.2, 0.4, 0.8).saturation(), 0.75, 1e-12);
    EXPECT_EQ(ColorValue::sRGB(0.3, 0.3, 0.3).hue(), 0.0) << "a grey reports hue 0";
    EXPECT_EQ(ColorValue::sRGB(0, 0, 0).saturation(), 0.0);
    for (double hue : {0.0, 0.1, 0.2, 0.35, 0.5, 0.66, 0.8, 0.95, 1.0}) {
        const ColorValue color = ColorValue::fromHSB(ColorEncoding::displayP3, hue, 0.6, 0.7, 0.3);
        EXPECT_EQ(color.encoding(), ColorEncoding::displayP3);
        const auto hsba = color.hsbaComponents();
        EXPECT_NEAR(hsba[0], hue == 1.0 ? 0.0 : hue, 1e-12) << hue;
        EXPECT_NEAR(hsba[1], 0.6, 1e-12);
        EXPECT_NEAR(hsba[2], 0.7, 1e-12);
        EXPECT_EQ(hsba[3], 0.3);
    }
}

TEST(ColorValue, IsOutsideSRGBDependsOnTheEncoding) {
    using enum ColorEncoding;
    EXPECT_FALSE(isOutsideSRGB(ColorValue(sRGB, 1.2, 0, 0, 1)));
    EXPECT_TRUE(isOutsideSRGB(ColorValue(sRGBExtended, 1.2, 0, 0, 1)));
    EXPECT_TRUE(isOutsideSRGB(ColorValue(sRGBExtended, 1.0000000001, 0, 0, 1)));
    EXPECT_TRUE(isOutsideSRGB(ColorValue(sRGBExtended, 0, -0.0001, 0, 1)));
    EXPECT_FALSE(isOutsideSRGB(ColorValue(sRGBExtended, 1, 0, 0, 7)));
    EXPECT_TRUE(isOutsideSRGB(ColorValue(displayP3, 1, 0, 0, 1)));
    EXPECT_FALSE(isOutsideSRGB(ColorValue(displayP3, 0.5, 0.5, 0.5, 1)));
    EXPECT_FALSE(isOutsideSRGB(ColorValue(extendedLinearSRGB, 3, -1, 0, 1)));
}

TEST(ColorValue, PushLightnessMovesTowardTheFarSideAndKeepsTheEncoding) {
    const ColorValue dark(ColorEncoding::displayP3, 0.2, 0.1, 0.3, 0.5);
    const ColorValue darker = pushLightness(dark, 0.5);
    EXPECT_EQ(darker.encoding(), ColorEncoding::displayP3);
    EXPECT_LT(darker.brightness(), dark.brightness());
    EXPECT_EQ(darker.alpha(), 0.5);
    const ColorValue light = ColorValue::sRGB(0.8, 0.9, 0.7);
    EXPECT_GT(pushLightness(light, 0.3).brightness(), light.brightness());
    EXPECT_TRUE(isNear(pushLightness(light, 0.0), light, 1e-6));
    const ColorValue white = pushLightness(ColorValue(ColorEncoding::sRGBExtended, 0.9, 0.9, 0.9, 1), 1.0);
    EXPECT_GT(white.red(), 1.0) << "a full push overshoots white";
}

TEST(ColorValue, IsNearNeedsTheSameEncodingAndStrictTolerance) {
    using enum ColorEncoding;
    const ColorValue a(sRGB, 0.5, 0.5, 0.5, 1);
    EXPECT_TRUE(isNear(a, ColorValue(sRGB, 0.505, 0.495, 0.5, 1), 0.01));
    EXPECT_FALSE(isNear(a, ColorValue(sRGB, 0.5, 0.5, 0.5, 0.98), 0.01));
    EXPECT_FALSE(isNear(a, ColorValue(sRGB, 0.75, 0.5, 0.5, 1), 0.25)) << "the bound itself is not near";
    EXPECT_FALSE(isNear(a, ColorValue(displayP3, 0.5, 0.5, 0.5, 1), 0.01));
}

TEST(ColorValue, RoundPlacesRoundsHalvesAwayFromZero) {
    EXPECT_EQ(roundPlaces(0.125, 2), 0.13);
    EXPECT_EQ(roundPlaces(-0.125, 2), -0.13);
    EXPECT_EQ(roundPlaces(2.5, 0), 3.0);
    EXPECT_EQ(roundPlaces(-2.5, 0), -3.0);
    EXPECT_EQ(roundPlaces(0.123456, 4), 0.1235);
    EXPECT_EQ(roundPlaces(1234.5, -2), 1200.0);
    EXPECT_TRUE(std::isnan(roundPlaces(std::nan(""), 3)));
}

TEST(ColorSpace, ClampsToTheRangeOfTheSpace) {
    EXPECT_EQ(colorSpaceFromRawText("display-p3"), ColorSpace::displayP3);
    EXPECT_EQ(colorSpaceFromRawText("sRGB"), std::nullopt) << "only the exact raw texts";
    EXPECT_EQ(clampToSpace(3, ColorSpace::sRGBExtended), 2);
    EXPECT_EQ(clampToSpace(-3, ColorSpace::sRGBExtended), -2);
    EXPECT_EQ(clampToSpace(3, ColorSpace::oklch), 3);
    EXPECT_EQ(clampToSpace(1.5, ColorSpace::displayP3), 1);
    EXPECT_EQ(clampToSpace(std::nan(""), ColorSpace::sRGB), 0);
    EXPECT_EQ(clampToSpace(std::numeric_limits<double>::infinity(), ColorSpace::sRGBExtended), 2);
}

} // namespace
} // namespace tintwork
