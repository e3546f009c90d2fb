#include "export/JsonDesignExporter.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <optional>
#include <string_view>

#include <nlohmann/json.hpp>

#include "colour/ColorConverter.h"
#include "export/CodeName.h"
#include "export/NumberFormat.h"
#include "model/FileIO.h"

namespace tintwork {

using Json = nlohmann::json;

struct JsonDesignExporter::JsonValue {
    Json value;
};

namespace {

// Numbers go into the tree as marked strings, because the JSON library cannot print a
// chosen precision; the marks and their quotes are cut from the serialised text.
constexpr std::string_view numberMarkOpen = "\xC2\xAB\xC2\xAB\xC2\xAB";   // «««
constexpr std::string_view numberMarkClose = "\xC2\xBB\xC2\xBB\xC2\xBB";  // »»»

Json markedNumber(double value) {
    if (!std::isfinite(value)) {
        return nullptr;  // JSON has no text for these
    }
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.4g", value);
    return std::string(numberMarkOpen) + buffer + std::string(numberMarkClose);
}

std::string removeNumberMarks(std::string text) {
    const std::string quotedOpen = "\"" + std::string(numberMarkOpen);
    const std::string quotedClose = std::string(numberMarkClose) + "\"";
    for (const std::string& mark : {quotedOpen, quotedClose}) {
        std::string result;
        result.reserve(text.size());
        std::size_t start = 0;
        for (std::size_t found; (found = text.find(mark, start)) != std::string::npos; start = found + mark.size()) {
            result.append(text, start, found - start);
        }
        result.append(text, start, std::string::npos);
        text = std::move(result);
    }
    return text;
}

// One of the four trees and the variant it is made of.
struct Tree {
    ColorSource source;
    const char* rootKey;
    Json json = Json::object();
};

// The colour as written: sRGB and Display P3 stay, anything else goes to Display P3.
// Nothing when it cannot be converted or has a component without a number.
std::optional<ColorValue> writableColor(const ColorValue& color) {
    std::optional<ColorValue> result = color;
    if (color.encoding() != ColorEncoding::sRGB && color.encoding() != ColorEncoding::displayP3) {
        result = color.converted(ColorEncoding::displayP3);
    }
    if (!result) {
        return std::nullopt;
    }
    for (double component : result->rgbaComponents()) {
        if (!std::isfinite(component)) {
            return std::nullopt;
        }
    }
    return result;
}

// "#RRGGBBAA" of a colour that writableColor gave.
std::string hexText(const ColorValue& color) {
    ColorSpace space = color.encoding() == ColorEncoding::displayP3 ? ColorSpace::displayP3 : ColorSpace::sRGB;
    std::string text = colorString(color, ColorFormat::hexRGBA, space).colorString.value_or("");
    if (text.rfind("0x", 0) == 0) {
        text.replace(0, 2, "#");
    }
    return text;
}

std::optional<Json> colorToken(const ColorValue& variant) {
    std::optional<ColorValue> color = writableColor(variant);
    if (!color) {
        return std::nullopt;
    }
    Json value = Json::object();
    value["$colorSpace"] = {
        {"name", color->encoding() == ColorEncoding::displayP3 ? "display-p3" : "srgb"},
        {"$components", Json::array({markedNumber(color->red()), markedNumber(color->green()),
                                     markedNumber(color->blue())})},
    };
    value["$hex"] = hexText(*color);
    if (color->alpha() < 1.0) {
        value["$alpha"] = markedNumber(color->alpha());
    }
    return Json{{"$type", "color"}, {"$value", std::move(value)}};
}

std::optional<Json> shadowToken(const ShadowDetails& shadow) {
    std::optional<ColorValue> color = writableColor(shadow.color);
    if (!color) {
        return std::nullopt;
    }
    auto length = [](double value) { return formatDecimalNumber(value) + "px"; };
    Json value = {
        {"color", hexText(*color)},
        {"offsetX", length(shadow.xOffset)},
        {"offsetY", length(shadow.yOffset)},
        {"blur", length(shadow.blur)},
        {"spread", length(shadow.spread)},
    };
    return Json{{"$type", "shadow"}, {"$value", std::move(value)}};
}

// A set's object: one token per member that has the tree's variant.
template <typename Member, typename MakeToken>
Json setObject(const std::vector<Member>& members, const BuildTask& task, ColorSource source, MakeToken makeToken) {
    Json object = Json::object();
    for (const Member& member : members) {
        if (auto variant = member.storedVariant(source)) {
            if (std::optional<Json> token = makeToken(*variant)) {
                object[codeName({}, member.name, task)] = std::move(*token);
            }
        }
    }
    return object;
}

// Adds one item, and a group's members, to one tree.
void addItem(const OchreColorProjectItem& item, const BuildTask& task, Json& tree, ColorSource source) {
    const std::string key = codeName({}, item.name, task);
    if (auto color = item.resolvedColor()) {
        if (auto variant = color->storedVariant(source)) {
            if (std::optional<Json> token = colorToken(*variant)) {
                tree[key] = std::move(*token);
            }
        }
        return;
    }
    if (auto colors = item.resolvedColorSet()) {
        tree[key] = setObject(*colors, task, source, colorToken);
        return;
    }
    if (auto number = item.resolvedNumber()) {
        if (auto variant = number->storedVariant(source)) {
            tree[key] = {{"$type", "number"}, {"$value", markedNumber(*variant)}};
        }
        return;
    }
    if (auto boolean = item.resolvedBoolean()) {
        if (auto variant = boolean->storedVariant(source)) {
            tree[key] = {{"$value", *variant}};
        }
        return;
    }
    if (auto text = item.resolvedString()) {
        if (auto variant = text->storedVariant(source)) {
            tree[key] = {{"$value", *variant}};
        }
        return;
    }
    if (auto shadow = item.resolvedShadow()) {
        if (auto variant = shadow->storedVariant(source)) {
            if (std::optional<Json> token = shadowToken(*variant)) {
                tree[key] = std::move(*token);
            }
        }
        return;
    }
    if (auto shadows = item.resolvedShadowSet()) {
        tree[key] = setObject(*shadows, task, source, shadowToken);
        return;
    }
    if (item.itemType == ProjectItemType::group && item.group) {
        std::string groupKey;
        appendCodeNamePart(groupKey, item.name, task.nameTransform);
        // Two groups with one key share one object rather than the later replacing the earlier.
        Json& object = tree[groupKey];
        if (!object.is_object() || object.contains("$value")) {
            object = Json::object();
        }
        for (const ProjectItemPtr& child : item.group->items) {
            addItem(*child, task, object, source);
        }
    }
}

bool hasToken(const Json& json) {
    if (!json.is_object()) {
        return false;
    }
    if (json.contains("$value")) {
        return true;
    }
    for (const auto& [key, child] : json.items()) {
        if (hasToken(child)) {
            return true;
        }
    }
    return false;
}

}  // namespace

JsonDesignExporter::JsonDesignExporter(std::shared_ptr<OchreColorProject> document)
    : project(std::move(document)), jsonExport(std::make_unique<JsonValue>()) {}

JsonDesignExporter::~JsonDesignExporter() = default;

void JsonDesignExporter::exportTo(const std::filesystem::path& folder, const BuildTask& task,
                                  const std::vector<ProjectItemPtr>& items, const std::filesystem::path&) {
    const std::filesystem::path target = folder / task.exportFileNameWithExtension();
    removeItemIgnoringErrors(target);
    const std::string text = exportText(task, items);
    try {
        writeFileAtomically(target, text);
    } catch (const std::exception& error) {
        throw BuildError(std::string("Unable to export JSON file: ") + error.what());
    }
}

std::string JsonDesignExporter::exportText(const BuildTask& task, const std::vector<ProjectItemPtr>& items) {
    std::array<Tree, 4> trees = {
        Tree{ColorSource::light, "Light"},
        Tree{ColorSource::dark, "Dark"},
        Tree{ColorSource::lightHighContrast, "High Contrast"},
        Tree{ColorSource::darkHighContrast, "Dark High Contrast"},
    };
    for (Tree& tree : trees) {
        for (const ProjectItemPtr& item : items) {
            addItem(*item, task, tree.json, tree.source);
        }
    }

    bool onlyLight = !hasToken(trees[1].json) && !hasToken(trees[2].json) && !hasToken(trees[3].json);
    if (onlyLight) {
        jsonExport->value = std::move(trees[0].json);
    } else {
        Json root = Json::object();
        root[trees[0].rootKey] = std::move(trees[0].json);
        for (std::size_t i = 1; i < trees.size(); ++i) {
            if (hasToken(trees[i].json)) {
                root[trees[i].rootKey] = std::move(trees[i].json);
            }
        }
        jsonExport->value = std::move(root);
    }

    std::string text = jsonExportText();
    if (text.empty()) {
        throw BuildError("Unable to export JSON file");
    }
    return text;
}

std::string JsonDesignExporter::jsonExportText() const {
    try {
        // Keys come out sorted: the library's objects keep them in ascending order.
        return removeNumberMarks(jsonExport->value.dump(2, ' ', false, Json::error_handler_t::replace));
    } catch (const Json::exception&) {
        return {};
    }
}

}  // namespace tintwork
