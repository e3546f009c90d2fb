#include "colour/ColorConverter.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <numbers>
#include <string>
#include <vector>

#include <re2/re2.h>

#include "colour/FatalError.h"
#include "colour/Oklab.h"
#include "colour/RegexComponents.h"

namespace tintwork {

namespace {

// ---------------------------------------------------------------- writing --

// One number as C's printf prints it with "%g"; to_chars is defined to give
// exactly that text and, unlike snprintf, never looks at the locale.
std::string formatG(double value) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 6);
    return std::string(buffer, result.ptr);
}

// Rounds half away from zero to a 32-bit integer; a value that has none is a program fault.
std::int32_t toInt32(double value) {
    const double rounded = std::round(value);
    if (!std::isfinite(rounded) || rounded < -2147483648.0 || rounded > 2147483647.0) {
        throw FatalError("Colour component " + formatG(value) + " cannot be printed as an integer");
    }
    return static_cast<std::int32_t>(rounded);
}

// A printf subset over doubles: "%g", "%02X" and "%u" each take the next
// argument, "%%" is a percent sign. Integer arguments arrive already rounded.
std::string printFormat(std::string_view format, std::initializer_list<double> arguments) {
    std::string out;
    const double* next = arguments.begin();
    auto take = [&]() { return next != arguments.end() ? *next++ : 0.0; };
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] != '%') {
            out += format[i];
            continue;
        }
        const std::string_view rest = format.substr(i + 1);
        if (rest.starts_with("%")) {
            out += '%';
            i += 1;
        } else if (rest.starts_with("g")) {
            out += formatG(take());
            i += 1;
        } else if (rest.starts_with("02X")) {
            char buffer[16];
            std::snprintf(buffer, sizeof buffer, "%02X", static_cast<unsigned>(toInt32(take())));
            out += buffer;
            i += 3;
        } else if (rest.starts_with("u")) {
            out += std::to_string(static_cast<std::uint32_t>(toInt32(take())));
            i += 1;
        } else {
            out += '%';
        }
    }
    return out;
}

struct Writer {
    const ColorValue& color;
    ColorSpace colorSpace;
    const ColorConverterOptions& options;

    double rounded(double value) const { return roundPlaces(value, options.roundedTo); }

    std::string p3Prefix() const {
        return colorSpace == ColorSpace::displayP3 ? options.p3Prefix.value_or("") : "";
    }

    std::string clipSuffix() const { return options.suffixWhenClipped.value_or(""); }

    ColorConverterResult fourNumbers(std::string_view format, const std::array<double, 4>& values,
                                     std::string prefix = "") const {
        return {prefix + printFormat(format, {rounded(values[0]), rounded(values[1]), rounded(values[2]),
                                              rounded(values[3])}),
                false};
    }

    // The hex forms: Display P3 prints as it stands, a colour outside sRGB is
    // clipped into it, and each channel becomes a byte.
    ColorConverterResult hex(std::string_view format, bool alphaFirst) const {
        ColorValue printed = color;
        std::string prefix;
        std::string suffix;
        bool clipped = false;
        if (colorSpace == ColorSpace::displayP3) {
            prefix = p3Prefix();
        } else if (isOutsideSRGB(color)) {
            suffix = clipSuffix();
            printed = color.converted(ColorEncoding::sRGB).value_or(color);
            clipped = true;
        }
        auto byte = [](double channel) {
            const double scaled = channel * 255.0;
            if (!std::isfinite(scaled)) {
                throw FatalError("Colour component " + formatG(channel) + " cannot be printed as hexadecimal");
            }
            return std::clamp(std::round(scaled), 0.0, 255.0);
        };
        const double r = byte(printed.red());
        const double g = byte(printed.green());
        const double b = byte(printed.blue());
        const double a = byte(printed.alpha());
        const std::string body = alphaFirst ? printFormat(format, {a, r, g, b}) : printFormat(format, {r, g, b, a});
        return {prefix + body + suffix, clipped};
    }

