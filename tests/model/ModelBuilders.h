#pragma once
// Short constructors of project items for the model tests.

#include <memory>
#include <string>
#include <vector>

#include "model/Project.h"

namespace tintwork::testing {

inline ColorValue grey(double value) {
    return ColorValue::sRGB(value, value, value);
}

inline ProjectItemPtr colorItem(const std::string& uuid, double light, std::optional<double> dark = std::nullopt) {
    OchreColorItem payload;
    payload.color.name = uuid;
    payload.color.uuid = uuid;
    payload.color.lightVariant = grey(light);
    if (dark) {
        payload.color.darkVariant = grey(*dark);
    }
    return std::make_shared<OchreColorProjectItem>(uuid, uuid, payload);
}

// A set of `count` grey members 0.0, 0.1, ... with `steps` as stored.
inline ProjectItemPtr colorSet(const std::string& uuid, int count, int steps = -1, double darkOffset = -1) {
    OchreColorSet payload;
    for (int i = 0; i < count; ++i) {
        ThemeableColor member;
        member.name = std::to_string(i + 1);
        member.lightVariant = grey(i / 10.0);
        if (darkOffset >= 0) {
            member.darkVariant = grey(darkOffset + i / 100.0);
        }
        payload.colors.push_back(member);
    }
    payload.steps = steps < 0 ? count : steps;
    return std::make_shared<OchreColorProjectItem>(uuid, uuid, payload);
}

inline ProjectItemPtr colorAlias(const std::string& name, AliasSetType light,
                                 AliasSetType dark = AliasSetType::notSet()) {
    OchreColorAlias payload;
    payload.aliasTypes[0] = std::move(light);
    payload.aliasTypes[2] = std::move(dark);
    return std::make_shared<OchreColorProjectItem>(name, name, payload);
}

inline ProjectItemPtr group(const std::string& uuid, std::vector<ProjectItemPtr> members) {
    OchreColorGroup payload;
    payload.items = std::move(members);
    return std::make_shared<OchreColorProjectItem>(uuid, uuid, payload);
}

// A linked project over the given top-level items.
inline std::shared_ptr<OchreColorProject> projectWith(std::vector<ProjectItemPtr> items) {
    auto project = std::make_shared<OchreColorProject>();
    project->items = std::move(items);
    project->linkAliases();
    return project;
}

}  // namespace tintwork::testing
