#include "PaletteJson.h"

#include <algorithm>
#include <cctype>

#include "SourceText.h"
#include "colour/ColorConverter.h"
#include "import/ColorImporter.h"
#include "import/SetBuilder.h"
#include "model/FileIO.h"
#include "model/Uuid.h"

namespace tintwork::importing {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isHexDigit(char c) {
    return std::isxdigit(static_cast<unsigned char>(c)) != 0;
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front()))) {
        text.remove_prefix(1);
    }
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) {
        text.remove_suffix(1);
    }
    return text;
}

// Compares two runs of digits by value, however long they are.
int compareDigitRuns(std::string_view lhs, std::string_view rhs) {
    auto significant = [](std::string_view run) {
        const std::size_t first = run.find_first_not_of('0');
        return first == std::string_view::npos ? std::string_view() : run.substr(first);
    };
    lhs = significant(lhs);
    rhs = significant(rhs);
    if (lhs.size() != rhs.size()) {
        return lhs.size() < rhs.size() ? -1 : 1;
    }
    return lhs.compare(rhs) < 0 ? -1 : (lhs == rhs ? 0 : 1);
}

}  // namespace

std::string readPaletteFile(const std::filesystem::path& url) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(url, error);
    if (!error && size > maxPaletteFileBytes) {
        throw DocumentColorParsingError(url.filename().string() + " is too large for a palette file");
    }
    return readFileBytes(url);
}

OrderedJson parsePaletteJson(std::string_view text, const std::string& sourceName) {
    try {
        return OrderedJson::parse(text);
    } catch (const OrderedJson::exception& error) {
        // The library's text starts with its own exception tag, which says nothing to a user.
        std::string detail = error.what();
        if (std::size_t tagEnd = detail.find("] "); !detail.empty() && detail.front() == '[' &&
                                                    tagEnd != std::string::npos) {
            detail.erase(0, tagEnd + 2);
        }
        throw DocumentColorParsingError(sourceName + " is not valid JSON: " + importing::wellFormedUTF8(detail));
    }
}

std::optional<ColorValue> parsePaletteColor(std::string_view text) {
    text = trimmed(text);
    // Eight hexadecimal digits carry alpha last; the reader takes that form after "0x".
    if (text.size() == 9 && text.front() == '#' && std::all_of(text.begin() + 1, text.end(), isHexDigit)) {
        return parseColor("0x" + std::string(text.substr(1)), ColorFormat::hexRGBA, ColorSpace::sRGB, false).color;
    }
    // Texts that name Display P3 ("color(display-p3 …)", "p3:#…") are read in that space.
    const ColorFormat format = text.starts_with("color(") ? ColorFormat::cssColor : ColorFormat::htmlRGB;
    return parseColor(text, format, ColorSpace::sRGB, true).color;
}

bool digitRunLess(std::string_view lhs, std::string_view rhs) {
    return compareDigitRuns(lhs, rhs) < 0;
}

bool naturalLess(std::string_view lhs, std::string_view rhs) {
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < lhs.size() && j < rhs.size()) {
        if (isDigit(lhs[i]) && isDigit(rhs[j])) {
            std::size_t endL = i;
            std::size_t endR = j;
            while (endL < lhs.size() && isDigit(lhs[endL])) {
                ++endL;
            }
            while (endR < rhs.size() && isDigit(rhs[endR])) {
                ++endR;
            }
            if (int order = compareDigitRuns(lhs.substr(i, endL - i), rhs.substr(j, endR - j)); order != 0) {
                return order < 0;
            }
            i = endL;
            j = endR;
            continue;
        }
        const int left = std::tolower(static_cast<unsigned char>(lhs[i]));
        const int right = std::tolower(static_cast<unsigned char>(rhs[j]));
        if (left != right) {
            return left < right;
        }
        ++i;
        ++j;
    }
    if ((lhs.size() - i) != (rhs.size() - j)) {
        return lhs.size() - i < rhs.size() - j;
    }
    return lhs < rhs;
}

ThemeableColor makeThemeableColor(const std::string& name, const ColorValue& color) {
    ThemeableColor themeable;
    themeable.name = name;
    themeable.uuid = newUUID();
    themeable.lightVariant = color;
    return themeable;
}

ProjectItemPtr makeSetItem(const std::string& name, const std::vector<ThemeableColor>& colors) {
    return std::make_shared<OchreColorProjectItem>(name, newUUID(), makeColorSet(colors));
}

}  // namespace tintwork::importing
