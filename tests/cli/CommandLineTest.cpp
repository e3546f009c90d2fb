// Runs the real executable and checks what it prints and its exit status.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "RunTool.h"
#include "TestDocuments.h"

using namespace tintwork::testing;
namespace fs = std::filesystem;

namespace {

const char* const usage =
    "Invalid parameters\n"
    "USAGE: TintWorkCLI [<arguments>] [<options>]\n"
    "\n"
    "ARGUMENTS:\n"
    "-b <path-to-tintwork-document>: Build. The equivalent of running `Build All` for the specified document.\n"
    "-t <path-to-tintwork-document>: Test. The equivalent of running `Test All` for the specified document.\n"
    "-i <path-to-json-document>: Import. If specified the colors in this JSON file will be used exclusively for "
    "building.\n"
    "-c <path-to-tintwork-document>: Configuration. Import all the build settings from the tintwork document "
    "specified.\n"
    "<path-to-tintwork-document> The path to the Tintwork document you want to build, including the file name.\n"
    "<path-to-json-document> The path to a Design Tokens JSON file containing all the colors you'd like to use, "
    "including the file name.\n"
    "\n"
    "OPTIONS:\n"
    "-o <output-folder> Only applicable when using the build or configuration option. If specified, Tintwork will "
    "use this folder instead of the one in the tasks you are exporting.\n"
    "-autohc [true | false] Only applicable when using the configuration option. If specified as true Tintwork will "
    "auto generate high contrast variants for colors you are exporting. If not specified defaults to false.\n"
    "\n"
    "EXAMPLES:\n"
    "/Applications/Tintwork.app/Contents/SharedSupport/TintworkCLI -b Colors.tintwork\n"
    "/Applications/Tintwork.app/Contents/SharedSupport/TintworkCLI -b Colors.tintwork -o ~/Downloads/Temp/\n"
    "/Applications/Tintwork.app/Contents/SharedSupport/TintworkCLI -t Colors.tintwork\n"
    "/Applications/Tintwork.app/Contents/SharedSupport/TintworkCLI -i colors.json -c Settings.tintwork -o "
    "~/Downloads/Temp/ -autohc true\n";

std::string lastLine(const std::string& text) {
    auto end = text.find_last_not_of('\n');
    auto start = text.rfind('\n', end);
    return text.substr(start == std::string::npos ? 0 : start + 1, end - (start == std::string::npos ? 0 : start + 1) + 1);
}

}  // namespace

TEST(CommandLine, AnswersBadUsageWithTheUsageText) {
    const std::vector<std::vector<std::string>> badUsages = {
        {},
        {"-b"},
        {"x", "-b", "a.tintwork"},
        {"-i", "x.json"},
        {"-c", "s.tintwork", "-autohc", "true"},
        {"-o", "out"},
        {"--build", "a.tintwork"},
        {"-B", "a.tintwork"},
    };
    for (const auto& args : badUsages) {
        ToolRun run = runTool(args);
        EXPECT_EQ(run.status, 1) << ::testing::PrintToString(args);
        EXPECT_EQ(run.out, usage) << ::testing::PrintToString(args);
        EXPECT_EQ(run.err, "");
    }
}

TEST(CommandLine, ReportsUnreadableDocumentsPerFlow) {
    TemporaryFolder folder;
    ToolRun build = runTool({"-b", "missing.tintwork"}, folder.path());
    EXPECT_EQ(build.status, 1);
    EXPECT_EQ(build.out,
              "Error building The file \u201cmissing.tintwork\u201d couldn\u2019t be opened because there is no such "
              "file.\n");

    ToolRun test = runTool({"-t", "missing.tintwork"}, folder.path());
    EXPECT_EQ(test.status, 1);
    EXPECT_EQ(test.out.rfind("Error testing ", 0), 0u) << test.out;

    writeText(folder.path() / "settings.tintwork", buildDocument("out", "colors"));
    ToolRun import = runTool({"-i", "missing.json", "-c", "settings.tintwork"}, folder.path());
    EXPECT_EQ(import.status, 1);
    EXPECT_EQ(import.out.rfind("Error building ", 0), 0u) << import.out;
    EXPECT_FALSE(fs::exists(folder.path() / "out"));

    ToolRun settings = runTool({"-i", "missing.json", "-c", "missing.tintwork"}, folder.path());
    EXPECT_EQ(settings.status, 1);
    EXPECT_EQ(settings.out.rfind("Error building The file \u201cmissing.tintwork\u201d", 0), 0u) << settings.out;
}