    // rgb() and color(): clip when outside sRGB and the output cannot show it
    // (an sRGB caller, a forced clip, or 0..255 integers), then print.
    ColorConverterResult rgb(std::string_view format, bool integers) const {
        ColorValue printed = color;
        std::string suffix;
        bool clipped = false;
        if (isOutsideSRGB(color) && (colorSpace == ColorSpace::sRGB || options.forceClip || integers)) {
            suffix = clipSuffix();
            printed = color.converted(ColorEncoding::sRGB).value_or(color);
            clipped = true;
        }
        const double scale = integers ? 255.0 : 1.0;
        auto channel = [&](double value) { return rounded(integers ? std::round(value * scale) : value); };
        return {printFormat(format, {channel(printed.red()), channel(printed.green()), channel(printed.blue()),
                                     rounded(printed.alpha())}) +
                    suffix,
                clipped};
    }

    ColorConverterResult cssRGB() const {
        const bool translucent = color.alpha() < 1.0;
        if (!options.forceClip && colorSpace == ColorSpace::displayP3) {
            return rgb(translucent ? "color(display-p3 %g %g %g / %g)" : "color(display-p3 %g %g %g)", false);
        }
        return rgb(translucent ? "rgb(%g, %g, %g / %g)" : "rgb(%g, %g, %g)", true);
    }

    ColorConverterResult cssColor() const {
        const bool translucent = color.alpha() < 1.0;
        if (colorSpace == ColorSpace::displayP3) {
            return rgb(translucent ? "color(display-p3 %g %g %g / %g)" : "color(display-p3 %g %g %g)", false);
        }
        return rgb(translucent ? "color(srgb %g %g %g / %g)" : "color(srgb %g %g %g)", false);
    }

    // hsl() carries HSB numbers, which the reader takes back the same way.
    ColorConverterResult cssHSL() const {
        const char* format = color.alpha() < 1.0 ? "hsl(%u %u%% %u%% / %g)" : "hsl(%u %u%% %u%%)";
        return {p3Prefix() + printFormat(format, {std::round(color.hue() * 360.0),
                                                  std::round(color.saturation() * 100.0),
                                                  std::round(color.brightness() * 100.0), rounded(color.alpha())}),
                false};
    }

    ColorConverterResult cssOKLAB() const {
        const std::optional<ColorValue> linear = color.converted(ColorEncoding::extendedLinearSRGB);
        if (!linear) {
            return {};
        }
        const RawLABValues lab = toOKLAB(linear->red(), linear->green(), linear->blue(), linear->alpha());
        const double alpha = rounded(lab.alpha);
        const char* format = alpha != 1.0 ? "oklab(%g%% %g %g / %g)" : "oklab(%g%% %g %g)";
        return {printFormat(format, {rounded(lab.l) * 100.0, rounded(lab.a), rounded(lab.b), alpha}), false};
    }

    // Lightness and hue always carry one decimal, whatever roundedTo says.
    ColorConverterResult cssOKLCH() const {
        const std::optional<ColorValue> linear = color.converted(ColorEncoding::extendedLinearSRGB);
        if (!linear) {
            return {};
        }
        const RawLCHValues lch = toOKLCH(linear->red(), linear->green(), linear->blue(), linear->alpha());
        double degrees = lch.hue * 180.0 / std::numbers::pi;
        if (degrees < 0.0) {
            degrees += 360.0;
        }
        const double alpha = rounded(lch.alpha);
        const char* format = alpha != 1.0 ? "oklch(%g%% %g %g / %g)" : "oklch(%g%% %g %g)";
        return {printFormat(format, {roundPlaces(lch.lightness * 100.0, 1), rounded(lch.chroma),
                                     roundPlaces(degrees, 1), alpha}),
                false};
    }

