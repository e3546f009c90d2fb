#pragma once
// Turns tokens into nodes. Tag parsers receive it to read their body and to compile
// their arguments.

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "template/Node.h"
#include "template/Resolvable.h"
#include "template/Token.h"

namespace tintwork::stencil {

class Environment;

class TokenParser {
public:
    // Tells whether a block token ends the body being parsed.
    using ParseUntil = std::function<bool(const TokenParser& parser, const Token& token)>;

    TokenParser(std::vector<Token> tokens, const Environment& environment);

    // Parses all remaining tokens.
    std::vector<NodePtr> parse();
    // Parses until a block token for which `until` is true; that token is left as the
    // next one. Without such a token, parses to the end.
    std::vector<NodePtr> parse(const ParseUntil& until);
    // A ParseUntil that stops at any of the tag names.
    static ParseUntil until(std::vector<std::string> tagNames);

    // Takes the next token, or nullopt at the end.
    std::optional<Token> nextToken();
    const Token* peekToken() const;
    void prependToken(Token token);

    // A variable with filters, e.g. name|uppercase.
    ResolvablePtr compileFilter(std::string_view expression, const Token& containingToken) const;
    // A range (a...b) or else a variable with filters.
    ResolvablePtr compileResolvable(std::string_view expression, const Token& containingToken) const;
    // An `if` expression from words such as {"a", "and", "not", "b"}.
    ExpressionPtr compileExpression(const std::vector<std::string>& components, const Token& containingToken) const;

    const Environment& environment() const { return env; }

    // Loop nesting while parsing, for break and continue.
    bool hasOpenedForTag() const { return openLoops > 0; }
    void enterLoopBody() { ++openLoops; }
    void leaveLoopBody() { --openLoops; }
    // Whether an extends tag has been parsed in this template.
    bool hasExtends = false;

    std::deque<Token> tokens;
    std::vector<Token> parsedTokens;
    std::optional<WhitespaceBehaviour::Behaviour> previousWhiteSpace;

private:
    TrimBehaviour::Trim leadingTrim() const;
    TrimBehaviour::Trim trailingTrim(const Token* next) const;

    const Environment& env;
    int openLoops = 0;
    int nestingDepth = 0;
    std::optional<Token::Kind> previousKind;
    static constexpr int maximumNestingDepth = 200;
};

}  // namespace tintwork::stencil
