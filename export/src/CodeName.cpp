#include "export/CodeName.h"

#include <utf8proc.h>

namespace tintwork {

namespace {

// One decoded code point, with the invalid byte taken as U+FFFD so that
// malformed UTF-8 never stops a name from being built.
struct Decoded {
    utf8proc_int32_t codePoint;
    std::size_t length;
};

Decoded decodeAt(std::string_view text, std::size_t offset) {
    utf8proc_int32_t codePoint = 0;
    auto remaining = static_cast<utf8proc_ssize_t>(text.size() - offset);
    auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data() + offset), remaining,
                                   &codePoint);
    if (length <= 0) {
        return {0xFFFD, 1};
    }
    return {codePoint, static_cast<std::size_t>(length)};
}

void appendCodePoint(std::string& out, utf8proc_int32_t codePoint) {
    utf8proc_uint8_t buffer[4];
    auto length = utf8proc_encode_char(codePoint, buffer);
    out.append(reinterpret_cast<const char*>(buffer), static_cast<std::size_t>(length));
}

bool isLetter(utf8proc_int32_t codePoint) {
    switch (utf8proc_category(codePoint)) {
        case UTF8PROC_CATEGORY_LU:
        case UTF8PROC_CATEGORY_LL:
        case UTF8PROC_CATEGORY_LT:
        case UTF8PROC_CATEGORY_LM:
        case UTF8PROC_CATEGORY_LO:
            return true;
        default:
            return false;
    }
}

bool isNumber(utf8proc_int32_t codePoint) {
    switch (utf8proc_category(codePoint)) {
        case UTF8PROC_CATEGORY_ND:
        case UTF8PROC_CATEGORY_NL:
        case UTF8PROC_CATEGORY_NO:
            return true;
        default:
            return false;
    }
}

// Combining marks belong to the letter before them (a decomposed "é" stays one letter).
bool isMark(utf8proc_int32_t codePoint) {
    switch (utf8proc_category(codePoint)) {
        case UTF8PROC_CATEGORY_MN:
        case UTF8PROC_CATEGORY_MC:
        case UTF8PROC_CATEGORY_ME:
            return true;
        default:
            return false;
    }
}

bool isAlphanumeric(utf8proc_int32_t codePoint) {
    return isLetter(codePoint) || isNumber(codePoint) || isMark(codePoint);
}

// The word with its first character upper-cased and the rest lower-cased.
std::string capitalised(std::string_view word) {
    std::string out;
    out.reserve(word.size());
    bool first = true;
    for (std::size_t offset = 0; offset < word.size();) {
        auto [codePoint, length] = decodeAt(word, offset);
        appendCodePoint(out, first ? utf8proc_toupper(codePoint) : utf8proc_tolower(codePoint));
        first = false;
        offset += length;
    }
    return out;
}

// Lower case, with every blank replaced by `joiner`.
std::string lowercasedJoined(std::string_view text, char joiner) {
    std::string out = lowercased(text);
    for (char& c : out) {
        if (c == ' ') {
            c = joiner;
        }
    }
    return out;
}

// Control characters (a NUL from a JSON key, a tab, a line feed) have no place in a
// name in any output language: they count as blanks, so that the transforms join or
// drop them like spaces.
std::string controlCharactersAsBlanks(std::string_view text) {
    std::string out(text);
    for (char& character : out) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte == 0x7F) {
            character = ' ';
        }
    }
    return out;
}

}  // namespace

std::vector<std::string> words(std::string_view text) {
    std::vector<std::string> result;
    std::string current;
    for (std::size_t offset = 0; offset < text.size();) {
        auto [codePoint, length] = decodeAt(text, offset);
        if (isAlphanumeric(codePoint)) {
            current.append(text.substr(offset, length));
        } else if (!current.empty()) {
            result.push_back(std::move(current));
            current.clear();
        }
        offset += length;
    }
    if (!current.empty()) {
        result.push_back(std::move(current));
    }
    return result;
}

std::string lowercased(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t offset = 0; offset < text.size();) {
        auto [codePoint, length] = decodeAt(text, offset);
        if (codePoint < 0x80) {
            out.push_back(static_cast<char>(utf8proc_tolower(codePoint)));
        } else {
            appendCodePoint(out, utf8proc_tolower(codePoint));
        }
        offset += length;
    }
    return out;
}

std::string camel(std::string_view text) {
    std::string out;
    bool first = true;
    for (const auto& word : words(text)) {
        out += first ? lowercased(word) : capitalised(word);
        first = false;
    }
    return out;
}

std::string pascal(std::string_view text) {
    std::string out;
    for (const auto& word : words(text)) {
        out += capitalised(word);
    }
    return out;
}

std::string upperFirst(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    auto [codePoint, length] = decodeAt(text, 0);
    std::string out;
    out.reserve(text.size());
    appendCodePoint(out, utf8proc_toupper(codePoint));
    out.append(text.substr(length));
    return out;
}

void appendCodeNamePart(std::string& result, std::string_view rawPart, BuildNameTransform transform) {
    const std::string cleaned = controlCharactersAsBlanks(rawPart);
    const std::string_view part = cleaned;
    const bool joining = !result.empty();
    switch (transform) {
        case BuildNameTransform::none:
            result.append(part);
            break;
        case BuildNameTransform::camelCase:
            result += joining ? upperFirst(camel(part)) : camel(part);
            break;
        case BuildNameTransform::pascalCase:
            result += joining ? upperFirst(pascal(part)) : pascal(part);
            break;
        case BuildNameTransform::snakeCase:
            if (joining) {
                result.push_back('_');
            }
            result += lowercasedJoined(part, '_');
            break;
        case BuildNameTransform::kebabCase:
            if (joining) {
                result.push_back('-');
            }
            result += lowercasedJoined(part, '-');
            break;
    }
}

std::string codeName(const std::vector<std::string>& namespaceParts, std::string_view name, const BuildTask& task) {
    std::string body;
    for (const auto& part : namespaceParts) {
        appendCodeNamePart(body, part, task.nameTransform);
    }
    appendCodeNamePart(body, name, task.nameTransform);
    std::string out;
    if (task.namePrefix && !task.namePrefix->empty()) {
        out = controlCharactersAsBlanks(*task.namePrefix);
    }
    out += body;
    if (task.nameSuffix && !task.nameSuffix->empty()) {
        out += controlCharactersAsBlanks(*task.nameSuffix);
    }
    return out;
}

std::string codeSafeName(std::string_view text, std::string_view fallbackPrefix) {
    std::string out;
    bool first = true;
    for (std::size_t offset = 0; offset < text.size();) {
        auto [codePoint, length] = decodeAt(text, offset);
        const bool keptMark = isMark(codePoint) && !out.empty();
        if (isLetter(codePoint) || isNumber(codePoint) || codePoint == '_' || keptMark) {
            if (first && isNumber(codePoint)) {
                out.append(fallbackPrefix);
            }
            first = false;
            out.append(text.substr(offset, length));
        }
        offset += length;
    }
    return out;
}

}  // namespace tintwork
