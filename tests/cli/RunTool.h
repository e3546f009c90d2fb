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

// Where the tool's standard output goes.
enum class StandardOutput {
    captured,  // into ToolRun::out
    full,      // /dev/full: every write fails with "no space left"
    closed,    // no descriptor 1 at all
};

struct ToolSetup {
    std::filesystem::path workingDirectory;  // the current one when empty
    StandardOutput output = StandardOutput::captured;
    // A run still going after this many seconds is killed (status 128 + SIGALRM); 0 waits forever.
    unsigned timeoutSeconds = 0;
    // Non-zero: the bytes of memory the program may map.
    unsigned long long addressSpaceLimit = 0;
};

// Runs TintWorkCLI with `args` in `workingDirectory` (the current one when empty).
ToolRun runTool(const std::vector<std::string>& args, const std::filesystem::path& workingDirectory = {});
// Runs the tintwork command likewise.
ToolRun runTintwork(const std::vector<std::string>& args, const std::filesystem::path& workingDirectory = {});
// Runs any program likewise; a non-zero `addressSpaceLimit` caps the bytes of memory
// the program may map, so a run that tries to hold too much fails instead of swapping.
ToolRun runProgram(const std::string& executable, const std::vector<std::string>& args,
                   const std::filesystem::path& workingDirectory = {}, unsigned long long addressSpaceLimit = 0);
// The three, with every setting of the run.
ToolRun runTool(const std::vector<std::string>& args, const ToolSetup& setup);
ToolRun runTintwork(const std::vector<std::string>& args, const ToolSetup& setup);
ToolRun runProgram(const std::string& executable, const std::vector<std::string>& args, const ToolSetup& setup);

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
