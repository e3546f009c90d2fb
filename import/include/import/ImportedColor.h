#pragma once
// The scratch list of importers that gather colours before making items of them.

#include <optional>
#include <string>
#include <vector>

#include "colour/ColorValue.h"
#include "model/Project.h"

namespace tintwork {

// A colour with its name. `id` identifies this entry and takes no part in equality.
struct NamedColor {
    ColorValue color;
    std::string name;
    std::string id;

    NamedColor(ColorValue value, std::string colorName);
    friend bool operator==(const NamedColor& lhs, const NamedColor& rhs) {
        return lhs.color == rhs.color && lhs.name == rhs.name;
    }
};

enum class ImportedColorType { singleColor, set };

// One gathered entry: a single colour (one colour, no name) or a named set of colours in order.
struct ImportedColor {
    std::vector<NamedColor> colors;
    std::optional<std::string> name;
    ImportedColorType type = ImportedColorType::singleColor;

    friend bool operator==(const ImportedColor&, const ImportedColor&) = default;
};

// True when `list` already holds an equal entry: a single colour by the value of its colour
// alone; a set by name, length, and names and values (within 0.0001) position by position.
bool isDuplicateColor(const std::vector<NamedColor>& colors, const std::optional<std::string>& name,
                      ImportedColorType type, const std::vector<ImportedColor>& list);

// Appends one item per entry to the children of `group` (a group item): a colour item
// for a single colour, a Display P3 colour set (named "Color Set" when unnamed) for a set.
void addImportedColors(const std::vector<ImportedColor>& list, OchreColorProjectItem& group);

}  // namespace tintwork
