#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

#include <nlohmann/json.hpp>

#include "export/JsonDesignExporter.h"
#include "file/OchreColorFileReader.h"
#include "import/Importer.h"
#include "model/FileIO.h"

namespace tintwork {
namespace {

template <typename Payload>
ProjectItemPtr item(const std::string& name, Payload payload) {
    return std::make_shared<OchreColorProjectItem>(name, name + "-uuid", std::move(payload));
}

ProjectItemPtr groupItem(const std::string& name, std::vector<ProjectItemPtr> children) {
    OchreColorGroup group;
    group.items = std::move(children);
    return item(name, group);
}

ThemeableColor themeable(const std::string& name, ColorValue light, std::optional<ColorValue> dark = std::nullopt) {
    ThemeableColor color;
    color.name = name;
    color.lightVariant = light;
    color.darkVariant = dark;
    return color;
}

// A document with every kind the format carries, in several appearances.
std::vector<ProjectItemPtr> sampleItems() {
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
    font.value.lightVariant = "Inter «Display»";
    font.value.darkVariant = "Inter Dark";
    OchreColorShadow card;
    card.shadow.lightVariant = ShadowDetails{0, 8, 16.5, -2, ColorValue::sRGB(0, 0, 0, 0.2)};
    OchreColorItem deep;
    deep.color = themeable("Deep", ColorValue::sRGB(0, 0.5, 0));
    return {groupItem("Palette", {item("Accent", accent), item("Wide", wide), item("Ramp", ramp),
                                  item("Spacing", spacing), item("Rounded", rounded), item("Font", font),
                                  item("Card", card), groupItem("Nested", {item("Deep", deep)})})};
}

// Four significant digits survive the file.
bool near(double expected, double actual) {
    return std::fabs(expected - actual) <= 5e-4 * std::max(1.0, std::fabs(expected));
}

void expectSameColor(const std::optional<ColorValue>& expected, const std::optional<ColorValue>& actual,
                     const std::string& where) {
    ASSERT_EQ(expected.has_value(), actual.has_value()) << where;
    if (!expected) {
        return;
    }
    EXPECT_EQ(expected->encoding(), actual->encoding()) << where;
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_PRED2(near, expected->rgbaComponents()[i], actual->rgbaComponents()[i]) << where << " component " << i;
    }
}

void expectSameThemeableColor(const ThemeableColor& expected, const ThemeableColor& actual, const std::string& where) {
    for (ColorSource source :
         {ColorSource::light, ColorSource::dark, ColorSource::lightHighContrast, ColorSource::darkHighContrast}) {
        expectSameColor(expected.storedVariant(source), actual.storedVariant(source), where);
    }
}

template <typename T, typename Compare>
void expectSameVariants(const Themeable<T>& expected, const Themeable<T>& actual, Compare compare,
                        const std::string& where) {
    for (ColorSource source :
         {ColorSource::light, ColorSource::dark, ColorSource::lightHighContrast, ColorSource::darkHighContrast}) {
        auto e = expected.storedVariant(source);
        auto a = actual.storedVariant(source);
        ASSERT_EQ(e.has_value(), a.has_value()) << where;
        if (e) {
            EXPECT_TRUE(compare(*e, *a)) << where;
        }
    }
}

// Compares two trees by name: the import orders siblings by name, the original need not.
void expectSameTree(const OchreColorProjectItem& expected, const OchreColorProjectItem& actual) {
    ASSERT_EQ(expected.itemType, actual.itemType) << expected.name;
    const std::string& where = expected.name;
    switch (expected.itemType) {
        case ProjectItemType::group: {
            std::vector<ProjectItemPtr> sorted = expected.group->items;
            std::sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return a->name < b->name; });
            ASSERT_EQ(sorted.size(), actual.group->items.size()) << where;
            for (std::size_t i = 0; i < sorted.size(); ++i) {
                EXPECT_EQ(sorted[i]->name, actual.group->items[i]->name) << where;
                expectSameTree(*sorted[i], *actual.group->items[i]);
            }
            break;
        }
        case ProjectItemType::color:
            expectSameThemeableColor(expected.color->color, actual.color->color, where);
            break;
        case ProjectItemType::colorSet:
            ASSERT_EQ(expected.colorSet->colors.size(), actual.colorSet->colors.size()) << where;
            for (std::size_t i = 0; i < expected.colorSet->colors.size(); ++i) {
                EXPECT_EQ(expected.colorSet->colors[i].name, actual.colorSet->colors[i].name);
                expectSameThemeableColor(expected.colorSet->colors[i], actual.colorSet->colors[i], where);
            }
            break;
        case ProjectItemType::number:
            expectSameVariants(expected.number->value, actual.number->value, near, where);
            break;
        case ProjectItemType::boolean:
            expectSameVariants(expected.boolean->value, actual.boolean->value, std::equal_to<bool>(), where);
            break;
        case ProjectItemType::string:
            expectSameVariants(expected.string->value, actual.string->value, std::equal_to<std::string>(), where);
            break;
        case ProjectItemType::shadow:
            expectSameVariants(
                expected.shadow->shadow, actual.shadow->shadow,
                [](const ShadowDetails& e, const ShadowDetails& a) {
                    return e.xOffset == a.xOffset && e.yOffset == a.yOffset && e.blur == a.blur &&
                           e.spread == a.spread && std::fabs(e.color.alpha() - a.color.alpha()) < 1.0 / 255;
                },
                where);
            break;
        default: ADD_FAILURE() << "unexpected kind in " << where;
    }
}

