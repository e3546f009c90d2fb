#include "import/MaterialJSONImporter.h"

#include <algorithm>
#include <vector>

#include "ImportHelpers.h"
#include "PaletteJson.h"
#include "model/Uuid.h"

namespace tintwork {

namespace {

using importing::OrderedJson;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

struct Shade {
    ThemeableColor color;
    std::string family;  // the name without its number: shades of one family stay together
    std::string number;
};

// Orders shades by family, families in the order they first appear, and within a family by number.
void orderShades(std::vector<Shade>& shades) {
    std::vector<std::string> families;
    for (const Shade& shade : shades) {
        if (std::find(families.begin(), families.end(), shade.family) == families.end()) {
            families.push_back(shade.family);
        }
    }
    auto rank = [&](const Shade& shade) {
        return std::find(families.begin(), families.end(), shade.family) - families.begin();
    };
    std::stable_sort(shades.begin(), shades.end(), [&](const Shade& lhs, const Shade& rhs) {
        const auto left = rank(lhs);
        const auto right = rank(rhs);
        return left != right ? left < right : importing::digitRunLess(lhs.number, rhs.number);
    });
}

Shade makeShade(const std::string& name, const ColorValue& color) {
    Shade shade{importing::makeThemeableColor(name, color), name, ""};
    if (std::optional<TrailingNumber> number = trailingNumber(name)) {
        shade.family = name.substr(0, number->position) + name.substr(number->position + number->digits.size());
        shade.number = number->digits;
    }
    return shade;
}

void appendFamily(const std::string& name, std::vector<Shade> shades, OchreColorGroup& group) {
    if (shades.empty()) {
        return;
    }
    orderShades(shades);
    std::vector<ThemeableColor> colors;
    colors.reserve(shades.size());
    for (Shade& shade : shades) {
        colors.push_back(std::move(shade.color));
    }
    group.items.push_back(importing::makeSetItem(name, colors));
}

void appendColor(const std::string& name, const ColorValue& color, OchreColorGroup& group) {
    OchreColorItem payload;
    payload.color = importing::makeThemeableColor(name, color);
    payload.appearanceType = AppearanceType::none;
    payload.autoContrastAmount = defaultAutoContrastAmount;
    payload.colorSpace = importing::spaceOfEncoding(color.encoding());
    group.items.push_back(std::make_shared<OchreColorProjectItem>(name, newUUID(), std::move(payload)));
}

}  // namespace

std::optional<TrailingNumber> trailingNumber(std::string_view name) {
    std::size_t end = name.size();
    while (end > 0 && !isDigit(name[end - 1])) {
        --end;
    }
    if (end == 0) {
        return std::nullopt;
    }
    std::size_t start = end;
    while (start > 0 && isDigit(name[start - 1])) {
        --start;
    }
    return TrailingNumber{std::string(name.substr(start, end - start)), start};
}

void MaterialJSONImporter::importColors(const std::filesystem::path& url, OchreColorProjectItem& group) {
    importDocument(importing::readPaletteFile(url), url.filename().string(), group);
}

void MaterialJSONImporter::importText(std::string_view text, OchreColorProjectItem& group) {
    importDocument(text, "The text", group);
}

void MaterialJSONImporter::importDocument(std::string_view text, const std::string& sourceName,
                                          OchreColorProjectItem& group) {
    const OrderedJson json = importing::parsePaletteJson(text, sourceName);
    if (!json.is_object()) {
        throw DocumentColorParsingError(sourceName + " is not a palette: the top level is not an object");
    }
    if (!group.group) {
        return;
    }
    for (const auto& [key, value] : json.items()) {
        if (value.is_string()) {
            if (std::optional<ColorValue> color = importing::parsePaletteColor(value.get<std::string>())) {
                appendColor(key, *color, *group.group);
            }
        } else if (value.is_object()) {
            std::vector<Shade> shades;
            for (const auto& [shadeName, shadeText] : value.items()) {
                std::optional<ColorValue> color =
                    shadeText.is_string() ? importing::parsePaletteColor(shadeText.get<std::string>()) : std::nullopt;
                if (color) {
                    shades.push_back(makeShade(shadeName, *color));
                }
            }
            appendFamily(key, std::move(shades), *group.group);
        } else if (value.is_array()) {
            // A list of shades, lightest first: each is named by its index.
            std::vector<Shade> shades;
            for (std::size_t index = 0; index < value.size(); ++index) {
                const OrderedJson& shadeText = value[index];
                if (shadeText.is_string()) {
                    if (std::optional<ColorValue> color = importing::parsePaletteColor(shadeText.get<std::string>())) {
                        shades.push_back(makeShade(std::to_string(index), *color));
                    }
                }
            }
            appendFamily(key, std::move(shades), *group.group);
        }
    }
}

}  // namespace tintwork
