#pragma once
// Where templates named by include, extends and Environment::loadTemplate come from.

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tintwork::stencil {

class Environment;
class Template;

class Loader {
public:
    virtual ~Loader() = default;
    // The template of that name; throws TemplateDoesNotExist or SuspiciousFileOperation.
    virtual std::shared_ptr<const Template> loadTemplate(std::string_view name,
                                                         const Environment& environment) const = 0;
    // The first of the names that exists.
    virtual std::shared_ptr<const Template> loadTemplate(const std::vector<std::string>& names,
                                                         const Environment& environment) const;
    // The loader's textual form, used in error texts.
    virtual std::string description() const = 0;
};

// Reads templates from files under a list of directories, refusing names that lead
// out of them.
class FileSystemLoader : public Loader {
public:
    explicit FileSystemLoader(std::vector<std::filesystem::path> paths);
    using Loader::loadTemplate;
    std::shared_ptr<const Template> loadTemplate(std::string_view name, const Environment& environment) const override;
    std::string description() const override;

    const std::vector<std::filesystem::path> paths;
};

// Templates held in memory by name.
class DictionaryLoader : public Loader {
public:
    explicit DictionaryLoader(std::map<std::string, std::string, std::less<>> templates);
    using Loader::loadTemplate;
    std::shared_ptr<const Template> loadTemplate(std::string_view name, const Environment& environment) const override;
    std::string description() const override;

    const std::map<std::string, std::string, std::less<>> templates;
};

}  // namespace tintwork::stencil
