// The standard Design Tokens reader on real token files of design systems. The expected
// colour counts were counted from the files with a separate script (tokens whose type,
// own or inherited, is "color"), not taken from the reader.
#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "import/DtcgImporter.h"
#include "import/ImportKinds.h"

namespace tintwork {
namespace {

const std::filesystem::path corpus = std::filesystem::path(TINTWORK_SHARED_DIR) / "corpus" / "json" / "dtcg";

int count(const OchreColorProjectItem& item, std::initializer_list<ProjectItemType> types, int* unresolved = nullptr) {
    int total = 0;
    if (item.group) {
        for (const ProjectItemPtr& child : item.group->items) {
            total += count(*child, types, unresolved);
        }
    }
    for (ProjectItemType type : types) {
        if (item.itemType == type) {
            ++total;
            if (unresolved != nullptr && type == ProjectItemType::colorAlias && !item.resolvedColor()) {
                ++*unresolved;
            }
        }
    }
    return total;
}

const OchreColorProjectItem* at(const OchreColorProjectItem& root, std::initializer_list<const char*> names) {
    const OchreColorProjectItem* current = &root;
    for (const char* name : names) {
        const OchreColorProjectItem* next = nullptr;
        for (const ProjectItemPtr& child : current->group->items) {
            if (child->name == name && (child->group.has_value() || name == *(names.end() - 1))) {
                next = child.get();
                break;
            }
        }
        if (next == nullptr) {
            return nullptr;
        }
        current = next;
    }
    return current;
}

std::vector<ProjectItemPtr> importFiles(const std::vector<std::string>& names, std::vector<std::string> modes,
                                        std::vector<std::string>* warnings) {
    std::vector<std::filesystem::path> paths;
    for (const std::string& name : names) {
        paths.push_back(corpus / name);
    }
    ImportOptions options;
    options.modes = std::move(modes);
    options.diagnostics = [&](std::string_view line) { warnings->emplace_back(line); };
    return DtcgImporter::importAll(paths, options);
}

class DtcgCorpus : public ::testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::is_directory(corpus)) {
            GTEST_SKIP() << "no shared corpus at " << corpus;
        }
    }
};

TEST_F(DtcgCorpus, EveryFileImportsAllItsColourTokens) {
    struct Case {
        std::vector<std::string> files;
        int colors;   // in the last file
        int shadows;
        std::size_t warnings;
    };
    const std::vector<Case> cases = {
        {{"adobe-spectrum-theme-light.tokens.json"}, 547, 0, 1},
        {{"figma-sds-color.tokens.json"}, 90, 0, 0},
        // The theme files refer to the colour file's tokens: read in one call with it. 28 of
        // their 126 colours are groups' $root tokens.
        {{"figma-sds-color.tokens.json", "figma-sds-theme-light.tokens.json"}, 126, 0, 0},
        {{"figma-sds-color.tokens.json", "figma-sds-theme-dark.tokens.json"}, 126, 0, 0},
        {{"github-primer-base-light.tokens.json"}, 98, 0, 0},
        {{"github-primer-base-dark.tokens.json"}, 98, 0, 0},
        {{"github-primer-base-light-high-contrast.tokens.json"}, 81, 0, 0},
        // Its 8 shadows take their colours from a file that is not here: each is dropped.
        {{"github-primer-shadow.tokens.json"}, 0, 0, 8},
        {{"ibm-carbon-colors.tokens.json"}, 244, 0, 0},
        {{"microsoft-fluent-palette.tokens.json"}, 50, 0, 0},
        {{"shopify-polaris-colors.tokens.json"}, 58, 0, 0},
        {{"w3c-early-draft-02-grouped-structure.json"}, 7, 0, 0},
        {{"w3c-test-suite/display-p3.json"}, 1, 0, 0},
        {{"w3c-test-suite/rec2020.json"}, 1, 0, 0},
        {{"w3c-test-suite/srgb-with-alpha.json"}, 1, 0, 0},
        {{"w3c-test-suite/shadow-basic.json"}, 0, 1, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.files.back());
        std::vector<std::string> warnings;
        std::vector<ProjectItemPtr> groups = importFiles(c.files, {}, &warnings);
        ASSERT_EQ(groups.size(), c.files.size());
        int unresolved = 0;
        EXPECT_EQ(count(*groups.back(), {ProjectItemType::color, ProjectItemType::colorAlias}, &unresolved), c.colors);
        EXPECT_EQ(unresolved, 0);
        EXPECT_EQ(count(*groups.back(), {ProjectItemType::shadow, ProjectItemType::shadowAlias}), c.shadows);
        EXPECT_EQ(warnings.size(), c.warnings) << (warnings.empty() ? "" : warnings.front());
    }
}

