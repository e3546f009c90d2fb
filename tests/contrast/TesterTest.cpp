#include "contrast/Tester.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "ContrastTestItems.h"
#include "model/FileIO.h"

namespace tintwork {
namespace {

using namespace tintwork::testing;

TestGroupPtr testGroup(const std::string& name, std::vector<TestTask> tasks) {
    auto group = std::make_shared<TestGroup>();
    group->uuid = name + "-ID";
    group->name = name;
    group->tests = std::move(tasks);
    return group;
}

TestTask task(const std::string& name, TestTaskType type) {
    TestTask result;
    result.name = name;
    result.taskType = type;
    return result;
}

ProjectItemPtr attached(ProjectItemPtr item, const TestGroupPtr& group) {
    item->testGroup = group;
    return item;
}

// One group with an APCA and a WCAG task over one foreground and three backgrounds (one
// of them inside a folder), a group without tasks, and a group whose task has no items.
std::shared_ptr<OchreColorProject> sampleProject() {
    auto project = std::make_shared<OchreColorProject>();
    auto contrast = testGroup("Contrast", {task("Lc", TestTaskType::apcaContrastTest),
                                           task("Ratio", TestTaskType::wcagContrastTest)});
    auto empty = testGroup("No tasks", {});
    auto unused = testGroup("Unused", {task("Nothing", TestTaskType::apcaContrastTest)});
    project->testGroups = {contrast, empty, unused};

    OchreColorGroup folder;
    folder.items = {attached(colourItem("Black", black, TestPosition::background), contrast),
                    colourItem("Loose", grey(0.2), TestPosition::background)};
    project->items = {attached(colourItem("Text", grey(0.7095), TestPosition::foreground), contrast),
                      attached(colourItem("White", white, TestPosition::background), contrast),
                      std::make_shared<OchreColorProjectItem>("Folder", "Folder-ID", folder),
                      attached(colourItem("Elsewhere", grey(0.1), TestPosition::background), empty),
                      attached(colourItem("Dark", grey(0.1), TestPosition::background), contrast)};
    return project;
}

TEST(Tester, RunsGroupsWithTasksInOrder) {
    const auto results = Tester(sampleProject(), std::nullopt).run();

    ASSERT_EQ(results.size(), 2u);
    const auto& contrast = results[0];
    EXPECT_EQ(contrast.testGroupName, "Contrast");
    EXPECT_FALSE(contrast.testTime.empty());
    ASSERT_EQ(contrast.tests.size(), 2u);
    EXPECT_EQ(contrast.tests[0].testSummaryName, "Lc");
    EXPECT_EQ(contrast.tests[1].testSummaryName, "Ratio");
    // The text fails on white (Lc 40.0, ratio 2.1) and passes on black and dark grey.
    ASSERT_EQ(contrast.tests[0].testColors.size(), 3u);
    EXPECT_EQ(contrast.tests[0].testColors[0].backgroundColorName, "White");
    EXPECT_EQ(contrast.tests[0].testColors[1].backgroundColorName, "Black");
    EXPECT_FALSE(contrast.tests[0].testColors[0].passed);
    EXPECT_EQ(contrast.passSummary, "4 passed (66%)");
    EXPECT_EQ(contrast.failSummary, "2 failed (33%)");
    EXPECT_EQ(contrast.resultPassPercent, 66);

    const auto& unused = results[1];
    EXPECT_EQ(unused.testGroupName, "Unused");
    ASSERT_EQ(unused.tests.size(), 1u);
    EXPECT_EQ(unused.tests[0].testSummaryName, "Nothing");
    EXPECT_TRUE(unused.tests[0].testColors.empty());
    EXPECT_EQ(unused.passSummary, "0 passed (0%)");
    EXPECT_EQ(unused.failSummary, "0 failed (0%)");
    EXPECT_EQ(unused.resultPassPercent, 100);
}

TEST(Tester, FindsAttachedItemsInsideFolders) {
    const auto project = sampleProject();
    std::vector<std::string> names;
    for (const auto& item : itemsForTestGroup(*project, *project->testGroups[0])) {
        names.push_back(item->name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Text", "White", "Black", "Dark"}));
}

TEST(Tester, SummariesTruncatePercentages) {
    auto summaryOf = [](long long passed, long long failed) {
        ColorTestGroupResult result;
        summarise(result, passed, failed);
        return result.passSummary + " / " + result.failSummary + " / " + std::to_string(result.resultPassPercent);
    };
    EXPECT_EQ(summaryOf(2, 1), "2 passed (66%) / 1 failed (33%) / 66");
    EXPECT_EQ(summaryOf(1, 2), "1 passed (33%) / 2 failed (66%) / 33");
    EXPECT_EQ(summaryOf(1, 6), "1 passed (14%) / 6 failed (85%) / 14");
    EXPECT_EQ(summaryOf(199, 1), "199 passed (99%) / 1 failed (0%) / 99");
    EXPECT_EQ(summaryOf(3, 0), "3 passed (100%) / 0 failed (0%) / 100");
    EXPECT_EQ(summaryOf(0, 0), "0 passed (0%) / 0 failed (0%) / 100");
}

TEST(Tester, EncodesResultsWithFieldNamesInOrder) {
    TestColorResult comparison{"Say \"hi\"", "color(srgb 0 0 0)", "Café", "color(srgb 1 1 1)",
                               ColorSource::darkHighContrast, "dark-high-contrast", "Pass with Lc 106.0", true};
    ColorTestGroupResult group{"Group", "Nov 22, 2026 at 10:04:24 PM", "1 passed (100%)", "0 failed (0%)", 100,
                               {ColorTestResult{"Task", {comparison}}, ColorTestResult{"Empty", {}}}};
    const auto json = nlohmann::ordered_json::parse(encodeResultsJSON({group}));

    auto keys = [](const nlohmann::ordered_json& object) {
        std::vector<std::string> names;
        for (const auto& entry : object.items()) {
            names.push_back(entry.key());
        }
        return names;
    };
    ASSERT_EQ(json.size(), 1u);
    EXPECT_EQ(keys(json[0]), (std::vector<std::string>{"testGroupName", "testTime", "passSummary", "failSummary",
                                                       "resultPassPercent", "tests"}));
    EXPECT_EQ(keys(json[0]["tests"][0]), (std::vector<std::string>{"testSummaryName", "testColors"}));
    const auto& colour = json[0]["tests"][0]["testColors"][0];
    EXPECT_EQ(keys(colour), (std::vector<std::string>{"foregroundColorName", "foregroundCSSColorString",
                                                      "backgroundColorName", "backgroundCSSColorString", "source",
                                                      "sourceCSSId", "testResultSummary", "passed"}));
    EXPECT_EQ(colour["foregroundColorName"], "Say \"hi\"");
    EXPECT_EQ(colour["backgroundColorName"], "Café");
    EXPECT_EQ(colour["source"], "darkHighContrast");
    EXPECT_EQ(colour["passed"], true);
    EXPECT_EQ(json[0]["resultPassPercent"], 100);
    EXPECT_TRUE(json[0]["tests"][1]["testColors"].empty());
    EXPECT_EQ(nlohmann::json::parse(encodeResultsJSON({})), nlohmann::json::array());
}

TEST(Tester, WritesTheReportWhenAsked) {
    const auto path = std::filesystem::temp_directory_path() / ("contrast-report-" + std::to_string(getpid()) + ".json");
    const auto results = Tester(sampleProject(), path).run();
    std::ifstream in(path);
    std::stringstream written;
    written << in.rdbuf();
    EXPECT_EQ(written.str(), encodeResultsJSON(results));
    std::filesystem::remove(path);

    EXPECT_THROW(Tester(sampleProject(), "/nonexistent-folder/report.json").run(), FileError);
}

}  // namespace
}  // namespace tintwork
