#pragma once
// The subcommands of the tintwork executable.

#include <iosfwd>
#include <optional>
#include <string>

namespace tintwork {

// tintwork test DOC [--failures] [--report FILE.json] [--junit FILE.xml]
struct TestCommandOptions {
    std::string documentPath;
    // After each group's fail summary, one line per failed comparison of that group.
    bool failures = false;
    // The result records as JSON, written to this file.
    std::optional<std::string> reportPath;
    // The comparisons as JUnit XML, written to this file.
    std::optional<std::string> junitPath;
};

// Runs the document's tests and prints what TintWorkCLI -t prints, plus the failure lines
// when asked; writes the asked-for report files. Returns the number of failed groups (at
// most 255), or 1 after "Error testing …" when the document or a report can't be read or written.
int runTestCommand(const TestCommandOptions& options, std::ostream& out, std::ostream& err);

}  // namespace tintwork
