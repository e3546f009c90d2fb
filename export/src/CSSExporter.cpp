#include "export/CSSExporter.h"

#include "export/TemplateExporter.h"

namespace tintwork {

namespace {

constexpr StyleSheetTemplates cssTemplates{"cssBase", "cssBaseLightDark"};
constexpr StyleSheetTemplates scssTemplates{"scssBase", "scssBaseLightDark"};
constexpr StyleSheetTemplates lessTemplates{"lessBase", "lessBaseLightDark"};

struct FormatWords {
    std::string_view tagName;
    std::string_view lightDarkWord;
};

FormatWords formatWords(BuildExportFormat format) {
    switch (format) {
        case BuildExportFormat::cssHex: return {"colorAsCSSHexRGB", "cssHex"};
        case BuildExportFormat::cssRGBA: return {"colorAsCSSRgb", "cssRgb"};
        case BuildExportFormat::cssColor: return {"colorAsCSSColor", "cssColor"};
        case BuildExportFormat::cssOKLCH: return {"colorAsCSSOklch", "cssOKLCH"};
    }
    return {"colorAsCSSColor", "cssColor"};
}

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
    std::string out;
    out.reserve(text.size());
    std::size_t start = 0;
    for (std::size_t hit = text.find(from); hit != std::string::npos; hit = text.find(from, start)) {
        out.append(text, start, hit - start);
        out.append(to);
        start = hit + from.size();
    }
    out.append(text, start, std::string::npos);
    text = std::move(out);
}

void exportStyleSheet(const StyleSheetTemplates& templates, const std::shared_ptr<OchreColorProject>& project,
                      const std::filesystem::path& folder, const BuildTask& task,
                      const std::vector<ProjectItemPtr>& items, const std::filesystem::path& documentURL) {
    TemplateExporter exporter(project, styleSheetTemplateSource(templates, task));
    exporter.exportTo(folder, task, items, documentURL);
}

}  // namespace

std::string fillColorFormatPlaceholders(std::string source, BuildExportFormat format) {
    const FormatWords words = formatWords(format);
    replaceAll(source, colorFormatPlaceholder, words.tagName);
    replaceAll(source, lightDarkFormatPlaceholder, words.lightDarkWord);
    return source;
}

std::string styleSheetTemplateSource(const StyleSheetTemplates& templates, const BuildTask& task) {
    const BuildExportFormat format = task.exportFormat.value_or(BuildExportFormat::cssColor);
    const auto appearance = task.customData.find(std::string(customDataAppearanceColorType));
    const bool lightDark = appearance != task.customData.end() &&
                           appearance->second == appearanceColorTypeWord(AppearanceColorType::lightDark);
    return fillColorFormatPlaceholders(readStockTemplate(lightDark ? templates.lightDark : templates.individual),
                                       format);
}

void CSSExporter::exportTo(const std::filesystem::path& folder, const BuildTask& task,
                           const std::vector<ProjectItemPtr>& items, const std::filesystem::path& documentURL) {
    exportStyleSheet(cssTemplates, project, folder, task, items, documentURL);
}

void SCSSExporter::exportTo(const std::filesystem::path& folder, const BuildTask& task,
                            const std::vector<ProjectItemPtr>& items, const std::filesystem::path& documentURL) {
    exportStyleSheet(scssTemplates, project, folder, task, items, documentURL);
}

void LESSExporter::exportTo(const std::filesystem::path& folder, const BuildTask& task,
                            const std::vector<ProjectItemPtr>& items, const std::filesystem::path& documentURL) {
    exportStyleSheet(lessTemplates, project, folder, task, items, documentURL);
}

}  // namespace tintwork
