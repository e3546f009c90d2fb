#pragma once
// The nodes a template is parsed into. Custom tags subclass Node or use SimpleNode.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "template/Context.h"
#include "template/Token.h"

namespace tintwork::stencil {

class Node {
public:
    explicit Node(std::optional<Token> sourceToken = std::nullopt) : token(std::move(sourceToken)) {}
    virtual ~Node() = default;

    // The node's text in a context. Throws TemplateSyntaxError on failure.
    virtual std::string render(Context& context) const = 0;
    // Appends the node's text; the engine calls this, and it defaults to render().
    virtual void renderInto(std::string& output, Context& context) const { output += render(context); }

    // The tag or variable token the node was parsed from.
    std::optional<Token> token;
};

using NodePtr = std::shared_ptr<const Node>;
// The name the template language gives to the node protocol.
using NodeType = Node;

// A node whose text comes from one function.
class SimpleNode : public Node {
public:
    using Handler = std::function<std::string(Context&)>;
    SimpleNode(Handler function, std::optional<Token> sourceToken = std::nullopt)
        : Node(std::move(sourceToken)), handler(std::move(function)) {}
    std::string render(Context& context) const override { return handler(context); }

    Handler handler;
};

// Renders nodes in order and joins their text; stops early after a break or continue,
// and attaches the failing node's token to an error that has none.
std::string renderNodes(const std::vector<NodePtr>& nodes, Context& context);
void renderNodesInto(std::string& output, const std::vector<NodePtr>& nodes, Context& context);

}  // namespace tintwork::stencil
