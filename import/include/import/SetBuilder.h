#pragma once
// Builds manual colour and shadow sets from imported members, choosing one colour
// space that holds them all.

#include <vector>

#include "model/ColorSet.h"
#include "model/Themeable.h"

namespace tintwork {

// A manual set of the colours' light variants: in sRGB when all are sRGB (or extended sRGB
// inside the sRGB gamut, then converted), in Display P3 when all are Display P3, otherwise
// converted to Display P3 (members whose conversion fails are left out).
OchreColorSet makeColorSet(const std::vector<ThemeableColor>& colors);

// The same for shadows, deciding by the shadows' colours.
OchreColorShadowSet makeShadowSet(const std::vector<ThemeableShadow>& shadows);

}  // namespace tintwork
