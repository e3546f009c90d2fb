#include "TextForms.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <vector>

namespace tintwork {

std::string shortestDecimal(double value) {
    std::array<char, 64> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return std::string(buffer.data(), result.ptr);
}

std::string formatG(double value, int precision) {
    std::array<char, 64> buffer{};
    const int length = std::snprintf(buffer.data(), buffer.size(), "%.*g", precision, value);
    if (length < 0) {
        return {};
    }
    return std::string(buffer.data(), std::min(static_cast<std::size_t>(length), buffer.size() - 1));
}

std::optional<double> parseDouble(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-') || text.starts_with('+')) {
            return std::nullopt;
        }
    }
    if (text.empty()) {
        return std::nullopt;
    }
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

std::optional<long long> parseInteger(std::string_view text) {
    bool negative = false;
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    if (text.empty() || text.find_first_not_of("0123456789") != std::string_view::npos) {
        return std::nullopt;
    }
    // Parse with the sign in place so that the most negative value still fits.
    std::string digits = negative ? "-" : "";
    digits += text;
    long long value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size()) {
        return std::nullopt;
    }
    return value;
}

std::string_view profileName(ColorSpace space) {
    switch (encodingForSpace(space)) {
        case ColorEncoding::sRGB: return "sRGB";
        case ColorEncoding::sRGBExtended: return "extendedSRGB";
        case ColorEncoding::displayP3:
        case ColorEncoding::extendedLinearSRGB: break;
    }
    return "DisplayP3";
}

ColorSpace profileSpace(std::string_view name) {
    if (name == "DisplayP3") {
        return ColorSpace::displayP3;
    }
    if (name == "extendedSRGB") {
        return ColorSpace::sRGBExtended;
    }
    return ColorSpace::sRGB;
}

std::string colorText(const ColorValue& color, ColorSpace space) {
    const ColorEncoding encoding = encodingForSpace(space);
    // A colour already in the space is written as it stands (a conversion into sRGB would clamp).
    const ColorValue inSpace = color.encoding() == encoding ? color : color.converted(encoding).value_or(color);
    return formatG(inSpace.red(), 5) + " " + formatG(inSpace.green(), 5) + " " + formatG(inSpace.blue(), 5) + " " +
           formatG(inSpace.alpha(), 5);
}

std::optional<ColorValue> parseColorText(std::string_view text, ColorSpace space) {
    std::vector<double> components;
    std::size_t position = 0;
    while (position <= text.size()) {
        std::size_t blank = text.find(' ', position);
        if (blank == std::string_view::npos) {
            blank = text.size();
        }
        const std::string_view field = text.substr(position, blank - position);
        if (!field.empty()) {
            const std::optional<double> value = parseDouble(field);
            if (!value || components.size() == 4) {
                return std::nullopt;
            }
            components.push_back(*value);
        }
        position = blank + 1;
    }
    if (components.size() != 4) {
        return std::nullopt;
    }
    return ColorValue(encodingForSpace(space), components[0], components[1], components[2], components[3]);
}

}  // namespace tintwork
