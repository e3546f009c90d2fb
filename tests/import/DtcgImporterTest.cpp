// The standard Design Tokens reader: structure, types, references, appearances and errors.
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "import/DtcgImporter.h"
#include "import/ImportKinds.h"

namespace tintwork {
namespace {

struct Imported {
    ProjectItemPtr root;
    std::vector<std::string> warnings;
};

Imported importJson(const std::string& text, bool strict = false) {
    Imported result;
    result.root = std::make_shared<OchreColorProjectItem>("Root", "ROOT", OchreColorGroup{});
    ImportOptions options;
    options.strict = strict;
    options.diagnostics = [&](std::string_view line) { result.warnings.emplace_back(line); };
    DtcgImporter(options).importText(text, "tokens.json", *result.root);
    return result;
}

// The item at a path of names ("a/b/c"), or null.
const OchreColorProjectItem* at(const OchreColorProjectItem& root, const std::string& path) {
    const OchreColorProjectItem* current = &root;
    std::size_t start = 0;
    while (current != nullptr && start <= path.size()) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        const std::string name = path.substr(start, end - start);
        const OchreColorProjectItem* next = nullptr;
        if (current->group) {
            for (const ProjectItemPtr& child : current->group->items) {
                if (child->name == name) {
                    next = child.get();
                    break;
                }
            }
        }
        current = next;
        start = end + 1;
    }
    return current;
}

std::vector<std::string> childNames(const OchreColorProjectItem& item) {
    std::vector<std::string> names;
    for (const ProjectItemPtr& child : item.group->items) {
        names.push_back(child->name);
    }
    return names;
}

int countItems(const OchreColorProjectItem& item, std::initializer_list<ProjectItemType> types) {
    int count = 0;
    if (item.group) {
        for (const ProjectItemPtr& child : item.group->items) {
            count += countItems(*child, types);
        }
    }
    for (ProjectItemType type : types) {
        count += item.itemType == type ? 1 : 0;
    }
    return count;
}

void expectColor(const OchreColorProjectItem* item, ColorEncoding encoding, double red, double green, double blue,
                 double alpha = 1.0, double tolerance = 1e-9) {
    ASSERT_NE(item, nullptr);
    std::optional<ThemeableColor> color = item->resolvedColor();
    ASSERT_TRUE(color.has_value()) << item->name;
    EXPECT_EQ(color->lightVariant.encoding(), encoding) << item->name;
    EXPECT_NEAR(color->lightVariant.red(), red, tolerance) << item->name;
    EXPECT_NEAR(color->lightVariant.green(), green, tolerance) << item->name;
    EXPECT_NEAR(color->lightVariant.blue(), blue, tolerance) << item->name;
    EXPECT_NEAR(color->lightVariant.alpha(), alpha, tolerance) << item->name;
}

TEST(DtcgImporter, KeepsFileOrderAndNamesGroupsAfterTheirKeys) {
    Imported imported = importJson(R"json({
        "$schema": "https://www.designtokens.org/schemas/2025.10/format.json",
        "zeta": {"$type": "number", "b": {"$value": 2}, "a": {"$value": 1}, "$description": "later keys"},
        "alpha": {"10": {"$type": "number", "$value": 10}, "9": {"$type": "number", "$value": 9}}
    })json");
    EXPECT_EQ(childNames(*imported.root), (std::vector<std::string>{"zeta", "alpha"}));
    EXPECT_EQ(childNames(*at(*imported.root, "zeta")), (std::vector<std::string>{"b", "a"}));
    EXPECT_EQ(childNames(*at(*imported.root, "alpha")), (std::vector<std::string>{"10", "9"}));
    // Groups give code names their path; numbered families stay groups, not sets.
    EXPECT_TRUE(at(*imported.root, "zeta")->group->providesNamespace);
    EXPECT_EQ(at(*imported.root, "alpha")->itemType, ProjectItemType::group);
    EXPECT_TRUE(imported.warnings.empty());
}