    ColorConverterResult write(ColorFormat format) const {
        const bool p3 = colorSpace == ColorSpace::displayP3;
        const bool perceptual = colorSpace == ColorSpace::oklab || colorSpace == ColorSpace::oklch;
        switch (format) {
        case ColorFormat::floatRGBA:
            return fourNumbers("%g %g %g %g", color.rgbaComponents(), p3Prefix());
        case ColorFormat::floatHSVA:
            return fourNumbers("%g %g %g %g", color.hsbaComponents(), p3Prefix());
        case ColorFormat::htmlRGB:
            return hex(color.alpha() < 1.0 ? "#%02X%02X%02X%02X" : "#%02X%02X%02X", false);
        case ColorFormat::cssRGB:
            return cssRGB();
        case ColorFormat::cssColor:
            return cssColor();
        case ColorFormat::cssHSL:
            return cssHSL();
        case ColorFormat::cssOKLAB:
            return cssOKLAB();
        case ColorFormat::cssOKLCH:
            return cssOKLCH();
        case ColorFormat::hexRGB:
            return hex("0x%02X%02X%02X", false);
        case ColorFormat::hexARGB:
            return hex("0x%02X%02X%02X%02X", true);
        case ColorFormat::hexRGBA:
            return hex("0x%02X%02X%02X%02X", false);
        case ColorFormat::swiftUIColorRGBA:
            return fourNumbers(p3 ? "UIColor(displayP3Red: %g, green: %g, blue: %g, alpha: %g)"
                                  : "UIColor(red: %g, green: %g, blue: %g, alpha: %g)",
                               color.rgbaComponents());
        case ColorFormat::swiftUIColorHSBA:
            return fourNumbers("UIColor(hue: %g, saturation: %g, brightness: %g, alpha: %g)", color.hsbaComponents());
        case ColorFormat::swiftNSColorRGBA:
            if (perceptual) {
                return {};
            }
            return fourNumbers(p3 ? "NSColor(displayP3Red: %g, green: %g, blue: %g, alpha: %g)"
                                  : "NSColor(red: %g, green: %g, blue: %g, alpha: %g)",
                               color.rgbaComponents());
        case ColorFormat::swiftNSColorHSBA:
            if (perceptual) {
                return {};
            }
            if (colorSpace == ColorSpace::sRGBExtended) {
                return fourNumbers(
                    "NSColor(colorSpace: .extendedSRGB, hue: %g, saturation: %g, brightness: %g, alpha: %g)",
                    color.hsbaComponents());
            }
            return fourNumbers(p3 ? "NSColor(colorSpace: .displayP3, hue: %g, saturation: %g, brightness: %g, alpha: %g)"
                                  : "NSColor(hue: %g, saturation: %g, brightness: %g, alpha: %g)",
                               color.hsbaComponents());
        case ColorFormat::swiftColorRGBA:
            return fourNumbers(p3 ? "Color(.displayP3, red: %g, green: %g, blue: %g, opacity: %g)"
                                  : "Color(red: %g, green: %g, blue: %g, opacity: %g)",
                               color.rgbaComponents());
        case ColorFormat::swiftColorHSBA:
            return fourNumbers("Color(hue: %g, saturation: %g, brightness: %g, opacity: %g)", color.hsbaComponents());
        }
        return {};
    }
};

// ---------------------------------------------------------------- reading --

std::string capture(std::string_view pattern) {
    std::string group(1, '(');
    group.append(pattern);
    group.push_back(')');
    return group;
}

// A number and its optional percent sign, as two groups.
std::string capturePercent() {
    return capture(RegexComponents::number) + "(%?)";
}

// The tail shared by the Swift forms: `label:` ws number, for each label, then ")".
std::string swiftArguments(std::initializer_list<std::string_view> labels) {
    std::string pattern;
    bool first = true;
    for (std::string_view label : labels) {
        if (!first) {
            pattern += std::string(RegexComponents::commaSeparator) + std::string(label);
        }
        pattern += R"(\s*)" + capture(RegexComponents::number);
        first = false;
    }
    return pattern + R"(\s*\))";
}

struct Patterns {
    const std::string n = capture(RegexComponents::number);
    const std::string comma{RegexComponents::commaSeparator};
    const std::string sep{RegexComponents::separator};
    const std::string pair = capture(RegexComponents::hexPair);
    const std::string digit = "([0-9A-Fa-f])";
    const std::string optionalAlpha = R"(\s*/?\s*(?:)" + capture(RegexComponents::number) + ")?";

