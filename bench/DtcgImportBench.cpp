// Imports generated token files of the standard format (three in five tokens plain
// colours in sRGB, OKLCH and Display P3, two in five references to them) and builds
// them to CSS through `tintwork build --tokens F --tokens-format dtcg`; beside each, the
// same number of colours in the program's own dialect through the dialect's reader.
// Prints wall time and peak memory of every run.
//
//   dtcg_import_bench [tokens...]   default: 1000 10000 100000

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

double unit(unsigned seed) {
    return static_cast<double>(seed % 1000) / 1000.0;
}

// One standard file: ramps of plain colours, then semantic groups of references to them.
void writeStandard(const std::filesystem::path& path, int tokens) {
    const int plain = tokens * 3 / 5;
    const int ramps = std::max(1, plain / rampLength);
    std::ofstream out(path);
    out << "{\n  \"palette\": {\n    \"$type\": \"color\"";
    for (int ramp = 0; ramp < ramps; ++ramp) {
        out << ",\n    \"hue-" << ramp << "\": {";
        for (int step = 0; step < rampLength; ++step) {
            const unsigned seed = static_cast<unsigned>(ramp * 7919 + step * 104729) * 2654435761u;
            char value[160];
            switch (step % 3) {
                case 0:
                    std::snprintf(value, sizeof value,
                                  "{\"colorSpace\": \"srgb\", \"components\": [%.4f, %.4f, %.4f], \"hex\": \"#808080\"}",
                                  unit(seed), unit(seed >> 8), unit(seed >> 16));
                    break;
                case 1:
                    std::snprintf(value, sizeof value, "{\"colorSpace\": \"oklch\", \"components\": [%.4f, %.4f, %.2f]}",
                                  unit(seed), unit(seed >> 8) * 0.3, unit(seed >> 16) * 359);
                    break;
                default:
                    std::snprintf(value, sizeof value,
                                  "{\"colorSpace\": \"display-p3\", \"components\": [%.4f, %.4f, %.4f], \"alpha\": 0.5}",
                                  unit(seed), unit(seed >> 8), unit(seed >> 16));
                    break;
            }
            out << (step == 0 ? "\n" : ",\n") << "      \"" << (step + 1) * 100 << "\": {\"$value\": " << value << "}";
        }
        out << "\n    }";
    }
    out << "\n  },\n  \"semantic\": {\n    \"$type\": \"color\"";
    const int references = tokens - ramps * rampLength;
    for (int i = 0; i < references; ++i) {
        if (i % rampLength == 0) {
            out << (i == 0 ? "" : "\n    }") << ",\n    \"role-" << i / rampLength << "\": {";
        }
        const int target = (i * 7) % (ramps * rampLength);
        out << (i % rampLength == 0 ? "\n" : ",\n") << "      \"state-" << i % rampLength << "\": {\"$value\": \"{palette.hue-"
            << target / rampLength << "." << (target % rampLength + 1) * 100 << "}\"}";
    }
    out << (references > 0 ? "\n    }" : "") << "\n  }\n}\n";
}

// The same number of plain colours in the dialect, whose reader has no references.
void writeDialect(const std::filesystem::path& path, int tokens) {
    std::ofstream out(path);
    out << "{\n";
    for (int i = 0; i < tokens; ++i) {
        const unsigned seed = static_cast<unsigned>(i * 104729) * 2654435761u;
        out << (i == 0 ? "" : ",\n") << "  \"color-" << i << "\": {\"$type\": \"color\", \"$value\": {\"$colorSpace\": "
            << "{\"name\": \"srgb\", \"$components\": [" << unit(seed) << ", " << unit(seed >> 8) << ", "
            << unit(seed >> 16) << "]}}}";
    }
    out << "\n}\n";
}

void writeSettings(const std::filesystem::path& path) {
    std::ofstream(path) << R"(<?xml version="1.0" encoding="utf-8"?>
<tintwork>
  <project>
    <header>
      <version>1.6</version>
    </header>
    <buildGroups>
      <buildGroup>
        <id>G</id>
        <name>Web</name>
        <tasks>
          <task>
            <name>CSS</name>
            <id>T</id>
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

}  // namespace

int main(int argc, char** argv) {
    std::vector<int> sizes;
    for (int i = 1; i < argc; ++i) {
        sizes.push_back(std::atoi(argv[i]));
    }
    if (sizes.empty()) {
        sizes = {1000, 10000, 100000};
    }
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "tintwork-dtcg-bench";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    const std::filesystem::path settings = folder / "Settings.tintwork";
    writeSettings(settings);

    int failures = 0;
    std::printf("%-24s %10s %10s %10s %14s\n", "case", "file (KB)", "wall (s)", "CPU (s)", "peak RSS (MB)");
    for (int tokens : sizes) {
        struct Case {
            const char* name;
            const char* format;
            void (*write)(const std::filesystem::path&, int);
        };
        for (const Case& c : {Case{"Standard", "dtcg", writeStandard}, Case{"Dialect", "dialect", writeDialect}}) {
            const std::string name = std::string(c.name) + "/" + std::to_string(tokens);
            const std::filesystem::path json = folder / (std::string(c.format) + "-" + std::to_string(tokens) + ".json");
            const std::filesystem::path output = folder / ("out-" + std::string(c.format) + "-" + std::to_string(tokens));
            c.write(json, tokens);
            std::filesystem::create_directories(output);
            RunResult result = runTool({TINTWORK_COMMAND_PATH, "build", settings.string(), "--tokens", json.string(),
                                        "--tokens-format", c.format, "-o", output.string()},
                                       output / "run.log");
            if (!result.succeeded) {
                std::printf("%-24s failed: %s\n", name.c_str(), result.output.c_str());
                ++failures;
                continue;
            }
            std::printf("%-24s %10.0f %10.3f %10.3f %14.1f\n", name.c_str(),
                        static_cast<double>(std::filesystem::file_size(json)) / 1024.0, result.seconds,
                        result.cpuSeconds, static_cast<double>(result.peakKilobytes) / 1024.0);
        }
    }
    std::filesystem::remove_all(folder);
    return failures == 0 ? 0 : 1;
}