TEST(DtcgImporter, TypesComeFromTheTokenOrTheNearestGroup) {
    Imported imported = importJson(R"json({
        "size": {"$type": "dimension",
            "small": {"$value": {"value": 4, "unit": "px"}},
            "inner": {"$type": "number", "ratio": {"$value": 1.5}},
            "own": {"$type": "fontWeight", "$value": "semi-bold"}},
        "loose": {"$value": 3}
    })json");
    ASSERT_NE(at(*imported.root, "size/small"), nullptr);
    EXPECT_EQ(at(*imported.root, "size/small")->number->value.lightVariant, 4.0);
    EXPECT_EQ(at(*imported.root, "size/inner/ratio")->number->value.lightVariant, 1.5);
    EXPECT_EQ(at(*imported.root, "size/own")->number->value.lightVariant, 600.0);
    EXPECT_EQ(at(*imported.root, "loose"), nullptr);
    ASSERT_EQ(imported.warnings.size(), 1u);
    EXPECT_EQ(imported.warnings[0],
              "warning: tokens.json: loose: no $type on the token or the groups above it; token skipped");
}

TEST(DtcgImporter, ReadsEveryValueTypeItHolds) {
    Imported imported = importJson(R"json({
        "dimension": {"$type": "dimension", "$value": {"value": 1.5, "unit": "rem"}},
        "old-dimension": {"$type": "dimension", "$value": "12px"},
        "number": {"$type": "number", "$value": -0.25},
        "weight-number": {"$type": "fontWeight", "$value": 350},
        "weight-word": {"$type": "fontWeight", "$value": "extra-black"},
        "duration-ms": {"$type": "duration", "$value": {"value": 150, "unit": "ms"}},
        "duration-s": {"$type": "duration", "$value": {"value": 0.5, "unit": "s"}},
        "family": {"$type": "fontFamily", "$value": ["Inter", "Helvetica Neue", "sans-serif"]},
        "single-family": {"$type": "fontFamily", "$value": "Georgia"},
        "flag": {"$type": "number", "$value": 1, "$extensions": {"com.korvid.ochre-type": "boolean"}}
    })json");
    auto number = [&](const char* path) { return at(*imported.root, path)->number->value.lightVariant; };
    EXPECT_EQ(number("dimension"), 1.5);
    EXPECT_EQ(number("old-dimension"), 12.0);
    EXPECT_EQ(number("number"), -0.25);
    EXPECT_EQ(number("weight-number"), 350.0);
    EXPECT_EQ(number("weight-word"), 950.0);
    EXPECT_EQ(number("duration-ms"), 150.0);
    EXPECT_EQ(number("duration-s"), 500.0);
    EXPECT_EQ(at(*imported.root, "family")->string->value.lightVariant, "Inter, Helvetica Neue, sans-serif");
    EXPECT_EQ(at(*imported.root, "single-family")->string->value.lightVariant, "Georgia");
    EXPECT_TRUE(at(*imported.root, "flag")->boolean->value.lightVariant);
    EXPECT_TRUE(imported.warnings.empty());
}

TEST(DtcgImporter, ShadowsTakeTheFirstLayerAndCompositesAreCountedOnce) {
    Imported imported = importJson(R"json({
        "shadow": {"$type": "shadow", "$value": [
            {"color": {"colorSpace": "srgb", "components": [0, 0, 0], "alpha": 0.25},
             "offsetX": {"value": 1, "unit": "px"}, "offsetY": {"value": 2, "unit": "px"},
             "blur": {"value": 3, "unit": "px"}, "spread": {"value": 4, "unit": "px"}},
            {"color": "#ff0000", "offsetX": "9px", "offsetY": "9px", "blur": "9px", "spread": "9px"}]},
        "type": {"$type": "typography", "$value": {"fontFamily": "Inter", "fontSize": {"value": 16, "unit": "px"},
            "fontWeight": 400, "letterSpacing": {"value": 0, "unit": "px"}, "lineHeight": 1.5}},
        "border": {"$type": "border", "$value": {"color": "#000000", "width": "1px", "style": "solid"}},
        "type-2": {"$type": "typography", "$value": {}},
        "ease": {"$type": "cubicBezier", "$value": [0.5, 0, 1, 1]}
    })json");
    const OchreColorProjectItem* shadow = at(*imported.root, "shadow");
    ASSERT_NE(shadow, nullptr);
    const ShadowDetails& details = shadow->shadow->shadow.lightVariant;
    EXPECT_EQ(details.xOffset, 1.0);
    EXPECT_EQ(details.yOffset, 2.0);
    EXPECT_EQ(details.blur, 3.0);
    EXPECT_EQ(details.spread, 4.0);
    EXPECT_EQ(details.color.alpha(), 0.25);
    EXPECT_EQ(childNames(*imported.root), std::vector<std::string>{"shadow"});
    ASSERT_EQ(imported.warnings.size(), 1u);
    EXPECT_EQ(imported.warnings[0], "warning: tokens.json: skipped 4 tokens of types the document cannot hold: "
                                    "typography 2, border 1, cubicBezier 1");
}

