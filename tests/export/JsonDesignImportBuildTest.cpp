#include <gtest/gtest.h>

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <nlohmann/json.hpp>


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

std::string buildGroup(const std::string& id, const std::string& tasks) {
    return "<buildGroup><id>" + id + "</id><name>" + id + "</name><tasks>" + tasks + "</tasks></buildGroup>";
}

std::string settingsDocument(const std::string& groups) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<tintwork><project><header><version>1.6</version></header>"
           "<buildGroups>" + groups + "</buildGroups></project></tintwork>\n";
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
        // Imported colours all go to the first group, so the second one has nothing to build.
        settings = writeFile(folder / "Settings.tintwork",
                             settingsDocument(buildGroup("WEB", task("colors", 1) + task("tokens", 10)) +
                                              buildGroup("OTHER", task("other", 1))));
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
    EXPECT_FALSE(std::filesystem::exists(output / "other.css"));
    // Exporting what was imported gives the tokens back.
    Json input = Json::parse(sampleTokens);
    Json tokens = Json::parse(readFile(output / "tokens.json"));
    EXPECT_EQ(tokens["Light"], input["Light"]);
    EXPECT_EQ(tokens["Dark"]["brand"]["primary"], input["Dark"]["brand"]["primary"]);
    EXPECT_FALSE(tokens.contains("High Contrast"));
}

TEST_F(ImportAndBuildCommand, GeneratesHighContrastVariantsOnRequest) {
    RunResult result = run(arguments(writeFile(folder / "colors.json", sampleTokens), " -autohc True"));
    EXPECT_EQ(result.status, 0) << result.output;
    Json tokens = Json::parse(readFile(output / "tokens.json"));
    // Members of imported groups and sets get them too; the dark one only where there is a dark variant.
    EXPECT_TRUE(tokens["High Contrast"]["brand"]["ramp"].contains("300"));
    EXPECT_TRUE(tokens["Dark High Contrast"]["brand"].contains("primary"));
    EXPECT_FALSE(tokens["Dark High Contrast"]["brand"]["ramp"].contains("300"));
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
    settings = writeFile(folder / "Empty.tintwork", settingsDocument(""));
    RunResult result = run(arguments(writeFile(folder / "colors.json", sampleTokens), " -autohc TRUE"));
    EXPECT_EQ(result.output, "Build Completed Successfully\n");
    EXPECT_EQ(result.status, 0);
}

}  // namespace
}  // namespace tintwork
