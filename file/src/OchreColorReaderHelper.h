#pragma once
// The shared item reader: one element of the document's item tree into a project item.

#include "model/Project.h"

namespace pugi {
class xml_node;
}

namespace tintwork {

class OchreColorReaderHelper {
public:
    // Items look up their build and test groups among `project`'s groups.
    explicit OchreColorReaderHelper(const OchreColorProject& project) : project_(project) {}

    // The item an element describes, or null for an unknown element name or an item
    // that can't be read. `forceNewIdentifiers` ignores the stored ids.
    ProjectItemPtr readItem(const pugi::xml_node& element, bool forceNewIdentifiers) const;

private:
    ProjectItemPtr readItem(const pugi::xml_node& element, bool forceNewIdentifiers, int depth) const;

    const OchreColorProject& project_;
};

}  // namespace tintwork
