#include "colour/ColorSpace.h"

#include <algorithm>

namespace tintwork {

std::optional<std::string_view> rawText(ColorSpace space) {
    switch (space) {
    case ColorSpace::sRGB:
        return "srgb";
    case ColorSpace::displayP3:
        return "display-p3";
    case ColorSpace::sRGBExtended:
    case ColorSpace::oklab:
    case ColorSpace::oklch:
        break;
    }
    return std::nullopt;
}

std::optional<ColorSpace> colorSpaceFromRawText(std::string_view text) {
    if (text == "srgb") {
        return ColorSpace::sRGB;
    }
    if (text == "display-p3") {
        return ColorSpace::displayP3;
    }
    return std::nullopt;
}

std::string_view displayLabel(ColorSpace space) {
    switch (space) {
    case ColorSpace::sRGB:
        return "sRGB";
    case ColorSpace::sRGBExtended:
        return "sRGB Extended";
    case ColorSpace::displayP3:
        return "Display P3";
    case ColorSpace::oklab:
        return "OKLAB";
    case ColorSpace::oklch:
        return "OKLCH";
    }
    return "";
}

double clampToSpace(double value, ColorSpace space) {
    switch (space) {
    case ColorSpace::sRGB:
    case ColorSpace::displayP3:
        if (!(value > 0.0)) {
            return 0.0;
        }
        return std::min(value, 1.0);
    case ColorSpace::sRGBExtended:
        if (value < -2.0) {
            return -2.0;
        }
        return value > 2.0 ? 2.0 : value;
    case ColorSpace::oklab:
    case ColorSpace::oklch:
        break;
    }
    return value;
}

ColorEncoding encodingForSpace(ColorSpace space) {
    switch (space) {
    case ColorSpace::sRGB:
        return ColorEncoding::sRGB;
    case ColorSpace::sRGBExtended:
        return ColorEncoding::sRGBExtended;
    case ColorSpace::displayP3:
    case ColorSpace::oklab:
    case ColorSpace::oklch:
        break;
    }
    return ColorEncoding::displayP3;
}

} // namespace tintwork
