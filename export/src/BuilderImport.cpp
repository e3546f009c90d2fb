// The import half of Builder: replaces the document's items by a Design Tokens JSON file's.
#include "export/Builder.h"

#include "import/Importer.h"

namespace tintwork {

namespace {

// Switches an item, and the members of a group, to generated high-contrast variants.
// Items that already carry high-contrast values of their own keep them.
void useAutomaticHighContrast(OchreColorProjectItem& item) {
    if (item.itemType == ProjectItemType::group) {
        if (item.group) {
            for (const ProjectItemPtr& child : item.group->items) {
                useAutomaticHighContrast(*child);
            }
        }
        return;
    }
    AppearanceType current = item.appearanceType();
    if (hasHighContrastAppearance(current)) {
        return;
    }
    item.setAppearanceType(hasDarkAppearance(current) ? AppearanceType::lightDarkHighContrastAuto
                                                      : AppearanceType::highContrastAuto);
}

}  // namespace

void Builder::importColors(const std::filesystem::path& url, bool autoHighContrast) {
    // Nothing in the project changes until the importer has finished.
    replaceItems(Importer().importFile(url, ImportSourceKind::designTokensJSON), autoHighContrast);
}

void Builder::replaceItems(ProjectItemPtr root, bool autoHighContrast) {
    BuildGroupPtr firstGroup = project->buildGroups.empty() ? nullptr : project->buildGroups.front();
    if (root->group) {
        for (const ProjectItemPtr& child : root->group->items) {
            child->buildGroup = firstGroup;
            if (autoHighContrast) {
                useAutomaticHighContrast(*child);
            }
        }
    }
    project->items = {std::move(root)};
}

}  // namespace tintwork
