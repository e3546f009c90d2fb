#pragma once
// WCAG 2 contrast ratio with the older 0.03928 linearisation threshold, and its levels.

#include "colour/ColorValue.h"

namespace tintwork {

// Relative luminance of the colour's components as they stand in its own encoding.
double wcagRelativeLuminance(const ColorValue& color);
// (lighter + 0.05) / (darker + 0.05) of two relative luminances, rounded to three places.
double wcagContrastRatio(double firstLuminance, double secondLuminance);
double wcagContrastRatio(const ColorValue& first, const ColorValue& second);
// 0 at a ratio of 4.5 or more, 1 at 3.0 or more, 2 below.
int wcagLevel(double ratio);

}  // namespace tintwork
