// Runs `tintwork import figma` and `tintwork import sketch` on the real sample documents.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "RunTool.h"

using namespace tintwork::testing;
namespace fs = std::filesystem;

namespace {

fs::path sample(const std::string& kind, const std::string& name) {
    return fs::path(TINTWORK_SHARED_DIR) / "corpus" / kind / name;
}

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

}  // namespace

TEST(DesignImportCommand, ImportsFigmaDocumentsWithDiagnosticsOnStandardError) {
    const fs::path corners = sample("figma", "fig2sketch-corners.fig");
    if (!fs::exists(corners)) {
        GTEST_SKIP() << "no shared corpus";
    }
    TemporaryFolder folder;
    ToolRun run = runTintwork({"import", "figma", corners.string(), "-o", "figma.tintwork"}, folder.path());
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "");
    // The zstd data chunk is tried as DEFLATE first.
    EXPECT_EQ(run.err, "Error decoding as zlib invalid stored block lengths\n");
    const std::string document = readText(folder.path() / "figma.tintwork");
    EXPECT_TRUE(contains(document, "Figma Import - fig2sketch-corners.fig")) << document;

    writeText(folder.path() / "plain.fig", "not a document");
    ToolRun broken = runTintwork({"import", "figma", "plain.fig"}, folder.path());
    EXPECT_EQ(broken.status, 1);
    EXPECT_EQ(broken.out, "");
    EXPECT_EQ(broken.err, "tintwork: plain.fig: Unable to open Figma document\n");
}

TEST(DesignImportCommand, ReadsUnmanagedSketchDocumentsOnlyInTheSpaceAskedFor) {
    const fs::path fills = sample("sketch", "sketch-assistants-style-fills.sketch");
    if (!fs::exists(fills)) {
        GTEST_SKIP() << "no shared corpus";
    }
    ToolRun plain = runTintwork({"import", "sketch", fills.string()});
    ASSERT_EQ(plain.status, 0) << plain.err;
    EXPECT_TRUE(contains(plain.out, "\"Sketch Import - sketch-assistants-style-fills.sketch\": {}")) << plain.out;

    ToolRun p3 = runTintwork({"import", "sketch", "--unmanaged-as", "display-p3", fills.string()});
    ASSERT_EQ(p3.status, 0) << p3.err;
    for (const char* part : {"\"Brand Red\"", "\"Brand Blue\"", "\"Rectangle\"", "\"display-p3\""}) {
        EXPECT_TRUE(contains(p3.out, part)) << part << "\n" << p3.out;
    }
    EXPECT_FALSE(contains(p3.out, "\"srgb\"")) << p3.out;
}
