#pragma once
// Runs TemplateExporter on a template file the task names in its customData
// ("customTemplateLocation", relative to the document's folder).

#include <memory>
#include <string>
#include <string_view>

#include "export/BuildTaskExporter.h"

namespace tintwork {

class CustomTemplateExporter : public BuildTaskExporter {
public:
    explicit CustomTemplateExporter(std::shared_ptr<OchreColorProject> documentProject)
        : project(std::move(documentProject)) {}

    // Throws BuildError "No location set for custom template in '<task name>'" when the
    // key is missing or the file can't be read.
    void exportTo(const std::filesystem::path& folder, const BuildTask& task, const std::vector<ProjectItemPtr>& items,
                  const std::filesystem::path& documentURL) override;

    std::shared_ptr<OchreColorProject> project;
};

// `text` with every "%XX" escape replaced by its byte; malformed escapes stay as they are.
std::string removingPercentEncoding(std::string_view text);

}  // namespace tintwork
