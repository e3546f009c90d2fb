#include "template/Extension.h"

#include "template/Errors.h"

namespace tintwork::stencil {

Filter Filter::simple(Simple function) {
    Filter filter;
    filter.plain = std::move(function);
    return filter;
}

Filter Filter::arguments(Arguments function) {
    Filter filter;
    filter.withArguments = std::move(function);
    return filter;
}

Value Filter::invoke(const Value& value, const std::vector<Value>& arguments, Context& context) const {
    if (withArguments) {
        return withArguments(value, arguments, context);
    }
    if (!arguments.empty()) {
        throw TemplateSyntaxError("Can't invoke filter with an argument");
    }
    return plain ? plain(value) : value;
}

void Extension::registerTag(std::string name, TagParser parser) {
    if (tags.find(name) == tags.end()) {
        tagOrder.push_back(name);
    }
    tags[std::move(name)] = std::move(parser);
}

void Extension::registerSimpleTag(std::string name, std::function<std::string(Context&)> handler) {
    registerTag(std::move(name), [handler = std::move(handler)](TokenParser&, const Token& token) -> NodePtr {
        return std::make_shared<const SimpleNode>(handler, token);
    });
}

void Extension::registerFilter(std::string name, Filter filter) {
    if (filters.find(name) == filters.end()) {
        filterOrder.push_back(name);
    }
    filters[std::move(name)] = std::move(filter);
}

void Extension::registerFilter(std::string name, Filter::Simple filter) {
    registerFilter(std::move(name), Filter::simple(std::move(filter)));
}

void Extension::registerFilter(std::string name, Filter::Arguments filter) {
    registerFilter(std::move(name), Filter::arguments(std::move(filter)));
}

const TagParser* Extension::tag(std::string_view name) const {
    auto found = tags.find(name);
    return found != tags.end() ? &found->second : nullptr;
}

const Filter* Extension::filter(std::string_view name) const {
    auto found = filters.find(name);
    return found != filters.end() ? &found->second : nullptr;
}

}  // namespace tintwork::stencil
