#pragma once
// The per-colour half of an APCA comparison: the soft-clamped luminance and its four
// powers. Computed once per colour, so comparing two colours costs no pow call.

namespace tintwork {

struct APCATerms {
    double y = 0;                  // soft-clamped luminance
    double normalBackground = 0;   // y^0.56
    double normalText = 0;         // y^0.57
    double reverseText = 0;        // y^0.62
    double reverseBackground = 0;  // y^0.65
};

// The terms of an unclamped luminance.
APCATerms apcaTerms(double y);
// Signed Lc times 100, rounded to three places; NaN when a term is not a number.
double apcaContrast(const APCATerms& text, const APCATerms& background);

}  // namespace tintwork
