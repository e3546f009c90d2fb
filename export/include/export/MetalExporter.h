#pragma once
// Metal shading language source: the tokens as constants, from the "Metal" stock template.

#include <filesystem>
#include <memory>
#include <vector>

#include "export/BuildTaskExporter.h"
#include "model/Project.h"

namespace tintwork {

class MetalExporter : public BuildTaskExporter {
public:
    explicit MetalExporter(std::shared_ptr<OchreColorProject> documentProject);

    // Renders the stock template over the items into folder/exportFileNameWithExtension;
    // an unreadable template is thrown as FileError before anything is written.
    void exportTo(const std::filesystem::path& folder, const BuildTask& task, const std::vector<ProjectItemPtr>& items,
                  const std::filesystem::path& documentURL) override;

    std::shared_ptr<OchreColorProject> project;
};

}  // namespace tintwork
