#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "import/ColorImporter.h"
#include "import/JsonDesignImporter.h"
#include "model/FileIO.h"

namespace tintwork {
namespace {

ProjectItemPtr newGroupItem() {
    return std::make_shared<OchreColorProjectItem>("Root", "ROOT", OchreColorGroup{});
}

// Imports `text` into a fresh group; debug lines go to `log` when given.
ProjectItemPtr importJson(std::string_view text, std::vector<std::string>* log = nullptr) {
    ProjectItemPtr root = newGroupItem();
    JsonDesignImporter importer;
    if (log) {
        importer.logger = [log](std::string_view line) { log->emplace_back(line); };
    }
    importer.importText(text, *root);
    return root;
}

std::vector<std::string> childNames(const OchreColorProjectItem& item) {
    std::vector<std::string> names;
    for (const ProjectItemPtr& child : item.group->items) {
        names.push_back(child->name);
    }
    return names;
}

// The first child named `name`; throws (failing the test) when there is none.
ProjectItemPtr childNamed(const OchreColorProjectItem& item, std::string_view name) {
    for (const ProjectItemPtr& child : item.group->items) {
        if (child->name == name) {
            return child;
        }
    }
    throw std::runtime_error("no child named " + std::string(name) + " in " + item.name);
}

std::string colorToken(const std::string& hex) {
    return R"({"$type": "color", "$value": {"$hex": ")" + hex + R"("}})";
}

std::string integerNamedColors(int count) {
    std::string text = "{";
    for (int i = 1; i <= count; ++i) {
        text += (i > 1 ? ", \"" : "\"") + std::to_string(i) + "\": " + colorToken("#102030");
    }
    return text + "}";
}

TEST(JsonDesignImporter, SiblingsFollowSortedKeysAtEveryLevel) {
    ProjectItemPtr root = importJson(R"({"b": {"9": {"$value": "x"}, "10": {"$value": "y"}}, "a": {"$value": true}})");
    EXPECT_EQ(childNames(*root), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(childNames(*childNamed(*root, "b")), (std::vector<std::string>{"10", "9"}));
}

TEST(JsonDesignImporter, ReadsEachTokenKind) {
    ProjectItemPtr root = importJson(R"({
        "srgb": {"$type": "color", "$value": {"$colorSpace": {"name": "srgb", "$components": [0.1, 0.2, 0.3]},
                                              "$alpha": 0.5}},
        "p3": {"$type": "color", "$value": {"$colorSpace": {"name": "display-p3", "$components": [1.2, 0, true]}}},
        "wide": {"$type": "color", "$value": {"$colorSpace": {"name": "rec2020", "$components": [0.5, 0.5, 0.5]}}},
        "hex": {"$type": "color", "$value": {"$hex": "#FF0000"}},
        "fourComponents": {"$type": "color", "$value": {"$colorSpace": {"name": "srgb", "$components": [1, 1, 1, 1]},
                                                        "$hex": "#00FF0080"}},
        "count": {"$type": "number", "$value": 12.5},
        "flag": {"$type": "number", "$value": 1, "$extensions": {"com.korvid.ochre-type": "boolean"}},
        "off": {"$type": "number", "$value": 0.5, "$extensions": {"com.korvid.ochre-type": "boolean"}},
        "plainFlag": {"$value": false},
        "label": {"$value": "Hello"}
    })");
    const ColorValue srgb = childNamed(*root, "srgb")->color->color.lightVariant;
    EXPECT_EQ(srgb, ColorValue(ColorEncoding::sRGB, 0.1, 0.2, 0.3, 0.5));
    EXPECT_EQ(childNamed(*root, "p3")->color->color.lightVariant, ColorValue(ColorEncoding::displayP3, 1.2, 0, 1, 1));
    EXPECT_EQ(childNamed(*root, "p3")->color->colorSpace, ColorSpace::displayP3);
    EXPECT_EQ(childNamed(*root, "wide")->color->color.lightVariant.encoding(), ColorEncoding::sRGB);
    EXPECT_EQ(childNamed(*root, "hex")->color->color.lightVariant, ColorValue(ColorEncoding::sRGB, 1, 0, 0, 1));
    const ColorValue fromHex = childNamed(*root, "fourComponents")->color->color.lightVariant;
    EXPECT_DOUBLE_EQ(fromHex.green(), 1.0);
    EXPECT_NEAR(fromHex.alpha(), 128.0 / 255.0, 1e-9);
    EXPECT_EQ(childNamed(*root, "count")->number->value.lightVariant, 12.5);
    EXPECT_TRUE(childNamed(*root, "flag")->boolean->value.lightVariant);
    EXPECT_FALSE(childNamed(*root, "off")->boolean->value.lightVariant);
    EXPECT_FALSE(childNamed(*root, "plainFlag")->boolean->value.lightVariant);
    EXPECT_EQ(childNamed(*root, "label")->string->value.lightVariant, "Hello");
    for (const ProjectItemPtr& item : root->group->items) {
        EXPECT_EQ(item->appearanceType(), AppearanceType::none) << item->name;
        EXPECT_FALSE(item->uuid.empty());
    }
}

TEST(JsonDesignImporter, DropsTokensItCannotUse) {
    std::vector<std::string> log;
    ProjectItemPtr root = importJson(R"({
        "typedString": {"$type": "string", "$value": "x"},
        "alias": {"$type": "color", "$value": "{a.b}"},
        "noColor": {"$type": "color", "$value": {"colorSpace": "srgb", "components": [1, 0, 0]}},
        "badHex": {"$type": "color", "$value": {"$hex": "red"}},
        "numberText": {"$type": "number", "$value": "3"},
        "list": [1, 2],
        "bare": 4,
        "bareNumberValue": {"$value": 3}
    })", &log);
    EXPECT_EQ(childNames(*root), (std::vector<std::string>{"bareNumberValue"}));
    EXPECT_TRUE(childNamed(*root, "bareNumberValue")->group->items.empty());
    EXPECT_EQ(log,
              (std::vector<std::string>{"Invalid color value in JSON file, no colorspace or hex value specified"}));
}

TEST(JsonDesignImporter, KeysStartingWithDollarInGroupsBecomeGroups) {
    ProjectItemPtr root =
        importJson(R"({"brand": {"$type": "color", "$extensions": {"x": {}}, "red": {"$value": "r"}}})");
    ProjectItemPtr brand = childNamed(*root, "brand");
    EXPECT_EQ(childNames(*brand), (std::vector<std::string>{"$extensions", "red"}));
    EXPECT_EQ(childNames(*childNamed(*brand, "$extensions")), (std::vector<std::string>{"x"}));
}

TEST(JsonDesignImporter, ReadsShadowsWithPixelLengths) {
    ProjectItemPtr root = importJson(R"({
        "drop": {"$type": "shadow", "$value": {"color": "#00000080", "offsetX": "1.5px", "offsetY": "-2px",
                                               "spread": "3px"}},
        "numeric": {"$type": "shadow", "$value": {"color": "#000000", "blur": 4}},
        "badLength": {"$type": "shadow", "$value": {"color": "#000000", "blur": "4em"}},
        "noColor": {"$type": "shadow", "$value": {"blur": "4px"}},
        "list": {"$type": "shadow", "$value": [{"color": "#000000"}]}
    })");
    EXPECT_EQ(childNames(*root), (std::vector<std::string>{"drop", "numeric"}));
    const ShadowDetails drop = childNamed(*root, "drop")->shadow->shadow.lightVariant;
    EXPECT_EQ(drop.xOffset, 1.5);
    EXPECT_EQ(drop.yOffset, -2);
    EXPECT_EQ(drop.blur, 0);
    EXPECT_EQ(drop.spread, 3);
    EXPECT_NEAR(drop.color.alpha(), 128.0 / 255.0, 1e-9);
    EXPECT_EQ(childNamed(*root, "numeric")->shadow->shadow.lightVariant.blur, 0);
}

