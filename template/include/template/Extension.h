#pragma once
// Tags and filters by name. Every environment carries the default extension; the
// exporter adds its own tags on a further extension.

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "template/Context.h"
#include "template/Node.h"
#include "template/Token.h"
#include "template/Value.h"

namespace tintwork::stencil {

class TokenParser;

// Parses a tag: given the parser and the tag's token, gives its node.
using TagParser = std::function<NodePtr(TokenParser& parser, const Token& token)>;

// A filter: `simple` takes the value alone, `arguments` also the arguments and context.
class Filter {
public:
    using Simple = std::function<Value(const Value& value)>;
    using Arguments = std::function<Value(const Value& value, const std::vector<Value>& arguments, Context& context)>;

    static Filter simple(Simple function);
    static Filter arguments(Arguments function);

    bool acceptsArguments() const { return static_cast<bool>(withArguments); }
    // Applies the filter; a simple filter given arguments fails.
    Value invoke(const Value& value, const std::vector<Value>& arguments, Context& context) const;

private:
    Simple plain;
    Arguments withArguments;
};

class Extension {
public:
    virtual ~Extension() = default;

    // Registers a tag; a later registration of the same name replaces it.
    void registerTag(std::string name, TagParser parser);
    // Registers a tag without end tag whose text comes from one function.
    void registerSimpleTag(std::string name, std::function<std::string(Context&)> handler);
    void registerFilter(std::string name, Filter filter);
    void registerFilter(std::string name, Filter::Simple filter);
    void registerFilter(std::string name, Filter::Arguments filter);

    const TagParser* tag(std::string_view name) const;
    const Filter* filter(std::string_view name) const;
    // Names in the order of registration.
    const std::vector<std::string>& tagNames() const { return tagOrder; }
    const std::vector<std::string>& filterNames() const { return filterOrder; }

private:
    std::map<std::string, TagParser, std::less<>> tags;
    std::map<std::string, Filter, std::less<>> filters;
    std::vector<std::string> tagOrder;
    std::vector<std::string> filterOrder;
};

// The built-in tags (for, break, continue, if, ifnot, now, include, extends, block,
// filter) and filters (default, capitalize, uppercase, lowercase, join, split,
// indent, filter).
class DefaultExtension : public Extension {
public:
    DefaultExtension();
};

}  // namespace tintwork::stencil
