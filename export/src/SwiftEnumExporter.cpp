#include "export/SwiftEnumExporter.h"

#include "export/TemplateExporter.h"

namespace tintwork {

std::string_view swiftTemplateName(SwiftExportType type) {
    switch (type) {
        case SwiftExportType::swiftUI: return "SwiftUIEnum";
        case SwiftExportType::uiKit: return "SwiftUIKitEnum";
        case SwiftExportType::appKit: return "SwiftAppKitEnum";
    }
    return "SwiftUIEnum";
}

SwiftEnumExporter::SwiftEnumExporter(std::shared_ptr<OchreColorProject> documentProject, SwiftExportType type)
    : project(std::move(documentProject)), exportType(type) {}

void SwiftEnumExporter::exportTo(const std::filesystem::path& folder, const BuildTask& task,
                                 const std::vector<ProjectItemPtr>& items, const std::filesystem::path& documentURL) {
    TemplateExporter exporter(project, readStockTemplate(swiftTemplateName(exportType)));
    exporter.exportTo(folder, task, items, documentURL);
}

}  // namespace tintwork
