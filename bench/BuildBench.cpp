// Generates .tintwork documents of a given number of colours (groups of 100 that
// provide namespaces, every colour with dark and both high-contrast variants, one
// alias in ten) with one CSS build task, then builds each with the executable and
// prints its wall time and peak memory.
//
//   build_bench [colours...]          default: 1000 10000 100000
//   build_bench --generate N file     only writes the document

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "file/OchreColorFileWriter.h"
#include "model/Project.h"

#include "ToolRun.h"

namespace {

using tintwork::bench::RunResult;
using tintwork::bench::runTool;

using namespace tintwork;

constexpr int groupSize = 100;

// A deterministic colour for index i; `shift` moves it for the other appearances.
ColorValue sampleColor(int i, double shift) {
    const unsigned seed = static_cast<unsigned>(i) * 2654435761u;
    auto channel = [&](int bits) { return ((seed >> bits) & 0xFF) / 255.0; };
    auto clamp = [](double v) { return v < 0 ? 0 : (v > 1 ? 1 : v); };
    return ColorValue(ColorEncoding::sRGB, clamp(channel(8) + shift), clamp(channel(16) + shift),
                      clamp(channel(24) + shift), 1.0);
}

// Group and item identifiers: fixed UUID shapes numbered by position.
std::string identifier(unsigned kind, int index) {
    char text[40];
    std::snprintf(text, sizeof text, "%08X-0000-4000-8000-%012X", kind, index);
    return text;
}

OchreColorProject generateDocument(int colours) {
    OchreColorProject project;
    auto web = std::make_shared<BuildGroup>();
    web->uuid = identifier(1, 0);
    web->name = "Web";
    BuildTask css;
    css.name = "CSS";
    css.uuid = identifier(2, 0);
    css.exportFileName = "colors";
    css.exportFileType = BuildFileType::css;
    css.nameTransform = BuildNameTransform::kebabCase;
    web->tasks.push_back(css);
    project.buildGroups.push_back(web);

    for (int start = 0; start < colours; start += groupSize) {
        OchreColorGroup group;
        group.providesNamespace = true;
        for (int i = start; i < std::min(colours, start + groupSize); ++i) {
            const std::string name = "Colour " + std::to_string(i - start + 1);
            if (i % 10 == 9) {
                OchreColorAlias alias;
                alias.aliasTypes[0] = AliasSetType::item(identifier(4, i - 1));
                group.items.push_back(std::make_shared<OchreColorProjectItem>(name, identifier(4, i), alias));
                continue;
            }
            OchreColorItem item;
            item.appearanceType = AppearanceType::lightDarkHighContrast;
            item.color.name = name;
            item.color.lightVariant = sampleColor(i, 0);
            item.color.darkVariant = sampleColor(i, -0.3);
            item.color.lightVariantHighContrast = sampleColor(i, -0.15);
            item.color.darkVariantHighContrast = sampleColor(i, -0.45);
            group.items.push_back(std::make_shared<OchreColorProjectItem>(name, identifier(4, i), item));
        }
        auto groupItem = std::make_shared<OchreColorProjectItem>("Palette " + std::to_string(start / groupSize + 1),
                                                                 identifier(3, start / groupSize), group);
        groupItem->buildGroup = web;
        project.items.push_back(groupItem);
    }
    return project;
}

void writeDocument(const std::filesystem::path& path, int colours) {
    std::ofstream(path, std::ios::binary) << OchreColorFileWriter().write(generateDocument(colours));
}

RunResult runBuild(const std::filesystem::path& document, const std::filesystem::path& outputFolder) {
    return runTool({TINTWORK_CLI_PATH, "-b", document.string(), "-o", outputFolder.string()}, outputFolder / "run.log");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 4 && std::string(argv[1]) == "--generate") {
        writeDocument(argv[3], std::atoi(argv[2]));
        return 0;
    }
    std::vector<int> sizes;
    for (int i = 1; i < argc; ++i) {
        sizes.push_back(std::atoi(argv[i]));
    }
    if (sizes.empty()) {
        sizes = {1000, 10000, 100000};
    }
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "tintwork-build-bench";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);

    int failures = 0;
    std::printf("%-22s %14s %12s %12s %14s\n", "case", "document (KB)", "CSS (KB)", "wall (s)", "peak RSS (MB)");
    for (int colours : sizes) {
        const std::filesystem::path document = folder / ("colors-" + std::to_string(colours) + ".tintwork");
        const std::filesystem::path output = folder / ("out-" + std::to_string(colours));
        writeDocument(document, colours);
        std::filesystem::create_directories(output);
        const RunResult result = runBuild(document, output);
        const std::string name = "BuildCSS/" + std::to_string(colours);
        if (!result.succeeded) {
            std::printf("%-22s failed: %s\n", name.c_str(), result.output.c_str());
            ++failures;
            continue;
        }
        std::printf("%-22s %14.0f %12.0f %12.3f %14.1f\n", name.c_str(),
                    static_cast<double>(std::filesystem::file_size(document)) / 1024.0,
                    static_cast<double>(std::filesystem::file_size(output / "colors.css")) / 1024.0, result.seconds,
                    static_cast<double>(result.peakKilobytes) / 1024.0);
    }
    std::filesystem::remove_all(folder);
    return failures == 0 ? 0 : 1;
}
