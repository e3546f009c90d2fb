#include <gtest/gtest.h>

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <nlohmann/json.hpp>

#include "export/Builder.h"
#include "import/ColorImporter.h"

namespace tintwork {
namespace {

using Json = nlohmann::json;

std::filesystem::path freshFolder(const std::string& name) {
    std::filesystem::path folder = std::filesystem::temp_directory_path() / "tintwork-import-build" / name;
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    return folder;
}

std::filesystem::path writeFile(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path) << text;
    return path;
}

std::string readFile(const std::filesystem::path& path) {
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

const char* const sampleTokens = R"({
  "Light": {
    "brand": {
      "primary": {"$type": "color", "$value": {"$colorSpace": {"$components": [0.2, 0.4, 0.6], "name": "srgb"},
                                                "$hex": "#336699FF"}},
      "ramp": {
        "100": {"$type": "color", "$value": {"$colorSpace": {"$components": [0.9, 0.9, 1], "name": "srgb"},
                                              "$hex": "#E6E6FFFF"}},
        "200": {"$type": "color", "$value": {"$colorSpace": {"$components": [0.5, 0.5, 1], "name": "srgb"},
                                              "$hex": "#8080FFFF"}},
        "300": {"$type": "color", "$value": {"$colorSpace": {"$components": [0.1, 0.1, 1], "name": "srgb"},
                                              "$hex": "#1A1AFFFF"}}
      }
    },
    "radius": {"$type": "number", "$value": 4}
  },
  "Dark": {
    "brand": {
      "primary": {"$type": "color", "$value": {"$colorSpace": {"$components": [0.8, 0.6, 0.4], "name": "srgb"},
                                                "$hex": "#CC9966FF"}}
    }
  }
})";

std::shared_ptr<OchreColorProject> projectWithGroups(int groups) {
    auto project = std::make_shared<OchreColorProject>();
    for (int i = 0; i < groups; ++i) {
        auto group = std::make_shared<BuildGroup>();
        group->uuid = "GROUP-" + std::to_string(i);
        BuildTask task;
        task.exportFileName = "tokens" + std::to_string(i);
        task.exportFileType = BuildFileType::jsonDesignToken;
        group->tasks.push_back(task);
        project->buildGroups.push_back(group);
    }
    project->items.push_back(std::make_shared<OchreColorProjectItem>("Old", "OLD", OchreColorItem{}));
    return project;
}

Builder makeBuilder(std::shared_ptr<OchreColorProject> project, const std::filesystem::path& folder) {
    std::vector<std::string> groups;
    for (const BuildGroupPtr& group : project->buildGroups) {
        groups.push_back(group->uuid);
    }
    return Builder(std::move(project), folder / "Settings.tintwork", "", groups, true, folder.string());
}

TEST(BuilderImport, ReplacesTheItemsAndAttachesThemToTheFirstBuildGroup) {
    std::filesystem::path folder = freshFolder("replace");
    Builder builder = makeBuilder(projectWithGroups(2), folder);
    builder.importColors(writeFile(folder / "colors.json", sampleTokens), false);

    ASSERT_EQ(builder.project->items.size(), 1u);
    const OchreColorProjectItem& root = *builder.project->items[0];
    EXPECT_EQ(root.name, "Design Tokens JSON Import - colors.json");
    ASSERT_EQ(root.group->items.size(), 2u);
    for (const ProjectItemPtr& child : root.group->items) {
        EXPECT_EQ(child->buildGroup, builder.project->buildGroups[0]) << child->name;
    }
    EXPECT_EQ(root.group->items[0]->group->items[0]->buildGroup, nullptr);

    builder.buildAll();
    EXPECT_TRUE(std::filesystem::exists(folder / "tokens0.json"));
    EXPECT_FALSE(std::filesystem::exists(folder / "tokens1.json"));

    // A failed import leaves the project as it was.
    EXPECT_THROW(builder.importColors(writeFile(folder / "bad.json", "{\"a\": [}"), false), DocumentColorParsingError);
    EXPECT_EQ(builder.project->items[0]->name, "Design Tokens JSON Import - colors.json");
}