TEST(JsonDesignImporter, CollapsesIntegerNamedGroupsOfThreeToThirtyTwo) {
    EXPECT_EQ(childNamed(*importJson("{\"g\": " + integerNamedColors(2) + "}"), "g")->itemType,
              ProjectItemType::group);
    EXPECT_EQ(childNamed(*importJson("{\"g\": " + integerNamedColors(3) + "}"), "g")->itemType,
              ProjectItemType::colorSet);
    EXPECT_EQ(childNamed(*importJson("{\"g\": " + integerNamedColors(32) + "}"), "g")->itemType,
              ProjectItemType::colorSet);
    EXPECT_EQ(childNamed(*importJson("{\"g\": " + integerNamedColors(33) + "}"), "g")->itemType,
              ProjectItemType::group);
    // A non-integer name or a member of another kind keeps the group.
    EXPECT_EQ(childNamed(*importJson(R"({"g": {"1": )" + colorToken("#000000") + R"(, "2": )" + colorToken("#000000") +
                                     R"(, "x": )" + colorToken("#000000") + "}}"),
                         "g")
                  ->itemType,
              ProjectItemType::group);
    EXPECT_EQ(childNamed(*importJson(R"({"g": {"1": )" + colorToken("#000000") + R"(, "2": )" + colorToken("#000000") +
                                     R"(, "3": {"$value": "s"}}})"),
                         "g")
                  ->itemType,
              ProjectItemType::group);
}

