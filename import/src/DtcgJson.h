#pragma once
// A JSON tree that keeps object members in the order of the file, for the standard
// Design Tokens reader, where the order of tokens is the order of the output.

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tintwork::dtcg {

struct JsonMember;

struct JsonValue {
    enum class Kind : unsigned char { null, boolean, number, string, array, object };

    Kind kind = Kind::null;
    bool boolean = false;
    double number = 0.0;
    std::string text;
    // Object members in file order; array elements with empty keys.
    std::vector<JsonMember> members;

    bool isObject() const { return kind == Kind::object; }
    bool isArray() const { return kind == Kind::array; }
    bool isString() const { return kind == Kind::string; }
    bool isNumber() const { return kind == Kind::number; }
    bool isBoolean() const { return kind == Kind::boolean; }
    // The member with this key (the last one when a key repeats, as JSON readers take
    // it), or null; null for anything but an object.
    const JsonValue* find(std::string_view key) const;
    JsonValue* find(std::string_view key);
    // The kind in words for messages: "an object", "a string", ...
    std::string_view kindName() const;
};

struct JsonMember {
    std::string key;
    JsonValue value;
};

// A file that is no JSON; the message carries the line and column.
class JsonSyntaxError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Objects and arrays nested deeper than this are refused before parsing.
inline constexpr std::size_t maxJsonDepth = 256;

// Parses the text; throws JsonSyntaxError. The top level may be of any kind.
JsonValue parseJson(std::string_view text);

// "line L, column C" of a byte offset (columns count characters, not bytes).
std::string lineAndColumn(std::string_view text, std::size_t offset);

}  // namespace tintwork::dtcg
