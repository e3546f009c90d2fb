#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "KiwiFixtures.h"
#include "colour/FatalError.h"
#include "import/ImportKinds.h"
#include "import/SketchImporter.h"

namespace tintwork {
namespace {

std::filesystem::path corpusFile(const std::string& name) {
    return std::filesystem::path(TINTWORK_SHARED_DIR) / "corpus" / "sketch" / name;
}

ProjectItemPtr importCorpus(const std::string& name, std::optional<ColorSpace> unmanaged) {
    ImportOptions options;
    options.unmanagedColorSpace = unmanaged;
    return importSource(*findImportKind("sketch"), corpusFile(name), options);
}

struct Entry {
    std::string name;
    ColorValue color;
};

std::vector<Entry> singles(const OchreColorProjectItem& group) {
    std::vector<Entry> entries;
    for (const ProjectItemPtr& item : group.group->items) {
        if (item->color) {
            entries.push_back({item->name, item->color->color.lightVariant});
        }
    }
    return entries;
}

TEST(SketchImporter, ImportsRealDocumentsInTheChosenSpaceWhenUnmanaged) {
    if (!std::filesystem::exists(corpusFile("sketch-assistants-style-fills.sketch"))) {
        GTEST_SKIP() << "no shared corpus";
    }
    // These documents declare no colour profile: by default they import nothing.
    EXPECT_TRUE(importCorpus("sketch-assistants-style-fills.sketch", std::nullopt)->group->items.empty());
    EXPECT_TRUE(importCorpus("sketch-assistants-colored-substrings.sketch", std::nullopt)->group->items.empty());

    const ColorValue brandBlue(ColorEncoding::sRGB, 0.1479987005919439, 0.1724247769915741, 0.2971297554347826, 1);
    // Swatches first; the second rectangle's red repeats Brand Red; a gradient beside a colour is ignored.
    const ProjectItemPtr fills = importCorpus("sketch-assistants-style-fills.sketch", ColorSpace::sRGB);
    EXPECT_EQ(fills->name, "Sketch Import - sketch-assistants-style-fills.sketch");
    const std::vector<Entry> fillEntries = singles(*fills);
    ASSERT_EQ(fills->group->items.size(), 3u);
    ASSERT_EQ(fillEntries.size(), 3u);
    EXPECT_EQ(fillEntries[0].name, "Brand Red");
    EXPECT_EQ(fillEntries[0].color, ColorValue::sRGB(1, 0, 0));
    EXPECT_EQ(fillEntries[1].name, "Brand Blue");
    EXPECT_EQ(fillEntries[1].color, brandBlue);
    EXPECT_EQ(fillEntries[2].name, "Rectangle");
    EXPECT_EQ(fillEntries[2].color, ColorValue::sRGB(1, 1, 1));

    const ProjectItemPtr text = importCorpus("sketch-assistants-colored-substrings.sketch", ColorSpace::displayP3);
    const std::vector<Entry> textEntries = singles(*text);
    ASSERT_EQ(textEntries.size(), 3u);
    EXPECT_EQ(textEntries[1].color, ColorValue(ColorEncoding::displayP3, brandBlue.red(), brandBlue.green(),
                                               brandBlue.blue(), 1));
    EXPECT_EQ(textEntries[2].name, "Text Color");
    EXPECT_EQ(textEntries[2].color, ColorValue(ColorEncoding::displayP3, 1, 1, 1, 1));
    EXPECT_EQ(text->group->items[2]->color->colorSpace, ColorSpace::displayP3);

    // An sRGB document whose artboards hold only background colours: nothing to gather, with
    // or without the option.
    EXPECT_TRUE(importCorpus("sketch-assistants-6-artboard-page.sketch", std::nullopt)->group->items.empty());
    EXPECT_TRUE(importCorpus("sketch-assistants-6-artboard-page.sketch", ColorSpace::displayP3)->group->items.empty());
}

// An import over entries held in memory.
struct Gathered {
    std::vector<Entry> singles;
    std::vector<std::pair<std::string, std::vector<Entry>>> sets;
};

Gathered importEntries(const std::map<std::string, std::string>& entries,
                  std::optional<ColorSpace> unmanaged = std::nullopt) {
    SketchImporter importer;
    importer.unmanagedColorSpace = unmanaged;
    OchreColorProjectItem group("G", "G", OchreColorGroup{});
    importer.importEntries(
        [&](const std::string& name) -> std::optional<std::string> {
            const auto found = entries.find(name);
            return found == entries.end() ? std::nullopt : std::optional<std::string>(found->second);
        },
        group);
    Gathered run;
    run.singles = singles(group);
    for (const ProjectItemPtr& item : group.group->items) {
        if (item->colorSet) {
            std::vector<Entry> members;
            for (const ThemeableColor& member : item->colorSet->colors) {
                members.push_back({member.name, member.lightVariant});
            }
            run.sets.emplace_back(item->name, members);
        }
    }
    return run;
}

std::string documentJSON(int colorSpace, const std::string& swatches = "[]",
                         const std::string& pages = R"([{"_class": "MSJSONFileReference", "_ref": "pages/one"}])") {
    return R"({"_class": "document", "colorSpace": )" + std::to_string(colorSpace) +
           R"(, "sharedSwatches": {"objects": )" + swatches + R"(}, "pages": )" + pages + "}";
}

std::string color(double red, double green, double blue, double alpha = 1) {
    return R"({"_class": "color", "red": )" + std::to_string(red) + R"(, "green": )" + std::to_string(green) +
           R"(, "blue": )" + std::to_string(blue) + R"(, "alpha": )" + std::to_string(alpha) + "}";
}

std::string page(const std::string& layers) { return R"({"_class": "page", "layers": )" + layers + "}"; }

TEST(SketchImporter, ReadsColoursInTheDocumentsSpace) {
    const std::string swatches = "[{\"name\": \"Ink\", \"value\": " + color(0.1, 0.2, 0.3) +
                                 "}, {\"value\": " + color(0.5, 0.5, 0.5, 0.5) + "}, {\"name\": \"Empty\"}]";
    const auto firstSwatch = [&](int space, std::optional<ColorSpace> unmanaged) {
        const Gathered run = importEntries({{"document.json", documentJSON(space, swatches)}}, unmanaged);
        return run.singles;
    };
    const std::vector<Entry> srgb = firstSwatch(1, std::nullopt);
    ASSERT_EQ(srgb.size(), 2u);
    EXPECT_EQ(srgb[0].name, "Ink");
    EXPECT_EQ(srgb[0].color, ColorValue::sRGB(0.1, 0.2, 0.3));
    EXPECT_EQ(srgb[1].name, "Swatch");
    EXPECT_EQ(srgb[1].color, ColorValue::sRGB(0.5, 0.5, 0.5, 0.5));
    EXPECT_EQ(firstSwatch(2, std::nullopt)[0].color, ColorValue(ColorEncoding::displayP3, 0.1, 0.2, 0.3, 1));
    // Unmanaged documents import in the space asked for, or not at all; the option does not
    // touch documents with a profile, and unknown spaces import nothing.
    EXPECT_TRUE(firstSwatch(0, std::nullopt).empty());
    EXPECT_EQ(firstSwatch(0, ColorSpace::displayP3)[0].color, ColorValue(ColorEncoding::displayP3, 0.1, 0.2, 0.3, 1));
    EXPECT_EQ(firstSwatch(0, ColorSpace::sRGB)[0].color, ColorValue::sRGB(0.1, 0.2, 0.3));
    EXPECT_EQ(firstSwatch(1, ColorSpace::displayP3)[0].color, ColorValue::sRGB(0.1, 0.2, 0.3));
    EXPECT_TRUE(firstSwatch(3, ColorSpace::sRGB).empty());
    // Components are kept as stored, without clamping.
    EXPECT_EQ(importEntries({{"document.json", documentJSON(2, "[{\"value\": " + color(1.2, -0.1, 0) + "}]")}})
                  .singles[0]
                  .color,
              ColorValue(ColorEncoding::displayP3, 1.2, -0.1, 0, 1));
    EXPECT_THROW(firstSwatch(0, ColorSpace::sRGBExtended), FatalError);
    // Documents from before colour profiles have no colour space at all: unmanaged.
    EXPECT_EQ(importEntries({{"document.json", R"({"pages": [], "sharedSwatches": {"objects": [{"value": )" +
                                                   color(0, 0, 1) + "}]}}"}},
                            ColorSpace::sRGB)
                  .singles.size(),
              1u);
}

TEST(SketchImporter, WalksLayersDepthFirstThroughEveryKindOfPaint) {
    const std::string layers = R"([
      {"_class": "group", "name": "Card", "isVisible": false, "unknownKey": {"deep": [1, 2]},
       "style": {"fills": [{"color": )" + color(1, 0, 0) + R"(, "isEnabled": false}],
                 "borders": [{"color": )" + color(0, 1, 0) + R"(}],
                 "shadows": [{"color": )" + color(0, 0, 0, 0.5) + R"(}],
                 "innerShadows": [{"color": )" + color(1, 1, 1, 0.5) + R"(}, {"blurRadius": 3}]},
       "layers": [
         {"_class": "text", "name": "Label",
          "attributedString": {"string": "Hi there", "attributes": [
             {"location": 0, "length": 2, "attributes": {"MSAttributedStringColorAttribute": )" + color(0, 0, 1) + R"(}},
             {"length": 6, "attributes": {}}]}},
         {"_class": "rectangle", "style": {"fills": [{"color": )" + color(0.3, 0.3, 0.3) + R"(}]}}
       ]},
      {"_class": "rectangle", "name": "Other", "style": {"fills": [{"color": )" + color(1, 0, 0) + R"(}],
                                                          "borders": null}}
    ])";
    const Gathered run = importEntries({{"document.json", documentJSON(1)}, {"pages/one.json", page(layers)}});
    ASSERT_EQ(run.singles.size(), 6u);
    const std::vector<std::string> names = {"Card", "Card", "Card", "Card", "Text Color", "Color"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(run.singles[i].name, names[i]) << i;
    }
    EXPECT_EQ(run.singles[0].color, ColorValue::sRGB(1, 0, 0));  // the hidden layer counts
    EXPECT_EQ(run.singles[1].color, ColorValue::sRGB(0, 1, 0));
    EXPECT_EQ(run.singles[3].color, ColorValue::sRGB(1, 1, 1, 0.5));
    EXPECT_EQ(run.singles[4].color, ColorValue::sRGB(0, 0, 1));
    EXPECT_EQ(run.singles[5].color, ColorValue::sRGB(0.3, 0.3, 0.3));  // "Other"'s red is Card's again
}

