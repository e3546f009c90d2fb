#include <functional>

#include "Expressions.h"
#include "Text.h"
#include "template/Errors.h"
#include "template/TokenParser.h"

namespace tintwork::stencil {

namespace {

class StaticExpression : public Expression {
public:
    explicit StaticExpression(bool constant) : value(constant) {}
    bool evaluate(Context&) const override { return value; }
    std::string description() const override { return value ? "true" : "false"; }

    const bool value;
};

class VariableExpression : public Expression {
public:
    VariableExpression(ResolvablePtr resolvable, std::string name) : variable(std::move(resolvable)), text(std::move(name)) {}
    bool evaluate(Context& context) const override { return variable->resolve(context).isTruthy(); }
    std::string description() const override { return "(variable: " + text + ")"; }

    const ResolvablePtr variable;
    const std::string text;
};

// The value an operand compares with: a variable's value, or a sub-expression's truth.
Value operandValue(const Expression& expression, Context& context) {
    if (const auto* variable = dynamic_cast<const VariableExpression*>(&expression)) {
        return variable->variable->resolve(context);
    }
    return Value(expression.evaluate(context));
}

class NotExpression : public Expression {
public:
    explicit NotExpression(ExpressionPtr negated) : expression(std::move(negated)) {}
    bool evaluate(Context& context) const override { return !expression->evaluate(context); }
    std::string description() const override { return "not " + expression->description(); }

    const ExpressionPtr expression;
};

class BinaryExpression : public Expression {
public:
    BinaryExpression(std::string name, ExpressionPtr left, ExpressionPtr right)
        : op(std::move(name)), lhs(std::move(left)), rhs(std::move(right)) {}
    std::string description() const override {
        return "(" + lhs->description() + " " + op + " " + rhs->description() + ")";
    }

    const std::string op;
    const ExpressionPtr lhs;
    const ExpressionPtr rhs;
};

class InExpression : public BinaryExpression {
public:
    InExpression(ExpressionPtr left, ExpressionPtr right) : BinaryExpression("in", std::move(left), std::move(right)) {}
    bool evaluate(Context& context) const override {
        Value needle = operandValue(*lhs, context);
        Value haystack = operandValue(*rhs, context);
        if (const List* list = haystack.asList()) {
            for (const Value& element : *list) {
                if (element == needle) {
                    return true;
                }
            }
            return false;
        }
        if (const std::string* textValue = haystack.asString()) {
            const std::string* part = needle.asString();
            return part != nullptr && textValue->find(*part) != std::string::npos;
        }
        if (const Map* map = haystack.asMap()) {
            const std::string* key = needle.asString();
            return key != nullptr && map->find(*key) != map->end();
        }
        return false;
    }
};

class OrExpression : public BinaryExpression {
public:
    OrExpression(ExpressionPtr left, ExpressionPtr right) : BinaryExpression("or", std::move(left), std::move(right)) {}
    bool evaluate(Context& context) const override { return lhs->evaluate(context) || rhs->evaluate(context); }
};

class AndExpression : public BinaryExpression {
public:
    AndExpression(ExpressionPtr left, ExpressionPtr right) : BinaryExpression("and", std::move(left), std::move(right)) {}
    bool evaluate(Context& context) const override { return lhs->evaluate(context) && rhs->evaluate(context); }
};

class EqualityExpression : public BinaryExpression {
public:
    EqualityExpression(ExpressionPtr left, ExpressionPtr right, std::string name = "==")
        : BinaryExpression(std::move(name), std::move(left), std::move(right)) {}
    bool evaluate(Context& context) const override { return operandValue(*lhs, context) == operandValue(*rhs, context); }
};

class InequalityExpression : public EqualityExpression {
public:
    InequalityExpression(ExpressionPtr left, ExpressionPtr right)
        : EqualityExpression(std::move(left), std::move(right), "!=") {}
    bool evaluate(Context& context) const override { return !EqualityExpression::evaluate(context); }
};

class NumericExpression : public BinaryExpression {
public:
    using BinaryExpression::BinaryExpression;
    bool evaluate(Context& context) const override {
        Value left = operandValue(*lhs, context);
        Value right = operandValue(*rhs, context);
        if (!left.isNumber() || !right.isNumber()) {
            throw TemplateSyntaxError("'" + op + "' can only compare numbers, not " + left.debugDescription() +
                                      " and " + right.debugDescription());
        }
        if (left.asInteger() != nullptr && right.asInteger() != nullptr) {
            return compare(*left.asInteger(), *right.asInteger());
        }
        return compare(*left.toDouble(), *right.toDouble());
    }

private:
    template <class Number>
    bool compare(Number left, Number right) const {
        if (op == ">") {
            return left > right;
        }
        if (op == ">=") {
            return left >= right;
        }
        if (op == "<") {
            return left < right;
        }
        return left <= right;
    }
};

class MoreThanExpression : public NumericExpression {
public:
    MoreThanExpression(ExpressionPtr left, ExpressionPtr right) : NumericExpression(">", std::move(left), std::move(right)) {}
};

class MoreThanEqualExpression : public NumericExpression {
public:
    MoreThanEqualExpression(ExpressionPtr left, ExpressionPtr right)
        : NumericExpression(">=", std::move(left), std::move(right)) {}
};

class LessThanExpression : public NumericExpression {
public:
    LessThanExpression(ExpressionPtr left, ExpressionPtr right) : NumericExpression("<", std::move(left), std::move(right)) {}
};

class LessThanEqualExpression : public NumericExpression {
public:
    LessThanEqualExpression(ExpressionPtr left, ExpressionPtr right)
        : NumericExpression("<=", std::move(left), std::move(right)) {}
};

using InfixBuilder = std::function<ExpressionPtr(ExpressionPtr, ExpressionPtr)>;

template <class Type>
InfixBuilder infix() {
    return [](ExpressionPtr left, ExpressionPtr right) { return std::make_shared<const Type>(std::move(left), std::move(right)); };
}

struct Operator {
    const char* name;
    int power;
    bool prefix;
    InfixBuilder build;
};

const std::vector<Operator>& operators() {
    static const std::vector<Operator> table = {
        {"in", 5, false, infix<InExpression>()},
        {"or", 6, false, infix<OrExpression>()},
        {"and", 7, false, infix<AndExpression>()},
        {"not", 8, true, nullptr},
        {"==", 10, false, infix<EqualityExpression>()},
        {"!=", 10, false, infix<InequalityExpression>()},
        {">", 10, false, infix<MoreThanExpression>()},
        {">=", 10, false, infix<MoreThanEqualExpression>()},
        {"<", 10, false, infix<LessThanExpression>()},
        {"<=", 10, false, infix<LessThanEqualExpression>()},
    };
    return table;
}

struct IfToken {
    enum class Kind { infix, prefix, variable, subExpression, end };
    Kind kind = Kind::end;
    std::string name;
    const Operator* op = nullptr;
    ExpressionPtr expression;

