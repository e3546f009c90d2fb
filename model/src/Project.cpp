#include "model/Project.h"

#include <algorithm>
#include <type_traits>
#include <utility>

#include "model/Uuid.h"

namespace tintwork {

namespace {

// Visits every item below `items` depth-first in document order, each group before
// its members. The walk keeps its own stack, so deep trees cost no call depth.
// `visit` gets the item and the chain of groups above it (outermost first).
template <typename Visit>
void walkItems(const std::vector<ProjectItemPtr>& items, Visit&& visit) {
    struct Level {
        const std::vector<ProjectItemPtr>* items;
        std::size_t next;
        OchreColorProjectItem* owner;
    };
    std::vector<Level> stack{{&items, 0, nullptr}};
    std::vector<OchreColorProjectItem*> parents;
    while (!stack.empty()) {
        Level& level = stack.back();
        if (level.next >= level.items->size()) {
            if (level.owner != nullptr) {
                parents.pop_back();
            }
            stack.pop_back();
            continue;
        }
        OchreColorProjectItem* item = (*level.items)[level.next++].get();
        if (item == nullptr) {
            continue;
        }
        if (!visit(*item, parents)) {
            return;
        }
        if (item->itemType == ProjectItemType::group && item->group) {
            parents.push_back(item);
            stack.push_back({&item->group->items, 0, item});
        }
    }
}


// What resolution needs to know of one alias family: the plain item, the set and the alias.
struct ColorFamily {
    using Value = ThemeableColor;
    static const Value* leaf(const OchreColorProjectItem& item) { return item.color ? &item.color->color : nullptr; }
    static const std::vector<Value>* set(const OchreColorProjectItem& item) {
        return item.colorSet ? &item.colorSet->colors : nullptr;
    }
    static const OchreColorSetAlias* alias(const OchreColorProjectItem& item) {
        return item.colorAlias ? &*item.colorAlias : nullptr;
    }
};

struct ShadowFamily {
    using Value = ThemeableShadow;
    static const Value* leaf(const OchreColorProjectItem& item) { return item.shadow ? &item.shadow->shadow : nullptr; }
    static const std::vector<Value>* set(const OchreColorProjectItem& item) {
        return item.shadowSet ? &item.shadowSet->shadows : nullptr;
    }
    static const OchreColorSetAlias* alias(const OchreColorProjectItem& item) {
        return item.shadowAlias ? &*item.shadowAlias : nullptr;
    }
};

struct NumberFamily {
    using Value = ThemeableNumber;
    static const Value* leaf(const OchreColorProjectItem& item) { return item.number ? &item.number->value : nullptr; }
    static const std::vector<Value>* set(const OchreColorProjectItem&) { return nullptr; }
    static const OchreColorItemAlias* alias(const OchreColorProjectItem& item) {
        return item.numberAlias ? &*item.numberAlias : nullptr;
    }
};

struct BooleanFamily {
    using Value = ThemeableBoolean;
    static const Value* leaf(const OchreColorProjectItem& item) {
        return item.boolean ? &item.boolean->value : nullptr;
    }
    static const std::vector<Value>* set(const OchreColorProjectItem&) { return nullptr; }
    static const OchreColorItemAlias* alias(const OchreColorProjectItem& item) {
        return item.booleanAlias ? &*item.booleanAlias : nullptr;
    }
};

struct StringFamily {
    using Value = ThemeableString;
    static const Value* leaf(const OchreColorProjectItem& item) { return item.string ? &item.string->value : nullptr; }
    static const std::vector<Value>* set(const OchreColorProjectItem&) { return nullptr; }
    static const OchreColorItemAlias* alias(const OchreColorProjectItem& item) {
        return item.stringAlias ? &*item.stringAlias : nullptr;
    }
};

template <typename Value>
constexpr bool isNamed = std::is_same_v<Value, ThemeableColor> || std::is_same_v<Value, ThemeableShadow>;

// Resolves aliases of one family. Each alias is resolved at most once per resolver
// (memoised) and an alias met again while it is being resolved is an empty reference,
// so every document terminates. Resolution recurses along a chain, so a chain longer
// than maximumAliasChainLength is refused rather than followed or silently cut.
//
// Variant rules: the alias's default reference gives the light variant; an optional
// variant comes from its own reference (that target's matching variant, falling back
// to the target's light one) and, when it has none or it leads nowhere, from the
// default target's stored variant of the same appearance.
template <typename Family>
class Resolver {
public:
    using Value = typename Family::Value;

