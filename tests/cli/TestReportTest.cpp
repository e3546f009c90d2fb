// tintwork test: failure lines, the JSON and JUnit reports, and the memory of large runs.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "RunTool.h"
#include "TestDocuments.h"

using namespace tintwork::testing;
namespace fs = std::filesystem;

namespace {

const fs::path sourceDir = TINTWORK_SOURCE_DIR;

// What `tintwork test examples/Contrast.tintwork --failures` prints; README.md shows it.
const char* const contrastFailures =
    "Test Text on Paper\n"
    "--------------------------------\n"
    "21 passed (58%)\n"
    "15 failed (41%)\n"
    "  Body text: Placeholder on Paper (light): Fail Lc 25.0 (min 60 required)\n"
    "  Body text: Placeholder on Paper (light-high-contrast): Fail Lc 51.0 (min 60 required)\n"
    "  Body text: Muted on Paper (dark): Fail Lc 31.4 (min 60 required)\n"
    "  Body text: Placeholder on Paper (dark): Fail Lc 0.0 (min 60 required)\n"
    "  Body text: Placeholder on Paper (dark-high-contrast): Fail Lc 18.1 (min 60 required)\n"
    "  Captions: Muted on Paper (light): Fail text size 16 at weight 400 (min size 24)\n"
    "  Captions: Placeholder on Paper (light): Fail text size 16 at weight 400\n"
    "  Captions: Placeholder on Paper (light-high-contrast): Fail text size 16 at weight 400 (min size 31)\n"
    "  Captions: Muted on Paper (dark): Fail text size 16 at weight 400 (min size 105)\n"
    "  Captions: Placeholder on Paper (dark): Fail text size 16 at weight 400\n"
    "  Captions: Muted on Paper (dark-high-contrast): Fail text size 16 at weight 400 (min size 20)\n"
    "  Captions: Placeholder on Paper (dark-high-contrast): Fail text size 16 at weight 400\n"
    "  WCAG AA: Placeholder on Paper (light): Fail with 1.5:1 (min 3.0 required)\n"
    "  WCAG AA: Placeholder on Paper (light-high-contrast): Fail with 2.6:1 (min 3.0 required)\n"
    "  WCAG AA: Placeholder on Paper (dark): Fail with 1.4:1 (min 3.0 required)\n"
    "Test Buttons\n"
    "--------------------------------\n"
    "4 passed (100%)\n"
    "0 failed (0%)\n"
    "Testing complete: 1 test groups passed, 1 test groups failed\n";

// A copy of an example document in a fresh folder.
fs::path copyExample(const TemporaryFolder& folder, const std::string& name) {
    const fs::path target = folder.path() / name;
    fs::copy_file(sourceDir / "examples" / name, target);
    return target;
}

std::size_t occurrences(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
        ++count;
    }
    return count;
}

std::vector<std::string> keysOf(const nlohmann::ordered_json& object) {
    std::vector<std::string> keys;
    for (const auto& entry : object.items()) {
        keys.push_back(entry.key());
    }
    return keys;
}

// The form of a message with its numbers taken out: "Fail Lc # (min # required)".
std::string messageForm(const std::string& message) {
    std::string form;
    for (std::size_t index = 0; index < message.size(); ++index) {
        const char character = message[index];
        if (std::isdigit(static_cast<unsigned char>(character))) {
            while (index + 1 < message.size() &&
                   (std::isdigit(static_cast<unsigned char>(message[index + 1])) || message[index + 1] == '.')) {
                ++index;
            }
            form += '#';
        } else {
            form += character;
        }
    }
    return form;
}

}  // namespace

TEST(TestCommand, ListsFailedComparisonsUnderTheirGroup) {
    TemporaryFolder folder;
    copyExample(folder, "Contrast.tintwork");
    ToolRun run = runTintwork({"test", "Contrast.tintwork", "--failures"}, folder.path());
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, contrastFailures);
    EXPECT_EQ(run.err, "");

    // The README shows this output, so it must not go stale.
    EXPECT_NE(readText(sourceDir / "README.md").find(contrastFailures), std::string::npos)
        << "README.md no longer shows what `tintwork test examples/Contrast.tintwork --failures` prints";
}

