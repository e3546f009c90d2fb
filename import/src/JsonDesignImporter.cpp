#include "import/JsonDesignImporter.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "SourceText.h"
#include "ImportHelpers.h"
#include "colour/ColorConverter.h"
#include "import/SetBuilder.h"
#include "model/FileIO.h"
#include "model/Uuid.h"

namespace tintwork {

namespace {

using Json = nlohmann::json;

// The deepest nesting of groups an import may have, so that hostile input cannot
// exhaust the stack here or in the exporters that walk the imported tree.
constexpr int maxNestingDepth = 200;
constexpr std::size_t minimumSetSize = 3;
constexpr std::size_t maximumSetSize = 32;
// Components beyond this magnitude cannot be printed or converted sensibly; such a colour is dropped.
constexpr double largestComponent = 1e6;

constexpr const char* invalidColorMessage = "Invalid color value in JSON file, no colorspace or hex value specified";

// A number, or a boolean as 0 or 1.
std::optional<double> numericReading(const Json& value) {
    if (value.is_number()) {
        return value.get<double>();
    }
    if (value.is_boolean()) {
        return value.get<bool>() ? 1.0 : 0.0;
    }
    return std::nullopt;
}

const Json* member(const Json& object, const char* key) {
    auto found = object.find(key);
    return found == object.end() ? nullptr : &*found;
}

std::string lowercasedASCII(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c); });
    return text;
}

std::string replaceAll(std::string text, std::string_view from, std::string_view to) {
    std::size_t position = 0;
    while ((position = text.find(from, position)) != std::string::npos) {
        text.replace(position, from.size(), to);
        position += to.size();
    }
    return text;
}

// "#RRGGBBAA" or "#RRGGBB" as the colour text reader takes it.
std::optional<ColorValue> parseHexColor(const std::string& text) {
    return parseColor(replaceAll(text, "#", "0x"), ColorFormat::hexRGBA, ColorSpace::sRGB, false).color;
}