    const Value* single(const OchreColorProjectItem& item) {
        if (const Value* value = Family::leaf(item)) {
            return value;
        }
        const auto* alias = Family::alias(item);
        if (alias == nullptr) {
            return nullptr;
        }
        return memoised(singles_, item, [&] { return resolveSingle(item, *alias); });
    }

    const std::vector<Value>* list(const OchreColorProjectItem& item) {
        if (const std::vector<Value>* members = Family::set(item)) {
            return members;
        }
        const auto* alias = Family::alias(item);
        if (alias == nullptr) {
            return nullptr;
        }
        return memoised(lists_, item, [&] { return resolveList(*alias); });
    }

private:
    template <typename T>
    struct Entry {
        bool resolving = true;
        std::optional<T> value;
    };

    template <typename T, typename Compute>
    const T* memoised(std::unordered_map<const OchreColorProjectItem*, Entry<T>>& memo,
                      const OchreColorProjectItem& item, Compute&& compute) {
        auto [position, inserted] = memo.try_emplace(&item);
        if (!inserted) {
            const Entry<T>& entry = position->second;
            return entry.resolving || !entry.value ? nullptr : &*entry.value;
        }
        if (depth_ >= maximumAliasChainLength) {
            throw AliasChainError("The alias \u201c" + outermost_->name + "\u201d leads through more than " +
                                  std::to_string(maximumAliasChainLength) + " aliases.");
        }
        if (depth_ == 0) {
            outermost_ = &item;
        }
        ++depth_;
        std::optional<T> value = compute();
        --depth_;
        // References into an unordered_map stay valid while other entries are added.
        Entry<T>& entry = memo.at(&item);
        entry.resolving = false;
        entry.value = std::move(value);
        return entry.value ? &*entry.value : nullptr;
    }

    // The value one variant slot of an alias points at (a whole item or one set member).
    const Value* slotTarget(const OchreColorSetAlias& alias, int slot) {
        const OchreColorProjectItem* target = alias.referencedProjectItems[slot];
        if (target == nullptr) {
            return nullptr;
        }
        switch (alias.aliasTypes[slot].kind) {
            case AliasSetType::Kind::item: return single(*target);
            case AliasSetType::Kind::setItem: {
                const std::optional<long long>& index = alias.referencedSetIndexes[slot];
                const std::vector<Value>* members = list(*target);
                if (!index || members == nullptr || *index < 0 || *index >= static_cast<long long>(members->size())) {
                    return nullptr;
                }
                return &(*members)[static_cast<std::size_t>(*index)];
            }
            case AliasSetType::Kind::set:
            case AliasSetType::Kind::notSet: return nullptr;
        }
        return nullptr;
    }

    const Value* slotTarget(const OchreColorItemAlias& alias, int slot) {
        const OchreColorProjectItem* target = alias.referencedProjectItems[slot];
        if (target == nullptr || alias.aliasTypes[slot].kind != ItemAliasType::Kind::item) {
            return nullptr;
        }
        return single(*target);
    }

    template <typename Alias>
    std::optional<Value> resolveSingle(const OchreColorProjectItem& item, const Alias& alias) {
        const Value* base = slotTarget(alias, 0);
        if (base == nullptr) {
            return std::nullopt;
        }
        Value resolved;
        resolved.lightVariant = base->lightVariant;
        for (int slot = 1; slot < 4; ++slot) {
            const ColorSource source = aliasVariantOrder[slot];
            if (const Value* target = slotTarget(alias, slot)) {
                resolved.setVariant(source, target->variant(source));
            } else {
                resolved.setVariant(source, base->storedVariant(source));
            }
        }
        if constexpr (isNamed<Value>) {
            resolved.name = item.name;
            resolved.uuid = item.uuid;
        }
        deriveHighContrast(resolved, alias);
        return resolved;
    }

