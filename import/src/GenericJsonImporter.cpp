#include "import/GenericJsonImporter.h"

#include <algorithm>

#include "PaletteJson.h"

namespace tintwork {

namespace {

using importing::OrderedJson;

// Every value of the top object must be an object of texts; anything else fails the whole file.
GenericColorSet decodeColorSets(const OrderedJson& json, const std::string& sourceName) {
    const std::string prefix = sourceName + " is not a palette of colour sets: ";
    if (!json.is_object()) {
        throw DocumentColorParsingError(prefix + "the top level is not an object");
    }
    GenericColorSet decoded;
    for (const auto& [setName, colors] : json.items()) {
        if (!colors.is_object()) {
            throw DocumentColorParsingError(prefix + "\"" + setName + "\" is not an object of colour texts");
        }
        std::vector<std::pair<std::string, std::string>> entries;
        for (const auto& [colorName, text] : colors.items()) {
            if (!text.is_string()) {
                throw DocumentColorParsingError(prefix + "\"" + colorName + "\" in \"" + setName +
                                                "\" is not a colour text");
            }
            entries.emplace_back(colorName, text.get<std::string>());
        }
        decoded.colors.emplace_back(setName, std::move(entries));
    }
    return decoded;
}

}  // namespace

void GenericJsonImporter::importColors(const std::filesystem::path& url, OchreColorProjectItem& group) {
    importDocument(importing::readPaletteFile(url), url.filename().string(), group);
}

void GenericJsonImporter::importText(std::string_view text, OchreColorProjectItem& group) {
    importDocument(text, "The text", group);
}

void GenericJsonImporter::importDocument(std::string_view text, const std::string& sourceName,
                                         OchreColorProjectItem& group) {
    const GenericColorSet sets = decodeColorSets(importing::parsePaletteJson(text, sourceName), sourceName);
    if (!group.group) {
        return;
    }
    for (const auto& [setName, entries] : sets.colors) {
        std::vector<ThemeableColor> colors;
        for (const auto& [colorName, colorText] : entries) {
            if (std::optional<ColorValue> color = importing::parsePaletteColor(colorText)) {
                colors.push_back(importing::makeThemeableColor(colorName, *color));
            }
        }
        if (colors.empty()) {
            continue;
        }
        std::stable_sort(colors.begin(), colors.end(), [](const ThemeableColor& lhs, const ThemeableColor& rhs) {
            return importing::naturalLess(lhs.name, rhs.name);
        });
        group.group->items.push_back(importing::makeSetItem(setName, colors));
    }
}

}  // namespace tintwork
