#pragma once
// Reads an asset catalog folder (.xcassets): each folder becomes a group, each ".colorset"
// folder a colour with its dark and high-contrast variants.

#include <filesystem>

#include "import/ColorImporter.h"
#include "model/Project.h"

namespace tintwork {

class AssetCatalogImporter : public ColorImporter {
public:
    AssetCatalogImporter() = default;

    // Reads the catalog folder at `url` into `group`. A path that is missing or not a folder
    // throws DocumentColorParsingError; inside the catalog, a folder that can't be listed or a
    // Contents.json that can't be read costs only that entry. Symbolic links are followed
    // only to folders and files inside the catalog, each real folder is read once, and
    // folders nested deeper than maxDepth levels are left out with a diagnostic line.
    void importColors(const std::filesystem::path& url, OchreColorProjectItem& group) override;

    static constexpr int maxDepth = 64;
};

}  // namespace tintwork
