// Runs the real executable on hostile inputs and broken outputs: files that never end
// or block, names that point outside the task's folder, trees too deep to build in
// full, and a standard output that can't be written.

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <sstream>

#include "RunTool.h"
#include "cli/StandardStreams.h"

using namespace tintwork::testing;
namespace fs = std::filesystem;

namespace {

// Generous: every run here takes well under a second, a blocked one forever.
constexpr unsigned timeout = 60;

const char* const header =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<tintwork>\n<project>\n<header><version>1.6</version></header>\n";

std::string colorItem(const std::string& id, const std::string& extra = "<buildGroupId>G</buildGroupId>") {
    return "<colorItem><id>" + id + "</id><name>" + id + "</name><profile>sRGB</profile><color><name>" + id +
           "</name><variants><variant><rgba>0.2 0.4 0.6 1</rgba></variant></variants></color>" + extra +
           "</colorItem>\n";
}

// A document whose one build group "G" runs `task` over `items`.
std::string document(const std::string& items, const std::string& task) {
    return std::string(header) + "<colorItems>\n" + items + "</colorItems>\n<buildGroups><buildGroup><id>G</id>" +
           "<name>Web</name><tasks>" + task + "</tasks></buildGroup></buildGroups>\n</project>\n</tintwork>\n";
}

std::string task(int fileType, const std::string& fileName, const std::string& configuration = "") {
    return "<task><name>Task</name><id>T</id><folder>out</folder><fileName>" + fileName + "</fileName><fileType>" +
           std::to_string(fileType) + "</fileType><nameTransform>4</nameTransform>" + configuration + "</task>";
}

std::string cssDocument() {
    return document(colorItem("Brand"), task(1, "colors"));
}

ToolSetup setupIn(const fs::path& folder, StandardOutput output) {
    ToolSetup setup;
    setup.workingDirectory = folder;
    setup.output = output;
    setup.timeoutSeconds = timeout;
    return setup;
}

ToolRun run(const std::vector<std::string>& args, const fs::path& folder,
            StandardOutput output = StandardOutput::captured) {
    return runTool(args, setupIn(folder, output));
}

ToolRun runCommand(const std::vector<std::string>& args, const fs::path& folder,
                   StandardOutput output = StandardOutput::captured) {
    return runTintwork(args, setupIn(folder, output));
}

std::string notRegular(const std::string& name) {
    return "The file \u201c" + name + "\u201d couldn\u2019t be opened because it is not a regular file.\n";
}

}  // namespace

TEST(CommandLineRobustness, ReadsOnlyRegularFilesOfBoundedSize) {
    TemporaryFolder folder;
    writeText(folder.path() / "settings.tintwork", cssDocument());
    for (const char* name : {"pipe.tintwork", "pipe.json", "pipe.stencil"}) {
        ASSERT_EQ(0, ::mkfifo((folder.path() / name).c_str(), 0600));
    }
    writeText(folder.path() / "custom.tintwork",
              document(colorItem("Brand"),
                       task(12, "custom", "<configuration><customTemplateLocation>pipe.stencil"
                                          "</customTemplateLocation></configuration>")));
    writeText(folder.path() / "large.tintwork", "");
    fs::resize_file(folder.path() / "large.tintwork", (std::uintmax_t{1} << 30) + 1);

    // Devices that never end and FIFOs that nobody writes: every input is refused at once.
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
        {{"-b", "/dev/zero"}, "Error building " + notRegular("zero")},
        {{"-t", "/dev/urandom"}, "Error testing " + notRegular("urandom")},
        {{"-b", "pipe.tintwork"}, "Error building " + notRegular("pipe.tintwork")},
        {{"-i", "pipe.json", "-c", "settings.tintwork"}, "Error building " + notRegular("pipe.json")},
        {{"-i", "/dev/zero", "-c", "settings.tintwork"}, "Error building " + notRegular("zero")},
        {{"-b", "custom.tintwork"}, "Error building " + notRegular("pipe.stencil")},
        {{"-b", "large.tintwork"},
         "Error building The file \u201clarge.tintwork\u201d couldn\u2019t be opened because it is larger than "
         "1 GiB.\n"},
    };
    for (const auto& [args, expected] : cases) {
        ToolRun result = run(args, folder.path());
        EXPECT_EQ(1, result.status) << ::testing::PrintToString(args);
        EXPECT_EQ(expected, result.out) << ::testing::PrintToString(args);
    }
    // The tintwork command and every importer read through the same functions. Some
    // importers report any unreadable file in their own words; none may block.
    std::vector<std::pair<std::vector<std::string>, bool>> commands = {{{"build", "/dev/zero"}, true}};
    for (const char* kind : {"design-tokens", "dtcg", "sketch", "figma", "svg", "material", "generic-json", "image",
                             "css", "ochre"}) {
        const bool namesRefusal = std::string(kind) != "image" && std::string(kind) != "css" &&
                                  std::string(kind) != "ochre";
        commands.push_back({{"import", kind, "pipe.json"}, namesRefusal});
        commands.push_back({{"import", kind, "/dev/zero"}, namesRefusal});
    }
    for (const auto& [args, namesRefusal] : commands) {
        ToolRun result = runCommand(args, folder.path());
        EXPECT_TRUE(result.status != 0 && result.status < 128) << ::testing::PrintToString(args) << result.status;
        if (namesRefusal) {
            EXPECT_NE(std::string::npos, (result.out + result.err).find("because it is not a regular file"))
                << ::testing::PrintToString(args) << result.out << result.err;
        }
    }
}

