#pragma once
// Reading the value of a standard Design Tokens token by its type, and checking it
// against the format's rules. References inside the value are already replaced.

#include <optional>
#include <string>
#include <string_view>

#include "DtcgJson.h"
#include "colour/ColorSpace.h"
#include "model/Themeable.h"

namespace tintwork::dtcg {

// What went wrong with one value. A failure means the value cannot be used; a
// nonconformity breaks a rule of the format but still reads (strict mode fails on both).
class Issues {
public:
    void fail(std::string message);
    void nonconforming(std::string message);

    bool failed() const { return failure_.has_value(); }
    // The first issue of either kind, and the first failure.
    const std::optional<std::string>& first() const { return first_; }
    const std::optional<std::string>& failure() const { return failure_; }

private:
    std::optional<std::string> first_;
    std::optional<std::string> failure_;
};

// The token types of the format, and the old spellings of a few ("font", "font-weight").
enum class TokenType {
    color,
    dimension,
    number,
    fontWeight,
    duration,
    fontFamily,
    shadow,
    cubicBezier,
    strokeStyle,
    border,
    transition,
    gradient,
    typography,
};

// The type a `$type` word names; nullopt for words the format does not define.
std::optional<TokenType> tokenTypeNamed(std::string_view word);
// Older drafts' type words ("font", "font-weight", ...) read leniently.
std::optional<TokenType> legacyTokenTypeNamed(std::string_view word);
std::string_view tokenTypeName(TokenType type);
// True for the types this reader turns into items.
bool isImportedType(TokenType type);

// A colour and the document space that holds it.
struct TokenColor {
    ColorValue color;
    ColorSpace space = ColorSpace::sRGB;
};

// Each reader names the value's place in its messages with `where` ("$value",
// "$value.color", ...). Strings in older forms ("4px", "#ff0000", "200ms") are read
// and reported as nonconforming.
std::optional<TokenColor> readColor(const JsonValue& value, const std::string& where, Issues& issues);
std::optional<double> readDimension(const JsonValue& value, const std::string& where, Issues& issues);
std::optional<double> readNumber(const JsonValue& value, const std::string& where, Issues& issues);
std::optional<double> readFontWeight(const JsonValue& value, const std::string& where, Issues& issues);
// In milliseconds.
std::optional<double> readDuration(const JsonValue& value, const std::string& where, Issues& issues);
// Several families are joined with ", ".
std::optional<std::string> readFontFamily(const JsonValue& value, const std::string& where, Issues& issues);
// A single shadow, or the first layer of a list of shadows.
std::optional<ShadowDetails> readShadow(const JsonValue& value, const std::string& where, Issues& issues);
// Checks a value of a type this reader does not import.
void checkSkippedValue(TokenType type, const JsonValue& value, const std::string& where, Issues& issues);

}  // namespace tintwork::dtcg
