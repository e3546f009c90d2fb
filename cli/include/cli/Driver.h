#pragma once
// The top level of TintWorkCLI: scans the arguments, picks one flow and runs it.

#include <exception>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "model/Project.h"

namespace tintwork {

inline constexpr int exitSuccess = 0;
inline constexpr int exitFailure = 1;
// Status of a run stopped by a fatal error (what an abort gives).
inline constexpr int exitFatal = 134;

// Option spellings as typed, each mapped to the argument that follows it. Arguments
// pair strictly by position (1 with 2, 3 with 4, ...); an unpaired tail is dropped.
std::map<std::string, std::string> scanArguments(const std::vector<std::string>& args);

// Reads a token file into the group that an import-and-build puts in place of the
// document's items.
using TokenReader = std::function<ProjectItemPtr(const std::filesystem::path&)>;

// The three flows. Each prints its lines to `out` and its one error line ("Error building
// ...", "Error testing ...") to `err`, and returns the exit status. TintWorkCLI passes
// standard output for both.
int runBuild(const std::string& documentPath, const std::optional<std::string>& outputFolder, std::ostream& out,
             std::ostream& err);
int runTests(const std::string& documentPath, std::ostream& out);
// Without a reader the token file is read as the program's own Design Tokens JSON.
int runImportedBuild(const std::string& jsonPath, const std::string& settingsPath,
                     const std::optional<std::string>& outputFolder, bool autoHighContrast, std::ostream& out,
                     std::ostream& err, const TokenReader& readTokens = {});

// Reports a fatal error or a program fault that ended a run: "Fatal error: <what>" on
// `err`, after what `out` holds, and the status 134.
int reportFault(const std::exception& fault, std::ostream& out, std::ostream& err);

// The whole program: dispatch on the arguments (element 0 being the program path) and
// run the chosen flow. Fatal errors are reported on `err` with status 134.
int runDriver(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace tintwork