TEST_F(DtcgCorpus, FilesThatDoNotHoldWhatTheyReferToSayWhichTokens) {
    std::vector<std::string> warnings;
    std::vector<ProjectItemPtr> groups = importFiles({"figma-sds-theme-light.tokens.json"}, {}, &warnings);
    EXPECT_EQ(count(*groups[0], {ProjectItemType::color, ProjectItemType::colorAlias}), 0);
    ASSERT_EQ(warnings.size(), 126u);
    EXPECT_EQ(warnings[0], "warning: figma-sds-theme-light.tokens.json: color.background.brand.$root: reference to "
                           "missing token {color.brand.800}; token skipped");
}

TEST_F(DtcgCorpus, PrimerAppearancesMergeIntoOneGroup) {
    std::vector<std::string> warnings;
    std::vector<ProjectItemPtr> groups =
        importFiles({"github-primer-base-light.tokens.json", "github-primer-base-dark.tokens.json",
                     "github-primer-base-light-high-contrast.tokens.json"},
                    {"light", "dark", "high-contrast"}, &warnings);
    ASSERT_EQ(groups.size(), 1u);
    EXPECT_EQ(groups[0]->name, "DTCG Import - github-primer-base-light.tokens.json");
    EXPECT_TRUE(warnings.empty()) << warnings.front();
    EXPECT_EQ(count(*groups[0], {ProjectItemType::color, ProjectItemType::colorAlias}), 98);

    const OchreColorProjectItem* black = at(*groups[0], {"base", "color", "black"});
    ASSERT_NE(black, nullptr);
    std::optional<ThemeableColor> color = black->resolvedColor();
    ASSERT_TRUE(color && color->darkVariant && color->lightVariantHighContrast);
    EXPECT_EQ(black->color->appearanceType, AppearanceType::lightDarkHighContrast);
    // hsl(213.3 12.7% 13.9%) is #1f2328, hsl(217.5 80% 2%) is #010409.
    EXPECT_EQ(std::lround(color->lightVariant.red() * 255), 0x1f);
    EXPECT_EQ(std::lround(color->lightVariant.blue() * 255), 0x28);
    EXPECT_EQ(std::lround(color->darkVariant->blue() * 255), 0x09);
    EXPECT_EQ(std::lround(color->lightVariantHighContrast->blue() * 255), 0x09);

    // inset is {neutral.0} in light and {black} in dark: the alias follows each.
    const OchreColorProjectItem* inset = at(*groups[0], {"base", "color", "inset"});
    ASSERT_NE(inset, nullptr);
    ASSERT_EQ(inset->itemType, ProjectItemType::colorAlias);
    std::optional<ThemeableColor> insetColor = inset->resolvedColor();
    ASSERT_TRUE(insetColor && insetColor->darkVariant);
    EXPECT_EQ(std::lround(insetColor->lightVariant.red() * 255), 0xff);
    EXPECT_EQ(std::lround(insetColor->darkVariant->blue() * 255), 0x09);
}

}  // namespace
}  // namespace tintwork
