// Asset catalogs of the realistic test document: the folder tree, the colour-set
// records, and a check of every Contents.json against the colour-set schema.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>

#include "ExportTestDocument.h"
#include "export/AssetCatalogExporter.h"

namespace tintwork {
namespace {

using namespace tintwork::testing;
using nlohmann::json;

std::filesystem::path buildCatalog(const std::string& caseName, BuildTask buildTask) {
    const TestDocument document = makeTestDocument();
    const auto folder = freshFolder("native-" + caseName);
    AssetCatalogExporter().exportTo(folder, buildTask, document.project->itemsForBuildGroup(*document.web),
                                    folder / "Doc.tintwork");
    return folder / buildTask.exportFileNameWithExtension();
}

json contentsOf(const std::filesystem::path& folder) {
    return json::parse(readText(folder / "Contents.json"));
}

// The published colour-set rules: an info block by its author, and per colour an
// idiom, a known colour space, numeric component texts and known appearance pairs.
std::vector<std::string> schemaProblems(const std::filesystem::path& catalog) {
    const std::set<std::string> spaces{"srgb", "display-p3", "extended-srgb", "extended-linear-srgb"};
    const std::set<std::pair<std::string, std::string>> appearances{{"luminosity", "dark"}, {"contrast", "high"}};
    std::vector<std::string> problems;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(catalog)) {
        if (entry.path().filename() != "Contents.json") {
            continue;
        }
        const json contents = json::parse(readText(entry.path()), nullptr, false);
        const std::string where = std::filesystem::relative(entry.path(), catalog).string();
        if (contents.is_discarded() || contents.value("/info/author"_json_pointer, "") != "tintwork" ||
            contents.value("/info/version"_json_pointer, 0) != 1) {
            problems.push_back(where + ": bad info");
            continue;
        }
        const bool isColorSet = entry.path().parent_path().extension() == ".colorset";
        if (isColorSet != contents.contains("colors")) {
            problems.push_back(where + ": colors belong in colour sets only");
        }
        for (const json& color : contents.value("colors", json::array())) {
            if (color.value("idiom", "") != "universal" || !spaces.count(color["color"].value("color-space", ""))) {
                problems.push_back(where + ": bad idiom or colour space");
            }
            for (const char* key : {"red", "green", "blue", "alpha"}) {
                const json& component = color["color"]["components"][key];
                if (!component.is_string() || std::stod(component.get<std::string>()) < -1) {
                    problems.push_back(where + ": bad component " + key);
                }
            }
            for (const json& appearance : color.value("appearances", json::array())) {
                if (!appearances.count({appearance.value("appearance", ""), appearance.value("value", "")})) {
                    problems.push_back(where + ": unknown appearance " + appearance.dump());
                }
            }
        }
    }
    return problems;
}

TEST(AssetCatalogExporter, WritesFoldersAndColourSetsOfTheDocument) {
    const auto catalog = buildCatalog("catalog", task("Catalog", BuildFileType::assetCatalog, "Colors"));
    EXPECT_EQ(catalog.filename(), "Colors.xcassets");
    EXPECT_EQ(contentsOf(catalog), json::parse(R"({"info": {"author": "tintwork", "version": 1}})"));

    // A namespaced group becomes a namespaced folder, a plain group a plain folder.
    EXPECT_EQ(contentsOf(catalog / "Brand")["properties"]["provides-namespace"], true);
    EXPECT_FALSE(contentsOf(catalog / "Layout").contains("properties"));

    // Light, high contrast, dark and dark high contrast, in that order.
    const json primary = contentsOf(catalog / "Brand" / "Primary.colorset")["colors"];
    ASSERT_EQ(primary.size(), 4u);
    EXPECT_EQ(primary[0], json::parse(R"({"idiom": "universal", "color": {"color-space": "srgb",
        "components": {"red": "0.0000", "green": "0.4000", "blue": "0.8000", "alpha": "1.0000"}}})"));
    EXPECT_EQ(primary[1]["appearances"], json::parse(R"([{"appearance": "contrast", "value": "high"}])"));
    EXPECT_EQ(primary[1]["color"]["components"]["blue"], "0.6000");
    EXPECT_EQ(primary[2]["appearances"], json::parse(R"([{"appearance": "luminosity", "value": "dark"}])"));
    EXPECT_EQ(primary[2]["color"]["components"]["red"], "0.4000");
    EXPECT_EQ(primary[3]["appearances"], json::parse(R"([{"appearance": "luminosity", "value": "dark"},
        {"appearance": "contrast", "value": "high"}])"));

    const json accent = contentsOf(catalog / "Brand" / "Accent.colorset")["colors"];
    ASSERT_EQ(accent.size(), 1u);
    EXPECT_EQ(accent[0]["color"]["color-space"], "display-p3");
    EXPECT_FALSE(accent[0].contains("appearances"));

    // A colour set is a namespaced folder of its members.
    EXPECT_EQ(contentsOf(catalog / "Brand" / "Grey")["properties"]["provides-namespace"], true);
    EXPECT_EQ(contentsOf(catalog / "Brand" / "Grey" / "100.colorset")["colors"].size(), 2u);
    EXPECT_EQ(contentsOf(catalog / "Brand" / "Grey" / "200.colorset")["colors"].size(), 1u);

