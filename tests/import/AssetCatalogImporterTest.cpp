#include <gtest/gtest.h>

#include "ImportTestSupport.h"
#include "import/AssetCatalogImporter.h"
#include "import/Importer.h"

namespace tintwork {
namespace {

using testing::describe;

// A Contents.json entry with sRGB components and the given appearances.
std::string entry(const std::string& red, const std::string& green, const std::string& blue,
                  const std::string& appearances = "", const std::string& space = "srgb",
                  const std::string& alpha = "1.000") {
    std::string text = R"({"idiom":"universal","color":{"color-space":")" + space + R"(","components":{"red":")" + red +
                       R"(","green":")" + green + R"(","blue":")" + blue + R"(","alpha":")" + alpha + R"("}})";
    if (!appearances.empty()) {
        text += R"(,"appearances":[)" + appearances + "]";
    }
    return text + "}";
}

const std::string dark = R"({"appearance":"luminosity","value":"dark"})";
const std::string high = R"({"appearance":"contrast","value":"high"})";

std::string colorSet(const std::vector<std::string>& entries) {
    std::string text = R"({"info":{"author":"xcode","version":1},"colors":[)";
    for (std::size_t i = 0; i < entries.size(); ++i) {
        text += (i > 0 ? "," : "") + entries[i];
    }
    return text + "]}";
}

ProjectItemPtr importCatalog(const std::filesystem::path& folder, std::vector<std::string>* diagnostics = nullptr) {
    ProjectItemPtr root = testing::newGroupItem();
    AssetCatalogImporter importer;
    importer.diagnostics = [diagnostics](std::string_view line) {
        if (diagnostics) {
            diagnostics->emplace_back(line);
        }
    };
    importer.importColors(folder, *root);
    return root;
}

TEST(AssetCatalogImporter, ColourSetsGiveColoursWithTheirAppearances) {
    testing::ScratchFolder catalog;
    catalog.write("Accent.colorset/Contents.json",
                  colorSet({entry("0.5", "0.000", "1.0000"), entry("0.1", "0.1", "0.1", high),
                            entry("0.2", "0.2", "0.2", dark), entry("0.3", "0.3", "0.3", dark + "," + high)}));
    // Whole numbers and hexadecimal are 8-bit values; an unknown space or a component with
    // white space costs that entry.
    catalog.write("Bytes.colorset/Contents.json",
                  colorSet({entry("66", "0x3C", "77"), entry(" 0.1", "0", "0", dark), entry("1", "1", "1", dark, "cmyk")}));
    catalog.write("Grey.colorset/Contents.json",
                  R"({"colors":[{"idiom":"universal","color":{"color-space":"gray-gamma-22","components":{"white":"0.500","alpha":"0.5"}}}]})");
    catalog.write("DarkOnly.colorset/Contents.json", colorSet({entry("0.4", "0.4", "0.4", dark, "display-p3")}));
    catalog.write("Unreadable.colorset/Contents.json", colorSet({entry("x", "0", "0")}));
    catalog.write("Empty.colorset/Contents.json", "");

    const ProjectItemPtr root = importCatalog(catalog.path);
    EXPECT_EQ(describe(*root),
              "Accent: #8000FF / hc #1A1A1A / dark #333333 / dark hc #4D4D4D\n"
              "Bytes: #423C4D\n"
              "DarkOnly: #666666 p3 / dark #666666 p3\n"
              "Grey: #80808080\n");
    const OchreColorItem& accent = *root->group->items[0]->color;
    EXPECT_EQ(accent.color.lightVariant, ColorValue::sRGB(0.5, 0, 1));
    EXPECT_EQ(accent.appearanceType, AppearanceType::lightDarkHighContrast);
    EXPECT_EQ(accent.autoContrastAmount, 0.5);
    EXPECT_EQ(accent.color.name, "Accent");
    EXPECT_EQ(root->group->items[1]->color->appearanceType, AppearanceType::none);
    EXPECT_EQ(root->group->items[2]->color->appearanceType, AppearanceType::lightAndDark);
    EXPECT_EQ(root->group->items[2]->color->colorSpace, ColorSpace::displayP3);
}

TEST(AssetCatalogImporter, FoldersBecomeGroupsInNaturalOrder) {
    testing::ScratchFolder catalog;
    catalog.write("Contents.json", R"({"info":{"author":"xcode","version":1}})");
    catalog.write("Brand/Contents.json", R"({"properties":{"provides-namespace":true}})");
    catalog.write("Brand/blue1000.colorset/Contents.json", colorSet({entry("0", "0", "1.0")}));
    catalog.write("Brand/blue200.colorset/Contents.json", colorSet({entry("0", "0", "0.5")}));
    catalog.write("Brand/Nested/Deeper/Contents.json", "{ not json");
    catalog.write("Plain/notes.txt", "no contents record");
    catalog.write("Logo.imageset/Contents.json", R"({"images":[]})");
    catalog.write("loose.json", "{}");

    const ProjectItemPtr root = importCatalog(catalog.path);
    EXPECT_EQ(describe(*root),
              "Brand/\n"
              "  blue200: #000080\n"
              "  blue1000: #0000FF\n"
              "  Nested/\n"
              "    Deeper/\n"
              "Logo.imageset/\n"
              "Plain/\n");
    EXPECT_TRUE(root->group->items[0]->group->providesNamespace);
    EXPECT_FALSE(root->group->items[0]->group->items[2]->group->providesNamespace);
    EXPECT_FALSE(root->group->items[2]->group->providesNamespace);
}