    RE2 floats{n + sep + n + sep + n + sep + n};
    RE2 htmlSix{R"((?:p3:)?\s*)" + pair + pair + pair};
    RE2 htmlThree{R"((?:p3:)?\s*)" + digit + digit + digit};
    RE2 htmlOne{digit};
    RE2 hexThree{"0x" + pair + pair + pair};
    RE2 hexFour{"0x" + pair + pair + pair + pair};
    RE2 cssRGB{R"(rgb\(\s*)" + n + comma + n + comma + n + optionalAlpha + R"(%?\s*\))"};
    RE2 cssColorP3{R"(color\(display-p3\s+)" + n + R"(\s+)" + n + R"(\s+)" + n + optionalAlpha + R"(\s*\))"};
    RE2 cssColorSRGB{R"(color\(srgb\s+)" + n + R"(\s+)" + n + R"(\s+)" + n + optionalAlpha + R"(\s*\))"};
    RE2 cssHSL{R"(hsl\(\s*(\d+)\s+(\d+)%\s+(\d+)%)" + optionalAlpha + R"(%?\s*\))"};
    RE2 cssOKLAB{R"(oklab\(\s*)" + capturePercent() + R"(\s+)" + capturePercent() + R"(\s+)" + capturePercent() +
                 R"(\s*/?\s*(?:)" + capturePercent() + R"()?\s*\))"};
    RE2 cssOKLCH{R"(oklch\(\s*)" + capturePercent() + R"(\s+)" + capturePercent() + R"(\s+)" + capturePercent() +
                 R"(\s*/?\s*(?:)" + capturePercent() + R"()?\s*\))"};
    RE2 nsRGBA{R"(NSColor\((?:red:|displayP3Red:))" + swiftArguments({"red:", "green:", "blue:", "alpha:"})};
    RE2 uiRGBA{R"(UIColor\((?:red:|displayP3Red:))" + swiftArguments({"red:", "green:", "blue:", "alpha:"})};
    RE2 colorRGBA{R"(Color\((?:red:|\.extendedSRGB, red:|\.displayP3, red:))" +
                  swiftArguments({"red:", "green:", "blue:", "opacity:"})};
    RE2 nsHSBA{R"(NSColor\((?:hue:|colorSpace: \.extendedSRGB, hue:|colorSpace: \.displayP3, hue:))" +
               swiftArguments({"hue:", "saturation:", "brightness:", "alpha:"})};
    RE2 uiHSBA{R"(UIColor\(hue:)" + swiftArguments({"hue:", "saturation:", "brightness:", "alpha:"})};
    RE2 colorHSBA{R"(Color\(hue:)" + swiftArguments({"hue:", "saturation:", "brightness:", "opacity:"})};
};

const Patterns& patterns() {
    static const Patterns instance;
    return instance;
}

// The groups of the first match (or of a whole-text match); an unmatched
// optional group is absent.
using Groups = std::vector<std::optional<std::string_view>>;

std::optional<Groups> match(const RE2& re, std::string_view text, bool whole = false) {
    const int count = re.NumberOfCapturingGroups() + 1;
    std::vector<re2::StringPiece> pieces(static_cast<std::size_t>(count));
    const re2::StringPiece input(text.data(), text.size());
    if (!re.Match(input, 0, input.size(), whole ? RE2::ANCHOR_BOTH : RE2::UNANCHORED, pieces.data(), count)) {
        return std::nullopt;
    }
    Groups groups;
    for (std::size_t i = 1; i < pieces.size(); ++i) {
        if (pieces[i].data() == nullptr) {
            groups.emplace_back(std::nullopt);
        } else {
            groups.emplace_back(std::string_view(pieces[i].data(), pieces[i].size()));
        }
    }
    return groups;
}

// A matched number; a run of digits too large for a double reads as infinity,
// one too small as zero. Absent text gives `fallback`.
double readNumber(const std::optional<std::string_view>& text, double fallback = 0.0) {
    if (!text || text->empty()) {
        return fallback;
    }
    double value = 0.0;
    const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), value);
    if (error == std::errc::result_out_of_range) {
        const bool negative = text->front() == '-';
        const std::size_t firstDigit = text->find_first_not_of("-0.");
        const std::size_t point = text->find('.');
        const bool large = firstDigit != std::string_view::npos && (point == std::string_view::npos || firstDigit < point);
        return large ? (negative ? -HUGE_VAL : HUGE_VAL) : (negative ? -0.0 : 0.0);
    }
    if (error != std::errc()) {
        return fallback;
    }
    return value;
}

double hexValue(std::string_view digits) {
    unsigned value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    return static_cast<double>(value);
}

// Alpha after a slash: absent is opaque, above 1 is a percentage.
double readCSSAlpha(const std::optional<std::string_view>& text) {
    const double alpha = readNumber(text, 1.0);
    return alpha > 1.0 ? alpha / 100.0 : alpha;
}

