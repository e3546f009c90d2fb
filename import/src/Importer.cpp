#include "import/Importer.h"

#include <string>

#include "import/ImportKinds.h"
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

namespace {

// The word of the kind's row in the table of import kinds.
std::string_view kindWord(ImportSourceKind kind) {
    switch (kind) {
        case ImportSourceKind::sketch: return "sketch";
        case ImportSourceKind::ochre: return "ochre";
        case ImportSourceKind::figma: return "figma";
        case ImportSourceKind::svg: return "svg";
        case ImportSourceKind::image: return "image";
        case ImportSourceKind::assetCatalog: return "asset-catalog";
        case ImportSourceKind::css: return "css";
        case ImportSourceKind::designTokensJSON: return "design-tokens";
    }
    return "";
}

}  // namespace

std::unique_ptr<ColorImporter> makeImporter(ImportSourceKind kind) {
    const ImportKind* row = findImportKind(kindWord(kind));
    if (row == nullptr || !row->makeImporter) {
        return nullptr;
    }
    return row->makeImporter(ImportOptions{});
}

ProjectItemPtr Importer::importFile(const std::filesystem::path& url, ImportSourceKind kind) const {
    const ImportKind* row = findImportKind(kindWord(kind));
    if (row == nullptr || !row->makeImporter) {
        throw DocumentColorParsingError("This build cannot read " + std::string(groupNamePrefix(kind)) + " files");
    }
    return importSource(*row, url, ImportOptions{});
}

}  // namespace tintwork
