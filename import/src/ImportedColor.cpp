#include "import/ImportedColor.h"

#include <utility>

#include "ImportHelpers.h"
#include "model/ColorSet.h"
#include "model/Uuid.h"

namespace tintwork {

NamedColor::NamedColor(ColorValue value, std::string colorName)
    : color(value), name(std::move(colorName)), id(newUUID()) {}

namespace {

constexpr double duplicateTolerance = 0.0001;

bool sameColors(const std::vector<NamedColor>& lhs, const std::vector<NamedColor>& rhs) {
    if (lhs.empty()) {
        return true;
    }
    // The first colour is compared by value alone, whatever its name.
    if (!(lhs.front().color == rhs.front().color)) {
        return false;
    }
    for (std::size_t i = 1; i < lhs.size(); ++i) {
        if (lhs[i].name != rhs[i].name || !isNear(lhs[i].color, rhs[i].color, duplicateTolerance)) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool isDuplicateColor(const std::vector<NamedColor>& colors, const std::optional<std::string>& name,
                      ImportedColorType type, const std::vector<ImportedColor>& list) {
    for (const ImportedColor& entry : list) {
        if (entry.type != type || entry.colors.size() != colors.size()) {
            continue;
        }
        if (type == ImportedColorType::set && entry.name != name) {
            continue;
        }
        if (sameColors(colors, entry.colors)) {
            return true;
        }
    }
    return false;
}

void addImportedColors(const std::vector<ImportedColor>& list, OchreColorProjectItem& group) {
    if (!group.group) {
        return;
    }
    for (const ImportedColor& entry : list) {
        if (entry.type == ImportedColorType::singleColor) {
            if (entry.colors.empty()) {
                continue;
            }
            const NamedColor& first = entry.colors.front();
            OchreColorItem payload;
            payload.color.lightVariant = first.color;
            payload.color.name = first.name;
            payload.color.uuid = newUUID();
            payload.appearanceType = AppearanceType::none;
            payload.autoContrastAmount = defaultAutoContrastAmount;
            payload.colorSpace = importing::spaceOfEncoding(first.color.encoding());
            group.group->items.push_back(
                std::make_shared<OchreColorProjectItem>(first.name, newUUID(), std::move(payload)));
            continue;
        }
        // Sets go into Display P3 whatever their colours' own spaces.
        OchreColorSet set;
        for (const NamedColor& member : entry.colors) {
            ThemeableColor color;
            color.name = member.name;
            color.uuid = newUUID();
            color.lightVariant = member.color;
            set.colors.push_back(std::move(color));
        }
        set.colorSpace = ColorSpace::displayP3;
        set.type = SetType::manual;
        set.namingScheme = ColorNamingScheme::manual;
        set.interpolationMethod = InterpolationMethod::linear;
        set.appearanceType = AppearanceType::none;
        set.steps = static_cast<int>(set.colors.size());
        set.curveAmount = 1.0;
        set.autoContrastAmount = defaultAutoContrastAmount;
        set.middleLocation = 0.0;
        group.group->items.push_back(
            std::make_shared<OchreColorProjectItem>(entry.name.value_or("Color Set"), newUUID(), std::move(set)));
    }
}

}  // namespace tintwork