    // The alias is a colour of its own; the broken alias and the values the format
    // can't hold leave nothing behind.
    EXPECT_EQ(contentsOf(catalog / "Link.colorset")["colors"].size(), 4u);
    EXPECT_FALSE(std::filesystem::exists(catalog / "Ghost.colorset"));
    std::vector<std::string> layout;
    for (const auto& entry : std::filesystem::directory_iterator(catalog / "Layout")) {
        layout.push_back(entry.path().filename().string());
    }
    EXPECT_EQ(layout, std::vector<std::string>{"Contents.json"});

    EXPECT_EQ(schemaProblems(catalog), std::vector<std::string>{});
}

TEST(AssetCatalogExporter, SymbolSettingAndReplacementOfAnOlderCatalog) {
    BuildTask buildTask = task("Catalog", BuildFileType::assetCatalog, "Colors");
    buildTask.customData["assetCatalogSymbols"] = "true";
    const auto catalog = buildCatalog("catalog-symbols", buildTask);
    EXPECT_EQ(contentsOf(catalog)["properties"]["generate-swift-asset-symbol-extensions"], "enabled");

    // An older catalog in the same place is replaced, not merged.
    std::filesystem::create_directories(catalog / "Stale.colorset");
    writeText(catalog / "Stale.colorset" / "Contents.json", "{}");
    buildTask.customData["assetCatalogSymbols"] = "false";
    const TestDocument document = makeTestDocument();
    AssetCatalogExporter().exportTo(catalog.parent_path(), buildTask,
                                    document.project->itemsForBuildGroup(*document.web), catalog / "Doc.tintwork");
    EXPECT_FALSE(std::filesystem::exists(catalog / "Stale.colorset"));
    EXPECT_EQ(contentsOf(catalog)["properties"]["generate-swift-asset-symbol-extensions"], "disabled");

    buildTask.customData["assetCatalogSymbols"] = "notSet";
    AssetCatalogExporter().exportTo(catalog.parent_path(), buildTask, {}, catalog / "Doc.tintwork");
    EXPECT_FALSE(contentsOf(catalog).contains("properties"));
}

TEST(AssetCatalogExporter, FolderNamesAreMadeSafe) {
    const auto project = std::make_shared<OchreColorProject>();
    const auto folder = freshFolder("native-catalog-names");
    std::vector<ProjectItemPtr> items{colorItem("Fore/Back: Ground", "A", themed("", srgb(1, 1, 1))),
                                      colorItem(" .hidden ", "B", themed("", srgb(0, 0, 0))),
                                      colorItem("", "C", themed("", srgb(0.5, 0.5, 0.5))),
                                      colorItem(std::string("Nul\0Byte", 8), "D", themed("", srgb(0, 0, 1)))};
    AssetCatalogExporter().exportTo(folder, task("Catalog", BuildFileType::assetCatalog, "Names"), items,
                                    folder / "Doc.tintwork");
    const auto catalog = folder / "Names.xcassets";
    EXPECT_TRUE(std::filesystem::exists(catalog / "Fore-Back- Ground.colorset" / "Contents.json"));
    EXPECT_TRUE(std::filesystem::exists(catalog / "hidden.colorset" / "Contents.json"));
    EXPECT_TRUE(std::filesystem::exists(catalog / "Unnamed.colorset" / "Contents.json"));
    EXPECT_TRUE(std::filesystem::exists(catalog / "Nul-Byte.colorset" / "Contents.json"));
}

TEST(AssetCatalogExporter, ContentsRecordsRoundTrip) {
    AssetCatalogContents contents;
    contents.properties = AssetCatalogProperties{true, SwiftAssetSymbolExtensionSettings::notDefined};
    ColorSetColor color;
    color.color.colorSpace = "display-p3";
    color.color.components.red = "1.0000";
    color.color.components.white = "0.5";
    color.appearances = std::vector<ColorSetAppearance>{{"luminosity", "dark"}};
    contents.colors = std::vector<ColorSetColor>{color};

    const auto decoded = decodeAssetCatalogContents(encodeAssetCatalogContents(contents));
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->properties->providesNameSpace, true);
    EXPECT_EQ(decoded->properties->generateSwiftAssetSymbolExtensions, SwiftAssetSymbolExtensionSettings::notDefined);
    ASSERT_EQ(decoded->colors->size(), 1u);
    EXPECT_EQ((*decoded->colors)[0].color.colorSpace, "display-p3");
    EXPECT_EQ((*decoded->colors)[0].color.components.red, "1.0000");
    EXPECT_EQ((*decoded->colors)[0].color.components.green, std::nullopt);
    EXPECT_EQ((*decoded->colors)[0].appearances->at(0).value, "dark");

    // The corpus shape written by Xcode reads too; text that isn't a record doesn't.
    const auto xcode = decodeAssetCatalogContents(
        R"({"info":{"author":"xcode","version":1},"properties":{"provides-namespace":true}})");
    ASSERT_TRUE(xcode);
    EXPECT_EQ(xcode->properties->providesNameSpace, true);
    EXPECT_FALSE(xcode->colors);
    EXPECT_FALSE(decodeAssetCatalogContents("[1, 2]"));
    EXPECT_FALSE(decodeAssetCatalogContents("{\"colors\": "));
}

}  // namespace
}  // namespace tintwork
