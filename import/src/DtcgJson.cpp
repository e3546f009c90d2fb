#include "DtcgJson.h"

#include <cmath>
#include <vector>

#include <nlohmann/json.hpp>

#include "SourceText.h"

namespace tintwork::dtcg {

const JsonValue* JsonValue::find(std::string_view key) const {
    if (kind != Kind::object) {
        return nullptr;
    }
    for (auto member = members.rbegin(); member != members.rend(); ++member) {
        if (member->key == key) {
            return &member->value;
        }
    }
    return nullptr;
}

JsonValue* JsonValue::find(std::string_view key) {
    return const_cast<JsonValue*>(static_cast<const JsonValue*>(this)->find(key));
}

std::string_view JsonValue::kindName() const {
    switch (kind) {
        case Kind::null: return "null";
        case Kind::boolean: return "a boolean";
        case Kind::number: return "a number";
        case Kind::string: return "a string";
        case Kind::array: return "an array";
        case Kind::object: return "an object";
    }
    return "a value";
}

std::string lineAndColumn(std::string_view text, std::size_t offset) {
    std::size_t line = 1;
    std::size_t column = 1;
    for (std::size_t i = 0; i < offset && i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte == '\n') {
            ++line;
            column = 1;
        } else if ((byte & 0xC0) != 0x80) {
            ++column;
        }
    }
    return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

namespace {

// Finds the first place where brackets nest deeper than the limit, outside strings.
void checkDepth(std::string_view text) {
    if (const auto at = importing::firstTooDeepBracket(text, maxJsonDepth)) {
        throw JsonSyntaxError(lineAndColumn(text, *at) + ": objects and arrays nested deeper than " +
                              std::to_string(maxJsonDepth) + " levels");
    }
}

// Builds the tree from the parser's events. Only the innermost open container grows,
// so the pointers on the stack stay valid.
class TreeBuilder : public nlohmann::json_sax<nlohmann::json> {
public:
    explicit TreeBuilder(std::string_view source) : text(source) {}

    bool null() override { return add(JsonValue{}); }
    bool boolean(bool value) override {
        JsonValue v;
        v.kind = JsonValue::Kind::boolean;
        v.boolean = value;
        return add(std::move(v));
    }
    bool number_integer(number_integer_t value) override { return addNumber(static_cast<double>(value)); }
    bool number_unsigned(number_unsigned_t value) override { return addNumber(static_cast<double>(value)); }
    bool number_float(number_float_t value, const string_t&) override { return addNumber(value); }
    bool string(string_t& value) override {
        JsonValue v;
        v.kind = JsonValue::Kind::string;
        v.text = std::move(value);
        return add(std::move(v));
    }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override {
        JsonValue v;
        v.kind = JsonValue::Kind::object;
        return open(std::move(v));
    }
    bool key(string_t& value) override {
        pendingKey = std::move(value);
        return true;
    }
    bool end_object() override {
        stack.pop_back();
        return true;
    }
    bool start_array(std::size_t) override {
        JsonValue v;
        v.kind = JsonValue::Kind::array;
        return open(std::move(v));
    }
    bool end_array() override {
        stack.pop_back();
        return true;
    }
    bool parse_error(std::size_t position, const std::string& lastToken, const nlohmann::detail::exception& error) override {
        // The library's text starts with its own exception tag, which says nothing to a user.
        std::string detail = error.what();
        if (std::size_t tagEnd = detail.find("] "); !detail.empty() && detail.front() == '[' &&
                                                    tagEnd != std::string::npos) {
            detail.erase(0, tagEnd + 2);
        }
        // Syntax errors name their place; a number out of range does not.
        if (detail.find(" line ") == std::string::npos) {
            const std::size_t start = position > lastToken.size() ? position - lastToken.size() : 0;
            detail = lineAndColumn(text, start) + ": " + detail;
        }
        throw JsonSyntaxError(detail);
    }

    JsonValue root;

private:
    bool addNumber(double value) {
        if (!std::isfinite(value)) {
            throw JsonSyntaxError("a number too large to hold");
        }
        JsonValue v;
        v.kind = JsonValue::Kind::number;
        v.number = value;
        return add(std::move(v));
    }

    JsonValue* place(JsonValue&& value) {
        if (stack.empty()) {
            root = std::move(value);
            return &root;
        }
        JsonValue& parent = *stack.back();
        parent.members.push_back({parent.kind == JsonValue::Kind::object ? std::move(pendingKey) : std::string(),
                                  std::move(value)});
        pendingKey.clear();
        return &parent.members.back().value;
    }

    bool add(JsonValue&& value) {
        place(std::move(value));
        return true;
    }

    bool open(JsonValue&& value) {
        stack.push_back(place(std::move(value)));
        return true;
    }

    std::string_view text;
    std::vector<JsonValue*> stack;
    std::string pendingKey;
};

}  // namespace

JsonValue parseJson(std::string_view text) {
    checkDepth(text);
    TreeBuilder builder(text);
    try {
        nlohmann::json::sax_parse(text, &builder);
    } catch (const nlohmann::json::exception& error) {
        std::string detail = error.what();
        if (std::size_t tagEnd = detail.find("] "); !detail.empty() && detail.front() == '[' &&
                                                    tagEnd != std::string::npos) {
            detail.erase(0, tagEnd + 2);
        }
        throw JsonSyntaxError(detail);
    }
    return std::move(builder.root);
}

}  // namespace tintwork::dtcg
