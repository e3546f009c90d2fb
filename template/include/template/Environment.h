#pragma once
// The facade of the template engine: settings, extensions and loader; templates are
// parsed once and rendered many times.

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "template/Context.h"
#include "template/Extension.h"
#include "template/Loader.h"
#include "template/Node.h"
#include "template/Token.h"
#include "template/Value.h"

namespace tintwork::stencil {

class Environment;

class Template {
public:
    // Lexes and parses; throws TemplateSyntaxError.
    Template(std::string templateString, const Environment& environment,
             std::optional<std::string> name = std::nullopt);

    std::string render(const Map& dictionary = {}) const;
    // Renders with an existing context.
    std::string render(Context& context) const;
    const std::vector<NodePtr>& nodes() const { return parsedNodes; }

    const std::string templateString;
    const Environment& environment;
    const std::vector<Token> tokens;
    const std::optional<std::string> name;

private:
    std::vector<NodePtr> parsedNodes;
};

class Environment {
public:
    // The default extension is always present, after the given ones, so a given
    // extension may replace a built-in tag or filter.
    explicit Environment(std::shared_ptr<const Loader> loader = nullptr,
                         std::vector<std::shared_ptr<const Extension>> extensions = {},
                         TrimBehaviour trimBehaviour = TrimBehaviour::nothing());
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

    // A template from text, parsed now.
    std::shared_ptr<const Template> templateFromString(std::string templateString,
                                                       std::optional<std::string> name = std::nullopt) const;
    // A template by name through the loader; loaded templates are kept for reuse.
    std::shared_ptr<const Template> loadTemplate(std::string_view name) const;
    std::shared_ptr<const Template> loadTemplate(const std::vector<std::string>& names) const;

    std::string renderTemplate(std::string templateString, const Map& dictionary = {}) const;
    std::string renderTemplateNamed(std::string_view name, const Map& dictionary = {}) const;

    // Lookup across extensions, in order.
    const TagParser* findTag(std::string_view name) const;
    const Filter* findFilter(std::string_view name) const;
    std::vector<std::string> filterNames() const;

    const std::vector<std::shared_ptr<const Extension>> extensions;
    const TrimBehaviour trimBehaviour;
    const std::shared_ptr<const Loader> loader;
    // Bounds one render's work (nodes rendered plus loop elements visited), so that
    // no template runs forever; exceeding it is a render error.
    std::uint64_t renderStepLimit = 50'000'000;

private:
    mutable std::mutex cacheMutex;
    mutable std::map<std::string, std::shared_ptr<const Template>, std::less<>> cache;
};

}  // namespace tintwork::stencil
