#pragma once
// APCA lightness contrast (Lc): luminance with a plain 2.4 exponent, the black soft
// clamp, the polarity-dependent power curves, and the font size lookup by Lc and weight.

#include <array>
#include <optional>

#include "colour/ColorValue.h"

namespace tintwork {

// Y with the sRGB coefficients over each component raised to 2.4.
double apcaLuminanceSRGB(double red, double green, double blue);
// Y with the Display P3 coefficients over each component raised to 2.4.
double apcaLuminanceDisplayP3(double red, double green, double blue);
// A Y at or below 0.022 lifted toward the black threshold; a brighter Y unchanged.
double apcaSoftClamp(double y);

// Signed Lc of text over background luminance (unclamped Y), rounded to three places:
// positive for dark text on a light background, negative the other way round.
double apcaContrast(double textY, double backgroundY);

// Signed Lc of two opaque colours. Both in sRGB: their own components with the sRGB
// coefficients. Otherwise both are converted to sRGB (clamping) and weighed with the
// Display P3 coefficients. nullopt when a conversion fails or the result is not a number.
std::optional<double> apcaContrast(const ColorValue& text, const ColorValue& background);

// The required font size for each weight 100 to 900 at this absolute Lc. 999 means
// no text at all, 777 no body text. Throws FatalError for an Lc of 130 or more.
std::array<int, 9> apcaFontSizes(double lc);
// The required font size at one weight (100 to 900).
int apcaRequiredFontSize(double lc, int weight);

}  // namespace tintwork
