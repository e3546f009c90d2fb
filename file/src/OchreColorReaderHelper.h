#pragma once
// The shared item reader: one element of the document's item tree into a project item.

#include <string>
#include <unordered_map>

#include "model/Project.h"

namespace pugi {
class xml_node;
}

namespace tintwork {

class OchreColorReaderHelper {
public:
    // Items look up their build and test groups among `project`'s groups.
    explicit OchreColorReaderHelper(const OchreColorProject& project);

    // The item an element describes, or null for an unknown element name or an item
    // that can't be read. `forceNewIdentifiers` ignores the stored ids. A group nested
    // deeper than the reader allows throws DocumentFormatError naming it.
    ProjectItemPtr readItem(const pugi::xml_node& element, bool forceNewIdentifiers) const;

private:
    ProjectItemPtr readItem(const pugi::xml_node& element, bool forceNewIdentifiers, int depth) const;

    // The project's build and test groups by uuid (the first of a uuid wins), so that
    // linking an item costs no walk over all groups.
    std::unordered_map<std::string, BuildGroupPtr> buildGroups_;
    std::unordered_map<std::string, TestGroupPtr> testGroups_;
};

}  // namespace tintwork
