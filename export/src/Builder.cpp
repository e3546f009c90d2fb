#include "export/Builder.h"

#include "export/CSSExporter.h"
#include "export/CustomTemplateExporter.h"
#include "model/FileIO.h"

// Exporters of other families join the table as soon as their headers exist.
#if __has_include("export/JsonDesignExporter.h")
#include "export/JsonDesignExporter.h"
#define TINTWORK_HAS_JSON_DESIGN_EXPORTER 1
#endif
#if __has_include("export/SwiftEnumExporter.h")
#include "export/SwiftEnumExporter.h"
#define TINTWORK_HAS_SWIFT_ENUM_EXPORTER 1
#endif
#if __has_include("export/AndroidComposeExporter.h")
#include "export/AndroidComposeExporter.h"
#define TINTWORK_HAS_ANDROID_COMPOSE_EXPORTER 1
#endif
#if __has_include("export/MetalExporter.h")
#include "export/MetalExporter.h"
#define TINTWORK_HAS_METAL_EXPORTER 1
#endif
#if __has_include("export/OpenGLExporter.h")
#include "export/OpenGLExporter.h"
#define TINTWORK_HAS_OPENGL_EXPORTER 1
#endif
#if __has_include("export/AndroidResourceExporter.h")
#include "export/AndroidResourceExporter.h"
#define TINTWORK_HAS_ANDROID_RESOURCE_EXPORTER 1
#endif
#if __has_include("export/AssetCatalogExporter.h")
#include "export/AssetCatalogExporter.h"
#define TINTWORK_HAS_ASSET_CATALOG_EXPORTER 1
#endif

#include <algorithm>

namespace tintwork {

namespace {

[[noreturn]] void unsupported() {
    throw BuildError("Unsupported file type");
}

// A stored export folder always counts from the document's folder, even when it
// starts with "/".
std::filesystem::path relativeFolder(const std::string& folder) {
    const auto start = folder.find_first_not_of('/');
    return start == std::string::npos ? std::filesystem::path() : std::filesystem::path(folder.substr(start));
}

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
#ifdef TINTWORK_HAS_JSON_DESIGN_EXPORTER
            return std::make_unique<JsonDesignExporter>(std::move(project));
#else
            unsupported();
#endif
        case BuildFileType::assetCatalog:
#ifdef TINTWORK_HAS_ASSET_CATALOG_EXPORTER
            return std::make_unique<AssetCatalogExporter>();
#else
            unsupported();
#endif
        case BuildFileType::swiftUIEnum:
#ifdef TINTWORK_HAS_SWIFT_ENUM_EXPORTER
            return std::make_unique<SwiftEnumExporter>(std::move(project), SwiftExportType::swiftUI);
#else
            unsupported();
#endif
        case BuildFileType::swiftUIKitEnum:
#ifdef TINTWORK_HAS_SWIFT_ENUM_EXPORTER
            return std::make_unique<SwiftEnumExporter>(std::move(project), SwiftExportType::uiKit);
#else
            unsupported();
#endif
        case BuildFileType::swiftAppKitEnum:
#ifdef TINTWORK_HAS_SWIFT_ENUM_EXPORTER
            return std::make_unique<SwiftEnumExporter>(std::move(project), SwiftExportType::appKit);
#else
            unsupported();
#endif
        case BuildFileType::androidResource:
#ifdef TINTWORK_HAS_ANDROID_RESOURCE_EXPORTER
            return std::make_unique<AndroidResourceExporter>(std::move(project));
#else
            unsupported();
#endif
        case BuildFileType::gl:
#ifdef TINTWORK_HAS_OPENGL_EXPORTER
            return std::make_unique<OpenGLExporter>(std::move(project));
#else
            unsupported();
#endif
        case BuildFileType::metal:
#ifdef TINTWORK_HAS_METAL_EXPORTER
            return std::make_unique<MetalExporter>(std::move(project));
#else
            unsupported();
#endif
        case BuildFileType::androidCompose:
#ifdef TINTWORK_HAS_ANDROID_COMPOSE_EXPORTER
            return std::make_unique<AndroidComposeExporter>(std::move(project));
#else
            unsupported();
#endif
    }
    unsupported();
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
    for (const auto& group : groups) {
        if (!group) {
            continue;
        }
        if (std::find(groupsToBuild.begin(), groupsToBuild.end(), group->uuid) == groupsToBuild.end()) {
            continue;
        }
        const std::vector<ProjectItemPtr> items = project->itemsForBuildGroup(*group);
        if (items.empty() || group->tasks.empty()) {
            continue;
        }
        for (const auto& task : group->tasks) {
            auto exporter = makeExporter(task.exportFileType, project);
            const std::filesystem::path folder =
                overriddenExportFolder ? overriddenFolder(*overriddenExportFolder)
                                       : documentFolder / relativeFolder(task.exportFileFolder);
            createDirectories(folder);
            exporter->exportTo(folder, task, items, documentURL);
        }
    }
}

}  // namespace tintwork