// A whole decimal floating-point text, nothing before or after it.
std::optional<double> parseDecimal(const std::string& text) {
    if (text.empty() || std::isspace(static_cast<unsigned char>(text.front()))) {
        return std::nullopt;
    }
    char* end = nullptr;
    double value = std::strtod(text.c_str(), &end);
    if (end != text.c_str() + text.size() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

// A whole decimal integer with an optional sign; nullopt on anything else or overflow.
std::optional<long long> parseInteger(std::string_view text) {
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
        if (!text.empty() && text.front() == '-') {
            return std::nullopt;
        }
    }
    long long value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

bool isUsableColor(const ColorValue& color) {
    for (double component : color.rgbaComponents()) {
        if (!std::isfinite(component) || std::fabs(component) > largestComponent) {
            return false;
        }
    }
    return true;
}

template <typename Payload>
void append(OchreColorProjectItem& parent, const std::string& name, Payload payload) {
    parent.group->items.push_back(std::make_shared<OchreColorProjectItem>(name, newUUID(), std::move(payload)));
}

// Reads one JSON tree into items; one instance per import.
class NodeReader {
public:
    NodeReader(const JsonDesignImporter& owner, const std::string& source) : importer(owner), sourceName(source) {}

    // Reads `node` and then releases it, so that the parsed document shrinks as items grow.
    void readNode(const std::string& name, Json& node, OchreColorProjectItem& parent, int depth) {
        readNodeValue(name, node, parent, depth);
        node = Json();
    }

private:
    void readNodeValue(const std::string& name, Json& node, OchreColorProjectItem& parent, int depth) {
        if (!node.is_object() || !parent.group) {
            return;
        }
        const Json* type = member(node, "$type");
        const Json* value = member(node, "$value");
        if (type && type->is_string() && value) {
            const std::string& word = type->get_ref<const std::string&>();
            if (word == "color" && value->is_object()) {
                readColorToken(name, *value, parent);
            } else if (word == "number" && numericReading(*value)) {
                readNumberToken(name, node, *numericReading(*value), parent);
            } else if (word == "shadow" && value->is_object()) {
                readShadowToken(name, *value, parent);
            }
            return;
        }
        if (value && value->is_string()) {
            OchreColorString payload;
            payload.value.lightVariant = value->get<std::string>();
            append(parent, name, std::move(payload));
            return;
        }
        if (value && value->is_boolean()) {
            OchreColorBoolean payload;
            payload.value.lightVariant = value->get<bool>();
            append(parent, name, std::move(payload));
            return;
        }
        if (depth >= maxNestingDepth) {
            // Leaving the group out would import a part of the file as if it were all of it.
            throw DocumentColorParsingError(sourceName + ": the group \u201c" + name + "\u201d is nested deeper than " +
                                            std::to_string(maxNestingDepth) + " groups.");
        }
        auto group = std::make_shared<OchreColorProjectItem>(name, newUUID(), OchreColorGroup{});
        parent.group->items.push_back(group);
        // Objects keep their keys in ascending order, which fixes the order of siblings.
        for (auto&& [key, child] : node.items()) {
            readNode(key, child, *group, depth + 1);
        }
    }

    void readColorToken(const std::string& name, const Json& value, OchreColorProjectItem& parent) {
        std::optional<ColorValue> color = readColor(value);
        if (!color || !isUsableColor(*color)) {
            return;
        }
        OchreColorItem payload;
        payload.color.name = name;
        payload.color.uuid = newUUID();
        payload.color.lightVariant = *color;
        payload.colorSpace = importing::spaceOfEncoding(color->encoding());
        append(parent, name, std::move(payload));
    }

    void readNumberToken(const std::string& name, const Json& node, double number, OchreColorProjectItem& parent) {
        const Json* extensions = member(node, "$extensions");
        const Json* kind = (extensions && extensions->is_object()) ? member(*extensions, "com.korvid.ochre-type")
                                                                   : nullptr;
        if (kind && kind->is_string() && kind->get_ref<const std::string&>() == "boolean") {
            OchreColorBoolean payload;
            payload.value.lightVariant = number == 1.0;
            append(parent, name, std::move(payload));
            return;
        }
        OchreColorNumber payload;
        payload.value.lightVariant = number;
        append(parent, name, std::move(payload));
    }

    void readShadowToken(const std::string& name, const Json& value, OchreColorProjectItem& parent) {
        const Json* colorText = member(value, "color");
        if (!colorText || !colorText->is_string()) {
            return;
        }
        auto length = [&](const char* key) -> std::optional<double> {
            const Json* text = member(value, key);
            std::string raw = (text && text->is_string()) ? text->get<std::string>() : "0px";
            return parseDecimal(replaceAll(std::move(raw), "px", ""));
        };
        std::optional<double> blur = length("blur");
        std::optional<double> spread = length("spread");
        std::optional<double> offsetX = length("offsetX");
        std::optional<double> offsetY = length("offsetY");
        if (!blur || !spread || !offsetX || !offsetY) {
            return;
        }
        std::optional<ColorValue> color = parseHexColor(colorText->get<std::string>());
        if (!color) {
            return;
        }
        OchreColorShadow payload;
        payload.shadow.name = name;
        payload.shadow.uuid = newUUID();
        payload.shadow.lightVariant = ShadowDetails{*offsetX, *offsetY, *blur, *spread, *color};
        payload.colorSpace = importing::spaceOfEncoding(color->encoding());
        append(parent, name, std::move(payload));
    }

    // The components under "$colorSpace" when there are exactly three, else "$hex".
    std::optional<ColorValue> readColor(const Json& value) const {
        const Json* space = member(value, "$colorSpace");
        const Json* components = (space && space->is_object()) ? member(*space, "$components") : nullptr;
        if (components && components->is_array() && components->size() == 3) {
            const Json* spaceName = member(*space, "name");
            bool displayP3 = spaceName && spaceName->is_string() && spaceName->get_ref<const std::string&>() ==
                                                                        "display-p3";
            double values[3];
            for (std::size_t i = 0; i < 3; ++i) {
                values[i] = numericReading((*components)[i]).value_or(0.0);
            }
            const Json* alphaValue = member(value, "$alpha");
            double alpha = alphaValue ? numericReading(*alphaValue).value_or(1.0) : 1.0;
            return ColorValue(displayP3 ? ColorEncoding::displayP3 : ColorEncoding::sRGB, values[0], values[1],
                              values[2], alpha);
        }
        const Json* hex = member(value, "$hex");
        if (hex && hex->is_string()) {
            return parseHexColor(hex->get<std::string>());
        }
        if (importer.logger) {
            importer.logger(invalidColorMessage);
        }
        return std::nullopt;
    }

    const JsonDesignImporter& importer;
    const std::string& sourceName;  // names the file in errors
};

Json parseDocument(std::string_view text, const std::string& sourceName) {
    try {
        return Json::parse(text);
    } catch (const Json::exception& error) {  // syntax errors, and numbers too large for a double
        // The library's text starts with its own exception tag, which says nothing to a user.
        std::string detail = error.what();
        if (std::size_t tagEnd = detail.find("] "); !detail.empty() && detail.front() == '[' &&
                                                    tagEnd != std::string::npos) {
            detail.erase(0, tagEnd + 2);
        }
        throw DocumentColorParsingError(sourceName + " is not valid JSON: " + importing::wellFormedUTF8(detail));
    }
}

bool isGroupItem(const OchreColorProjectItem& item) {
    return item.itemType == ProjectItemType::group && item.group.has_value();
}

// The parts of the set collapse that differ between colours and shadows.
struct ColorSetKind {
    static bool isMember(const OchreColorProjectItem& item) {
        return item.itemType == ProjectItemType::color && item.color.has_value();
    }
    static ThemeableColor member(const OchreColorProjectItem& item) {
        ThemeableColor color;
        color.name = item.name;
        color.uuid = newUUID();
        color.lightVariant = item.color->color.lightVariant;
        return color;
    }
    static OchreColorSet makeSet(const std::vector<ThemeableColor>& members) { return makeColorSet(members); }
};

struct ShadowSetKind {
    static bool isMember(const OchreColorProjectItem& item) {
        return item.itemType == ProjectItemType::shadow && item.shadow.has_value();
    }
    static ThemeableShadow member(const OchreColorProjectItem& item) {
        ThemeableShadow shadow;
        shadow.name = item.name;
        shadow.uuid = newUUID();
        shadow.lightVariant = item.shadow->shadow.lightVariant;
        return shadow;
    }
    static OchreColorShadowSet makeSet(const std::vector<ThemeableShadow>& members) { return makeShadowSet(members); }
};

// `index` is where `item` stands among the parent's children.
template <typename Kind>
void collapseSet(const ProjectItemPtr& item, OchreColorProjectItem& parent, std::size_t index) {
    if (!item->group) {
        return;
    }
    std::vector<ProjectItemPtr>& children = item->group->items;
    std::vector<std::pair<long long, const OchreColorProjectItem*>> numbered;
    bool qualifies = children.size() >= minimumSetSize && children.size() <= maximumSetSize;
    for (std::size_t i = 0; qualifies && i < children.size(); ++i) {
        std::optional<long long> number = parseInteger(children[i]->name);
        qualifies = Kind::isMember(*children[i]) && number.has_value();
        if (qualifies) {
            numbered.emplace_back(*number, children[i].get());
        }
    }
    if (!qualifies) {
        for (std::size_t i = 0; i < children.size(); ++i) {
            ProjectItemPtr child = children[i];
            collapseSet<Kind>(child, *item, i);
        }
        return;
    }
    std::stable_sort(numbered.begin(), numbered.end(),
                     [](const auto& lhs, const auto& rhs) { return lhs.first < rhs.first; });
    std::vector<decltype(Kind::member(*numbered.front().second))> members;
    for (const auto& entry : numbered) {
        members.push_back(Kind::member(*entry.second));
    }
    if (!parent.group) {
        return;
    }
    auto& siblings = parent.group->items;
    auto place = std::find(siblings.begin(), siblings.end(), item);
    if (index < siblings.size() && siblings[index] == item) {
        place = siblings.begin() + static_cast<std::ptrdiff_t>(index);
    }
    if (place != siblings.end()) {
        *place = std::make_shared<OchreColorProjectItem>(item->name, newUUID(), Kind::makeSet(members));
    }
}

ProjectItemPtr firstGroupNamed(const OchreColorGroup& group, std::string_view lowercasedName) {
    for (const ProjectItemPtr& child : group.items) {
        if (lowercasedASCII(child->name) == lowercasedName) {
            return isGroupItem(*child) ? child : nullptr;
        }
    }
    return nullptr;
}

// Copies b's light value into a's `variant` slot when both are of one kind that merges.
bool mergeItem(OchreColorProjectItem& a, const OchreColorProjectItem& b, ColorSource variant,
               AppearanceType appearance) {
    if (a.itemType != b.itemType) {
        return false;
    }
    switch (a.itemType) {
        case ProjectItemType::color:
            if (!a.color || !b.color) {
                return false;
            }
            a.color->appearanceType = appearance;
            a.color->color.setVariant(variant, b.color->color.lightVariant);
            return true;
        case ProjectItemType::colorSet:
            if (!a.colorSet || !b.colorSet || a.colorSet->colors.size() != b.colorSet->colors.size()) {
                return false;
            }
            a.colorSet->appearanceType = appearance;
            for (std::size_t i = 0; i < a.colorSet->colors.size(); ++i) {
                a.colorSet->colors[i].setVariant(variant, b.colorSet->colors[i].lightVariant);
            }
            return true;
        case ProjectItemType::number:
            if (!a.number || !b.number) {
                return false;
            }
            a.number->appearanceType = appearance;
            a.number->value.setVariant(variant, b.number->value.lightVariant);
            return true;
        case ProjectItemType::boolean:
            if (!a.boolean || !b.boolean) {
                return false;
            }
            a.boolean->appearanceType = appearance;
            a.boolean->value.setVariant(variant, b.boolean->value.lightVariant);
            return true;
        case ProjectItemType::string:
            if (!a.string || !b.string) {
                return false;
            }
            a.string->appearanceType = appearance;
            a.string->value.setVariant(variant, b.string->value.lightVariant);
            return true;
        default: return false;
    }
}

}  // namespace

void JsonDesignImporter::importColors(const std::filesystem::path& url, OchreColorProjectItem& group) {
    importDocument(readFileBytes(url), url.filename().string(), group);
}

void JsonDesignImporter::importText(std::string_view text, OchreColorProjectItem& group) {
    importDocument(text, "The text", group);
}

void JsonDesignImporter::importDocument(std::string_view text, const std::string& sourceName,
                                        OchreColorProjectItem& group) {
    {
        Json document = parseDocument(text, sourceName);
        if (document.is_object() && group.group) {
            NodeReader reader(*this, sourceName);
            // Objects keep their keys in ascending order, which fixes the order of the top level.
            for (auto&& [key, node] : document.items()) {
                reader.readNode(key, node, group, 0);
            }
        }
    }
    collapseColorSets(group);
    collapseShadowSets(group);
    applyAppearanceGroups(group);
}

void JsonDesignImporter::collapseColorSets(OchreColorProjectItem& item) {
    if (!item.group) {
        return;
    }
    for (std::size_t i = 0; i < item.group->items.size(); ++i) {
        ProjectItemPtr child = item.group->items[i];
        collapseSet<ColorSetKind>(child, item, i);
    }
}

void JsonDesignImporter::collapseShadowSets(OchreColorProjectItem& item) {
    if (!item.group) {
        return;
    }
    for (std::size_t i = 0; i < item.group->items.size(); ++i) {
        ProjectItemPtr child = item.group->items[i];
        collapseSet<ShadowSetKind>(child, item, i);
    }
}

void JsonDesignImporter::applyAppearanceGroups(OchreColorProjectItem& root) {
    if (!root.group) {
        return;
    }
    if (applyAppearanceConvention(*root.group, root)) {
        return;
    }
    // A snapshot: pruning may take children out of the root while this runs.
    std::vector<ProjectItemPtr> children = root.group->items;
    for (const ProjectItemPtr& child : children) {
        if (child->group) {
            applyAppearanceConvention(*child->group, root);
        }
    }
}

bool JsonDesignImporter::applyAppearanceConvention(OchreColorGroup& group, OchreColorProjectItem& root) {
    ProjectItemPtr light = firstGroupNamed(group, "light");
    if (!light) {
        return false;
    }
    ProjectItemPtr dark = firstGroupNamed(group, "dark");
    ProjectItemPtr highContrast = firstGroupNamed(group, "high contrast");
    ProjectItemPtr darkHighContrast = firstGroupNamed(group, "dark high contrast");
    if (dark) {
        mergeVariants(*light->group, *dark->group, ColorSource::dark, AppearanceType::lightAndDark);
    }
    if (highContrast) {
        mergeVariants(*light->group, *highContrast->group, ColorSource::lightHighContrast,
                      dark ? AppearanceType::lightDarkHighContrast : AppearanceType::highContrast);
    }
    if (darkHighContrast) {
        mergeVariants(*light->group, *darkHighContrast->group, ColorSource::darkHighContrast,
                      AppearanceType::lightDarkHighContrast);
    }
    if (root.group) {
        pruneEmptyGroups(root);
        std::vector<ProjectItemPtr>& top = root.group->items;
        if (top.size() == 1 && lowercasedASCII(top.front()->name) == "light") {
            ProjectItemPtr only = top.front();
            top = only->group ? only->group->items : std::vector<ProjectItemPtr>{};
        }
    }
    return true;
}

void JsonDesignImporter::pruneEmptyGroups(OchreColorProjectItem& item) {
    if (!item.group) {
        return;
    }
    std::vector<ProjectItemPtr>& children = item.group->items;
    for (const ProjectItemPtr& child : children) {
        pruneEmptyGroups(*child);
    }
    std::erase_if(children,
                  [](const ProjectItemPtr& child) { return isGroupItem(*child) && child->group->items.empty(); });
}

void JsonDesignImporter::mergeVariants(OchreColorGroup& target, OchreColorGroup& source, ColorSource variant,
                                       AppearanceType appearance) {
    // Source children by name, in order. A merged child is always the first remaining one of
    // its name, so one cursor per name finds "the first child with that name" in constant time.
    struct Candidates {
        std::vector<std::size_t> positions;
        std::size_t next = 0;
    };
    std::unordered_map<std::string_view, Candidates> byName;
    for (std::size_t i = 0; i < source.items.size(); ++i) {
        byName[source.items[i]->name].positions.push_back(i);
    }
    std::vector<bool> merged(source.items.size(), false);
    for (const ProjectItemPtr& a : target.items) {
        auto found = byName.find(a->name);
        if (found == byName.end() || found->second.next == found->second.positions.size()) {
            continue;
        }
        Candidates& candidates = found->second;
        const std::size_t position = candidates.positions[candidates.next];
        OchreColorProjectItem& b = *source.items[position];
        if (isGroupItem(*a) && isGroupItem(b)) {
            mergeVariants(*a->group, *b.group, variant, appearance);
            continue;
        }
        if (mergeItem(*a, b, variant, appearance)) {
            merged[position] = true;
            ++candidates.next;
        }
    }
    std::vector<ProjectItemPtr> remaining;
    remaining.reserve(source.items.size());
    for (std::size_t i = 0; i < source.items.size(); ++i) {
        if (!merged[i]) {
            remaining.push_back(std::move(source.items[i]));
        }
    }
    source.items = std::move(remaining);
}

}  // namespace tintwork
