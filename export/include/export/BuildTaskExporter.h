#pragma once
// The interface of every exporter, and the exporters' own error.

#include <exception>
#include <filesystem>
#include <string>
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

class BuildTaskExporter {
public:
    virtual ~BuildTaskExporter() = default;
    // Writes the task's output into `folder` (which exists) from the group's items.
    // Throws BuildError, FileError or template errors.
    virtual void exportTo(const std::filesystem::path& folder, const BuildTask& task,
                          const std::vector<ProjectItemPtr>& items, const std::filesystem::path& documentURL) = 0;
};

}  // namespace tintwork