TEST(DtcgImporter, ColoursKeepTheirSpaceOrGoToExtendedSRGB) {
    Imported imported = importJson(R"json({"c": {"$type": "color",
        "srgb": {"$value": {"colorSpace": "srgb", "components": [0.2, 0.4, 0.8], "alpha": 0.5}},
        "wide-srgb": {"$value": {"colorSpace": "srgb", "components": [1.2, 0.4, -0.1]}},
        "p3": {"$value": {"colorSpace": "display-p3", "components": [1, 0.5, 0]}},
        "hsl": {"$value": {"colorSpace": "hsl", "components": ["none", 0, 100], "hex": "#ffffff"}},
        "hwb": {"$value": {"colorSpace": "hwb", "components": [330, 20, 10]}},
        "rec2020": {"$value": {"colorSpace": "rec2020", "components": [0.6, 0.8, 0.4]}},
        "lab": {"$value": {"colorSpace": "lab", "components": [60.17, 93.54, -60.5]}},
        "oklch": {"$value": {"colorSpace": "oklch", "components": [0.7, 0.15, 250]}},
        "oklab": {"$value": {"colorSpace": "oklab", "components": [0.7, 0.1, -0.1]}},
        "old-hex": {"$value": "#ff000080"},
        "old-css": {"$value": "rgba(0, 0, 0, 0.12)"}
    }})json");
    const OchreColorProjectItem& c = *at(*imported.root, "c");
    expectColor(at(c, "srgb"), ColorEncoding::sRGB, 0.2, 0.4, 0.8, 0.5);
    EXPECT_EQ(at(c, "srgb")->color->colorSpace, ColorSpace::sRGB);
    expectColor(at(c, "wide-srgb"), ColorEncoding::sRGBExtended, 1.2, 0.4, -0.1);
    expectColor(at(c, "p3"), ColorEncoding::displayP3, 1, 0.5, 0);
    EXPECT_EQ(at(c, "p3")->color->colorSpace, ColorSpace::displayP3);
    expectColor(at(c, "hsl"), ColorEncoding::sRGB, 1, 1, 1);
    expectColor(at(c, "hwb"), ColorEncoding::sRGB, 0.9, 0.2, 0.55);
    // Reference values from colorjs.io 0.7.1, as in the colour tests.
    expectColor(at(c, "rec2020"), ColorEncoding::sRGBExtended, 0.4033781592, 0.8127509846, 0.2714047955, 1, 2e-6);
    EXPECT_EQ(at(c, "rec2020")->color->colorSpace, ColorSpace::sRGBExtended);
    expectColor(at(c, "lab"), ColorEncoding::sRGBExtended, 1.0000173357, 0.0000380766, 1.0000066503, 1, 2e-6);
    EXPECT_EQ(at(c, "oklch")->color->colorSpace, ColorSpace::oklch);
    EXPECT_EQ(at(c, "oklab")->color->colorSpace, ColorSpace::oklab);
    std::optional<ColorValue> oklch = at(c, "oklch")->color->color.lightVariant.converted(ColorEncoding::sRGBExtended);
    ASSERT_TRUE(oklch.has_value());
    EXPECT_NEAR(oklch->red(), 0.2945826980, 2e-6);
    EXPECT_NEAR(oklch->green(), 0.6394615030, 2e-6);
    EXPECT_NEAR(oklch->blue(), 0.9697490214, 2e-6);
    expectColor(at(c, "old-hex"), ColorEncoding::sRGB, 1, 0, 0, 128 / 255.0);
    expectColor(at(c, "old-css"), ColorEncoding::sRGB, 0, 0, 0, 0.12);
    EXPECT_TRUE(imported.warnings.empty());
}

