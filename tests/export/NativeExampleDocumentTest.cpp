// The example document, read from disk and built as a user would build it: every
// native output it asks for goes to the consumer of its language.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "ExportTestDocument.h"
#include "NativeConsumers.h"
#include "export/Builder.h"
#include "file/OchreColorFileReader.h"

namespace tintwork {
namespace {

using namespace tintwork::testing;

// Builds every group of the example document next to a copy of it.
std::filesystem::path buildExample() {
    const auto folder = freshFolder("native-example");
    const auto document = folder / "Colors.tintwork";
    std::filesystem::copy_file(std::filesystem::path(TINTWORK_SOURCE_DIR) / "examples" / "Colors.tintwork", document);
    const auto project = OchreColorFileReader().read(readText(document));
    std::vector<std::string> groups;
    for (const BuildGroupPtr& group : project->buildGroups) {
        groups.push_back(group->uuid);
    }
    Builder(project, document, "", groups, true, std::nullopt).buildAll();
    return folder / "build";
}

TEST(NativeExampleDocument, EveryNativeOutputPassesItsConsumer) {
    const auto build = buildExample();
    const std::vector<std::filesystem::path> swiftFiles{build / "swift" / "HarbourColors.swift",
                                                        build / "swift" / "HarbourUIColors.swift",
                                                        build / "swift" / "HarbourNSColors.swift"};
    const auto kotlin = build / "android" / "compose" / "HarbourColors.kt";
    const auto metal = build / "metal" / "HarbourColors.metal";
    const auto gl = build / "gl" / "harbour_colors.gl";
    const auto resources = build / "android" / "values" / "colors.xml";
    const auto catalog = build / "xcassets" / "Colors.xcassets";
    for (const auto& file : {swiftFiles[0], swiftFiles[1], swiftFiles[2], kotlin, metal, gl, resources, catalog}) {
        ASSERT_TRUE(std::filesystem::exists(file)) << file;
    }
    for (const auto& file : {swiftFiles[0], swiftFiles[1], swiftFiles[2], kotlin, metal, gl, resources}) {
        const std::string text = readText(file);
        EXPECT_EQ(text.find("failed"), std::string::npos) << file << "\n" << text;
    }

    const ToolResult compiled = compileMetalAsCpp(build, metal);
    EXPECT_EQ(compiled.status, 0) << compiled.output;

    // Every colour set of the catalog parses and has a light entry first.
    std::size_t colorSets = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(catalog)) {
        if (entry.path().extension() == ".colorset") {
            ++colorSets;
            const auto contents = nlohmann::json::parse(readText(entry.path() / "Contents.json"));
            EXPECT_FALSE(contents["colors"].at(0).contains("appearances")) << entry.path();
        }
    }
    EXPECT_GT(colorSets, 5u);

    if (hasTool("glslangValidator")) {
        const ToolResult validated = validateGLSL(build, "#version 330 core", readText(gl), "example");
        EXPECT_EQ(validated.status, 0) << validated.output;
    }
    if (hasTool("aapt")) {
        std::filesystem::create_directories(build / "apk" / "res" / "values");
        std::filesystem::copy_file(resources, build / "apk" / "res" / "values" / "colors.xml");
        writeText(build / "apk" / "AndroidManifest.xml",
                  "<manifest xmlns:android=\"http://schemas.android.com/apk/res/android\" package=\"com.example\"/>\n");
        const ToolResult packaged =
            runTool("aapt package -f -M " + shellQuoted((build / "apk" / "AndroidManifest.xml").string()) + " -S " +
                    shellQuoted((build / "apk" / "res").string()) + " -F " + shellQuoted((build / "apk" / "x.apk").string()));
        EXPECT_EQ(packaged.status, 0) << packaged.output;
    }
    const auto checker = syntaxChecker();
    if (!checker) {
        GTEST_SKIP() << "tree-sitter grammars not installed (cd tests/native && npm install)";
    }
    for (const auto& swift : swiftFiles) {
        const ToolResult parsed = checkSyntax(*checker, "swift", swift);
        EXPECT_EQ(parsed.status, 0) << parsed.output;
    }
    const ToolResult parsed = checkSyntax(*checker, "kotlin", kotlin);
    EXPECT_EQ(parsed.status, 0) << parsed.output;
}

}  // namespace
}  // namespace tintwork
