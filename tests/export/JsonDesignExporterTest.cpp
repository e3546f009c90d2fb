#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include <nlohmann/json.hpp>

#include "export/JsonDesignExporter.h"
#include "model/FileIO.h"

namespace tintwork {
namespace {

using Json = nlohmann::json;

std::filesystem::path freshFolder(const std::string& name) {
    std::filesystem::path folder = std::filesystem::temp_directory_path() / "tintwork-json-export" / name;
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    return folder;
}

BuildTask jsonTask() {
    BuildTask task;
    task.exportFileName = "tokens";
    task.exportFileType = BuildFileType::jsonDesignToken;
    return task;
}

template <typename Payload>
ProjectItemPtr item(const std::string& name, Payload payload) {
    return std::make_shared<OchreColorProjectItem>(name, name + "-uuid", std::move(payload));
}

ProjectItemPtr colorItem(const std::string& name, ColorValue light, std::optional<ColorValue> dark = std::nullopt) {
    OchreColorItem payload;
    payload.color.name = name;
    payload.color.lightVariant = light;
    payload.color.darkVariant = dark;
    return item(name, payload);
}

ProjectItemPtr groupItem(const std::string& name, std::vector<ProjectItemPtr> children) {
    OchreColorGroup group;
    group.items = std::move(children);
    return item(name, group);
}

// Exports the items and returns the file's text.
std::string exportText(const std::vector<ProjectItemPtr>& items, const BuildTask& task = jsonTask()) {
    std::filesystem::path folder = freshFolder(::testing::UnitTest::GetInstance()->current_test_info()->name());
    JsonDesignExporter exporter(std::make_shared<OchreColorProject>());
    exporter.exportTo(folder, task, items, folder / "Doc.tintwork");
    std::ifstream in(folder / "tokens.json");
    std::stringstream text;
    text << in.rdbuf();
    EXPECT_EQ(text.str(), exporter.jsonExportText());
    return text.str();
}

TEST(JsonDesignExporter, WritesOnlyLightDocumentsWithoutAnAppearanceLevel) {
    OchreColorNumber number;
    number.value.lightVariant = 12345.0;
    OchreColorNumber small;
    small.value.lightVariant = 0.5;
    OchreColorBoolean boolean;
    boolean.value.lightVariant = true;
    OchreColorString string;
    string.value.lightVariant = "Hi";
    std::string text = exportText({colorItem("ink", ColorValue::sRGB(0.123456, 0.5, 1.0)), item("count", number),
                                   item("half", small), item("on", boolean), item("label", string)});
    Json json = Json::parse(text);
    EXPECT_EQ(json, Json::parse(R"({
        "count": {"$type": "number", "$value": 1.234e+04},
        "half": {"$type": "number", "$value": 0.5},
        "ink": {"$type": "color", "$value": {"$colorSpace": {"$components": [0.1235, 0.5, 1], "name": "srgb"},
                                             "$hex": "#1F80FFFF"}},
        "label": {"$value": "Hi"},
        "on": {"$value": true}
    })"));
    EXPECT_NE(text.find("1.234e+04"), std::string::npos);
    EXPECT_EQ(text.find("\xC2\xAB"), std::string::npos);
    // Keys are sorted in the file text too.
    EXPECT_LT(text.find("\"count\""), text.find("\"ink\""));
}

TEST(JsonDesignExporter, WritesAlphaBelowOneAndWideColoursAsDisplayP3) {
    Json json = Json::parse(exportText({colorItem("clear", ColorValue::sRGB(0, 0, 0, 0.25)),
                                        colorItem("p3", ColorValue(ColorEncoding::displayP3, 1, 0, 0, 1)),
                                        colorItem("wide", ColorValue(ColorEncoding::sRGBExtended, 1.1, 0.5, 0, 1))}));
    EXPECT_EQ(json["clear"]["$value"]["$alpha"], 0.25);
    EXPECT_EQ(json["clear"]["$value"]["$hex"], "#00000040");
    EXPECT_FALSE(json["p3"]["$value"].contains("$alpha"));
    EXPECT_EQ(json["p3"]["$value"]["$colorSpace"]["name"], "display-p3");
    EXPECT_EQ(json["p3"]["$value"]["$hex"], "#FF0000FF");
    EXPECT_EQ(json["wide"]["$value"]["$colorSpace"]["name"], "display-p3");
    EXPECT_LT(json["wide"]["$value"]["$colorSpace"]["$components"][0].get<double>(), 1.1);
}

TEST(JsonDesignExporter, AddsAppearanceTreesOnlyWhenTheyHoldTokens) {
    Json json = Json::parse(exportText({groupItem("Base", {colorItem("a", ColorValue::sRGB(1, 1, 1))}),
                                        colorItem("b", ColorValue::sRGB(1, 1, 1), ColorValue::sRGB(0, 0, 0))}));
    std::vector<std::string> keys;
    for (const auto& [key, value] : json.items()) {
        keys.push_back(key);
    }
    EXPECT_EQ(keys, (std::vector<std::string>{"Dark", "Light"}));
    EXPECT_EQ(json["Dark"]["b"]["$value"]["$hex"], "#000000FF");
    // A group without dark members still appears, empty, in the dark tree.
    EXPECT_EQ(json["Dark"]["Base"], Json::object());
    EXPECT_TRUE(json["Light"]["Base"].contains("a"));
}

TEST(JsonDesignExporter, NamesItemsByTheTaskButGroupsWithoutPrefixOrSuffix) {
    BuildTask task = jsonTask();
    task.nameTransform = BuildNameTransform::kebabCase;
    task.namePrefix = "x-";
    task.nameSuffix = "-y";
    OchreColorSet set;
    set.colors = {ThemeableColor{}, ThemeableColor{}};
    set.colors[0].name = "Light One";
    set.colors[1].name = "Dark One";
    set.colors[1].lightVariant = ColorValue::sRGB(0, 0, 0, 1);
    OchreColorShadow shadow;
    shadow.shadow.lightVariant = ShadowDetails{1.5, -2, 0, 3.25, ColorValue::sRGB(0, 0, 0, 0.5)};
    Json json = Json::parse(
        exportText({groupItem("Brand Colors", {colorItem("Primary Blue", ColorValue::sRGB(0, 0, 1)),
                                               item("My Ramp", set), item("Drop Shadow", shadow)})},
                   task));
    ASSERT_TRUE(json.contains("brand-colors"));
    const Json& group = json["brand-colors"];
    EXPECT_TRUE(group.contains("x-primary-blue-y"));
    EXPECT_TRUE(group["x-my-ramp-y"].contains("x-light-one-y"));
    EXPECT_EQ(group["x-my-ramp-y"]["x-dark-one-y"]["$type"], "color");
    EXPECT_EQ(group["x-drop-shadow-y"], Json::parse(R"({"$type": "shadow", "$value": {"blur": "0px",
        "color": "#00000080", "offsetX": "1.5px", "offsetY": "-2px", "spread": "3.25px"}})"));
}

TEST(JsonDesignExporter, WritesAnEmptyObjectForNoItemsAndReplacesTheOldFile) {
    std::filesystem::path folder = freshFolder("empty");
    std::ofstream(folder / "tokens.json") << "old contents that are longer than the new ones";
    JsonDesignExporter(std::make_shared<OchreColorProject>()).exportTo(folder, jsonTask(), {}, folder / "D.tintwork");
    std::ifstream in(folder / "tokens.json");
    std::stringstream text;
    text << in.rdbuf();
    EXPECT_EQ(Json::parse(text.str()), Json::object());
}

TEST(JsonDesignExporter, ReportsAFailedWrite) {
    std::filesystem::path folder = freshFolder("unwritable") / "missing";
    try {
        JsonDesignExporter(std::make_shared<OchreColorProject>()).exportTo(folder, jsonTask(), {}, "D.tintwork");
        FAIL() << "no error";
    } catch (const BuildError& error) {
        EXPECT_EQ(error.message.rfind("Unable to export JSON file: ", 0), 0u) << error.message;
        EXPECT_EQ(std::string(error.what()).rfind("BuildError(message: \"Unable to export JSON file: ", 0), 0u);
    }
}

}  // namespace
}  // namespace tintwork
