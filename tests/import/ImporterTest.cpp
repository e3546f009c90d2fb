#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "import/ColorImporter.h"
#include "import/ImportedColor.h"
#include "import/Importer.h"
#include "import/SetBuilder.h"
#include "model/FileIO.h"

namespace tintwork {
namespace {

std::filesystem::path writeTemporary(const std::string& name, const std::string& text) {
    std::filesystem::path folder = std::filesystem::temp_directory_path() / "tintwork-import-tests";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / name) << text;
    return folder / name;
}

ThemeableColor themeable(const std::string& name, ColorValue color) {
    ThemeableColor result;
    result.name = name;
    result.uuid = name + "-uuid";
    result.lightVariant = color;
    return result;
}

TEST(Importer, NamesTheReceivingGroupAfterKindAndFile) {
    EXPECT_EQ(groupNamePrefix(ImportSourceKind::assetCatalog), "Asset Catalog");
    EXPECT_EQ(groupNamePrefix(ImportSourceKind::css), "CSS Import");
    std::filesystem::path path = writeTemporary("theme.json", R"({"x": {"$value": "y"}})");
    ProjectItemPtr group = Importer().importFile(path, ImportSourceKind::designTokensJSON);
    EXPECT_EQ(group->name, "Design Tokens JSON Import - theme.json");
    EXPECT_TRUE(group->isExpanded);
    EXPECT_EQ(group->itemType, ProjectItemType::group);
    ASSERT_EQ(group->group->items.size(), 1u);
}

TEST(Importer, PassesTheImportersErrorOn) {
    std::filesystem::path path = writeTemporary("broken.json", "{");
    try {
        Importer().importFile(path, ImportSourceKind::designTokensJSON);
        FAIL() << "no error";
    } catch (const DocumentColorParsingError& error) {
        EXPECT_EQ(std::string(error.what()).rfind("broken.json is not valid JSON: ", 0), 0u) << error.what();
    }
    EXPECT_THROW(Importer().importFile(path.parent_path() / "missing.json", ImportSourceKind::designTokensJSON),
                 FileError);
}

TEST(ImportedColor, DuplicatesAreSingleColoursByValueAndSetsByNameAndMembers) {
    const ColorValue red = ColorValue::sRGB(1, 0, 0);
    const ColorValue blue = ColorValue::sRGB(0, 0, 1);
    std::vector<ImportedColor> list = {
        {{NamedColor(red, "Red")}, std::nullopt, ImportedColorType::singleColor},
        {{NamedColor(red, "a"), NamedColor(blue, "b")}, std::string("Pair"), ImportedColorType::set},
    };
    EXPECT_TRUE(isDuplicateColor({NamedColor(red, "Other name")}, std::nullopt, ImportedColorType::singleColor, list));
    EXPECT_FALSE(isDuplicateColor({NamedColor(blue, "Red")}, std::nullopt, ImportedColorType::singleColor, list));
    EXPECT_TRUE(isDuplicateColor({NamedColor(red, "x"), NamedColor(ColorValue::sRGB(0, 0, 0.99995), "b")},
                                 std::string("Pair"), ImportedColorType::set, list));
    EXPECT_FALSE(isDuplicateColor({NamedColor(red, "a"), NamedColor(blue, "B")}, std::string("Pair"),
                                  ImportedColorType::set, list));
    EXPECT_FALSE(isDuplicateColor({NamedColor(red, "a"), NamedColor(blue, "b")}, std::string("Other"),
                                  ImportedColorType::set, list));
    EXPECT_FALSE(isDuplicateColor({NamedColor(red, "a")}, std::string("Pair"), ImportedColorType::set, list));
}

TEST(ImportedColor, AddsColoursAndDisplayP3Sets) {
    OchreColorProjectItem group("Import", "G", OchreColorGroup{});
    addImportedColors({{{NamedColor(ColorValue::sRGB(1, 0, 0), "Red")}, std::nullopt, ImportedColorType::singleColor},
                       {{}, std::nullopt, ImportedColorType::singleColor},
                       {{NamedColor(ColorValue::sRGB(0, 0, 1), "1"), NamedColor(ColorValue::sRGB(0, 1, 0), "2")},
                        std::nullopt,
                        ImportedColorType::set}},
                      group);
    ASSERT_EQ(group.group->items.size(), 2u);
    const OchreColorProjectItem& red = *group.group->items[0];
    EXPECT_EQ(red.name, "Red");
    EXPECT_EQ(red.color->color.lightVariant, ColorValue::sRGB(1, 0, 0));
    EXPECT_EQ(red.color->appearanceType, AppearanceType::none);
    const OchreColorProjectItem& set = *group.group->items[1];
    EXPECT_EQ(set.name, "Color Set");
    EXPECT_EQ(set.colorSet->colorSpace, ColorSpace::displayP3);
    EXPECT_EQ(set.colorSet->colors[1].lightVariant, ColorValue::sRGB(0, 1, 0));
}

TEST(SetBuilder, ChoosesOneSpaceForAllMembers) {
    const ColorValue p3Red(ColorEncoding::displayP3, 1, 0, 0, 1);
    OchreColorSet srgb =
        makeColorSet({themeable("1", ColorValue::sRGB(1, 0, 0)), themeable("2", ColorValue::sRGB(0, 1, 0))});
    EXPECT_EQ(srgb.colorSpace, ColorSpace::sRGB);
    EXPECT_EQ(srgb.colors[0].uuid, "1-uuid");
    EXPECT_EQ(srgb.type, SetType::manual);
    EXPECT_EQ(srgb.namingScheme, ColorNamingScheme::manual);
    EXPECT_EQ(srgb.interpolationMethod, InterpolationMethod::linear);

    OchreColorSet p3 = makeColorSet({themeable("1", p3Red), themeable("2", p3Red)});
    EXPECT_EQ(p3.colorSpace, ColorSpace::displayP3);
    EXPECT_EQ(p3.colors[1].lightVariant, p3Red);

    OchreColorSet mixed = makeColorSet({themeable("1", ColorValue::sRGB(1, 0, 0)), themeable("2", p3Red)});
    EXPECT_EQ(mixed.colorSpace, ColorSpace::displayP3);
    ASSERT_EQ(mixed.colors.size(), 2u);
    EXPECT_EQ(mixed.colors[0].lightVariant.encoding(), ColorEncoding::displayP3);
    EXPECT_LT(mixed.colors[0].lightVariant.red(), 0.95);  // sRGB red lies inside the P3 gamut
    EXPECT_EQ(mixed.colors[0].name, "1");
    EXPECT_NE(mixed.colors[0].uuid, "1-uuid");

    const ColorValue insideExtended(ColorEncoding::sRGBExtended, 0.5, 0.5, 0.5, 1);
    OchreColorSet extended = makeColorSet({themeable("1", insideExtended)});
    EXPECT_EQ(extended.colorSpace, ColorSpace::sRGB);
    EXPECT_EQ(extended.colors[0].lightVariant.encoding(), ColorEncoding::sRGB);
    const ColorValue outsideExtended(ColorEncoding::sRGBExtended, 1.2, 0.5, 0.5, 1);
    EXPECT_EQ(makeColorSet({themeable("1", insideExtended), themeable("2", outsideExtended)}).colorSpace,
              ColorSpace::displayP3);
}

}  // namespace
}  // namespace tintwork
