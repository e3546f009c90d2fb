// Generates Design Tokens files of a given number of colour tokens (half light, half
// dark, in integer-named ramps of ten that import as colour sets), then runs the
// executable's import-and-build flow on each and prints its wall time and peak memory.
//
//   import_bench [tokens...]         default: 1000 10000 100000
//   import_bench --generate N file   only writes the Design Tokens file

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "ToolRun.h"

namespace {

using tintwork::bench::RunResult;
using tintwork::bench::runTool;

constexpr int rampLength = 10;

std::string hexByte(unsigned value) {
    static const char digits[] = "0123456789ABCDEF";
    return {digits[(value >> 4) & 0xF], digits[value & 0xF]};
}

// One appearance tree of `ramps` groups, each with members "100" to "1000".
void writeTree(std::ostream& out, int ramps, bool dark) {
    out << "{\n";
    for (int ramp = 0; ramp < ramps; ++ramp) {
        out << "    \"hue-" << ramp << "\": {\n";
        for (int step = 1; step <= rampLength; ++step) {
            unsigned seed = static_cast<unsigned>(ramp * 7919 + step * 104729) * 2654435761u;
            unsigned red = (seed >> 8) & 0xFF;
            unsigned green = (seed >> 16) & 0xFF;
            unsigned blue = dark ? 255 - step * 20 : step * 20;
            char components[96];
            std::snprintf(components, sizeof components, "%.4g, %.4g, %.4g", red / 255.0, green / 255.0, blue / 255.0);
            out << "      \"" << step * 100 << "\": {\"$type\": \"color\", \"$value\": {\"$colorSpace\": "
                << "{\"name\": \"srgb\", \"$components\": [" << components << "]}, \"$hex\": \"#" << hexByte(red)
                << hexByte(green) << hexByte(blue) << "FF\"}}" << (step < rampLength ? "," : "") << "\n";
        }
        out << "    }" << (ramp + 1 < ramps ? "," : "") << "\n";
    }
    out << "  }";
}

void writeTokens(const std::filesystem::path& path, int tokens) {
    const int ramps = std::max(1, tokens / (2 * rampLength));
    std::ofstream out(path);
    out << "{\n  \"Light\": ";
    writeTree(out, ramps, false);
    out << ",\n  \"Dark\": ";
    writeTree(out, ramps, true);
    out << "\n}\n";
}

// A settings document with one build group holding one CSS task.
void writeSettings(const std::filesystem::path& path) {
    std::ofstream(path) << R"(<?xml version="1.0" encoding="utf-8"?>
<tintwork>
  <project>
    <header>
      <version>1.6</version>
      <description/>
    </header>
    <buildGroups>
      <buildGroup>
        <id>7C1B5E02-4F6A-4C29-9B8D-2B1E8A6F0C11</id>
        <name>Web</name>
        <tasks>
          <task>
            <name>CSS</name>
            <id>0D3F6A9E-8B7C-4E21-A5D4-6C2B9E1F7A30</id>
            <folder/>
            <fileName>colors</fileName>
            <fileType>1</fileType>
            <nameTransform>4</nameTransform>
          </task>
        </tasks>
      </buildGroup>
    </buildGroups>
  </project>
</tintwork>
)";
}

RunResult runImportedBuild(const std::filesystem::path& json, const std::filesystem::path& settings,
                           const std::filesystem::path& outputFolder) {
    return runTool({TINTWORK_CLI_PATH, "-i", json.string(), "-c", settings.string(), "-o",
                    outputFolder.string()}, outputFolder / "run.log");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 4 && std::string(argv[1]) == "--generate") {
        writeTokens(argv[3], std::atoi(argv[2]));
        return 0;
    }
    std::vector<int> sizes;
    for (int i = 1; i < argc; ++i) {
        sizes.push_back(std::atoi(argv[i]));
    }
    if (sizes.empty()) {
        sizes = {1000, 10000, 100000};
    }
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "tintwork-import-bench";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    const std::filesystem::path settings = folder / "Settings.tintwork";
    writeSettings(settings);

    int failures = 0;
    std::printf("%-28s %12s %12s %14s\n", "case", "file (KB)", "wall (s)", "peak RSS (MB)");
    for (int tokens : sizes) {
        const std::filesystem::path json = folder / ("tokens-" + std::to_string(tokens) + ".json");
        const std::filesystem::path output = folder / ("out-" + std::to_string(tokens));
        writeTokens(json, tokens);
        std::filesystem::create_directories(output);
        RunResult result = runImportedBuild(json, settings, output);
        const std::string name = "ImportAndBuildCSS/" + std::to_string(tokens);
        if (!result.succeeded) {
            std::printf("%-28s failed: %s\n", name.c_str(), result.output.c_str());
            ++failures;
            continue;
        }
        std::printf("%-28s %12.0f %12.3f %14.1f\n", name.c_str(),
                    static_cast<double>(std::filesystem::file_size(json)) / 1024.0, result.seconds,
                    static_cast<double>(result.peakKilobytes) / 1024.0);
    }
    std::filesystem::remove_all(folder);
    return failures == 0 ? 0 : 1;
}