TEST(JsonDesignRoundTrip, ExportThenImportGivesBackTheDocument) {
    std::filesystem::path folder = std::filesystem::temp_directory_path() / "tintwork-json-round-trip";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    BuildTask task;
    task.exportFileName = "tokens";
    task.exportFileType = BuildFileType::jsonDesignToken;
    std::vector<ProjectItemPtr> items = sampleItems();
    JsonDesignExporter(std::make_shared<OchreColorProject>()).exportTo(folder, task, items, folder / "D.tintwork");

    ProjectItemPtr imported = Importer().importFile(folder / "tokens.json", ImportSourceKind::designTokensJSON);
    ASSERT_EQ(imported->group->items.size(), 1u);
    expectSameTree(*items[0], *imported->group->items[0]);

    const OchreColorProjectItem& palette = *imported->group->items[0];
    auto find = [&](const std::string& name) {
        return *std::find_if(palette.group->items.begin(), palette.group->items.end(),
                             [&](const ProjectItemPtr& child) { return child->name == name; });
    };
    EXPECT_EQ(find("Accent")->color->appearanceType, AppearanceType::lightDarkHighContrast);
    EXPECT_EQ(find("Ramp")->colorSet->appearanceType, AppearanceType::lightAndDark);
    EXPECT_EQ(find("Wide")->color->appearanceType, AppearanceType::none);
}

// Exporting what an export imported gives the same file: every value the format carries
// survives, for the bundled example with its aliases, sets and appearances.
TEST(JsonDesignRoundTrip, TheExampleDocumentIsAFixedPointOfExportAndImport) {
    auto project = OchreColorFileReader().read(readFileBytes(std::string(TINTWORK_SOURCE_DIR) + "/examples/Colors.tintwork"));
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
    std::filesystem::path folder = std::filesystem::temp_directory_path() / "tintwork-json-example";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder / "again");
    BuildTask task;
    task.exportFileName = "tokens";
    task.exportFileType = BuildFileType::jsonDesignToken;
    JsonDesignExporter(project).exportTo(folder, task, project->itemsForBuildGroup(*project->buildGroups[0]),
                                         folder / "Colors.tintwork");

    ProjectItemPtr imported = Importer().importFile(folder / "tokens.json", ImportSourceKind::designTokensJSON);
    JsonDesignExporter(project).exportTo(folder / "again", task, imported->group->items, folder / "Colors.tintwork");

    nlohmann::json first = nlohmann::json::parse(readFileBytes(folder / "tokens.json"));
    nlohmann::json second = nlohmann::json::parse(readFileBytes(folder / "again" / "tokens.json"));
    EXPECT_TRUE(first.contains("Dark"));
    EXPECT_EQ(first, second) << first.dump(2) << "\n---\n" << second.dump(2);
}

}  // namespace
}  // namespace tintwork
