#include "contrast/WCAG.h"

#include <algorithm>
#include <cmath>

#include "Rounding.h"

namespace tintwork {

namespace {

double linearised(double component) {
    return component <= 0.03928 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

}  // namespace

double wcagRelativeLuminance(const ColorValue& color) {
    return 0.2126 * linearised(color.red()) + 0.7152 * linearised(color.green()) +
           0.0722 * linearised(color.blue());
}

double wcagContrastRatio(double firstLuminance, double secondLuminance) {
    const double lighter = std::max(firstLuminance, secondLuminance);
    const double darker = std::min(firstLuminance, secondLuminance);
    return roundedToThreePlaces((lighter + 0.05) / (darker + 0.05));
}

double wcagContrastRatio(const ColorValue& first, const ColorValue& second) {
    return wcagContrastRatio(wcagRelativeLuminance(first), wcagRelativeLuminance(second));
}

int wcagLevel(double ratio) {
    if (ratio >= 4.5) {
        return 0;
    }
    if (ratio >= 3.0) {
        return 1;
    }
    return 2;
}

}  // namespace tintwork
