#pragma once
// Helpers of the import tests: running the JSON importer on text and finding items by name.

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "import/JsonDesignImporter.h"
#include "model/Project.h"

namespace tintwork::testing {

inline ProjectItemPtr newGroupItem(std::string name) {
    return std::make_shared<OchreColorProjectItem>(std::move(name), "ROOT", OchreColorGroup{});
}

// Imports `text` into a fresh group; debug lines go to `log` when given.
inline ProjectItemPtr importJson(std::string_view text, std::vector<std::string>* log = nullptr) {
    ProjectItemPtr root = newGroupItem("Root");
    JsonDesignImporter importer;
    if (log) {
        importer.logger = [log](std::string_view line) { log->emplace_back(line); };
    }
    importer.importText(text, *root);
    return root;
}

inline std::vector<std::string> childNames(const OchreColorProjectItem& item) {
    std::vector<std::string> names;
    if (item.group) {
        for (const ProjectItemPtr& child : item.group->items) {
            names.push_back(child->name);
        }
    }
    return names;
}

// The first child named `name`; fails the test (and returns null) when there is none.
inline ProjectItemPtr childNamed(const OchreColorProjectItem& item, std::string_view name) {
    if (item.group) {
        for (const ProjectItemPtr& child : item.group->items) {
            if (child->name == name) {
                return child;
            }
        }
    }
    ADD_FAILURE() << "no child named " << name << " in " << item.name;
    return nullptr;
}

}  // namespace tintwork::testing
