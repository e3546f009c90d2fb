#include "Text.h"

#include <utf8proc.h>

#include <algorithm>

namespace tintwork::stencil::text {

std::size_t findOutsideQuotes(std::string_view haystack, std::string_view needle, std::size_t from) {
    char quote = 0;
    for (std::size_t index = from; index < haystack.size(); ++index) {
        char character = haystack[index];
        if (quote != 0) {
            if (character == '\\') {
                ++index;
            } else if (character == quote) {
                quote = 0;
            }
            continue;
        }
        if (character == '"' || character == '\'') {
            quote = character;
            continue;
        }
        if (haystack.substr(index, needle.size()) == needle) {
            return index;
        }
    }
    return std::string_view::npos;
}

namespace {

// Walks a UTF-8 text code point by code point; invalid bytes pass as one character.
template <class Visit>
void forEachCodePoint(std::string_view value, Visit visit) {
    const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(value.data());
    auto length = static_cast<utf8proc_ssize_t>(value.size());
    utf8proc_ssize_t position = 0;
    while (position < length) {
        utf8proc_int32_t codePoint = 0;
        utf8proc_ssize_t consumed = utf8proc_iterate(bytes + position, length - position, &codePoint);
        if (consumed <= 0) {
            visit(-1, value.substr(static_cast<std::size_t>(position), 1));
            ++position;
            continue;
        }
        visit(codePoint, value.substr(static_cast<std::size_t>(position), static_cast<std::size_t>(consumed)));
        position += consumed;
    }
}

void appendCodePoint(std::string& output, utf8proc_int32_t codePoint) {
    utf8proc_uint8_t buffer[4];
    utf8proc_ssize_t written = utf8proc_encode_char(codePoint, buffer);
    output.append(reinterpret_cast<const char*>(buffer), static_cast<std::size_t>(written));
}

// Characters whose case changes their length: the sharp s and the Latin ligatures
// upper-case to several letters, the dotted capital I lower-cases to i and a dot.
const char* fullUppercase(utf8proc_int32_t codePoint) {
    switch (codePoint) {
    case 0x00DF: return "SS";
    case 0x0149: return "\u02BCN";
    case 0xFB00: return "FF";
    case 0xFB01: return "FI";
    case 0xFB02: return "FL";
    case 0xFB03: return "FFI";
    case 0xFB04: return "FFL";
    case 0xFB05: return "ST";
    case 0xFB06: return "ST";
    default: return nullptr;
    }
}

const char* fullLowercase(utf8proc_int32_t codePoint) { return codePoint == 0x0130 ? "i\u0307" : nullptr; }

template <class Map>
std::string mapCase(std::string_view value, Map map, const char* (*full)(utf8proc_int32_t), bool firstOnly) {
    std::string output;
    output.reserve(value.size());
    bool first = true;
    forEachCodePoint(value, [&](utf8proc_int32_t codePoint, std::string_view bytes) {
        if (codePoint < 0 || (firstOnly && !first)) {
            output += bytes;
        } else if (const char* expanded = full(codePoint)) {
            output += expanded;
        } else {
            appendCodePoint(output, map(codePoint));
        }
        first = false;
    });
    return output;
}

}  // namespace

std::vector<std::string> characters(std::string_view value) {
    std::vector<std::string> result;
    forEachCodePoint(value, [&](utf8proc_int32_t, std::string_view bytes) { result.emplace_back(bytes); });
    return result;
}

namespace {

bool isAscii(std::string_view value) {
    for (char character : value) {
        if (static_cast<unsigned char>(character) >= 0x80) {
            return false;
        }
    }
    return true;
}

// ASCII text, the common case for code names, skips the Unicode tables.
template <class Transform>
std::string mapAscii(std::string_view value, Transform transform, bool firstOnly) {
    std::string output(value);
    for (std::size_t index = 0; index < output.size() && (!firstOnly || index == 0); ++index) {
        output[index] = transform(output[index]);
    }
    return output;
}

char asciiUpper(char character) { return character >= 'a' && character <= 'z' ? static_cast<char>(character - 32) : character; }

char asciiLower(char character) { return character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character; }

}  // namespace

std::size_t characterCount(std::string_view value) {
    std::size_t count = 0;
    forEachCodePoint(value, [&](utf8proc_int32_t, std::string_view) { ++count; });
    return count;
}

std::optional<std::string> characterAt(std::string_view value, std::int64_t position) {
    if (position < 0) {
        position += static_cast<std::int64_t>(characterCount(value));
        if (position < 0) {
            return std::nullopt;
        }
    }
    std::optional<std::string> found;
    std::int64_t index = 0;
    forEachCodePoint(value, [&](utf8proc_int32_t, std::string_view bytes) {
        if (index++ == position) {
            found = std::string(bytes);
        }
    });
    return found;
}

std::string uppercased(std::string_view value) {
    return isAscii(value) ? mapAscii(value, asciiUpper, false) : mapCase(value, utf8proc_toupper, fullUppercase, false);
}

std::string lowercased(std::string_view value) {
    return isAscii(value) ? mapAscii(value, asciiLower, false) : mapCase(value, utf8proc_tolower, fullLowercase, false);
}

std::string capitalized(std::string_view value) {
    if (!value.empty() && static_cast<unsigned char>(value.front()) < 0x80) {
        return mapAscii(value, asciiUpper, true);
    }
    return mapCase(value, utf8proc_toupper, fullUppercase, true);
}

std::size_t levenshtein(std::string_view lhs, std::string_view rhs) {
    std::vector<std::size_t> previous(rhs.size() + 1);
    std::vector<std::size_t> current(rhs.size() + 1);
    for (std::size_t column = 0; column <= rhs.size(); ++column) {
        previous[column] = column;
    }
    for (std::size_t row = 1; row <= lhs.size(); ++row) {
        current[0] = row;
        for (std::size_t column = 1; column <= rhs.size(); ++column) {
            std::size_t cost = lhs[row - 1] == rhs[column - 1] ? 0 : 1;
            current[column] = std::min({previous[column] + 1, current[column - 1] + 1, previous[column - 1] + cost});
        }
        std::swap(previous, current);
    }
    return previous[rhs.size()];
}

std::string excerpt(std::string_view value, std::size_t maxCharacters) {
    std::size_t position = 0;
    std::size_t count = 0;
    while (position < value.size() && count < maxCharacters) {
        ++position;
        while (position < value.size() && (static_cast<unsigned char>(value[position]) & 0xC0) == 0x80) {
            ++position;
        }
        ++count;
    }
    if (position >= value.size()) {
        return std::string(value);
    }
    return std::string(value.substr(0, position)) + "…";
}

std::string unknownFilterMessage(std::string_view name, const std::vector<std::string>& names) {
    std::vector<std::pair<std::size_t, std::string>> scored;
    std::size_t best = std::string::npos;
    for (const std::string& candidate : names) {
        // Only the start of a very long name is compared: its nearness to a short name
        // says nothing more, and the cost would grow with its length.
        std::size_t distance = levenshtein(name.substr(0, 64), candidate);
        scored.emplace_back(distance, candidate);
        best = std::min(best, distance);
    }
    // The nearest names by edit distance, in registration order.
    std::size_t limit = best;
    std::string result = "Unknown filter '" + excerpt(name) + "'. Found similar filters: ";
    bool first = true;
    for (const auto& [distance, candidate] : scored) {
        if (distance <= limit) {
            result += (first ? "'" : ", '") + candidate + "'";
            first = false;
        }
    }
    return result;
}

}  // namespace tintwork::stencil::text
