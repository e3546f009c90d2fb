#include "export/CodeName.h"

#include <gtest/gtest.h>

namespace tintwork {
namespace {

BuildTask taskWith(BuildNameTransform transform, std::optional<std::string> prefix = std::nullopt,
                   std::optional<std::string> suffix = std::nullopt) {
    BuildTask task;
    task.nameTransform = transform;
    task.namePrefix = std::move(prefix);
    task.nameSuffix = std::move(suffix);
    return task;
}

TEST(CodeName, WordsSplitAtEveryNonAlphanumericCharacter) {
    EXPECT_EQ(words("Primary Blue"), (std::vector<std::string>{"Primary", "Blue"}));
    EXPECT_EQ(words("  brand--accent_2.hover "), (std::vector<std::string>{"brand", "accent", "2", "hover"}));
    EXPECT_EQ(words("Grün Ärger"), (std::vector<std::string>{"Grün", "Ärger"}));
    EXPECT_EQ(words("色 彩"), (std::vector<std::string>{"色", "彩"}));
    EXPECT_TRUE(words("-- / --").empty());
}

TEST(CodeName, CamelAndPascalCapitaliseWordsAndLowerTheRest) {
    EXPECT_EQ(camel("Primary Blue"), "primaryBlue");
    EXPECT_EQ(camel("BRAND accent COLOR"), "brandAccentColor");
    EXPECT_EQ(camel("Ärger über"), "ärgerÜber");
    EXPECT_EQ(camel(""), "");
    EXPECT_EQ(pascal("primary blue-green"), "PrimaryBlueGreen");
    EXPECT_EQ(pascal("über"), "Über");
    EXPECT_EQ(upperFirst("ärger Über"), "Ärger Über");
    EXPECT_EQ(upperFirst(""), "");
}

TEST(CodeName, TransformsJoinNamespacePartsAndName) {
    const std::vector<std::string> path{"Brand Colors", "Dark UI"};
    EXPECT_EQ(codeName(path, "Primary Blue", taskWith(BuildNameTransform::none)), "Brand ColorsDark UIPrimary Blue");
    EXPECT_EQ(codeName(path, "Primary Blue", taskWith(BuildNameTransform::camelCase)), "brandColorsDarkUiPrimaryBlue");
    EXPECT_EQ(codeName(path, "Primary Blue", taskWith(BuildNameTransform::pascalCase)), "BrandColorsDarkUiPrimaryBlue");
    EXPECT_EQ(codeName(path, "Primary Blue", taskWith(BuildNameTransform::snakeCase)),
              "brand_colors_dark_ui_primary_blue");
    EXPECT_EQ(codeName(path, "Primary Blue", taskWith(BuildNameTransform::kebabCase)),
              "brand-colors-dark-ui-primary-blue");
    // Snake and kebab only touch blanks; camel and pascal drop punctuation.
    EXPECT_EQ(codeName({}, "Blue.Hover (50%)", taskWith(BuildNameTransform::kebabCase)), "blue.hover-(50%)");
    EXPECT_EQ(codeName({}, "Blue.Hover (50%)", taskWith(BuildNameTransform::camelCase)), "blueHover50");
}

TEST(CodeName, PrefixAndSuffixAreNeverTransformed) {
    EXPECT_EQ(codeName({"Brand Colors"}, "Primary Blue", taskWith(BuildNameTransform::kebabCase, "x-")),
              "x-brand-colors-primary-blue");
    EXPECT_EQ(codeName({}, "Primary Blue", taskWith(BuildNameTransform::camelCase, "Tw_", "_Color")),
              "Tw_primaryBlue_Color");
    EXPECT_EQ(codeName({}, "Primary Blue", taskWith(BuildNameTransform::snakeCase, "", "")), "primary_blue");
}

TEST(CodeName, ControlCharactersCountAsBlanks) {
    const std::string name = std::string("Nul") + '\0' + "Key\tTab";
    EXPECT_EQ(codeName({}, name, taskWith(BuildNameTransform::kebabCase)), "nul-key-tab");
    EXPECT_EQ(codeName({}, name, taskWith(BuildNameTransform::snakeCase)), "nul_key_tab");
    EXPECT_EQ(codeName({}, name, taskWith(BuildNameTransform::camelCase)), "nulKeyTab");
    EXPECT_EQ(codeName({}, name, taskWith(BuildNameTransform::none, std::string("p\n"))), "p Nul Key Tab");
}

TEST(CodeName, CodeSafeNameKeepsLettersNumbersAndUnderscore) {
    EXPECT_EQ(codeSafeName("3 Blue"), "color3Blue");
    EXPECT_EQ(codeSafeName("Blue-Green"), "BlueGreen");
    EXPECT_EQ(codeSafeName("_x"), "_x");
    EXPECT_EQ(codeSafeName(""), "");
    EXPECT_EQ(codeSafeName("- 100"), "color100");
    EXPECT_EQ(codeSafeName("Grün 2"), "Grün2");
    EXPECT_EQ(codeSafeName("\xff\xfe"), "");
}

}  // namespace
}  // namespace tintwork
