#include "export/NumberFormat.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace tintwork {

namespace {

// The text for values that have no decimal form.
std::string nonFiniteText(double value) {
    if (std::isnan(value)) {
        return "nan";
    }
    return value < 0 ? "-inf" : "inf";
}

}  // namespace

std::string formatDecimalNumber(double value) {
    if (!std::isfinite(value)) {
        return nonFiniteText(value);
    }
    // Round at four places first so that "%.4f" never rounds a half toward even.
    double rounded = std::round(value * 10000.0) / 10000.0;
    if (!std::isfinite(rounded)) {
        rounded = value;
    }
    char buffer[512];
    int length = std::snprintf(buffer, sizeof buffer, "%.4f", rounded);
    if (length <= 0 || static_cast<std::size_t>(length) >= sizeof buffer) {
        return nonFiniteText(value);
    }
    std::string text(buffer, static_cast<std::size_t>(length));
    // Locales may print another separator; the output always takes ".".
    for (char& c : text) {
        if (c == ',') {
            c = '.';
        }
    }
    if (auto dot = text.find('.'); dot != std::string::npos) {
        std::size_t end = text.find_last_not_of('0');
        text.erase(end == dot ? dot : end + 1);
    }
    if (text == "-0") {
        return "0";
    }
    return text;
}

std::string roundTripDoubleText(double value) {
    if (!std::isfinite(value)) {
        return nonFiniteText(value);
    }
    char buffer[64];
    const double magnitude = std::fabs(value);
    // Plain digits between 1e-4 and 2^53, exponent form outside, as Kotlin and Swift print doubles.
    const bool plain = magnitude == 0 || (magnitude >= 1e-4 && magnitude < 9007199254740992.0);
    auto result = plain ? std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed)
                        : std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
    std::string text(buffer, result.ptr);
    if (plain && text.find('.') == std::string::npos) {
        text += ".0";
    }
    return text;
}

}  // namespace tintwork