TEST(TestCommand, ReportsChangeNothingPrinted) {
    TemporaryFolder folder;
    copyExample(folder, "Contrast.tintwork");
    copyExample(folder, "Colors.tintwork");
    writeText(folder.path() / "three.tintwork", failingTestDocument(3));
    writeText(folder.path() / "none.tintwork", failingTestDocument(0));
    for (const char* document : {"Contrast.tintwork", "Colors.tintwork", "three.tintwork", "none.tintwork"}) {
        SCOPED_TRACE(document);
        const ToolRun plain = runTool({"-t", document}, folder.path());
        for (const std::vector<std::string>& extra :
             {std::vector<std::string>{}, {"--report", "r.json"}, {"--junit", "r.xml"},
              {"--junit", "both.xml", "--report", "both.json"}}) {
            std::vector<std::string> args{"test", document};
            args.insert(args.end(), extra.begin(), extra.end());
            const ToolRun run = runTintwork(args, folder.path());
            EXPECT_EQ(run.out, plain.out) << ::testing::PrintToString(extra);
            EXPECT_EQ(run.status, plain.status);
            EXPECT_EQ(run.err, "");
        }
        EXPECT_TRUE(fs::exists(folder.path() / "both.json") && fs::exists(folder.path() / "both.xml"));
    }
}

TEST(TestCommand, JSONReportHoldsTheRecordsInFieldOrder) {
    TemporaryFolder folder;
    copyExample(folder, "Contrast.tintwork");
    const ToolRun run = runTintwork({"test", "Contrast.tintwork", "--failures", "--report", "report.json"},
                                    folder.path());
    ASSERT_EQ(run.status, 1) << run.out;
    const std::string text = readText(folder.path() / "report.json");
    const auto report = nlohmann::ordered_json::parse(text);

    ASSERT_EQ(report.size(), 2u);
    const auto& group = report[0];
    EXPECT_EQ(keysOf(group), (std::vector<std::string>{"testGroupName", "testTime", "passSummary", "failSummary",
                                                       "resultPassPercent", "tests"}));
    EXPECT_EQ(group["testGroupName"], "Text on Paper");
    EXPECT_EQ(group["passSummary"], "21 passed (58%)");
    EXPECT_EQ(group["failSummary"], "15 failed (41%)");
    EXPECT_EQ(group["resultPassPercent"], 58);
    EXPECT_EQ(report[1]["resultPassPercent"], 100);
    ASSERT_EQ(group["tests"].size(), 3u);
    EXPECT_EQ(keysOf(group["tests"][0]), (std::vector<std::string>{"testSummaryName", "testColors"}));
    EXPECT_EQ(keysOf(group["tests"][0]["testColors"][0]),
              (std::vector<std::string>{"foregroundColorName", "foregroundCSSColorString", "backgroundColorName",
                                        "backgroundCSSColorString", "source", "sourceCSSId", "testResultSummary",
                                        "passed"}));
    // Pretty-printed, two spaces a level.
    EXPECT_EQ(text.rfind("[\n  {\n    \"testGroupName\": \"Text on Paper\",\n", 0), 0u);

    // Every comparison is there: three foregrounds on one background in four variants,
    // and its failed ones are exactly the printed failure lines, in the same order.
    std::string failureLines;
    std::set<std::string> forms;
    std::set<std::string> sources;
    for (const auto& task : group["tests"]) {
        EXPECT_EQ(task["testColors"].size(), 12u) << task["testSummaryName"];
        for (const auto& comparison : task["testColors"]) {
            const std::string summary = comparison["testResultSummary"];
            forms.insert(messageForm(summary));
            sources.insert(comparison["source"].get<std::string>() + "/" + comparison["sourceCSSId"].get<std::string>());
            EXPECT_EQ(comparison["passed"], summary.rfind("Pass", 0) == 0) << summary;
            if (!comparison["passed"]) {
                failureLines += "  " + task["testSummaryName"].get<std::string>() + ": " +
                                comparison["foregroundColorName"].get<std::string>() + " on " +
                                comparison["backgroundColorName"].get<std::string>() + " (" +
                                comparison["sourceCSSId"].get<std::string>() + "): " + summary + "\n";
            }
        }
    }
    EXPECT_NE(run.out.find("15 failed (41%)\n" + failureLines + "Test Buttons\n"), std::string::npos) << failureLines;
    EXPECT_EQ(forms, (std::set<std::string>{"Pass with Lc #", "Fail Lc # (min # required)", "Pass",
                                            "Fail text size # at weight #", "Fail text size # at weight # (min size #)",
                                            "Pass with #:#", "Fail with #:# (min # required)"}));
    EXPECT_EQ(sources, (std::set<std::string>{"light/light", "lightHighContrast/light-high-contrast",
                                              "dark/dark", "darkHighContrast/dark-high-contrast"}));

    // The numbers of the passing forms.
    const auto& ink = group["tests"][0]["testColors"][0];
    EXPECT_EQ(ink["foregroundColorName"], "Ink");
    EXPECT_EQ(ink["foregroundCSSColorString"], "color(srgb 0.102 0.102 0.102)");
    EXPECT_EQ(ink["backgroundCSSColorString"], "color(srgb 1 1 1)");
    EXPECT_EQ(ink["testResultSummary"], "Pass with Lc 104.3");
    EXPECT_EQ(group["tests"][1]["testColors"][0]["testResultSummary"], "Pass");
    EXPECT_EQ(group["tests"][2]["testColors"][0]["testResultSummary"], "Pass with 17.4:1");
    EXPECT_EQ(group["tests"][2]["testColors"][3]["testResultSummary"], "Pass with 21:1");
}

