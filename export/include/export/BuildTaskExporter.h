#pragma once
// The interface of every exporter, and the exporters' own error.

#include <exception>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "model/Project.h"

namespace tintwork {

// An exporter's own failure. It has no description of its own, so it shows in the
// default form of a record: BuildError(message: "...").
class BuildError : public std::exception {
public:
    explicit BuildError(std::string message);
    const char* what() const noexcept override;

    std::string message;

private:
    std::string description;
};

// `folder` with a stored path (a task's folder or file name, a template location)
// appended. A leading "/" doesn't make it absolute: stored paths always count from
// `folder`, so a build never writes or reads outside it by accident.
std::filesystem::path appendingStoredPath(const std::filesystem::path& folder, std::string_view storedPath);

class BuildTaskExporter {
public:
    virtual ~BuildTaskExporter() = default;
    // Writes the task's output into `folder` (which exists) from the group's items.
    // Throws BuildError, FileError or template errors.
    virtual void exportTo(const std::filesystem::path& folder, const BuildTask& task,
                          const std::vector<ProjectItemPtr>& items, const std::filesystem::path& documentURL) = 0;
};

}  // namespace tintwork