// A number that may carry "%", which maps 0..100 onto lo..hi.
double readPercent(const std::optional<std::string_view>& number, const std::optional<std::string_view>& percent,
                   double lo, double hi, double fallback = 0.0) {
    const double value = readNumber(number, fallback);
    if (number && percent && *percent == "%") {
        return lo + (hi - lo) * value / 100.0;
    }
    return value;
}

double clampUnit(double value) {
    return clampToSpace(value, ColorSpace::sRGB);
}

// RGB forms clamp to the space and come out in Display P3 or sRGB.
ColorValue makeRGB(double red, double green, double blue, double alpha, ColorSpace space) {
    const ColorEncoding encoding = space == ColorSpace::displayP3 ? ColorEncoding::displayP3 : ColorEncoding::sRGB;
    return ColorValue(encoding, clampToSpace(red, space), clampToSpace(green, space), clampToSpace(blue, space),
                      clampToSpace(alpha, space));
}

// HSB forms clamp each value to 0..1 and build in the space's encoding.
ColorValue makeHSB(double hue, double saturation, double brightness, double alpha, ColorSpace space) {
    return ColorValue::fromHSB(encodingForSpace(space), clampUnit(hue), clampUnit(saturation), clampUnit(brightness),
                               clampUnit(alpha));
}

// OKLAB and OKLCH text is linear light until placed in the space's encoding.
std::optional<ColorValue> makeFromLinear(const RawRGBValues& linear, ColorSpace space) {
    const ColorValue value(ColorEncoding::extendedLinearSRGB, linear.red, linear.green, linear.blue,
                           clampUnit(linear.alpha));
    return value.converted(encodingForSpace(space));
}

std::optional<ColorValue> readFourNumbers(std::string_view text, ColorSpace space, bool hsb) {
    const auto groups = match(patterns().floats, text);
    if (!groups) {
        return std::nullopt;
    }
    const Groups& g = *groups;
    const double alpha = readNumber(g[3], 1.0);
    if (hsb) {
        return makeHSB(readNumber(g[0]), readNumber(g[1]), readNumber(g[2]), alpha, space);
    }
    return makeRGB(readNumber(g[0]), readNumber(g[1]), readNumber(g[2]), alpha, space);
}

std::optional<ColorValue> readHTML(std::string_view text, ColorSpace space) {
    std::string stripped;
    for (char c : text) {
        if (c != '#') {
            stripped += c;
        }
    }
    const Patterns& p = patterns();
    if (const auto g = match(p.htmlSix, stripped, true)) {
        return makeRGB(hexValue(*(*g)[0]) / 255.0, hexValue(*(*g)[1]) / 255.0, hexValue(*(*g)[2]) / 255.0, 1.0, space);
    }
    if (const auto g = match(p.htmlThree, stripped, true)) {
        auto doubled = [](std::string_view digit) { return hexValue(std::string(2, digit[0])) / 255.0; };
        return makeRGB(doubled(*(*g)[0]), doubled(*(*g)[1]), doubled(*(*g)[2]), 1.0, space);
    }
    if (const auto g = match(p.htmlOne, stripped, true)) {
        const double grey = hexValue(*(*g)[0]) / 15.0;
        return makeRGB(grey, grey, grey, 1.0, space);
    }
    return std::nullopt;
}

std::optional<ColorValue> readHex(std::string_view text, ColorSpace space, ColorFormat format) {
    const Patterns& p = patterns();
    const auto groups = match(format == ColorFormat::hexRGB ? p.hexThree : p.hexFour, text);
    if (!groups) {
        return std::nullopt;
    }
    std::array<double, 4> bytes = {255.0, 255.0, 255.0, 255.0};
    for (std::size_t i = 0; i < groups->size(); ++i) {
        bytes[i] = hexValue(*(*groups)[i]);
    }
    if (format == ColorFormat::hexARGB) {
        return makeRGB(bytes[1] / 255.0, bytes[2] / 255.0, bytes[3] / 255.0, bytes[0] / 255.0, space);
    }
    return makeRGB(bytes[0] / 255.0, bytes[1] / 255.0, bytes[2] / 255.0, bytes[3] / 255.0, space);
}

