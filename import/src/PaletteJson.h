#pragma once
// What the two palette JSON importers share: reading the file with its keys in file order,
// reading the colour texts such files hold, and ordering names the way people number them.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "colour/ColorValue.h"
#include "model/Project.h"

namespace tintwork::importing {

using OrderedJson = nlohmann::ordered_json;

// Palette files are small; anything larger is refused before it is read.
inline constexpr std::uintmax_t maxPaletteFileBytes = 64u * 1024u * 1024u;

// The file's bytes. Throws FileError when it cannot be read and DocumentColorParsingError when it
// is too large.
std::string readPaletteFile(const std::filesystem::path& url);
// The text's JSON; text that is not JSON throws DocumentColorParsingError
// ("<sourceName> is not valid JSON: <detail>").
OrderedJson parsePaletteJson(std::string_view text, const std::string& sourceName);

// "#rgb", "#rrggbb", "#rrggbbaa", "color(display-p3 …)", "rgb(…)", "hsl(…)" and the other forms
// the colour text reader knows; nothing when the text is none of them.
std::optional<ColorValue> parsePaletteColor(std::string_view text);

// Orders names as people number them: runs of digits by their value ("blue2" before "blue10"),
// letters without regard to case, and the bytes as the final tie-break.
bool naturalLess(std::string_view lhs, std::string_view rhs);

// True when the run of digits `lhs` stands for a smaller number than `rhs`, however long they are.
bool digitRunLess(std::string_view lhs, std::string_view rhs);

// A colour set item named `name` of the colours in order, in one colour space that holds them all.
ProjectItemPtr makeSetItem(const std::string& name, const std::vector<ThemeableColor>& colors);

// A colour with a fresh identifier, its light variant only.
ThemeableColor makeThemeableColor(const std::string& name, const ColorValue& color);

}  // namespace tintwork::importing
