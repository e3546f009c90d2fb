// Runs the tintwork command and checks its subcommands, outputs and statuses.

#include <gtest/gtest.h>

#include <filesystem>

#include "RunTool.h"
#include "file/OchreColorFileReader.h"
#include "file/OchreColorFileWriter.h"
#include "TestDocuments.h"

using namespace tintwork::testing;
namespace fs = std::filesystem;

namespace {

const char* const tokens =
    R"({"brand": {"$type": "color", "$value": {"$colorSpace": {"name": "srgb", "$components": [0.2, 0.4, 0.6]}}}})";

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

}  // namespace

TEST(TintworkCommand, HelpVersionAndUsageErrors) {
    ToolRun help = runTintwork({"--help"});
    EXPECT_EQ(help.status, 0);
    for (const char* word : {"import", "build", "test", "Examples:"}) {
        EXPECT_TRUE(contains(help.out, word)) << word << "\n" << help.out;
    }
    ToolRun importHelp = runTintwork({"import", "--help"});
    EXPECT_EQ(importHelp.status, 0);
    EXPECT_TRUE(contains(importHelp.out, "tintwork import css theme.css")) << importHelp.out;
    EXPECT_TRUE(contains(importHelp.out, "\"Asset Catalog\"")) << importHelp.out;

    ToolRun version = runTintwork({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out.rfind("tintwork ", 0), 0u) << version.out;

    const std::vector<std::vector<std::string>> usages = {
        {},
        {"frobnicate"},
        {"import"},
        {"import", "design-tokens"},
        {"import", "paint", "a.json"},
        {"import", "design-tokens", "a.json", "-o", "a.txt"},
        {"import", "design-tokens", "a.json", "--into", "d.tintwork"},
        {"import", "design-tokens", "a.json", "--into", "d.tintwork", "-o", "x.json"},
        {"import", "design-tokens", "a.json", "--modes", "light"},
        {"import", "design-tokens", "a.json", "--unmanaged-as", "srgb"},
        {"build"},
        {"build", "a.tintwork", "--autohc"},
        {"test", "a.tintwork", "--bogus"},
    };
    for (const auto& args : usages) {
        ToolRun run = runTintwork(args);
        EXPECT_EQ(run.status, 2) << ::testing::PrintToString(args) << run.err;
        EXPECT_EQ(run.out, "") << ::testing::PrintToString(args);
        EXPECT_EQ(run.err.rfind("tintwork: ", 0), 0u) << run.err;
    }
    EXPECT_TRUE(contains(runTintwork({"import", "paint", "a.json"}).err, "tintwork: import: unknown kind \"paint\""));
}

TEST(TintworkCommand, ImportWritesTokensDocumentsAndAppends) {
    TemporaryFolder folder;
    writeText(folder.path() / "tokens.json", tokens);

    ToolRun printed = runTintwork({"import", "design-tokens", "tokens.json"}, folder.path());
    ASSERT_EQ(printed.status, 0) << printed.err;
    EXPECT_EQ(printed.err, "");
    EXPECT_TRUE(contains(printed.out, "\"Design Tokens JSON Import - tokens.json\"")) << printed.out;
    EXPECT_TRUE(contains(printed.out, "\"brand\"")) << printed.out;

    ToolRun written = runTintwork({"import", "design-tokens", "tokens.json", "-o", "out.json"}, folder.path());
    ASSERT_EQ(written.status, 0) << written.err;
    EXPECT_EQ(written.out, "");
    EXPECT_EQ(readText(folder.path() / "out.json"), printed.out);

    // A new document of the imported group; then the same group appended to a document
    // with a build group, which exports it.
    ToolRun document = runTintwork({"import", "design-tokens", "tokens.json", "-o", "new.tintwork"}, folder.path());
    ASSERT_EQ(document.status, 0) << document.err;
    EXPECT_TRUE(contains(readText(folder.path() / "new.tintwork"), "Design Tokens JSON Import - tokens.json"));

    writeText(folder.path() / "settings.tintwork", buildDocument("css", "colors"));
    ToolRun into = runTintwork(
        {"import", "design-tokens", "tokens.json", "-o", "merged.tintwork", "--into", "settings.tintwork"},
        folder.path());
    ASSERT_EQ(into.status, 0) << into.err;
    EXPECT_EQ(readText(folder.path() / "settings.tintwork"), buildDocument("css", "colors"));
    ToolRun build = runTool({"-b", "merged.tintwork"}, folder.path());
    ASSERT_EQ(build.status, 0) << build.out;
    const std::string css = readText(folder.path() / "css" / "colors.css");
    EXPECT_TRUE(contains(css, "--brand: ")) << css;
}

TEST(TintworkCommand, FailingSourceWritesNothing) {
    TemporaryFolder folder;
    writeText(folder.path() / "tokens.json", tokens);
    writeText(folder.path() / "broken.json", "{\"a\": ");
    writeText(folder.path() / "settings.tintwork", buildDocument("css", "colors"));
    const std::vector<std::vector<std::string>> calls = {
        {"import", "design-tokens", "tokens.json", "missing.json", "-o", "out.json"},
        {"import", "design-tokens", "tokens.json", "broken.json", "-o", "out.tintwork"},
        {"import", "design-tokens", "broken.json", "-o", "settings.tintwork", "--into", "settings.tintwork"},
        {"import", "design-tokens", "tokens.json", "-o", "out.tintwork", "--into", "missing.tintwork"},
    };
    for (const auto& args : calls) {
        ToolRun run = runTintwork(args, folder.path());
        EXPECT_EQ(run.status, 1) << ::testing::PrintToString(args);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err.rfind("tintwork: ", 0), 0u) << run.err;
    }
    EXPECT_TRUE(contains(runTintwork(calls[0], folder.path()).err, "tintwork: missing.json: "));
    EXPECT_FALSE(fs::exists(folder.path() / "out.json"));
    EXPECT_FALSE(fs::exists(folder.path() / "out.tintwork"));
    EXPECT_EQ(readText(folder.path() / "settings.tintwork"), buildDocument("css", "colors"));
}

