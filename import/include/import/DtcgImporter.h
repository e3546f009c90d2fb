#pragma once
// Reads files of the standard Design Tokens format (2025.10): groups and tokens in file
// order, every colour space of the format, dimensions, numbers, font weights, durations,
// font families and shadows, references as aliases, and appearances merged from several
// files. Groups it makes provide their namespace, so code names carry the token's path.

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "import/ColorImporter.h"
#include "import/ImportKinds.h"
#include "model/Project.h"

namespace tintwork {

class DtcgImporter : public ColorImporter {
public:
    explicit DtcgImporter(ImportOptions options = {});

    // Reads one file into `group`. A file that is no JSON, or whose top level is not an
    // object, throws ImportSourceError naming it (so does any broken rule in strict mode);
    // a bad token is dropped with a warning through the diagnostics.
    void importColors(const std::filesystem::path& url, OchreColorProjectItem& group) override;
    // The same from text already in memory, named `sourceName` in messages.
    void importText(std::string_view text, const std::filesystem::path& sourceName, OchreColorProjectItem& group);

    // Several files in one call; references reach across them. With options.modes (one
    // appearance per file) they merge into one group, the "light" file's, whose items take
    // the other files' values as variants by token path; without, each file is its own
    // group "DTCG Import - <file name>".
    static std::vector<ProjectItemPtr> importAll(const std::vector<std::filesystem::path>& sources,
                                                 const ImportOptions& options);

private:
    ImportOptions options_;
};

}  // namespace tintwork