TEST(CommandLine, ReportsDocumentsThatAreNotTintworkXML) {
    TemporaryFolder folder;
    for (const std::string& bytes : {std::string("not xml at all"), std::string("<other/>"), std::string(),
                                     std::string("<tintwork><project>")}) {
        writeText(folder.path() / "bad.tintwork", bytes);
        ToolRun build = runTool({"-b", "bad.tintwork"}, folder.path());
        EXPECT_EQ(build.status, 1) << bytes;
        EXPECT_EQ(build.out.rfind("Error building ", 0), 0u) << build.out;
        EXPECT_EQ(std::count(build.out.begin(), build.out.end(), '\n'), 1) << build.out;
        ToolRun test = runTool({"-t", "bad.tintwork"}, folder.path());
        EXPECT_EQ(test.status, 1) << bytes;
        EXPECT_EQ(test.out.rfind("Error testing ", 0), 0u) << test.out;
        EXPECT_EQ(build.err + test.err, "");
    }
}

TEST(CommandLine, BuildsTheFirstMatchingFlowOnly) {
    TemporaryFolder folder;
    writeText(folder.path() / "a.tintwork", buildDocument("from-a", "colors"));
    writeText(folder.path() / "c.tintwork", buildDocument("from-c", "colors"));

    // -b wins over -t; a trailing unpaired argument is dropped.
    ToolRun run = runTool({"-b", "a.tintwork", "-t", "missing.tintwork", "extra"}, folder.path());
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "Build Completed Successfully\n");
    EXPECT_TRUE(fs::exists(folder.path() / "from-a" / "colors.css"));

    // A repeated option keeps its last value.
    run = runTool({"-b", "missing.tintwork", "-b", "c.tintwork"}, folder.path());
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(fs::exists(folder.path() / "from-c" / "colors.css"));
}

TEST(CommandLine, OutputFolderReplacesTaskFoldersAndExpandsTilde) {
    TemporaryFolder folder;
    writeText(folder.path() / "doc" / "a.tintwork", buildDocument("nested/deeper", "colors"));

    ToolRun run = runTool({"-b", "doc/a.tintwork"}, folder.path());
    EXPECT_EQ(run.status, 0) << run.out;
    EXPECT_TRUE(fs::exists(folder.path() / "doc" / "nested" / "deeper" / "colors.css"));

    const char* oldHome = std::getenv("HOME");
    const std::string savedHome = oldHome ? oldHome : "";
    setenv("HOME", folder.path().c_str(), 1);
    run = runTool({"-b", "~/doc/a.tintwork", "-o", "~/elsewhere"});
    setenv("HOME", savedHome.c_str(), 1);
    EXPECT_EQ(run.status, 0) << run.out;
    EXPECT_TRUE(fs::exists(folder.path() / "elsewhere" / "colors.css"));
}

TEST(CommandLine, TestFlowCountsFailedGroupsAsStatus) {
    TemporaryFolder folder;
    writeText(folder.path() / "none.tintwork", failingTestDocument(0));
    ToolRun none = runTool({"-t", "none.tintwork", "-o", "out"}, folder.path());
    EXPECT_EQ(none.status, 0);
    EXPECT_EQ(none.out, "Testing complete: 0 test groups passed, 0 test groups failed\n");
    EXPECT_FALSE(fs::exists(folder.path() / "out"));

    writeText(folder.path() / "three.tintwork", failingTestDocument(3));
    ToolRun three = runTool({"-t", "three.tintwork"}, folder.path());
    EXPECT_EQ(three.status, 3);
    EXPECT_EQ(three.out.rfind("Test Group 0\n--------------------------------\n", 0), 0u) << three.out;
    EXPECT_EQ(lastLine(three.out), "Testing complete: 0 test groups passed, 3 test groups failed");

    // A status above 255 would wrap (256 reads as 0, a pass), so it is held at 255.
    writeText(folder.path() / "many.tintwork", failingTestDocument(256));
    ToolRun many = runTool({"-t", "many.tintwork"}, folder.path());
    EXPECT_EQ(many.status, 255);
    EXPECT_EQ(lastLine(many.out), "Testing complete: 0 test groups passed, 256 test groups failed");
}

