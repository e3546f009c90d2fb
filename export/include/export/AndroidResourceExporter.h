#pragma once
// Writes a build group as an Android values resource file: colours, integers,
// booleans and strings, colour sets as typed arrays, shadows as colour and
// dimension parts, and a "Dark" style holding the dark value of each.

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "colour/ColorValue.h"
#include "export/BuildTaskExporter.h"
#include "model/Project.h"

namespace tintwork {

struct TemplateItem;

class AndroidResourceExporter : public BuildTaskExporter {
public:
    explicit AndroidResourceExporter(std::shared_ptr<OchreColorProject> project);

    // Replaces folder/exportFileNameWithExtension by the resource XML of the items.
    void exportTo(const std::filesystem::path& folder, const BuildTask& task, const std::vector<ProjectItemPtr>& items,
                  const std::filesystem::path& documentURL) override;

    // The complete file text for already flattened items.
    static std::string resourceText(const std::vector<TemplateItem>& items, const BuildTask& task);

    std::shared_ptr<OchreColorProject> project;
};

// A code name made into a valid resource name: runs of characters other than ASCII
// letters, digits and "_" become one "_", a leading digit gets "color" in front,
// and an empty result becomes "unnamed".
std::string androidResourceName(std::string_view codeName);

// Android's colour notation of a colour, converted to sRGB first: "#AARRGGBB".
std::string androidColorText(const ColorValue& color);

// A string resource's text with Android's escapes (backslash, quotes, line breaks,
// a leading "@" or "?"), before XML escaping.
std::string androidStringText(std::string_view text);

}  // namespace tintwork
