// Replays files (or every file under folders) through a fuzz target when
// libFuzzer is not linked, so seeds and past crashes run as ordinary tests.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {
int replayFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::vector<char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    return 1;
}
}  // namespace

int main(int argc, char** argv) {
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        std::filesystem::path path(argv[i]);
        std::error_code error;
        if (std::filesystem::is_directory(path, error)) {
            for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
                if (entry.is_regular_file()) {
                    count += replayFile(entry.path());
                }
            }
        } else if (std::filesystem::exists(path, error)) {
            count += replayFile(path);
        }
    }
    // Also exercise the empty input, which every parser must survive.
    LLVMFuzzerTestOneInput(nullptr, 0);
    std::printf("replayed %d inputs\n", count);
    return 0;
}
