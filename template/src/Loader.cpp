#include "template/Loader.h"

#include <fstream>
#include <sstream>

#include "template/Environment.h"
#include "template/Errors.h"

namespace tintwork::stencil {

std::shared_ptr<const Template> Loader::loadTemplate(const std::vector<std::string>& names,
                                                     const Environment& environment) const {
    for (const std::string& name : names) {
        try {
            return loadTemplate(name, environment);
        } catch (const TemplateDoesNotExist&) {
            // Try the next name.
        }
    }
    throw TemplateDoesNotExist(names, description());
}

namespace {

bool isInside(const std::filesystem::path& base, const std::filesystem::path& path) {
    auto baseEnd = base.end();
    auto pathIterator = path.begin();
    for (auto baseIterator = base.begin(); baseIterator != baseEnd; ++baseIterator, ++pathIterator) {
        if (baseIterator->empty()) {
            continue;
        }
        if (pathIterator == path.end() || *pathIterator != *baseIterator) {
            return false;
        }
    }
    return true;
}

}  // namespace

FileSystemLoader::FileSystemLoader(std::vector<std::filesystem::path> directories) : paths(std::move(directories)) {}

std::shared_ptr<const Template> FileSystemLoader::loadTemplate(std::string_view name,
                                                               const Environment& environment) const {
    for (const std::filesystem::path& directory : paths) {
        std::error_code error;
        std::filesystem::path base = std::filesystem::absolute(directory, error).lexically_normal();
        std::filesystem::path candidate = (base / std::filesystem::path(name)).lexically_normal();
        if (!isInside(base, candidate)) {
            throw SuspiciousFileOperation(base, candidate);
        }
        if (!std::filesystem::is_regular_file(candidate, error)) {
            continue;
        }
        std::ifstream stream(candidate, std::ios::binary);
        if (!stream) {
            continue;
        }
        std::ostringstream contents;
        contents << stream.rdbuf();
        return std::make_shared<const Template>(contents.str(), environment, std::string(name));
    }
    throw TemplateDoesNotExist({std::string(name)}, description());
}

std::string FileSystemLoader::description() const {
    std::string text = "FileSystemLoader([";
    for (std::size_t index = 0; index < paths.size(); ++index) {
        text += (index > 0 ? ", \"" : "\"") + paths[index].string() + "\"";
    }
    return text + "])";
}

DictionaryLoader::DictionaryLoader(std::map<std::string, std::string, std::less<>> sources)
    : templates(std::move(sources)) {}

std::shared_ptr<const Template> DictionaryLoader::loadTemplate(std::string_view name,
                                                               const Environment& environment) const {
    auto found = templates.find(name);
    if (found == templates.end()) {
        throw TemplateDoesNotExist({std::string(name)}, description());
    }
    return std::make_shared<const Template>(found->second, environment, std::string(name));
}

std::string DictionaryLoader::description() const {
    std::string text = "DictionaryLoader([";
    bool first = true;
    for (const auto& entry : templates) {
        text += (first ? "\"" : ", \"") + entry.first + "\"";
        first = false;
    }
    return text + "])";
}

}  // namespace tintwork::stencil