TEST(SketchImporter, MakesSetsOfGradientsInFileOrder) {
    const std::string gradient = R"({"gradient": {"_class": "gradient", "stops": [
        {"position": 1, "color": )" + color(0, 0, 0) + R"(},
        {"position": 0.25, "color": )" + color(0.5, 0.5, 0.5) + R"(},
        {"position": 0.5},
        {"position": 0, "color": )" + color(1, 1, 1) + R"(}]}})";
    const std::string layers = R"([{"name": "Ramp", "style": {"fills": [)" + gradient + R"(]}},
        {"name": "Ramp", "style": {"borders": [)" + gradient + R"(]}},
        {"style": {"fills": [)" + gradient + R"(]}}])";
    const Gathered run = importEntries({{"document.json", documentJSON(1)}, {"pages/one.json", page(layers)}});
    EXPECT_TRUE(run.singles.empty());
    // The second "Ramp" repeats the first; the unnamed layer's set is a set of its own.
    ASSERT_EQ(run.sets.size(), 2u);
    EXPECT_EQ(run.sets[0].first, "Ramp");
    EXPECT_EQ(run.sets[1].first, "Color Set");
    const std::vector<Entry>& stops = run.sets[0].second;
    ASSERT_EQ(stops.size(), 3u);
    EXPECT_EQ(stops[0].name, "Color 1");
    EXPECT_EQ(stops[0].color, ColorValue::sRGB(0, 0, 0));
    EXPECT_EQ(stops[1].name, "Color 2");
    EXPECT_EQ(stops[2].name, "Color 3");
    EXPECT_EQ(stops[2].color, ColorValue::sRGB(1, 1, 1));
}

