#pragma once
// The top level of TintWorkCLI: scans the arguments, picks one flow and runs it.

#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tintwork {

inline constexpr int exitSuccess = 0;
inline constexpr int exitFailure = 1;
// Status of a run stopped by a fatal error (what an abort gives).
inline constexpr int exitFatal = 134;

// Option spellings as typed, each mapped to the argument that follows it. Arguments
// pair strictly by position (1 with 2, 3 with 4, ...); an unpaired tail is dropped.
std::map<std::string, std::string> scanArguments(const std::vector<std::string>& args);

// The three flows. Each prints its own lines to `out` and returns the exit status.
int runBuild(const std::string& documentPath, const std::optional<std::string>& outputFolder, std::ostream& out);
int runTests(const std::string& documentPath, std::ostream& out);
int runImportedBuild(const std::string& jsonPath, const std::string& settingsPath,
                     const std::optional<std::string>& outputFolder, bool autoHighContrast, std::ostream& out);

// The whole program: dispatch on the arguments (element 0 being the program path) and
// run the chosen flow. Fatal errors are reported on `err` with status 134.
int runDriver(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace tintwork
