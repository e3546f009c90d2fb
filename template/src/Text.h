#pragma once
// Small text helpers shared by the engine's sources.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tintwork::stencil::text {

inline bool isSpace(char character) {
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

inline std::string_view trim(std::string_view value) {
    while (!value.empty() && isSpace(value.front())) {
        value.remove_prefix(1);
    }
    while (!value.empty() && isSpace(value.back())) {
        value.remove_suffix(1);
    }
    return value;
}

// The position of `needle` outside quotes, or npos.
std::size_t findOutsideQuotes(std::string_view haystack, std::string_view needle, std::size_t from = 0);

// The UTF-8 characters (code points) of a text.
std::vector<std::string> characters(std::string_view value);
std::size_t characterCount(std::string_view value);
// The character at a position (negative counts from the end), or nullopt.
std::optional<std::string> characterAt(std::string_view value, std::int64_t position);

// Unicode case mapping of a whole text, and of its first character only.
std::string uppercased(std::string_view value);
std::string lowercased(std::string_view value);
std::string capitalized(std::string_view value);

// The text itself when short, else its first `maxCharacters` characters and "…": what an
// error message quotes of template text, which may be a whole long line.
std::string excerpt(std::string_view value, std::size_t maxCharacters = 40);

// Edit distance between two names.
std::size_t levenshtein(std::string_view lhs, std::string_view rhs);

// "Unknown filter 'x'. Found similar filters: 'y', 'z'" for a name among the known ones.
std::string unknownFilterMessage(std::string_view name, const std::vector<std::string>& knownNames);

}  // namespace tintwork::stencil::text
