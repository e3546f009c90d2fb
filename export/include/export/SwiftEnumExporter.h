#pragma once
// Swift source: an enum of the tokens for SwiftUI, UIKit or AppKit, from a stock template.

#include <filesystem>
#include <memory>
#include <string_view>
#include <vector>

#include "export/BuildTaskExporter.h"
#include "model/Project.h"

namespace tintwork {

// Which Apple framework the Swift enum is written for.
enum class SwiftExportType { swiftUI, uiKit, appKit };

// The stock template of a Swift export type: "SwiftUIEnum", "SwiftUIKitEnum", "SwiftAppKitEnum".
std::string_view swiftTemplateName(SwiftExportType type);

class SwiftEnumExporter : public BuildTaskExporter {
public:
    SwiftEnumExporter(std::shared_ptr<OchreColorProject> documentProject, SwiftExportType type);

    // Renders the stock template over the items into folder/exportFileNameWithExtension;
    // an unreadable template is thrown as FileError before anything is written.
    void exportTo(const std::filesystem::path& folder, const BuildTask& task, const std::vector<ProjectItemPtr>& items,
                  const std::filesystem::path& documentURL) override;

    std::shared_ptr<OchreColorProject> project;
    SwiftExportType exportType;
};

}  // namespace tintwork
