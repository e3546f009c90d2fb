#include "model/Themeable.h"

#include <gtest/gtest.h>

#include "colour/Oklab.h"

namespace tintwork {
namespace {

double oklchLightness(const ColorValue& color) {
    const ColorValue linear = *color.converted(ColorEncoding::extendedLinearSRGB);
    return toOKLCH(linear).lightness;
}

TEST(Themeable, AbsentVariantsAnswerWithTheLightOne) {
    ThemeableNumber number;
    number.lightVariant = 1;
    number.darkVariant = 2;
    EXPECT_EQ(1, number.variant(ColorSource::light));
    EXPECT_EQ(2, number.variant(ColorSource::dark));
    EXPECT_EQ(1, number.variant(ColorSource::lightHighContrast));
    EXPECT_EQ(1, number.variant(ColorSource::darkHighContrast));
    EXPECT_EQ(std::nullopt, number.storedVariant(ColorSource::darkHighContrast));
    number.setVariant(ColorSource::dark, std::nullopt);
    EXPECT_EQ(1, number.variant(ColorSource::dark));
}

TEST(Themeable, HighContrastPushesLightnessAwayFromTheMiddle) {
    const ColorValue light(ColorEncoding::sRGBExtended, 0.8, 0.8, 0.8, 1);
    const ColorValue dark(ColorEncoding::sRGBExtended, 0.2, 0.25, 0.3, 0.5);
    EXPECT_NEAR(oklchLightness(light), oklchLightness(highContrastColor(light, 0)), 1e-7);
    EXPECT_NEAR(1.15, oklchLightness(highContrastColor(light, 1)), 1e-6);
    EXPECT_NEAR(-0.15, oklchLightness(highContrastColor(dark, 1)), 1e-6);
    EXPECT_LT(oklchLightness(highContrastColor(dark, 0.5)), oklchLightness(dark));
    EXPECT_EQ(0.5, highContrastColor(dark, 0.5).alpha());
    EXPECT_EQ(ColorEncoding::sRGBExtended, highContrastColor(dark, 0.5).encoding());

    // Lightness exactly 0.5 goes toward -0.15: a grey of L 0.5 in OKLAB.
    const RawRGBValues middle = fromOKLAB(0.5, 0, 0, 1);
    const ColorValue grey(ColorEncoding::extendedLinearSRGB, middle.red, middle.green, middle.blue, 1);
    EXPECT_NEAR(0.5 * 0.5 + 0.5 * -0.15, oklchLightness(highContrastColor(grey, 0.5)), 1e-6);
}

TEST(Themeable, GeneratesHighContrastVariantsFromLightAndDark) {
    ThemeableColor color;
    color.lightVariant = ColorValue::sRGB(0.9, 0.9, 0.9);
    color.darkVariant = ColorValue::sRGB(0.1, 0.1, 0.1);
    generateHighContrastVariants(color, 0.3, false);
    ASSERT_TRUE(color.lightVariantHighContrast);
    EXPECT_EQ(highContrastColor(color.lightVariant, 0.3), *color.lightVariantHighContrast);
    EXPECT_FALSE(color.darkVariantHighContrast);
    generateHighContrastVariants(color, 0.3, true);
    ASSERT_TRUE(color.darkVariantHighContrast);
    EXPECT_EQ(highContrastColor(*color.darkVariant, 0.3), *color.darkVariantHighContrast);

    ThemeableColor lightOnly;
    generateHighContrastVariants(lightOnly, 0.3, true);
    EXPECT_TRUE(lightOnly.lightVariantHighContrast);
    EXPECT_FALSE(lightOnly.darkVariantHighContrast);
}

}  // namespace
}  // namespace tintwork
