#pragma once
// Things that give a value from a context: variables, filter chains, ranges, and the
// boolean expressions of `if`.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "template/Context.h"
#include "template/Value.h"

namespace tintwork::stencil {

class Environment;

class Resolvable {
public:
    virtual ~Resolvable() = default;
    // The value; throws TemplateSyntaxError for a malformed name or a failing filter.
    virtual Value resolve(Context& context) const = 0;
};

using ResolvablePtr = std::shared_ptr<const Resolvable>;

struct KeyPath;

// A literal ("text", 'text', 12, 1.5, true, false, nil) or a key path such as
// item.colorItem.color.light or xs[i].name.
class Variable : public Resolvable {
public:
    explicit Variable(std::string variable);
    Value resolve(Context& context) const override;

    const std::string variable;

private:
    std::shared_ptr<const KeyPath> parsed;
};

// An inclusive range of integers between two values: 1...3, 3...1, 1...xs.count.
class RangeVariable : public Resolvable {
public:
    RangeVariable(ResolvablePtr from, ResolvablePtr to);
    Value resolve(Context& context) const override;

    const ResolvablePtr from;
    const ResolvablePtr to;
};

// A variable followed by filters, each applied to the result of the last:
// name|lowercase|join:", ". Unknown filters fail when the expression is built.
class FilterExpression : public Resolvable {
public:
    FilterExpression(std::string_view expression, const Environment& environment);
    Value resolve(Context& context) const override;

    struct FilterCall;

private:
    ResolvablePtr variable;
    std::vector<std::shared_ptr<const FilterCall>> filters;
};

// A boolean expression of `if`, `elif`, `where` and inline conditions.
class Expression {
public:
    virtual ~Expression() = default;
    virtual bool evaluate(Context& context) const = 0;
    virtual std::string description() const = 0;
};

using ExpressionPtr = std::shared_ptr<const Expression>;

// Looks up a key on a value: map key, list or string index, first/last/count, record field.
Value lookupKey(const Value& value, std::string_view key);

}  // namespace tintwork::stencil