TEST(BuilderImport, AutomaticHighContrastReachesEveryImportedItem) {
    std::filesystem::path folder = freshFolder("autohc");
    Builder builder = makeBuilder(projectWithGroups(1), folder);
    builder.importColors(writeFile(folder / "colors.json", sampleTokens), true);
    const OchreColorProjectItem& brand = *builder.project->items[0]->group->items[0];
    const OchreColorProjectItem& primary = *brand.group->items[0];
    EXPECT_EQ(primary.color->appearanceType, AppearanceType::lightDarkHighContrastAuto);
    EXPECT_TRUE(primary.color->color.lightVariantHighContrast);
    EXPECT_TRUE(primary.color->color.darkVariantHighContrast);
    const OchreColorProjectItem& ramp = *brand.group->items[1];
    EXPECT_EQ(ramp.colorSet->appearanceType, AppearanceType::highContrastAuto);
    EXPECT_TRUE(ramp.colorSet->colors[0].lightVariantHighContrast);

    builder.buildAll();
    Json output = Json::parse(readFile(folder / "tokens0.json"));
    EXPECT_TRUE(output.contains("High Contrast"));
    EXPECT_TRUE(output.contains("Dark High Contrast"));
}

// The executable's import-and-build flow, end to end.
struct RunResult {
    int status = -1;
    std::string output;
};

RunResult run(const std::string& arguments) {
    RunResult result;
    std::string command = std::string(TINTWORK_BINARY_DIR) + "/TintWorkCLI " + arguments + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) {
        return result;
    }
    std::array<char, 4096> buffer{};
    while (std::size_t read = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
        result.output.append(buffer.data(), read);
    }
    int status = pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

std::string settingsDocument(const std::string& tasks) {
    return R"(<?xml version="1.0" encoding="utf-8"?>
<tintwork>
  <project>
    <header><version>1.6</version><description/></header>
    <buildGroups>
      <buildGroup>
        <id>7C1B5E02-4F6A-4C29-9B8D-2B1E8A6F0C11</id>
        <name>Web</name>
        <tasks>)" + tasks + R"(</tasks>
      </buildGroup>
    </buildGroups>
  </project>
</tintwork>
)";
}

std::string task(const std::string& fileName, int fileType) {
    return "<task><name>" + fileName + "</name><id>" + fileName + "-ID</id><folder/><fileName>" + fileName +
           "</fileName><fileType>" + std::to_string(fileType) + "</fileType><nameTransform>4</nameTransform></task>";
}

class ImportAndBuildCommand : public ::testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(std::string(TINTWORK_BINARY_DIR) + "/TintWorkCLI")) {
            GTEST_SKIP() << "TintWorkCLI is not built";
        }
        folder = freshFolder(::testing::UnitTest::GetInstance()->current_test_info()->name());
        settings = writeFile(folder / "Settings.tintwork", settingsDocument(task("colors", 1) + task("tokens", 10)));
        output = folder / "out";
    }

    std::string arguments(const std::filesystem::path& json, const std::string& extra = "") const {
        return "-i '" + json.string() + "' -c '" + settings.string() + "' -o '" + output.string() + "'" + extra;
    }

    std::filesystem::path folder;
    std::filesystem::path settings;
    std::filesystem::path output;
};

TEST_F(ImportAndBuildCommand, BuildsTheImportedColours) {
    RunResult result = run(arguments(writeFile(folder / "colors.json", sampleTokens)));
    EXPECT_EQ(result.output, "Build Completed Successfully\n");
    EXPECT_EQ(result.status, 0);
    std::string css = readFile(output / "colors.css");
    EXPECT_NE(css.find("primary"), std::string::npos) << css;
    Json tokens = Json::parse(readFile(output / "tokens.json"));
    EXPECT_EQ(tokens["Light"], Json::parse(sampleTokens)["Light"]);
}

TEST_F(ImportAndBuildCommand, ReportsBadInputAndWritesNothing) {
    RunResult invalid = run(arguments(writeFile(folder / "broken.json", "{\"a\": ")));
    EXPECT_EQ(invalid.status, 1);
    EXPECT_EQ(invalid.output.rfind("Error building broken.json is not valid JSON: parse error at line 1", 0), 0u)
        << invalid.output;
    RunResult missing = run(arguments(folder / "missing.json"));
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.output.rfind("Error building ", 0), 0u) << missing.output;
    EXPECT_FALSE(std::filesystem::exists(output));
}

TEST_F(ImportAndBuildCommand, SucceedsWithASettingsDocumentWithoutBuildGroups) {
    settings = writeFile(folder / "Empty.tintwork",
                         "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<tintwork><project/></tintwork>\n");
    RunResult result = run(arguments(writeFile(folder / "colors.json", sampleTokens), " -autohc TRUE"));
    EXPECT_EQ(result.output, "Build Completed Successfully\n");
    EXPECT_EQ(result.status, 0);
}

}  // namespace
}  // namespace tintwork