TEST(TestCommand, JUnitReportCountsEveryComparison) {
    TemporaryFolder folder;
    copyExample(folder, "Contrast.tintwork");
    ASSERT_EQ(runTintwork({"test", "Contrast.tintwork", "--junit", "junit.xml"}, folder.path()).status, 1);
    const std::string xml = readText(folder.path() / "junit.xml");
    EXPECT_EQ(xml.rfind("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites tests=\"40\" failures=\"15\">\n"
                        "  <testsuite name=\"Text on Paper\" tests=\"36\" failures=\"15\">\n"
                        "    <testcase classname=\"Text on Paper.Body text\" name=\"Ink on Paper (light)\"/>\n",
                        0),
              0u)
        << xml.substr(0, 400);
    EXPECT_NE(xml.find("    <testcase classname=\"Text on Paper.Captions\" name=\"Placeholder on Paper (dark)\">\n"
                       "      <failure message=\"Fail text size 16 at weight 400\"/>\n    </testcase>\n"),
              std::string::npos);
    EXPECT_NE(xml.find("  <testsuite name=\"Buttons\" tests=\"4\" failures=\"0\">\n"), std::string::npos);
    EXPECT_EQ(occurrences(xml, "<testcase "), 40u);
    EXPECT_EQ(occurrences(xml, "<failure "), 15u);
    EXPECT_TRUE(xml.ends_with("name=\"Label on Brand (dark-high-contrast)\"/>\n  </testsuite>\n</testsuites>\n"))
        << xml.substr(xml.size() - 100);
}

TEST(TestCommand, JUnitReportIsValidJUnitXML) {
    if (runProgram("/bin/sh", {"-c", "command -v xmllint"}).status != 0) {
        GTEST_SKIP() << "xmllint is not installed (Debian package libxml2-utils)";
    }
    const fs::path schema = sourceDir / "tests" / "cli" / "junit.xsd";
    TemporaryFolder folder;
    copyExample(folder, "Contrast.tintwork");
    // Names with markup characters, a line break and a byte that is no UTF-8.
    auto item = [](const std::string& name, const std::string& rgba, const std::string& position) {
        return "<colorItem><id>" + name.substr(0, 1) + "</id><name>" + name +
               "</name><profile>sRGB</profile><color><name>x</name><variants><variant><rgba>" + rgba +
               "</rgba></variant></variants></color><testGroupId>G</testGroupId><testPosition>" + position +
               "</testPosition></colorItem>\n";
    };
    writeText(folder.path() / "odd.tintwork",
              std::string(header) + "<colorItems>\n" + item("A &amp; \"B\" &lt;C&gt;", "0.5 0.5 0.5 1", "foreground") +
                  item("Line&#10;break \xff", "0.55 0.55 0.55 1", "background") +
                  "</colorItems>\n<testGroups><testGroup><id>G</id><name>&lt;Odd&gt; &amp; 'quoted'</name><tests>"
                  "<test><name>T \"1\"</name><id>T</id><type>wcagContrast</type></test></tests></testGroup>"
                  "</testGroups>\n</project>\n</tintwork>\n");
    writeText(folder.path() / "empty.tintwork", failingTestDocument(0));
    for (const char* document : {"Contrast.tintwork", "odd.tintwork", "empty.tintwork"}) {
        SCOPED_TRACE(document);
        runTintwork({"test", document, "--junit", "junit.xml"}, folder.path());
        const ToolRun lint = runProgram("/bin/sh", {"-c", "xmllint --noout --schema \"$0\" junit.xml", schema.string()},
                                        folder.path());
        EXPECT_EQ(lint.status, 0) << lint.err << readText(folder.path() / "junit.xml");
    }
    EXPECT_NE(readText(folder.path() / "junit.xml").find("<testsuites tests=\"0\" failures=\"0\">"),
              std::string::npos);

    // The schema does reject what is not a JUnit report.
    writeText(folder.path() / "broken.xml", "<testsuites><testsuite tests=\"1\"><testcase/></testsuite></testsuites>");
    EXPECT_NE(runProgram("/bin/sh", {"-c", "xmllint --noout --schema \"$0\" broken.xml", schema.string()},
                         folder.path())
                  .status,
              0);
}

