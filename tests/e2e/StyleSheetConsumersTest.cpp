// Builds the test document's style sheets with TintWorkCLI and hands them to sass,
// less and headless Chromium, which must compute the document's colours, shadows and
// numbers for light, dark and both high-contrast preferences.

#include <sys/wait.h>

#include <cstdio>
#include <filesystem>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "../export/ExportTestDocument.h"
#include "file/OchreColorFileWriter.h"

namespace tintwork {
namespace {

using namespace tintwork::testing;
using nlohmann::json;

constexpr int skipStatus = 77;

struct CommandResult {
    int status = -1;
    std::string output;
};

// Runs a shell command line in `folder`, capturing standard output and error together.
CommandResult run(const std::filesystem::path& folder, const std::string& commandLine) {
    CommandResult result;
    const std::string command = "cd '" + folder.string() + "' && " + commandLine + " 2>&1";
    FILE* pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return result;
    }
    char buffer[4096];
    while (std::fgets(buffer, sizeof buffer, pipe) != nullptr) {
        result.output += buffer;
    }
    const int status = ::pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

json colour(const std::string& space, double red, double green, double blue, double alpha = 1.0) {
    return {{"space", space}, {"rgb", {red, green, blue}}, {"alpha", alpha}};
}

json srgbColour(double red, double green, double blue) {
    return colour("srgb", red, green, blue);
}

json everyMode(const json& light, const json& dark, const json& lightHighContrast, const json& darkHighContrast) {
    return {{"light", light}, {"dark", dark}, {"lightHighContrast", lightHighContrast}, {"darkHighContrast", darkHighContrast}};
}

// What Chromium must compute from every sheet of the document. With `withP3` the
// Display P3 accent is checked too (the hex form marks it with a "p3: " prefix instead).
json expectations(bool withP3) {
    json checks = json::array();
    auto check = [&](const std::string& property, const std::string& css, json expect, const char* wrap = nullptr) {
        json entry = {{"property", property}, {"css", css}, {"expect", std::move(expect)}};
        if (wrap) {
            entry["wrap"] = wrap;
        }
        checks.push_back(std::move(entry));
    };
    check("--brand-primary", "color",
          everyMode(srgbColour(0, 0.4, 0.8), srgbColour(0.4, 0.6, 1), srgbColour(0, 0.2, 0.6), srgbColour(0.6, 0.8, 1)));
    check("--link", "color",
          everyMode(srgbColour(0, 0.4, 0.8), srgbColour(0.4, 0.6, 1), srgbColour(0, 0.2, 0.6), srgbColour(0.6, 0.8, 1)));
    // A member without high-contrast variants keeps its light and dark values.
    check("--brand-grey-100", "color",
          everyMode(srgbColour(0.9, 0.9, 0.9), srgbColour(0.1, 0.1, 0.1), srgbColour(0.9, 0.9, 0.9),
                    srgbColour(0.1, 0.1, 0.1)));
    const json grey = srgbColour(0.6, 0.6, 0.6);
    check("--brand-grey-200", "color", everyMode(grey, grey, grey, grey));
    if (withP3) {
        const json accent = colour("display-p3", 1, 0.2, 0.4);
        check("--brand-accent", "color", everyMode(accent, accent, accent, accent));
    }
    const json cardLight = {{"contains", "0px 8px 16px 0px"}};
    const json cardDark = {{"contains", "0px 4px 12px 2px"}};
    check("--card", "box-shadow", everyMode(cardLight, cardDark, cardLight, cardDark));
    check("--corner-radius", "border-radius",
          everyMode({{"contains", "8px"}}, {{"contains", "6px"}}, {{"contains", "8px"}}, {{"contains", "6px"}}),
          "calc(VALUE * 1px)");
    check("--font-family", "font-family",
          everyMode({{"contains", "Inter"}}, {{"contains", "Inter"}}, {{"contains", "Atkinson Hyperlegible"}},
                    {{"contains", "Inter"}}));
    return checks;
}

TEST(StyleSheetConsumers, BuiltSheetsCompileAndComputeInChromium) {
    const std::filesystem::path executable = std::filesystem::path(TINTWORK_BINARY_DIR) / "TintWorkCLI";
    const std::filesystem::path script = std::filesystem::path(TINTWORK_SOURCE_DIR) / "tests/e2e/check-style-sheets.js";
    if (!std::filesystem::exists(executable)) {
        GTEST_SKIP() << "TintWorkCLI has not been built";
    }
    if (run(".", "node --version").status != 0) {
        GTEST_SKIP() << "node is not installed";
    }

    auto document = makeTestDocument();
    struct Sheet {
        BuildFileType type;
        const char* fileName;
        const char* language;
        bool lightDark;
        std::optional<BuildExportFormat> format;
    };
    const Sheet sheets[] = {
        {BuildFileType::css, "tokens", "css", false, std::nullopt},
        {BuildFileType::css, "tokens-hex", "css", false, BuildExportFormat::cssHex},
        {BuildFileType::css, "tokens-pairs", "css", true, std::nullopt},
        {BuildFileType::css, "tokens-pairs-hex", "css", true, BuildExportFormat::cssHex},
        {BuildFileType::scss, "tokens", "scss", false, std::nullopt},
        {BuildFileType::scss, "tokens-pairs", "scss", true, BuildExportFormat::cssRGBA},
        {BuildFileType::less, "tokens", "less", false, std::nullopt},
        {BuildFileType::less, "tokens-pairs", "less", true, BuildExportFormat::cssHex},
    };
    json plan = {{"sheets", json::array()}};
    const auto folder = freshFolder("e2e");
    for (const auto& sheet : sheets) {
        auto buildTask = task(sheet.fileName, sheet.type, sheet.fileName);
        buildTask.exportFileFolder = "styles";
        buildTask.exportFormat = sheet.format;
        if (sheet.lightDark) {
            buildTask.customData["appearanceColorType"] = "lightDark";
        }
        document.web->tasks.push_back(buildTask);
        const bool withP3 = sheet.format != BuildExportFormat::cssHex && sheet.format != BuildExportFormat::cssRGBA;
        plan["sheets"].push_back({{"file", (folder / "styles" / buildTask.exportFileNameWithExtension()).string()},
                                  {"language", sheet.language},
                                  {"checks", expectations(withP3)}});
    }
    writeText(folder / "Acme.tintwork", OchreColorFileWriter().write(*document.project));
    writeText(folder / "checks.json", plan.dump(2));

    const auto build = run(folder, "'" + executable.string() + "' -b Acme.tintwork");
    ASSERT_EQ(build.status, 0) << build.output;
    EXPECT_EQ(build.output, "Build Completed Successfully\n");

    const auto check = run(std::filesystem::path(TINTWORK_SOURCE_DIR) / "tests/e2e",
                           "node '" + script.string() + "' '" + (folder / "checks.json").string() + "'");
    if (check.status == skipStatus) {
        GTEST_SKIP() << check.output;
    }
    EXPECT_EQ(check.status, 0) << check.output;
}

// Strings and names that each break some output language when written as they stand:
// quotes of both kinds, backslashes, line feeds, "#{" and "@{" (interpolation in SCSS
// and LESS), comment marks, a CSS-wide keyword, NUL (from a JSON key and value) and
// non-ASCII text. Imported from Design Tokens JSON, built into every style sheet, each
// must compile and Chromium must read back exactly the value under exactly the name
// (NUL, which CSS cannot hold, reads back as U+FFFD).
TEST(StyleSheetConsumers, AwkwardStringsAndNamesReadBackExactly) {
    const std::filesystem::path executable = std::filesystem::path(TINTWORK_BINARY_DIR) / "TintWorkCLI";
    const std::filesystem::path script = std::filesystem::path(TINTWORK_SOURCE_DIR) / "tests/e2e/check-style-sheets.js";
    if (!std::filesystem::exists(executable)) {
        GTEST_SKIP() << "TintWorkCLI has not been built";
    }
    if (run(".", "node --version").status != 0) {
        GTEST_SKIP() << "node is not installed";
    }
    struct Case {
        std::string key;
        std::string value;
        std::string property;
        std::string readBack;
    };
    const std::string nul(1, '\0');
    const std::string replacement = "\xEF\xBF\xBD";
    const std::vector<Case> cases = {
        {"Font Stack", "\"Helvetica Neue\", Arial, sans-serif", "--font-stack", "\"Helvetica Neue\", Arial, sans-serif"},
        {"Plain", "Inter", "--plain", "Inter"},
        {"Backslash", "C:\\", "--backslash", "C:\\"},
        {"Two Lines", "one\ntwo", "--two-lines", "one\ntwo"},
        {"Interpolation", "#{1+1} @{x} $y", "--interpolation", "#{1+1} @{x} $y"},
        {"Comment", "a */ b /* c", "--comment", "a */ b /* c"},
        {"Swift Raw", "say \"#hi\"#", "--swift-raw", "say \"#hi\"#"},
        {"Both Quotes", "it's \"x\"", "--both-quotes", "it's \"x\""},
        {"Semicolon", "a; b} c", "--semicolon", "a; b} c"},
        {"Keyword", "inherit", "--keyword", "inherit"},
        {"Unicode", "gr\xC3\xBC\xC3\x9F" "e \xE2\x80\x94 \xE2\x9C\x93", "--unicode", "gr\xC3\xBC\xC3\x9F" "e \xE2\x80\x94 \xE2\x9C\x93"},
        {"Nul" + nul + "Key", "a" + nul + "b", "--nul-key", "a" + replacement + "b"},
        {"Gr\xC3\xBCn Ton", "green", "--gr\xC3\xBCn-ton", "green"},
        {"50% (Half)", "half", "--50%-(half)", "half"},
        {"Quote\"Name", "q", "--quote\"name", "q"},
    };
    json tokens = json::object();
    json checks = json::array();
    for (const Case& entry : cases) {
        tokens[entry.key] = {{"$value", entry.value}};
        const json expected = {{"string", entry.readBack}};
        checks.push_back({{"property", entry.property}, {"css", "custom"},
                          {"expect", everyMode(expected, expected, expected, expected)}});
    }

    auto document = makeTestDocument();
    document.web->tasks.clear();
    const auto folder = freshFolder("e2e-awkward");
    json plan = {{"sheets", json::array()}};
    const std::pair<BuildFileType, const char*> types[] = {
        {BuildFileType::css, "css"}, {BuildFileType::scss, "scss"}, {BuildFileType::less, "less"}};
    for (const auto& [type, language] : types) {
        for (const bool lightDark : {false, true}) {
            const std::string fileName = std::string("awkward-") + language + (lightDark ? "-pairs" : "");
            auto buildTask = task(fileName, type, fileName);
            buildTask.exportFileFolder = "styles";
            if (lightDark) {
                buildTask.customData["appearanceColorType"] = "lightDark";
            }
            document.web->tasks.push_back(buildTask);
            plan["sheets"].push_back({{"file", (folder / "styles" / buildTask.exportFileNameWithExtension()).string()},
                                      {"language", language},
                                      {"checks", checks}});
        }
    }
    writeText(folder / "Settings.tintwork", OchreColorFileWriter().write(*document.project));
    writeText(folder / "tokens.json", tokens.dump(2));
    writeText(folder / "checks.json", plan.dump(2));

    const auto build = run(folder, "'" + executable.string() + "' -i tokens.json -c Settings.tintwork");
    ASSERT_EQ(build.status, 0) << build.output;

    const auto check = run(std::filesystem::path(TINTWORK_SOURCE_DIR) / "tests/e2e",
                           "node '" + script.string() + "' '" + (folder / "checks.json").string() + "'");
    if (check.status == skipStatus) {
        GTEST_SKIP() << check.output;
    }
    EXPECT_EQ(check.status, 0) << check.output;
}

}  // namespace
}  // namespace tintwork
