#include "export/MetalExporter.h"

#include "export/TemplateExporter.h"

namespace tintwork {

MetalExporter::MetalExporter(std::shared_ptr<OchreColorProject> documentProject) : project(std::move(documentProject)) {}

void MetalExporter::exportTo(const std::filesystem::path& folder, const BuildTask& task,
                     const std::vector<ProjectItemPtr>& items, const std::filesystem::path& documentURL) {
    TemplateExporter exporter(project, readStockTemplate("Metal"));
    exporter.exportTo(folder, task, items, documentURL);
}

}  // namespace tintwork
