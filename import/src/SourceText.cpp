#include "SourceText.h"

#include <system_error>

#include "import/ColorImporter.h"
#include "model/FileIO.h"

namespace tintwork::importing {

namespace {

[[noreturn]] void throwTooLarge(const std::filesystem::path& path, std::uintmax_t limit) {
    throw DocumentColorParsingError("The file \u201c" + path.filename().string() + "\u201d is too large to import (over " +
                                    std::to_string(limit / (1024 * 1024)) + " MB).");
}

}  // namespace

std::string readSourceFile(const std::filesystem::path& path, std::uintmax_t limit) {
    std::error_code code;
    // Only a regular file has a size worth checking; anything else fails in the read below.
    if (std::filesystem::is_regular_file(path, code)) {
        const std::uintmax_t size = std::filesystem::file_size(path, code);
        if (!code && size > limit) {
            throwTooLarge(path, limit);
        }
    }
    std::string bytes = readFileBytes(path);
    // A file that grew between the check and the read is held to the same limit.
    if (bytes.size() > limit) {
        throwTooLarge(path, limit);
    }
    return bytes;
}

namespace {

// The length of the well-formed UTF-8 sequence at `at`, or 0 when the bytes there are not one.
std::size_t sequenceLength(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(at);
    if (lead < 0x80) {
        return 1;
    }
    std::size_t length = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        if (lead == 0xE0) {
            low = 0xA0;  // no overlong forms
        } else if (lead == 0xED) {
            high = 0x9F;  // no surrogates
        }
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        if (lead == 0xF0) {
            low = 0x90;
        } else if (lead == 0xF4) {
            high = 0x8F;  // nothing past U+10FFFF
        }
    } else {
        return 0;
    }
    if (at + length > text.size()) {
        return 0;
    }
    if (byte(at + 1) < low || byte(at + 1) > high) {
        return 0;
    }
    for (std::size_t i = 2; i < length; ++i) {
        if (byte(at + i) < 0x80 || byte(at + i) > 0xBF) {
            return 0;
        }
    }
    return length;
}

}  // namespace

bool isValidUTF8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = sequenceLength(text, at);
        if (length == 0) {
            return false;
        }
        at += length;
    }
    return true;
}

std::string wellFormedUTF8(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = sequenceLength(text, at);
        if (length == 0) {
            out += "\xEF\xBF\xBD";
            ++at;
        } else {
            out.append(text.substr(at, length));
            at += length;
        }
    }
    return out;
}

std::optional<std::size_t> firstTooDeepBracket(std::string_view json, std::size_t maxDepth) {
    std::size_t depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (inString) {
            if (c == '\\') {
                ++i;
            } else if (c == '"') {
                inString = false;
            }
        } else if (c == '"') {
            inString = true;
        } else if (c == '{' || c == '[') {
            if (++depth > maxDepth) {
                return i;
            }
        } else if ((c == '}' || c == ']') && depth > 0) {
            --depth;
        }
    }
    return std::nullopt;
}

}  // namespace tintwork::importing
