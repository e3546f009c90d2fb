#pragma once
// Items that take their value from another item, separately for each appearance.

#include <optional>
#include <string>

#include "model/Themeable.h"

namespace tintwork {

class OchreColorProjectItem;

// Target of one variant of a colour or shadow alias. Stored digits "1" to "4".
struct AliasSetType {
    enum class Kind { item, set, setItem, notSet };
    Kind kind = Kind::notSet;
    std::string uuid;  // itemUuid for item, setUuid for set and setItem
    long long index = 0;  // setItem only

    static AliasSetType item(std::string itemUuid) { return {Kind::item, std::move(itemUuid), 0}; }
    static AliasSetType set(std::string setUuid) { return {Kind::set, std::move(setUuid), 0}; }
    static AliasSetType setItem(std::string setUuid, long long index) {
        return {Kind::setItem, std::move(setUuid), index};
    }
    static AliasSetType notSet() { return {}; }
};

// Target of one variant of a number, boolean or string alias. Stored digits "1" and "2".
struct ItemAliasType {
    enum class Kind { item, notSet };
    Kind kind = Kind::notSet;
    std::string itemUuid;

    static ItemAliasType item(std::string uuid) { return {Kind::item, std::move(uuid)}; }
    static ItemAliasType notSet() { return {}; }
};

// Variant slots of an alias, in the order default (light), high contrast, dark, dark high contrast.
inline constexpr ColorSource aliasVariantOrder[4] = {ColorSource::light, ColorSource::lightHighContrast,
                                                     ColorSource::dark, ColorSource::darkHighContrast};

// Colour and shadow aliases (they may point at an item, a whole set or one set member).
// Index 0..3 of the arrays follows aliasVariantOrder. References do not own.
struct OchreColorSetAlias {
    AliasSetType aliasTypes[4];
    OchreColorProjectItem* referencedProjectItems[4] = {nullptr, nullptr, nullptr, nullptr};
    std::optional<long long> referencedSetIndexes[4];
    AppearanceType appearanceType = AppearanceType::none;
    double autoContrastAmount = defaultAutoContrastAmount;
};
struct OchreColorAlias : OchreColorSetAlias {};
struct OchreColorShadowAlias : OchreColorSetAlias {};

// Number, boolean and string aliases (they point at an item).
struct OchreColorItemAlias {
    ItemAliasType aliasTypes[4];
    OchreColorProjectItem* referencedProjectItems[4] = {nullptr, nullptr, nullptr, nullptr};
    AppearanceType appearanceType = AppearanceType::none;
    double autoContrastAmount = defaultAutoContrastAmount;
};
struct OchreColorNumberAlias : OchreColorItemAlias {};
struct OchreColorBooleanAlias : OchreColorItemAlias {};
struct OchreColorStringAlias : OchreColorItemAlias {};

// True when every variant that refers to a set refers to the whole set.
bool isWholeSetAlias(const OchreColorSetAlias& alias);
// Member count of a set alias: 0 unless isWholeSetAlias; else the smallest `steps`
// among the referenced sets, a variant without a referenced set counting as 99.
int setAliasMemberCount(const OchreColorSetAlias& alias);

}  // namespace tintwork
