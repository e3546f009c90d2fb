#include "colour/Oklab.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace tintwork {
namespace {

constexpr double pi = std::numbers::pi;

void expectLAB(const RawLABValues& lab, double l, double a, double b, double tolerance = 1e-9) {
    EXPECT_NEAR(lab.l, l, tolerance);
    EXPECT_NEAR(lab.a, a, tolerance);
    EXPECT_NEAR(lab.b, b, tolerance);
}

// Reference numbers from tests/colour/reference_values.py.
TEST(Oklab, MatchesTheReferenceForPrimariesWhiteAndWideColours) {
    expectLAB(toOKLAB(1, 0, 0, 1), 0.627955360615, 0.224863061066, 0.125846298531);
    expectLAB(toOKLAB(0, 1, 0, 1), 0.866439611536, -0.233887574188, 0.179498479897);
    expectLAB(toOKLAB(0, 0, 1, 1), 0.452013718385, -0.032456984169, -0.311528147678);
    expectLAB(toOKLAB(1, 1, 1, 1), 0.999999993474, 0.0, 0.0, 1e-7);
    expectLAB(toOKLAB(-0.2, 0.5, 1.3, 1), 0.731556034423, -0.151675033774, -0.182124503760);
    expectLAB(toOKLAB(ColorValue(ColorEncoding::displayP3, 1, 0, 0, 0.4)), 0.648574071941, 0.262041750726,
              0.145001928275, 1e-7);
    EXPECT_EQ(toOKLAB(ColorValue(ColorEncoding::displayP3, 1, 0, 0, 0.4)).alpha, 0.4);

    const RawLCHValues lch = toOKLCH(ColorValue(ColorEncoding::displayP3, 1, 0, 0, 1));
    EXPECT_NEAR(lch.lightness, 0.648574071941, 1e-7);
    EXPECT_NEAR(lch.chroma, 0.299485288999, 1e-7);
    EXPECT_NEAR(lch.hue, 0.505414837389, 1e-7);
    EXPECT_LT(toOKLCH(0, 0, 1, 1).hue, 0.0) << "the arctangent's range, not normalised";
}

TEST(Oklab, ConvertsBackToLinearRGBWithoutClamping) {
    for (const RawRGBValues rgb : {RawRGBValues{0.2, 0.5, 0.9, 0.3}, RawRGBValues{-0.2, 0.5, 1.3, 1},
                                   RawRGBValues{0, 0, 0, 1}, RawRGBValues{2, 1.5, -0.4, 1}}) {
        const RawRGBValues viaLAB = fromOKLAB(toOKLAB(rgb.red, rgb.green, rgb.blue, rgb.alpha));
        const RawRGBValues viaLCH = fromOKLCH(toOKLCH(rgb.red, rgb.green, rgb.blue, rgb.alpha));
        for (const RawRGBValues& back : {viaLAB, viaLCH}) {
            // The ten-decimal matrices are inverse to about seven places.
            EXPECT_NEAR(back.red, rgb.red, 1e-6);
            EXPECT_NEAR(back.green, rgb.green, 1e-6);
            EXPECT_NEAR(back.blue, rgb.blue, 1e-6);
            EXPECT_EQ(back.alpha, rgb.alpha);
        }
    }
}

TEST(Oklab, LerpLABWeightsTowardTheFirstAndClampsT) {
    const RawLABValues first{0.9, 0.1, -0.1, 1.0};
    const RawLABValues second{0.1, -0.1, 0.2, 0.0};
    EXPECT_NEAR(lerpLAB(first, 1, second).b, first.b, 1e-15);
    EXPECT_EQ(lerpLAB(first, 1, second).alpha, 1.0);
    EXPECT_EQ(lerpLAB(first, 0, second), second);
    EXPECT_EQ(lerpLAB(first, 3, second), lerpLAB(first, 1, second));
    EXPECT_EQ(lerpLAB(first, -1, second), lerpLAB(first, 0, second));
    const RawLABValues quarter = lerpLAB(first, 0.25, second);
    EXPECT_NEAR(quarter.l, 0.3, 1e-12);
    EXPECT_NEAR(quarter.alpha, 0.25, 1e-12);
}

TEST(Oklab, LerpLCHGoesTheShortWayAcrossTheSeam) {
    const RawLCHValues first{0.5, 0.2, pi - 0.1, 1};
    const RawLCHValues second{0.7, 0.1, -pi + 0.1, 0.5};
    const RawLCHValues middle = lerpLCH(first, 0.5, second);
    EXPECT_NEAR(middle.hue, -pi, 1e-12) << "halfway is the seam itself, not hue 0";
    EXPECT_NEAR(middle.lightness, 0.6, 1e-12);
    EXPECT_NEAR(middle.chroma, 0.15, 1e-12);
    EXPECT_NEAR(middle.alpha, 0.75, 1e-12);
    EXPECT_NEAR(lerpLCH(first, 1, second).hue, -pi - 0.1, 1e-12) << "no normalisation after mixing";
    EXPECT_NEAR(lerpLCH(second, 0.5, first).hue, pi, 1e-12);
    EXPECT_NEAR(lerpLCH(RawLCHValues{0.5, 0.2, 0.5, 1}, 0.5, RawLCHValues{0.5, 0.2, 1.5, 1}).hue, 1.0, 1e-12);
}

TEST(Oklab, LerpLCHBorrowsTheHueOfTheColourfulSideForAGrey) {
    const RawLCHValues grey{0.5, 0.000001, 2.5, 1};
    const RawLCHValues red{0.6, 0.2, 0.5, 1};
    EXPECT_NEAR(lerpLCH(grey, 0.3, red).hue, 0.5, 1e-12);
    EXPECT_NEAR(lerpLCH(red, 0.3, grey).hue, 0.5, 1e-12);
    EXPECT_NEAR(lerpLCH(grey, 0.3, red).chroma, 0.3 * 0.000001 + 0.7 * 0.2, 1e-12);
    const RawLCHValues otherGrey{0.2, 0.0, -1.0, 1};
    EXPECT_NEAR(lerpLCH(grey, 0.5, otherGrey).hue, 2.5, 1e-12) << "both grey: the first hue wins";
    const RawLCHValues barelyColourful{0.5, 0.00002, 2.5, 1};
    EXPECT_NEAR(lerpLCH(barelyColourful, 0.5, red).hue, 1.5, 1e-12);
}

} // namespace
} // namespace tintwork