TEST(TintworkCommand, BuildAndTestRunTheFlowsOfTintWorkCLI) {
    TemporaryFolder folder;
    writeText(folder.path() / "doc.tintwork", buildDocument("css", "colors"));
    writeText(folder.path() / "tokens.json", tokens);
    writeText(folder.path() / "tests.tintwork", failingTestDocument(3));

    ToolRun build = runTintwork({"build", "doc.tintwork", "-o", "out"}, folder.path());
    EXPECT_EQ(build.status, 0);
    EXPECT_EQ(build.out, "Build Completed Successfully\n");
    EXPECT_TRUE(fs::exists(folder.path() / "out" / "colors.css"));

    ToolRun fromTokens = runTintwork({"build", "doc.tintwork", "--tokens", "tokens.json", "--autohc"}, folder.path());
    EXPECT_EQ(fromTokens.status, 0) << fromTokens.err;
    EXPECT_TRUE(contains(readText(folder.path() / "css" / "colors.css"), "prefers-contrast"));

    ToolRun missing = runTintwork({"build", "missing.tintwork"}, folder.path());
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.out, "");
    EXPECT_EQ(missing.err.rfind("Error building ", 0), 0u) << missing.err;

    for (const char* document : {"tests.tintwork", "doc.tintwork", "missing.tintwork"}) {
        ToolRun modern = runTintwork({"test", document}, folder.path());
        ToolRun classic = runTool({"-t", document}, folder.path());
        EXPECT_EQ(modern.out, classic.out) << document;
        EXPECT_EQ(modern.status, classic.status) << document;
    }
}

// Every kind on a real file: the document written with --into builds, its style sheet
// holds the imported colours, and it reads back to the same items.
TEST(TintworkCommand, RealFilesOfEveryKindImportBuildAndReadBack) {
    const fs::path corpus = fs::path(TINTWORK_SHARED_DIR) / "corpus";
    if (!fs::exists(corpus)) {
        GTEST_SKIP() << "no shared corpus beside the checkout";
    }
    const std::vector<std::vector<std::string>> imports = {
        {"css", "css/radix-blue.css"},
        {"css", "css/responsive-email-inlined.html"},
        {"svg", "svg/flag-icons-gb.svg"},
        {"asset-catalog", "xcassets/swiftgen/Styles.xcassets"},
        {"figma", "figma/fig2sketch-vector.fig"},
        {"sketch", "sketch/sketch-assistants-style-fills.sketch", "--unmanaged-as", "srgb"},
        {"image", "images/flag-fr.png"},
        {"material", "json/material-colors.json"},
        {"generic-json", "json/generic-radix-colors.json"},
        {"dtcg", "json/dtcg/ibm-carbon-colors.tokens.json"},
    };
    for (const auto& call : imports) {
        SCOPED_TRACE(call[1]);
        TemporaryFolder folder;
        writeText(folder.path() / "settings.tintwork", buildDocument("css", "colors"));
        std::vector<std::string> args = {"import", call[0], (corpus / call[1]).string(), "-o", "merged.tintwork",
                                         "--into", "settings.tintwork"};
        args.insert(args.end(), call.begin() + 2, call.end());
        ToolRun import = runTintwork(args, folder.path());
        ASSERT_EQ(import.status, 0) << import.err;

        ToolRun build = runTool({"-b", "merged.tintwork"}, folder.path());
        ASSERT_EQ(build.status, 0) << build.out;
        const std::string css = readText(folder.path() / "css" / "colors.css");
        std::size_t colours = 0;
        for (std::size_t at = css.find(": color("); at != std::string::npos; at = css.find(": color(", at + 1)) {
            ++colours;
        }
        EXPECT_GT(colours, 1u) << css;  // the settings document's own colour and the imported ones

        const std::string written = readText(folder.path() / "merged.tintwork");
        auto project = tintwork::OchreColorFileReader().read(written);
        EXPECT_EQ(tintwork::OchreColorFileWriter().write(*project), written);
    }
}

TEST(TintworkCommand, WarnsWhenLikeNamedColoursCannotAllBeTokens) {
    const fs::path figma = fs::path(TINTWORK_SHARED_DIR) / "corpus" / "figma" / "fig2sketch-corners.fig";
    if (!fs::exists(figma)) {
        GTEST_SKIP() << "no shared corpus beside the checkout";
    }
    TemporaryFolder folder;
    ToolRun json = runTintwork({"import", "figma", figma.string()}, folder.path());
    EXPECT_EQ(json.status, 0);
    EXPECT_TRUE(contains(json.err, "tintwork: warning: 3 imported items share their token name")) << json.err;
    ToolRun document = runTintwork({"import", "figma", figma.string(), "-o", "all.tintwork"}, folder.path());
    EXPECT_EQ(document.status, 0);
    EXPECT_FALSE(contains(document.err, "warning")) << document.err;
}