TEST(TestCommand, ReportsThatCannotBeWrittenEndTheRunWithAnError) {
    TemporaryFolder folder;
    copyExample(folder, "Contrast.tintwork");
    ToolRun run = runTintwork({"test", "Contrast.tintwork", "--report", "nowhere/r.json"}, folder.path());
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out,
              "Error testing The file \u201cr.json\u201d couldn\u2019t be saved in the folder \u201cnowhere\u201d.\n");
    EXPECT_EQ(run.err, "");

    // A document that can't be read leaves earlier reports as they were.
    writeText(folder.path() / "r.json", "earlier");
    writeText(folder.path() / "r.xml", "earlier");
    run = runTintwork({"test", "missing.tintwork", "--report", "r.json", "--junit", "r.xml"}, folder.path());
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out,
              "Error testing The file \u201cmissing.tintwork\u201d couldn\u2019t be opened because there is no such "
              "file.\n");
    EXPECT_EQ(readText(folder.path() / "r.json"), "earlier");
    EXPECT_EQ(readText(folder.path() / "r.xml"), "earlier");
    for (const auto& entry : fs::directory_iterator(folder.path())) {
        EXPECT_EQ(entry.path().filename().string().find(".tmp"), std::string::npos) << entry.path();
    }
}

TEST(TestCommand, TenThousandColoursInOneGroupRunInBoundedMemory) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "AddressSanitizer maps far more memory than the limit this test sets";
#endif
    // 5,000 text colours on 5,000 backgrounds: 25 million comparisons. Holding a record
    // of each would take gigabytes; counting them takes next to nothing.
    std::ostringstream items;
    for (int index = 0; index < 5000; ++index) {
        const std::string link = "<testGroupId>G</testGroupId><testPosition>";
        items << colorItem("T" + std::to_string(index), "0 0 0 1", link + "foreground</testPosition>");
        items << colorItem("B" + std::to_string(index), "1 1 1 1", link + "background</testPosition>");
    }
    TemporaryFolder folder;
    writeText(folder.path() / "big.tintwork",
              std::string(header) + "<colorItems>\n" + items.str() +
                  "</colorItems>\n<testGroups><testGroup><id>G</id><name>Big</name><tests><test><name>Body</name>"
                  "<id>X</id><type>apcaContrast</type></test></tests></testGroup></testGroups>\n</project>\n"
                  "</tintwork>\n");
    const unsigned long long limit = 1ULL << 30;
    const ToolRun run = runProgram(TINTWORK_EXECUTABLE, {"-t", "big.tintwork"}, folder.path(), limit);
    EXPECT_EQ(run.status, 0) << run.out << run.err;
    EXPECT_EQ(run.out,
              "Test Big\n--------------------------------\n25000000 passed (100%)\n0 failed (0%)\n"
              "Testing complete: 1 test groups passed, 0 test groups failed\n");
    EXPECT_LT(run.peakKilobytes, 200 * 1024);
}