TEST(SketchImporter, SkipsPagesThatAreMissingOrDoNotDecode) {
    const std::string pages = R"([{"_class": "MSJSONFileReference", "_ref": "pages/missing"},
        {"_class": "MSJSONFileReference", "_ref": "pages/broken"},
        {"_class": "MSJSONFileReference", "_ref": "pages/wrong"},
        {"_class": "MSJSONFileReference", "_ref": "pages/deep"},
        {"_class": "MSJSONFileReference", "_ref": "pages/good"}])";
    std::string deep = R"({"name": "x", "style": {"fills": [{"color": )" + color(1, 0, 1) + "}]}}";
    for (int i = 0; i < 200; ++i) {
        deep = R"({"layers": [)" + deep + "]}";
    }
    const Gathered run = importEntries({
        {"document.json", documentJSON(1, "[]", pages)},
        {"pages/broken.json", "{\"layers\": [}"},
        {"pages/wrong.json", page(R"([{"name": 5, "style": {"fills": [{"color": )" + color(1, 0, 0) + "}]}}]")},
        {"pages/deep.json", page("[" + deep + "]")},
        {"pages/good.json", page(R"([{"name": "Kept", "style": {"fills": [{"color": )" + color(0, 1, 1) + "}]}}]")},
    });
    ASSERT_EQ(run.singles.size(), 1u);
    EXPECT_EQ(run.singles[0].name, "Kept");
}