TEST(DtcgImporter, BadColoursCostOnlyTheirToken) {
    Imported imported = importJson(R"json({"c": {"$type": "color",
        "unknown-space": {"$value": {"colorSpace": "foo", "components": [1, 0, 0]}},
        "unknown-with-hex": {"$value": {"colorSpace": "foo", "components": [1, 0, 0], "hex": "#00ff00"}},
        "two": {"$value": {"colorSpace": "srgb", "components": [1, 0]}},
        "text": {"$value": {"colorSpace": "srgb", "components": [1, "x", 0]}},
        "good": {"$value": {"colorSpace": "srgb", "components": [0, 0, 1]}}
    }})json");
    const OchreColorProjectItem& c = *at(*imported.root, "c");
    EXPECT_EQ(childNames(c), (std::vector<std::string>{"unknown-with-hex", "good"}));
    expectColor(at(c, "unknown-with-hex"), ColorEncoding::sRGB, 0, 1, 0);
    EXPECT_EQ(imported.warnings, (std::vector<std::string>{
        "warning: tokens.json: c.unknown-space: $value: unknown colorSpace \"foo\"; token skipped",
        "warning: tokens.json: c.two: $value.components: expected 3 components for srgb, found 2 values; token skipped",
        "warning: tokens.json: c.text: $value.components[1]: expected a number or \"none\", found a string; token "
        "skipped",
    }));
}

TEST(DtcgImporter, ReferencesBecomeAliasesAndChainsAreFollowed) {
    Imported imported = importJson(R"json({
        "base": {"$type": "color",
            "blue": {"$value": {"colorSpace": "srgb", "components": [0, 0, 1]}},
            "gap": {"$type": "dimension", "$value": {"value": 8, "unit": "px"}}},
        "semantic": {
            "link": {"$value": "{semantic.accent}"},
            "accent": {"$type": "color", "$value": "{base.blue}"},
            "pointer": {"$value": {"$ref": "#/base/blue"}},
            "pointer-value": {"$value": {"$ref": "#/base/blue/$value"}},
            "spacing": {"$value": "{base.gap}"},
            "red": {"$type": "color", "$value": {"colorSpace": "srgb",
                "components": [{"$ref": "#/base/blue/$value/components/2"}, 0, 0]}},
            "shadow": {"$type": "shadow", "$value": {"color": "{base.blue}", "offsetX": "{base.gap}",
                "offsetY": {"value": 0, "unit": "px"}, "blur": {"value": 0, "unit": "px"},
                "spread": {"value": 0, "unit": "px"}}}
        }
    })json");
    const OchreColorProjectItem& semantic = *at(*imported.root, "semantic");
    EXPECT_EQ(at(semantic, "link")->itemType, ProjectItemType::colorAlias);
    // Chains end at the plain item: documents keep no identifier for an alias to point at.
    EXPECT_EQ(at(semantic, "link")->colorAlias->referencedProjectItems[0], at(*imported.root, "base/blue"));
    EXPECT_EQ(at(semantic, "accent")->colorAlias->aliasTypes[0].uuid, at(*imported.root, "base/blue")->uuid);
    expectColor(at(semantic, "link"), ColorEncoding::sRGB, 0, 0, 1);
    expectColor(at(semantic, "pointer"), ColorEncoding::sRGB, 0, 0, 1);
    EXPECT_EQ(at(semantic, "pointer-value")->itemType, ProjectItemType::colorAlias);
    EXPECT_EQ(at(semantic, "spacing")->itemType, ProjectItemType::numberAlias);
    EXPECT_EQ(at(semantic, "spacing")->resolvedNumber()->lightVariant, 8.0);
    // A pointer into a value gives the value, not an alias.
    expectColor(at(semantic, "red"), ColorEncoding::sRGB, 1, 0, 0);
    EXPECT_EQ(at(semantic, "shadow")->shadow->shadow.lightVariant.xOffset, 8.0);
    EXPECT_TRUE(imported.warnings.empty());
}

