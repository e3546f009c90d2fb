#include "template/TokenParser.h"

#include "Expressions.h"
#include "Nodes.h"
#include "Text.h"
#include "template/Environment.h"
#include "template/Errors.h"

namespace tintwork::stencil {

TokenParser::TokenParser(std::vector<Token> source, const Environment& environment)
    : tokens(std::make_move_iterator(source.begin()), std::make_move_iterator(source.end())), env(environment) {}

std::vector<NodePtr> TokenParser::parse() { return parse(nullptr); }

namespace {

// Rethrows a syntax error with the token it arose in, unless it already names one.
template <class Function>
auto withToken(const Token& token, Function function) -> decltype(function()) {
    try {
        return function();
    } catch (TemplateSyntaxError& error) {
        if (!error.token) {
            error.token = token;
        }
        throw;
    }
}

TrimBehaviour::Trim markerTrim(WhitespaceBehaviour::Behaviour behaviour, bool isBlock, TrimBehaviour::Trim fallback) {
    switch (behaviour) {
    case WhitespaceBehaviour::Behaviour::trim:
        return TrimBehaviour::Trim::whitespaceAndOneNewLine;
    case WhitespaceBehaviour::Behaviour::keep:
        return TrimBehaviour::Trim::nothing;
    case WhitespaceBehaviour::Behaviour::unspecified:
        break;
    }
    // The environment's trimming applies next to block tags only.
    return isBlock ? fallback : TrimBehaviour::Trim::nothing;
}

}  // namespace

TrimBehaviour::Trim TokenParser::leadingTrim() const {
    if (!previousKind || *previousKind == Token::Kind::text) {
        return TrimBehaviour::Trim::nothing;
    }
    return markerTrim(previousWhiteSpace.value_or(WhitespaceBehaviour::Behaviour::unspecified),
                      *previousKind == Token::Kind::block, env.trimBehaviour.leading);
}

TrimBehaviour::Trim TokenParser::trailingTrim(const Token* next) const {
    if (next == nullptr || next->kind == Token::Kind::text) {
        return TrimBehaviour::Trim::nothing;
    }
    auto behaviour = next->whitespace ? next->whitespace->leading : WhitespaceBehaviour::Behaviour::unspecified;
    return markerTrim(behaviour, next->kind == Token::Kind::block, env.trimBehaviour.trailing);
}

std::vector<NodePtr> TokenParser::parse(const ParseUntil& until) {
    // Bodies nest through the tags that parse them; a bound keeps the stack safe.
    if (nestingDepth >= maximumNestingDepth) {
        throw TemplateSyntaxError("Tags are nested more than " + std::to_string(maximumNestingDepth) + " levels deep");
    }
    struct DepthGuard {
        int& depth;
        explicit DepthGuard(int& value) : depth(++value) {}
        ~DepthGuard() { --depth; }
    } guard(nestingDepth);
    std::vector<NodePtr> nodes;
    while (!tokens.empty()) {
        const Token& front = tokens.front();
        if (front.kind == Token::Kind::block && until && until(*this, front)) {
            return nodes;
        }
        if (front.kind == Token::Kind::text) {
            TrimBehaviour trim{leadingTrim(), trailingTrim(tokens.size() > 1 ? &tokens[1] : nullptr)};
            Token token = *nextToken();
            nodes.push_back(std::make_shared<const TextNode>(std::move(token.contents), trim));
            continue;
        }
        Token token = *nextToken();
        switch (token.kind) {
        case Token::Kind::variable:
            nodes.push_back(withToken(token, [&] { return parseVariableNode(*this, token); }));
            break;
        case Token::Kind::block: {
            const std::vector<std::string>& words = token.components();
            std::string tagName = words.empty() ? std::string() : words.front();
            // A label such as "outer:" stands before a for tag.
            if (tagName.size() > 1 && tagName.back() == ':' && words.size() > 1 && words[1] == "for") {
                tagName = "for";
            }
            const TagParser* tag = env.findTag(tagName);
            if (tag == nullptr) {
                throw TemplateSyntaxError("Unknown template tag '" + text::excerpt(tagName) + "'", token);
            }
            NodePtr node = withToken(token, [&] { return (*tag)(*this, token); });
            if (node) {
                nodes.push_back(std::move(node));
            }
            break;
        }
        case Token::Kind::comment:
        case Token::Kind::text:
            break;
        }
    }
    return nodes;
}

TokenParser::ParseUntil TokenParser::until(std::vector<std::string> tagNames) {
    return [names = std::move(tagNames)](const TokenParser&, const Token& token) {
        const auto& words = token.components();
        if (words.empty()) {
            return false;
        }
        for (const std::string& name : names) {
            if (words.front() == name) {
                return true;
            }
        }
        return false;
    };
}

std::optional<Token> TokenParser::nextToken() {
    if (tokens.empty()) {
        return std::nullopt;
    }
    Token token = std::move(tokens.front());
    tokens.pop_front();
    if (token.kind != Token::Kind::text) {
        previousWhiteSpace = token.whitespace ? token.whitespace->trailing : WhitespaceBehaviour::Behaviour::unspecified;
    }
    previousKind = token.kind;
    parsedTokens.push_back(token);
    return token;
}

const Token* TokenParser::peekToken() const { return tokens.empty() ? nullptr : &tokens.front(); }

void TokenParser::prependToken(Token token) { tokens.push_front(std::move(token)); }

ResolvablePtr TokenParser::compileFilter(std::string_view expression, const Token& containingToken) const {
    return withToken(containingToken,
                     [&]() -> ResolvablePtr { return std::make_shared<const FilterExpression>(expression, env); });
}

ResolvablePtr TokenParser::compileResolvable(std::string_view expression, const Token& containingToken) const {
    std::size_t dots = text::findOutsideQuotes(expression, "...");
    if (dots != std::string_view::npos && dots > 0 && dots + 3 < expression.size()) {
        return std::make_shared<const RangeVariable>(compileFilter(expression.substr(0, dots), containingToken),
                                                     compileFilter(expression.substr(dots + 3), containingToken));
    }
    return compileFilter(expression, containingToken);
}

ExpressionPtr TokenParser::compileExpression(const std::vector<std::string>& components,
                                             const Token& containingToken) const {
    return withToken(containingToken, [&] { return parseIfExpression(components, *this, containingToken); });
}

}  // namespace tintwork::stencil