TEST(SketchImporter, FailsForBrokenContainersWithTheirMessages) {
    const auto failure = [](const std::function<void()>& action) -> std::string {
        try {
            action();
        } catch (const DocumentColorParsingError& error) {
            return error.message;
        }
        return "(no error)";
    };
    const auto importFile = [&](const std::filesystem::path& path) {
        return failure([&] {
            SketchImporter importer;
            OchreColorProjectItem group("G", "G", OchreColorGroup{});
            importer.importColors(path, group);
        });
    };
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "tintwork-sketch-tests";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "plain.sketch") << "plain text";
    EXPECT_EQ(importFile(folder / "plain.sketch"), "Not a zip archive");
    EXPECT_EQ(importFile(folder / "missing.sketch"), "No such file");
    testing::writeZip(folder / "empty.sketch", {{"meta.json", "{}"}});
    EXPECT_EQ(importFile(folder / "empty.sketch"), "No document found in Sketch file");
    for (const std::string& document : {std::string("not json"), std::string("[]"), std::string(R"({"colorSpace": 1})"),
                                        std::string(R"({"pages": [{"_ref": "x"}], "colorSpace": 1})"),
                                        std::string(R"({"pages": [], "colorSpace": 1.5})"),
                                        std::string(R"({"pages": [], "colorSpace": "1"})"),
                                        std::string(R"({"pages": [], "sharedSwatches": {"objects": [{"value": {"red": 1}}]}})"),
                                        std::string(1000, '[')}) {
        testing::writeZip(folder / "bad.sketch", {{"document.json", document}});
        EXPECT_EQ(importFile(folder / "bad.sketch"), "Unable to decode Sketch file") << document.substr(0, 40);
    }
    testing::writeZip(folder / "good.sketch",
                      {{"document.json", documentJSON(1, "[{\"value\": " + color(0, 0, 1) + "}]")}});
    EXPECT_EQ(importFile(folder / "good.sketch"), "(no error)");
}

}  // namespace
}  // namespace tintwork
