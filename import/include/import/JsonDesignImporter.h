#pragma once
// Reads a Design Tokens JSON document into a group of the project tree, re-creating
// colour sets from integer-named groups and appearance variants from "light", "dark",
// "high contrast" and "dark high contrast" groups.

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "import/ColorImporter.h"
#include "model/Project.h"

namespace tintwork {

class JsonDesignImporter : public ColorImporter {
public:
    JsonDesignImporter() = default;

    // Reads the file and imports it; an unreadable file throws FileError, text that is
    // not JSON throws DocumentColorParsingError.
    void importColors(const std::filesystem::path& url, OchreColorProjectItem& group) override;
    // The same import from JSON text already in memory.
    void importText(std::string_view text, OchreColorProjectItem& group);

    // Looks for the appearance groups in the root's group, and if they are not there in
    // each of the root's direct child groups.
    void applyAppearanceGroups(OchreColorProjectItem& root);
    // Replaces every qualifying group below `item` by a colour set (or shadow set): 3 to 32
    // plain colours (shadows), all named by whole integers.
    void collapseColorSets(OchreColorProjectItem& item);
    void collapseShadowSets(OchreColorProjectItem& item);
    // Merges the "dark", "high contrast" and "dark high contrast" children of `group` into
    // its "light" child, prunes emptied groups below the root and drops a lone "light"
    // level. False when `group` has no "light" group.
    bool applyAppearanceConvention(OchreColorGroup& group, OchreColorProjectItem& root);
    // Removes, depth first, every group below `item` that is empty.
    void pruneEmptyGroups(OchreColorProjectItem& item);
    // Copies each value of `source` into the `variant` slot of its namesake in `target`,
    // setting that item's appearance to `appearance`, and removes it from `source`.
    // Groups recurse; shadows and items of unlike kinds stay where they are.
    void mergeVariants(OchreColorGroup& target, OchreColorGroup& source, ColorSource variant,
                       AppearanceType appearance);

    // Receives the importer's debug lines; unset, they go nowhere.
    std::function<void(std::string_view)> logger;

private:
    // Parses `text` (named `sourceName` in errors) and runs every step of the import.
    void importDocument(std::string_view text, const std::string& sourceName, OchreColorProjectItem& group);
};

}  // namespace tintwork