TEST(JsonDesignImporter, SetMembersAreOrderedByNumberAndKeepTheirNames) {
    ProjectItemPtr root = importJson(R"({"ramp": {"100": )" + colorToken("#0000FF") + R"(, "+3": )" +
                                     colorToken("#00FF00") + R"(, "10": )" + colorToken("#FF0000") + "}}");
    ProjectItemPtr ramp = childNamed(*root, "ramp");
    ASSERT_TRUE(ramp->colorSet);
    std::vector<std::string> names;
    for (const ThemeableColor& color : ramp->colorSet->colors) {
        names.push_back(color.name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"+3", "10", "100"}));
    EXPECT_EQ(ramp->colorSet->colors[1].lightVariant, ColorValue(ColorEncoding::sRGB, 1, 0, 0, 1));
    EXPECT_EQ(ramp->colorSet->colorSpace, ColorSpace::sRGB);
    EXPECT_EQ(ramp->colorSet->type, SetType::manual);
}

TEST(JsonDesignImporter, CollapsesShadowGroupsIntoShadowSets) {
    std::string shadow = R"({"$type": "shadow", "$value": {"color": "#000000", "blur": "2px"}})";
    ProjectItemPtr root = importJson(R"({"outer": {"depth": {"1": )" + shadow + R"(, "2": )" + shadow + R"(, "3": )" +
                                     shadow + "}}}");
    ProjectItemPtr depth = childNamed(*childNamed(*root, "outer"), "depth");
    ASSERT_TRUE(depth->shadowSet);
    EXPECT_EQ(depth->shadowSet->shadows.size(), 3u);
    EXPECT_EQ(depth->shadowSet->shadows[0].lightVariant.blur, 2);
}