TEST(CommandLine, TestFlowPrintsOneHeadingPerRunOfGroupNames) {
    // Groups without tasks leave no entry, so the two "Same" groups around "Skipped" share
    // one heading; the unnamed first group gets none and, comparing nothing, counts as passed.
    auto item = [](const std::string& id, const std::string& rgba, const std::string& group,
                   const std::string& position) {
        return colorItem(id, rgba, "<testGroupId>" + group + "</testGroupId><testPosition>" + position +
                                       "</testPosition>");
    };
    auto group = [](const std::string& id, const std::string& name, const std::string& type) {
        const std::string tests = type.empty() ? "" : "<test><name>T</name><id>" + id + "T</id><type>" + type +
                                                          "</type></test>";
        return "<testGroup><id>" + id + "</id><name>" + name + "</name><tests>" + tests + "</tests></testGroup>\n";
    };
    const std::string document =
        std::string(header) + "<colorItems>\n" + item("Text", "0 0 0 1", "A", "foreground") +
        item("Back", "1 1 1 1", "A", "background") + item("Ink", "0 0 0 1", "B", "both") +
        item("Soot", "0.01 0.01 0.01 1", "B", "both") + item("Pen", "0 0 0 1", "D", "foreground") +
        item("Paper", "0.9 0.9 0.9 1", "D", "background") + item("White", "1 1 1 1", "D", "background") +
        item("Coal", "0.05 0.05 0.05 1", "D", "background") + "</colorItems>\n<testGroups>\n" +
        group("Z", "", "wcagContrast") + group("A", "Same", "apcaContrast") + group("B", "Same", "apcaContrast") +
        group("C", "Skipped", "") + group("D", "Same", "apcaContrast") + "</testGroups>\n</project>\n</tintwork>\n";

    TemporaryFolder folder;
    writeText(folder.path() / "groups.tintwork", document);
    ToolRun run = runTool({"-t", "groups.tintwork"}, folder.path());
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out,
              "0 passed (0%)\n0 failed (0%)\n"
              "Test Same\n--------------------------------\n"
              "1 passed (100%)\n0 failed (0%)\n"
              "0 passed (0%)\n2 failed (100%)\n"
              "2 passed (66%)\n1 failed (33%)\n"
              "Testing complete: 2 test groups passed, 2 test groups failed\n");
    EXPECT_EQ(run.err, "");
}

TEST(CommandLine, LcBeyondTheFontTableStopsTheTestRun) {
    // sRGB components above 1 are kept as read, so their contrast can pass the table's end.
    TemporaryFolder folder;
    writeText(folder.path() / "bright.tintwork",
              std::string(header) + "<colorItems>\n" +
                  colorItem("Text", "0 0 0 1", "<testGroupId>G</testGroupId><testPosition>foreground</testPosition>") +
                  colorItem("Glare", "2 2 2 1", "<testGroupId>G</testGroupId><testPosition>background</testPosition>") +
                  "</colorItems>\n<testGroups><testGroup><id>G</id><name>Size</name><tests><test><name>T</name>"
                  "<id>T</id><type>apcaContrast</type><thresholdType>textSize</thresholdType></test></tests>"
                  "</testGroup></testGroups>\n</project>\n</tintwork>\n");
    ToolRun run = runTool({"-t", "bright.tintwork"}, folder.path());
    EXPECT_EQ(run.status, 134);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err.rfind("Fatal error: ", 0), 0u) << run.err;
}

TEST(CommandLine, AutoHighContrastOnlyAcceptsTrue) {
    TemporaryFolder folder;
    writeText(folder.path() / "settings.tintwork", buildDocument("out", "colors"));
    writeText(folder.path() / "tokens.json",
              R"({"brand": {"$type": "color", "$value": {"$colorSpace": {"name": "srgb", "$components": [0.2, 0.4, 0.6]}}}})");
    auto css = [&](const std::string& flag) {
        fs::remove_all(folder.path() / "out");
        ToolRun run = runTool({"-i", "tokens.json", "-c", "settings.tintwork", "-autohc", flag}, folder.path());
        EXPECT_EQ(run.status, 0) << run.out;
        EXPECT_EQ(run.out, "Build Completed Successfully\n");
        return readText(folder.path() / "out" / "colors.css");
    };
    const std::string withTrue = css("TRUE");
    const std::string withYes = css("yes");
    const std::string withOne = css("1");
    EXPECT_NE(withTrue, withYes);
    EXPECT_EQ(withYes, withOne);
    EXPECT_NE(withTrue.find("prefers-contrast"), std::string::npos) << withTrue;
}
