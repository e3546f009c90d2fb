#include "contrast/WCAG.h"

#include <gtest/gtest.h>

namespace tintwork {
namespace {

ColorValue grey(int value) {
    return ColorValue::sRGB(value / 255.0, value / 255.0, value / 255.0);
}

// Published WCAG 2 ratios of well-known greys on white.
TEST(WCAG, MatchesPublishedRatios) {
    EXPECT_DOUBLE_EQ(wcagContrastRatio(grey(0), grey(255)), 21.0);
    EXPECT_DOUBLE_EQ(wcagContrastRatio(grey(255), grey(0)), 21.0);
    EXPECT_NEAR(wcagContrastRatio(grey(0x76), grey(255)), 4.54, 0.005);
    EXPECT_NEAR(wcagContrastRatio(grey(0x77), grey(255)), 4.48, 0.005);
    EXPECT_NEAR(wcagContrastRatio(grey(0x94), grey(255)), 3.03, 0.005);
    EXPECT_DOUBLE_EQ(wcagContrastRatio(grey(0x80), grey(0x80)), 1.0);
}

TEST(WCAG, ReadsComponentsInTheColoursOwnEncoding) {
    EXPECT_DOUBLE_EQ(wcagRelativeLuminance(ColorValue(ColorEncoding::displayP3, 0.5, 0.5, 0.5, 1)),
                     wcagRelativeLuminance(ColorValue::sRGB(0.5, 0.5, 0.5)));
}

TEST(WCAG, LevelsAtTheirBoundaries) {
    EXPECT_EQ(wcagLevel(21.0), 0);
    EXPECT_EQ(wcagLevel(4.5), 0);
    EXPECT_EQ(wcagLevel(4.499), 1);
    EXPECT_EQ(wcagLevel(3.0), 1);
    EXPECT_EQ(wcagLevel(2.999), 2);
    EXPECT_EQ(wcagLevel(1.0), 2);
}

}  // namespace
}  // namespace tintwork
