#include "export/OutputEscapes.h"


#include "template/Extension.h"

namespace tintwork {

namespace {

bool isControl(unsigned char character) { return character < 0x20 || character == 0x7F; }

bool isAsciiAlphanumeric(unsigned char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9');
}

bool isDigit(unsigned char character) { return character >= '0' && character <= '9'; }

// Lower-case hex digits of a value, at least `width` of them.
std::string hex(unsigned value, std::size_t width = 1) {
    static constexpr char digits[] = "0123456789abcdef";
    std::string out;
    do {
        out.insert(out.begin(), digits[value % 16]);
        value /= 16;
    } while (value != 0);
    if (out.size() < width) {
        out.insert(0, width - out.size(), '0');
    }
    return out;
}

// A CSS hex escape; the space ends it, so the next character can never extend it.
std::string cssHexEscape(unsigned value) { return "\\" + hex(value) + " "; }

bool startsWithIgnoringCase(std::string_view text, std::size_t position, std::string_view word) {
    if (text.size() - position < word.size()) {
        return false;
    }
    for (std::size_t index = 0; index < word.size(); ++index) {
        char character = text[position + index];
        if (character >= 'A' && character <= 'Z') {
            character = static_cast<char>(character - 'A' + 'a');
        }
        if (character != word[index]) {
            return false;
        }
    }
    return true;
}

bool equalsIgnoringCase(std::string_view text, std::string_view word) {
    return text.size() == word.size() && startsWithIgnoringCase(text, 0, word);
}

// Whether a custom property written as this text reads back as exactly this text in
// CSS, and survives being carried through a SCSS or LESS string. Anything that would
// end the declaration or the block, start a comment or an escape, leave a string or a
// bracket open, be trimmed, or be taken as a CSS-wide keyword is not.
bool isPlainCssValue(std::string_view value) {
    if (value.empty() || value.front() == ' ' || value.back() == ' ') {
        return false;
    }
    for (std::string_view keyword : {"initial", "inherit", "unset", "revert", "revert-layer"}) {
        if (equalsIgnoringCase(value, keyword)) {
            return false;
        }
    }
    const bool hasDouble = value.find('"') != std::string_view::npos;
    const bool hasSingle = value.find('\'') != std::string_view::npos;
    if (hasDouble && hasSingle) {
        // LESS can carry only one kind of quote through its escaped strings unchanged.
        return false;
    }
    std::string brackets;
    char quote = 0;
    for (std::size_t index = 0; index < value.size(); ++index) {
        const auto character = static_cast<unsigned char>(value[index]);
        if (isControl(character) || character == '\\' || character == ';' || character == '{' || character == '}' ||
            character == '!') {
            return false;
        }
        if (quote != 0) {
            if (character == quote) {
                quote = 0;
            }
            continue;
        }
        if (character == '"' || character == '\'') {
            quote = static_cast<char>(character);
        } else if (character == '(' || character == '[') {
            brackets.push_back(character == '(' ? ')' : ']');
        } else if (character == ')' || character == ']') {
            if (brackets.empty() || brackets.back() != static_cast<char>(character)) {
                return false;
            }
            brackets.pop_back();
        } else if (character == '/' && index + 1 < value.size() && value[index + 1] == '*') {
            return false;
        } else if (startsWithIgnoringCase(value, index, "url(") || value.substr(index, 4) == "<!--" ||
                   value.substr(index, 3) == "-->") {
            return false;
        }
    }
    return quote == 0 && brackets.empty();
}

}  // namespace

std::string cssString(std::string_view value) {
    std::string out = "\"";
    for (std::size_t index = 0; index < value.size(); ++index) {
        const auto character = static_cast<unsigned char>(value[index]);
        if (character == 0) {
            out += cssHexEscape(0xFFFD);
        } else if (isControl(character)) {
            out += cssHexEscape(character);
        } else if (character == '"' || character == '\\' || character == '\'') {
            // Single quotes too, so that the string can travel inside a LESS '…' string.
            out += '\\';
            out += static_cast<char>(character);
        } else if ((character == '@' || character == '#') && index + 1 < value.size() && value[index + 1] == '{') {
            // "@{" and "#{" would be interpolation to LESS and SCSS.
            out += cssHexEscape(character);
        } else {
            out += static_cast<char>(character);
        }
    }
    return out + "\"";
}

std::string cssPropertyValue(std::string_view value) {
    return isPlainCssValue(value) ? std::string(value) : cssString(value);
}

std::string cssIdentifier(std::string_view name) {
    std::string out;
    out.reserve(name.size());
    for (char value : name) {
        const auto character = static_cast<unsigned char>(value);
        if (character == 0) {
            out += cssHexEscape(0xFFFD);
        } else if (isControl(character)) {
            out += cssHexEscape(character);
        } else if (isAsciiAlphanumeric(character) || character == '-' || character == '_' || character >= 0x80) {
            out += value;
        } else {
            out += '\\';
            out += value;
        }
    }
    return out;
}

std::string scssIdentifier(std::string_view name) {
    // An identifier may not start with a digit, also after leading hyphens.
    std::size_t hyphens = 0;
    while (hyphens < name.size() && name[hyphens] == '-') {
        ++hyphens;
    }
    if (hyphens < name.size() && isDigit(static_cast<unsigned char>(name[hyphens]))) {
        return std::string(name.substr(0, hyphens)) + cssHexEscape(static_cast<unsigned char>(name[hyphens])) +
               cssIdentifier(name.substr(hyphens + 1));
    }
    return cssIdentifier(name);
}

std::string scssStringContent(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t index = 0; index < text.size(); ++index) {
        const auto character = static_cast<unsigned char>(text[index]);
        if (character == '"' || character == '\\') {
            out += '\\';
            out += static_cast<char>(character);
        } else if (character == '#' && index + 1 < text.size() && text[index + 1] == '{') {
            out += "\\#";
        } else if (isControl(character)) {
            out += cssHexEscape(character == 0 ? 0xFFFD : character);
        } else {
            out += static_cast<char>(character);
        }
    }
    return out;
}