TEST(AssetCatalogImporter, StaysInsideTheCatalogAndWithinDepth) {
    testing::ScratchFolder outside;
    outside.write("Secret.colorset/Contents.json", colorSet({entry("1.0", "0", "0")}));
    testing::ScratchFolder catalog;
    catalog.write("Inner/Kept.colorset/Contents.json", colorSet({entry("0", "1.0", "0")}));
    std::filesystem::create_directory_symlink(outside.path, catalog.path / "Away");
    std::filesystem::create_directory_symlink(catalog.path, catalog.path / "Inner" / "Loop");
    std::filesystem::create_directory_symlink(catalog.path / "Inner", catalog.path / "Same");
    std::filesystem::create_symlink(outside.path / "Secret.colorset" / "Contents.json",
                                    catalog.path / "Linked.colorset");
    std::filesystem::create_directories(catalog.path / "Leak.colorset");
    std::filesystem::create_symlink(outside.path / "Secret.colorset" / "Contents.json",
                                    catalog.path / "Leak.colorset" / "Contents.json");
    // One real folder is read once, through whichever name comes first.
    EXPECT_EQ(describe(*importCatalog(catalog.path)), "Inner/\n  Kept: #00FF00\n");

    std::filesystem::path deep = catalog.path / "Deep";
    for (int level = 0; level < AssetCatalogImporter::maxDepth + 5; ++level) {
        deep /= "L";
    }
    std::filesystem::create_directories(deep);
    std::vector<std::string> diagnostics;
    const ProjectItemPtr root = importCatalog(catalog.path, &diagnostics);
    int levels = 0;
    for (const OchreColorProjectItem* item = root->group->items[0].get(); item->group && !item->group->items.empty();
         item = item->group->items[0].get()) {
        ++levels;
    }
    EXPECT_EQ(levels, AssetCatalogImporter::maxDepth - 1);
    EXPECT_EQ(diagnostics, (std::vector<std::string>{
                               "Folders nested more than 64 levels deep in the asset catalog were left out"}));
}

TEST(AssetCatalogImporter, TheImportGroupIsNamedByTheCatalogFolder) {
    testing::ScratchFolder folder;
    folder.write("Colors.xcassets/Accent.colorset/Contents.json", colorSet({entry("0.5", "0.5", "0.5")}));
    for (const char* given : {"Colors.xcassets", "Colors.xcassets/"}) {
        const ProjectItemPtr group = Importer().importFile(folder.path / given, ImportSourceKind::assetCatalog);
        EXPECT_EQ(group->name, "Asset Catalog - Colors.xcassets");
        EXPECT_TRUE(group->isExpanded);
        EXPECT_EQ(describe(*group), "Accent: #808080\n");
    }
}

TEST(AssetCatalogImporter, AMissingCatalogOrAFileFails) {
    testing::ScratchFolder folder;
    const auto errorOf = [](const std::filesystem::path& path) {
        ProjectItemPtr root = testing::newGroupItem();
        try {
            AssetCatalogImporter().importColors(path, *root);
        } catch (const DocumentColorParsingError& error) {
            return error.message;
        }
        return std::string("no error");
    };
    EXPECT_EQ(errorOf(folder.path / "Colors.xcassets"),
              "The asset catalog \u201cColors.xcassets\u201d couldn\u2019t be opened because there is no such folder.");
    EXPECT_EQ(errorOf(folder.write("Colors.json", "{}")),
              "The asset catalog \u201cColors.json\u201d couldn\u2019t be opened because it isn\u2019t a folder.");
    EXPECT_EQ(describe(*importCatalog(folder.path)), "");
}

TEST(AssetCatalogImporter, RealCatalogsImport) {
    const auto folder = testing::corpusFolder("xcassets");
    if (folder.empty()) {
        GTEST_SKIP() << "no sample folder";
    }
    const ProjectItemPtr compound = importCatalog(folder / "compound-design-tokens" / "Colors.xcassets");
    ASSERT_EQ(compound->group->items.size(), 43u);
    for (const ProjectItemPtr& item : compound->group->items) {
        ASSERT_TRUE(item->color) << item->name;
        const ThemeableColor& color = item->color->color;
        EXPECT_EQ(color.name, item->name);
        EXPECT_TRUE(color.darkVariant && color.lightVariantHighContrast && color.darkVariantHighContrast) << item->name;
        EXPECT_EQ(item->color->appearanceType, AppearanceType::lightDarkHighContrast);
    }
    EXPECT_EQ(compound->group->items[14]->name, "blue100");
    EXPECT_EQ(compound->group->items.back()->name, "themeBg");

    const ProjectItemPtr swiftgen = importCatalog(folder / "swiftgen" / "Styles.xcassets");
    EXPECT_EQ(describe(*swiftgen),
              "24Vision/\n"
              "  Background: #EDF2F4\n"
              "  Primary: #D8011B\n"
              "Orange.imageset/\n"
              "Vengo/\n"
              "  Primary: #EAE6DE / dark #423C4D\n"
              "  Tint: #8AC4AB\n");
    EXPECT_TRUE(swiftgen->group->items[0]->group->providesNamespace);
}

}  // namespace
}  // namespace tintwork