TEST(JsonDesignImporter, MergesAppearanceGroupsAtTheTop) {
    ProjectItemPtr root = importJson(R"({
        "Light": {"bg": )" + colorToken("#FFFFFF") + R"(, "size": {"$type": "number", "$value": 1},
                  "drop": {"$type": "shadow", "$value": {"color": "#000000"}}},
        "DARK": {"bg": )" + colorToken("#000000") + R"(, "size": {"$type": "number", "$value": 2},
                 "drop": {"$type": "shadow", "$value": {"color": "#FFFFFF"}}},
        "high contrast": {"bg": )" + colorToken("#EEEEEE") + R"(},
        "dark high contrast": {"Bg": )" + colorToken("#111111") + R"(}
    })");
    // The shadow is not merged, so the dark group stays beside the light one.
    EXPECT_EQ(childNames(*root), (std::vector<std::string>{"DARK", "Light", "dark high contrast"}));
    ProjectItemPtr bg = childNamed(*childNamed(*root, "Light"), "bg");
    EXPECT_EQ(bg->color->appearanceType, AppearanceType::lightDarkHighContrast);
    EXPECT_EQ(bg->color->color.darkVariant, ColorValue(ColorEncoding::sRGB, 0, 0, 0, 1));
    EXPECT_EQ(bg->color->color.lightVariantHighContrast,
              ColorValue(ColorEncoding::sRGB, 238 / 255.0, 238 / 255.0, 238 / 255.0, 1));
    // Token names match exactly: "Bg" is not "bg".
    EXPECT_FALSE(bg->color->color.darkVariantHighContrast);
    EXPECT_EQ(childNamed(*childNamed(*root, "Light"), "size")->number->value.darkVariant, 2.0);
    EXPECT_EQ(childNames(*childNamed(*root, "DARK")), (std::vector<std::string>{"drop"}));
}

