// tintwork test: the test flow of TintWorkCLI.

#include <ostream>

#include "cli/Commands.h"
#include "cli/Driver.h"

namespace tintwork {

int runTestCommand(const TestCommandOptions& options, std::ostream& out, std::ostream&) {
    return runTests(options.document, out);
}

}  // namespace tintwork
