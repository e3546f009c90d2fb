#include <gtest/gtest.h>

#include <filesystem>

#include <nlohmann/json.hpp>

#include "export/JsonDesignExporter.h"
#include "file/OchreColorFileReader.h"
#include "import/Importer.h"
#include "model/FileIO.h"

namespace tintwork {
namespace {

using Json = nlohmann::json;

template <typename Payload>
ProjectItemPtr item(const std::string& name, Payload payload) {
    return std::make_shared<OchreColorProjectItem>(name, name + "-uuid", std::move(payload));
}

ThemeableColor themeable(const std::string& name, ColorValue light, std::optional<ColorValue> dark = std::nullopt) {
    ThemeableColor color;
    color.name = name;
    color.lightVariant = light;
    color.darkVariant = dark;
    return color;
}

// Exports the items, imports the file, exports what came in and returns both files' JSON.
// Equal files mean every value and appearance survived, to the four significant digits kept.
std::pair<Json, Json> exportImportExport(const std::vector<ProjectItemPtr>& items, const std::string& caseName,
                                         ProjectItemPtr* imported = nullptr) {
    std::filesystem::path folder = std::filesystem::temp_directory_path() / "tintwork-json-round-trip" / caseName;
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder / "again");
    BuildTask task;
    task.exportFileName = "tokens";
    task.exportFileType = BuildFileType::jsonDesignToken;
    auto project = std::make_shared<OchreColorProject>();
    JsonDesignExporter(project).exportTo(folder, task, items, folder / "D.tintwork");
    ProjectItemPtr root = Importer().importFile(folder / "tokens.json", ImportSourceKind::designTokensJSON);
    JsonDesignExporter(project).exportTo(folder / "again", task, root->group->items, folder / "D.tintwork");
    if (imported) {
        *imported = root;
    }
    return {Json::parse(readFileBytes(folder / "tokens.json")),
            Json::parse(readFileBytes(folder / "again" / "tokens.json"))};
}

TEST(JsonDesignRoundTrip, ADocumentOfEveryKindComesBack) {
    OchreColorItem accent;
    accent.color = themeable("Accent", ColorValue::sRGB(0.2, 0.4, 0.6), ColorValue::sRGB(0.8, 0.6, 0.4));
    accent.color.lightVariantHighContrast = ColorValue::sRGB(0.1, 0.2, 0.3);
    accent.color.darkVariantHighContrast = ColorValue::sRGB(0.9, 0.8, 0.7);
    OchreColorItem wide;
    wide.color = themeable("Wide", ColorValue(ColorEncoding::displayP3, 0.912345, 0.1, 0.05, 0.5));
    OchreColorSet ramp;
    ramp.colors = {themeable("100", ColorValue::sRGB(0.9, 0.9, 1), ColorValue::sRGB(0.1, 0.1, 0.2)),
                   themeable("200", ColorValue::sRGB(0.5, 0.5, 1), ColorValue::sRGB(0.3, 0.3, 0.5)),
                   themeable("300", ColorValue::sRGB(0.1, 0.1, 1), ColorValue::sRGB(0.6, 0.6, 0.9))};
    OchreColorNumber spacing;
    spacing.value.lightVariant = 4.25;
    spacing.value.darkVariant = 1234.5678;
    OchreColorBoolean rounded;
    rounded.value.lightVariant = true;
    rounded.value.darkVariant = false;
    OchreColorString font;
    font.value.lightVariant = "Inter \xC2\xAB" "Display\xC2\xBB";
    font.value.darkVariant = "Inter Dark";
    OchreColorShadow card;
    card.shadow.lightVariant = ShadowDetails{0, 8, 16.5, -2, ColorValue::sRGB(0, 0, 0, 0.2)};
    OchreColorGroup nested;
    nested.items = {item("Deep", OchreColorItem{themeable("Deep", ColorValue::sRGB(0, 0.5, 0))})};
    OchreColorGroup palette;
    palette.items = {item("Accent", accent), item("Wide", wide),       item("Ramp", ramp),   item("Spacing", spacing),
                     item("Rounded", rounded), item("Font", font), item("Card", card), item("Nested", nested)};

    ProjectItemPtr imported;
    auto [first, second] = exportImportExport({item("Palette", palette)}, "kinds", &imported);
    EXPECT_EQ(first, second);
    EXPECT_EQ(first["Light"]["Palette"]["Spacing"]["$value"], 4.25);
    EXPECT_EQ(first["Dark"]["Palette"]["Spacing"]["$value"], 1235.0);

    ASSERT_EQ(imported->group->items.size(), 1u);
    std::map<std::string, ProjectItemPtr> byName;
    for (const ProjectItemPtr& child : imported->group->items[0]->group->items) {
        byName[child->name] = child;
    }
    EXPECT_EQ(byName["Accent"]->color->appearanceType, AppearanceType::lightDarkHighContrast);
    EXPECT_EQ(byName["Ramp"]->colorSet->appearanceType, AppearanceType::lightAndDark);
    EXPECT_EQ(byName["Wide"]->color->color.lightVariant.encoding(), ColorEncoding::displayP3);
    EXPECT_NEAR(byName["Wide"]->color->color.lightVariant.red(), 0.912345, 5e-5);
    EXPECT_EQ(byName["Font"]->string->value.lightVariant, "Inter \xC2\xAB" "Display\xC2\xBB");
    EXPECT_EQ(byName["Card"]->shadow->shadow.lightVariant.blur, 16.5);
}

// The bundled example, with its aliases, sets and appearances.
TEST(JsonDesignRoundTrip, TheExampleDocumentComesBack) {
    const std::string example = std::string(TINTWORK_SOURCE_DIR) + "/examples/Colors.tintwork";
    auto project = OchreColorFileReader().read(readFileBytes(example));
    ASSERT_FALSE(project->buildGroups.empty());
    // The reader leaves a shadow's other appearances in their own groups rather than merging
    // them, so only the shadows' light values can come back.
    project->walk([](OchreColorProjectItem& item) {
        auto lightOnly = [](ThemeableShadow& shadow) {
            shadow.darkVariant.reset();
            shadow.lightVariantHighContrast.reset();
            shadow.darkVariantHighContrast.reset();
        };
        if (item.shadow) {
            lightOnly(item.shadow->shadow);
        }
        if (item.shadowSet) {
            for (ThemeableShadow& shadow : item.shadowSet->shadows) {
                lightOnly(shadow);
            }
        }
    });
    auto [first, second] = exportImportExport(project->itemsForBuildGroup(*project->buildGroups[0]), "example");
    EXPECT_TRUE(first.contains("Dark"));
    EXPECT_EQ(first, second);
}

}  // namespace
}  // namespace tintwork
