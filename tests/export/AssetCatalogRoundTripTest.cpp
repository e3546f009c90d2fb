// A catalog written by the exporter reads back through the asset catalog importer with
// its groups, namespaces, colour spaces and all four appearance variants.

#include <gtest/gtest.h>

#include <cmath>
#include <unistd.h>

#include "ExportTestDocument.h"
#include "export/AssetCatalogExporter.h"
#include "import/AssetCatalogImporter.h"

namespace tintwork {
namespace {

using namespace tintwork::testing;

// Equal encodings and components equal to the four decimals a catalog keeps.
void expectNear(const std::optional<ColorValue>& actual, const std::optional<ColorValue>& expected) {
    ASSERT_EQ(actual.has_value(), expected.has_value());
    if (!expected) {
        return;
    }
    EXPECT_EQ(actual->encoding(), expected->encoding());
    EXPECT_TRUE(isNear(*actual, *expected, 0.00006)) << actual->red() << " " << actual->green() << " " << actual->blue();
}

TEST(AssetCatalogRoundTrip, ExportedCatalogsReadBack) {
    const ThemeableColor full = themed("Primary", srgb(0, 0.4, 0.8), srgb(0.4, 0.6, 1), srgb(0, 0.2, 0.6),
                                       srgb(0.6, 0.8, 1, 0.5));
    const ThemeableColor wide = themed("Accent", ColorValue(ColorEncoding::displayP3, 1, 0.2, 0.4, 1));
    const ThemeableColor extended = themed("Bright", ColorValue(ColorEncoding::sRGBExtended, 1.2, -0.1, 0.5, 1));
    const std::vector<ProjectItemPtr> items = {
        groupItem("Brand", "BRAND", true, {colorItem("Primary", "PRIMARY", full)}),
        colorItem("Accent", "ACCENT", wide), colorItem("Bright", "BRIGHT", extended)};
    const auto folder = std::filesystem::temp_directory_path() / ("tintwork-catalog-round-trip-" + std::to_string(::getpid()));
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    AssetCatalogExporter().exportTo(folder, task("Catalog", BuildFileType::assetCatalog, "Colors"), items,
                                    folder / "Doc.tintwork");

    auto root = std::make_shared<OchreColorProjectItem>("Asset Catalog - Colors.xcassets", "ROOT", OchreColorGroup{});
    AssetCatalogImporter().importColors(folder / "Colors.xcassets", *root);
    std::filesystem::remove_all(folder);

    ASSERT_EQ(root->group->items.size(), 3u);
    const OchreColorProjectItem& accent = *root->group->items[0];
    const OchreColorProjectItem& brand = *root->group->items[1];
    const OchreColorProjectItem& bright = *root->group->items[2];
    EXPECT_EQ(accent.name, "Accent");
    expectNear(accent.color->color.lightVariant, wide.lightVariant);
    EXPECT_EQ(accent.color->colorSpace, ColorSpace::displayP3);
    EXPECT_EQ(bright.name, "Bright");
    expectNear(bright.color->color.lightVariant, extended.lightVariant);
    ASSERT_TRUE(brand.group);
    EXPECT_TRUE(brand.group->providesNamespace);
    ASSERT_EQ(brand.group->items.size(), 1u);
    const OchreColorItem& primary = *brand.group->items[0]->color;
    EXPECT_EQ(primary.appearanceType, AppearanceType::lightDarkHighContrast);
    expectNear(primary.color.lightVariant, full.lightVariant);
    expectNear(primary.color.darkVariant, full.darkVariant);
    expectNear(primary.color.lightVariantHighContrast, full.lightVariantHighContrast);
    expectNear(primary.color.darkVariantHighContrast, full.darkVariantHighContrast);
}

}  // namespace
}  // namespace tintwork