    int bindingPower() const { return op != nullptr ? op->power : 0; }
};

const std::string errorPrefix = "'if' expression error: ";

class IfExpressionParser {
public:
    explicit IfExpressionParser(std::vector<IfToken> parsed) : tokens(std::move(parsed)) {}

    ExpressionPtr parse() {
        ExpressionPtr expression = parseExpression(0);
        if (current().kind != IfToken::Kind::end) {
            throw TemplateSyntaxError(errorPrefix + "dangling token");
        }
        return expression;
    }

private:
    const IfToken& current() const {
        static const IfToken end;
        return position < tokens.size() ? tokens[position] : end;
    }

    ExpressionPtr parseExpression(int rightBindingPower) {
        // Each prefix operator nests one level; a long run of them must not exhaust the stack.
        if (++depth > maximumDepth) {
            throw TemplateSyntaxError(errorPrefix + "expression is nested too deeply");
        }
        const IfToken& first = current();
        ++position;
        ExpressionPtr left = nullDenotation(first);
        while (rightBindingPower < current().bindingPower()) {
            const IfToken& next = current();
            ++position;
            left = leftDenotation(next, std::move(left));
        }
        --depth;
        return left;
    }

    ExpressionPtr nullDenotation(const IfToken& token) {
        switch (token.kind) {
        case IfToken::Kind::infix:
            throw TemplateSyntaxError(errorPrefix + "infix operator '" + text::excerpt(token.name) +
                                      "' doesn't have a left hand side");
        case IfToken::Kind::prefix:
            return std::make_shared<const NotExpression>(parseExpression(token.bindingPower()));
        case IfToken::Kind::variable:
        case IfToken::Kind::subExpression:
            return token.expression;
        case IfToken::Kind::end:
            break;
        }
        throw TemplateSyntaxError(errorPrefix + "end");
    }

