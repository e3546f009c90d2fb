// Colour spaces of token files against independent reference values, computed with the
// colorjs.io library (0.7.1) and pinned here: Color(space, coords).to("srgb").coords.
#include <array>
#include <string>

#include <gtest/gtest.h>

#include "colour/ColorModels.h"

namespace tintwork {
namespace {

std::array<double, 3> encodedSRGB(ColorModel model, const std::array<double, 3>& components) {
    const std::array<double, 3> linear = linearSRGBFromModel(model, components);
    return {srgbEncode(linear[0]), srgbEncode(linear[1]), srgbEncode(linear[2])};
}

TEST(ColorModels, ConvertToSRGBAsTheReferenceLibraryDoes) {
    struct Case {
        const char* name;
        std::array<double, 3> components;
        std::array<double, 3> expected;
    };
    const Case cases[] = {
        {"hsl", {213.3, 12.7, 13.9}, {0.1213470000, 0.1370581700, 0.1566530000}},
        {"hwb", {330, 20, 10}, {0.9000000000, 0.2000000000, 0.5500000000}},
        {"lab", {60.17, 93.54, -60.5}, {1.0000173357, 0.0000380766, 1.0000066503}},
        {"lch", {52.2345, 72.2, 56.2}, {0.7761741718, 0.3633896660, 0.0245478977}},
        {"srgb-linear", {0.5, 0.25, 0.75}, {0.7353569831, 0.5370987305, 0.8808250211}},
        {"a98-rgb", {0.6, 0.8, 0.4}, {0.4965223290, 0.8049037191, 0.3699085935}},
        {"prophoto-rgb", {0.6, 0.8, 0.4}, {0.5519030824, 0.8716612586, 0.3769754409}},
        {"rec2020", {0.6, 0.8, 0.4}, {0.4033781592, 0.8127509846, 0.2714047955}},
        {"xyz-d65", {0.3, 0.4, 0.5}, {0.3624135294, 0.7222913191, 0.7108422256}},
        {"xyz-d50", {0.3, 0.4, 0.5}, {0.2425780207, 0.7284548999, 0.8167963738}},
        {"oklab", {0.7, 0.1, -0.1}, {0.7499115303, 0.5077650846, 0.8562916567}},
        {"oklch", {0.7, 0.15, 250}, {0.2945826980, 0.6394615030, 0.9697490214}},
        {"display-p3", {1, 0.5, 0}, {1.0740441795, 0.4625329113, -0.2104933129}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::optional<ColorModel> model = colorModelNamed(c.name);
        ASSERT_TRUE(model.has_value());
        EXPECT_EQ(colorModelName(*model), c.name);
        const std::array<double, 3> result = encodedSRGB(*model, c.components);
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_NEAR(result[i], c.expected[i], 2e-6) << "component " << i;
        }
    }
}

TEST(ColorModels, NamesAreExactAndCaseSensitive) {
    EXPECT_FALSE(colorModelNamed("sRGB").has_value());
    EXPECT_FALSE(colorModelNamed("rec-2020").has_value());
    EXPECT_FALSE(colorModelNamed("").has_value());
    EXPECT_EQ(colorModelNamed("xyz-d65"), ColorModel::xyzD65);
}

TEST(ColorModels, TransferFunctionIsSymmetricAndInvertible) {
    for (double value : {-1.5, -0.5, -0.002, 0.0, 0.002, 0.04045, 0.5, 1.0, 1.7}) {
        EXPECT_NEAR(srgbDecode(srgbEncode(value)), value, 1e-12) << value;
        EXPECT_DOUBLE_EQ(srgbEncode(-value), -srgbEncode(value)) << value;
    }
}

TEST(ColorModels, HueWrapsAndWhiteAndBlackLeaveNoTint) {
    const auto red = encodedSRGB(ColorModel::hsl, {0, 100, 50});
    const auto wrapped = encodedSRGB(ColorModel::hsl, {360, 100, 50});
    const auto negative = encodedSRGB(ColorModel::hsl, {-360, 100, 50});
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(wrapped[i], red[i], 1e-12);
        EXPECT_NEAR(negative[i], red[i], 1e-12);
    }
    // Whiteness and blackness summing past 100% give a grey.
    const auto grey = encodedSRGB(ColorModel::hwb, {120, 60, 60});
    EXPECT_NEAR(grey[0], 0.5, 1e-12);
    EXPECT_NEAR(grey[1], 0.5, 1e-12);
    EXPECT_NEAR(grey[2], 0.5, 1e-12);
    // CIE Lab white (the D50 white) comes out as sRGB white after adaptation to D65.
    const auto white = encodedSRGB(ColorModel::lab, {100, 0, 0});
    for (double channel : white) {
        EXPECT_NEAR(channel, 1.0, 1e-4);
    }
}

}  // namespace
}  // namespace tintwork
