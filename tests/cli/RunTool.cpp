#include "RunTool.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

namespace tintwork::testing {

namespace {
std::string slurp(int fd) {
    std::string text;
    char buffer[65536];
    ssize_t count = 0;
    while ((count = read(fd, buffer, sizeof buffer)) > 0) {
        text.append(buffer, static_cast<size_t>(count));
    }
    return text;
}
}  // namespace

ToolRun runTool(const std::vector<std::string>& args, const std::filesystem::path& workingDirectory) {
    return runProgram(TINTWORK_EXECUTABLE, args, workingDirectory);
}

ToolRun runTintwork(const std::vector<std::string>& args, const std::filesystem::path& workingDirectory) {
    return runProgram(TINTWORK_COMMAND, args, workingDirectory);
}

ToolRun runProgram(const std::string& executable, const std::vector<std::string>& args,
                   const std::filesystem::path& workingDirectory, unsigned long long addressSpaceLimit) {
    TemporaryFolder capture;
    const auto outPath = capture.path() / "out";
    const auto errPath = capture.path() / "err";
    pid_t child = fork();
    if (child < 0) {
        throw std::runtime_error("fork failed");
    }
    if (child == 0) {
        if (!workingDirectory.empty() && chdir(workingDirectory.c_str()) != 0) {
            _exit(127);
        }
        if (addressSpaceLimit != 0) {
            const rlimit limit{addressSpaceLimit, addressSpaceLimit};
            setrlimit(RLIMIT_AS, &limit);
        }
        int outFd = open(outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        int errFd = open(errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        dup2(outFd, 1);
        dup2(errFd, 2);
        std::vector<char*> argv;
        std::string program = executable;
        argv.push_back(program.data());
        std::vector<std::string> copies(args);
        for (auto& arg : copies) {
            argv.push_back(arg.data());
        }
        argv.push_back(nullptr);
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    int waitStatus = 0;
    rusage usage{};
    wait4(child, &waitStatus, 0, &usage);
    ToolRun run;
    run.peakKilobytes = usage.ru_maxrss;
    run.status = WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : 128 + WTERMSIG(waitStatus);
    int outFd = open(outPath.c_str(), O_RDONLY);
    int errFd = open(errPath.c_str(), O_RDONLY);
    run.out = slurp(outFd);
    run.err = slurp(errFd);
    close(outFd);
    close(errFd);
    return run;
}

TemporaryFolder::TemporaryFolder() {
    std::random_device device;
    folder = std::filesystem::temp_directory_path() / ("tintwork-test-" + std::to_string(device()));
    std::filesystem::create_directories(folder);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

std::string readText(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

void writeText(const std::filesystem::path& path, const std::string& text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

}  // namespace tintwork::testing
