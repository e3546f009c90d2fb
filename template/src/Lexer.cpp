#include <cstring>

#include "template/Token.h"

namespace tintwork::stencil {

namespace {

bool isBlank(char character) { return character == ' ' || character == '\t'; }

bool isSpace(char character) {
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

std::string trimSpaces(std::string_view text) {
    std::size_t begin = 0;
    std::size_t end = text.size();
    while (begin < end && isSpace(text[begin])) {
        ++begin;
    }
    while (end > begin && isSpace(text[end - 1])) {
        --end;
    }
    return std::string(text.substr(begin, end - begin));
}

}  // namespace

std::string applyLeadingTrim(std::string text, TrimBehaviour::Trim trim) {
    if (trim == TrimBehaviour::Trim::nothing) {
        return text;
    }
    std::size_t position = 0;
    while (position < text.size() && isBlank(text[position])) {
        ++position;
    }
    if (trim == TrimBehaviour::Trim::whitespace) {
        return text.substr(position);
    }
    // Blanks and one line feed, only together; a CR before the LF belongs to it.
    if (position < text.size() && text[position] == '\r' && position + 1 < text.size() && text[position + 1] == '\n') {
        return text.substr(position + 2);
    }
    if (position < text.size() && text[position] == '\n') {
        return text.substr(position + 1);
    }
    return text;
}

std::string applyTrailingTrim(std::string text, TrimBehaviour::Trim trim) {
    if (trim == TrimBehaviour::Trim::nothing) {
        return text;
    }
    std::size_t end = text.size();
    while (end > 0 && isBlank(text[end - 1])) {
        --end;
    }
    if (trim == TrimBehaviour::Trim::whitespace) {
        text.resize(end);
        return text;
    }
    if (end > 0 && text[end - 1] == '\n') {
        --end;
        if (end > 0 && text[end - 1] == '\r') {
            --end;
        }
        text.resize(end);
    }
    return text;
}

std::vector<std::string> smartSplit(const std::string& text, char separator) {
    std::vector<std::string> words;
    std::string word;
    char quote = 0;
    bool blanks = separator == ' ';
    for (char character : text) {
        if (quote != 0) {
            word += character;
            if (character == quote) {
                quote = 0;
            }
            continue;
        }
        if (character == '"' || character == '\'') {
            quote = character;
            word += character;
            continue;
        }
        bool splits = blanks ? isSpace(character) : character == separator;
        if (splits) {
            if (!blanks || !word.empty()) {
                words.push_back(std::move(word));
            }
            word.clear();
            continue;
        }
        word += character;
    }
    if (!blanks || !word.empty()) {
        words.push_back(std::move(word));
    }
    return words;
}

Token::Token(std::string text, Kind tokenKind, SourceMap map, std::optional<WhitespaceBehaviour> behaviour)
    : contents(std::move(text)), kind(tokenKind), sourceMap(std::move(map)), whitespace(behaviour) {
    if (kind != Kind::text) {
        words = smartSplit(contents);
    }
}

Lexer::Lexer(std::string source, std::optional<std::string> name)
    : templateString(std::move(source)), templateName(std::move(name)) {}

namespace {

// Tracks line numbers while the lexer walks forward through the text.
class LineTracker {
public:
    LineTracker(const std::string& source, const std::optional<std::string>& name) : text(source), filename(name) {}

    SourceMap at(std::size_t position) {
        while (scanned < position) {
            if (text[scanned] == '\n') {
                ++line;
                lineStart = scanned + 1;
            }
            ++scanned;
        }
        std::size_t lineEnd = text.find('\n', lineStart);
        if (lineEnd == std::string::npos) {
            lineEnd = text.size();
        }
        std::string content = text.substr(lineStart, lineEnd - lineStart);
        if (!content.empty() && content.back() == '\r') {
            content.pop_back();
        }
        return SourceMap{filename,
                         SourceLocation{std::move(content), line, static_cast<std::ptrdiff_t>(position - lineStart)}};
    }

private:
    const std::string& text;
    const std::optional<std::string>& filename;
    std::size_t scanned = 0;
    std::size_t line = 1;
    std::size_t lineStart = 0;
};

WhitespaceBehaviour::Behaviour markerBehaviour(char character) {
    if (character == '-') {
        return WhitespaceBehaviour::Behaviour::trim;
    }
    if (character == '+') {
        return WhitespaceBehaviour::Behaviour::keep;
    }
    return WhitespaceBehaviour::Behaviour::unspecified;
}

}  // namespace

std::vector<Token> Lexer::tokenize() const {
    std::vector<Token> tokens;
    LineTracker lines(templateString, templateName);
    const std::string& text = templateString;
    std::size_t position = 0;
    while (position < text.size()) {
        std::size_t open = position;
        char kindCharacter = 0;
        while (true) {
            open = text.find('{', open);
            if (open == std::string::npos || open + 1 >= text.size()) {
                open = std::string::npos;
                break;
            }
            char next = text[open + 1];
            if (next == '{' || next == '%' || next == '#') {
                kindCharacter = next;
                break;
            }
            ++open;
        }
        const char* closer = kindCharacter == '{' ? "}}" : kindCharacter == '%' ? "%}" : "#}";
        std::size_t close = open == std::string::npos ? std::string::npos : text.find(closer, open + 2);
        if (close == std::string::npos) {
            // No further tag: the rest, an unclosed delimiter included, is text.
            tokens.emplace_back(text.substr(position), Token::Kind::text, lines.at(position));
            break;
        }
        if (open > position) {
            tokens.emplace_back(text.substr(position, open - position), Token::Kind::text, lines.at(position));
        }
        std::string_view inner(text.data() + open + 2, close - open - 2);
        WhitespaceBehaviour whitespace;
        if (!inner.empty()) {
            whitespace.leading = markerBehaviour(inner.front());
            if (whitespace.leading != WhitespaceBehaviour::Behaviour::unspecified) {
                inner.remove_prefix(1);
            }
        }
        if (!inner.empty()) {
            whitespace.trailing = markerBehaviour(inner.back());
            if (whitespace.trailing != WhitespaceBehaviour::Behaviour::unspecified) {
                inner.remove_suffix(1);
            }
        }
        Token::Kind kind = kindCharacter == '{'   ? Token::Kind::variable
                           : kindCharacter == '%' ? Token::Kind::block
                                                  : Token::Kind::comment;
        tokens.emplace_back(trimSpaces(inner), kind, lines.at(open), whitespace);
        position = close + 2;
    }
    return tokens;
}

}  // namespace tintwork::stencil
