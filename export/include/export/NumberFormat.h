#pragma once
// Number texts of the exporter tags.

#include <string>

namespace tintwork {

// Decimal text with at most four fraction digits (halves away from zero), no
// grouping, "." as separator whatever the locale, and "0" for a negative zero.
std::string formatDecimalNumber(double value);

// The shortest text that reads back as the same double, always with a fraction
// or an exponent ("2.0", "0.25", "1e-05"): how Kotlin source spells a float literal here.
std::string roundTripDoubleText(double value);

}  // namespace tintwork
