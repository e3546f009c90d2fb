#pragma once
// A colour as SVG text gives it: one of the named colours of CSS, or colour text.

#include <optional>
#include <string_view>

#include "colour/ColorValue.h"

namespace tintwork {

struct SVGColor {
    // Reads `text`: the table of named colours first, matched exactly and so in lower case
    // only, then the colour text forms, hexadecimal first. Anything else gives no colour.
    explicit SVGColor(std::string_view text);

    // The colour read; absent for "none", "url(#…)" and other text that is no colour.
    std::optional<ColorValue> nsColor;

    // The named colour of the table (opaque sRGB), or nullopt. "currentcolor" reads as black,
    // the colour text inherits when nothing sets it.
    static std::optional<ColorValue> named(std::string_view name);
};

}  // namespace tintwork