std::string lessIdentifier(std::string_view name) {
    std::string out;
    out.reserve(name.size());
    for (char value : name) {
        const auto character = static_cast<unsigned char>(value);
        if (isAsciiAlphanumeric(character) || character == '-' || character == '_') {
            out += value;
        } else {
            out += "_" + hex(character, 2) + "_";
        }
    }
    return out;
}

bool isPlainLessName(std::string_view name) {
    for (char value : name) {
        const auto character = static_cast<unsigned char>(value);
        if (!isAsciiAlphanumeric(character) && character != '-' && character != '_') {
            return false;
        }
    }
    return true;
}

std::string lessEscapedString(std::string_view text) {
    // LESS prints an escaped string's text as it stands, backslashes included, and
    // interpolates "@{"; the quote that is absent from the text delimits it.
    std::string body;
    body.reserve(text.size());
    const char quote = text.find('"') == std::string_view::npos ? '"' : '\'';
    for (std::size_t index = 0; index < text.size(); ++index) {
        const auto character = static_cast<unsigned char>(text[index]);
        if (character == '\\' && index + 1 < text.size() && !isControl(static_cast<unsigned char>(text[index + 1]))) {
            // An escape of the CSS text (such as \' inside a CSS string) passes as it is.
            body += text.substr(index, 2);
            ++index;
        } else if (character == '@' && index + 1 < text.size() && text[index + 1] == '{') {
            body += cssHexEscape(character);
        } else if (character == static_cast<unsigned char>(quote) || isControl(character)) {
            body += cssHexEscape(character == 0 ? 0xFFFD : character);
        } else {
            body += static_cast<char>(character);
        }
    }
    return std::string("~") + quote + body + quote;
}

std::string swiftStringLiteral(std::string_view value) {
    bool raw = true;
    for (std::size_t index = 0; index < value.size() && raw; ++index) {
        const auto character = static_cast<unsigned char>(value[index]);
        const bool beforeHash = index + 1 < value.size() && value[index + 1] == '#';
        // In #"…"# only "# ends the string and \# starts an escape.
        raw = !isControl(character) && !((character == '"' || character == '\\') && beforeHash);
    }
    if (raw) {
        return "#\"" + std::string(value) + "\"#";
    }
    std::string out = "\"";
    for (char byte : value) {
        const auto character = static_cast<unsigned char>(byte);
        switch (character) {
            case '"': out += "\\\""; break;
            case '\\': out += "\\\\"; break;
            case '\n': out += "\\n"; break;
            case '\r': out += "\\r"; break;
            case '\t': out += "\\t"; break;
            case 0: out += "\\0"; break;
            default:
                if (isControl(character)) {
                    out += "\\u{" + hex(character) + "}";
                } else {
                    out += byte;
                }
        }
    }
    return out + "\"";
}

