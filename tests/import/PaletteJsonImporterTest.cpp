#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "import/GenericJsonImporter.h"
#include "import/ImportKinds.h"
#include "import/MaterialJSONImporter.h"
#include "model/FileIO.h"

namespace tintwork {
namespace {

ProjectItemPtr newGroup() {
    return std::make_shared<OchreColorProjectItem>("Root", "ROOT", OchreColorGroup{});
}

template <typename Importer>
ProjectItemPtr importText(const std::string& text) {
    ProjectItemPtr group = newGroup();
    Importer().importText(text, *group);
    return group;
}

template <typename Importer>
std::string importError(const std::string& text) {
    ProjectItemPtr group = newGroup();
    try {
        Importer().importText(text, *group);
    } catch (const DocumentColorParsingError& error) {
        EXPECT_TRUE(group->group->items.empty());
        return error.message;
    }
    return "no error";
}

std::vector<std::string> names(const OchreColorProjectItem& group) {
    std::vector<std::string> result;
    for (const ProjectItemPtr& child : group.group->items) {
        result.push_back(child->name);
    }
    return result;
}

std::vector<std::string> memberNames(const OchreColorProjectItem& item) {
    std::vector<std::string> result;
    for (const ThemeableColor& color : item.colorSet.value().colors) {
        result.push_back(color.name);
    }
    return result;
}

std::filesystem::path corpusFile(const std::string& name) {
    return std::filesystem::path(TINTWORK_SHARED_DIR) / "corpus/json" / name;
}

TEST(GenericJsonImporter, MakesOneSetPerTopLevelObject) {
    ProjectItemPtr group = importText<GenericJsonImporter>(R"({"Brand": {"a": "#ff0000"}})");
    ASSERT_EQ(names(*group), std::vector<std::string>{"Brand"});
    const OchreColorProjectItem& brand = *group->group->items[0];
    ASSERT_TRUE(brand.colorSet.has_value());
    EXPECT_EQ(memberNames(brand), std::vector<std::string>{"a"});
    EXPECT_EQ(brand.colorSet->colors[0].lightVariant, ColorValue::sRGB(1, 0, 0, 1));
    EXPECT_EQ(brand.colorSet->colorSpace, ColorSpace::sRGB);
    EXPECT_EQ(brand.colorSet->type, SetType::manual);

    // Sets in file order, colours by name with numbers by value, bad colours and emptied sets dropped.
    group = importText<GenericJsonImporter>(R"json({
        "zeta": {"blue10": "#00000a", "blue2": "#000002", "Blue1": "#000001", "blue11": "#fbfdff80", "bad": "nope"},
        "alpha": {"x": "color(display-p3 1 0 0 / 0.5)", "y": "rgb(0, 128, 255)"},
        "empty": {}, "broken": {"only": "#12"}})json");
    ASSERT_EQ(names(*group), (std::vector<std::string>{"zeta", "alpha"}));
    EXPECT_EQ(memberNames(*group->group->items[0]), (std::vector<std::string>{"Blue1", "blue2", "blue10", "blue11"}));
    EXPECT_DOUBLE_EQ(group->group->items[0]->colorSet->colors[3].lightVariant.alpha(), 128 / 255.0);
    // A Display P3 member and an sRGB one: the set is made in Display P3.
    EXPECT_EQ(group->group->items[1]->colorSet->colorSpace, ColorSpace::displayP3);

    EXPECT_TRUE(importText<GenericJsonImporter>("{}")->group->items.empty());
}

TEST(GenericJsonImporter, FailsTheWholeFileForAValueThatIsNotASet) {
    EXPECT_EQ(importError<GenericJsonImporter>(R"({"Brand": {"a": "#ff0000"}, "Loose": "#00ff00"})"),
              "The text is not a palette of colour sets: \"Loose\" is not an object of colour texts");
    EXPECT_EQ(importError<GenericJsonImporter>(R"({"Brand": {"a": 12}})"),
              "The text is not a palette of colour sets: \"a\" in \"Brand\" is not a colour text");
    EXPECT_EQ(importError<GenericJsonImporter>(R"(["#ff0000"])"),
              "The text is not a palette of colour sets: the top level is not an object");
    EXPECT_EQ(importError<GenericJsonImporter>(R"({"Brand": )").rfind("The text is not valid JSON: ", 0), 0u);
    // A file that cannot be read fails as a file, named by its path.
    ProjectItemPtr group = newGroup();
    EXPECT_THROW(GenericJsonImporter().importColors("/nonexistent/palette.json", *group), FileError);
}

TEST(GenericJsonImporter, ImportsTheRadixScales) {
    if (!std::filesystem::exists(corpusFile("generic-radix-colors.json"))) {
        GTEST_SKIP() << "no sample corpus beside the checkout";
    }
    const ImportKind* kind = findImportKind("generic-json");
    ASSERT_NE(kind, nullptr);
    ProjectItemPtr group = importSource(*kind, corpusFile("generic-radix-colors.json"), {});
    EXPECT_EQ(group->name, "JSON Import - generic-radix-colors.json");
    ASSERT_EQ(group->group->items.size(), 126u);
    for (const ProjectItemPtr& set : group->group->items) {
        ASSERT_TRUE(set->colorSet.has_value()) << set->name;
        EXPECT_EQ(set->colorSet->colors.size(), 12u) << set->name;
    }
    const OchreColorProjectItem& first = *group->group->items[0];
    const std::string scale = first.name;
    std::vector<std::string> expected;
    for (int step = 1; step <= 12; ++step) {
        expected.push_back(first.colorSet->colors[0].name.substr(0, first.colorSet->colors[0].name.size() - 1) +
                           std::to_string(step));
    }
    EXPECT_EQ(memberNames(first), expected) << scale;

    ProjectItemPtr p3 = importSource(*kind, corpusFile("generic-radix-colors-p3.json"), {});
    ASSERT_EQ(p3->group->items.size(), 17u);
    for (const ProjectItemPtr& set : p3->group->items) {
        EXPECT_EQ(set->colorSet->colorSpace, ColorSpace::displayP3) << set->name;
        EXPECT_EQ(set->colorSet->colors.size(), 12u) << set->name;
    }
}

TEST(MaterialJSONImporter, ReadsColoursAndFamiliesOfShades) {
    ProjectItemPtr group = importText<MaterialJSONImporter>(R"({
        "white": "#ffffff",
        "red": {"300": "#e57373", "a100": "#ff8a80", "50": "#ffebee", "100": "#ffcdd2", "a700": "#d50000", "bad": "?"},
        "count": 3, "none": null, "nothing": {},
        "gray": ["#f8f9fa", 7, "#e9ecef"],
        "black": "#000"})");
    ASSERT_EQ(names(*group), (std::vector<std::string>{"white", "red", "gray", "black"}));
    const OchreColorProjectItem& white = *group->group->items[0];
    ASSERT_TRUE(white.color.has_value());
    EXPECT_EQ(white.color->color.lightVariant, ColorValue::sRGB(1, 1, 1, 1));
    EXPECT_DOUBLE_EQ(white.color->autoContrastAmount, 0.5);
    EXPECT_EQ(white.color->colorSpace, ColorSpace::sRGB);
    // Shades by number, the accent shades after the plain ones as in the file.
    EXPECT_EQ(memberNames(*group->group->items[1]), (std::vector<std::string>{"50", "100", "300", "a100", "a700"}));
    EXPECT_EQ(group->group->items[1]->colorSet->colors[0].lightVariant, ColorValue::sRGB(1, 0xeb / 255.0, 0xee / 255.0));
    // A list of shades: named by index, a non-text entry costs only its own place.
    EXPECT_EQ(memberNames(*group->group->items[2]), (std::vector<std::string>{"0", "2"}));

    EXPECT_TRUE(importText<MaterialJSONImporter>("{}")->group->items.empty());
    EXPECT_EQ(importError<MaterialJSONImporter>("[1, 2]"), "The text is not a palette: the top level is not an object");
    EXPECT_EQ(importError<MaterialJSONImporter>("{\"a\": #ff0000}").rfind("The text is not valid JSON: ", 0), 0u);
}

TEST(MaterialJSONImporter, FindsTheNumberAtTheEndOfAName) {
    auto number = [](std::string_view name) {
        std::optional<TrailingNumber> found = trailingNumber(name);
        return found ? found->digits + "@" + std::to_string(found->position) : std::string("none");
    };
    EXPECT_EQ(number("500"), "500@0");
    EXPECT_EQ(number("a700"), "700@1");
    EXPECT_EQ(number("blue-a12-dark"), "12@6");
    EXPECT_EQ(number("x2y30"), "30@3");
    EXPECT_EQ(number("accent"), "none");
    EXPECT_EQ(number(""), "none");

    // Numbers are compared by value however long: a 30-digit shade sorts after a 3-digit one.
    ProjectItemPtr group = importText<MaterialJSONImporter>(
        R"({"f": {"100000000000000000000000000000": "#111", "900": "#222", "0050": "#333"}})");
    EXPECT_EQ(memberNames(*group->group->items[0]),
              (std::vector<std::string>{"0050", "900", "100000000000000000000000000000"}));
}

TEST(MaterialJSONImporter, ImportsMaterialAndOpenColorPalettes) {
    if (!std::filesystem::exists(corpusFile("material-colors.json"))) {
        GTEST_SKIP() << "no sample corpus beside the checkout";
    }
    const ImportKind* kind = findImportKind("material");
    ASSERT_NE(kind, nullptr);
    ProjectItemPtr material = importSource(*kind, corpusFile("material-colors.json"), {});
    EXPECT_EQ(material->name, "Material Import - material-colors.json");
    const std::vector<std::string> all = names(*material);
    ASSERT_GE(all.size(), 3u);
    EXPECT_EQ(all.front(), "red");
    EXPECT_EQ(std::vector<std::string>(all.end() - 2, all.end()), (std::vector<std::string>{"white", "black"}));
    EXPECT_EQ(memberNames(*material->group->items[0]),
              (std::vector<std::string>{"50", "100", "200", "300", "400", "500", "600", "700", "800", "900", "a100",
                                        "a200", "a400", "a700"}));
    EXPECT_EQ(material->group->items[0]->colorSet->colors[5].lightVariant,
              ColorValue::sRGB(0xf4 / 255.0, 0x43 / 255.0, 0x36 / 255.0));

    ProjectItemPtr open = importSource(*kind, corpusFile("open-color.json"), {});
    const std::vector<std::string> openNames = names(*open);
    ASSERT_GE(openNames.size(), 3u);
    EXPECT_EQ(std::vector<std::string>(openNames.begin(), openNames.begin() + 3),
              (std::vector<std::string>{"white", "black", "gray"}));
    EXPECT_EQ(memberNames(*open->group->items[2]),
              (std::vector<std::string>{"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"}));
}

}  // namespace
}  // namespace tintwork
