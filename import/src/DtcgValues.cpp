#include "DtcgValues.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

#include "colour/ColorConverter.h"
#include "colour/ColorModels.h"

namespace tintwork::dtcg {

void Issues::fail(std::string message) {
    if (!first_) {
        first_ = message;
    }
    if (!failure_) {
        failure_ = std::move(message);
    }
}

void Issues::nonconforming(std::string message) {
    if (!first_) {
        first_ = std::move(message);
    }
}

namespace {

struct TypeName {
    TokenType type;
    std::string_view name;
};

constexpr TypeName typeNames[] = {
    {TokenType::color, "color"},          {TokenType::dimension, "dimension"},
    {TokenType::number, "number"},        {TokenType::fontWeight, "fontWeight"},
    {TokenType::duration, "duration"},    {TokenType::fontFamily, "fontFamily"},
    {TokenType::shadow, "shadow"},        {TokenType::cubicBezier, "cubicBezier"},
    {TokenType::strokeStyle, "strokeStyle"}, {TokenType::border, "border"},
    {TokenType::transition, "transition"}, {TokenType::gradient, "gradient"},
    {TokenType::typography, "typography"},
};

std::string quoted(std::string_view text) {
    std::string result = "\"";
    // Long or odd texts are cut so that one message stays one short line.
    for (std::size_t i = 0; i < text.size() && i < 60; ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        result += (c < 0x20 || c == 0x7F) ? '?' : static_cast<char>(c);
    }
    if (text.size() > 60) {
        result += "...";
    }
    return result + "\"";
}

std::string number(double value) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.10g", value);
    return buffer;
}

// "1.5rem" into 1.5 and "rem"; nullopt when the text does not start with a number.
std::optional<std::pair<double, std::string>> splitNumberAndUnit(std::string_view text) {
    while (!text.empty() && text.front() == ' ') {
        text.remove_prefix(1);
    }
    while (!text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    double value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return std::pair{value, std::string(end, text.data() + text.size())};
}

const JsonValue* requireMember(const JsonValue& object, std::string_view key, const std::string& where,
                               Issues& issues) {
    const JsonValue* found = object.find(key);
    if (found == nullptr) {
        issues.fail(where + ": missing " + std::string(key));
    }
    return found;
}

// The unit of a {value, unit} object, checked against the allowed ones.
std::optional<double> readValueAndUnit(const JsonValue& value, const std::string& where, Issues& issues,
                                       std::initializer_list<std::string_view> units, bool seconds) {
    const JsonValue* amount = requireMember(value, "value", where, issues);
    const JsonValue* unit = requireMember(value, "unit", where, issues);
    if (amount == nullptr || unit == nullptr) {
        return std::nullopt;
    }
    if (!amount->isNumber()) {
        issues.fail(where + ".value: expected a number, found " + std::string(amount->kindName()));
        return std::nullopt;
    }
    if (!unit->isString()) {
        issues.fail(where + ".unit: expected a string, found " + std::string(unit->kindName()));
        return std::nullopt;
    }
    if (std::find(units.begin(), units.end(), unit->text) == units.end()) {
        std::string allowed;
        for (std::string_view name : units) {
            allowed += (allowed.empty() ? "\"" : " or \"") + std::string(name) + "\"";
        }
        issues.nonconforming(where + ".unit: unknown unit " + quoted(unit->text) + ", expected " + allowed);
    }
    return seconds && unit->text == "s" ? amount->number * 1000.0 : amount->number;
}

double componentOrNone(const JsonValue& component) {
    return component.isNumber() ? component.number : 0.0;
}

struct Range {
    double low;
    double high;
    bool highExcluded = false;
};

constexpr double unbounded = std::numeric_limits<double>::infinity();

// The ranges of the components by colour space; hues are [0, 360).
std::array<Range, 3> componentRanges(ColorModel model) {
    constexpr Range unit{0, 1};
    constexpr Range hue{0, 360, true};
    constexpr Range percent{0, 100};
    constexpr Range any{-unbounded, unbounded};
    switch (model) {
        case ColorModel::hsl:
        case ColorModel::hwb: return {hue, percent, percent};
        case ColorModel::lab: return {percent, any, any};
        case ColorModel::lch: return {percent, Range{0, unbounded}, hue};
        case ColorModel::oklab: return {unit, any, any};
        case ColorModel::oklch: return {unit, Range{0, unbounded}, hue};
        default: return {unit, unit, unit};
    }
}

bool isHexDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// "#rrggbb" and, leniently, "#rgb", "#rrggbbaa".
std::optional<ColorValue> parseHex(std::string_view text) {
    if (text.empty() || text.front() != '#' ||
        !std::all_of(text.begin() + 1, text.end(), isHexDigit)) {
        return std::nullopt;
    }
    std::string digits(text.substr(1));
    if (digits.size() == 3 || digits.size() == 4) {
        std::string doubled;
        for (char c : digits) {
            doubled += {c, c};
        }
        digits = doubled;
    }
    if (digits.size() != 6 && digits.size() != 8) {
        return std::nullopt;
    }
    auto byte = [&](std::size_t index) {
        return std::stoi(digits.substr(index * 2, 2), nullptr, 16) / 255.0;
    };
    return ColorValue(ColorEncoding::sRGB, byte(0), byte(1), byte(2), digits.size() == 8 ? byte(3) : 1.0);
}

bool insideUnitRange(const std::array<double, 3>& values) {
    return std::all_of(values.begin(), values.end(), [](double v) { return v >= 0.0 && v <= 1.0; });
}

TokenColor colorFromModel(ColorModel model, const std::array<double, 3>& c, double alpha) {
    switch (model) {
        case ColorModel::srgb:
            return {ColorValue(insideUnitRange(c) ? ColorEncoding::sRGB : ColorEncoding::sRGBExtended, c[0], c[1],
                               c[2], alpha),
                    insideUnitRange(c) ? ColorSpace::sRGB : ColorSpace::sRGBExtended};
        case ColorModel::displayP3:
            return {ColorValue(ColorEncoding::displayP3, c[0], c[1], c[2], alpha), ColorSpace::displayP3};
        case ColorModel::oklab:
        case ColorModel::oklch: {
            // Held as the document holds its own OKLAB and OKLCH colours: a Display P3 working colour.
            const std::array<double, 3> linear = linearSRGBFromModel(model, c);
            const ColorValue working(ColorEncoding::extendedLinearSRGB, linear[0], linear[1], linear[2], alpha);
            return {working.converted(ColorEncoding::displayP3).value_or(working),
                    model == ColorModel::oklab ? ColorSpace::oklab : ColorSpace::oklch};
        }
        default: {
            const std::array<double, 3> linear = linearSRGBFromModel(model, c);
            const std::array<double, 3> encoded = {srgbEncode(linear[0]), srgbEncode(linear[1]),
                                                   srgbEncode(linear[2])};
            // HSL, HWB and linear sRGB are sRGB itself; the others went through XYZ.
            const bool sameSpace = model == ColorModel::hsl || model == ColorModel::hwb ||
                                   model == ColorModel::srgbLinear;
            if (sameSpace && insideUnitRange(encoded)) {
                return {ColorValue(ColorEncoding::sRGB, encoded[0], encoded[1], encoded[2], alpha), ColorSpace::sRGB};
            }
            return {ColorValue(ColorEncoding::sRGBExtended, encoded[0], encoded[1], encoded[2], alpha),
                    ColorSpace::sRGBExtended};
        }
    }
}

std::optional<TokenColor> readColorText(const std::string& text, const std::string& where, Issues& issues) {
    issues.nonconforming(where + ": a colour must be an object with colorSpace and components, found the text " +
                         quoted(text));
    if (std::optional<ColorValue> hex = parseHex(text)) {
        return TokenColor{*hex, ColorSpace::sRGB};
    }
    ConvertedColor parsed = parseColor(text, ColorFormat::cssColor, ColorSpace::sRGB, true);
    if (!parsed.color) {
        issues.fail(where + ": unreadable colour text " + quoted(text));
        return std::nullopt;
    }
    ColorSpace space = parsed.detectedColorSpace.value_or(ColorSpace::sRGB);
    if (isRGBSpace(space)) {
        space = parsed.color->encoding() == ColorEncoding::displayP3 ? ColorSpace::displayP3 : space;
    }
    if (space == ColorSpace::sRGB && parsed.color->encoding() != ColorEncoding::sRGB) {
        space = ColorSpace::sRGBExtended;
    }
    return TokenColor{*parsed.color, space};
}

}  // namespace

std::optional<TokenType> tokenTypeNamed(std::string_view word) {
    for (const TypeName& entry : typeNames) {
        if (entry.name == word) {
            return entry.type;
        }
    }
    return std::nullopt;
}

std::optional<TokenType> legacyTokenTypeNamed(std::string_view word) {
    if (word == "font" || word == "font-family") {
        return TokenType::fontFamily;
    }
    if (word == "font-weight") {
        return TokenType::fontWeight;
    }
    if (word == "cubic-bezier") {
        return TokenType::cubicBezier;
    }
    return std::nullopt;
}

std::string_view tokenTypeName(TokenType type) {
    for (const TypeName& entry : typeNames) {
        if (entry.type == type) {
            return entry.name;
        }
    }
    return "";
}

bool isImportedType(TokenType type) {
    switch (type) {
        case TokenType::color:
        case TokenType::dimension:
        case TokenType::number:
        case TokenType::fontWeight:
        case TokenType::duration:
        case TokenType::fontFamily:
        case TokenType::shadow: return true;
        default: return false;
    }
}

std::optional<TokenColor> readColor(const JsonValue& value, const std::string& where, Issues& issues) {
    if (value.isString()) {
        return readColorText(value.text, where, issues);
    }
    if (!value.isObject()) {
        issues.fail(where + ": expected a colour object, found " + std::string(value.kindName()));
        return std::nullopt;
    }
    double alpha = 1.0;
    if (const JsonValue* alphaValue = value.find("alpha")) {
        if (!alphaValue->isNumber()) {
            issues.fail(where + ".alpha: expected a number, found " + std::string(alphaValue->kindName()));
            return std::nullopt;
        }
        alpha = alphaValue->number;
        if (alpha < 0.0 || alpha > 1.0) {
            issues.nonconforming(where + ".alpha: " + number(alpha) + " is outside 0 to 1");
        }
    }
    std::optional<ColorValue> hexColor;
    if (const JsonValue* hex = value.find("hex")) {
        if (!hex->isString()) {
            issues.nonconforming(where + ".hex: expected a string, found " + std::string(hex->kindName()));
        } else {
            const bool sixDigits = hex->text.size() == 7 && parseHex(hex->text).has_value();
            if (!sixDigits) {
                issues.nonconforming(where + ".hex: " + quoted(hex->text) + " is not a 6-digit hex colour");
            }
            hexColor = parseHex(hex->text);
        }
    }
    // The hex fallback stands in when the components cannot be read.
    auto fallBack = [&](std::string reason) -> std::optional<TokenColor> {
        if (hexColor) {
            issues.nonconforming(std::move(reason));
            ColorValue color = *hexColor;
            return TokenColor{ColorValue(ColorEncoding::sRGB, color.red(), color.green(), color.blue(), alpha),
                              ColorSpace::sRGB};
        }
        issues.fail(std::move(reason));
        return std::nullopt;
    };
    const JsonValue* spaceName = value.find("colorSpace");
    if (spaceName == nullptr) {
        return fallBack(where + ": missing colorSpace");
    }
    if (!spaceName->isString()) {
        return fallBack(where + ".colorSpace: expected a string, found " + std::string(spaceName->kindName()));
    }
    std::optional<ColorModel> model = colorModelNamed(spaceName->text);
    if (!model) {
        return fallBack(where + ": unknown colorSpace " + quoted(spaceName->text));
    }
    const JsonValue* components = value.find("components");
    if (components == nullptr) {
        return fallBack(where + ": missing components");
    }
    if (!components->isArray() || components->members.size() != 3) {
        return fallBack(where + ".components: expected 3 components for " + spaceName->text + ", found " +
                        (components->isArray() ? std::to_string(components->members.size()) + " values"
                                               : std::string(components->kindName())));
    }
    std::array<double, 3> numbers{};
    const std::array<Range, 3> ranges = componentRanges(*model);
    for (std::size_t i = 0; i < 3; ++i) {
        const JsonValue& component = components->members[i].value;
        const std::string place = where + ".components[" + std::to_string(i) + "]";
        if (component.isString() && component.text == "none") {
            numbers[i] = 0.0;
            continue;
        }
        if (!component.isNumber()) {
            return fallBack(place + ": expected a number or \"none\", found " + std::string(component.kindName()));
        }
        numbers[i] = componentOrNone(component);
        const Range& range = ranges[i];
        if (numbers[i] < range.low || numbers[i] > range.high || (range.highExcluded && numbers[i] >= range.high)) {
            issues.nonconforming(place + ": " + number(numbers[i]) + " is outside " + number(range.low) + " to " +
                                 (range.high == unbounded ? std::string("infinity") : number(range.high)) +
                                 (range.highExcluded ? " (exclusive)" : "") + " for " + spaceName->text);
        }
    }
    return colorFromModel(*model, numbers, alpha);
}

std::optional<double> readDimension(const JsonValue& value, const std::string& where, Issues& issues) {
    if (value.isObject()) {
        return readValueAndUnit(value, where, issues, {"px", "rem"}, false);
    }
    if (value.isNumber()) {
        issues.nonconforming(where + ": a dimension must be an object with value and unit, found a number");
        return value.number;
    }
    if (value.isString()) {
        issues.nonconforming(where + ": a dimension must be an object with value and unit, found the text " +
                             quoted(value.text));
        if (auto split = splitNumberAndUnit(value.text)) {
            return split->first;
        }
        issues.fail(where + ": unreadable dimension " + quoted(value.text));
        return std::nullopt;
    }
    issues.fail(where + ": expected a dimension object, found " + std::string(value.kindName()));
    return std::nullopt;
}

std::optional<double> readNumber(const JsonValue& value, const std::string& where, Issues& issues) {
    if (value.isNumber()) {
        return value.number;
    }
    if (value.isString()) {
        if (auto split = splitNumberAndUnit(value.text); split && split->second.empty()) {
            issues.nonconforming(where + ": expected a number, found the text " + quoted(value.text));
            return split->first;
        }
    }
    issues.fail(where + ": expected a number, found " + std::string(value.kindName()));
    return std::nullopt;
}

std::optional<double> readFontWeight(const JsonValue& value, const std::string& where, Issues& issues) {
    static constexpr std::pair<std::string_view, double> keywords[] = {
        {"thin", 100},        {"hairline", 100},    {"extra-light", 200}, {"ultra-light", 200},
        {"light", 300},       {"normal", 400},      {"regular", 400},     {"book", 400},
        {"medium", 500},      {"semi-bold", 600},   {"demi-bold", 600},   {"bold", 700},
        {"extra-bold", 800},  {"ultra-bold", 800},  {"black", 900},       {"heavy", 900},
        {"extra-black", 950}, {"ultra-black", 950},
    };
    if (value.isNumber()) {
        if (value.number < 1 || value.number > 1000) {
            issues.nonconforming(where + ": font weight " + number(value.number) + " is outside 1 to 1000");
        }
        return value.number;
    }
    if (value.isString()) {
        for (const auto& [word, weight] : keywords) {
            if (word == value.text) {
                return weight;
            }
        }
        if (auto split = splitNumberAndUnit(value.text); split && split->second.empty()) {
            issues.nonconforming(where + ": expected a number or a weight keyword, found the text " +
                                 quoted(value.text));
            return split->first;
        }
        issues.fail(where + ": unknown font weight " + quoted(value.text));
        return std::nullopt;
    }
    issues.fail(where + ": expected a number or a weight keyword, found " + std::string(value.kindName()));
    return std::nullopt;
}

std::optional<double> readDuration(const JsonValue& value, const std::string& where, Issues& issues) {
    if (value.isObject()) {
        return readValueAndUnit(value, where, issues, {"ms", "s"}, true);
    }
    if (value.isString()) {
        issues.nonconforming(where + ": a duration must be an object with value and unit, found the text " +
                             quoted(value.text));
        if (auto split = splitNumberAndUnit(value.text); split && (split->second == "ms" || split->second == "s" ||
                                                                   split->second.empty())) {
            return split->second == "s" ? split->first * 1000.0 : split->first;
        }
        issues.fail(where + ": unreadable duration " + quoted(value.text));
        return std::nullopt;
    }
    if (value.isNumber()) {
        issues.nonconforming(where + ": a duration must be an object with value and unit, found a number");
        return value.number;
    }
    issues.fail(where + ": expected a duration object, found " + std::string(value.kindName()));
    return std::nullopt;
}

std::optional<std::string> readFontFamily(const JsonValue& value, const std::string& where, Issues& issues) {
    if (value.isString()) {
        return value.text;
    }
    if (value.isArray()) {
        std::string joined;
        for (std::size_t i = 0; i < value.members.size(); ++i) {
            const JsonValue& name = value.members[i].value;
            if (!name.isString()) {
                issues.fail(where + "[" + std::to_string(i) + "]: expected a font name, found " +
                            std::string(name.kindName()));
                return std::nullopt;
            }
            joined += (joined.empty() ? "" : ", ") + name.text;
        }
        if (value.members.empty()) {
            issues.fail(where + ": an empty list of font families");
            return std::nullopt;
        }
        return joined;
    }
    issues.fail(where + ": expected a font name or a list of them, found " + std::string(value.kindName()));
    return std::nullopt;
}

namespace {

std::optional<ShadowDetails> readShadowLayer(const JsonValue& layer, const std::string& where, Issues& issues) {
    if (!layer.isObject()) {
        issues.fail(where + ": expected a shadow object, found " + std::string(layer.kindName()));
        return std::nullopt;
    }
    ShadowDetails shadow;
    const JsonValue* color = requireMember(layer, "color", where, issues);
    if (color == nullptr) {
        return std::nullopt;
    }
    std::optional<TokenColor> read = readColor(*color, where + ".color", issues);
    if (!read) {
        return std::nullopt;
    }
    shadow.color = read->color;
    struct Length {
        const char* key;
        double ShadowDetails::*field;
    };
    for (const Length& length : {Length{"offsetX", &ShadowDetails::xOffset}, Length{"offsetY", &ShadowDetails::yOffset},
                                 Length{"blur", &ShadowDetails::blur}, Length{"spread", &ShadowDetails::spread}}) {
        const JsonValue* member = layer.find(length.key);
        if (member == nullptr) {
            issues.nonconforming(where + ": missing " + length.key);
            shadow.*length.field = 0.0;
            continue;
        }
        std::optional<double> amount = readDimension(*member, where + "." + length.key, issues);
        if (!amount) {
            return std::nullopt;
        }
        shadow.*length.field = *amount;
    }
    if (const JsonValue* inset = layer.find("inset"); inset != nullptr && !inset->isBoolean()) {
        issues.nonconforming(where + ".inset: expected a boolean, found " + std::string(inset->kindName()));
    }
    return shadow;
}

}  // namespace

std::optional<ShadowDetails> readShadow(const JsonValue& value, const std::string& where, Issues& issues) {
    if (value.isArray()) {
        if (value.members.empty()) {
            issues.fail(where + ": an empty list of shadows");
            return std::nullopt;
        }
        std::optional<ShadowDetails> first;
        for (std::size_t i = 0; i < value.members.size(); ++i) {
            std::optional<ShadowDetails> layer =
                readShadowLayer(value.members[i].value, where + "[" + std::to_string(i) + "]", issues);
            if (i == 0) {
                first = layer;
            }
        }
        return first;
    }
    return readShadowLayer(value, where, issues);
}

namespace {

void checkCubicBezier(const JsonValue& value, const std::string& where, Issues& issues) {
    if (!value.isArray() || value.members.size() != 4 ||
        !std::all_of(value.members.begin(), value.members.end(),
                     [](const JsonMember& member) { return member.value.isNumber(); })) {
        issues.fail(where + ": expected an array of 4 numbers");
        return;
    }
    for (std::size_t i : {std::size_t{0}, std::size_t{2}}) {
        const double x = value.members[i].value.number;
        if (x < 0.0 || x > 1.0) {
            issues.nonconforming(where + "[" + std::to_string(i) + "]: " + number(x) + " is outside 0 to 1");
        }
    }
}

void checkStrokeStyle(const JsonValue& value, const std::string& where, Issues& issues) {
    static constexpr std::string_view keywords[] = {"solid", "dashed", "dotted", "double",
                                                    "groove", "ridge",  "outset", "inset"};
    if (value.isString()) {
        if (std::find(std::begin(keywords), std::end(keywords), value.text) == std::end(keywords)) {
            issues.fail(where + ": unknown stroke style " + quoted(value.text));
        }
        return;
    }
    if (!value.isObject()) {
        issues.fail(where + ": expected a stroke style keyword or object, found " + std::string(value.kindName()));
        return;
    }
    const JsonValue* dashArray = requireMember(value, "dashArray", where, issues);
    const JsonValue* lineCap = requireMember(value, "lineCap", where, issues);
    if (dashArray != nullptr) {
        if (!dashArray->isArray() || dashArray->members.empty()) {
            issues.fail(where + ".dashArray: expected a non-empty array of dimensions");
        } else {
            for (std::size_t i = 0; i < dashArray->members.size(); ++i) {
                readDimension(dashArray->members[i].value, where + ".dashArray[" + std::to_string(i) + "]", issues);
            }
        }
    }
    if (lineCap != nullptr &&
        (!lineCap->isString() || (lineCap->text != "round" && lineCap->text != "butt" && lineCap->text != "square"))) {
        issues.fail(where + ".lineCap: expected \"round\", \"butt\" or \"square\"");
    }
}

}  // namespace

void checkSkippedValue(TokenType type, const JsonValue& value, const std::string& where, Issues& issues) {
    auto member = [&](std::string_view key) { return requireMember(value, key, where, issues); };
    auto objectExpected = [&]() {
        if (!value.isObject()) {
            issues.fail(where + ": expected " + std::string(tokenTypeName(type)) + " object, found " +
                        std::string(value.kindName()));
            return false;
        }
        return true;
    };
    switch (type) {
        case TokenType::cubicBezier: checkCubicBezier(value, where, issues); return;
        case TokenType::strokeStyle: checkStrokeStyle(value, where, issues); return;
        case TokenType::border:
            if (objectExpected()) {
                if (const JsonValue* color = member("color")) {
                    readColor(*color, where + ".color", issues);
                }
                if (const JsonValue* width = member("width")) {
                    readDimension(*width, where + ".width", issues);
                }
                if (const JsonValue* style = member("style")) {
                    checkStrokeStyle(*style, where + ".style", issues);
                }
            }
            return;
        case TokenType::transition:
            if (objectExpected()) {
                if (const JsonValue* duration = member("duration")) {
                    readDuration(*duration, where + ".duration", issues);
                }
                if (const JsonValue* delay = member("delay")) {
                    readDuration(*delay, where + ".delay", issues);
                }
                if (const JsonValue* timing = member("timingFunction")) {
                    checkCubicBezier(*timing, where + ".timingFunction", issues);
                }
            }
            return;
        case TokenType::gradient:
            if (!value.isArray() || value.members.empty()) {
                issues.fail(where + ": expected a non-empty array of gradient stops");
                return;
            }
            for (std::size_t i = 0; i < value.members.size(); ++i) {
                const JsonValue& stop = value.members[i].value;
                const std::string place = where + "[" + std::to_string(i) + "]";
                if (!stop.isObject()) {
                    issues.fail(place + ": expected a gradient stop object, found " + std::string(stop.kindName()));
                    continue;
                }
                if (const JsonValue* color = requireMember(stop, "color", place, issues)) {
                    readColor(*color, place + ".color", issues);
                }
                if (const JsonValue* position = requireMember(stop, "position", place, issues)) {
                    if (std::optional<double> at = readNumber(*position, place + ".position", issues);
                        at && (*at < 0.0 || *at > 1.0)) {
                        issues.nonconforming(place + ".position: " + number(*at) + " is outside 0 to 1");
                    }
                }
            }
            return;
        case TokenType::typography:
            if (objectExpected()) {
                if (const JsonValue* family = member("fontFamily")) {
                    readFontFamily(*family, where + ".fontFamily", issues);
                }
                if (const JsonValue* size = member("fontSize")) {
                    readDimension(*size, where + ".fontSize", issues);
                }
                if (const JsonValue* weight = member("fontWeight")) {
                    readFontWeight(*weight, where + ".fontWeight", issues);
                }
                if (const JsonValue* spacing = member("letterSpacing")) {
                    readDimension(*spacing, where + ".letterSpacing", issues);
                }
                if (const JsonValue* lineHeight = member("lineHeight")) {
                    readNumber(*lineHeight, where + ".lineHeight", issues);
                }
            }
            return;
        default: return;
    }
}

}  // namespace tintwork::dtcg
