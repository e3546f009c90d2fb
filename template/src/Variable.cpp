#include <charconv>
#include <cstdlib>

#include "RenderState.h"
#include "Text.h"
#include "template/Environment.h"
#include "template/Errors.h"
#include "template/Resolvable.h"

namespace tintwork::stencil {

// A variable's name cut into its parts once, when the variable is built. A malformed
// name keeps its error and reports it when resolved, as the lookup would.
struct KeyPath {
    struct Component {
        std::string key;
        std::shared_ptr<const Variable> subscript;
    };

    enum class LiteralKind { none, value };

    LiteralKind literal = LiteralKind::none;
    Value literalValue;
    // A quoted string that the path starts from, as in 'abc'.count.
    std::optional<Value> base;
    std::vector<Component> components;
    std::optional<std::string> error;
};

namespace {

std::optional<std::int64_t> parseInteger(std::string_view textValue) {
    if (textValue.empty()) {
        return std::nullopt;
    }
    std::int64_t result = 0;
    const char* begin = textValue.data();
    const char* end = begin + textValue.size();
    if (*begin == '+') {
        ++begin;
    }
    auto [pointer, error] = std::from_chars(begin, end, result);
    if (error != std::errc() || pointer != end) {
        return std::nullopt;
    }
    return result;
}

std::optional<double> parseDecimal(std::string_view textValue) {
    // Digits with one point and an optional sign; no exponents, no inf or nan words.
    std::size_t index = 0;
    if (index < textValue.size() && (textValue[index] == '-' || textValue[index] == '+')) {
        ++index;
    }
    bool digits = false;
    bool point = false;
    for (; index < textValue.size(); ++index) {
        char character = textValue[index];
        if (character >= '0' && character <= '9') {
            digits = true;
        } else if (character == '.' && !point) {
            point = true;
        } else {
            return std::nullopt;
        }
    }
    if (!digits || !point) {
        return std::nullopt;
    }
    std::string copy(textValue);
    return std::strtod(copy.c_str(), nullptr);
}

std::string unexpected(std::string_view what, std::string_view name) {
    return "Unexpected " + std::string(what) + " in variable '" + text::excerpt(name) + "'";
}

// Cuts a.b[c.d].e into a, b, [c.d], e. From `start` on, after a quoted base, the path
// goes on as after a subscript.
void parseKeyPath(KeyPath& parsed, const std::string& name, std::size_t start = 0) {
    std::string current;
    bool afterDot = false;
    bool afterSubscript = start > 0;
    std::size_t index = start;
    auto fail = [&](std::string message) { parsed.error = std::move(message); };
    while (index < name.size()) {
        char character = name[index];
        if (afterSubscript && character != '.' && character != '[') {
            return fail("Unexpected character '" + std::string(1, character) + "' in variable '" +
                        text::excerpt(name) + "'");
        }
        if (character == '.') {
            if (current.empty() && !afterSubscript) {
                return fail(unexpected("'.'", name));
            }
            if (!current.empty()) {
                parsed.components.push_back({std::move(current), nullptr});
                current.clear();
            }
            afterDot = true;
            afterSubscript = false;
            ++index;
            continue;
        }
        if (character == '[') {
            if (current.empty() && !afterSubscript) {
                return fail(unexpected("'['", name));
            }
            if (!current.empty()) {
                parsed.components.push_back({std::move(current), nullptr});
                current.clear();
            }
            int level = 1;
            std::size_t end = index + 1;
            for (; end < name.size(); ++end) {
                if (name[end] == '[') {
                    ++level;
                } else if (name[end] == ']' && --level == 0) {
                    break;
                }
            }
            if (end >= name.size()) {
                return fail("Unbalanced subscript brackets in variable '" + text::excerpt(name) + "'");
            }
            std::string inner(text::trim(std::string_view(name).substr(index + 1, end - index - 1)));
            parsed.components.push_back({std::string(), std::make_shared<const Variable>(inner)});
            afterSubscript = true;
            afterDot = false;
            index = end + 1;
            continue;
        }
        if (character == ']') {
            return fail("Unbalanced ']' in variable '" + text::excerpt(name) + "'");
        }
        current += character;
        afterDot = false;
        ++index;
    }
    if (afterDot) {
        return fail(unexpected("'.'", name));
    }
    if (!current.empty()) {
        parsed.components.push_back({std::move(current), nullptr});
    }
}

Value characterAt(const std::string& value, std::string_view key) {
    if (key == "count") {
        return Value(static_cast<std::int64_t>(text::characterCount(value)));
    }
    std::optional<std::string> character;
    if (key == "first") {
        character = text::characterAt(value, 0);
    } else if (key == "last") {
        character = text::characterAt(value, -1);
    } else if (auto index = parseInteger(key)) {
        character = text::characterAt(value, *index);
    }
    return character ? Value(std::move(*character)) : Value();
}

}  // namespace

Value lookupKey(const Value& value, std::string_view key) {
    switch (value.kind()) {
    case Value::Kind::map: {
        const Map& map = *value.asMap();
        auto found = map.find(key);
        if (found != map.end()) {
            return found->second;
        }
        if (key == "count") {
            return Value(static_cast<std::int64_t>(map.size()));
        }
        return Value();
    }
    case Value::Kind::list: {
        const List& list = *value.asList();
        if (key == "count") {
            return Value(static_cast<std::int64_t>(list.size()));
        }
        if (key == "first") {
            return list.empty() ? Value() : list.front();
        }
        if (key == "last") {
            return list.empty() ? Value() : list.back();
        }
        if (auto index = parseInteger(key)) {
            auto count = static_cast<std::int64_t>(list.size());
            std::int64_t position = *index < 0 ? count + *index : *index;
            if (position >= 0 && position < count) {
                return list[static_cast<std::size_t>(position)];
            }
        }
        return Value();
    }
    case Value::Kind::string:
        return characterAt(*value.asString(), key);
    case Value::Kind::record:
        return value.asRecord()->field(key).value_or(Value());
    default:
        return Value();
    }
}

namespace {

// The text of a quoted string, quotes included. A backslash before the quote character
// or another backslash stands for it.
std::string unquoted(std::string_view quoted) {
    std::string literal;
    char quote = quoted.front();
    for (std::size_t index = 1; index + 1 < quoted.size(); ++index) {
        char character = quoted[index];
        if (character == '\\' && index + 2 < quoted.size() && (quoted[index + 1] == quote || quoted[index + 1] == '\\')) {
            character = quoted[++index];
        }
        literal += character;
    }
    return literal;
}

// Where the quoted string at the start of `value` closes, or npos.
std::size_t closingQuote(std::string_view value) {
    char quote = value.front();
    for (std::size_t index = 1; index < value.size(); ++index) {
        if (value[index] == '\\' && index + 1 < value.size() && (value[index + 1] == quote || value[index + 1] == '\\')) {
            ++index;
        } else if (value[index] == quote) {
            return index;
        }
    }
    return std::string_view::npos;
}

}  // namespace

Variable::Variable(std::string name) : variable(std::move(name)) {
    auto parsedPath = std::make_shared<KeyPath>();
    const std::string& value = variable;
    bool quoted = !value.empty() && (value.front() == '"' || value.front() == '\'');
    std::size_t close = quoted ? closingQuote(value) : std::string::npos;
    if (quoted && value.size() >= 2 && value.back() == value.front() &&
        (close == std::string::npos || close + 1 == value.size() ||
         (value[close + 1] != '.' && value[close + 1] != '['))) {
        parsedPath->literal = KeyPath::LiteralKind::value;
        parsedPath->literalValue = Value(unquoted(value));
    } else if (quoted && close != std::string::npos && close + 1 < value.size() &&
               (value[close + 1] == '.' || value[close + 1] == '[')) {
        // A string literal with a key path behind it: 'abc'.count, "abc".1, "abc"[i].
        parsedPath->base = Value(unquoted(std::string_view(value).substr(0, close + 1)));
        parseKeyPath(*parsedPath, value, close + 1);
    } else if (value == "true" || value == "false") {
        parsedPath->literal = KeyPath::LiteralKind::value;
        parsedPath->literalValue = Value(value == "true");
    } else if (value == "nil") {
        parsedPath->literal = KeyPath::LiteralKind::value;
    } else if (auto integer = parseInteger(value)) {
        parsedPath->literal = KeyPath::LiteralKind::value;
        parsedPath->literalValue = Value(*integer);
    } else if (auto decimal = parseDecimal(value)) {
        parsedPath->literal = KeyPath::LiteralKind::value;
        parsedPath->literalValue = Value(*decimal);
    } else {
        parseKeyPath(*parsedPath, value);
    }
    parsed = std::move(parsedPath);
}

Value Variable::resolve(Context& context) const {
    if (parsed->literal == KeyPath::LiteralKind::value) {
        return parsed->literalValue;
    }
    if (parsed->error) {
        throw TemplateSyntaxError(*parsed->error);
    }
    if (parsed->components.empty()) {
        return Value();
    }
    // The first part is read in place from the context; later parts look up keys on
    // the value found so far.
    Value current;
    const Value* found = nullptr;
    if (parsed->base) {
        current = *parsed->base;
        found = &current;
    }
    for (std::size_t index = 0; index < parsed->components.size(); ++index) {
        const auto& component = parsed->components[index];
        std::string subscriptKey;
        std::string_view key = component.key;
        if (component.subscript) {
            Value subscript = component.subscript->resolve(context);
            if (subscript.isNull()) {
                throw TemplateSyntaxError("Unable to resolve subscript '" + text::excerpt(component.subscript->variable) +
                                          "' in variable '" + text::excerpt(variable) + "'");
            }
            subscriptKey = subscript.description();
            key = subscriptKey;
        }
        if (found == nullptr) {
            found = context.find(key);
            if (found == nullptr) {
                current = context[key];
                found = &current;
            }
        } else {
            current = lookupKey(*found, key);
            found = &current;
        }
        if (const LazyValueWrapper* lazy = found->asLazy()) {
            current = lazy->value(context);
            found = &current;
        }
        if (found->isNull()) {
            return Value();
        }
    }
    return found != nullptr ? *found : Value();
}

RangeVariable::RangeVariable(ResolvablePtr lower, ResolvablePtr upper) : from(std::move(lower)), to(std::move(upper)) {}

namespace {


std::int64_t rangeEnd(const Value& value, const char* which) {
    if (const auto* integer = value.asInteger()) {
        return *integer;
    }
    // A missing end reads as nil rather than as nothing between the brackets.
    std::string shown = value.isNull() ? std::string("nil") : value.description();
    throw TemplateSyntaxError(std::string("'") + which + "' value is not an Integer (" + shown + ")");
}

}  // namespace

Value RangeVariable::resolve(Context& context) const {
    std::int64_t lower = rangeEnd(from->resolve(context), "from");
    std::int64_t upper = rangeEnd(to->resolve(context), "to");
    // Unsigned difference: the ends may lie far apart without overflowing.
    auto span = lower <= upper ? static_cast<std::uint64_t>(upper) - static_cast<std::uint64_t>(lower)
                               : static_cast<std::uint64_t>(lower) - static_cast<std::uint64_t>(upper);
    if (span >= static_cast<std::uint64_t>(maximumCollectionSize)) {
        throw TemplateSyntaxError("Range " + std::to_string(lower) + "..." + std::to_string(upper) +
                                  " has more than " + std::to_string(maximumCollectionSize) + " values");
    }
    // Building the values is work like rendering, bounded by the same budget.
    countRenderStep(context.state(), span + 1);
    List values;
    values.reserve(static_cast<std::size_t>(span) + 1);
    std::int64_t step = lower <= upper ? 1 : -1;
    for (std::int64_t value = lower;; value += step) {
        values.emplace_back(value);
        if (value == upper) {
            break;
        }
    }
    return Value(std::move(values));
}

struct FilterExpression::FilterCall {
    std::string name;
    Filter filter;
    std::vector<std::shared_ptr<const Variable>> arguments;
};

namespace {

}  // namespace

FilterExpression::FilterExpression(std::string_view expression, const Environment& environment) {
    std::vector<std::string> bits = smartSplit(std::string(expression), '|');
    std::string_view name = bits.empty() ? std::string_view() : text::trim(bits.front());
    if (name.empty()) {
        throw TemplateSyntaxError("Missing variable name");
    }
    variable = std::make_shared<const Variable>(std::string(name));
    for (std::size_t index = 1; index < bits.size(); ++index) {
        std::string_view bit = text::trim(bits[index]);
        std::size_t colon = text::findOutsideQuotes(bit, ":");
        auto call = std::make_shared<FilterCall>();
        call->name = std::string(text::trim(bit.substr(0, colon)));
        if (colon != std::string_view::npos) {
            for (const std::string& argument : smartSplit(std::string(bit.substr(colon + 1)), ',')) {
                call->arguments.push_back(std::make_shared<const Variable>(std::string(text::trim(argument))));
            }
        }
        const Filter* filter = environment.findFilter(call->name);
        if (filter == nullptr) {
            throw TemplateSyntaxError(text::unknownFilterMessage(call->name, environment.filterNames()));
        }
        call->filter = *filter;
        filters.push_back(std::move(call));
    }
}

Value FilterExpression::resolve(Context& context) const {
    Value result = variable->resolve(context);
    for (const auto& call : filters) {
        std::vector<Value> arguments;
        arguments.reserve(call->arguments.size());
        for (const auto& argument : call->arguments) {
            arguments.push_back(argument->resolve(context));
        }
        result = call->filter.invoke(result, arguments, context);
    }
    return result;
}

}  // namespace tintwork::stencil
