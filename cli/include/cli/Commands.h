#pragma once
// The subcommands of the tintwork executable, each with its parsed options. They run
// the same flows and libraries as TintWorkCLI and return the exit status.

#include <iosfwd>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace tintwork {

// Exit status of a command line the command cannot use.
inline constexpr int exitUsage = 2;

// A command line that names something the command cannot use; printed as
// "tintwork: <command>: <what>" with status 2.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct ImportCommandOptions {
    std::string kind;
    std::vector<std::string> sources;
    std::optional<std::string> output;       // -o: X.json or X.tintwork; standard output when absent
    std::optional<std::string> into;         // --into: the document the groups are appended to
    std::optional<std::string> unmanagedAs;  // --unmanaged-as (sketch): "srgb" or "display-p3"
    std::optional<std::string> modes;        // --modes (dtcg): "light,dark,..."
    bool strict = false;                     // --strict (dtcg)
};

struct BuildCommandOptions {
    std::string document;
    std::optional<std::string> outputFolder;
    std::optional<std::string> tokens;  // --tokens: build from this token file with the document's settings
    bool autoHighContrast = false;      // --autohc
    std::string tokensFormat = "dialect";  // --tokens-format: "dialect" or "dtcg"
};

struct TestCommandOptions {
    std::string document;
    bool failures = false;              // --failures: list each failed comparison
    std::optional<std::string> report;  // --report: JSON report file
    std::optional<std::string> junit;   // --junit: JUnit XML file
};

// Usage errors throw UsageError; everything else is reported on `err` with its status.
int runImportCommand(const ImportCommandOptions& options, std::ostream& out, std::ostream& err);
int runBuildCommand(const BuildCommandOptions& options, std::ostream& out, std::ostream& err);
int runTestCommand(const TestCommandOptions& options, std::ostream& out, std::ostream& err);

// The whole tintwork program: `args` with element 0 the program path.
int runTintwork(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace tintwork
