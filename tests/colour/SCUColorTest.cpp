#include "colour/FatalError.h"
#include "colour/Oklab.h"
#include "colour/SCUColor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace tintwork {
namespace {

TEST(SCUColor, ConstructorsFillTheRecordOfTheirSpace) {
    const SCUColor white;
    EXPECT_EQ(white.colorSpace, ColorSpace::sRGB);
    EXPECT_EQ(white.rgbValues, (RawRGBValues{1, 1, 1, 1}));
    EXPECT_EQ(SCUColor::black().rgbValues, (RawRGBValues{0, 0, 0, 1}));

    const SCUColor lch = SCUColor::fromLCH(0.7, 0.1, 2.0, 0.5);
    EXPECT_EQ(lch.colorSpace, ColorSpace::oklch);
    EXPECT_EQ(lch.lchValues, (RawLCHValues{0.7, 0.1, 2.0, 0.5}));

    const SCUColor lab = SCUColor::fromLAB(0.7, 0.1, -0.1, 0.5);
    EXPECT_EQ(lab.colorSpace, ColorSpace::oklch) << "the l, a, b constructor marks the colour oklch";
    EXPECT_FALSE(lab.lchValues.has_value());
    EXPECT_EQ(lab.labValues, (RawLABValues{0.7, 0.1, -0.1, 0.5}));
    EXPECT_THROW(static_cast<void>(lab.colorValue()), FatalError);
    EXPECT_EQ(lab.alpha(), 0.0);
    EXPECT_EQ(lab.hue(), 0.0);
}

TEST(SCUColor, BuildsFromAColourValueInEachSpace) {
    const ColorValue wideRed(ColorEncoding::displayP3, 1, 0, 0, 0.5);
    const SCUColor clipped(wideRed, ColorSpace::sRGB);
    EXPECT_EQ(clipped.rgbValues, (RawRGBValues{1, 0, 0, 0.5}));
    const SCUColor extended(wideRed, ColorSpace::sRGBExtended);
    EXPECT_GT(extended.rgbValues->red, 1.0);
    EXPECT_LT(extended.rgbValues->green, 0.0);

    const SCUColor lab(wideRed, ColorSpace::oklab);
    EXPECT_EQ(lab.colorSpace, ColorSpace::oklab);
    ASSERT_TRUE(lab.labValues.has_value());
    EXPECT_NEAR(lab.labValues->l, 0.648574071941, 1e-7);
    const SCUColor lch(wideRed, ColorSpace::oklch);
    ASSERT_TRUE(lch.lchValues.has_value());
    EXPECT_NEAR(lch.lchValues->chroma, 0.299485288999, 1e-7);

    for (const SCUColor& perceptual : {lab, lch}) {
        const ColorValue back = perceptual.colorValue();
        EXPECT_EQ(back.encoding(), ColorEncoding::displayP3);
        EXPECT_NEAR(back.red(), 1.0, 1e-6);
        EXPECT_NEAR(back.green(), 0.0, 1e-6);
        EXPECT_EQ(back.alpha(), 0.5);
    }
}

TEST(SCUColor, HueAlphaAndHSBReadTheRightRecord) {
    EXPECT_NEAR(SCUColor(ColorSpace::displayP3, 0, 0, 1, 0.2).hue(), 240.0 / 360.0, 1e-12);
    EXPECT_EQ(SCUColor(ColorSpace::displayP3, 0, 0, 1, 0.2).alpha(), 0.2);
    EXPECT_NEAR(SCUColor(ColorSpace::sRGB, 0.2, 0.4, 0.8, 1).saturation(), 0.75, 1e-12);
    EXPECT_NEAR(SCUColor::fromLCH(0.5, 0.1, -std::numbers::pi / 2, 1).hue(), 0.75, 1e-12);
    SCUColor lab(ColorValue::sRGB(0, 0, 1), ColorSpace::oklab);
    EXPECT_NEAR(lab.hue() * 360.0 - 360.0, std::atan2(lab.labValues->b, lab.labValues->a) * 180.0 / std::numbers::pi,
                1e-9);
    lab.labValues.reset();
    EXPECT_EQ(lab.hue(), 0.0);
    EXPECT_EQ(lab.alpha(), 0.0);
    EXPECT_THROW(static_cast<void>(lab.saturation()), FatalError);
}

TEST(SCUColor, WithAlphaKeepsTheStoredOddities) {
    const SCUColor rgb = SCUColor(ColorSpace::sRGBExtended, 1.2, 0.1, -0.1, 1).withAlpha(0.3);
    EXPECT_EQ(rgb.colorSpace, ColorSpace::sRGBExtended);
    EXPECT_EQ(rgb.rgbValues, (RawRGBValues{1.2, 0.1, -0.1, 0.3}));

    const SCUColor fromLab = SCUColor(ColorValue::sRGB(0.2, 0.5, 0.3), ColorSpace::oklab).withAlpha(0.3);
    EXPECT_EQ(fromLab.colorSpace, ColorSpace::oklch);
    EXPECT_TRUE(fromLab.labValues.has_value());
    EXPECT_EQ(fromLab.labValues->alpha, 0.3);

    const SCUColor fromLch = SCUColor::fromLCH(0.7, 0.1, 2.0, 1).withAlpha(0.5);
    EXPECT_EQ(fromLch.lchValues->lightness, 0.7);
    EXPECT_EQ(fromLch.lchValues->chroma, 0.7);
    EXPECT_NEAR(fromLch.lchValues->hue, 0.0122173, 1e-7);
    EXPECT_EQ(fromLch.lchValues->alpha, 0.5);

    SCUColor broken;
    broken.rgbValues.reset();
    EXPECT_THROW(static_cast<void>(broken.withAlpha(0.5)), FatalError);
    EXPECT_THROW(static_cast<void>(broken.withHue(0.5)), FatalError);
}

TEST(SCUColor, WithHueByRepresentation) {
    const SCUColor turned = SCUColor(ColorSpace::displayP3, 1, 0, 0, 0.5).withHue(1.0 / 3.0);
    EXPECT_EQ(turned.colorSpace, ColorSpace::sRGB) << "RGB spaces come back as sRGB";
    EXPECT_NEAR(turned.rgbValues->green, 1.0, 1e-12);
    EXPECT_NEAR(turned.rgbValues->red, 0.0, 1e-12);
    EXPECT_EQ(turned.rgbValues->alpha, 0.5);

    const SCUColor lab = SCUColor(ColorValue::sRGB(0.2, 0.5, 0.3, 0.8), ColorSpace::oklab).withHue(0.25);
    EXPECT_EQ(lab.colorSpace, ColorSpace::oklch);
    EXPECT_NEAR(lab.labValues->a, 0.0, 1e-12);
    EXPECT_NEAR(lab.labValues->b, 1.0, 1e-12) << "no chroma factor";
    EXPECT_EQ(lab.labValues->alpha, 0.8);

    const SCUColor lch = SCUColor::fromLCH(0.7, 0.1, 2.0, 0.4).withHue(0.5);
    EXPECT_EQ(lch.lchValues, (RawLCHValues{0.7, 0.1, std::numbers::pi, 0.4}));
}

TEST(SCUColor, ConvertedMovesBetweenSpacesAndKeepsItselfWhenItCannot) {
    const SCUColor p3(ColorSpace::displayP3, 1, 0, 0, 1);
    EXPECT_EQ(p3.converted(ColorSpace::displayP3), p3);
    EXPECT_EQ(p3.converted(ColorSpace::sRGB).rgbValues, (RawRGBValues{1, 0, 0, 1}));
    EXPECT_NEAR(p3.converted(ColorSpace::sRGBExtended).rgbValues->red, 1.093066362, 1e-8);

    const SCUColor lab = p3.converted(ColorSpace::oklab);
    EXPECT_EQ(lab.colorSpace, ColorSpace::oklch) << "conversion to oklab marks the result oklch";
    EXPECT_TRUE(lab.labValues.has_value());
    const SCUColor lch = p3.converted(ColorSpace::oklch);
    EXPECT_TRUE(lch.lchValues.has_value());
    EXPECT_TRUE(lch.converted(ColorSpace::displayP3).isEqual(p3, 1e-6));

    const SCUColor labMarkedOklch = SCUColor::fromLAB(0.5, 0.1, 0.1, 1);
    const SCUColor kept = labMarkedOklch.converted(ColorSpace::sRGB);
    EXPECT_EQ(kept.colorSpace, ColorSpace::oklch);
    EXPECT_EQ(kept.labValues, labMarkedOklch.labValues);
    EXPECT_FALSE(kept.rgbValues.has_value());
}

TEST(SCUColor, EqualityComparesOnlyTheRecordOfTheSpace) {
    SCUColor a(ColorSpace::sRGB, 0.1, 0.2, 0.3, 1);
    SCUColor b(ColorSpace::sRGB, 0.1, 0.2, 0.3, 1);
    b.lchValues = RawLCHValues{1, 1, 1, 1};
    EXPECT_EQ(a, b);
    EXPECT_NE(a, SCUColor(ColorSpace::displayP3, 0.1, 0.2, 0.3, 1));
    EXPECT_NE(a, SCUColor(ColorSpace::sRGB, 0.1, 0.2, 0.3000001, 1));
    EXPECT_TRUE(a.isEqual(SCUColor(ColorSpace::sRGB, 0.1, 0.2, 0.3000001, 1), 1e-6));
    EXPECT_FALSE(a.isEqual(SCUColor(ColorSpace::sRGB, 0.1, 0.2, 0.36, 1), 0.05));
    SCUColor empty = a;
    empty.rgbValues.reset();
    EXPECT_NE(empty, empty);
    EXPECT_FALSE(empty.isEqual(empty, 1.0));
    EXPECT_FALSE(SCUColor::fromLAB(0.5, 0, 0, 1) == SCUColor::fromLAB(0.5, 0, 0, 1));
}

} // namespace
} // namespace tintwork
