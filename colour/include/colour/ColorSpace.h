// The colour spaces a document or a stored colour can be authored in.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "colour/ColorValue.h"

namespace tintwork {

enum class ColorSpace { sRGB, sRGBExtended, displayP3, oklab, oklch };

// Every case, in declaration order.
inline constexpr std::array<ColorSpace, 5> allColorSpaces = {
    ColorSpace::sRGB, ColorSpace::sRGBExtended, ColorSpace::displayP3, ColorSpace::oklab, ColorSpace::oklch};

// The raw text ("srgb", "display-p3"); absent for the other spaces.
std::optional<std::string_view> rawText(ColorSpace space);
// The space for a raw text; only "srgb" and "display-p3" are recognised.
std::optional<ColorSpace> colorSpaceFromRawText(std::string_view text);
// "sRGB", "sRGB Extended", "Display P3", "OKLAB", "OKLCH".
std::string_view displayLabel(ColorSpace space);

// Clamps a component to the range of the space: 0..1 for sRGB and Display P3
// (NaN gives 0), -2..2 for extended sRGB, unchanged for OKLAB and OKLCH.
double clampToSpace(double value, ColorSpace space);

// The working encoding that colours of a space are made in: the RGB spaces map
// to their own encoding, OKLAB and OKLCH to Display P3.
ColorEncoding encodingForSpace(ColorSpace space);

// True for sRGB, extended sRGB and Display P3, the spaces stored as RGB components.
inline bool isRGBSpace(ColorSpace space) {
    return space == ColorSpace::sRGB || space == ColorSpace::sRGBExtended || space == ColorSpace::displayP3;
}

} // namespace tintwork
