#pragma once
// Building blocks for contrast tests: colour items with a test position.

#include <memory>
#include <optional>
#include <string>

#include "model/Project.h"

namespace tintwork::testing {

inline ProjectItemPtr colourItem(const std::string& name, const ColorValue& light, TestPosition position,
                                 std::optional<ColorValue> dark = std::nullopt) {
    OchreColorItem payload;
    payload.color.name = name;
    payload.color.lightVariant = light;
    payload.color.darkVariant = dark;
    auto item = std::make_shared<OchreColorProjectItem>(name, name + "-ID", payload);
    item->testPosition = position;
    return item;
}

inline ColorValue grey(double value, double alpha = 1.0) {
    return ColorValue::sRGB(value, value, value, alpha);
}

inline ColorValue byte(int red, int green, int blue) {
    return ColorValue::sRGB(red / 255.0, green / 255.0, blue / 255.0);
}

inline const ColorValue white = ColorValue::sRGB(1, 1, 1);
inline const ColorValue black = ColorValue::sRGB(0, 0, 0);

}  // namespace tintwork::testing
