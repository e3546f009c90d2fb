#pragma once
// Picks the importer for an explicit source kind and runs it into a new group.

#include <filesystem>
#include <memory>
#include <string_view>

#include "import/ColorImporter.h"
#include "model/Project.h"

namespace tintwork {

// The sources an import can come from. The caller names the kind; files are never sniffed.
enum class ImportSourceKind { sketch, ochre, figma, svg, image, assetCatalog, css, designTokensJSON };

// "Sketch Import", "Asset Catalog", "Design Tokens JSON Import", ...: the start of the
// receiving group's name.
std::string_view groupNamePrefix(ImportSourceKind kind);

// A fresh importer for the kind; null when this build has no importer for it.
std::unique_ptr<ColorImporter> makeImporter(ImportSourceKind kind);

class Importer {
public:
    Importer() = default;

    // Runs the kind's importer into a new expanded group named "<prefix> - <file name>"
    // and returns that group. The importer's error passes unchanged and no group is returned.
    ProjectItemPtr importFile(const std::filesystem::path& url, ImportSourceKind kind) const;
};

}  // namespace tintwork
