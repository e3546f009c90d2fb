// The built-in filters.

#include "RenderState.h"
#include "Text.h"
#include "template/Context.h"
#include "template/Environment.h"
#include "template/Errors.h"
#include "template/Extension.h"

namespace tintwork::stencil {

namespace {

std::string stringify(const Value& value) { return value.description(); }

// An argument as an error message shows it; a missing one reads as nil.
std::string shownArgument(const Value& value) { return value.isNull() ? std::string("nil") : value.description(); }

// Filters that multiply their input stop at the size a whole render may reach.
void checkSize(const std::string& result, const char* filter) {
    if (result.size() > maximumOutputSize) {
        throw TemplateSyntaxError(std::string("'") + filter + "' filter result exceeds " +
                                  std::to_string(maximumOutputSize >> 20) + " MB");
    }
}

// Applies a text transform to a value, or to each element of a list.
Value mapText(const Value& value, std::string (*transform)(std::string_view)) {
    if (const List* list = value.asList()) {
        List result;
        result.reserve(list->size());
        for (const Value& element : *list) {
            result.emplace_back(transform(stringify(element)));
        }
        return Value(std::move(result));
    }
    if (value.isNull()) {
        return value;
    }
    return Value(transform(stringify(value)));
}

Value defaultFilter(const Value& value, const std::vector<Value>& arguments, Context&) {
    if (!value.isNull()) {
        return value;
    }
    for (const Value& argument : arguments) {
        if (!argument.isNull()) {
            return argument;
        }
    }
    return Value();
}

Value joinFilter(const Value& value, const std::vector<Value>& arguments, Context&) {
    if (arguments.size() > 1) {
        throw TemplateSyntaxError("'join' filter takes at most one argument");
    }
    const List* list = value.asList();
    if (list == nullptr) {
        return value;
    }
    std::string separator = arguments.empty() ? std::string() : stringify(arguments.front());
    std::string result;
    for (std::size_t index = 0; index < list->size(); ++index) {
        if (index > 0) {
            result += separator;
        }
        result += stringify((*list)[index]);
        checkSize(result, "join");
    }
    return Value(std::move(result));
}

Value splitFilter(const Value& value, const std::vector<Value>& arguments, Context&) {
    if (arguments.size() > 1) {
        throw TemplateSyntaxError("'split' filter takes at most one argument");
    }
    const std::string* textValue = value.asString();
    if (textValue == nullptr) {
        return value;
    }
    std::string separator = arguments.empty() ? std::string(" ") : stringify(arguments.front());
    List parts;
    if (separator.empty()) {
        parts.emplace_back(*textValue);
        return Value(std::move(parts));
    }
    std::size_t start = 0;
    while (true) {
        std::size_t found = textValue->find(separator, start);
        if (found == std::string::npos) {
            parts.emplace_back(textValue->substr(start));
            break;
        }
        parts.emplace_back(textValue->substr(start, found - start));
        start = found + separator.size();
        if (parts.size() >= maximumCollectionSize) {
            throw TemplateSyntaxError("'split' filter result has more than " + std::to_string(maximumCollectionSize) +
                                      " values");
        }
    }
    return Value(std::move(parts));
}

inline constexpr std::size_t maximumIndentLength = 10'000;

Value indentFilter(const Value& value, const std::vector<Value>& arguments, Context&) {
    if (arguments.size() > 3) {
        throw TemplateSyntaxError("'indent' filter can take at most 3 arguments");
    }
    std::int64_t width = 4;
    std::string indentation = " ";
    bool indentFirst = false;
    if (!arguments.empty()) {
        const std::int64_t* number = arguments[0].asInteger();
        if (number == nullptr) {
            throw TemplateSyntaxError("'indent' filter width argument must be an Integer (" +
                                      shownArgument(arguments[0]) + ")");
        }
        width = *number;
    }
    if (arguments.size() > 1) {
        const std::string* textValue = arguments[1].asString();
        if (textValue == nullptr) {
            throw TemplateSyntaxError("'indent' filter indentation argument must be a String (" +
                                      shownArgument(arguments[1]) + ")");
        }
        indentation = *textValue;
    }
    if (arguments.size() > 2) {
        const bool* flag = arguments[2].asBool();
        if (flag == nullptr) {
            throw TemplateSyntaxError("'indent' filter indentFirst argument must be a Bool");
        }
        indentFirst = *flag;
    }
    // An indentation beyond any sensible layout would only make a huge string.
    std::string prefix;
    for (std::int64_t count = 0; count < width && prefix.size() < maximumIndentLength; ++count) {
        prefix += indentation;
    }
    std::string source = stringify(value);
    std::string result;
    std::size_t start = 0;
    bool first = true;
    while (true) {
        std::size_t end = source.find('\n', start);
        std::string_view line(source.data() + start, (end == std::string::npos ? source.size() : end) - start);
        // Blank lines stay empty.
        if (!line.empty() && (!first || indentFirst)) {
            result += prefix;
        }
        result += line;
        checkSize(result, "indent");
        if (end == std::string::npos) {
            break;
        }
        result += '\n';
        start = end + 1;
        first = false;
    }
    return Value(std::move(result));
}

Value filterFilter(const Value& value, const std::vector<Value>& arguments, Context& context) {
    if (arguments.size() != 1) {
        throw TemplateSyntaxError("'filter' filter takes one argument");
    }
    std::string name = stringify(arguments.front());
    const Filter* filter = context.environment().findFilter(name);
    if (filter == nullptr) {
        throw TemplateSyntaxError(text::unknownFilterMessage(name, context.environment().filterNames()));
    }
    return filter->invoke(value, {}, context);
}

}  // namespace

void registerDefaultFilters(Extension& extension) {
    extension.registerFilter("default", Filter::arguments(defaultFilter));
    extension.registerFilter("capitalize", Filter::simple([](const Value& value) {
                                 return mapText(value, text::capitalized);
                             }));
    extension.registerFilter("uppercase", Filter::simple([](const Value& value) {
                                 return mapText(value, text::uppercased);
                             }));
    extension.registerFilter("lowercase", Filter::simple([](const Value& value) {
                                 return mapText(value, text::lowercased);
                             }));
    extension.registerFilter("join", Filter::arguments(joinFilter));
    extension.registerFilter("split", Filter::arguments(splitFilter));
    extension.registerFilter("indent", Filter::arguments(indentFilter));
    extension.registerFilter("filter", Filter::arguments(filterFilter));
}

}  // namespace tintwork::stencil
