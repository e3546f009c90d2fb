#include "import/ImportKinds.h"

#include "import/AssetCatalogImporter.h"
#include "import/CSSFileImporter.h"
#include "import/DtcgImporter.h"
#include "import/FigmaImporter.h"
#include "import/GenericJsonImporter.h"
#include "import/ImageImporter.h"
#include "import/JsonDesignImporter.h"
#include "import/MaterialJSONImporter.h"
#include "import/OchreImporter.h"
#include "import/SVGImporter.h"
#include "import/SketchImporter.h"
#include "model/Uuid.h"

namespace tintwork {

namespace {

// A factory for importers that take no options beyond where their diagnostics go.
template <typename Importer>
std::unique_ptr<ColorImporter> plain(const ImportOptions& options) {
    auto importer = std::make_unique<Importer>();
    importer->diagnostics = options.diagnostics;
    return importer;
}

// Sketch reads documents without a colour profile in the space the options name.
std::unique_ptr<ColorImporter> sketch(const ImportOptions& options) {
    auto importer = std::make_unique<SketchImporter>();
    importer->diagnostics = options.diagnostics;
    importer->unmanagedColorSpace = options.unmanagedColorSpace;
    return importer;
}

}  // namespace

// One row per kind; a kind without a factory is listed but not built yet.
const std::vector<ImportKind>& importKinds() {
    static const std::vector<ImportKind> kinds = {
        {"sketch", "Sketch Import", sketch, {}},
        {"ochre", "Ochre Import", plain<OchreImporter>, {}},
        {"figma", "Figma Import", plain<FigmaImporter>, {}},
        {"svg", "SVG Import", plain<SVGImporter>, {}},
        {"image", "Image Import", plain<ImageImporter>, {}},
        {"asset-catalog", "Asset Catalog", plain<AssetCatalogImporter>, {}},
        {"css", "CSS Import", plain<CSSFileImporter>, {}},
        {"design-tokens", "Design Tokens JSON Import", plain<JsonDesignImporter>, {}},
        {"material", "Material Import", plain<MaterialJSONImporter>, {}},
        {"generic-json", "JSON Import", plain<GenericJsonImporter>, {}},
        {"dtcg", "DTCG Import",
         [](const ImportOptions& options) -> std::unique_ptr<ColorImporter> {
             return std::make_unique<DtcgImporter>(options);
         },
         DtcgImporter::importAll},
    };
    return kinds;
}

const ImportKind* findImportKind(std::string_view word) {
    for (const ImportKind& kind : importKinds()) {
        if (kind.word == word) {
            return &kind;
        }
    }
    return nullptr;
}

ProjectItemPtr importSource(const ImportKind& kind, const std::filesystem::path& source,
                            const ImportOptions& options) {
    std::unique_ptr<ColorImporter> importer = kind.makeImporter(options);
    // A folder given with a trailing separator ("Colors.xcassets/") is named by its last component.
    const std::filesystem::path lastComponent = source.filename().empty() ? source.parent_path().filename() : source.filename();
    std::string name = std::string(kind.groupPrefix) + " - " + lastComponent.string();
    auto item = std::make_shared<OchreColorProjectItem>(std::move(name), newUUID(), OchreColorGroup{});
    item->isExpanded = true;
    importer->importColors(source, *item);
    return item;
}

}  // namespace tintwork
