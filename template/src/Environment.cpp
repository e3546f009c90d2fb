#include "template/Environment.h"

#include "template/Errors.h"
#include "template/TokenParser.h"

namespace tintwork::stencil {

namespace {

std::vector<std::shared_ptr<const Extension>> withDefault(std::vector<std::shared_ptr<const Extension>> extensions) {
    static const auto defaults = std::make_shared<const DefaultExtension>();
    std::erase(extensions, nullptr);
    extensions.push_back(defaults);
    return extensions;
}

}  // namespace

Template::Template(std::string source, const Environment& owner, std::optional<std::string> templateName)
    : templateString(std::move(source)), environment(owner), tokens(Lexer(templateString, templateName).tokenize()),
      name(std::move(templateName)) {
    TokenParser parser(tokens, environment);
    parsedNodes = parser.parse();
}

std::string Template::render(const Map& dictionary) const {
    Context context(dictionary, &environment);
    return render(context);
}

std::string Template::render(Context& context) const { return renderNodes(parsedNodes, context); }

Environment::Environment(std::shared_ptr<const Loader> templateLoader,
                         std::vector<std::shared_ptr<const Extension>> givenExtensions, TrimBehaviour trim)
    : extensions(withDefault(std::move(givenExtensions))), trimBehaviour(trim), loader(std::move(templateLoader)) {}

std::shared_ptr<const Template> Environment::templateFromString(std::string templateString,
                                                                std::optional<std::string> name) const {
    return std::make_shared<const Template>(std::move(templateString), *this, std::move(name));
}

std::shared_ptr<const Template> Environment::loadTemplate(std::string_view name) const {
    return loadTemplate(std::vector<std::string>{std::string(name)});
}

std::shared_ptr<const Template> Environment::loadTemplate(const std::vector<std::string>& names) const {
    if (!loader) {
        throw TemplateDoesNotExist(names, std::nullopt);
    }
    {
        std::lock_guard lock(cacheMutex);
        for (const std::string& name : names) {
            auto found = cache.find(name);
            if (found != cache.end()) {
                return found->second;
            }
        }
    }
    std::shared_ptr<const Template> loaded =
        names.size() == 1 ? loader->loadTemplate(names.front(), *this) : loader->loadTemplate(names, *this);
    if (loaded && loaded->name) {
        std::lock_guard lock(cacheMutex);
        cache.emplace(*loaded->name, loaded);
    }
    return loaded;
}

std::string Environment::renderTemplate(std::string templateString, const Map& dictionary) const {
    return templateFromString(std::move(templateString))->render(dictionary);
}

std::string Environment::renderTemplateNamed(std::string_view name, const Map& dictionary) const {
    return loadTemplate(name)->render(dictionary);
}

const TagParser* Environment::findTag(std::string_view name) const {
    for (const auto& extension : extensions) {
        if (const TagParser* tag = extension->tag(name)) {
            return tag;
        }
    }
    return nullptr;
}

const Filter* Environment::findFilter(std::string_view name) const {
    for (const auto& extension : extensions) {
        if (const Filter* filter = extension->filter(name)) {
            return filter;
        }
    }
    return nullptr;
}

std::vector<std::string> Environment::filterNames() const {
    std::vector<std::string> names;
    for (auto extension = extensions.rbegin(); extension != extensions.rend(); ++extension) {
        for (const std::string& name : (*extension)->filterNames()) {
            if (std::find(names.begin(), names.end(), name) == names.end()) {
                names.push_back(name);
            }
        }
    }
    return names;
}

}  // namespace tintwork::stencil
