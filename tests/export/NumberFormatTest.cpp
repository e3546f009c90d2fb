#include "export/NumberFormat.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tintwork {
namespace {

TEST(NumberFormat, DecimalTextHasAtMostFourFractionDigits) {
    EXPECT_EQ(formatDecimalNumber(0), "0");
    EXPECT_EQ(formatDecimalNumber(-0.0), "0");
    EXPECT_EQ(formatDecimalNumber(8), "8");
    EXPECT_EQ(formatDecimalNumber(-2.5), "-2.5");
    EXPECT_EQ(formatDecimalNumber(0.123456), "0.1235");
    EXPECT_EQ(formatDecimalNumber(0.00004), "0");
    EXPECT_EQ(formatDecimalNumber(-0.00004), "0");
    EXPECT_EQ(formatDecimalNumber(1.00005), "1.0001");
    EXPECT_EQ(formatDecimalNumber(1234567.5), "1234567.5");
    EXPECT_EQ(formatDecimalNumber(1e20), "100000000000000000000");
}

TEST(NumberFormat, RoundTripTextAlwaysShowsAFraction) {
    EXPECT_EQ(roundTripDoubleText(2), "2.0");
    EXPECT_EQ(roundTripDoubleText(0), "0.0");
    EXPECT_EQ(roundTripDoubleText(-4), "-4.0");
    EXPECT_EQ(roundTripDoubleText(0.1), "0.1");
    EXPECT_EQ(roundTripDoubleText(1.0 / 3.0), "0.3333333333333333");
    EXPECT_EQ(roundTripDoubleText(0.00001), "1e-05");
    EXPECT_EQ(roundTripDoubleText(std::numeric_limits<double>::infinity()), "inf");
}

}  // namespace
}  // namespace tintwork
