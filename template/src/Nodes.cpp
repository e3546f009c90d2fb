#include "Nodes.h"

#include "RenderState.h"
#include "Text.h"
#include "template/Environment.h"
#include "template/Errors.h"

namespace tintwork::stencil {

void countRenderStep(RenderState& state, std::uint64_t steps) {
    state.steps += steps;
    if (state.steps > state.stepLimit) {
        throw TemplateSyntaxError("Rendering stopped after " + std::to_string(state.stepLimit) + " steps");
    }
}

void renderNodesInto(std::string& output, const std::vector<NodePtr>& nodes, Context& context) {
    RenderState& state = context.state();
    for (const NodePtr& node : nodes) {
        countRenderStep(state);
        if (output.size() > maximumOutputSize) {
            throw TemplateSyntaxError("Rendering stopped: the output exceeds " +
                                      std::to_string(maximumOutputSize >> 20) + " MB");
        }
        try {
            node->renderInto(output, context);
        } catch (TemplateSyntaxError& error) {
            if (!error.token && node->token) {
                error.token = node->token;
            }
            throw;
        }
        if (state.termination != RenderState::Termination::none) {
            return;
        }
    }
}

std::string renderNodes(const std::vector<NodePtr>& nodes, Context& context) {
    std::string output;
    renderNodesInto(output, nodes, context);
    return output;
}

namespace {

// Counts include and extends nesting for the duration of one render.
class NestingGuard {
public:
    explicit NestingGuard(Context& context, const std::string& name) : state(context.state()) {
        if (state.nestingDepth >= maximumNestingDepth) {
            throw TemplateSyntaxError("Template '" + text::excerpt(name) + "' is nested more than " +
                                      std::to_string(maximumNestingDepth) +
                                      " levels deep; does it include or extend itself?");
        }
        ++state.nestingDepth;
    }
    ~NestingGuard() { --state.nestingDepth; }
    NestingGuard(const NestingGuard&) = delete;
    NestingGuard& operator=(const NestingGuard&) = delete;

private:
    RenderState& state;
};

std::string resolveTemplateName(const Variable& templateName, Context& context) {
    Value name = templateName.resolve(context);
    const std::string* text = name.asString();
    if (text == nullptr) {
        throw TemplateSyntaxError("'" + text::excerpt(templateName.variable) + "' could not be resolved as a string");
    }
    return *text;
}

}  // namespace

// Text

TextNode::TextNode(std::string theText, TrimBehaviour theTrimBehaviour)
    : text(std::move(theText)), trimBehaviour(theTrimBehaviour),
      trimmed(applyTrailingTrim(applyLeadingTrim(text, theTrimBehaviour.leading), theTrimBehaviour.trailing)) {}

std::string TextNode::render(Context&) const { return trimmed; }

void TextNode::renderInto(std::string& output, Context&) const { output += trimmed; }

// Variable

VariableNode::VariableNode(ResolvablePtr theVariable, ExpressionPtr theCondition, ResolvablePtr theElseExpression, Token theToken)
    : Node(std::move(theToken)), variable(std::move(theVariable)), condition(std::move(theCondition)),
      elseExpression(std::move(theElseExpression)) {}

VariableNode::VariableNode(ExpressionPtr thePrintedCondition, ExpressionPtr theCondition, ResolvablePtr theElseExpression,
                           Token theToken)
    : Node(std::move(theToken)), printedCondition(std::move(thePrintedCondition)), condition(std::move(theCondition)),
      elseExpression(std::move(theElseExpression)) {}

Value VariableNode::value(Context& context) const {
    if (condition && !condition->evaluate(context)) {
        return elseExpression ? elseExpression->resolve(context) : Value();
    }
    if (printedCondition) {
        return Value(printedCondition->evaluate(context));
    }
    return variable->resolve(context);
}

std::string VariableNode::render(Context& context) const { return value(context).description(); }

void VariableNode::renderInto(std::string& output, Context& context) const {
    Value result = value(context);
    if (const std::string* textValue = result.asString()) {
        output += *textValue;
    } else {
        output += result.description();
    }
}

// For

namespace {

// The forloop value of one running loop; its counters move as the loop advances.
class ForLoopRecord : public Record {
public:
    ForLoopRecord(std::size_t count, std::optional<std::string> loopLabel, std::optional<Value> enclosing)
        : length(count), label(std::move(loopLabel)), parent(std::move(enclosing)) {}

