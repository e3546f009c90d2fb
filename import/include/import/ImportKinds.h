#pragma once
// The kinds of source the tintwork command imports: the word a user types, the
// receiving group's name prefix and how to make the importer.

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "colour/ColorSpace.h"
#include "import/ColorImporter.h"
#include "model/Project.h"

namespace tintwork {

// What the command line can say about an import beyond the kind and the sources.
struct ImportOptions {
    // Where importers' diagnostic and warning lines go; unset, standard output.
    std::function<void(std::string_view)> diagnostics;
    // Sketch: the space to read colours of a document that declares no colour profile in.
    std::optional<ColorSpace> unmanagedColorSpace;
    // Standard Design Tokens: the appearance of each source in order ("light", "dark",
    // "high-contrast", "dark-high-contrast"); empty when each source is its own group.
    std::vector<std::string> modes;
    // Standard Design Tokens: validate every rule of the format and fail on the first violation.
    bool strict = false;
};

// A source that failed in an import of several sources at once.
class ImportSourceError : public std::runtime_error {
public:
    ImportSourceError(std::filesystem::path sourcePath, const std::string& message)
        : std::runtime_error(message), source(std::move(sourcePath)) {}

    std::filesystem::path source;
};

struct ImportKind {
    std::string_view word;         // "svg", "asset-catalog", ...
    std::string_view groupPrefix;  // "SVG Import", "Asset Catalog", ...
    // A fresh importer set up with the options; empty while this build has no importer for the kind.
    std::function<std::unique_ptr<ColorImporter>(const ImportOptions&)> makeImporter;
    // Set for kinds that read all their sources in one call (merging files into one group);
    // throws ImportSourceError naming the failing source.
    std::function<std::vector<ProjectItemPtr>(const std::vector<std::filesystem::path>&, const ImportOptions&)>
        importAll;
};

// Every kind, in the order the command's help lists them.
const std::vector<ImportKind>& importKinds();
// The kind a word names, or null.
const ImportKind* findImportKind(std::string_view word);

// Imports one source into a new expanded group "<prefix> - <file name>". The importer's
// error passes unchanged. The kind must have an importer.
ProjectItemPtr importSource(const ImportKind& kind, const std::filesystem::path& source,
                            const ImportOptions& options);

}  // namespace tintwork
