#include "contrast/APCA.h"

#include <gtest/gtest.h>

#include <cmath>

#include "colour/FatalError.h"
#include "contrast/ColorTest.h"

namespace tintwork {
namespace {

struct SRGBReferencePair {
    int textRed, textGreen, textBlue;
    int backgroundRed, backgroundGreen, backgroundBlue;
    double lc;
};
struct DisplayP3ReferencePair {
    ColorValue text;
    ColorValue background;
    double lc;
};
struct FontReferenceRow {
    double lc;
    int sizes[9];
};
struct GreyReference {
    double grey;
    double lc;
};

#include "APCAReference.inc"

// Our Lc is rounded to three places; the reference is not.
constexpr double threePlaces = 0.0005 + 1e-9;

ColorValue byte(int red, int green, int blue) {
    return ColorValue::sRGB(red / 255.0, green / 255.0, blue / 255.0);
}

TEST(APCA, MatchesReferenceForSRGBPairs) {
    for (const auto& pair : sRGBReferencePairs) {
        const auto lc = apcaContrast(byte(pair.textRed, pair.textGreen, pair.textBlue),
                                     byte(pair.backgroundRed, pair.backgroundGreen, pair.backgroundBlue));
        ASSERT_TRUE(lc.has_value());
        EXPECT_NEAR(*lc, pair.lc, threePlaces) << pair.textRed << "," << pair.textGreen << "," << pair.textBlue
                                               << " on " << pair.backgroundRed << "," << pair.backgroundGreen
                                               << "," << pair.backgroundBlue;
    }
}

// Any pair not wholly in sRGB is clamped to sRGB and weighed with the Display P3
// coefficients, so even an in-gamut extended colour leaves the sRGB weights.
TEST(APCA, UsesDisplayP3CoefficientsOnSRGBComponentsUnlessBothAreSRGB) {
    for (const auto& pair : displayP3ReferencePairs) {
        const auto flattened = flattenForeground(pair.text, pair.background);
        ASSERT_TRUE(flattened.has_value());
        const auto lc = apcaContrast(*flattened, pair.background);
        ASSERT_TRUE(lc.has_value());
        EXPECT_NEAR(*lc, pair.lc, threePlaces);
    }
    // The same components give a different Lc once one side is tagged extended sRGB.
    const auto both = apcaContrast(ColorValue::sRGB(0, 1, 0), ColorValue::sRGB(0, 0, 0));
    const auto mixed = apcaContrast(ColorValue(ColorEncoding::sRGBExtended, 0, 1, 0, 1), ColorValue::sRGB(0, 0, 0));
    EXPECT_GT(std::fabs(*both - *mixed), 1.0);
}

TEST(APCA, GivesZeroForNearlyEqualLuminance) {
    EXPECT_EQ(apcaContrast(0.5, 0.5), 0.0);
    EXPECT_EQ(apcaContrast(0.5, 0.5004), 0.0);
    EXPECT_EQ(apcaContrast(0.5, 0.6), 0.0);  // above the threshold, below the low clip
    EXPECT_NE(apcaContrast(0.2, 0.9), 0.0);
}

TEST(APCA, FontSizesMatchReferenceOutsideItsHalfPixelSteps) {
    for (const auto& row : fontReferenceRows) {
        const auto sizes = apcaFontSizes(row.lc);
        for (std::size_t column = 0; column < 9; ++column) {
            if (row.sizes[column] != 0) {
                EXPECT_EQ(sizes[column], row.sizes[column]) << "Lc " << row.lc << ", weight " << (column + 1) * 100;
            }
        }
    }
}

// Hand-computed: cells of 24 px or less lose the floor of delta times scale and then
// their fraction; larger cells round.
TEST(APCA, SmallCellsStepDownByWholePixels) {
    EXPECT_EQ(apcaRequiredFontSize(67.0, 400), 21);  // 21.75 - floor(2.25 * 0.4)
    EXPECT_EQ(apcaRequiredFontSize(64.9, 400), 22);  // 24 - floor(2.25 * 0.98)
    EXPECT_EQ(apcaRequiredFontSize(62.5, 500), 20);  // 21 - floor(2 * 0.5)
    EXPECT_EQ(apcaRequiredFontSize(72.5, 700), 14);  // 14.5 - floor(0.5 * 0.5), truncated
    EXPECT_EQ(apcaRequiredFontSize(84.0, 500), 15);  // 15.81 - floor(0.188 * 0.8)
    EXPECT_EQ(apcaRequiredFontSize(99.0, 300), 19);  // 19.5 - floor(1 * 0.8)
    EXPECT_EQ(apcaRequiredFontSize(75.0, 400), 18);  // exactly the table cell
    EXPECT_EQ(apcaRequiredFontSize(44.9, 700), 24);  // 32 - 8 * 0.98 = 24.16, rounded
    EXPECT_EQ(apcaRequiredFontSize(-75.0, 400), 18); // polarity does not matter
}

TEST(APCA, FontLookupStopsAt130) {
    EXPECT_NO_THROW(apcaFontSizes(129.9));
    EXPECT_THROW(apcaFontSizes(130.0), FatalError);
    EXPECT_THROW(apcaFontSizes(-131.0), FatalError);
    EXPECT_THROW(apcaRequiredFontSize(200.0, 400), FatalError);
}

}  // namespace
}  // namespace tintwork
