// The built-in tags: how each one reads its arguments and body.

#include "Expressions.h"
#include "Nodes.h"
#include "Text.h"
#include "template/Errors.h"
#include "template/Extension.h"
#include "template/TokenParser.h"

namespace tintwork::stencil {

void registerDefaultFilters(Extension& extension);

namespace {

std::vector<std::string> wordsFrom(const std::vector<std::string>& words, std::size_t begin, std::size_t end) {
    return std::vector<std::string>(words.begin() + static_cast<std::ptrdiff_t>(std::min(begin, words.size())),
                                    words.begin() + static_cast<std::ptrdiff_t>(std::min(end, words.size())));
}

std::string joined(const std::vector<std::string>& words) {
    std::string result;
    for (const std::string& word : words) {
        if (!result.empty()) {
            result += ' ';
        }
        result += word;
    }
    return result;
}

std::string tagNameOf(const Token& token) {
    return token.components().empty() ? std::string() : token.components().front();
}

// Takes the end tag that closes a body, or fails with "`<name>` was not found.".
Token expectEnd(TokenParser& parser, const std::string& name) {
    std::optional<Token> end = parser.nextToken();
    if (!end) {
        throw TemplateSyntaxError("`" + name + "` was not found.");
    }
    return *end;
}

class LoopBodyGuard {
public:
    explicit LoopBodyGuard(TokenParser& bodyParser) : parser(bodyParser) { parser.enterLoopBody(); }
    ~LoopBodyGuard() { parser.leaveLoopBody(); }
    LoopBodyGuard(const LoopBodyGuard&) = delete;
    LoopBodyGuard& operator=(const LoopBodyGuard&) = delete;

private:
    TokenParser& parser;
};

NodePtr parseFor(TokenParser& parser, const Token& token) {
    std::vector<std::string> words = token.components();
    std::optional<std::string> label;
    if (!words.empty() && words.front().size() > 1 && words.front().back() == ':') {
        label = words.front().substr(0, words.front().size() - 1);
        words.erase(words.begin());
    }
    const std::string syntax = "'for' statements should use the syntax: `for <x> in <y> [where <condition>]`.";
    auto in = std::find(words.begin(), words.end(), "in");
    if (words.size() < 4 || in == words.end() || in - words.begin() < 2) {
        throw TemplateSyntaxError(syntax);
    }
    auto inIndex = static_cast<std::size_t>(in - words.begin());
    std::vector<std::string> loopVariables;
    for (const std::string& name : smartSplit(joined(wordsFrom(words, 1, inIndex)), ',')) {
        std::string_view trimmed = text::trim(name);
        if (trimmed.empty()) {
            throw TemplateSyntaxError(syntax);
        }
        loopVariables.emplace_back(trimmed);
    }
    auto where = std::find(words.begin() + static_cast<std::ptrdiff_t>(inIndex), words.end(), "where");
    auto whereIndex = static_cast<std::size_t>(where - words.begin());
    std::vector<std::string> source = joinFilterWords(wordsFrom(words, inIndex + 1, whereIndex));
    if (source.size() != 1 || (where != words.end() && whereIndex + 1 >= words.size())) {
        throw TemplateSyntaxError(syntax);
    }
    ResolvablePtr resolvable = parser.compileResolvable(source.front(), token);
    ExpressionPtr condition;
    if (where != words.end()) {
        condition = parser.compileExpression(wordsFrom(words, whereIndex + 1, words.size()), token);
    }

    std::vector<NodePtr> nodes;
    std::vector<NodePtr> emptyNodes;
    {
        LoopBodyGuard body(parser);
        nodes = parser.parse(TokenParser::until({"endfor", "empty"}));
        Token end = expectEnd(parser, "endfor");
        if (tagNameOf(end) == "empty") {
            emptyNodes = parser.parse(TokenParser::until({"endfor"}));
            expectEnd(parser, "endfor");
        }
    }
    return std::make_shared<const ForNode>(std::move(resolvable), std::move(loopVariables), std::move(nodes),
                                           std::move(emptyNodes), std::move(condition), std::move(label), token);
}

NodePtr parseLoopTermination(TokenParser& parser, const Token& token) {
    const std::string name = tagNameOf(token);
    if (!parser.hasOpenedForTag()) {
        throw TemplateSyntaxError("'" + name + "' can be used only inside loop body");
    }
    const auto& words = token.components();
    if (words.size() > 2) {
        throw TemplateSyntaxError("'" + name + "' can accept only one parameter");
    }
    std::optional<std::string> label;
    if (words.size() == 2) {
        label = words[1];
    }
    return std::make_shared<const LoopTerminationNode>(name, std::move(label), token);
}

NodePtr parseIf(TokenParser& parser, const Token& token) {
    std::vector<IfCondition> conditions;
    ExpressionPtr expression = parser.compileExpression(wordsFrom(token.components(), 1, token.components().size()), token);
    bool hasElse = false;
    while (true) {
        std::vector<NodePtr> nodes =
            parser.parse(hasElse ? TokenParser::until({"endif"}) : TokenParser::until({"elif", "else", "endif"}));
        conditions.push_back({expression, std::move(nodes)});
        Token end = expectEnd(parser, "endif");
        std::string name = tagNameOf(end);
        if (name == "endif") {
            break;
        }
        if (name == "elif") {
            expression = parser.compileExpression(wordsFrom(end.components(), 1, end.components().size()), end);
        } else {
            expression = nullptr;
            hasElse = true;
        }
    }
    return std::make_shared<const IfNode>(std::move(conditions), token);
}

NodePtr parseIfNot(TokenParser& parser, const Token& token) {
    const auto& words = token.components();
    if (words.size() < 2) {
        throw TemplateSyntaxError("'ifnot' statements should use the following syntax 'ifnot condition'.");
    }
    ExpressionPtr expression = makeNotExpression(parser.compileExpression(wordsFrom(words, 1, words.size()), token));
    std::vector<IfCondition> conditions;
    conditions.push_back({expression, parser.parse(TokenParser::until({"else", "endif"}))});
    Token end = expectEnd(parser, "endif");
    if (tagNameOf(end) == "else") {
        conditions.push_back({nullptr, parser.parse(TokenParser::until({"endif"}))});
        expectEnd(parser, "endif");
    }
    return std::make_shared<const IfNode>(std::move(conditions), token);
}

NodePtr parseNow(TokenParser&, const Token& token) {
    const auto& words = token.components();
    if (words.size() > 2) {
        throw TemplateSyntaxError("'now' tags may only have one argument: the format string.");
    }
    std::string format = words.size() == 2 ? words[1] : std::string("\"yyyy-MM-dd 'at' HH:mm\"");
    return std::make_shared<const NowNode>(Variable(std::move(format)), token);
}

NodePtr parseInclude(TokenParser&, const Token& token) {
    const auto& words = token.components();
    if (words.size() != 2 && words.size() != 3) {
        throw TemplateSyntaxError("'include' tag requires one argument, the template file to be included. A second "
                                  "optional argument can be used to specify the context that will be passed to the "
                                  "included file");
    }
    std::optional<std::string> includeContext;
    if (words.size() == 3) {
        includeContext = words[2];
    }
    return std::make_shared<const IncludeNode>(Variable(words[1]), std::move(includeContext), token);
}

void collectBlocks(const std::vector<NodePtr>& nodes, std::map<std::string, std::shared_ptr<const BlockNode>>& blocks) {
    for (const NodePtr& node : nodes) {
        if (auto block = std::dynamic_pointer_cast<const BlockNode>(node)) {
            blocks.emplace(block->name, block);
            collectBlocks(block->nodes, blocks);
        }
    }
}

NodePtr parseExtends(TokenParser& parser, const Token& token) {
    const auto& words = token.components();
    if (words.size() != 2) {
        throw TemplateSyntaxError("'extends' takes one argument, the template file to be extended");
    }
    if (parser.hasExtends) {
        throw TemplateSyntaxError("'extends' cannot appear more than once in the same template");
    }
    parser.hasExtends = true;
    // The rest of the template only supplies blocks for the parent.
    std::vector<NodePtr> nodes = parser.parse();
    std::map<std::string, std::shared_ptr<const BlockNode>> blocks;
    collectBlocks(nodes, blocks);
    return std::make_shared<const ExtendsNode>(Variable(words[1]), std::move(blocks), token);
}

NodePtr parseBlock(TokenParser& parser, const Token& token) {
    const auto& words = token.components();
    if (words.size() != 2) {
        throw TemplateSyntaxError("'block' tag takes one argument, the block name");
    }
    std::vector<NodePtr> nodes = parser.parse(TokenParser::until({"endblock"}));
    expectEnd(parser, "endblock");
    return std::make_shared<const BlockNode>(words[1], std::move(nodes), token);
}

NodePtr parseFilter(TokenParser& parser, const Token& token) {
    const auto& words = token.components();
    if (words.size() != 2) {
        throw TemplateSyntaxError("'filter' tag takes one argument, the filter expression");
    }
    ResolvablePtr resolvable = parser.compileFilter("filter_value|" + words[1], token);
    std::vector<NodePtr> nodes = parser.parse(TokenParser::until({"endfilter"}));
    expectEnd(parser, "endfilter");
    return std::make_shared<const FilterNode>(std::move(resolvable), std::move(nodes), token);
}

}  // namespace

NodePtr parseVariableNode(TokenParser& parser, const Token& token) {
    if (token.contents.empty()) {
        throw TemplateSyntaxError("Missing variable name");
    }
    std::vector<std::string> words = joinFilterWords(token.components());
    auto ifWord = std::find(words.begin(), words.end(), "if");
    std::vector<std::string> valueWords(words.begin(), ifWord);
    if (valueWords.empty()) {
        throw TemplateSyntaxError("Variable tags must include at least 1 argument");
    }
    ExpressionPtr condition;
    ResolvablePtr elseExpression;
    if (ifWord != words.end()) {
        auto elseWord = std::find(ifWord, words.end(), "else");
        condition = parser.compileExpression(std::vector<std::string>(ifWord + 1, elseWord), token);
        if (elseWord != words.end()) {
            std::vector<std::string> elseWords(elseWord + 1, words.end());
            if (elseWords.empty()) {
                throw TemplateSyntaxError("Variable tags must include at least 1 argument");
            }
            elseExpression = parser.compileResolvable(joined(elseWords), token);
        }
    }
    if (valueWords.size() == 1) {
        return std::make_shared<const VariableNode>(parser.compileResolvable(valueWords.front(), token),
                                                    std::move(condition), std::move(elseExpression), token);
    }
    // Several words form a condition, printed as true or false.
    return std::make_shared<const VariableNode>(parser.compileExpression(valueWords, token), std::move(condition),
                                                std::move(elseExpression), token);
}

DefaultExtension::DefaultExtension() {
    registerTag("for", parseFor);
    registerTag("break", parseLoopTermination);
    registerTag("continue", parseLoopTermination);
    registerTag("if", parseIf);
    registerTag("ifnot", parseIfNot);
    registerTag("now", parseNow);
    registerTag("include", parseInclude);
    registerTag("extends", parseExtends);
    registerTag("block", parseBlock);
    registerTag("filter", parseFilter);
    registerDefaultFilters(*this);
}

}  // namespace tintwork::stencil