    std::optional<std::vector<Value>> resolveList(const OchreColorSetAlias& alias) {
        if (alias.aliasTypes[0].kind != AliasSetType::Kind::set || !isWholeSetAlias(alias) ||
            alias.referencedProjectItems[0] == nullptr) {
            return std::nullopt;
        }
        const std::vector<Value>* base = list(*alias.referencedProjectItems[0]);
        if (base == nullptr) {
            return std::nullopt;
        }
        // Other variants may name a whole set (member by member) or a single item (for every member).
        const std::vector<Value>* slotLists[4] = {nullptr, nullptr, nullptr, nullptr};
        const Value* slotItems[4] = {nullptr, nullptr, nullptr, nullptr};
        for (int slot = 1; slot < 4; ++slot) {
            const OchreColorProjectItem* target = alias.referencedProjectItems[slot];
            if (target == nullptr) {
                continue;
            }
            if (alias.aliasTypes[slot].kind == AliasSetType::Kind::set) {
                slotLists[slot] = list(*target);
            } else if (alias.aliasTypes[slot].kind == AliasSetType::Kind::item) {
                slotItems[slot] = single(*target);
            }
        }
        const std::size_t count =
            std::min(base->size(), static_cast<std::size_t>(std::max(0, setAliasMemberCount(alias))));
        std::vector<Value> members;
        members.reserve(count);
        for (std::size_t i = 0; i < count; ++i) {
            const Value& member = (*base)[i];
            Value resolved;
            resolved.lightVariant = member.lightVariant;
            for (int slot = 1; slot < 4; ++slot) {
                const ColorSource source = aliasVariantOrder[slot];
                if (slotLists[slot] != nullptr && i < slotLists[slot]->size()) {
                    resolved.setVariant(source, (*slotLists[slot])[i].variant(source));
                } else if (slotItems[slot] != nullptr) {
                    resolved.setVariant(source, slotItems[slot]->variant(source));
                } else {
                    resolved.setVariant(source, member.storedVariant(source));
                }
            }
            resolved.name = member.name;
            resolved.uuid = member.uuid;
            deriveHighContrast(resolved, alias);
            members.push_back(std::move(resolved));
        }
        return members;
    }

    // An alias with automatic high contrast derives its colours' high-contrast variants
    // from what it resolved to, as a colour item of that appearance does.
    template <typename Alias>
    static void deriveHighContrast(Value& value, const Alias& alias) {
        if constexpr (std::is_same_v<Value, ThemeableColor>) {
            if (isAutomaticHighContrast(alias.appearanceType)) {
                generateHighContrastVariants(value, alias.autoContrastAmount, hasDarkAppearance(alias.appearanceType));
            }
        }
    }

