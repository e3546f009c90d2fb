#pragma once
// A realistic document for the exporter tests: a namespaced brand group with themed
// colours and a colour set, an unnamespaced layout group with numbers, booleans,
// strings, shadows and a shadow set, a working alias and a broken one.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>

#include "model/Project.h"

namespace tintwork::testing {

inline ColorValue srgb(double red, double green, double blue, double alpha = 1.0) {
    return ColorValue(ColorEncoding::sRGB, red, green, blue, alpha);
}

inline ThemeableColor themed(std::string name, ColorValue light, std::optional<ColorValue> dark = std::nullopt,
                             std::optional<ColorValue> highContrast = std::nullopt,
                             std::optional<ColorValue> darkHighContrast = std::nullopt) {
    ThemeableColor color;
    color.name = std::move(name);
    color.lightVariant = light;
    color.darkVariant = dark;
    color.lightVariantHighContrast = highContrast;
    color.darkVariantHighContrast = darkHighContrast;
    return color;
}

inline ShadowDetails shadow(double x, double y, double blur, double spread, ColorValue color) {
    ShadowDetails details;
    details.xOffset = x;
    details.yOffset = y;
    details.blur = blur;
    details.spread = spread;
    details.color = color;
    return details;
}

inline ProjectItemPtr colorItem(const std::string& name, const std::string& uuid, ThemeableColor color) {
    OchreColorItem payload;
    color.name = name;
    payload.color = std::move(color);
    return std::make_shared<OchreColorProjectItem>(name, uuid, std::move(payload));
}

inline ProjectItemPtr groupItem(const std::string& name, const std::string& uuid, bool providesNamespace,
                                std::vector<ProjectItemPtr> members) {
    OchreColorGroup payload;
    payload.items = std::move(members);
    payload.providesNamespace = providesNamespace;
    return std::make_shared<OchreColorProjectItem>(name, uuid, std::move(payload));
}

inline ProjectItemPtr colorAliasItem(const std::string& name, const std::string& uuid, const std::string& target) {
    OchreColorAlias alias;
    alias.aliasTypes[0] = AliasSetType::item(target);
    return std::make_shared<OchreColorProjectItem>(name, uuid, std::move(alias));
}

inline BuildTask task(std::string name, BuildFileType type, std::string fileName,
                      BuildNameTransform transform = BuildNameTransform::kebabCase) {
    BuildTask result;
    result.name = std::move(name);
    result.exportFileType = type;
    result.exportFileName = std::move(fileName);
    result.nameTransform = transform;
    result.uuid = "TASK-" + result.exportFileName;
    return result;
}

struct TestDocument {
    std::shared_ptr<OchreColorProject> project = std::make_shared<OchreColorProject>();
    BuildGroupPtr web = std::make_shared<BuildGroup>();
    ProjectItemPtr primary;
};

// The document; its "Web" build group holds the brand and layout groups and the aliases.
inline TestDocument makeTestDocument() {
    TestDocument document;
    document.web->uuid = "WEB-GROUP";
    document.web->name = "Web";
    document.project->buildGroups.push_back(document.web);

    document.primary = colorItem("Primary", "PRIMARY",
                                 themed("Primary", srgb(0, 0.4, 0.8), srgb(0.4, 0.6, 1), srgb(0, 0.2, 0.6),
                                        srgb(0.6, 0.8, 1)));
    auto accent = colorItem("Accent", "ACCENT",
                            themed("Accent", ColorValue(ColorEncoding::displayP3, 1, 0.2, 0.4, 1)));
    accent->color->colorSpace = ColorSpace::displayP3;
    OchreColorSet grey;
    grey.colors = {themed("100", srgb(0.9, 0.9, 0.9), srgb(0.1, 0.1, 0.1)), themed("200", srgb(0.6, 0.6, 0.6))};
    grey.steps = 2;
    auto greySet = std::make_shared<OchreColorProjectItem>("Grey", "GREY", std::move(grey));
    auto brand = groupItem("Brand", "BRAND", true, {document.primary, accent, greySet});

    OchreColorNumber radius;
    radius.value.lightVariant = 8;
    radius.value.darkVariant = 6;
    OchreColorBoolean rounded;
    rounded.value.lightVariant = true;
    rounded.value.darkVariant = false;
    OchreColorString font;
    font.value.lightVariant = "Inter";
    font.value.lightVariantHighContrast = "Atkinson Hyperlegible";
    OchreColorShadow card;
    card.shadow.name = "Card";
    card.shadow.lightVariant = shadow(0, 8, 16, 0, srgb(0, 0, 0, 0.25));
    card.shadow.darkVariant = shadow(0, 4, 12, 2, srgb(0, 0, 0, 0.5));
    OchreColorShadowSet elevation;
    ThemeableShadow low;
    low.name = "1";
    low.lightVariant = shadow(0, 1, 2, 0, srgb(0, 0, 0, 0.2));
    ThemeableShadow high;
    high.name = "2";
    high.lightVariant = shadow(0, 2, 4, 0, srgb(0, 0, 0, 0.2));
    elevation.shadows = {low, high};
    elevation.steps = 2;
    auto layout = groupItem(
        "Layout", "LAYOUT", false,
        {std::make_shared<OchreColorProjectItem>("Corner Radius", "RADIUS", std::move(radius)),
         std::make_shared<OchreColorProjectItem>("Rounded Corners", "ROUNDED", std::move(rounded)),
         std::make_shared<OchreColorProjectItem>("Font Family", "FONT", std::move(font)),
         std::make_shared<OchreColorProjectItem>("Card", "CARD", std::move(card)),
         std::make_shared<OchreColorProjectItem>("Elevation", "ELEVATION", std::move(elevation))});

    auto link = colorAliasItem("Link", "LINK", "PRIMARY");
    auto ghost = colorAliasItem("Ghost", "GHOST", "NO-SUCH-ITEM");
    auto unlisted = colorItem("Unlisted", "UNLISTED", themed("Unlisted", srgb(1, 0, 0)));

    for (const auto& item : {brand, layout, link, ghost}) {
        item->buildGroup = document.web;
    }
    // Also attached directly: it must still be exported once, inside its group.
    document.primary->buildGroup = document.web;
    document.project->items = {brand, layout, link, ghost, unlisted};
    document.project->linkAliases();
    return document;
}

// A fresh, empty folder under the system's temporary folder.
inline std::filesystem::path freshFolder(const std::string& name) {
    const auto folder = std::filesystem::temp_directory_path() / ("tintwork-export-tests-" + name);
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    return folder;
}

inline std::string readText(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

inline void writeText(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

}  // namespace tintwork::testing
