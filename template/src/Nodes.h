#pragma once
// The built-in nodes.

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "template/Node.h"
#include "template/Resolvable.h"
#include "template/Token.h"
#include "template/TokenParser.h"

namespace tintwork::stencil {

class TextNode : public Node {
public:
    TextNode(std::string text, TrimBehaviour trimBehaviour);
    std::string render(Context& context) const override;
    void renderInto(std::string& output, Context& context) const override;

    const std::string text;
    const TrimBehaviour trimBehaviour;

private:
    std::string trimmed;
};

class VariableNode : public Node {
public:
    VariableNode(ResolvablePtr variable, ExpressionPtr condition, ResolvablePtr elseExpression, Token token);
    // A printed condition such as {{ n == 1 }}.
    VariableNode(ExpressionPtr printedCondition, ExpressionPtr condition, ResolvablePtr elseExpression, Token token);
    std::string render(Context& context) const override;
    void renderInto(std::string& output, Context& context) const override;

    const ResolvablePtr variable;
    const ExpressionPtr printedCondition;
    const ExpressionPtr condition;
    const ResolvablePtr elseExpression;

private:
    Value value(Context& context) const;
};

class ForNode : public Node {
public:
    ForNode(ResolvablePtr resolvable, std::vector<std::string> loopVariables, std::vector<NodePtr> nodes,
            std::vector<NodePtr> emptyNodes, ExpressionPtr where, std::optional<std::string> label, Token token);
    std::string render(Context& context) const override;
    void renderInto(std::string& output, Context& context) const override;

    const ResolvablePtr resolvable;
    const std::vector<std::string> loopVariables;
    const std::vector<NodePtr> nodes;
    const std::vector<NodePtr> emptyNodes;
    const ExpressionPtr where;
    const std::optional<std::string> label;

private:
    void bind(Context& context, const Value& element) const;
};

class LoopTerminationNode : public Node {
public:
    LoopTerminationNode(std::string name, std::optional<std::string> label, Token token);
    std::string render(Context& context) const override;

    const std::string name;
    const std::optional<std::string> label;
};

struct IfCondition {
    ExpressionPtr expression;
    std::vector<NodePtr> nodes;
};

class IfNode : public Node {
public:
    IfNode(std::vector<IfCondition> conditions, Token token);
    std::string render(Context& context) const override;
    void renderInto(std::string& output, Context& context) const override;

    const std::vector<IfCondition> conditions;
};

class IncludeNode : public Node {
public:
    IncludeNode(Variable templateName, std::optional<std::string> includeContext, Token token);
    std::string render(Context& context) const override;

    const Variable templateName;
    const std::optional<std::string> includeContext;
};

class BlockNode : public Node {
public:
    BlockNode(std::string name, std::vector<NodePtr> nodes, Token token);
    std::string render(Context& context) const override;

    const std::string name;
    const std::vector<NodePtr> nodes;
};

class ExtendsNode : public Node {
public:
    ExtendsNode(Variable templateName, std::map<std::string, std::shared_ptr<const BlockNode>> blocks, Token token);
    std::string render(Context& context) const override;

    const Variable templateName;
    const std::map<std::string, std::shared_ptr<const BlockNode>> blocks;
};

class FilterNode : public Node {
public:
    FilterNode(ResolvablePtr resolvable, std::vector<NodePtr> nodes, Token token);
    std::string render(Context& context) const override;

    const ResolvablePtr resolvable;
    const std::vector<NodePtr> nodes;
};

class NowNode : public Node {
public:
    NowNode(Variable format, Token token);
    std::string render(Context& context) const override;

    const Variable format;
};

// Formats the current local time with a Unicode date pattern (yyyy-MM-dd 'at' HH:mm).
std::string formatCurrentDate(const std::string& pattern);

// Parses the contents of {{ ... }}.
NodePtr parseVariableNode(TokenParser& parser, const Token& token);

}  // namespace tintwork::stencil