    std::unordered_map<const OchreColorProjectItem*, Entry<Value>> singles_;
    std::unordered_map<const OchreColorProjectItem*, Entry<std::vector<Value>>> lists_;
    int depth_ = 0;
    const OchreColorProjectItem* outermost_ = nullptr;  // the alias asked for, named in errors
};

template <typename Family>
std::optional<typename Family::Value> resolveSingle(const OchreColorProjectItem& item) {
    Resolver<Family> resolver;
    const typename Family::Value* value = resolver.single(item);
    return value ? std::optional(*value) : std::nullopt;
}

template <typename Family>
std::optional<std::vector<typename Family::Value>> resolveList(const OchreColorProjectItem& item) {
    Resolver<Family> resolver;
    const std::vector<typename Family::Value>* members = resolver.list(item);
    return members ? std::optional(*members) : std::nullopt;
}

using ItemLookup = std::unordered_map<std::string, OchreColorProjectItem*>;

OchreColorProjectItem* lookUp(const ItemLookup& index, const std::string& uuid) {
    const auto found = index.find(uuid);
    return found == index.end() ? nullptr : found->second;
}

void linkSetAlias(OchreColorSetAlias& alias, const ItemLookup& index) {
    for (int slot = 0; slot < 4; ++slot) {
        const AliasSetType& type = alias.aliasTypes[slot];
        alias.referencedProjectItems[slot] = nullptr;
        alias.referencedSetIndexes[slot] = std::nullopt;
        switch (type.kind) {
            case AliasSetType::Kind::item:
            case AliasSetType::Kind::set: alias.referencedProjectItems[slot] = lookUp(index, type.uuid); break;
            case AliasSetType::Kind::setItem:
                alias.referencedProjectItems[slot] = lookUp(index, type.uuid);
                alias.referencedSetIndexes[slot] = type.index;
                break;
            case AliasSetType::Kind::notSet: break;
        }
    }
}

void linkItemAlias(OchreColorItemAlias& alias, const ItemLookup& index) {
    for (int slot = 0; slot < 4; ++slot) {
        const ItemAliasType& type = alias.aliasTypes[slot];
        alias.referencedProjectItems[slot] =
            type.kind == ItemAliasType::Kind::item ? lookUp(index, type.itemUuid) : nullptr;
    }
}

}  // namespace

// MARK: - Items

OchreColorProjectItem::OchreColorProjectItem(std::string itemName, std::string itemUuid, OchreColorGroup payload)
    : group(std::move(payload)),
      name(std::move(itemName)),
      itemType(ProjectItemType::group),
      uuid(std::move(itemUuid)) {}
OchreColorProjectItem::OchreColorProjectItem(std::string itemName, std::string itemUuid, OchreColorItem payload)
    : color(std::move(payload)),
      name(std::move(itemName)),
      itemType(ProjectItemType::color),
      uuid(std::move(itemUuid)) {}
OchreColorProjectItem::OchreColorProjectItem(std::string itemName, std::string itemUuid, OchreColorSet payload)
    : colorSet(std::move(payload)),
      name(std::move(itemName)),
      itemType(ProjectItemType::colorSet),
      uuid(std::move(itemUuid)) {}
OchreColorProjectItem::OchreColorProjectItem(std::string itemName, std::string itemUuid, OchreColorAlias payload)
    : colorAlias(std::move(payload)),
      name(std::move(itemName)),
      itemType(ProjectItemType::colorAlias),
      uuid(std::move(itemUuid)) {}
OchreColorProjectItem::OchreColorProjectItem(std::string itemName, std::string itemUuid, OchreColorNumber payload)
    : number(std::move(payload)),
      name(std::move(itemName)),
      itemType(ProjectItemType::number),
      uuid(std::move(itemUuid)) {}
OchreColorProjectItem::OchreColorProjectItem(std::string itemName, std::string itemUuid, OchreColorNumberAlias payload)
    : numberAlias(std::move(payload)),
      name(std::move(itemName)),
      itemType(ProjectItemType::numberAlias),
      uuid(std::move(itemUuid)) {}
OchreColorProjectItem::OchreColorProjectItem(std::string itemName, std::string itemUuid, OchreColorBoolean payload)
    : boolean(std::move(payload)),
      name(std::move(itemName)),
      itemType(ProjectItemType::boolean),
      uuid(std::move(itemUuid)) {}
OchreColorProjectItem::OchreColorProjectItem(std::string itemName, std::string itemUuid, OchreColorBooleanAlias payload)
    : booleanAlias(std::move(payload)),
      name(std::move(itemName)),
      itemType(ProjectItemType::booleanAlias),
      uuid(std::move(itemUuid)) {}
OchreColorProjectItem::OchreColorProjectItem(std::string itemName, std::string itemUuid, OchreColorString payload)
    : string(std::move(payload)),
      name(std::move(itemName)),
      itemType(ProjectItemType::string),
      uuid(std::move(itemUuid)) {}
OchreColorProjectItem::OchreColorProjectItem(std::string itemName, std::string itemUuid, OchreColorStringAlias payload)
    : stringAlias(std::move(payload)),
      name(std::move(itemName)),
      itemType(ProjectItemType::stringAlias),
      uuid(std::move(itemUuid)) {}
OchreColorProjectItem::OchreColorProjectItem(std::string itemName, std::string itemUuid, OchreColorShadow payload)
    : shadow(std::move(payload)),
      name(std::move(itemName)),
      itemType(ProjectItemType::shadow),
      uuid(std::move(itemUuid)) {}
OchreColorProjectItem::OchreColorProjectItem(std::string itemName, std::string itemUuid, OchreColorShadowSet payload)
    : shadowSet(std::move(payload)),
      name(std::move(itemName)),
      itemType(ProjectItemType::shadowSet),
      uuid(std::move(itemUuid)) {}
OchreColorProjectItem::OchreColorProjectItem(std::string itemName, std::string itemUuid, OchreColorShadowAlias payload)
    : shadowAlias(std::move(payload)),
      name(std::move(itemName)),
      itemType(ProjectItemType::shadowAlias),
      uuid(std::move(itemUuid)) {}

bool OchreColorProjectItem::hasPayload() const {
    switch (itemType) {
        case ProjectItemType::group: return group.has_value();
        case ProjectItemType::color: return color.has_value();
        case ProjectItemType::colorSet: return colorSet.has_value();
        case ProjectItemType::colorAlias: return colorAlias.has_value();
        case ProjectItemType::number: return number.has_value();
        case ProjectItemType::numberAlias: return numberAlias.has_value();
        case ProjectItemType::boolean: return boolean.has_value();
        case ProjectItemType::booleanAlias: return booleanAlias.has_value();
        case ProjectItemType::string: return string.has_value();
        case ProjectItemType::stringAlias: return stringAlias.has_value();
        case ProjectItemType::shadow: return shadow.has_value();
        case ProjectItemType::shadowSet: return shadowSet.has_value();
        case ProjectItemType::shadowAlias: return shadowAlias.has_value();
    }
    return false;
}

namespace {

// Calls `action` with the payload's appearance type and auto-contrast amount.
template <typename Item, typename Action>
void withAppearanceFields(Item& item, Action&& action) {
    switch (item.itemType) {
        case ProjectItemType::group: return;
        case ProjectItemType::color:
            if (item.color) {
                action(item.color->appearanceType, item.color->autoContrastAmount);
            }
            return;
        case ProjectItemType::colorSet:
            if (item.colorSet) {
                action(item.colorSet->appearanceType, item.colorSet->autoContrastAmount);
            }
            return;
        case ProjectItemType::colorAlias:
            if (item.colorAlias) {
                action(item.colorAlias->appearanceType, item.colorAlias->autoContrastAmount);
            }
            return;
        case ProjectItemType::number:
            if (item.number) {
                action(item.number->appearanceType, item.number->autoContrastAmount);
            }
            return;
        case ProjectItemType::numberAlias:
            if (item.numberAlias) {
                action(item.numberAlias->appearanceType, item.numberAlias->autoContrastAmount);
            }
            return;
        case ProjectItemType::boolean:
            if (item.boolean) {
                action(item.boolean->appearanceType, item.boolean->autoContrastAmount);
            }
            return;
        case ProjectItemType::booleanAlias:
            if (item.booleanAlias) {
                action(item.booleanAlias->appearanceType, item.booleanAlias->autoContrastAmount);
            }
            return;
        case ProjectItemType::string:
            if (item.string) {
                action(item.string->appearanceType, item.string->autoContrastAmount);
            }
            return;
        case ProjectItemType::stringAlias:
            if (item.stringAlias) {
                action(item.stringAlias->appearanceType, item.stringAlias->autoContrastAmount);
            }
            return;
        case ProjectItemType::shadow:
            if (item.shadow) {
                action(item.shadow->appearanceType, item.shadow->autoContrastAmount);
            }
            return;
        case ProjectItemType::shadowSet:
            if (item.shadowSet) {
                action(item.shadowSet->appearanceType, item.shadowSet->autoContrastAmount);
            }
            return;
        case ProjectItemType::shadowAlias:
            if (item.shadowAlias) {
                action(item.shadowAlias->appearanceType, item.shadowAlias->autoContrastAmount);
            }
            return;
    }
}

}  // namespace

AppearanceType OchreColorProjectItem::appearanceType() const {
    AppearanceType type = AppearanceType::none;
    withAppearanceFields(*this, [&](AppearanceType stored, double) { type = stored; });
    return type;
}

void OchreColorProjectItem::setAppearanceType(AppearanceType type) {
    if (itemType == ProjectItemType::group) {
        // A group passes the change on to its members, nested groups included.
        std::vector<ProjectItemPtr> members = group ? group->items : std::vector<ProjectItemPtr>{};
        walkItems(members, [&](OchreColorProjectItem& member, const auto&) {
            if (member.itemType != ProjectItemType::group) {
                member.setAppearanceType(type);
            }
            return true;
        });
        return;
    }
    withAppearanceFields(*this, [&](AppearanceType& stored, double) { stored = type; });
    if (!isAutomaticHighContrast(type)) {
        return;
    }
    // Colours get their high-contrast variants generated; other kinds keep what they store.
    const bool withDark = hasDarkAppearance(type);
    if (itemType == ProjectItemType::color && color) {
        generateHighContrastVariants(color->color, color->autoContrastAmount, withDark);
    } else if (itemType == ProjectItemType::colorSet && colorSet) {
        for (ThemeableColor& member : colorSet->colors) {
            generateHighContrastVariants(member, colorSet->autoContrastAmount, withDark);
        }
    }
}

std::optional<ThemeableColor> OchreColorProjectItem::resolvedColor() const {
    return resolveSingle<ColorFamily>(*this);
}

std::optional<std::vector<ThemeableColor>> OchreColorProjectItem::resolvedColorSet() const {
    return resolveList<ColorFamily>(*this);
}

std::optional<ThemeableNumber> OchreColorProjectItem::resolvedNumber() const {
    return resolveSingle<NumberFamily>(*this);
}

std::optional<ThemeableBoolean> OchreColorProjectItem::resolvedBoolean() const {
    return resolveSingle<BooleanFamily>(*this);
}

std::optional<ThemeableString> OchreColorProjectItem::resolvedString() const {
    return resolveSingle<StringFamily>(*this);
}

std::optional<ThemeableShadow> OchreColorProjectItem::resolvedShadow() const {
    return resolveSingle<ShadowFamily>(*this);
}

std::optional<std::vector<ThemeableShadow>> OchreColorProjectItem::resolvedShadowSet() const {
    return resolveList<ShadowFamily>(*this);
}

// MARK: - Project

OchreColorProject::OchreColorProject() : uuid(newUUID()) {}

void OchreColorProject::walk(const std::function<void(OchreColorProjectItem&)>& visit) const {
    walkItems(items, [&](OchreColorProjectItem& item, const auto&) {
        visit(item);
        return true;
    });
}

OchreColorProjectItem* OchreColorProject::findItem(const std::string& itemUuid) const {
    OchreColorProjectItem* found = nullptr;
    walkItems(items, [&](OchreColorProjectItem& item, const auto&) {
        if (item.uuid == itemUuid) {
            found = &item;
            return false;
        }
        return true;
    });
    return found;
}

BuildGroupPtr OchreColorProject::findBuildGroup(const std::string& groupUuid) const {
    const auto found = std::find_if(buildGroups.begin(), buildGroups.end(),
                                    [&](const BuildGroupPtr& group) { return group && group->uuid == groupUuid; });
    return found == buildGroups.end() ? nullptr : *found;
}

TestGroupPtr OchreColorProject::findTestGroup(const std::string& groupUuid) const {
    const auto found = std::find_if(testGroups.begin(), testGroups.end(),
                                    [&](const TestGroupPtr& group) { return group && group->uuid == groupUuid; });
    return found == testGroups.end() ? nullptr : *found;
}

namespace {

// Calls `visit` with the owning pointer of every item, depth-first in document order.
// (walkItems hands out references; this walk keeps the owners.)
template <typename Visit>
void walkOwners(const std::vector<ProjectItemPtr>& items, Visit&& visit) {
    struct Level {
        const std::vector<ProjectItemPtr>* items;
        std::size_t next;
    };
    std::vector<Level> stack{{&items, 0}};
    while (!stack.empty()) {
        Level& level = stack.back();
        if (level.next >= level.items->size()) {
            stack.pop_back();
            continue;
        }
        const ProjectItemPtr& item = (*level.items)[level.next++];
        if (!item) {
            continue;
        }
        visit(item);
        if (item->itemType == ProjectItemType::group && item->group) {
            stack.push_back({&item->group->items, 0});
        }
    }
}

}  // namespace

std::vector<ProjectItemPtr> OchreColorProject::itemsForBuildGroup(const BuildGroup& buildGroup) const {
    std::vector<ProjectItemPtr> found;
    walkOwners(items, [&](const ProjectItemPtr& item) {
        if (item->buildGroup.get() == &buildGroup) {
            found.push_back(item);
        }
    });
    return found;
}

std::unordered_map<const BuildGroup*, std::vector<ProjectItemPtr>> OchreColorProject::itemsByBuildGroup() const {
    std::unordered_map<const BuildGroup*, std::vector<ProjectItemPtr>> found;
    walkOwners(items, [&](const ProjectItemPtr& item) {
        if (item->buildGroup) {
            found[item->buildGroup.get()].push_back(item);
        }
    });
    return found;
}

std::vector<OchreColorProjectItem*> OchreColorProject::pathToItem(const OchreColorProjectItem& target) const {
    std::vector<OchreColorProjectItem*> path;
    walkItems(items, [&](OchreColorProjectItem& item, const std::vector<OchreColorProjectItem*>& parents) {
        if (&item != &target) {
            return true;
        }
        path = parents;
        path.push_back(&item);
        return false;
    });
    return path;
}

void OchreColorProject::linkAliases() {
    ItemLookup index;
    walkItems(items, [&](OchreColorProjectItem& item, const auto&) {
        index.try_emplace(item.uuid, &item);
        return true;
    });
    walkItems(items, [&](OchreColorProjectItem& item, const auto&) {
        if (item.colorAlias) {
            linkSetAlias(*item.colorAlias, index);
        }
        if (item.shadowAlias) {
            linkSetAlias(*item.shadowAlias, index);
        }
        if (item.numberAlias) {
            linkItemAlias(*item.numberAlias, index);
        }
        if (item.booleanAlias) {
            linkItemAlias(*item.booleanAlias, index);
        }
        if (item.stringAlias) {
            linkItemAlias(*item.stringAlias, index);
        }
        return true;
    });
}

OchreColorProjectStatistics OchreColorProject::statistics() const {
    OchreColorProjectStatistics counts;
    walkItems(items, [&](OchreColorProjectItem& item, const auto&) {
        switch (item.itemType) {
            case ProjectItemType::group: ++counts.groupCount; break;
            case ProjectItemType::color: ++counts.colorItemCount; break;
            case ProjectItemType::colorSet: ++counts.colorSetCount; break;
            case ProjectItemType::colorAlias: ++counts.colorAliasCount; break;
            case ProjectItemType::number: ++counts.numberCount; break;
            case ProjectItemType::numberAlias: ++counts.numberAliasCount; break;
            case ProjectItemType::boolean: ++counts.booleanCount; break;
            case ProjectItemType::booleanAlias: ++counts.booleanAliasCount; break;
            case ProjectItemType::string: ++counts.stringCount; break;
            case ProjectItemType::stringAlias: ++counts.stringAliasCount; break;
            case ProjectItemType::shadow: ++counts.shadowCount; break;
            case ProjectItemType::shadowSet: ++counts.shadowSetCount; break;
            case ProjectItemType::shadowAlias: ++counts.shadowAliasCount; break;
        }
        return true;
    });
    return counts;
}

std::string_view appContentModeWord(AppContentMode mode) {
    return mode == AppContentMode::table ? "table" : "group";
}

std::optional<AppContentMode> appContentModeFromWord(std::string_view word) {
    if (word == "group") {
        return AppContentMode::group;
    }
    if (word == "table") {
        return AppContentMode::table;
    }
    return std::nullopt;
}

// MARK: - Index

ProjectItemIndex::ProjectItemIndex(const OchreColorProject& project) {
    walkItems(project.items, [&](OchreColorProjectItem& item, const std::vector<OchreColorProjectItem*>& parents) {
        byUuid_.try_emplace(item.uuid, &item);
        nodes_.try_emplace(&item, Node{&item, parents.empty() ? nullptr : parents.back()});
        return true;
    });
}

OchreColorProjectItem* ProjectItemIndex::find(const std::string& uuid) const {
    return lookUp(byUuid_, uuid);
}

std::vector<OchreColorProjectItem*> ProjectItemIndex::pathToItem(const OchreColorProjectItem& item) const {
    auto found = nodes_.find(&item);
    if (found == nodes_.end()) {
        return {};
    }
    std::vector<OchreColorProjectItem*> path{found->second.self};
    for (OchreColorProjectItem* parent = found->second.parent; parent != nullptr; parent = nodes_.at(parent).parent) {
        path.push_back(parent);
    }
    std::reverse(path.begin(), path.end());
    return path;
}

}  // namespace tintwork
