#include "model/BuildConfig.h"

#include <array>
#include <utility>

namespace tintwork {

namespace {

// Looks a value up in a table of (value, word) pairs in either direction.
template <typename Enum, std::size_t N>
std::string_view wordFor(const std::array<std::pair<Enum, std::string_view>, N>& table, Enum value) {
    for (const auto& [entry, word] : table) {
        if (entry == value) {
            return word;
        }
    }
    return {};
}

template <typename Enum, std::size_t N>
std::optional<Enum> valueFor(const std::array<std::pair<Enum, std::string_view>, N>& table, std::string_view word) {
    for (const auto& [entry, text] : table) {
        if (text == word) {
            return entry;
        }
    }
    return std::nullopt;
}

constexpr std::array<std::string_view, buildFileTypeCount> fileExtensions = {
    ".txt", ".css", ".scss",  ".xcassets", ".swift", ".swift", ".swift",
    ".xml", ".gl",  ".metal", ".json",     ".kt",    ".txt",   ".less",
};

constexpr std::array<std::pair<BuildExportFormat, std::string_view>, 4> exportFormatWords = {{
    {BuildExportFormat::cssHex, "cssHex"},
    {BuildExportFormat::cssRGBA, "cssRGBA"},
    {BuildExportFormat::cssColor, "cssColor"},
    {BuildExportFormat::cssOKLCH, "cssOKLCH"},
}};

constexpr std::array<std::pair<AssetCatalogSymbolGeneration, std::string_view>, 3> symbolGenerationWords = {{
    {AssetCatalogSymbolGeneration::notSpecified, "notSet"},
    {AssetCatalogSymbolGeneration::yes, "true"},
    {AssetCatalogSymbolGeneration::no, "false"},
}};

constexpr std::array<std::pair<AppearanceColorType, std::string_view>, 2> appearanceColorTypeWords = {{
    {AppearanceColorType::individualColors, "individual"},
    {AppearanceColorType::lightDark, "lightDark"},
}};

constexpr std::array<std::pair<TestTaskType, std::string_view>, 2> testTaskTypeWords = {{
    {TestTaskType::apcaContrastTest, "apcaContrast"},
    {TestTaskType::wcagContrastTest, "wcagContrast"},
}};

constexpr std::array<std::pair<TestThresholdType, std::string_view>, 2> thresholdTypeWords = {{
    {TestThresholdType::luminosity, "luminosity"},
    {TestThresholdType::textSize, "textSize"},
}};

constexpr std::array<std::pair<TestFontWeight, std::string_view>, 6> fontWeightWords = {{
    {TestFontWeight::twoHundred, "200"},
    {TestFontWeight::threeHundred, "300"},
    {TestFontWeight::fourHundred, "400"},
    {TestFontWeight::fiveHundred, "500"},
    {TestFontWeight::sixHundred, "600"},
    {TestFontWeight::sevenHundred, "700"},
}};

constexpr std::array<std::pair<TestPosition, std::string_view>, 3> testPositionWords = {{
    {TestPosition::foreground, "foreground"},
    {TestPosition::background, "background"},
    {TestPosition::both, "both"},
}};

}  // namespace

std::string_view fileExtension(BuildFileType type) {
    const auto index = static_cast<std::size_t>(type);
    return index < fileExtensions.size() ? fileExtensions[index] : std::string_view(".txt");
}

std::optional<BuildFileType> buildFileTypeFromRaw(long long raw) {
    if (raw < 0 || raw >= buildFileTypeCount) {
        return std::nullopt;
    }
    return static_cast<BuildFileType>(raw);
}

std::optional<BuildNameTransform> buildNameTransformFromRaw(long long raw) {
    if (raw < 0 || raw > static_cast<long long>(BuildNameTransform::kebabCase)) {
        return std::nullopt;
    }
    return static_cast<BuildNameTransform>(raw);
}

std::string_view buildExportFormatWord(BuildExportFormat format) {
    return wordFor(exportFormatWords, format);
}

std::optional<BuildExportFormat> buildExportFormatFromWord(std::string_view word) {
    return valueFor(exportFormatWords, word);
}

std::string_view assetCatalogSymbolGenerationWord(AssetCatalogSymbolGeneration value) {
    return wordFor(symbolGenerationWords, value);
}

std::optional<AssetCatalogSymbolGeneration> assetCatalogSymbolGenerationFromWord(std::string_view word) {
    return valueFor(symbolGenerationWords, word);
}

std::string_view appearanceColorTypeWord(AppearanceColorType value) {
    return wordFor(appearanceColorTypeWords, value);
}

std::optional<AppearanceColorType> appearanceColorTypeFromWord(std::string_view word) {
    return valueFor(appearanceColorTypeWords, word);
}

std::string BuildTask::exportFileNameWithExtension() const {
    return exportFileName + std::string(fileExtension(exportFileType));
}

std::string_view testTaskTypeWord(TestTaskType value) {
    return wordFor(testTaskTypeWords, value);
}

std::optional<TestTaskType> testTaskTypeFromWord(std::string_view word) {
    return valueFor(testTaskTypeWords, word);
}

std::string_view testThresholdTypeWord(TestThresholdType value) {
    return wordFor(thresholdTypeWords, value);
}

std::optional<TestThresholdType> testThresholdTypeFromWord(std::string_view word) {
    return valueFor(thresholdTypeWords, word);
}

std::string_view testFontWeightWord(TestFontWeight value) {
    return wordFor(fontWeightWords, value);
}

std::optional<TestFontWeight> testFontWeightFromWord(std::string_view word) {
    return valueFor(fontWeightWords, word);
}

int testFontWeightValue(TestFontWeight value) {
    return 200 + 100 * static_cast<int>(value);
}

std::string_view testPositionWord(TestPosition value) {
    return wordFor(testPositionWords, value);
}

std::optional<TestPosition> testPositionFromWord(std::string_view word) {
    return valueFor(testPositionWords, word);
}

}  // namespace tintwork