TEST(DtcgImporter, BrokenReferencesDropTheirTokenWithAWarning) {
    Imported imported = importJson(R"json({"c": {"$type": "color",
        "ok": {"$value": "#000000"},
        "a": {"$value": "{c.b}"},
        "b": {"$value": "{c.a}"},
        "via-cycle": {"$value": "{c.a}"},
        "missing": {"$value": "{c.nothing}"},
        "bad-pointer": {"$value": {"$ref": "#/c/ok~2"}},
        "wrong-type": {"$type": "dimension", "$value": "{c.ok}"}
    }})json");
    EXPECT_EQ(childNames(*at(*imported.root, "c")), std::vector<std::string>{"ok"});
    EXPECT_EQ(imported.warnings, (std::vector<std::string>{
        "warning: tokens.json: c.a: reference cycle c.a -> c.b -> c.a; token skipped",
        "warning: tokens.json: c.b: reference cycle c.a -> c.b -> c.a; token skipped",
        "warning: tokens.json: c.via-cycle: references c.a, which could not be read; token skipped",
        "warning: tokens.json: c.missing: reference to missing token {c.nothing}; token skipped",
        "warning: tokens.json: c.bad-pointer: $ref: \"#/c/ok~2\": \"~\" must be followed by 0 or 1; token skipped",
        "warning: tokens.json: c.wrong-type: references c.ok, a color token, not dimension; token skipped",
    }));
}

TEST(DtcgImporter, RootTokensExtendsAndDollarKeys) {
    Imported imported = importJson(R"json({
        "brand": {"$type": "color",
            "$root": {"$value": "#112233"},
            "hover": {"$value": "{brand.$root}"},
            "$extensions": {"org.example": {"nested": {"$value": 1}}}},
        "base": {"$type": "number", "one": {"$value": 1}, "two": {"$value": 2}},
        "derived": {"$extends": "{base}", "two": {"$value": 22}, "three": {"$type": "number", "$value": 3}}
    })json");
    // The $root token stands before its group, under the group's name.
    EXPECT_EQ(childNames(*imported.root), (std::vector<std::string>{"brand", "brand", "base", "derived"}));
    EXPECT_EQ(imported.root->group->items[0]->itemType, ProjectItemType::color);
    EXPECT_EQ(childNames(*imported.root->group->items[1]), std::vector<std::string>{"hover"});
    expectColor(imported.root->group->items[1]->group->items[0].get(), ColorEncoding::sRGB, 0x11 / 255.0,
                0x22 / 255.0, 0x33 / 255.0);
    EXPECT_EQ(childNames(*at(*imported.root, "derived")), (std::vector<std::string>{"one", "two", "three"}));
    EXPECT_EQ(at(*imported.root, "derived/two")->number->value.lightVariant, 22.0);
    EXPECT_TRUE(imported.warnings.empty());
}

TEST(DtcgImporter, AppearanceGroupsOfOneFileMergeByPath) {
    Imported imported = importJson(R"json({
        "Light": {"$type": "color", "bg": {"$value": "#ffffff"}, "fg": {"$value": "{Light.bg}"}},
        "Dark": {"$type": "color", "bg": {"$value": "#000000"}, "fg": {"$value": "{Dark.bg}"},
                 "extra": {"$value": "#123456"}}
    })json");
    // What dark could not match stays in its group, so the light level stays too.
    EXPECT_EQ(childNames(*imported.root), (std::vector<std::string>{"Light", "Dark"}));
    const OchreColorProjectItem* fg = at(*imported.root, "Light/fg");
    ASSERT_NE(fg, nullptr);
    ASSERT_EQ(fg->itemType, ProjectItemType::colorAlias);
    EXPECT_EQ(fg->colorAlias->referencedProjectItems[2], at(*imported.root, "Light/bg"));
    std::optional<ThemeableColor> resolved = fg->resolvedColor();
    ASSERT_TRUE(resolved && resolved->darkVariant);
    EXPECT_EQ(resolved->darkVariant->red(), 0.0);
    EXPECT_EQ(at(*imported.root, "Light/bg")->color->appearanceType, AppearanceType::lightAndDark);
    EXPECT_EQ(childNames(*at(*imported.root, "Dark")), std::vector<std::string>{"extra"});

    // With everything matched the light level disappears.
    Imported matched = importJson(R"json({"light": {"a": {"$type": "number", "$value": 1}},
                                          "dark": {"a": {"$type": "number", "$value": 2}}})json");
    EXPECT_EQ(childNames(*matched.root), std::vector<std::string>{"a"});
    EXPECT_EQ(at(*matched.root, "a")->number->value.darkVariant, 2.0);
}

