// Runs the executable once with its standard output in a log file, and measures
// its wall time and peak resident memory (from the child's own rusage, so the
// benchmark's memory does not count).
#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

extern char** environ;

namespace tintwork::bench {

struct RunResult {
    bool succeeded = false;
    double seconds = 0;
    double cpuSeconds = 0;  // user and system time of the child
    long peakKilobytes = 0;
    std::string output;
};

inline RunResult runTool(std::vector<std::string> arguments, const std::filesystem::path& log) {
    std::vector<char*> argv;
    for (std::string& argument : arguments) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, log.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);

    RunResult result;
    const auto start = std::chrono::steady_clock::now();
    pid_t pid = 0;
    if (posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ) != 0) {
        posix_spawn_file_actions_destroy(&actions);
        result.output = "cannot start " + arguments[0];
        return result;
    }
    int status = 0;
    rusage usage{};
    wait4(pid, &status, 0, &usage);
    result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    posix_spawn_file_actions_destroy(&actions);
    result.peakKilobytes = usage.ru_maxrss;
    result.cpuSeconds = static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
                        static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
    std::ifstream in(log);
    std::stringstream text;
    text << in.rdbuf();
    result.output = text.str();
    result.succeeded = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return result;
}

}  // namespace tintwork::bench
