#pragma once
// Writes a build group as an Xcode asset catalog: a folder tree of Contents.json
// files with one ".colorset" folder per colour.

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "export/BuildTaskExporter.h"

namespace tintwork {

// Per-catalog setting for generated Swift asset symbols; stored words "enabled",
// "disabled", "notDefined".
enum class SwiftAssetSymbolExtensionSettings { enabled, disabled, notDefined };

struct AssetCatalogInfo {
    std::string author = "tintwork";
    int version = 1;
};

struct AssetCatalogProperties {
    std::optional<bool> providesNameSpace;  // "provides-namespace"
    std::optional<SwiftAssetSymbolExtensionSettings> generateSwiftAssetSymbolExtensions;
};

struct ColorSetColorComponents {
    std::optional<std::string> red;
    std::optional<std::string> green;
    std::optional<std::string> blue;
    std::optional<std::string> alpha;
    std::optional<std::string> white;
};

struct ColorSetColorDetails {
    std::string colorSpace;  // "color-space": "srgb", "display-p3", "extended-srgb", ...
    ColorSetColorComponents components;
};

struct ColorSetAppearance {
    std::string appearance;  // "luminosity" or "contrast"
    std::string value;       // "dark" or "high"
};

struct ColorSetColor {
    std::string idiom = "universal";
    ColorSetColorDetails color;
    std::optional<std::vector<ColorSetAppearance>> appearances;
};

// The record written to every Contents.json.
struct AssetCatalogContents {
    AssetCatalogInfo info;
    std::optional<AssetCatalogProperties> properties;
    std::optional<std::vector<ColorSetColor>> colors;
};

// The record read back from a Contents.json (the info block is not needed).
struct AssetCatalogContentsFile {
    std::optional<AssetCatalogProperties> properties;
    std::optional<std::vector<ColorSetColor>> colors;
};

// The JSON text of a record, two-space indented, keys sorted, ending in a line feed.
std::string encodeAssetCatalogContents(const AssetCatalogContents& contents);
// Reads a Contents.json text; nullopt when it isn't JSON of the expected shape.
std::optional<AssetCatalogContentsFile> decodeAssetCatalogContents(const std::string& text);

class AssetCatalogExporter : public BuildTaskExporter {
public:
    AssetCatalogExporter() = default;

    // Replaces <folder>/<exportFileName>.xcassets by a fresh catalog of the items.
    void exportTo(const std::filesystem::path& folder, const BuildTask& task, const std::vector<ProjectItemPtr>& items,
                  const std::filesystem::path& documentURL) override;
};

}  // namespace tintwork
