#pragma once
// Style sheet exporters: CSS (also for plain text tasks), SCSS and LESS. Each picks
// its individual-colours or light-dark() template, fills the colour-format
// placeholders and hands the text to TemplateExporter.

#include <memory>
#include <string>
#include <string_view>

#include "export/BuildTaskExporter.h"

namespace tintwork {

// The placeholders of the style sheet templates, replaced before parsing.
inline constexpr std::string_view colorFormatPlaceholder = "COLOR_FORMAT_TAG";
inline constexpr std::string_view lightDarkFormatPlaceholder = "LIGHT_DARK_FORMAT_TAG";

// The stock templates of one style sheet language.
struct StyleSheetTemplates {
    std::string_view individual;
    std::string_view lightDark;
};

// The task's template (by "appearanceColorType", byte-exact "lightDark" only) with
// both placeholders replaced for the task's export format (cssColor when absent).
std::string styleSheetTemplateSource(const StyleSheetTemplates& templates, const BuildTask& task);
// Both placeholders replaced everywhere in `source` for the format.
std::string fillColorFormatPlaceholders(std::string source, BuildExportFormat format);

class CSSExporter : public BuildTaskExporter {
public:
    explicit CSSExporter(std::shared_ptr<OchreColorProject> documentProject) : project(std::move(documentProject)) {}
    void exportTo(const std::filesystem::path& folder, const BuildTask& task, const std::vector<ProjectItemPtr>& items,
                  const std::filesystem::path& documentURL) override;
    std::shared_ptr<OchreColorProject> project;
};

class SCSSExporter : public BuildTaskExporter {
public:
    explicit SCSSExporter(std::shared_ptr<OchreColorProject> documentProject) : project(std::move(documentProject)) {}
    void exportTo(const std::filesystem::path& folder, const BuildTask& task, const std::vector<ProjectItemPtr>& items,
                  const std::filesystem::path& documentURL) override;
    std::shared_ptr<OchreColorProject> project;
};

class LESSExporter : public BuildTaskExporter {
public:
    explicit LESSExporter(std::shared_ptr<OchreColorProject> documentProject) : project(std::move(documentProject)) {}
    void exportTo(const std::filesystem::path& folder, const BuildTask& task, const std::vector<ProjectItemPtr>& items,
                  const std::filesystem::path& documentURL) override;
    std::shared_ptr<OchreColorProject> project;
};

}  // namespace tintwork
