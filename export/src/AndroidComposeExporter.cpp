#include "export/AndroidComposeExporter.h"

#include "export/TemplateExporter.h"

namespace tintwork {

AndroidComposeExporter::AndroidComposeExporter(std::shared_ptr<OchreColorProject> documentProject) : project(std::move(documentProject)) {}

void AndroidComposeExporter::exportTo(const std::filesystem::path& folder, const BuildTask& task,
                     const std::vector<ProjectItemPtr>& items, const std::filesystem::path& documentURL) {
    TemplateExporter exporter(project, readStockTemplate("AndroidCompose"));
    exporter.exportTo(folder, task, items, documentURL);
}

}  // namespace tintwork
