#include "contrast/Tester.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "ContrastTestItems.h"
#include "contrast/TestReports.h"
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

namespace tintwork {
namespace {

// Writes down what a run hands on, one line per event.
class EventLog final : public TestRunConsumer {
public:
    explicit EventLog(bool countsFirst) : countsFirst_(countsFirst) {}
    bool wantsCountsFirst() const override { return countsFirst_; }
    void runStarted(const TestCounts& totals) override { add("run " + counts(totals)); }
    void groupStarted(const ColorTestGroupResult& group, const TestCounts& groupCounts) override {
        add("group " + group.testGroupName + " " + counts(groupCounts) + " [" + group.passSummary + "]");
    }
    void taskStarted(const std::string& name) override { add("task " + name); }
    void comparison(const TestColorComparison& result) override {
        add(std::string(result.passed ? "pass " : "fail ") + result.backgroundColorName.str());
    }
    void taskFinished() override { add("end task"); }
    void groupFinished(const ColorTestGroupResult& group, const TestCounts& groupCounts) override {
        add("end group " + counts(groupCounts) + " [" + group.passSummary + "]");
    }
    void runFinished(const TestCounts& totals) override { add("end run " + counts(totals)); }

    std::string text;

private:
    static std::string counts(const TestCounts& value) {
        return std::to_string(value.passed) + "/" + std::to_string(value.failed);
    }
    void add(const std::string& line) { text += line + "\n"; }
    bool countsFirst_;
};

TEST(TesterStream, HandsOnEachEventInResultOrder) {
    const std::string comparisons =
        "task Lc\nfail White\npass Black\npass Dark\nend task\n"
        "task Ratio\nfail White\npass Black\npass Dark\nend task\n";
    EventLog streamed(false);
    Tester(sampleProject(), std::nullopt).run(streamed);
    EXPECT_EQ(streamed.text, "run 0/0\ngroup Contrast 0/0 []\n" + comparisons +
                                 "end group 4/2 [4 passed (66%)]\n"
                                 "group Unused 0/0 []\ntask Nothing\nend task\nend group 0/0 [0 passed (0%)]\n"
                                 "end run 4/2\n");

    // Counted first, every start already carries the counts and summaries of what follows.
    EventLog counted(true);
    Tester(sampleProject(), std::nullopt).run(counted);
    EXPECT_EQ(counted.text, "run 4/2\ngroup Contrast 4/2 [4 passed (66%)]\n" + comparisons +
                                "end group 4/2 [4 passed (66%)]\n"
                                "group Unused 0/0 [0 passed (0%)]\ntask Nothing\nend task\n"
                                "end group 0/0 [0 passed (0%)]\nend run 4/2\n");
}

TEST(TesterStream, CollectedAndReplayedRecordsGiveTheSameReports) {
    // One counted run feeds the collector and both writers, so all see the same times.
    std::ostringstream json;
    std::ostringstream junit;
    TestResultCollector collector;
    JSONReportWriter jsonWriter(json);
    JUnitReportWriter junitWriter(junit);
    TestRunConsumers everyone({&collector, &jsonWriter, &junitWriter});
    Tester(sampleProject(), std::nullopt).run(everyone);

    EXPECT_EQ(json.str(), encodeResultsJSON(collector.results));
    std::ostringstream replayed;
    JUnitReportWriter replayWriter(replayed);
    replayResults(collector.results, replayWriter);
    EXPECT_EQ(junit.str(), replayed.str());

    // The records are those of the plain run, apart from the time.
    auto results = Tester(sampleProject(), std::nullopt).run();
    ASSERT_EQ(results.size(), collector.results.size());
    for (std::size_t index = 0; index < results.size(); ++index) {
        results[index].testTime = collector.results[index].testTime;
    }
    EXPECT_EQ(encodeResultsJSON(results), json.str());
}

TEST(TesterStream, JUnitReportEscapesNamesAndMessages) {
    TestColorResult failed{"Ink & \"Pen\"", "color(srgb 0 0 0)", "<Paper>", "color(srgb 0 0 0)",
                           ColorSource::dark, "dark", "Fail Lc 0.0 (min 40 required)", false};
    TestColorResult passed{"Ink", "color(srgb 0 0 0)", "Snow", "color(srgb 1 1 1)",
                           ColorSource::light, "light", "Pass with Lc 106.0", true};
    const ColorTestGroupResult group{"A&B", "Nov 22, 2026 at 10:04:24 PM", "1 passed (50%)", "1 failed (50%)", 50,
                                     {ColorTestResult{"Body\ttext", {passed, failed}}, ColorTestResult{"Empty", {}}}};
    const ColorTestGroupResult none{"None", "", "0 passed (0%)", "0 failed (0%)", 100, {}};
    std::ostringstream out;
    JUnitReportWriter writer(out);
    replayResults({group, none}, writer);
    EXPECT_EQ(out.str(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<testsuites tests=\"2\" failures=\"1\">\n"
              "  <testsuite name=\"A&amp;B\" tests=\"2\" failures=\"1\">\n"
              "    <testcase classname=\"A&amp;B.Body&#9;text\" name=\"Ink on Snow (light)\"/>\n"
              "    <testcase classname=\"A&amp;B.Body&#9;text\" name=\"Ink &amp; &quot;Pen&quot; on &lt;Paper&gt; "
              "(dark)\">\n"
              "      <failure message=\"Fail Lc 0.0 (min 40 required)\"/>\n"
              "    </testcase>\n"
              "  </testsuite>\n"
              "  <testsuite name=\"None\" tests=\"0\" failures=\"0\">\n"
              "  </testsuite>\n"
              "</testsuites>\n");
}

TEST(TesterStream, XMLAttributesHoldOnlyCharactersXMLAllows) {
    auto escaped = [](std::string_view text) {
        std::string out;
        appendXMLAttributeText(out, text);
        return out;
    };
    const std::string replacement = "\xEF\xBF\xBD";
    EXPECT_EQ(escaped("plain text 1.0"), "plain text 1.0");
    EXPECT_EQ(escaped("a&b<c>d\"e'f"), "a&amp;b&lt;c&gt;d&quot;e'f");
    EXPECT_EQ(escaped("tab\tline\ncarriage\r"), "tab&#9;line&#10;carriage&#13;");
    EXPECT_EQ(escaped(std::string("nul\0x\x01\x1F", 7)), "nul" + replacement + "x" + replacement + replacement);
    EXPECT_EQ(escaped("Caf\xC3\xA9 \xE2\x80\x94 \xF0\x9F\x8E\xA8"), "Caf\xC3\xA9 \xE2\x80\x94 \xF0\x9F\x8E\xA8");
    EXPECT_EQ(escaped("cut \xC3"), "cut " + replacement);
    EXPECT_EQ(escaped("stray \xA9 byte"), "stray " + replacement + " byte");
    EXPECT_EQ(escaped("overlong \xC0\xAF"), "overlong " + replacement + replacement);
    EXPECT_EQ(escaped("surrogate \xED\xA0\x80"), "surrogate " + replacement + replacement + replacement);
    EXPECT_EQ(escaped("not a character \xEF\xBF\xBE"), "not a character " + replacement);
    EXPECT_EQ(escaped("beyond \xF4\x90\x80\x80"), "beyond " + replacement + replacement + replacement + replacement);
    EXPECT_EQ(escaped("delete \x7F"), "delete \x7F");
}

TEST(TesterStream, ReportFileIsReplacedOnlyOnCommit) {
    const auto folder = std::filesystem::temp_directory_path() / ("report-commit-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    const auto path = folder / "report.json";
    writeFileBytes(path, "earlier");
    {
        AtomicFileStream file(path);
        file.stream() << "dropped";
    }
    EXPECT_EQ(readFileBytes(path), "earlier");
    {
        AtomicFileStream file(path);
        file.stream() << "written";
        EXPECT_EQ(readFileBytes(path), "earlier");
        file.commit();
    }
    EXPECT_EQ(readFileBytes(path), "written");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator()), 1);
    std::filesystem::remove_all(folder);
    EXPECT_THROW(AtomicFileStream(folder / "report.json"), FileError);
}

}  // namespace
}  // namespace tintwork