TEST(CommandLineRobustness, AbsoluteFileNamesStayInsideTheTaskFolder) {
    TemporaryFolder folder;
    TemporaryFolder outside;
    fs::create_directories(outside.path() / "victim.xcassets");
    writeText(outside.path() / "victim.xcassets" / "keep.txt", "keep");
    const std::string victim = (outside.path() / "victim").string();
    writeText(folder.path() / "doc.tintwork", document(colorItem("Brand"), task(10, victim) + task(3, victim)));
    const fs::path inside = folder.path() / "out" / outside.path().relative_path();
    fs::create_directories(inside);

    ToolRun result = run({"-b", "doc.tintwork"}, folder.path());
    EXPECT_EQ(0, result.status);
    EXPECT_EQ("Build Completed Successfully\n", result.out);
    EXPECT_EQ("keep", readText(outside.path() / "victim.xcassets" / "keep.txt"));
    EXPECT_FALSE(fs::exists(outside.path() / "victim.json"));
    EXPECT_TRUE(fs::exists(inside / "victim.xcassets" / "Brand.colorset" / "Contents.json"));
    EXPECT_TRUE(fs::exists(inside / "victim.json"));
}

TEST(CommandLineRobustness, PartsTooDeepToBuildFailTheFlowByName) {
    TemporaryFolder folder;
    writeText(folder.path() / "settings.tintwork", cssDocument());

    std::string groups = colorItem("Deep");
    for (int level = 201; level >= 1; --level) {
        groups = "<group><id>N" + std::to_string(level) + "</id><name>Level " + std::to_string(level) + "</name>" +
                 groups + "</group>";
    }
    writeText(folder.path() / "groups.tintwork", document(groups + colorItem("Shallow"), task(1, "colors")));

    std::string chain = colorItem("A0", "");
    for (int link = 1; link <= 300; ++link) {
        chain += "<alias><id>A" + std::to_string(link) + "</id><name>Link " + std::to_string(link) +
                 "</name><type>1</type><referencedItemId>A" + std::to_string(link - 1) + "</referencedItemId>" +
                 (link == 300 ? "<buildGroupId>G</buildGroupId>" : "") + "</alias>\n";
    }
    writeText(folder.path() / "chain.tintwork", document(chain, task(1, "colors")));

    std::string json = "{}";
    for (int level = 201; level >= 1; --level) {
        json = "{\"g" + std::to_string(level) + "\": " + json + "}";
    }
    writeText(folder.path() / "tokens.json", json);

    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
        {{"-b", "groups.tintwork"}, "Error building The group \u201cLevel 201\u201d is nested deeper than 200 groups.\n"},
        {{"-b", "chain.tintwork"}, "Error building The alias \u201cLink 300\u201d leads through more than 256 aliases.\n"},
        {{"-i", "tokens.json", "-c", "settings.tintwork"},
         "Error building tokens.json: the group \u201cg201\u201d is nested deeper than 200 groups.\n"},
    };
    for (const auto& [args, expected] : cases) {
        ToolRun result = run(args, folder.path());
        EXPECT_EQ(1, result.status) << ::testing::PrintToString(args);
        EXPECT_EQ(expected, result.out) << ::testing::PrintToString(args);
    }
    EXPECT_FALSE(fs::exists(folder.path() / "out" / "colors.css"));
}

TEST(CommandLineRobustness, UnwritableStandardOutputFailsTheRun) {
    TemporaryFolder folder;
    writeText(folder.path() / "doc.tintwork", cssDocument());
    writeText(folder.path() / "none.tintwork", std::string(header) + "</project>\n</tintwork>\n");

    ToolRun full = run({"-b", "doc.tintwork"}, folder.path(), StandardOutput::full);
    EXPECT_EQ(1, full.status);
    EXPECT_EQ("Error writing standard output: No space left on device\n", full.err);

    // The test flow writes as it goes, so the reason may be gone by the end.
    ToolRun tests = run({"-t", "none.tintwork"}, folder.path(), StandardOutput::full);
    EXPECT_EQ(1, tests.status);
    EXPECT_EQ(0u, tests.err.rfind("Error writing standard output", 0)) << tests.err;

    // With no standard output at all, the console lines must not land in a file the
    // build opens in its place either.
    ToolRun closed = run({"-b", "doc.tintwork"}, folder.path(), StandardOutput::closed);
    EXPECT_EQ(1, closed.status);
    EXPECT_EQ("Error writing standard output: Bad file descriptor\n", closed.err);
    EXPECT_EQ(std::string::npos, readText(folder.path() / "out" / "colors.css").find("Build Completed"));

    // The tintwork command, printing tokens or a build's line, likewise.
    writeText(folder.path() / "tokens.json", R"({"brand": {"$type": "color", "$value": {"$hex": "#336699"}}})");
    for (const std::vector<std::string>& args : {std::vector<std::string>{"import", "design-tokens", "tokens.json"},
                                                 std::vector<std::string>{"build", "doc.tintwork"}}) {
        for (StandardOutput output : {StandardOutput::full, StandardOutput::closed}) {
            ToolRun result = runCommand(args, folder.path(), output);
            EXPECT_EQ(1, result.status) << ::testing::PrintToString(args);
            EXPECT_EQ(0u, result.err.rfind("Error writing standard output: ", 0)) << result.err;
        }
    }
}

TEST(FinishOutput, TurnsOnlySuccessIntoFailure) {
    std::ostringstream good;
    std::ostringstream err;
    good << "fine";
    EXPECT_EQ(0, tintwork::finishOutput(good, err, 0));
    EXPECT_EQ(3, tintwork::finishOutput(good, err, 3));
    EXPECT_EQ("", err.str());

    std::ostringstream lost;
    lost.setstate(std::ios::badbit);
    EXPECT_EQ(1, tintwork::finishOutput(lost, err, 0));
    EXPECT_EQ(3, tintwork::finishOutput(lost, err, 3));
    EXPECT_EQ(0u, err.str().rfind("Error writing standard output", 0));
}
