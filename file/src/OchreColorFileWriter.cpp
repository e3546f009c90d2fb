#include "file/OchreColorFileWriter.h"

#include "TextForms.h"
#include "XmlNode.h"
#include "colour/FatalError.h"

namespace tintwork {

namespace {

using xml::XmlNode;

// Element-name suffixes of the three optional variants of an alias, in slot order 1..3.
constexpr const char* aliasTypeElements[4] = {"type", "typeLightHighContrast", "typeDark", "typeDarkHighContrast"};
constexpr const char* aliasReferenceSuffixes[4] = {"", "LightHighContrast", "Dark", "DarkHighContrast"};

// Variants are written light, dark, high contrast, dark high contrast; the light one has no type.
struct VariantSlot {
    ColorSource source;
    const char* type;
};
constexpr VariantSlot writtenVariants[4] = {{ColorSource::light, nullptr},
                                            {ColorSource::dark, "dark"},
                                            {ColorSource::lightHighContrast, "highContrast"},
                                            {ColorSource::darkHighContrast, "darkHighContrast"}};

void addAppearance(XmlNode& node, AppearanceType type, double autoContrastAmount) {
    if (type != AppearanceType::none) {
        node.add("appearance", std::string(appearanceTypeWord(type)));
    }
    if (isAutomaticHighContrast(type)) {
        node.add("autoContrast", formatG(autoContrastAmount, 2));
    }
}

// `element` holding an optional name and the stored variants, each made by `content`.
template <typename T, typename Content>
void addThemeable(XmlNode& parent, const char* element, const Themeable<T>& value, const std::string* name,
                  Content&& content) {
    XmlNode& node = parent.add(element);
    if (name != nullptr) {
        node.add("name", *name);
    }
    XmlNode& variants = node.add("variants");
    for (const VariantSlot& slot : writtenVariants) {
        const std::optional<T> variant = value.storedVariant(slot.source);
        if (!variant) {
            continue;
        }
        XmlNode& variantNode = variants.add("variant");
        if (slot.type != nullptr) {
            variantNode.attributes["type"] = slot.type;
        }
        content(variantNode, *variant);
    }
}

void addColor(XmlNode& parent, const ThemeableColor& color, ColorSpace space) {
    addThemeable(parent, "color", color, &color.name,
                 [&](XmlNode& node, const ColorValue& value) { node.add("rgba", colorText(value, space)); });
}

void addShadow(XmlNode& parent, const ThemeableShadow& shadow, ColorSpace space) {
    addThemeable(parent, "shadow", shadow, &shadow.name, [&](XmlNode& node, const ShadowDetails& details) {
        XmlNode& detailsNode = node.add("shadowDetails");
        detailsNode.add("x", shortestDecimal(details.xOffset));
        detailsNode.add("y", shortestDecimal(details.yOffset));
        detailsNode.add("blur", shortestDecimal(details.blur));
        detailsNode.add("spread", shortestDecimal(details.spread));
        detailsNode.add("colorRgba", colorText(details.color, space));
    });
}

template <typename Set>
void addSetBlock(XmlNode& node, const Set& set) {
    node.add("steps", std::to_string(set.steps));
    node.add("interpolation", std::to_string(static_cast<int>(set.interpolationMethod)));
    node.add("curve", std::to_string(static_cast<int>(set.curveType)));
    node.add("curveAmount", shortestDecimal(set.curveAmount));
    node.add("type", std::to_string(static_cast<int>(set.type)));
    node.add("middle", shortestDecimal(set.middleLocation));
    node.add("naming", std::to_string(static_cast<int>(set.namingScheme)));
}

void addSetAlias(XmlNode& node, const OchreColorSetAlias& alias) {
    for (int slot = 0; slot < 4; ++slot) {
        const AliasSetType::Kind kind = alias.aliasTypes[slot].kind;
        if (slot == 0 || kind != AliasSetType::Kind::notSet) {
            node.add(aliasTypeElements[slot], std::to_string(static_cast<int>(kind) + 1));
        }
    }
    addAppearance(node, alias.appearanceType, alias.autoContrastAmount);
    for (int slot = 0; slot < 4; ++slot) {
        const AliasSetType& type = alias.aliasTypes[slot];
        if (type.kind == AliasSetType::Kind::notSet) {
            continue;
        }
        const std::string suffix = aliasReferenceSuffixes[slot];
        node.add("referencedItemId" + suffix, type.uuid);
        if (type.kind == AliasSetType::Kind::setItem) {
            node.add("subIndex" + suffix, std::to_string(type.index));
        }
    }
}

void addItemAlias(XmlNode& node, const OchreColorItemAlias& alias) {
    for (int slot = 0; slot < 4; ++slot) {
        const ItemAliasType::Kind kind = alias.aliasTypes[slot].kind;
        if (slot == 0 || kind != ItemAliasType::Kind::notSet) {
            node.add(aliasTypeElements[slot], std::to_string(static_cast<int>(kind) + 1));
        }
    }
    addAppearance(node, alias.appearanceType, alias.autoContrastAmount);
    for (int slot = 0; slot < 4; ++slot) {
        const ItemAliasType& type = alias.aliasTypes[slot];
        if (type.kind != ItemAliasType::Kind::notSet) {
            node.add("referencedItemId" + std::string(aliasReferenceSuffixes[slot]), type.itemUuid);
        }
    }
}

[[noreturn]] void invalidItem() {
    throw FatalError("Unknown or invalid project item encountered");
}

void addItem(XmlNode& parent, const OchreColorProjectItem& item);

void addItemBody(XmlNode& parent, const OchreColorProjectItem& item) {
    if (!item.hasPayload()) {
        invalidItem();
    }
    auto start = [&](const char* element) -> XmlNode& {
        XmlNode& node = parent.add(element);
        node.add("id", item.uuid);
        node.add("name", item.name);
        return node;
    };
    auto startAlias = [&](const char* element) -> XmlNode& {
        XmlNode& node = parent.add(element);
        node.add("name", item.name);
        return node;
    };
    switch (item.itemType) {
        case ProjectItemType::group: {
            XmlNode& node = start("group");
            if (item.isExpanded) {
                node.add("expanded", "1");
            }
            if (item.group->providesNamespace) {
                node.add("namespace", "1");
            }
            for (const ProjectItemPtr& member : item.group->items) {
                if (!member) {
                    invalidItem();
                }
                addItem(node, *member);
            }
            return;
        }
        case ProjectItemType::color: {
            const OchreColorItem& color = *item.color;
            XmlNode& node = start("colorItem");
            node.add("profile", std::string(profileName(color.colorSpace)));
            addAppearance(node, color.appearanceType, color.autoContrastAmount);
            addColor(node, color.color, color.colorSpace);
            return;
        }
        case ProjectItemType::colorSet: {
            const OchreColorSet& set = *item.colorSet;
            XmlNode& node = start("colorSet");
            node.add("profile", std::string(profileName(set.colorSpace)));
            addAppearance(node, set.appearanceType, set.autoContrastAmount);
            addSetBlock(node, set);
            XmlNode& colors = node.add("colors");
            for (const ThemeableColor& member : set.colors) {
                addColor(colors, member, set.colorSpace);
            }
            return;
        }
        case ProjectItemType::number: {
            const OchreColorNumber& number = *item.number;
            XmlNode& node = start("numberItem");
            addThemeable(node, "number", number.value, nullptr,
                         [](XmlNode& variant, double value) { variant.add("value", shortestDecimal(value)); });
            if (number.minValue) {
                node.add("min", shortestDecimal(*number.minValue));
            }
            if (number.maxValue) {
                node.add("max", shortestDecimal(*number.maxValue));
            }
            if (number.steps) {
                node.add("steps", std::to_string(*number.steps));
            }
            addAppearance(node, number.appearanceType, number.autoContrastAmount);
            return;
        }
        case ProjectItemType::boolean: {
            const OchreColorBoolean& boolean = *item.boolean;
            XmlNode& node = start("booleanItem");
            addThemeable(node, "boolean", boolean.value, nullptr,
                         [](XmlNode& variant, bool value) { variant.add("value", value ? "true" : "false"); });
            addAppearance(node, boolean.appearanceType, boolean.autoContrastAmount);
            return;
        }
        case ProjectItemType::string: {
            const OchreColorString& string = *item.string;
            XmlNode& node = start("stringItem");
            addThemeable(node, "string", string.value, nullptr,
                         [](XmlNode& variant, const std::string& value) { variant.add("value", value); });
            addAppearance(node, string.appearanceType, string.autoContrastAmount);
            return;
        }
        case ProjectItemType::shadow: {
            const OchreColorShadow& shadow = *item.shadow;
            XmlNode& node = start("shadowItem");
            node.add("profile", std::string(profileName(shadow.colorSpace)));
            addAppearance(node, shadow.appearanceType, shadow.autoContrastAmount);
            addShadow(node, shadow.shadow, shadow.colorSpace);
            return;
        }
        case ProjectItemType::shadowSet: {
            const OchreColorShadowSet& set = *item.shadowSet;
            XmlNode& node = start("shadowSet");
            node.add("profile", std::string(profileName(set.colorSpace)));
            addAppearance(node, set.appearanceType, set.autoContrastAmount);
            addSetBlock(node, set);
            XmlNode& shadows = node.add("shadows");
            for (const ThemeableShadow& member : set.shadows) {
                addShadow(shadows, member, set.colorSpace);
            }
            return;
        }
        case ProjectItemType::colorAlias: addSetAlias(startAlias("alias"), *item.colorAlias); return;
        case ProjectItemType::shadowAlias: addSetAlias(startAlias("shadowAlias"), *item.shadowAlias); return;
        case ProjectItemType::numberAlias: addItemAlias(startAlias("numberAlias"), *item.numberAlias); return;
        case ProjectItemType::booleanAlias: addItemAlias(startAlias("booleanAlias"), *item.booleanAlias); return;
        case ProjectItemType::stringAlias: addItemAlias(startAlias("stringAlias"), *item.stringAlias); return;
    }
    invalidItem();
}

void addItem(XmlNode& parent, const OchreColorProjectItem& item) {
    addItemBody(parent, item);
    XmlNode& node = parent.children.back();
    if (item.buildGroup) {
        node.add("buildGroupId", item.buildGroup->uuid);
    }
    if (item.testGroup) {
        node.add("testGroupId", item.testGroup->uuid);
        node.add("testPosition", std::string(testPositionWord(item.testPosition)));
    }
}

void addBuildGroup(XmlNode& parent, const BuildGroup& group) {
    XmlNode& node = parent.add("buildGroup");
    node.add("id", group.uuid);
    node.add("name", group.name);
    if (group.isExpanded) {
        node.add("expanded", "1");
    }
    XmlNode& tasks = node.add("tasks");
    for (const BuildTask& task : group.tasks) {
        XmlNode& taskNode = tasks.add("task");
        taskNode.add("name", task.name);
        taskNode.add("id", task.uuid);
        taskNode.add("folder", task.exportFileFolder);
        taskNode.add("fileName", task.exportFileName);
        taskNode.add("fileType", std::to_string(static_cast<int>(task.exportFileType)));
        taskNode.add("nameTransform", std::to_string(static_cast<int>(task.nameTransform)));
        if (task.exportFormat) {
            taskNode.add("format", std::string(buildExportFormatWord(*task.exportFormat)));
        }
        if (task.namePrefix) {
            taskNode.add("namePrefix", *task.namePrefix);
        }
        if (task.nameSuffix) {
            taskNode.add("nameSuffix", *task.nameSuffix);
        }
        if (!task.customData.empty()) {
            XmlNode& configuration = taskNode.add("configuration");
            for (const auto& [key, value] : task.customData) {
                configuration.add(key, value);
            }
        }
    }
}

void addTestGroup(XmlNode& parent, const TestGroup& group) {
    XmlNode& node = parent.add("testGroup");
    node.add("id", group.uuid);
    node.add("name", group.name);
    if (group.isExpanded) {
        node.add("expanded", "1");
    }
    XmlNode& tests = node.add("tests");
    for (const TestTask& test : group.tests) {
        XmlNode& testNode = tests.add("test");
        testNode.add("name", test.name);
        testNode.add("id", test.uuid);
        testNode.add("type", std::string(testTaskTypeWord(test.taskType)));
        if (test.thresholdType) {
            testNode.add("thresholdType", std::string(testThresholdTypeWord(*test.thresholdType)));
        }
        if (test.threshold) {
            testNode.add("threshold", std::to_string(*test.threshold));
        }
        if (test.minFontSize) {
            testNode.add("fontSize", std::to_string(*test.minFontSize));
        }
        if (test.minFontWeight) {
            testNode.add("fontWeight", std::string(testFontWeightWord(*test.minFontWeight)));
        }
    }
}

// True when the bytes are well-formed UTF-8 (no overlong forms, surrogates or values past U+10FFFF).
bool isValidUTF8(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size()) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte < 0x80) {
            ++i;
            continue;
        }
        int length = 0;
        unsigned int low = 0x80;
        unsigned int high = 0xBF;
        if (byte >= 0xC2 && byte <= 0xDF) {
            length = 2;
        } else if (byte >= 0xE0 && byte <= 0xEF) {
            length = 3;
            low = byte == 0xE0 ? 0xA0 : 0x80;
            high = byte == 0xED ? 0x9F : 0xBF;
        } else if (byte >= 0xF0 && byte <= 0xF4) {
            length = 4;
            low = byte == 0xF0 ? 0x90 : 0x80;
            high = byte == 0xF4 ? 0x8F : 0xBF;
        } else {
            return false;
        }
        if (i + static_cast<std::size_t>(length) > text.size()) {
            return false;
        }
        for (int k = 1; k < length; ++k) {
            const auto next = static_cast<unsigned char>(text[i + static_cast<std::size_t>(k)]);
            const unsigned int lower = k == 1 ? low : 0x80;
            const unsigned int upper = k == 1 ? high : 0xBF;
            if (next < lower || next > upper) {
                return false;
            }
        }
        i += static_cast<std::size_t>(length);
    }
    return true;
}

}  // namespace

