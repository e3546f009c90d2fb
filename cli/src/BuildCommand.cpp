// tintwork build: the build and import-and-build flows of TintWorkCLI, with their
// error line on standard error.

#include <ostream>
#include <stdexcept>

#include "cli/Commands.h"
#include "cli/Driver.h"
#include "import/ImportKinds.h"

namespace tintwork {

int runBuildCommand(const BuildCommandOptions& options, std::ostream& out, std::ostream& err) {
    if (!options.tokens) {
        if (options.autoHighContrast) {
            throw UsageError("--autohc applies to a build from --tokens only");
        }
        return runBuild(options.document, options.outputFolder, out, err);
    }
    if (options.tokensFormat == "dialect") {
        return runImportedBuild(*options.tokens, options.document, options.outputFolder, options.autoHighContrast,
                                out, err);
    }
    if (options.tokensFormat != "dtcg") {
        throw UsageError("--tokens-format takes dialect or dtcg, not \"" + options.tokensFormat + "\"");
    }
    const ImportKind* kind = findImportKind("dtcg");
    if (kind == nullptr || !kind->makeImporter) {
        throw UsageError("the dtcg token reader is not available in this build yet");
    }
    ImportOptions importOptions;
    importOptions.diagnostics = [&err](std::string_view line) { err << line << '\n'; };
    return runImportedBuild(*options.tokens, options.document, options.outputFolder, options.autoHighContrast, out,
                            err, [&](const std::filesystem::path& tokens) {
                                try {
                                    return importSource(*kind, tokens, importOptions);
                                } catch (const ImportSourceError& error) {
                                    // The error line names the file the reader refused.
                                    throw std::runtime_error(error.source.string() + ": " + error.what());
                                }
                            });
}

}  // namespace tintwork
