#include "export/OpenGLExporter.h"

#include "export/TemplateExporter.h"

namespace tintwork {

OpenGLExporter::OpenGLExporter(std::shared_ptr<OchreColorProject> documentProject) : project(std::move(documentProject)) {}

void OpenGLExporter::exportTo(const std::filesystem::path& folder, const BuildTask& task,
                     const std::vector<ProjectItemPtr>& items, const std::filesystem::path& documentURL) {
    TemplateExporter exporter(project, readStockTemplate("OpenGL"));
    exporter.exportTo(folder, task, items, documentURL);
}

}  // namespace tintwork
