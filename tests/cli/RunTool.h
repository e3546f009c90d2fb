#pragma once
// Runs the real executable and captures what it prints and its exit status.

#include <filesystem>
#include <string>
#include <vector>

namespace tintwork::testing {

struct ToolRun {
    int status = -1;
    std::string out;
    std::string err;
    // Peak resident memory of the run.
    long peakKilobytes = 0;
};

// Runs TintWorkCLI with `args` in `workingDirectory` (the current one when empty).
ToolRun runTool(const std::vector<std::string>& args, const std::filesystem::path& workingDirectory = {});
// Runs the tintwork command likewise.
ToolRun runTintwork(const std::vector<std::string>& args, const std::filesystem::path& workingDirectory = {});
// Runs any program likewise; a non-zero `addressSpaceLimit` caps the bytes of memory
// the program may map, so a run that tries to hold too much fails instead of swapping.
ToolRun runProgram(const std::string& executable, const std::vector<std::string>& args,
                   const std::filesystem::path& workingDirectory = {}, unsigned long long addressSpaceLimit = 0);

// A fresh empty folder under the system's temporary folder, removed on destruction.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    const std::filesystem::path& path() const { return folder; }

private:
    std::filesystem::path folder;
};

std::string readText(const std::filesystem::path& path);
void writeText(const std::filesystem::path& path, const std::string& text);

}  // namespace tintwork::testing
