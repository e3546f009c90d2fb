// Generates Figma documents of a given number of nodes and imports each in a child
// process, printing the file size, the import's wall and CPU time and its peak resident memory.
//
//   figma_bench [nodes [palette]]   default: 100000 nodes, 1000 distinct colours

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <algorithm>
#include <string>
#include <vector>

#include "KiwiFixtures.h"
#include "import/FigmaImporter.h"

namespace {

using tintwork::testing::FigmaNode;
using tintwork::testing::RGBA;

RGBA paletteColor(int index, int palette) {
    const unsigned seed = static_cast<unsigned>(index % palette) * 2654435761u;
    return {static_cast<float>((seed >> 8) & 0xFF) / 255.0f, static_cast<float>((seed >> 16) & 0xFF) / 255.0f,
            static_cast<float>((seed >> 24) & 0xFF) / 255.0f, 1.0f};
}

std::filesystem::path writeDocument(const std::filesystem::path& folder, int nodes, int palette) {
    std::vector<FigmaNode> document;
    document.reserve(static_cast<std::size_t>(nodes));
    for (int i = 0; i < nodes; ++i) {
        FigmaNode node;
        node.name = "Rectangle " + std::to_string(i);
        node.fills = {paletteColor(i, palette)};
        node.background = paletteColor(i * 7 + 3, palette);
        if (i == 0) {
            node.profile = 1;
        }
        document.push_back(std::move(node));
    }
    const std::string canvas = tintwork::testing::makeCanvas(
        48, tintwork::testing::deflateRaw(tintwork::testing::encodeSchema(tintwork::testing::figmaLikeSchema())),
        tintwork::testing::zstdCompress(tintwork::testing::encodeFigmaMessage(document)));
    const std::filesystem::path path = folder / ("figma-" + std::to_string(nodes) + ".fig");
    tintwork::testing::writeZip(path, {{"canvas.fig", canvas}});
    return path;
}

}  // namespace

int main(int argc, char** argv) {
    const int nodes = argc > 1 ? std::atoi(argv[1]) : 100000;
    const int palette = argc > 2 ? std::atoi(argv[2]) : 1000;
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "tintwork-figma-bench";
    std::filesystem::create_directories(folder);
    const std::filesystem::path path = writeDocument(folder, nodes, std::max(1, palette));

    const auto start = std::chrono::steady_clock::now();
    const pid_t pid = fork();
    if (pid == 0) {
        tintwork::OchreColorProjectItem group("Figma Import", "BENCH", tintwork::OchreColorGroup{});
        tintwork::FigmaImporter importer;
        importer.diagnostics = [](std::string_view) {};
        importer.importColors(path, group);
        _exit(group.group->items.size() == static_cast<std::size_t>(std::min(nodes, palette)) ? 0 : 1);
    }
    int status = 0;
    rusage usage{};
    wait4(pid, &status, 0, &usage);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const bool succeeded = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    const double cpuSeconds = static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
                              static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;

    std::printf("%-28s %12s %12s %12s %14s\n", "case", "file (KB)", "wall (s)", "CPU (s)", "peak RSS (MB)");
    const std::string name = "FigmaImport/" + std::to_string(nodes);
    if (!succeeded) {
        std::printf("%-28s failed\n", name.c_str());
    } else {
        std::printf("%-28s %12.0f %12.3f %12.3f %14.1f\n", name.c_str(),
                    static_cast<double>(std::filesystem::file_size(path)) / 1024.0, seconds, cpuSeconds,
                    static_cast<double>(usage.ru_maxrss) / 1024.0);
    }
    std::filesystem::remove_all(folder);
    return succeeded ? 0 : 1;
}