std::optional<ColorValue> readSwift(const RE2& re, std::string_view text, ColorSpace space, bool hsb) {
    const auto groups = match(re, text);
    if (!groups) {
        return std::nullopt;
    }
    const Groups& g = *groups;
    const double alpha = readNumber(g[3], 1.0);
    if (hsb) {
        return makeHSB(readNumber(g[0]), readNumber(g[1]), readNumber(g[2]), alpha, space);
    }
    return makeRGB(readNumber(g[0]), readNumber(g[1]), readNumber(g[2]), alpha, space);
}

std::optional<ColorValue> readCSSRGB(std::string_view text, ColorSpace space) {
    const auto groups = match(patterns().cssRGB, text);
    if (!groups) {
        return std::nullopt;
    }
    const Groups& g = *groups;
    return makeRGB(readNumber(g[0]) / 255.0, readNumber(g[1]) / 255.0, readNumber(g[2]) / 255.0,
                   readCSSAlpha(g[3]), space);
}

std::optional<ColorValue> readCSSColor(std::string_view text, ColorSpace space) {
    const Patterns& p = patterns();
    const auto groups = match(space == ColorSpace::displayP3 ? p.cssColorP3 : p.cssColorSRGB, text);
    if (!groups) {
        return std::nullopt;
    }
    const Groups& g = *groups;
    return makeRGB(readNumber(g[0]), readNumber(g[1]), readNumber(g[2]), readCSSAlpha(g[3]), space);
}

std::optional<ColorValue> readCSSHSL(std::string_view text, ColorSpace space) {
    const auto groups = match(patterns().cssHSL, text);
    if (!groups) {
        return std::nullopt;
    }
    const Groups& g = *groups;
    return makeHSB(readNumber(g[0]) / 360.0, readNumber(g[1]) / 100.0, readNumber(g[2]) / 100.0, readCSSAlpha(g[3]),
                   space);
}

std::optional<ColorValue> readOKLab(std::string_view text, ColorSpace space, bool polar) {
    const Patterns& p = patterns();
    const auto groups = match(polar ? p.cssOKLCH : p.cssOKLAB, text);
    if (!groups) {
        return std::nullopt;
    }
    const Groups& g = *groups;
    const double lightness = readPercent(g[0], g[1], 0.0, 1.0);
    const double second = readPercent(g[2], g[3], -0.4, 0.4);
    const double alpha = readPercent(g[6], g[7], 0.0, 1.0, 1.0);
    if (polar) {
        const double hue = readPercent(g[4], g[5], 0.0, 360.0) * std::numbers::pi / 180.0;
        return makeFromLinear(fromOKLCH(lightness, second, hue, alpha), space);
    }
    return makeFromLinear(fromOKLAB(lightness, second, readPercent(g[4], g[5], -0.4, 0.4), alpha), space);
}

bool containsP3(std::string_view text) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if ((text[i] == 'p' || text[i] == 'P') && text[i + 1] == '3') {
            return true;
        }
    }
    return false;
}

// The order in which unnamed formats are tried; the CSS color(), oklab() and
// oklch() forms are read only when asked for by name.
constexpr std::array<ColorFormat, 14> fallbackOrder = {
    ColorFormat::swiftNSColorRGBA, ColorFormat::swiftNSColorHSBA, ColorFormat::swiftUIColorRGBA,
    ColorFormat::swiftUIColorHSBA, ColorFormat::swiftColorRGBA,   ColorFormat::swiftColorHSBA,
    ColorFormat::cssRGB,           ColorFormat::cssHSL,           ColorFormat::hexRGBA,
    ColorFormat::hexARGB,          ColorFormat::hexRGB,           ColorFormat::htmlRGB,
    ColorFormat::floatRGBA,        ColorFormat::floatHSVA};

} // namespace

