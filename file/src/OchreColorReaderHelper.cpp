#include "OchreColorReaderHelper.h"

#include <pugixml.hpp>

#include <string_view>

#include "TextForms.h"
#include "file/OchreColorFileReader.h"
#include "model/Uuid.h"

namespace tintwork {

namespace {

// The deepest nesting of groups a document may have. It bounds the depth of every
// later walk (exporters, writer) over a damaged or hostile document.
constexpr int maxGroupDepth = 200;

std::string_view textOf(const pugi::xml_node& node) {
    return node.child_value();
}

std::string childText(const pugi::xml_node& node, const char* name) {
    return std::string(textOf(node.child(name)));
}

std::string identifier(const pugi::xml_node& node, bool forceNew) {
    const std::string_view id = textOf(node.child("id"));
    return forceNew || id.empty() ? newUUID() : std::string(id);
}

struct Appearance {
    AppearanceType type = AppearanceType::none;
    double autoContrastAmount = defaultAutoContrastAmount;
};

Appearance readAppearance(const pugi::xml_node& node) {
    Appearance appearance;
    appearance.type = appearanceTypeFromWord(textOf(node.child("appearance"))).value_or(AppearanceType::none);
    appearance.autoContrastAmount = parseDouble(textOf(node.child("autoContrast"))).value_or(defaultAutoContrastAmount);
    return appearance;
}

std::optional<ColorSource> variantSource(const pugi::xml_node& variant) {
    const pugi::xml_attribute type = variant.attribute("type");
    if (!type) {
        return ColorSource::light;
    }
    const std::string_view word = type.value();
    if (word == "dark") {
        return ColorSource::dark;
    }
    if (word == "highContrast") {
        return ColorSource::lightHighContrast;
    }
    if (word == "darkHighContrast") {
        return ColorSource::darkHighContrast;
    }
    return std::nullopt;
}

// The variants of a themeable element; nothing when the light variant is missing or unreadable.
// For each appearance the first `variant` element counts and later duplicates are ignored.
template <typename T, typename Content>
std::optional<Themeable<T>> readVariants(const pugi::xml_node& element, Content&& content) {
    std::optional<T> slots[4];
    bool seen[4] = {false, false, false, false};
    for (const pugi::xml_node& variant : element.child("variants").children("variant")) {
        const std::optional<ColorSource> source = variantSource(variant);
        if (!source) {
            continue;
        }
        const auto slot = static_cast<std::size_t>(*source);
        if (seen[slot]) {
            continue;
        }
        seen[slot] = true;
        slots[slot] = content(variant);
    }
    if (!slots[static_cast<std::size_t>(ColorSource::light)]) {
        return std::nullopt;
    }
    Themeable<T> value;
    for (ColorSource source :
         {ColorSource::light, ColorSource::lightHighContrast, ColorSource::dark, ColorSource::darkHighContrast}) {
        value.setVariant(source, slots[static_cast<std::size_t>(source)]);
    }
    return value;
}

std::optional<ThemeableColor> readColor(const pugi::xml_node& element, ColorSpace space) {
    auto variants = readVariants<ColorValue>(
        element, [&](const pugi::xml_node& variant) { return parseColorText(textOf(variant.child("rgba")), space); });
    if (!variants) {
        return std::nullopt;
    }
    ThemeableColor color;
    static_cast<Themeable<ColorValue>&>(color) = std::move(*variants);
    color.name = childText(element, "name");
    color.uuid = newUUID();
    return color;
}

std::optional<ShadowDetails> readShadowDetails(const pugi::xml_node& variant, ColorSpace space) {
    const pugi::xml_node details = variant.child("shadowDetails");
    if (!details) {
        return std::nullopt;
    }
    const std::optional<double> x = parseDouble(textOf(details.child("x")));
    const std::optional<double> y = parseDouble(textOf(details.child("y")));
    const std::optional<double> blur = parseDouble(textOf(details.child("blur")));
    const std::optional<double> spread = parseDouble(textOf(details.child("spread")));
    const std::optional<ColorValue> color = parseColorText(textOf(details.child("colorRgba")), space);
    if (!x || !y || !blur || !spread || !color) {
        return std::nullopt;
    }
    return ShadowDetails{*x, *y, *blur, *spread, *color};
}

std::optional<ThemeableShadow> readShadow(const pugi::xml_node& element, ColorSpace space) {
    auto variants = readVariants<ShadowDetails>(
        element, [&](const pugi::xml_node& variant) { return readShadowDetails(variant, space); });
    if (!variants) {
        return std::nullopt;
    }
    ThemeableShadow shadow;
    static_cast<Themeable<ShadowDetails>&>(shadow) = std::move(*variants);
    shadow.name = childText(element, "name");
    shadow.uuid = newUUID();
    return shadow;
}

std::optional<ThemeableNumber> readNumber(const pugi::xml_node& element) {
    return readVariants<double>(
        element, [](const pugi::xml_node& variant) { return parseDouble(textOf(variant.child("value"))); });
}

std::optional<ThemeableBoolean> readBoolean(const pugi::xml_node& element) {
    return readVariants<bool>(element, [](const pugi::xml_node& variant) -> std::optional<bool> {
        const std::string_view text = textOf(variant.child("value"));
        if (text == "true") {
            return true;
        }
        if (text == "false") {
            return false;
        }
        return std::nullopt;
    });
}

std::optional<ThemeableString> readString(const pugi::xml_node& element) {
    return readVariants<std::string>(element, [](const pugi::xml_node& variant) -> std::optional<std::string> {
        const pugi::xml_node value = variant.child("value");
        if (!value) {
            return std::nullopt;
        }
        return std::string(textOf(value));
    });
}

// The set block; nothing when middle, type, naming or interpolation can't be read.
template <typename Set>
bool readSetBlock(const pugi::xml_node& element, Set& set) {
    const std::optional<double> middle = parseDouble(textOf(element.child("middle")));
    const std::optional<long long> type = parseInteger(textOf(element.child("type")));
    const std::optional<long long> naming = parseInteger(textOf(element.child("naming")));
    const std::optional<long long> interpolation = parseInteger(textOf(element.child("interpolation")));
    if (!middle || !type || !naming || !interpolation) {
        return false;
    }
    const std::optional<SetType> setType = setTypeFromRaw(*type);
    const std::optional<ColorNamingScheme> namingScheme = colorNamingSchemeFromRaw(*naming);
    const std::optional<InterpolationMethod> method = interpolationMethodFromRaw(*interpolation);
    if (!setType || !namingScheme || !method) {
        return false;
    }
    set.middleLocation = *middle;
    set.type = *setType;
    set.namingScheme = *namingScheme;
    set.interpolationMethod = *method;
    const std::optional<long long> curve = parseInteger(textOf(element.child("curve")));
    set.curveType = curve ? curveTypeFromRaw(*curve).value_or(CurveType::linear) : CurveType::linear;
    set.curveAmount = parseDouble(textOf(element.child("curveAmount"))).value_or(1.0);
    return true;
}

AliasSetType readSetAliasType(const pugi::xml_node& element, const char* typeName, const std::string& suffix) {
    const std::string_view digit = textOf(element.child(typeName));
    const std::string uuid = childText(element, ("referencedItemId" + suffix).c_str());
    if (digit == "1") {
        return AliasSetType::item(uuid);
    }
    if (digit == "2") {
        return AliasSetType::set(uuid);
    }
    if (digit == "3") {
        const long long index = parseInteger(textOf(element.child(("subIndex" + suffix).c_str()))).value_or(0);
        return AliasSetType::setItem(uuid, index);
    }
    return AliasSetType::notSet();
}

ItemAliasType readItemAliasType(const pugi::xml_node& element, const char* typeName, const std::string& suffix) {
    if (textOf(element.child(typeName)) == "2") {
        return ItemAliasType::notSet();
    }
    return ItemAliasType::item(childText(element, ("referencedItemId" + suffix).c_str()));
}

constexpr const char* aliasTypeElements[4] = {"type", "typeLightHighContrast", "typeDark", "typeDarkHighContrast"};
constexpr const char* aliasReferenceSuffixes[4] = {"", "LightHighContrast", "Dark", "DarkHighContrast"};

template <typename Alias>
Alias readSetAlias(const pugi::xml_node& element) {
    Alias alias;
    for (int slot = 0; slot < 4; ++slot) {
        alias.aliasTypes[slot] = readSetAliasType(element, aliasTypeElements[slot], aliasReferenceSuffixes[slot]);
    }
    const Appearance appearance = readAppearance(element);
    alias.appearanceType = appearance.type;
    alias.autoContrastAmount = appearance.autoContrastAmount;
    return alias;
}

template <typename Alias>
Alias readItemAlias(const pugi::xml_node& element) {
    Alias alias;
    for (int slot = 0; slot < 4; ++slot) {
        alias.aliasTypes[slot] = readItemAliasType(element, aliasTypeElements[slot], aliasReferenceSuffixes[slot]);
    }
    const Appearance appearance = readAppearance(element);
    alias.appearanceType = appearance.type;
    alias.autoContrastAmount = appearance.autoContrastAmount;
    return alias;
}

}  // namespace

OchreColorReaderHelper::OchreColorReaderHelper(const OchreColorProject& project) {
    for (const BuildGroupPtr& group : project.buildGroups) {
        if (group) {
            buildGroups_.try_emplace(group->uuid, group);
        }
    }
    for (const TestGroupPtr& group : project.testGroups) {
        if (group) {
            testGroups_.try_emplace(group->uuid, group);
        }
    }
}

ProjectItemPtr OchreColorReaderHelper::readItem(const pugi::xml_node& element, bool forceNewIdentifiers) const {
    return readItem(element, forceNewIdentifiers, 0);
}

ProjectItemPtr OchreColorReaderHelper::readItem(const pugi::xml_node& element, bool forceNewIdentifiers,
                                                int depth) const {
    if (element.type() != pugi::node_element) {
        return nullptr;
    }
    const std::string_view kind = element.name();
    const std::string name = childText(element, "name");
    ProjectItemPtr item;

    if (kind == "group") {
        if (depth >= maxGroupDepth) {
            // Dropping the group would leave its items out of every build and test
            // while the run still reports success.
            throw DocumentFormatError("The group \u201c" + name + "\u201d is nested deeper than " +
                                    std::to_string(maxGroupDepth) + " groups.");
        }
        OchreColorGroup group;
        group.providesNamespace = textOf(element.child("namespace")) == "1";
        for (const pugi::xml_node& child : element.children()) {
            if (ProjectItemPtr member = readItem(child, forceNewIdentifiers, depth + 1)) {
                group.items.push_back(std::move(member));
            }
        }
        item =
            std::make_shared<OchreColorProjectItem>(name, identifier(element, forceNewIdentifiers), std::move(group));
    } else if (kind == "colorItem") {
        OchreColorItem color;
        color.colorSpace = profileSpace(textOf(element.child("profile")));
        std::optional<ThemeableColor> value = readColor(element.child("color"), color.colorSpace);
        if (!value) {
            return nullptr;
        }
        color.color = std::move(*value);
        const Appearance appearance = readAppearance(element);
        color.appearanceType = appearance.type;
        color.autoContrastAmount = appearance.autoContrastAmount;
        item =
            std::make_shared<OchreColorProjectItem>(name, identifier(element, forceNewIdentifiers), std::move(color));
    } else if (kind == "alias") {
        item = std::make_shared<OchreColorProjectItem>(name, identifier(element, forceNewIdentifiers),
                                                       readSetAlias<OchreColorAlias>(element));
    } else if (kind == "colorSet") {
        OchreColorSet set;
        if (!readSetBlock(element, set)) {
            return nullptr;
        }
        set.colorSpace = profileSpace(textOf(element.child("profile")));
        for (const pugi::xml_node& member : element.child("colors").children("color")) {
            if (std::optional<ThemeableColor> color = readColor(member, set.colorSpace)) {
                set.colors.push_back(std::move(*color));
            }
        }
        set.steps = static_cast<int>(set.colors.size());
        const Appearance appearance = readAppearance(element);
        set.appearanceType = appearance.type;
        set.autoContrastAmount = appearance.autoContrastAmount;
        item = std::make_shared<OchreColorProjectItem>(name, identifier(element, forceNewIdentifiers), std::move(set));
    } else if (kind == "numberItem") {
        std::optional<ThemeableNumber> value = readNumber(element.child("number"));
        if (!value) {
            return nullptr;
        }
        OchreColorNumber number;
        number.value = std::move(*value);
        number.minValue = parseDouble(textOf(element.child("min")));
        number.maxValue = parseDouble(textOf(element.child("max")));
        number.steps = parseInteger(textOf(element.child("steps")));
        const Appearance appearance = readAppearance(element);
        number.appearanceType = appearance.type;
        number.autoContrastAmount = appearance.autoContrastAmount;
        item =
            std::make_shared<OchreColorProjectItem>(name, identifier(element, forceNewIdentifiers), std::move(number));
    } else if (kind == "numberAlias") {
        item = std::make_shared<OchreColorProjectItem>(name, identifier(element, forceNewIdentifiers),
                                                       readItemAlias<OchreColorNumberAlias>(element));
    } else if (kind == "booleanItem") {
        std::optional<ThemeableBoolean> value = readBoolean(element.child("boolean"));
        if (!value) {
            return nullptr;
        }
        OchreColorBoolean boolean;
        boolean.value = std::move(*value);
        const Appearance appearance = readAppearance(element);
        boolean.appearanceType = appearance.type;
        boolean.autoContrastAmount = appearance.autoContrastAmount;
        item =
            std::make_shared<OchreColorProjectItem>(name, identifier(element, forceNewIdentifiers), std::move(boolean));
    } else if (kind == "booleanAlias") {
        item = std::make_shared<OchreColorProjectItem>(name, identifier(element, forceNewIdentifiers),
                                                       readItemAlias<OchreColorBooleanAlias>(element));
    } else if (kind == "stringItem") {
        std::optional<ThemeableString> value = readString(element.child("string"));
        if (!value) {
            return nullptr;
        }
        OchreColorString string;
        string.value = std::move(*value);
        const Appearance appearance = readAppearance(element);
        string.appearanceType = appearance.type;
        string.autoContrastAmount = appearance.autoContrastAmount;
        item =
            std::make_shared<OchreColorProjectItem>(name, identifier(element, forceNewIdentifiers), std::move(string));
    } else if (kind == "stringAlias") {
        item = std::make_shared<OchreColorProjectItem>(name, identifier(element, forceNewIdentifiers),
                                                       readItemAlias<OchreColorStringAlias>(element));
    } else if (kind == "shadowItem") {
        OchreColorShadow shadow;
        shadow.colorSpace = profileSpace(textOf(element.child("profile")));
        std::optional<ThemeableShadow> value = readShadow(element.child("shadow"), shadow.colorSpace);
        if (!value) {
            return nullptr;
        }
        shadow.shadow = std::move(*value);
        const Appearance appearance = readAppearance(element);
        shadow.appearanceType = appearance.type;
        shadow.autoContrastAmount = appearance.autoContrastAmount;
        item =
            std::make_shared<OchreColorProjectItem>(name, identifier(element, forceNewIdentifiers), std::move(shadow));
    } else if (kind == "shadowSet") {
        OchreColorShadowSet set;
        if (!readSetBlock(element, set)) {
            return nullptr;
        }
        set.colorSpace = profileSpace(textOf(element.child("profile")));
        for (const pugi::xml_node& member : element.child("shadows").children("shadow")) {
            if (std::optional<ThemeableShadow> shadow = readShadow(member, set.colorSpace)) {
                set.shadows.push_back(std::move(*shadow));
            }
        }
        set.steps = static_cast<int>(set.shadows.size());
        const Appearance appearance = readAppearance(element);
        set.appearanceType = appearance.type;
        set.autoContrastAmount = appearance.autoContrastAmount;
        item = std::make_shared<OchreColorProjectItem>(name, identifier(element, forceNewIdentifiers), std::move(set));
    } else if (kind == "shadowAlias") {
        item = std::make_shared<OchreColorProjectItem>(name, identifier(element, forceNewIdentifiers),
                                                       readSetAlias<OchreColorShadowAlias>(element));
    } else {
        return nullptr;
    }

    item->isExpanded = textOf(element.child("expanded")) == "1";
    if (const pugi::xml_node buildGroupId = element.child("buildGroupId")) {
        const auto found = buildGroups_.find(std::string(textOf(buildGroupId)));
        item->buildGroup = found == buildGroups_.end() ? nullptr : found->second;
    }
    if (const pugi::xml_node testGroupId = element.child("testGroupId")) {
        const auto found = testGroups_.find(std::string(textOf(testGroupId)));
        item->testGroup = found == testGroups_.end() ? nullptr : found->second;
    }
    item->testPosition = testPositionFromWord(textOf(element.child("testPosition"))).value_or(TestPosition::both);
    return item;
}

}  // namespace tintwork
