#pragma once
// Number and colour text of the document format.

#include <optional>
#include <string>
#include <string_view>

#include "colour/ColorSpace.h"
#include "colour/ColorValue.h"

namespace tintwork {

// The shortest decimal text that reads back as the same double ("3", "0.5", "1e+20").
std::string shortestDecimal(double value);
// printf's "%.<precision>g".
std::string formatG(double value, int precision);
// The whole text as a double; leading blanks, trailing text or an empty text give nothing.
std::optional<double> parseDouble(std::string_view text);
// The whole text as an integer: an optional sign and decimal digits, nothing on overflow.
std::optional<long long> parseInteger(std::string_view text);

// The stored name of a colour space: "sRGB", "DisplayP3" or "extendedSRGB".
std::string_view profileName(ColorSpace space);
// The space for a stored name; unknown names give sRGB.
ColorSpace profileSpace(std::string_view name);
// "r g b a" with "%.5g" each, the components taken in the space's encoding.
std::string colorText(const ColorValue& color, ColorSpace space);
// A colour in the space's encoding from four blank-separated numbers; nothing unless exactly four read.
std::optional<ColorValue> parseColorText(std::string_view text, ColorSpace space);

}  // namespace tintwork
