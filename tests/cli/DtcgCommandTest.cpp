// The standard Design Tokens reader through the tintwork command: import, strict
// checking, and builds of the imported tokens to CSS.
#include <gtest/gtest.h>

#include <filesystem>

#include "RunTool.h"
#include "TestDocuments.h"

using namespace tintwork::testing;
namespace fs = std::filesystem;

namespace {

const fs::path corpus = fs::path(TINTWORK_SHARED_DIR) / "corpus" / "json" / "dtcg";
const fs::path strictData = fs::path(TINTWORK_SOURCE_DIR) / "tests" / "import" / "data" / "dtcg" / "strict";

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// The declarations of one block of a style sheet: from the line holding `opening` to the
// first line that closes a block.
std::string block(const std::string& css, const std::string& opening) {
    const std::size_t start = css.find(opening);
    if (start == std::string::npos) {
        return "";
    }
    return css.substr(start, css.find("\n}", start) - start);
}

}  // namespace

TEST(DtcgCommand, StrictModeIsALinterForTokenFiles) {
    ToolRun valid = runTintwork({"import", "dtcg", "--strict", (strictData / "valid" / "types.tokens.json").string()});
    EXPECT_EQ(valid.status, 0) << valid.err;
    const fs::path invalid = strictData / "invalid" / "color-space.tokens.json";
    ToolRun broken = runTintwork({"import", "dtcg", "--strict", invalid.string()});
    EXPECT_EQ(broken.status, 1);
    EXPECT_EQ(broken.out, "");
    EXPECT_EQ(broken.err, "tintwork: " + invalid.string() + ": c: $value: unknown colorSpace \"foo\"\n");
    // Without --strict the bad token is dropped with a warning and the rest imports.
    ToolRun lenient = runTintwork({"import", "dtcg", invalid.string()});
    EXPECT_EQ(lenient.status, 0);
    EXPECT_EQ(lenient.err,
              "warning: color-space.tokens.json: c: $value: unknown colorSpace \"foo\"; token skipped\n");
}

TEST(DtcgCommand, FilesThatAreNoJsonFailWithTheirPlace) {
    TemporaryFolder folder;
    writeText(folder.path() / "bad.json", "{\n  \"a\": [1, 2\n}");
    ToolRun run = runTintwork({"import", "dtcg", "bad.json"}, folder.path());
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "tintwork: bad.json: parse error at line 3, column 1: syntax error while parsing array - "
                       "unexpected '}'; expected ']'\n");
}

TEST(DtcgCommand, PrimerAppearancesBuildIntoOneStyleSheet) {
    if (!fs::is_directory(corpus)) {
        GTEST_SKIP() << "no shared corpus at " << corpus;
    }
    TemporaryFolder folder;
    writeText(folder.path() / "settings.tintwork", buildDocument("out", "tokens"));
    ToolRun import = runTintwork({"import", "dtcg", "--modes", "light,dark,high-contrast",
                                  (corpus / "github-primer-base-light.tokens.json").string(),
                                  (corpus / "github-primer-base-dark.tokens.json").string(),
                                  (corpus / "github-primer-base-light-high-contrast.tokens.json").string(), "-o",
                                  "primer.tintwork", "--into", "settings.tintwork"},
                                 folder.path());
    ASSERT_EQ(import.status, 0) << import.err;
    EXPECT_EQ(import.err, "");
    ToolRun build = runTintwork({"build", "primer.tintwork"}, folder.path());
    ASSERT_EQ(build.status, 0) << build.err << build.out;
    const std::string css = readText(folder.path() / "out" / "tokens.css");
    // Code names carry the token's whole path; every appearance has its block.
    const std::string light = block(css, ":root {");
    const std::string dark = block(css, "@media (prefers-color-scheme: dark)");
    const std::string contrast = block(css, "@media (prefers-contrast: more) and (prefers-color-scheme: light)");
    EXPECT_TRUE(contains(light, "--base-color-black: color(srgb 0.1214 0.1371 0.1567);")) << light;
    EXPECT_TRUE(contains(dark, "--base-color-black: color(srgb 0.004 0.016 0.036);")) << dark;
    EXPECT_TRUE(contains(contrast, "--base-color-black: color(srgb 0.004 0.016 0.036);")) << contrast;
    // An alias follows its own target in each appearance: {neutral.0} light, {black} dark.
    EXPECT_TRUE(contains(light, "--base-color-inset: color(srgb 1 1 1);")) << light;
    EXPECT_TRUE(contains(dark, "--base-color-inset: color(srgb 0.004 0.016 0.036);")) << dark;
    EXPECT_TRUE(contains(light, "--base-color-blue-0: ")) << light;
}

TEST(DtcgCommand, BuildsStraightFromATokenFile) {
    if (!fs::is_directory(corpus)) {
        GTEST_SKIP() << "no shared corpus at " << corpus;
    }
    TemporaryFolder folder;
    writeText(folder.path() / "settings.tintwork", buildDocument("out", "tokens"));
    ToolRun build = runTintwork({"build", "settings.tintwork", "--tokens",
                                 (corpus / "ibm-carbon-colors.tokens.json").string(), "--tokens-format", "dtcg",
                                 "--autohc"},
                                folder.path());
    ASSERT_EQ(build.status, 0) << build.err << build.out;
    const std::string css = readText(folder.path() / "out" / "tokens.css");
    EXPECT_TRUE(contains(block(css, ":root {"), "--color-blue-60: ")) << css.substr(0, 400);
    EXPECT_TRUE(contains(css, "@media (prefers-contrast: more) and (prefers-color-scheme: light)"));
}
