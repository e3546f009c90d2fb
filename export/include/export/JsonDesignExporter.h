#pragma once
// Writes a build group as one Design Tokens JSON file: a tree per appearance, with
// the light tree alone as the root when no other appearance has a token.

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "export/BuildTaskExporter.h"
#include "model/Project.h"

namespace tintwork {

class JsonDesignExporter : public BuildTaskExporter {
public:
    explicit JsonDesignExporter(std::shared_ptr<OchreColorProject> project);
    ~JsonDesignExporter() override;

    // Writes "<exportFileName>.json" into `folder`, replacing any old file. Throws
    // BuildError "Unable to export JSON file" when the text cannot be made and
    // "Unable to export JSON file: <reason>" when it cannot be written.
    void exportTo(const std::filesystem::path& folder, const BuildTask& task, const std::vector<ProjectItemPtr>& items,
                  const std::filesystem::path& documentURL) override;

    // The text the file would hold for these items, without writing it. Throws BuildError
    // "Unable to export JSON file" when the text cannot be made.
    std::string exportText(const BuildTask& task, const std::vector<ProjectItemPtr>& items);
    // The root of the last export as the file holds it; "null" before any export.
    std::string jsonExportText() const;

    std::shared_ptr<OchreColorProject> project;

private:
    struct JsonValue;
    // The root of the last export; an empty JSON value until then.
    std::unique_ptr<JsonValue> jsonExport;
};

}  // namespace tintwork
