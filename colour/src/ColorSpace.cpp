#include "colour/ColorSpace.h"

namespace tintwork {
std::optional<std::string_view> rawText(ColorSpace) { return std::nullopt; }
std::optional<ColorSpace> colorSpaceFromRawText(std::string_view) { return std::nullopt; }
std::string_view displayLabel(ColorSpace) { return ""; }
double clampToSpace(double value, ColorSpace) { return value; }
ColorEncoding encodingForSpace(ColorSpace) { return ColorEncoding::sRGB; }
} // namespace tintwork