std::string kotlinStringLiteral(std::string_view value) {
    // A raw string cannot hold """; a quote just before the end would join the closing
    // delimiter, and some readers take a backslash there for an escape of it.
    bool raw = value.find("\"\"\"") == std::string_view::npos &&
               (value.empty() || (value.back() != '"' && value.back() != '\\'));
    for (std::size_t index = 0; index < value.size() && raw; ++index) {
        raw = !isControl(static_cast<unsigned char>(value[index]));
    }
    std::string out;
    if (raw) {
        // A raw string has no escapes; "$" would start a template, so it is spelt ${'$'}.
        out = "\"\"\"";
        for (char character : value) {
            out += character == '$' ? std::string("${'$'}") : std::string(1, character);
        }
        return out + "\"\"\"";
    }
    out = "\"";
    for (char byte : value) {
        const auto character = static_cast<unsigned char>(byte);
        switch (character) {
            case '"': out += "\\\""; break;
            case '\\': out += "\\\\"; break;
            case '$': out += "\\$"; break;
            case '\n': out += "\\n"; break;
            case '\r': out += "\\r"; break;
            case '\t': out += "\\t"; break;
            case '\b': out += "\\b"; break;
            default:
                if (isControl(character)) {
                    out += "\\u" + hex(character, 4);
                } else {
                    out += byte;
                }
        }
    }
    return out + "\"";
}

std::string commentText(std::string_view value) {
    std::string out;
    out.reserve(value.size());
    for (std::size_t index = 0; index < value.size(); ++index) {
        const auto character = static_cast<unsigned char>(value[index]);
        if (character == '\\') {
            // A backslash before a line end would splice the next line into a // comment.
            out += "\\x5c";
        } else if (character == '\n') {
            out += "\\n";
        } else if (isControl(character)) {
            out += "\\x" + hex(character, 2);
        } else if (character == '*' && index + 1 < value.size() && value[index + 1] == '/') {
            out += "*\\x2f";
            ++index;
        } else {
            out += static_cast<char>(character);
        }
    }
    return out;
}

namespace {

using stencil::Value;

// A filter over the value's text; a missing value stays missing.
stencil::Filter::Simple textFilter(std::string (*function)(std::string_view)) {
    return [function](const Value& value) {
        if (value.isNull()) {
            return value;
        }
        return Value(function(value.description()));
    };
}

// The name of an item, or of a set member when the member's name is given as argument,
// joined with "-" as the stock templates join them.
std::string joinedName(const Value& value, const std::vector<Value>& arguments) {
    std::string name = value.description();
    if (!arguments.empty() && !arguments.front().isNull()) {
        name += "-" + arguments.front().description();
    }
    return name;
}

std::string lessPropertyVariableName(const std::string& name) { return lessIdentifier(name) + "__property"; }

}  // namespace

void registerOutputEscapeFilters(stencil::Extension& extension) {
    extension.registerFilter("cssValue", textFilter(cssPropertyValue));
    extension.registerFilter("cssName", textFilter(cssIdentifier));
    extension.registerFilter("scssName", textFilter(scssIdentifier));
    extension.registerFilter("scssString", textFilter(scssStringContent));
    extension.registerFilter("lessName", textFilter(lessIdentifier));
    extension.registerFilter("lessString", textFilter(lessEscapedString));
    // LESS takes only plain property names; any other goes through a variable that
    // holds the escaped name ("@{…}: value"), declared by lessPropertyVariable.
    extension.registerFilter("lessProperty",
                             [](const Value& value, const std::vector<Value>& arguments, stencil::Context&) {
                                 const std::string name = joinedName(value, arguments);
                                 if (isPlainLessName(name)) {
                                     return Value("--" + name);
                                 }
                                 return Value("@{" + lessPropertyVariableName(name) + "}");
                             });
    extension.registerFilter("lessPropertyVariable",
                             [](const Value& value, const std::vector<Value>& arguments, stencil::Context&) {
                                 const std::string name = joinedName(value, arguments);
                                 if (isPlainLessName(name)) {
                                     return Value(std::string());
                                 }
                                 return Value("@" + lessPropertyVariableName(name) + ": " +
                                              lessEscapedString("--" + cssIdentifier(name)) + ";\n");
                             });
    extension.registerFilter("swiftString", textFilter(swiftStringLiteral));
    extension.registerFilter("kotlinString", textFilter(kotlinStringLiteral));
    extension.registerFilter("commentText", textFilter(commentText));
}

}  // namespace tintwork
