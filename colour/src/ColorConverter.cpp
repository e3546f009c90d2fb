#include "colour/ColorConverter.h"

namespace tintwork {
std::string_view displayName(ColorFormat) { return ""; }
ColorConverterResult colorString(const ColorValue&, ColorFormat, ColorSpace, const ColorConverterOptions&) {
    return {};
}
ConvertedColor parseColor(std::string_view, ColorFormat, ColorSpace colorSpace, bool) {
    return {std::nullopt, std::nullopt, colorSpace};
}
std::optional<ColorValue> parseFormat(std::string_view, ColorSpace, ColorFormat) { return std::nullopt; }
} // namespace tintwork