std::string OchreColorFileWriter::write(const OchreColorProject& project) const {
    XmlNode root("tintwork");
    root.attributes["xmlns"] = documentNamespace;
    root.attributes["xmlns:xsi"] = "http://www.w3.org/2001/XMLSchema-instance";
    root.attributes["xsi:schemaLocation"] = documentSchemaLocation;

    XmlNode& projectNode = root.add("project");
    XmlNode& header = projectNode.add("header");
    header.add("version", documentFormatVersion);
    header.add("description", project.projectDescription);

    XmlNode& settings = projectNode.add("settings");
    for (const DocumentSetting& setting : project.settings) {
        XmlNode& node = settings.add("setting");
        node.add("key", setting.key);
        node.add("value", setting.value);
    }

    XmlNode& items = projectNode.add("colorItems");
    for (const ProjectItemPtr& item : project.items) {
        if (!item) {
            invalidItem();
        }
        addItem(items, *item);
    }

    XmlNode& buildGroups = projectNode.add("buildGroups");
    for (const BuildGroupPtr& group : project.buildGroups) {
        if (group) {
            addBuildGroup(buildGroups, *group);
        }
    }
    XmlNode& testGroups = projectNode.add("testGroups");
    for (const TestGroupPtr& group : project.testGroups) {
        if (group) {
            addTestGroup(testGroups, *group);
        }
    }

    std::string out = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
    xml::print(root, 0, out);
    if (!isValidUTF8(out)) {
        throw EncodingError("The document's text can't be encoded as UTF-8");
    }
    return out;
}

}  // namespace tintwork
