#include "contrast/APCA.h"

#include <cmath>
#include <cstdio>
#include <string>

#include "APCATerms.h"
#include "Rounding.h"
#include "colour/FatalError.h"

namespace tintwork {

namespace {

constexpr double exponent = 2.4;

constexpr double sRGBRed = 0.2126729;
constexpr double sRGBGreen = 0.7151522;
constexpr double sRGBBlue = 0.072175;

constexpr double displayP3Red = 0.228982959480578;
constexpr double displayP3Green = 0.691749262585238;
constexpr double displayP3Blue = 0.0792677779341829;

constexpr double normalBackgroundExponent = 0.56;
constexpr double normalTextExponent = 0.57;
constexpr double reverseTextExponent = 0.62;
constexpr double reverseBackgroundExponent = 0.65;

constexpr double blackThreshold = 0.022;
constexpr double blackClampExponent = 1.414;
constexpr double scale = 1.14;
constexpr double offset = 0.027;
constexpr double minimumDeltaY = 0.0005;
constexpr double lowClip = 0.1;

// Font lookup tables: 26 rows of Lc 0 to 125 in steps of 5 (row 0 is a heading,
// row 1 is Lc 0, row 2 Lc 10); column 0 is the row's Lc, columns 1 to 9 the weights
// 100 to 900.
constexpr int tableRows = 26;
constexpr int tableColumns = 10;
using FontTable = double[tableRows][tableColumns];

constexpr FontTable fontSizes = {
    {0, 100, 200, 300, 400, 500, 600, 700, 800, 900},
    {0, 999, 999, 999, 999, 999, 999, 999, 999, 999},
    {10, 999, 999, 999, 999, 999, 999, 999, 999, 999},
    {15, 777, 777, 777, 777, 777, 777, 777, 777, 777},
    {20, 777, 777, 777, 777, 777, 777, 777, 777, 777},
    {25, 777, 777, 777, 120, 120, 108, 96, 96, 96},
    {30, 777, 777, 120, 108, 108, 96, 72, 72, 72},
    {35, 777, 120, 108, 96, 72, 60, 48, 48, 48},
    {40, 120, 108, 96, 60, 48, 42, 32, 32, 32},
    {45, 108, 96, 72, 42, 32, 28, 24, 24, 24},
    {50, 96, 72, 60, 32, 28, 24, 21, 21, 21},
    {55, 80, 60, 48, 28, 24, 21, 18, 18, 18},
    {60, 72, 48, 42, 24, 21, 18, 16, 16, 18},
    {65, 68, 46, 32, 21.75, 19, 17, 15, 16, 18},
    {70, 64, 44, 28, 19.5, 18, 16, 14.5, 16, 18},
    {75, 60, 42, 24, 18, 16, 15, 14, 16, 18},
    {80, 56, 38.25, 23, 17.25, 15.81, 14.81, 14, 16, 18},
    {85, 52, 34.5, 22, 16.5, 15.625, 14.625, 14, 16, 18},
    {90, 48, 32, 21, 16, 15.5, 14.5, 14, 16, 18},
    {95, 45, 28, 19.5, 15.5, 15, 14, 13.5, 16, 18},
    {100, 42, 26.5, 18.5, 15, 14.5, 13.5, 13, 16, 18},
    {105, 39, 25, 18, 14.5, 14, 13, 12, 16, 18},
    {110, 36, 24, 18, 14, 13, 12, 11, 16, 18},
    {115, 34.5, 22.5, 17.25, 12.5, 11.875, 11.25, 10.625, 14.5, 16.5},
    {120, 33, 21, 16.5, 11, 10.75, 10.5, 10.25, 13, 15},
    {125, 32, 20, 16, 10, 10, 10, 10, 12, 14},
};

constexpr FontTable fontSizeDeltas = {
    {0, 100, 200, 300, 400, 500, 600, 700, 800, 900},
    {0, 0, 0, 0, 0, 0, 0, 0, 0, 0},
    {10, 0, 0, 0, 0, 0, 0, 0, 0, 0},
    {15, 0, 0, 0, 0, 0, 0, 0, 0, 0},
    {20, 0, 0, 0, 0, 0, 0, 0, 0, 0},
    {25, 0, 0, 0, 12, 12, 12, 24, 24, 24},
    {30, 0, 0, 12, 12, 36, 36, 24, 24, 24},
    {35, 0, 12, 12, 36, 24, 18, 16, 16, 16},
    {40, 12, 12, 24, 18, 16, 14, 8, 8, 8},
    {45, 12, 24, 12, 10, 4, 4, 3, 3, 3},
    {50, 16, 12, 12, 4, 4, 3, 3, 3, 3},
    {55, 8, 12, 6, 4, 3, 3, 2, 2, 0},
    {60, 4, 2, 10, 2.25, 2, 1, 1, 0, 0},
    {65, 4, 2, 4, 2.25, 1, 1, 0.5, 0, 0},
    {70, 4, 2, 4, 1.5, 2, 1, 0.5, 0, 0},
    {75, 4, 3.75, 1, 0.75, 0.188, 0.188, 0, 0, 0},
    {80, 4, 3.75, 1, 0.75, 0.188, 0.188, 0, 0, 0},
    {85, 4, 2.5, 1, 0.5, 0.125, 0.125, 0, 0, 0},
    {90, 3, 4, 1.5, 0.5, 0.5, 0.5, 0.5, 0, 0},
    {95, 3, 1.5, 1, 0.5, 0.5, 0.5, 0.5, 0, 0},
    {100, 3, 1.5, 0.5, 0.5, 0.5, 0.5, 1, 0, 0},
    {105, 3, 1, 0, 0.5, 1, 1, 1, 0, 0},
    {110, 1.5, 1.5, 0.75, 1.5, 1.125, 0.75, 0.375, 1.5, 1.5},
    {115, 1.5, 1.5, 0.75, 1.5, 1.125, 0.75, 0.375, 1.5, 1.5},
    {120, 1, 1, 0.5, 1, 0.75, 0.5, 0.25, 1, 1},
    {125, 0, 0, 0, 0, 0, 0, 0, 0, 0},
};

double power(double base) {
    return std::pow(base, exponent);
}

}  // namespace

double apcaLuminanceSRGB(double red, double green, double blue) {
    return sRGBRed * power(red) + sRGBGreen * power(green) + sRGBBlue * power(blue);
}

double apcaLuminanceDisplayP3(double red, double green, double blue) {
    return displayP3Red * power(red) + displayP3Green * power(green) + displayP3Blue * power(blue);
}

double apcaSoftClamp(double y) {
    return y > blackThreshold ? y : y + std::pow(blackThreshold - y, blackClampExponent);
}

APCATerms apcaTerms(double y) {
    const double clamped = apcaSoftClamp(y);
    return {clamped, std::pow(clamped, normalBackgroundExponent), std::pow(clamped, normalTextExponent),
            std::pow(clamped, reverseTextExponent), std::pow(clamped, reverseBackgroundExponent)};
}

double apcaContrast(const APCATerms& text, const APCATerms& background) {
    if (std::fabs(background.y - text.y) < minimumDeltaY) {
        return 0.0;
    }
    double output = 0.0;
    if (background.y > text.y) {
        const double s = scale * (background.normalBackground - text.normalText);
        output = s < lowClip ? 0.0 : s - offset;
    } else {
        const double s = scale * (background.reverseBackground - text.reverseText);
        output = s > -lowClip ? 0.0 : s + offset;
    }
    return roundedToThreePlaces(output * 100.0);
}

double apcaContrast(double textY, double backgroundY) {
    return apcaContrast(apcaTerms(textY), apcaTerms(backgroundY));
}

std::optional<double> apcaContrast(const ColorValue& text, const ColorValue& background) {
    double lc = 0;
    if (text.encoding() == ColorEncoding::sRGB && background.encoding() == ColorEncoding::sRGB) {
        lc = apcaContrast(apcaLuminanceSRGB(text.red(), text.green(), text.blue()),
                          apcaLuminanceSRGB(background.red(), background.green(), background.blue()));
    } else {
        const auto textSRGB = text.converted(ColorEncoding::sRGB);
        const auto backgroundSRGB = background.converted(ColorEncoding::sRGB);
        if (!textSRGB || !backgroundSRGB) {
            return std::nullopt;
        }
        lc = apcaContrast(apcaLuminanceDisplayP3(textSRGB->red(), textSRGB->green(), textSRGB->blue()),
                          apcaLuminanceDisplayP3(backgroundSRGB->red(), backgroundSRGB->green(),
                                                 backgroundSRGB->blue()));
    }
    if (std::isnan(lc)) {
        return std::nullopt;
    }
    return lc;
}

namespace {

// The lookup in one weight column (1 to 9) for an absolute Lc below 130.
int requiredSize(double lc, int row, int column) {
    const double factor = 0.2;
    const double rowScale = (lc - fontSizes[row][0]) * factor;
    const double size = fontSizes[row][column];
    const double delta = fontSizeDeltas[row][column];
    if (size > 400) {
        return static_cast<int>(size);
    }
    if (lc < 14.5) {
        return 999;
    }
    if (lc < 29.5) {
        return 777;
    }
    if (size > 24) {
        return static_cast<int>(std::round(size - delta * rowScale));
    }
    // Small sizes step down by whole pixels only, so a fractional cell loses its fraction.
    return static_cast<int>(size - std::floor(delta * rowScale));
}

// The table row of an absolute Lc; an Lc of 130 or more has none.
int rowForLc(double lc) {
    if (!(lc < 130.0)) {
        char text[64];
        std::snprintf(text, sizeof text, "Lc %.1f is beyond the font size table, which ends below 130", lc);
        throw FatalError(text);
    }
    return lc == 0.0 ? 1 : static_cast<int>(lc * 0.2);
}

}  // namespace

std::array<int, 9> apcaFontSizes(double lc) {
    lc = std::fabs(lc);
    const int row = rowForLc(lc);
    std::array<int, 9> sizes{};
    for (int column = 1; column < tableColumns; ++column) {
        sizes[static_cast<std::size_t>(column - 1)] = requiredSize(lc, row, column);
    }
    return sizes;
}

int apcaRequiredFontSize(double lc, int weight) {
    const int column = weight / 100;
    if (weight % 100 != 0 || column < 1 || column >= tableColumns) {
        throw FatalError("Font weight " + std::to_string(weight) + " has no column in the font size table");
    }
    lc = std::fabs(lc);
    return requiredSize(lc, rowForLc(lc), column);
}

}  // namespace tintwork