    ExpressionPtr leftDenotation(const IfToken& token, ExpressionPtr left) {
        switch (token.kind) {
        case IfToken::Kind::infix:
            return token.op->build(std::move(left), parseExpression(token.bindingPower()));
        case IfToken::Kind::prefix:
            throw TemplateSyntaxError(errorPrefix + "prefix operator '" + text::excerpt(token.name) +
                                      "' was called with a left hand side");
        case IfToken::Kind::variable:
            throw TemplateSyntaxError(errorPrefix + "variable '" + text::excerpt(token.name) +
                                      "' was called with a left hand side");
        case IfToken::Kind::subExpression:
            throw TemplateSyntaxError(errorPrefix + "sub expression was called with a left hand side");
        case IfToken::Kind::end:
            break;
        }
        throw TemplateSyntaxError(errorPrefix + "end");
    }

    static constexpr int maximumDepth = 200;
    std::vector<IfToken> tokens;
    std::size_t position = 0;
    int depth = 0;
};

// Separates brackets written against a word: "(a" and "b)" give "(", "a", "b", ")".
std::vector<std::string> splitBrackets(const std::vector<std::string>& components) {
    std::vector<std::string> words;
    for (const std::string& component : components) {
        std::string_view word = component;
        std::size_t closing = 0;
        while (!word.empty() && word.front() == '(') {
            words.emplace_back("(");
            word.remove_prefix(1);
        }
        while (!word.empty() && word.back() == ')') {
            ++closing;
            word.remove_suffix(1);
        }
        if (!word.empty()) {
            words.emplace_back(word);
        }
        words.insert(words.end(), closing, ")");
    }
    return words;
}

std::vector<IfToken> makeTokens(const std::vector<std::string>& words, std::size_t& index, bool nested,
                                const TokenParser& parser, const Token& token, int depth) {
    if (depth > 200) {
        throw TemplateSyntaxError(errorPrefix + "brackets are nested too deeply");
    }
    std::vector<IfToken> tokens;
    while (index < words.size()) {
        const std::string& word = words[index++];
        if (word == "(") {
            std::vector<IfToken> inner = makeTokens(words, index, true, parser, token, depth + 1);
            IfToken sub;
            sub.kind = IfToken::Kind::subExpression;
            sub.name = "(";
            sub.expression = IfExpressionParser(std::move(inner)).parse();
            tokens.push_back(std::move(sub));
            continue;
        }
        if (word == ")") {
            if (!nested) {
                throw TemplateSyntaxError(errorPrefix + "missing opening bracket");
            }
            return tokens;
        }
        IfToken next;
        next.name = word;
        for (const Operator& op : operators()) {
            if (word == op.name) {
                next.op = &op;
                next.kind = op.prefix ? IfToken::Kind::prefix : IfToken::Kind::infix;
            }
        }
        if (next.op == nullptr) {
            next.kind = IfToken::Kind::variable;
            next.expression = std::make_shared<const VariableExpression>(parser.compileResolvable(word, token), word);
        }
        tokens.push_back(std::move(next));
    }
    if (nested) {
        throw TemplateSyntaxError(errorPrefix + "missing closing bracket");
    }
    return tokens;
}

}  // namespace

std::vector<std::string> joinFilterWords(const std::vector<std::string>& components) {
    // Blanks may stand around "|", around the ":" of filter arguments and around their
    // commas: "a | join : \", \"" is the one expression a|join:", ".
    auto joinsForward = [](const std::string& word) {
        return !word.empty() && (word.back() == '|' || word.back() == ':' || word.back() == ',');
    };
    auto joinsBackward = [](const std::string& word) {
        return !word.empty() && (word.front() == '|' || word.front() == ':' || word.front() == ',');
    };
    std::vector<std::string> words;
    for (const std::string& component : components) {
        if (!words.empty() && (joinsForward(words.back()) || joinsBackward(component))) {
            words.back() += component;
        } else {
            words.push_back(component);
        }
    }
    return words;
}

ExpressionPtr parseIfExpression(const std::vector<std::string>& components, const TokenParser& parser,
                                const Token& token) {
    std::vector<std::string> words = splitBrackets(joinFilterWords(components));
    std::size_t index = 0;
    std::vector<IfToken> tokens = makeTokens(words, index, false, parser, token, 0);
    return IfExpressionParser(std::move(tokens)).parse();
}

ExpressionPtr makeNotExpression(ExpressionPtr expression) {
    return std::make_shared<const NotExpression>(std::move(expression));
}

}  // namespace tintwork::stencil