TEST(DtcgImporter, FilesThatAreNoTokenDocumentFailWithAPosition) {
    struct Case {
        const char* text;
        const char* message;
    };
    const Case cases[] = {
        {"{\n  \"a\": 1,\n}", "parse error at line 3, column 1: syntax error while parsing object key - "
                              "unexpected '}'; expected string literal"},
        {"  [1, 2]", "line 1, column 3: the top level is an array, not an object"},
        {"\"text\"", "line 1, column 1: the top level is a string, not an object"},
        {"", "parse error at line 1, column 1: syntax error while parsing value - unexpected end of input; "
             "expected '[', '{', or a literal"},
        {"{\"a\": 1e999}", "line 1, column 7: number overflow parsing '1e999'"},
    };
    for (const Case& c : cases) {
        try {
            importJson(c.text);
            ADD_FAILURE() << "no error for " << c.text;
        } catch (const ImportSourceError& error) {
            EXPECT_EQ(std::string(error.what()), c.message);
            EXPECT_EQ(error.source, "tokens.json");
        }
    }
    std::string deep(300, '[');
    deep = "{\"a\": " + deep;
    try {
        importJson(deep);
        ADD_FAILURE() << "no error for deep nesting";
    } catch (const ImportSourceError& error) {
        EXPECT_EQ(std::string(error.what()), "line 1, column 262: objects and arrays nested deeper than 256 levels");
    }
}

TEST(DtcgImporter, TheKindTableReadsSeveralFilesIntoOneGroupPerFile) {
    const ImportKind* kind = findImportKind("dtcg");
    ASSERT_NE(kind, nullptr);
    ASSERT_TRUE(kind->makeImporter);
    ASSERT_TRUE(kind->importAll);
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "dtcg-import-test";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "palette.json") << R"json({"blue": {"$type": "color", "$value": "#0000ff"}})json";
    std::ofstream(folder / "theme.json") << R"json({"accent": {"$type": "color", "$value": "{blue}"}})json";
    ImportOptions options;
    std::vector<ProjectItemPtr> groups = kind->importAll({folder / "palette.json", folder / "theme.json"}, options);
    ASSERT_EQ(groups.size(), 2u);
    EXPECT_EQ(groups[0]->name, "DTCG Import - palette.json");
    EXPECT_EQ(groups[1]->name, "DTCG Import - theme.json");
    // References reach across the files of one call.
    expectColor(at(*groups[1], "accent"), ColorEncoding::sRGB, 0, 0, 1);
    options.modes = {"light", "sepia"};
    try {
        kind->importAll({folder / "palette.json", folder / "theme.json"}, options);
        ADD_FAILURE() << "unknown mode accepted";
    } catch (const ImportSourceError& error) {
        EXPECT_EQ(error.source, folder / "theme.json");
        EXPECT_EQ(std::string(error.what()),
                  "unknown mode \"sepia\" (expected light, dark, high-contrast or dark-high-contrast)");
    }
    std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace tintwork

namespace tintwork {
namespace {

// Writes each text to a file in a fresh folder and imports them all with `modes`.
std::vector<ProjectItemPtr> importModes(const std::vector<std::string>& texts, std::vector<std::string> modes,
                                        std::vector<std::string>& warnings) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "dtcg-modes-test";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    std::vector<std::filesystem::path> paths;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        paths.push_back(folder / (modes[i] + ".json"));
        std::ofstream(paths.back()) << texts[i];
    }
    ImportOptions options;
    options.modes = std::move(modes);
    options.diagnostics = [&](std::string_view line) { warnings.emplace_back(line); };
    std::vector<ProjectItemPtr> groups = DtcgImporter::importAll(paths, options);
    std::filesystem::remove_all(folder);
    return groups;
}

