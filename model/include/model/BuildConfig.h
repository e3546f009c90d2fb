#pragma once
// What a document exports (build groups and tasks) and checks (test groups and tasks).

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tintwork {

// Output kind of a build task; the raw integer is stored in a document.
enum class BuildFileType {
    text = 0,
    css = 1,
    scss = 2,
    assetCatalog = 3,
    swiftUIEnum = 4,
    swiftUIKitEnum = 5,
    swiftAppKitEnum = 6,
    androidResource = 7,
    gl = 8,
    metal = 9,
    jsonDesignToken = 10,
    androidCompose = 11,
    customTemplate = 12,
    less = 13,
};
inline constexpr int buildFileTypeCount = 14;
// ".txt", ".css", ... for a file type.
std::string_view fileExtension(BuildFileType type);
// The type for a stored raw integer; nullopt when out of range.
std::optional<BuildFileType> buildFileTypeFromRaw(long long raw);

// How item names become code names; raw integers 0 to 4 in a document.
enum class BuildNameTransform { none = 0, camelCase = 1, pascalCase = 2, snakeCase = 3, kebabCase = 4 };
std::optional<BuildNameTransform> buildNameTransformFromRaw(long long raw);

// Colour notation of CSS-family outputs; words "cssHex", "cssRGBA", "cssColor", "cssOKLCH".
enum class BuildExportFormat { cssHex, cssRGBA, cssColor, cssOKLCH };
std::string_view buildExportFormatWord(BuildExportFormat format);
std::optional<BuildExportFormat> buildExportFormatFromWord(std::string_view word);

// customData "assetCatalogSymbols": words "notSet", "true", "false".
enum class AssetCatalogSymbolGeneration { notSpecified, yes, no };
std::string_view assetCatalogSymbolGenerationWord(AssetCatalogSymbolGeneration value);
std::optional<AssetCatalogSymbolGeneration> assetCatalogSymbolGenerationFromWord(std::string_view word);

// customData "appearanceColorType": words "individual", "lightDark".
enum class AppearanceColorType { individualColors, lightDark };
std::string_view appearanceColorTypeWord(AppearanceColorType value);
std::optional<AppearanceColorType> appearanceColorTypeFromWord(std::string_view word);

// Keys of BuildTask::customData.
inline constexpr std::string_view customDataAssetCatalogSymbols = "assetCatalogSymbols";
inline constexpr std::string_view customDataAppearanceColorType = "appearanceColorType";
inline constexpr std::string_view customDataCustomTemplateLocation = "customTemplateLocation";

struct BuildTask {
    std::string name;
    BuildNameTransform nameTransform = BuildNameTransform::none;
    std::string exportFileFolder;
    std::string exportFileName;
    BuildFileType exportFileType = BuildFileType::css;
    std::optional<BuildExportFormat> exportFormat;
    std::optional<std::string> namePrefix;
    std::optional<std::string> nameSuffix;
    std::map<std::string, std::string> customData;
    std::string uuid;

    // exportFileName followed by the extension of exportFileType.
    std::string exportFileNameWithExtension() const;
};

struct BuildGroup {
    std::string uuid;
    std::string name;
    std::vector<BuildTask> tasks;
    bool isExpanded = false;
};

// Kind of contrast test; words "apcaContrast", "wcagContrast".
enum class TestTaskType { apcaContrastTest, wcagContrastTest };
std::string_view testTaskTypeWord(TestTaskType value);
std::optional<TestTaskType> testTaskTypeFromWord(std::string_view word);

// Words "luminosity", "textSize".
enum class TestThresholdType { luminosity, textSize };
std::string_view testThresholdTypeWord(TestThresholdType value);
std::optional<TestThresholdType> testThresholdTypeFromWord(std::string_view word);

// Words "200" to "700".
enum class TestFontWeight { twoHundred, threeHundred, fourHundred, fiveHundred, sixHundred, sevenHundred };
std::string_view testFontWeightWord(TestFontWeight value);
std::optional<TestFontWeight> testFontWeightFromWord(std::string_view word);
// 200, 300, ... 700.
int testFontWeightValue(TestFontWeight value);

// Where an item takes part in contrast tests; words "foreground", "background", "both".
enum class TestPosition { foreground, background, both };
std::string_view testPositionWord(TestPosition value);
std::optional<TestPosition> testPositionFromWord(std::string_view word);

struct TestTask {
    std::string name;
    TestTaskType taskType = TestTaskType::apcaContrastTest;
    std::string uuid;
    std::optional<long long> threshold;
    std::optional<long long> minFontSize;
    std::optional<TestFontWeight> minFontWeight;
    std::optional<TestThresholdType> thresholdType;
};

struct TestGroup {
    std::string uuid;
    std::string name;
    std::vector<TestTask> tests;
    bool isExpanded = false;
};

struct DocumentSetting {
    std::string key;
    std::string value;
};

using BuildGroupPtr = std::shared_ptr<BuildGroup>;
using TestGroupPtr = std::shared_ptr<TestGroup>;

}  // namespace tintwork
