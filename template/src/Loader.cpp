#include "template/Loader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <optional>

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

// The largest template file that is read.
constexpr std::uintmax_t maximumTemplateFileSize = std::uintmax_t{1} << 30;

// The text of a regular file, or nullopt when there is none at the path (a missing
// file, a folder, a device or FIFO: none of them is a template). Opening never blocks,
// and a file over maximumTemplateFileSize is refused before it is read.
std::optional<std::string> readTemplateFile(const std::filesystem::path& path, std::string_view name) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0) {
        return std::nullopt;
    }
    struct Closer {
        int descriptor;
        ~Closer() { ::close(descriptor); }
    } closer{descriptor};
    struct stat info {};
    if (::fstat(descriptor, &info) != 0 || !S_ISREG(info.st_mode)) {
        return std::nullopt;
    }
    const std::string tooLarge = "Template named `" + std::string(name) + "` is larger than 1 GiB";
    if (static_cast<std::uintmax_t>(info.st_size) > maximumTemplateFileSize) {
        throw TemplateError(tooLarge);
    }
    std::string text;
    text.reserve(static_cast<std::size_t>(info.st_size));
    char buffer[65536];
    while (true) {
        const ssize_t count = ::read(descriptor, buffer, sizeof buffer);
        if (count == 0) {
            return text;
        }
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            return std::nullopt;
        }
        if (text.size() + static_cast<std::size_t>(count) > maximumTemplateFileSize) {
            throw TemplateError(tooLarge);  // the file grew while it was read
        }
        text.append(buffer, static_cast<std::size_t>(count));
    }
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
        std::optional<std::string> contents = readTemplateFile(candidate, name);
        if (!contents) {
            continue;
        }
        return std::make_shared<const Template>(std::move(*contents), environment, std::string(name));
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