TEST(JsonDesignImporter, RemovesTheLightLevelWhenEverythingMerged) {
    ProjectItemPtr root = importJson(R"({"light": {"a": {"x": )" + colorToken("#FFFFFF") + R"(}, "empty": {}},
                                        "dark": {"a": {"x": )" + colorToken("#000000") + R"(}}})");
    EXPECT_EQ(childNames(*root), (std::vector<std::string>{"a"}));
    ProjectItemPtr x = childNamed(*childNamed(*root, "a"), "x");
    EXPECT_EQ(x->color->appearanceType, AppearanceType::lightAndDark);
    EXPECT_TRUE(x->color->color.darkVariant);

    ProjectItemPtr highContrastOnly = importJson(R"({"light": {"x": )" + colorToken("#FFFFFF") +
                                                 R"(}, "high contrast": {"x": )" + colorToken("#000000") + "}}");
    EXPECT_EQ(childNamed(*highContrastOnly, "x")->color->appearanceType, AppearanceType::highContrast);
}

TEST(JsonDesignImporter, LooksForAppearanceGroupsOneLevelDown) {
    ProjectItemPtr root = importJson(R"({"theme": {"light": {"x": )" + colorToken("#FFFFFF") + R"(},
                                                   "dark": {"x": )" + colorToken("#000000") + R"(}},
                                        "deeper": {"inner": {"light": {"y": )" + colorToken("#FFFFFF") + R"(},
                                                             "dark": {"y": )" + colorToken("#000000") + "}}}}");
    EXPECT_EQ(childNames(*childNamed(*root, "theme")), (std::vector<std::string>{"light"}));
    ProjectItemPtr x = childNamed(*childNamed(*childNamed(*root, "theme"), "light"), "x");
    EXPECT_EQ(x->color->appearanceType, AppearanceType::lightAndDark);
    // Two levels down is too deep: both groups stay as they are.
    EXPECT_EQ(childNames(*childNamed(*childNamed(*root, "deeper"), "inner")),
              (std::vector<std::string>{"dark", "light"}));
}

TEST(JsonDesignImporter, DarkWithoutLightStaysAGroup) {
    ProjectItemPtr root = importJson(R"({"dark": {"x": )" + colorToken("#000000") + R"(}, "other": {}})");
    EXPECT_EQ(childNames(*root), (std::vector<std::string>{"dark", "other"}));
}

TEST(JsonDesignImporter, MergesSetsOnlyOfEqualLength) {
    ProjectItemPtr root = importJson(R"({"light": {"ramp": )" + integerNamedColors(3) + R"(, "short": )" +
                                     integerNamedColors(3) + R"(}, "dark": {"ramp": )" + integerNamedColors(3) +
                                     R"(, "short": )" + integerNamedColors(4) + "}}");
    ProjectItemPtr ramp = childNamed(*childNamed(*root, "light"), "ramp");
    EXPECT_EQ(ramp->colorSet->appearanceType, AppearanceType::lightAndDark);
    EXPECT_TRUE(ramp->colorSet->colors[2].darkVariant);
    EXPECT_FALSE(childNamed(*childNamed(*root, "light"), "short")->colorSet->colors[0].darkVariant);
    EXPECT_EQ(childNames(*childNamed(*root, "dark")), (std::vector<std::string>{"short"}));
}

TEST(JsonDesignImporter, EmptyOrNonObjectDocumentsImportNothing) {
    for (const char* text : {"{}", "[]", "3", "\"x\"", "null"}) {
        EXPECT_TRUE(importJson(text)->group->items.empty()) << text;
    }
}

TEST(JsonDesignImporter, InvalidJsonAndUnreadableFilesFail) {
    try {
        importJson("{\"a\": ");
        FAIL() << "no error";
    } catch (const DocumentColorParsingError& error) {
        EXPECT_EQ(std::string(error.what()).rfind("The text is not valid JSON: parse error at line 1", 0), 0u)
            << error.what();
    }
    EXPECT_THROW(importJson(R"({"n": {"$type": "number", "$value": 1e999}})"), DocumentColorParsingError);
    try {
        importJson("\xFF\xFE{}");
        FAIL() << "no error";
    } catch (const DocumentColorParsingError& error) {
        // The quoted input is made printable.
        EXPECT_NE(std::string(error.what()).find("last read: '\xEF\xBF\xBD'"), std::string::npos) << error.what();
    }
    ProjectItemPtr root = newGroupItem();
    EXPECT_THROW(JsonDesignImporter().importColors("/nonexistent/colors.json", *root), FileError);
    EXPECT_TRUE(root->group->items.empty());
}

TEST(JsonDesignImporter, RefusesGroupsNestedBeyondTheDepthLimitByName) {
    std::string text(100000, '[');
    EXPECT_THROW(importJson(text), DocumentColorParsingError);
    const auto nested = [](int levels) {
        std::string json = "{}";
        for (int level = levels; level >= 1; --level) {
            json = "{\"g" + std::to_string(level) + "\": " + json + "}";
        }
        return json;
    };
    ProjectItemPtr root = importJson(nested(200));
    const OchreColorProjectItem* item = root.get();
    for (int level = 1; level <= 200; ++level) {
        ASSERT_EQ(childNames(*item), std::vector<std::string>{"g" + std::to_string(level)});
        item = item->group->items[0].get();
    }
    // Leaving the deeper part out would import a part of the file as if it were all of it.
    for (int levels : {201, 5000}) {
        try {
            importJson(nested(levels));
            ADD_FAILURE() << levels << " nested groups were imported";
        } catch (const DocumentColorParsingError& error) {
            EXPECT_STREQ("The text: the group \u201cg201\u201d is nested deeper than 200 groups.", error.what());
        }
    }
}

TEST(JsonDesignImporter, ImportsTheRealWorldSamplesWithoutFailing) {
    const std::filesystem::path corpus = std::filesystem::path(TINTWORK_SHARED_DIR) / "corpus" / "json";
    if (!std::filesystem::is_directory(corpus)) {
        GTEST_SKIP() << "no sample folder";
    }
    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(corpus)) {
        if (entry.is_regular_file() && entry.path().extension() == ".json") {
            ProjectItemPtr root = newGroupItem();
            EXPECT_NO_THROW(JsonDesignImporter().importColors(entry.path(), *root)) << entry.path();
            ++files;
        }
    }
    EXPECT_GT(files, 0);
}

}  // namespace
}  // namespace tintwork
