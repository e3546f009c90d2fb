#include "export/AssetCatalogExporter.h"

#include <cmath>
#include <cstdio>
#include <set>

#include <nlohmann/json.hpp>

#include "colour/ColorValue.h"
#include "model/FileIO.h"

namespace tintwork {

namespace {

using nlohmann::json;

constexpr const char* contentsFileName = "Contents.json";

const char* symbolSettingWord(SwiftAssetSymbolExtensionSettings setting) {
    switch (setting) {
        case SwiftAssetSymbolExtensionSettings::enabled: return "enabled";
        case SwiftAssetSymbolExtensionSettings::disabled: return "disabled";
        case SwiftAssetSymbolExtensionSettings::notDefined: return "notDefined";
    }
    return "notDefined";
}

std::optional<SwiftAssetSymbolExtensionSettings> symbolSettingFromWord(const std::string& word) {
    if (word == "enabled") {
        return SwiftAssetSymbolExtensionSettings::enabled;
    }
    if (word == "disabled") {
        return SwiftAssetSymbolExtensionSettings::disabled;
    }
    if (word == "notDefined") {
        return SwiftAssetSymbolExtensionSettings::notDefined;
    }
    return std::nullopt;
}

json encodeProperties(const AssetCatalogProperties& properties) {
    json out = json::object();
    if (properties.providesNameSpace) {
        out["provides-namespace"] = *properties.providesNameSpace;
    }
    if (properties.generateSwiftAssetSymbolExtensions) {
        out["generate-swift-asset-symbol-extensions"] = symbolSettingWord(*properties.generateSwiftAssetSymbolExtensions);
    }
    return out;
}

json encodeColor(const ColorSetColor& color) {
    json components = json::object();
    const ColorSetColorComponents& c = color.color.components;
    const std::pair<const char*, const std::optional<std::string>*> fields[] = {
        {"red", &c.red}, {"green", &c.green}, {"blue", &c.blue}, {"alpha", &c.alpha}, {"white", &c.white}};
    for (const auto& [key, value] : fields) {
        if (*value) {
            components[key] = **value;
        }
    }
    json out = {{"idiom", color.idiom},
                {"color", {{"color-space", color.color.colorSpace}, {"components", components}}}};
    if (color.appearances) {
        json appearances = json::array();
        for (const ColorSetAppearance& appearance : *color.appearances) {
            appearances.push_back({{"appearance", appearance.appearance}, {"value", appearance.value}});
        }
        out["appearances"] = appearances;
    }
    return out;
}

std::optional<std::string> optionalString(const json& object, const char* key) {
    auto found = object.find(key);
    if (found == object.end() || !found->is_string()) {
        return std::nullopt;
    }
    return found->get<std::string>();
}

std::optional<ColorSetColor> decodeColor(const json& entry) {
    if (!entry.is_object()) {
        return std::nullopt;
    }
    auto details = entry.find("color");
    if (details == entry.end() || !details->is_object()) {
        return std::nullopt;
    }
    ColorSetColor color;
    color.idiom = optionalString(entry, "idiom").value_or("universal");
    color.color.colorSpace = optionalString(*details, "color-space").value_or("srgb");
    auto components = details->find("components");
    if (components != details->end() && components->is_object()) {
        color.color.components.red = optionalString(*components, "red");
        color.color.components.green = optionalString(*components, "green");
        color.color.components.blue = optionalString(*components, "blue");
        color.color.components.alpha = optionalString(*components, "alpha");
        color.color.components.white = optionalString(*components, "white");
    }
    auto appearances = entry.find("appearances");
    if (appearances != entry.end() && appearances->is_array()) {
        std::vector<ColorSetAppearance> list;
        for (const json& appearance : *appearances) {
            if (appearance.is_object()) {
                list.push_back({optionalString(appearance, "appearance").value_or(""),
                                optionalString(appearance, "value").value_or("")});
            }
        }
        color.appearances = std::move(list);
    }
    return color;
}

// The catalog's name for a colour encoding.
std::string colorSpaceName(ColorEncoding encoding) {
    switch (encoding) {
        case ColorEncoding::sRGB: return "srgb";
        case ColorEncoding::sRGBExtended: return "extended-srgb";
        case ColorEncoding::displayP3: return "display-p3";
        case ColorEncoding::extendedLinearSRGB: return "extended-linear-srgb";
    }
    return "srgb";
}

// A component as Xcode writes it in floating-point mode, with four decimals.
std::string componentText(double value) {
    double rounded = roundPlaces(value, 4);
    if (rounded == 0.0) {
        rounded = 0.0;  // no "-0.0000"
    }
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.4f", rounded);
    return buffer;
}

ColorSetColor colorEntry(const ColorValue& value, std::vector<ColorSetAppearance> appearances) {
    ColorSetColor entry;
    entry.color.colorSpace = colorSpaceName(value.encoding());
    entry.color.components.red = componentText(value.red());
    entry.color.components.green = componentText(value.green());
    entry.color.components.blue = componentText(value.blue());
    entry.color.components.alpha = componentText(value.alpha());
    if (!appearances.empty()) {
        entry.appearances = std::move(appearances);
    }
    return entry;
}

const ColorSetAppearance darkAppearance{"luminosity", "dark"};
const ColorSetAppearance highContrastAppearance{"contrast", "high"};

// One entry per stored variant: any appearance, high contrast, dark, dark with high contrast.
std::vector<ColorSetColor> colorEntries(const ThemeableColor& color) {
    std::vector<ColorSetColor> entries;
    entries.push_back(colorEntry(color.lightVariant, {}));
    if (color.lightVariantHighContrast) {
        entries.push_back(colorEntry(*color.lightVariantHighContrast, {highContrastAppearance}));
    }
    if (color.darkVariant) {
        entries.push_back(colorEntry(*color.darkVariant, {darkAppearance}));
    }
    if (color.darkVariantHighContrast) {
        entries.push_back(colorEntry(*color.darkVariantHighContrast, {darkAppearance, highContrastAppearance}));
    }
    return entries;
}

// A document name made safe as one folder name: no path separators or NUL (which no
// file system takes in a name), no leading dot (which would hide the folder), never empty.
std::string folderName(const std::string& name, const std::string& fallback) {
    std::string cleaned;
    for (char c : name) {
        cleaned += (c == '/' || c == '\\' || c == ':' || c == '\0') ? '-' : c;
    }
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
    while (!cleaned.empty() && (isBlank(cleaned.front()) || cleaned.front() == '.')) {
        cleaned.erase(cleaned.begin());
    }
    while (!cleaned.empty() && isBlank(cleaned.back())) {
        cleaned.pop_back();
    }
    return cleaned.empty() ? fallback : cleaned;
}

void writeContents(const std::filesystem::path& folder, const AssetCatalogContents& contents) {
    createDirectories(folder);
    writeFileBytes(folder / contentsFileName, encodeAssetCatalogContents(contents));
}

void writeColorSet(const std::filesystem::path& parent, const std::string& name, const ThemeableColor& color) {
    AssetCatalogContents contents;
    contents.colors = colorEntries(color);
    writeContents(parent / (folderName(name, "Unnamed") + ".colorset"), contents);
}

// Adds one item below `parent`: colours and aliases of colours become colour
// sets, a colour set a namespaced folder of its members, a group a folder.
// Values the catalog format has no place for (numbers, booleans, strings and
// shadows) are left out.
void addItem(const OchreColorProjectItem& item, const std::filesystem::path& parent, std::set<std::string>& seen) {
    if (seen.count(item.uuid) != 0) {
        return;
    }
    if (auto color = item.resolvedColor()) {
        seen.insert(item.uuid);
        writeColorSet(parent, item.name, *color);
        return;
    }
    if (auto members = item.resolvedColorSet()) {
        seen.insert(item.uuid);
        AssetCatalogContents contents;
        contents.properties = AssetCatalogProperties{true, std::nullopt};
        const std::filesystem::path setFolder = parent / folderName(item.name, "Unnamed");
        writeContents(setFolder, contents);
        for (std::size_t i = 0; i < members->size(); ++i) {
            writeColorSet(setFolder, folderName((*members)[i].name, std::to_string(i + 1)), (*members)[i]);
        }
        return;
    }
    if (item.itemType == ProjectItemType::group && item.group) {
        AssetCatalogContents contents;
        if (item.group->providesNamespace) {
            contents.properties = AssetCatalogProperties{true, std::nullopt};
        }
        const std::filesystem::path groupFolder = parent / folderName(item.name, "Unnamed");
        writeContents(groupFolder, contents);
        for (const ProjectItemPtr& child : item.group->items) {
            if (child) {
                addItem(*child, groupFolder, seen);
            }
        }
    }
}

}  // namespace

std::string encodeAssetCatalogContents(const AssetCatalogContents& contents) {
    json out = json::object();
    out["info"] = {{"author", contents.info.author}, {"version", contents.info.version}};
    if (contents.properties) {
        out["properties"] = encodeProperties(*contents.properties);
    }
    if (contents.colors) {
        json colors = json::array();
        for (const ColorSetColor& color : *contents.colors) {
            colors.push_back(encodeColor(color));
        }
        out["colors"] = colors;
    }
    return out.dump(2) + "\n";
}

std::optional<AssetCatalogContentsFile> decodeAssetCatalogContents(const std::string& text) {
    json document = json::parse(text, nullptr, false);
    if (document.is_discarded() || !document.is_object()) {
        return std::nullopt;
    }
    AssetCatalogContentsFile file;
    auto properties = document.find("properties");
    if (properties != document.end() && properties->is_object()) {
        AssetCatalogProperties decoded;
        auto namespaced = properties->find("provides-namespace");
        if (namespaced != properties->end() && namespaced->is_boolean()) {
            decoded.providesNameSpace = namespaced->get<bool>();
        }
        if (auto word = optionalString(*properties, "generate-swift-asset-symbol-extensions")) {
            decoded.generateSwiftAssetSymbolExtensions = symbolSettingFromWord(*word);
        }
        file.properties = decoded;
    }
    auto colors = document.find("colors");
    if (colors != document.end() && colors->is_array()) {
        std::vector<ColorSetColor> list;
        for (const json& entry : *colors) {
            if (auto color = decodeColor(entry)) {
                list.push_back(std::move(*color));
            }
        }
        file.colors = std::move(list);
    }
    return file;
}

void AssetCatalogExporter::exportTo(const std::filesystem::path& folder, const BuildTask& task,
                                    const std::vector<ProjectItemPtr>& items, const std::filesystem::path&) {
    const std::filesystem::path catalog = appendingStoredPath(folder, task.exportFileNameWithExtension());
    // A catalog is a folder tree: merging into an older one would keep colours that
    // are gone from the document, so the old tree goes first.
    removeItemIgnoringErrors(catalog);

    AssetCatalogContents root;
    auto symbols = task.customData.find(std::string(customDataAssetCatalogSymbols));
    if (symbols != task.customData.end()) {
        if (auto setting = assetCatalogSymbolGenerationFromWord(symbols->second)) {
            if (*setting == AssetCatalogSymbolGeneration::yes) {
                root.properties = AssetCatalogProperties{std::nullopt, SwiftAssetSymbolExtensionSettings::enabled};
            } else if (*setting == AssetCatalogSymbolGeneration::no) {
                root.properties = AssetCatalogProperties{std::nullopt, SwiftAssetSymbolExtensionSettings::disabled};
            }
        }
    }
    writeContents(catalog, root);

    std::set<std::string> seen;
    for (const ProjectItemPtr& item : items) {
        if (item) {
            addItem(*item, catalog, seen);
        }
    }
}

}  // namespace tintwork
