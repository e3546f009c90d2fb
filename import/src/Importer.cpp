#include "import/Importer.h"

#include <string>

#include "import/JsonDesignImporter.h"
#include "model/Uuid.h"

namespace tintwork {

std::string_view groupNamePrefix(ImportSourceKind kind) {
    switch (kind) {
        case ImportSourceKind::sketch: return "Sketch Import";
        case ImportSourceKind::ochre: return "Ochre Import";
        case ImportSourceKind::figma: return "Figma Import";
        case ImportSourceKind::svg: return "SVG Import";
        case ImportSourceKind::image: return "Image Import";
        case ImportSourceKind::assetCatalog: return "Asset Catalog";
        case ImportSourceKind::css: return "CSS Import";
        case ImportSourceKind::designTokensJSON: return "Design Tokens JSON Import";
    }
    return "Import";
}

// Every importer of this build is listed here; a new source format adds its case.
std::unique_ptr<ColorImporter> makeImporter(ImportSourceKind kind) {
    switch (kind) {
        case ImportSourceKind::designTokensJSON: return std::make_unique<JsonDesignImporter>();
        default: return nullptr;
    }
}

ProjectItemPtr Importer::importFile(const std::filesystem::path& url, ImportSourceKind kind) const {
    std::unique_ptr<ColorImporter> importer = makeImporter(kind);
    if (!importer) {
        throw DocumentColorParsingError("This build cannot read " + std::string(groupNamePrefix(kind)) + " files");
    }
    std::string name = std::string(groupNamePrefix(kind)) + " - " + url.filename().string();
    auto item = std::make_shared<OchreColorProjectItem>(std::move(name), newUUID(), OchreColorGroup{});
    item->isExpanded = true;
    importer->importColors(url, *item);
    return item;
}

}  // namespace tintwork
