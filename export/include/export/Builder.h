#pragma once
// Runs every build group's tasks through the exporter their file type selects.

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "export/BuildTaskExporter.h"
#include "model/Project.h"

namespace tintwork {

class Builder {
public:
    Builder(std::shared_ptr<OchreColorProject> project, std::filesystem::path documentURL, std::string documentName,
            std::vector<std::string> groupsToBuild, bool headless, std::optional<std::string> overriddenExportFolder);

    // Replaces the project's items by those of a Design Tokens JSON file, attached to
    // the first build group; with autoHighContrast the imported items get automatic
    // high-contrast variants.
    void importColors(const std::filesystem::path& url, bool autoHighContrast);
    // The same with a group some importer has already read: it becomes the project's one item.
    void replaceItems(ProjectItemPtr root, bool autoHighContrast);
    // Runs all groups in order; the first error ends the run and is thrown unchanged.
    void buildAll();

    std::shared_ptr<OchreColorProject> project;
    std::filesystem::path documentURL;
    std::string documentName;
    std::vector<std::string> groupsToBuild;
    bool headless;
    std::optional<std::string> overriddenExportFolder;
};

// A fresh exporter for a task's file type.
std::unique_ptr<BuildTaskExporter> makeExporter(BuildFileType type, std::shared_ptr<OchreColorProject> project);

}  // namespace tintwork
