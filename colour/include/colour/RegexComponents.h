// Grammar pieces of the colour text reader, as RE2 pattern strings, and the
// CSS custom-property declaration rule that the CSS importer matches directly.
#pragma once

#include <string_view>

namespace tintwork::RegexComponents {

// An optional "-", digits, and optionally "." and digits.
inline constexpr std::string_view number = R"(-?\d+(?:\.\d+)?)";
// Optional whitespace, ",", optional whitespace.
inline constexpr std::string_view commaSeparator = R"(\s*,\s*)";
// Whitespace or a comma separator.
inline constexpr std::string_view separator = R"((?:\s*,\s*|\s+))";
// Two hexadecimal digits.
inline constexpr std::string_view hexPair = R"([0-9A-Fa-f]{2})";
// A number with an optional "%".
inline constexpr std::string_view percentNumber = R"(-?\d+(?:\.\d+)?%?)";
// Optional "$", optional "--", the captured name, ":", optional whitespace.
inline constexpr std::string_view cssVariableDeclaration = R"(\$?(?:--)?([^:\s]+):\s*)";

} // namespace tintwork::RegexComponents