TEST(DtcgImporter, ModesFillTheLightFilesVariantsByTokenPath) {
    std::vector<std::string> warnings;
    std::vector<ProjectItemPtr> groups = importModes(
        {R"json({"c": {"$type": "color", "bg": {"$value": "#ffffff"}, "fg": {"$value": "{c.bg}"},
                 "ink": {"$value": "{c.bg}"}, "size": {"$type": "number", "$value": 1}}})json",
         R"json({"c": {"$type": "color", "bg": {"$value": "#000000"}, "fg": {"$value": "{c.bg}"},
                 "ink": {"$value": "#ff0000"}, "size": {"$type": "number", "$value": 2},
                 "only-dark": {"$value": "#00ff00"}}})json",
         R"json({"c": {"$type": "color", "bg": {"$value": "#eeeeee"}}})json"},
        {"light", "dark", "high-contrast"}, warnings);
    ASSERT_EQ(groups.size(), 1u);
    EXPECT_EQ(groups[0]->name, "DTCG Import - light.json");
    const OchreColorProjectItem& c = *at(*groups[0], "c");
    EXPECT_EQ(childNames(c), (std::vector<std::string>{"bg", "fg", "ink", "size"}));
    const OchreColorItem& bg = *at(c, "bg")->color;
    EXPECT_EQ(bg.appearanceType, AppearanceType::lightDarkHighContrast);
    EXPECT_EQ(bg.color.darkVariant->red(), 0.0);
    EXPECT_NEAR(bg.color.lightVariantHighContrast->red(), 0xee / 255.0, 1e-12);
    // An alias in both files stays an alias and follows its dark target.
    const OchreColorProjectItem* fg = at(c, "fg");
    ASSERT_EQ(fg->itemType, ProjectItemType::colorAlias);
    EXPECT_EQ(fg->colorAlias->referencedProjectItems[2], at(c, "bg"));
    EXPECT_EQ(fg->resolvedColor()->darkVariant->red(), 0.0);
    // An alias whose dark value is a plain colour becomes a plain colour with both.
    const OchreColorProjectItem* ink = at(c, "ink");
    ASSERT_EQ(ink->itemType, ProjectItemType::color);
    EXPECT_EQ(ink->color->color.lightVariant.red(), 1.0);
    EXPECT_EQ(ink->color->color.darkVariant->red(), 1.0);
    EXPECT_EQ(ink->color->color.darkVariant->green(), 0.0);
    EXPECT_EQ(at(c, "size")->number->value.darkVariant, 2.0);
    EXPECT_EQ(warnings, std::vector<std::string>{
                            "warning: dark.json: 1 token has no counterpart in the base file and was left out"});
}

TEST(DtcgImporter, OlderFilesAndLenientReadingOfBrokenRules) {
    // Early drafts wrote "value" and "type" without "$"; references worked the same.
    Imported early = importJson(R"json({"brand": {"gold": {"value": "#f59f00", "type": "color"}},
        "text": {"value": "{brand.gold}", "type": "color"}, "font": {"value": "Inter", "type": "font"}})json");
    expectColor(at(*early.root, "text"), ColorEncoding::sRGB, 0xf5 / 255.0, 0x9f / 255.0, 0);
    EXPECT_EQ(at(*early.root, "font")->string->value.lightVariant, "Inter");
    EXPECT_TRUE(early.warnings.empty());

    // A circular $extends is ignored with a warning; the groups keep their own tokens.
    Imported circular = importJson(R"json({"a": {"$extends": "{b}", "x": {"$type": "number", "$value": 1}},
                                           "b": {"$extends": "{a}", "y": {"$type": "number", "$value": 2}}})json");
    EXPECT_EQ(childNames(*at(*circular.root, "b")), std::vector<std::string>{"y"});
    EXPECT_EQ(childNames(*at(*circular.root, "a")), (std::vector<std::string>{"y", "x"}));
    EXPECT_EQ(circular.warnings, std::vector<std::string>{"warning: tokens.json: b: $extends: circular chain of "
                                                          "$extends through a; $extends ignored"});

    // Out-of-range components still read; a JSON pointer may index an array.
    Imported loose = importJson(R"json({"c": {"$type": "color",
        "over": {"$value": {"colorSpace": "hsl", "components": [400, 120, 50]}},
        "picked": {"$value": {"colorSpace": "srgb", "components": [{"$ref": "#/list/$value/1"}, 0, 0]}}},
        "list": {"$type": "cubicBezier", "$value": [0, 0.5, 1, 1]}})json");
    ASSERT_NE(at(*loose.root, "c/over"), nullptr);
    expectColor(at(*loose.root, "c/picked"), ColorEncoding::sRGB, 0.5, 0, 0);
}

}  // namespace
}  // namespace tintwork
