#include "contrast/ColorTest.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ContrastTestItems.h"
#include "colour/FatalError.h"

namespace tintwork {
namespace {

using namespace tintwork::testing;

TestTask apcaTask(std::optional<long long> threshold = std::nullopt) {
    TestTask task;
    task.name = "APCA";
    task.taskType = TestTaskType::apcaContrastTest;
    task.threshold = threshold;
    return task;
}

TestTask textSizeTask(std::optional<long long> fontSize, std::optional<TestFontWeight> weight) {
    TestTask task = apcaTask();
    task.thresholdType = TestThresholdType::textSize;
    task.minFontSize = fontSize;
    task.minFontWeight = weight;
    return task;
}

TestTask wcagTask() {
    TestTask task;
    task.name = "WCAG";
    task.taskType = TestTaskType::wcagContrastTest;
    task.threshold = 90;  // not read by this test
    return task;
}

// The result of one light-only foreground over one light-only background.
TestColorResult compare(const TestTask& task, const ColorValue& foreground, const ColorValue& background) {
    const std::vector<ProjectItemPtr> items = {colourItem("fg", foreground, TestPosition::foreground),
                                               colourItem("bg", background, TestPosition::background)};
    const auto results = makeColorTest(task, items)->run();
    EXPECT_EQ(results.size(), 1u);
    return results.empty() ? TestColorResult{} : results.front();
}

std::string summary(const TestTask& task, const ColorValue& foreground, const ColorValue& background) {
    return compare(task, foreground, background).testResultSummary;
}

TEST(ColorTest, PairsForegroundsWithBackgroundsInEveryVariantButNeverAnItemWithItself) {
    const std::vector<ProjectItemPtr> items = {colourItem("A", black, TestPosition::foreground, white),
                                               colourItem("B", white, TestPosition::background, black),
                                               colourItem("C", grey(0.3), TestPosition::both, grey(0.7)),
                                               colourItem("D", grey(0.8), TestPosition::both, grey(0.2))};
    const auto results = APCAColorTest(apcaTask(), items).run();

    const std::vector<std::string> pairs = {"A/B", "A/C", "A/D", "C/B", "C/D", "D/B", "D/C"};
    ASSERT_EQ(results.size(), pairs.size() * 2);
    for (std::size_t index = 0; index < results.size(); ++index) {
        const auto& result = results[index];
        EXPECT_EQ(result.foregroundColorName.str() + "/" + result.backgroundColorName.str(), pairs[index % 7]);
        EXPECT_EQ(result.source, index < 7 ? ColorSource::light : ColorSource::dark);
        EXPECT_EQ(result.sourceCSSId, index < 7 ? "light" : "dark");
    }
}

TEST(ColorTest, ComparesOnlyVariantsBothColoursHave) {
    OchreColorNumber number;
    auto numberItem = std::make_shared<OchreColorProjectItem>("N", "N-ID", number);
    const std::vector<ProjectItemPtr> items = {
        colourItem("fg", black, TestPosition::foreground, white),
        colourItem("linear", ColorValue(ColorEncoding::extendedLinearSRGB, 0.5, 0.5, 0.5, 1), TestPosition::both),
        numberItem, colourItem("bg", grey(0.5), TestPosition::background, grey(0.2)),
        colourItem("light only", white, TestPosition::background)};
    const auto results = WCAGColorTest(wcagTask(), items).run();

    ASSERT_EQ(results.size(), 3u);
    EXPECT_EQ(results[0].backgroundColorName, "bg");
    EXPECT_EQ(results[1].backgroundColorName, "light only");
    EXPECT_EQ(results[2].source, ColorSource::dark);
    EXPECT_EQ(results[2].foregroundCSSColorString, "color(srgb 1 1 1)");
    EXPECT_EQ(results[2].backgroundCSSColorString, "color(srgb 0.2 0.2 0.2)");
}

TEST(ColorTest, TaskWithoutPairsGivesNoResults) {
    const std::vector<ProjectItemPtr> onlyForegrounds = {colourItem("A", black, TestPosition::foreground),
                                                         colourItem("B", white, TestPosition::foreground)};
    EXPECT_TRUE(APCAColorTest(apcaTask(), onlyForegrounds).run().empty());
    const std::vector<ProjectItemPtr> single = {colourItem("A", black, TestPosition::both)};
    EXPECT_TRUE(WCAGColorTest(wcagTask(), single).run().empty());
    EXPECT_TRUE(WCAGColorTest(wcagTask(), {}).run().empty());
}

// Greys on white from the reference: Lc 40.0 and 40.1 to one decimal.
TEST(APCAColorTest, LuminosityPassesOnlyAboveTheMinimum) {
    EXPECT_EQ(summary(apcaTask(), grey(0.7095), white), "Fail Lc 40.0 (min 40 required)");
    EXPECT_EQ(summary(apcaTask(), grey(0.7088), white), "Pass with Lc 40.1");
    EXPECT_EQ(summary(apcaTask(), grey(0.4), grey(0.4)), "Fail Lc 0.0 (min 40 required)");
    EXPECT_EQ(summary(apcaTask(106), black, white), "Fail Lc 106.0 (min 106 required)");
    EXPECT_EQ(summary(apcaTask(105), black, white), "Pass with Lc 106.0");
    EXPECT_EQ(summary(apcaTask(100), white, black), "Pass with Lc 107.9");  // light text: Lc is negative
    EXPECT_TRUE(compare(apcaTask(), grey(0.7088), white).passed);
    EXPECT_FALSE(compare(apcaTask(), grey(0.7095), white).passed);
}

TEST(APCAColorTest, TextSizeMessages) {
    const ColorValue lc75 = grey(0.4331);  // Lc 75.0 on white
    using enum TestFontWeight;
    EXPECT_EQ(summary(textSizeTask(18, fourHundred), lc75, white), "Pass");
    EXPECT_EQ(summary(textSizeTask(17, fourHundred), lc75, white), "Fail text size 17 at weight 400 (min size 18)");
    EXPECT_EQ(summary(textSizeTask(std::nullopt, sevenHundred), lc75, white), "Pass");
    EXPECT_EQ(summary(textSizeTask(std::nullopt, twoHundred), lc75, white),
              "Fail text size 18 at weight 200 (min size 42)");
    EXPECT_EQ(summary(textSizeTask(16, std::nullopt), lc75, white), "Fail text size 16 at weight 400 (min size 18)");
    // Lc 17.4: non-text only (777); Lc 9.6: nothing at all (999). Neither names a size.
    EXPECT_EQ(summary(textSizeTask(18, fourHundred), byte(38, 47, 44), byte(88, 103, 30)),
              "Fail text size 18 at weight 400");
    EXPECT_EQ(summary(textSizeTask(96, sevenHundred), byte(0, 0, 64), byte(0, 64, 128)),
              "Fail text size 96 at weight 700");
    EXPECT_TRUE(compare(textSizeTask(18, fourHundred), lc75, white).passed);
}

TEST(APCAColorTest, LcBeyondTheFontTableIsFatal) {
    const std::vector<ProjectItemPtr> items = {colourItem("fg", ColorValue::sRGB(6, 6, 6), TestPosition::foreground),
                                               colourItem("bg", black, TestPosition::background)};
    EXPECT_THROW(APCAColorTest(textSizeTask(18, TestFontWeight::fourHundred), items).run(), FatalError);
}

TEST(ColorTest, FlattensTranslucentForegroundButPrintsItsAlpha) {
    const auto apca = compare(apcaTask(), grey(0, 0.5), white);
    EXPECT_EQ(apca.foregroundCSSColorString, "color(srgb 0 0 0 / 0.5)");
    EXPECT_EQ(apca.testResultSummary, "Pass with Lc 67.1");  // reference 67.133, mixed grey 0.5
    EXPECT_EQ(summary(wcagTask(), grey(0, 0.5), white), "Pass with 4:1");  // 3.977 for grey 0.5
    EXPECT_EQ(summary(wcagTask(), grey(0.5), white), "Pass with 4:1");
}

TEST(ColorTest, ComparesDisplayP3Colours) {
    const ColorValue red(ColorEncoding::displayP3, 1, 0, 0, 1);
    const auto result = compare(apcaTask(), red, ColorValue(ColorEncoding::displayP3, 1, 1, 1, 1));
    EXPECT_EQ(result.foregroundCSSColorString, "color(display-p3 1 0 0)");
    EXPECT_EQ(result.testResultSummary, "Pass with Lc 62.1");  // reference 62.097
}

TEST(WCAGColorTest, FailsOnlyBelowThreeWhateverTheThreshold) {
    EXPECT_EQ(summary(wcagTask(), black, white), "Pass with 21:1");
    EXPECT_EQ(summary(wcagTask(), byte(0x94, 0x94, 0x94), white), "Pass with 3:1");
    EXPECT_EQ(summary(wcagTask(), byte(0xaa, 0xaa, 0xaa), white), "Fail with 2.3:1 (min 3.0 required)");
    EXPECT_EQ(summary(wcagTask(), byte(0x76, 0x76, 0x76), white), "Pass with 4.5:1");
    EXPECT_FALSE(compare(wcagTask(), byte(0xaa, 0xaa, 0xaa), white).passed);
    // A ratio of 2.999 prints as 3 but fails.
    EXPECT_EQ(wcagMessage(3.0, false), "Fail with 3:1 (min 3.0 required)");
}

}  // namespace
}  // namespace tintwork
