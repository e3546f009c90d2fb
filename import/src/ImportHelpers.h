#pragma once
// Small helpers shared by the importers' sources.

#include "colour/ColorSpace.h"
#include "colour/ColorValue.h"

namespace tintwork::importing {

// The document colour space that holds colours of an encoding.
inline ColorSpace spaceOfEncoding(ColorEncoding encoding) {
    switch (encoding) {
        case ColorEncoding::sRGB: return ColorSpace::sRGB;
        case ColorEncoding::displayP3: return ColorSpace::displayP3;
        case ColorEncoding::sRGBExtended:
        case ColorEncoding::extendedLinearSRGB: return ColorSpace::sRGBExtended;
    }
    return ColorSpace::sRGB;
}

}  // namespace tintwork::importing
