#include "model/BuildConfig.h"

#include <gtest/gtest.h>

namespace tintwork {
namespace {

TEST(BuildConfig, FileTypesHaveTheirStoredNumbersAndExtensions) {
    EXPECT_EQ(BuildFileType::less, buildFileTypeFromRaw(13));
    EXPECT_EQ(BuildFileType::text, buildFileTypeFromRaw(0));
    EXPECT_EQ(std::nullopt, buildFileTypeFromRaw(14));
    EXPECT_EQ(std::nullopt, buildFileTypeFromRaw(-1));
    EXPECT_EQ(".txt", fileExtension(BuildFileType::customTemplate));
    EXPECT_EQ(".xcassets", fileExtension(BuildFileType::assetCatalog));
    EXPECT_EQ(".kt", fileExtension(BuildFileType::androidCompose));
    EXPECT_EQ(".gl", fileExtension(BuildFileType::gl));
    EXPECT_EQ(".swift", fileExtension(BuildFileType::swiftAppKitEnum));
    BuildTask task;
    task.exportFileName = "colors.v2";
    task.exportFileType = BuildFileType::scss;
    EXPECT_EQ("colors.v2.scss", task.exportFileNameWithExtension());
}

TEST(BuildConfig, WordsReadBack) {
    EXPECT_EQ(BuildNameTransform::kebabCase, buildNameTransformFromRaw(4));
    EXPECT_EQ(std::nullopt, buildNameTransformFromRaw(5));
    EXPECT_EQ(BuildExportFormat::cssOKLCH, buildExportFormatFromWord("cssOKLCH"));
    EXPECT_EQ(std::nullopt, buildExportFormatFromWord("csshex"));
    EXPECT_EQ("notSet", assetCatalogSymbolGenerationWord(AssetCatalogSymbolGeneration::notSpecified));
    EXPECT_EQ(AssetCatalogSymbolGeneration::no, assetCatalogSymbolGenerationFromWord("false"));
    EXPECT_EQ(AppearanceColorType::individualColors, appearanceColorTypeFromWord("individual"));
    EXPECT_EQ("apcaContrast", testTaskTypeWord(TestTaskType::apcaContrastTest));
    EXPECT_EQ(TestFontWeight::sixHundred, testFontWeightFromWord("600"));
    EXPECT_EQ(std::nullopt, testFontWeightFromWord("650"));
    EXPECT_EQ(700, testFontWeightValue(TestFontWeight::sevenHundred));
    EXPECT_EQ(TestPosition::background, testPositionFromWord("background"));
    EXPECT_EQ(TestThresholdType::textSize, testThresholdTypeFromWord("textSize"));
}

}  // namespace
}  // namespace tintwork