std::string_view displayName(ColorFormat format) {
    switch (format) {
    case ColorFormat::floatRGBA:
        return "Float RGBA";
    case ColorFormat::floatHSVA:
        return "Float HSBA";
    case ColorFormat::htmlRGB:
        return "CSS Hex";
    case ColorFormat::cssRGB:
        return "CSS rgb()";
    case ColorFormat::cssColor:
        return "CSS color()";
    case ColorFormat::cssHSL:
        return "CSS hsl()";
    case ColorFormat::cssOKLAB:
        return "CSS oklab()";
    case ColorFormat::cssOKLCH:
        return "CSS oklch()";
    case ColorFormat::hexRGB:
        return "Hex RGB";
    case ColorFormat::hexARGB:
        return "Hex ARGB";
    case ColorFormat::hexRGBA:
        return "Hex RGBA";
    case ColorFormat::swiftUIColorRGBA:
        return "Swift UIColor RGBA";
    case ColorFormat::swiftUIColorHSBA:
        return "Swift UIColor HSBA";
    case ColorFormat::swiftNSColorRGBA:
        return "Swift NSColor RGBA";
    case ColorFormat::swiftNSColorHSBA:
        return "Swift NSColor HSBA";
    case ColorFormat::swiftColorRGBA:
        return "SwiftUI Color RGBA";
    case ColorFormat::swiftColorHSBA:
        return "SwiftUI Color HSBA";
    }
    return "";
}

ColorConverterResult colorString(const ColorValue& color, ColorFormat format, ColorSpace colorSpace,
                                 const ColorConverterOptions& options) {
    return Writer{color, colorSpace, options}.write(format);
}

namespace {

std::optional<ColorValue> readFormat(std::string_view text, ColorSpace colorSpace, ColorFormat format) {
    const Patterns& p = patterns();
    switch (format) {
    case ColorFormat::floatRGBA:
        return readFourNumbers(text, colorSpace, false);
    case ColorFormat::floatHSVA:
        return readFourNumbers(text, colorSpace, true);
    case ColorFormat::htmlRGB:
        return readHTML(text, colorSpace);
    case ColorFormat::cssRGB:
        return readCSSRGB(text, colorSpace);
    case ColorFormat::cssColor:
        return readCSSColor(text, colorSpace);
    case ColorFormat::cssHSL:
        return readCSSHSL(text, colorSpace);
    case ColorFormat::cssOKLAB:
        return readOKLab(text, colorSpace, false);
    case ColorFormat::cssOKLCH:
        return readOKLab(text, colorSpace, true);
    case ColorFormat::hexRGB:
    case ColorFormat::hexARGB:
    case ColorFormat::hexRGBA:
        return readHex(text, colorSpace, format);
    case ColorFormat::swiftUIColorRGBA:
        return readSwift(p.uiRGBA, text, colorSpace, false);
    case ColorFormat::swiftUIColorHSBA:
        return readSwift(p.uiHSBA, text, colorSpace, true);
    case ColorFormat::swiftNSColorRGBA:
        return readSwift(p.nsRGBA, text, colorSpace, false);
    case ColorFormat::swiftNSColorHSBA:
        return readSwift(p.nsHSBA, text, colorSpace, true);
    case ColorFormat::swiftColorRGBA:
        return readSwift(p.colorRGBA, text, colorSpace, false);
    case ColorFormat::swiftColorHSBA:
        return readSwift(p.colorHSBA, text, colorSpace, true);
    }
    return std::nullopt;
}

} // namespace

// Numbers too large for a double can leave a perceptual colour without finite
// components; such text reads as no colour rather than as one nothing can print.
std::optional<ColorValue> parseFormat(std::string_view text, ColorSpace colorSpace, ColorFormat format) {
    std::optional<ColorValue> color = readFormat(text, colorSpace, format);
    if (color) {
        for (double component : color->rgbaComponents()) {
            if (!std::isfinite(component)) {
                return std::nullopt;
            }
        }
    }
    return color;
}

ConvertedColor parseColor(std::string_view text, ColorFormat format, ColorSpace colorSpace, bool detectP3) {
    if (detectP3) {
        if (containsP3(text)) {
            colorSpace = ColorSpace::displayP3;
        } else if (colorSpace == ColorSpace::displayP3) {
            colorSpace = ColorSpace::sRGB;
        }
    }
    ConvertedColor result;
    result.detectedColorSpace = colorSpace;
    if (auto color = parseFormat(text, colorSpace, format)) {
        result.color = color;
        result.detectedFormat = format;
        return result;
    }
    for (ColorFormat candidate : fallbackOrder) {
        if (candidate == format) {
            continue;
        }
        if (auto color = parseFormat(text, colorSpace, candidate)) {
            result.color = color;
            result.detectedFormat = candidate;
            return result;
        }
    }
    return result;
}

} // namespace tintwork
