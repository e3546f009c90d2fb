#include <algorithm>
#include <cstring>

#include "Text.h"
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
    bool escaped = false;
    bool blanks = separator == ' ';
    for (char character : text) {
        if (quote != 0) {
            // A backslash keeps the next character, a quote included, inside the string.
            word += character;
            if (escaped) {
                escaped = false;
            } else if (character == '\\') {
                escaped = true;
            } else if (character == quote) {
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

Token::Token(std::string text, Kind tokenKind, std::shared_ptr<const TemplateSource> from, std::size_t at,
             std::optional<WhitespaceBehaviour> behaviour)
    : contents(std::move(text)), kind(tokenKind), source(std::move(from)), offset(at), whitespace(behaviour) {
    if (kind != Kind::text) {
        words = smartSplit(contents);
    }
}

namespace {

// How many characters of the line an error quotes on either side of the token.
constexpr std::size_t excerptBefore = 40;
constexpr std::size_t excerptAfter = 80;

// Steps back `count` characters from `position`, not before `limit`, landing on the
// start of a UTF-8 character.
std::size_t stepBack(std::string_view text, std::size_t position, std::size_t limit, std::size_t count) {
    while (position > limit && count > 0) {
        --position;
        while (position > limit && (static_cast<unsigned char>(text[position]) & 0xC0) == 0x80) {
            --position;
        }
        --count;
    }
    return position;
}

std::size_t stepForward(std::string_view text, std::size_t position, std::size_t limit, std::size_t count) {
    while (position < limit && count > 0) {
        ++position;
        while (position < limit && (static_cast<unsigned char>(text[position]) & 0xC0) == 0x80) {
            ++position;
        }
        --count;
    }
    return position;
}

}  // namespace

SourceMap Token::sourceMap() const {
    SourceMap map;
    if (!source) {
        return map;
    }
    map.filename = source->filename;
    const std::string_view text = source->text;
    const std::size_t position = std::min(offset, text.size());
    // One pass over the text before the token, only now that someone asks.
    std::size_t lineStart = 0;
    std::size_t line = 1;
    for (std::size_t index = 0; index < position; ++index) {
        if (text[index] == '\n') {
            ++line;
            lineStart = index + 1;
        }
    }
    std::size_t lineEnd = text.find('\n', position);
    if (lineEnd == std::string_view::npos) {
        lineEnd = text.size();
    }
    if (lineEnd > lineStart && text[lineEnd - 1] == '\r') {
        --lineEnd;
    }
    map.location.lineNumber = line;
    // The column counts characters, so that it matches what an editor shows.
    map.location.lineOffset =
        static_cast<std::ptrdiff_t>(text::characterCount(text.substr(lineStart, position - lineStart)));
    // A long line is quoted only around the token, with "…" where it was cut.
    const std::size_t begin = stepBack(text, position, lineStart, excerptBefore);
    const std::size_t end = stepForward(text, std::min(position, lineEnd), lineEnd, excerptAfter);
    std::string content;
    if (begin > lineStart) {
        content = "…";
    }
    map.location.contentOffset = text::characterCount(content) + text::characterCount(text.substr(begin, position - begin));
    content.append(text.substr(begin, end - begin));
    if (end < lineEnd) {
        content += "…";
    }
    map.location.content = std::move(content);
    return map;
}

Lexer::Lexer(std::string text, std::optional<std::string> name)
    : source(std::make_shared<const TemplateSource>(TemplateSource{std::move(text), std::move(name)})) {}

namespace {

WhitespaceBehaviour::Behaviour markerBehaviour(char character) {
    if (character == '-') {
        return WhitespaceBehaviour::Behaviour::trim;
    }
    if (character == '+') {
        return WhitespaceBehaviour::Behaviour::keep;
    }
    return WhitespaceBehaviour::Behaviour::unspecified;
}

// Walks a template's text: `content` is what is left to scan and `range` the place of
// the current token in `originalContent`.
class Scanner {
public:
    explicit Scanner(std::string_view text) : originalContent(text), content(text) {}

    bool isEmpty() const { return content.empty(); }
    std::size_t position() const { return originalContent.size() - content.size(); }

    // Finds the next opening delimiter whose closer also follows. Returns its kind
    // ('{', '%' or '#') and sets `range` to the whole tag, or returns 0 when no tag
    // remains. An opener that is never closed is text, and the search goes on after it.
    char scanToNextTag() {
        std::size_t from = 0;
        while (true) {
            std::size_t open = content.find('{', from);
            if (open == std::string_view::npos || open + 1 >= content.size()) {
                return 0;
            }
            char next = content[open + 1];
            if (next == '{' || next == '%' || next == '#') {
                int kind = next == '{' ? 0 : next == '%' ? 1 : 2;
                const char* closer = kind == 0 ? "}}" : kind == 1 ? "%}" : "#}";
                // A closer missing once is missing for the rest of the text too, so
                // runs of unclosed openers cost no repeated searches.
                std::size_t close = closerMissing[kind] ? std::string_view::npos : content.find(closer, open + 2);
                if (close != std::string_view::npos) {
                    range = {position() + open, position() + close + 2};
                    return next;
                }
                closerMissing[kind] = true;
            }
            from = open + 1;
        }
    }

    // Takes the text up to `end`, an offset in the original text.
    std::string_view takeUntil(std::size_t end) {
        std::string_view taken = content.substr(0, end - position());
        content.remove_prefix(taken.size());
        return taken;
    }

    std::string_view takeRest() {
        std::string_view rest = content;
        content = {};
        return rest;
    }

    const std::string_view originalContent;
    std::string_view content;
    std::pair<std::size_t, std::size_t> range{0, 0};

private:
    bool closerMissing[3] = {false, false, false};
};

}  // namespace

std::vector<Token> Lexer::tokenize() const {
    std::vector<Token> tokens;
    Scanner scanner(source->text);
    while (!scanner.isEmpty()) {
        std::size_t start = scanner.position();
        char kindCharacter = scanner.scanToNextTag();
        if (kindCharacter == 0) {
            // No further tag: the rest, an unclosed delimiter included, is text.
            tokens.emplace_back(std::string(scanner.takeRest()), Token::Kind::text, source, start);
            break;
        }
        auto [open, close] = scanner.range;
        if (open > start) {
            tokens.emplace_back(std::string(scanner.takeUntil(open)), Token::Kind::text, source, start);
        }
        std::string_view tag = scanner.takeUntil(close);
        std::string_view inner = tag.substr(2, tag.size() - 4);
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
        tokens.emplace_back(trimSpaces(inner), kind, source, open, whitespace);
    }
    return tokens;
}

}  // namespace tintwork::stencil
