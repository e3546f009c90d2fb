#include "export/Builder.h"

#include "export/AndroidComposeExporter.h"
#include "export/AndroidResourceExporter.h"
#include "export/AssetCatalogExporter.h"
#include "export/CSSExporter.h"
#include "export/CustomTemplateExporter.h"
#include "export/JsonDesignExporter.h"
#include "export/MetalExporter.h"
#include "export/OpenGLExporter.h"
#include "export/SwiftEnumExporter.h"
#include "model/FileIO.h"

#include <unordered_set>

namespace tintwork {

namespace {

// The -o folder as given; an empty one is the current folder.
std::filesystem::path overriddenFolder(const std::string& folder) {
    return folder.empty() ? std::filesystem::path(".") : std::filesystem::path(folder);
}

}  // namespace

Builder::Builder(std::shared_ptr<OchreColorProject> documentProject, std::filesystem::path document,
                 std::string name, std::vector<std::string> groups, bool withoutInterface,
                 std::optional<std::string> exportFolder)
    : project(std::move(documentProject)),
      documentURL(std::move(document)),
      documentName(std::move(name)),
      groupsToBuild(std::move(groups)),
      headless(withoutInterface),
      overriddenExportFolder(std::move(exportFolder)) {}

std::unique_ptr<BuildTaskExporter> makeExporter(BuildFileType type, std::shared_ptr<OchreColorProject> project) {
    switch (type) {
        case BuildFileType::text:
        case BuildFileType::css:
            return std::make_unique<CSSExporter>(std::move(project));
        case BuildFileType::scss:
            return std::make_unique<SCSSExporter>(std::move(project));
        case BuildFileType::less:
            return std::make_unique<LESSExporter>(std::move(project));
        case BuildFileType::customTemplate:
            return std::make_unique<CustomTemplateExporter>(std::move(project));
        case BuildFileType::jsonDesignToken:
            return std::make_unique<JsonDesignExporter>(std::move(project));
        case BuildFileType::assetCatalog:
            return std::make_unique<AssetCatalogExporter>();
        case BuildFileType::swiftUIEnum:
            return std::make_unique<SwiftEnumExporter>(std::move(project), SwiftExportType::swiftUI);
        case BuildFileType::swiftUIKitEnum:
            return std::make_unique<SwiftEnumExporter>(std::move(project), SwiftExportType::uiKit);
        case BuildFileType::swiftAppKitEnum:
            return std::make_unique<SwiftEnumExporter>(std::move(project), SwiftExportType::appKit);
        case BuildFileType::androidResource:
            return std::make_unique<AndroidResourceExporter>(std::move(project));
        case BuildFileType::gl:
            return std::make_unique<OpenGLExporter>(std::move(project));
        case BuildFileType::metal:
            return std::make_unique<MetalExporter>(std::move(project));
        case BuildFileType::androidCompose:
            return std::make_unique<AndroidComposeExporter>(std::move(project));
    }
    // Raw values outside the table never survive loading; a stray one still fails cleanly.
    throw BuildError("Unsupported file type");
}

void Builder::buildAll() {
    // The document's folder anchors every stored export folder; a bare file name
    // lies in the current folder.
    std::filesystem::path documentFolder = documentURL.parent_path();
    if (documentFolder.empty()) {
        documentFolder = ".";
    }
    // Groups may be added while running only by exporters, which never do; copying
    // the list still keeps the walk safe if one did.
    const std::vector<BuildGroupPtr> groups = project->buildGroups;
    // One walk of the tree and one set of the selection serve every group: asking per
    // group would cost groups times items.
    const std::unordered_set<std::string> selected(groupsToBuild.begin(), groupsToBuild.end());
    const auto itemsByGroup = project->itemsByBuildGroup();
    for (const auto& group : groups) {
        if (!group || selected.count(group->uuid) == 0 || group->tasks.empty()) {
            continue;
        }
        const auto found = itemsByGroup.find(group.get());
        if (found == itemsByGroup.end() || found->second.empty()) {
            continue;
        }
        const std::vector<ProjectItemPtr>& items = found->second;
        for (const auto& task : group->tasks) {
            auto exporter = makeExporter(task.exportFileType, project);
            const std::filesystem::path folder =
                overriddenExportFolder ? overriddenFolder(*overriddenExportFolder)
                                       : appendingStoredPath(documentFolder, task.exportFileFolder);
            createDirectories(folder);
            exporter->exportTo(folder, task, items, documentURL);
        }
    }
}

}  // namespace tintwork
