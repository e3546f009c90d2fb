#pragma once
// Tokens cut from a template's text, with their place in the source.

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tintwork::stencil {

// What a whitespace-control marker inside a delimiter asks for on one side.
struct WhitespaceBehaviour {
    enum class Behaviour { unspecified, trim, keep };
    Behaviour leading = Behaviour::unspecified;
    Behaviour trailing = Behaviour::unspecified;
};

// How the text around tags is trimmed. `leading` acts on the start of a text (the text
// after a tag), `trailing` on its end (the text before a tag).
struct TrimBehaviour {
    enum class Trim { nothing, whitespace, whitespaceAndOneNewLine };
    Trim leading = Trim::nothing;
    Trim trailing = Trim::nothing;

    // Leave all text as it is (the default).
    static TrimBehaviour nothing() { return {Trim::nothing, Trim::nothing}; }
    // Blanks before a block tag, blanks and one line feed after it.
    static TrimBehaviour smart() { return {Trim::whitespaceAndOneNewLine, Trim::whitespace}; }
    // Blanks and one line feed on both sides of a block tag.
    static TrimBehaviour all() { return {Trim::whitespaceAndOneNewLine, Trim::whitespaceAndOneNewLine}; }

    friend bool operator==(const TrimBehaviour&, const TrimBehaviour&) = default;
};

// Applies one trim level to the start or end of a text.
std::string applyLeadingTrim(std::string text, TrimBehaviour::Trim trim);
std::string applyTrailingTrim(std::string text, TrimBehaviour::Trim trim);

// The text a template was cut from, shared by all of its tokens, so that a token costs
// its own contents and an offset, whatever the length of its line.
struct TemplateSource {
    std::string text;
    std::optional<std::string> filename;
};

// The line a token starts on: its number (from 1), the token's column (from 0, in
// characters) and an excerpt of the line around the token, short even when the line
// is not, with the token's column inside the excerpt.
struct SourceLocation {
    std::string content;
    std::size_t lineNumber = 0;
    std::ptrdiff_t lineOffset = 0;
    std::size_t contentOffset = 0;
};

struct SourceMap {
    std::optional<std::string> filename;
    SourceLocation location;
};

class Token {
public:
    enum class Kind { text, variable, comment, block };

    Token(std::string contents, Kind kind, std::shared_ptr<const TemplateSource> source = nullptr,
          std::size_t offset = 0, std::optional<WhitespaceBehaviour> whitespace = std::nullopt);

    // The contents split at blanks; quoted strings with blanks stay one word.
    const std::vector<std::string>& components() const { return words; }

    // Where the token stands, worked out from its offset when asked (for error texts).
    SourceMap sourceMap() const;

    std::string contents;
    Kind kind;
    // The template text and the token's byte offset in it (its opening delimiter).
    std::shared_ptr<const TemplateSource> source;
    std::size_t offset = 0;
    std::optional<WhitespaceBehaviour> whitespace;

private:
    std::vector<std::string> words;
};

// Splits at `separator` outside single or double quotes.
std::vector<std::string> smartSplit(const std::string& text, char separator = ' ');

// Cuts a template's text into tokens.
class Lexer {
public:
    explicit Lexer(std::string templateString, std::optional<std::string> templateName = std::nullopt);
    std::vector<Token> tokenize() const;

    const std::shared_ptr<const TemplateSource> source;
};

}  // namespace tintwork::stencil