    std::optional<Value> field(std::string_view name) const override {
        if (name == "first") {
            return Value(index == 0);
        }
        if (name == "last") {
            return Value(index + 1 == length);
        }
        if (name == "counter") {
            return Value(static_cast<std::int64_t>(index + 1));
        }
        if (name == "counter0") {
            return Value(static_cast<std::int64_t>(index));
        }
        if (name == "length") {
            return Value(static_cast<std::int64_t>(length));
        }
        if (name == "label") {
            return label ? std::optional<Value>(Value(*label)) : std::nullopt;
        }
        // forloop.<label> reaches an enclosing labelled loop.
        if (parent) {
            if (const auto* outer = dynamic_cast<const ForLoopRecord*>(parent->asRecord())) {
                if (outer->label && *outer->label == name) {
                    return *parent;
                }
                return outer->field(name);
            }
        }
        return std::nullopt;
    }

    std::vector<std::string> fieldNames() const override {
        std::vector<std::string> names = {"first", "last", "counter", "counter0", "length"};
        if (label) {
            names.emplace_back("label");
        }
        return names;
    }

    std::string typeName() const override { return "ForLoop"; }

    std::size_t index = 0;
    const std::size_t length;
    const std::optional<std::string> label;
    const std::optional<Value> parent;
};

// Marks a loop as running for break and continue, for the duration of the loop.
class RunningLoopGuard {
public:
    RunningLoopGuard(RenderState& renderState, const std::optional<std::string>& label) : state(renderState) {
        state.runningLoops.push_back(label);
    }
    ~RunningLoopGuard() { state.runningLoops.pop_back(); }
    RunningLoopGuard(const RunningLoopGuard&) = delete;
    RunningLoopGuard& operator=(const RunningLoopGuard&) = delete;

private:
    RenderState& state;
};

List pairs(const Map& map) {
    List entries;
    entries.reserve(map.size());
    for (const auto& [key, value] : map) {
        entries.emplace_back(List{Value(key), value});
    }
    return entries;
}

}  // namespace

ForNode::ForNode(ResolvablePtr theResolvable, std::vector<std::string> theLoopVariables, std::vector<NodePtr> theNodes,
                 std::vector<NodePtr> theEmptyNodes, ExpressionPtr theWhere, std::optional<std::string> theLabel, Token theToken)
    : Node(std::move(theToken)), resolvable(std::move(theResolvable)), loopVariables(std::move(theLoopVariables)),
      nodes(std::move(theNodes)), emptyNodes(std::move(theEmptyNodes)), where(std::move(theWhere)), label(std::move(theLabel)) {}

void ForNode::bind(Context& context, const Value& element) const {
    if (loopVariables.size() == 1) {
        context.set(loopVariables.front(), element);
        return;
    }
    const List* values = element.asList();
    // A record gives its field values in field order, as a tuple gives its members.
    List fieldValues;
    if (const Record* record = element.asRecord()) {
        for (const std::string& field : record->fieldNames()) {
            fieldValues.push_back(record->field(field).value_or(Value()));
        }
        values = &fieldValues;
    }
    if (values == nullptr || values->size() < loopVariables.size()) {
        throw TemplateSyntaxError("Tuple '" + element.description() + "' has less values than loop variables");
    }
    for (std::size_t index = 0; index < loopVariables.size(); ++index) {
        context.set(loopVariables[index], (*values)[index]);
    }
}

std::string ForNode::render(Context& context) const {
    std::string output;
    renderInto(output, context);
    return output;
}

void ForNode::renderInto(std::string& output, Context& context) const {
    Value source = resolvable->resolve(context);
    // The elements: a list as it is; map entries and record fields as (key, value)
    // pairs in key order; a string's characters. Anything else iterates nothing.
    Value elements;
    switch (source.kind()) {
    case Value::Kind::list:
        elements = source;
        break;
    case Value::Kind::map:
        elements = Value(pairs(*source.asMap()));
        break;
    case Value::Kind::record: {
        List fields;
        const Record& record = *source.asRecord();
        for (const std::string& name : record.fieldNames()) {
            fields.emplace_back(List{Value(name), record.field(name).value_or(Value())});
        }
        elements = Value(std::move(fields));
        break;
    }
    case Value::Kind::string: {
        if (text::characterCount(*source.asString()) > maximumCollectionSize) {
            throw TemplateSyntaxError("Text of more than " + std::to_string(maximumCollectionSize) +
                                      " characters can't be iterated");
        }
        List characters;
        for (std::string& character : text::characters(*source.asString())) {
            characters.emplace_back(std::move(character));
        }
        elements = Value(std::move(characters));
        break;
    }
    default:
        elements = Value(List{});
        break;
    }

    // Visiting an element is work even when the body is empty.
    countRenderStep(context.state(), elements.asList()->size());
    std::optional<Value> parent = context.lookup("forloop");
    ScopeGuard scope(context);
    const List* list = elements.asList();
    List kept;
    if (where) {
        for (const Value& element : *list) {
            bind(context, element);
            if (where->evaluate(context)) {
                kept.push_back(element);
            }
        }
        list = &kept;
    }
    if (list->empty()) {
        context.pop();
        context.push();
        renderNodesInto(output, emptyNodes, context);
        return;
    }

    auto forloop = std::make_shared<ForLoopRecord>(list->size(), label, parent);
    context.set("forloop", Value(RecordPtr(forloop)));
    if (label && !context.lookup(*label)) {
        context.set(*label, Value(RecordPtr(forloop)));
    }
    RenderState& state = context.state();
    RunningLoopGuard running(state, label);
    // A single loop variable is written through its slot in the loop's scope.
    Value* single = loopVariables.size() == 1 ? &context.slot(loopVariables.front()) : nullptr;
    for (std::size_t index = 0; index < list->size(); ++index) {
        forloop->index = index;
        if (single != nullptr) {
            *single = (*list)[index];
        } else {
            bind(context, (*list)[index]);
        }
        renderNodesInto(output, nodes, context);
        if (state.termination == RenderState::Termination::none) {
            continue;
        }
        if (state.terminationLabel && state.terminationLabel != label) {
            // Meant for an enclosing loop: stop here and let it travel on.
            return;
        }
        bool stop = state.termination == RenderState::Termination::breakLoop;
        state.termination = RenderState::Termination::none;
        state.terminationLabel.reset();
        if (stop) {
            return;
        }
    }
}

// Break and continue

LoopTerminationNode::LoopTerminationNode(std::string theName, std::optional<std::string> theLabel, Token theToken)
    : Node(std::move(theToken)), name(std::move(theName)), label(std::move(theLabel)) {}

std::string LoopTerminationNode::render(Context& context) const {
    RenderState& state = context.state();
    if (state.runningLoops.empty()) {
        throw TemplateSyntaxError("No loop is currently running");
    }
    if (label) {
        bool found = false;
        for (const auto& running : state.runningLoops) {
            found = found || running == label;
        }
        if (!found) {
            throw TemplateSyntaxError("No loop labeled '" + text::excerpt(*label) + "' is currently running");
        }
    }
    state.termination =
        name == "break" ? RenderState::Termination::breakLoop : RenderState::Termination::continueLoop;
    state.terminationLabel = label;
    return "";
}

// If

IfNode::IfNode(std::vector<IfCondition> theConditions, Token theToken)
    : Node(std::move(theToken)), conditions(std::move(theConditions)) {}

std::string IfNode::render(Context& context) const {
    std::string output;
    renderInto(output, context);
    return output;
}

void IfNode::renderInto(std::string& output, Context& context) const {
    for (const IfCondition& condition : conditions) {
        if (!condition.expression || condition.expression->evaluate(context)) {
            renderNodesInto(output, condition.nodes, context);
            return;
        }
    }
}

// Include

IncludeNode::IncludeNode(Variable theTemplateName, std::optional<std::string> theIncludeContext, Token theToken)
    : Node(std::move(theToken)), templateName(std::move(theTemplateName)), includeContext(std::move(theIncludeContext)) {}

std::string IncludeNode::render(Context& context) const {
    std::string name = resolveTemplateName(templateName, context);
    NestingGuard nesting(context, name);
    std::shared_ptr<const Template> included = context.environment().loadTemplate(name);
    Map scope;
    if (includeContext) {
        // The named value becomes the included template's innermost scope; a value
        // that is no map or record adds nothing.
        Value value = Variable(*includeContext).resolve(context);
        if (const Map* map = value.asMap()) {
            scope = *map;
        } else if (const Record* record = value.asRecord()) {
            for (const std::string& field : record->fieldNames()) {
                scope[field] = record->field(field).value_or(Value());
            }
        }
    }
    ScopeGuard guard(context, std::move(scope));
    try {
        return renderNodes(included->nodes(), context);
    } catch (TemplateSyntaxError& error) {
        if (token) {
            error.stackTrace.push_back(*token);
        }
        throw;
    }
}

// Blocks and extends

BlockNode::BlockNode(std::string theName, std::vector<NodePtr> theNodes, Token theToken)
    : Node(std::move(theToken)), name(std::move(theName)), nodes(std::move(theNodes)) {}

namespace {

// Renders one link of a block's chain of overrides; block.super renders the next
// link when first used.
std::string renderBlockChain(const std::vector<const BlockNode*>& chain, std::size_t index, Context& context) {
    Value super = Value("");
    if (index + 1 < chain.size()) {
        super = Value(std::make_shared<const LazyValueWrapper>(
            [chain, index](Context& renderContext) { return Value(renderBlockChain(chain, index + 1, renderContext)); }));
    }
    RenderState& state = context.state();
    Map block = state.renderedBlocks;
    block["super"] = std::move(super);
    ScopeGuard scope(context, Map{{"block", Value(std::move(block))}});
    return renderNodes(chain[index]->nodes, context);
}

}  // namespace

std::string BlockNode::render(Context& context) const {
    RenderState& state = context.state();
    std::vector<const BlockNode*> chain;
    if (state.blockContext) {
        auto found = state.blockContext->blocks.find(name);
        if (found != state.blockContext->blocks.end()) {
            chain = found->second;
        }
    }
    chain.push_back(this);
    std::string output = renderBlockChain(chain, 0, context);
    state.renderedBlocks[name] = Value(output);
    return output;
}

ExtendsNode::ExtendsNode(Variable theTemplateName, std::map<std::string, std::shared_ptr<const BlockNode>> theBlocks,
                         Token theToken)
    : Node(std::move(theToken)), templateName(std::move(theTemplateName)), blocks(std::move(theBlocks)) {}

std::string ExtendsNode::render(Context& context) const {
    std::string name = resolveTemplateName(templateName, context);
    NestingGuard nesting(context, name);
    std::shared_ptr<const Template> parent = context.environment().loadTemplate(name);
    RenderState& state = context.state();
    // Blocks of more derived templates come first, so they win over ours.
    auto blockContext = std::make_shared<BlockContext>(state.blockContext ? *state.blockContext : BlockContext{});
    for (const auto& [blockName, block] : blocks) {
        blockContext->blocks[blockName].push_back(block.get());
    }
    std::shared_ptr<BlockContext> previous = std::exchange(state.blockContext, blockContext);
    try {
        std::string output = renderNodes(parent->nodes(), context);
        state.blockContext = previous;
        return output;
    } catch (TemplateSyntaxError& error) {
        state.blockContext = previous;
        if (token) {
            error.stackTrace.push_back(*token);
        }
        throw;
    } catch (...) {
        state.blockContext = previous;
        throw;
    }
}

// Filter

FilterNode::FilterNode(ResolvablePtr theResolvable, std::vector<NodePtr> theNodes, Token theToken)
    : Node(std::move(theToken)), resolvable(std::move(theResolvable)), nodes(std::move(theNodes)) {}

std::string FilterNode::render(Context& context) const {
    std::string body = renderNodes(nodes, context);
    ScopeGuard scope(context, Map{{"filter_value", Value(std::move(body))}});
    return resolvable->resolve(context).description();
}

// Now

NowNode::NowNode(Variable theFormat, Token theToken) : Node(std::move(theToken)), format(std::move(theFormat)) {}

std::string NowNode::render(Context& context) const {
    return formatCurrentDate(format.resolve(context).description());
}

}  // namespace tintwork::stencil
