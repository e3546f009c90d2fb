#pragma once
// The template's whole view of a document: flat records of the exported items.
// Templates reach them by field name, so the field names are part of the output
// contract and must stay as they are.

#include <optional>
#include <string>
#include <vector>

#include "model/Themeable.h"

namespace tintwork {

enum class TemplateColorSpace { sRGB, displayP3, extendedSRGB };

struct TemplateRGBAColor {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
    TemplateColorSpace colorSpace = TemplateColorSpace::sRGB;
};

struct TemplateShadow {
    double x = 0;
    double y = 0;
    double blur = 0;
    double spread = 0;
    TemplateRGBAColor color;
};

// The four appearance variants of one value; only `light` is always present.
template <typename T>
struct TemplateThemed {
    T light{};
    std::optional<T> highContrast;
    std::optional<T> dark;
    std::optional<T> darkHighContrast;
};

struct TemplateThemedColor : TemplateThemed<TemplateRGBAColor> {
    std::optional<std::string> name;
};
struct TemplateThemedShadow : TemplateThemed<TemplateShadow> {
    std::optional<std::string> name;
};
using TemplateThemedString = TemplateThemed<std::string>;
using TemplateThemedNumber = TemplateThemed<double>;
using TemplateThemedBoolean = TemplateThemed<bool>;

struct TemplateColorItem {
    TemplateThemedColor color;
};
struct TemplateColorSetItem {
    std::vector<TemplateThemedColor> colors;
};
struct TemplateNumberItem {
    TemplateThemedNumber value;
};
struct TemplateBooleanItem {
    TemplateThemedBoolean value;
};
struct TemplateStringItem {
    TemplateThemedString value;
};
struct TemplateShadowItem {
    TemplateThemedShadow shadow;
};
struct TemplateShadowSetItem {
    std::vector<TemplateThemedShadow> shadows;
};

// One exported item: its final code name and exactly one of the seven members.
struct TemplateItem {
    std::string name;
    std::optional<TemplateColorItem> colorItem;
    std::optional<TemplateColorSetItem> colorSet;
    std::optional<TemplateNumberItem> number;
    std::optional<TemplateBooleanItem> boolean;
    std::optional<TemplateStringItem> string;
    std::optional<TemplateShadowItem> shadowItem;
    std::optional<TemplateShadowSetItem> shadowSet;
};

// The space of a colour's light variant: sRGB, extended sRGB, or Display P3 for anything else.
TemplateColorSpace templateColorSpace(const ColorValue& color);
// The stored components of a colour, unconverted, under the given space.
TemplateRGBAColor templateColor(const ColorValue& color, TemplateColorSpace space);
// The working colour of a record (the inverse of templateColor).
ColorValue colorValue(const TemplateRGBAColor& color);

// Records of the model's themeable values. A set takes its space once, from the
// first member's light variant.
TemplateThemedColor templateThemedColor(const ThemeableColor& color);
TemplateThemedColor templateThemedColor(const ThemeableColor& color, TemplateColorSpace space);
TemplateThemedShadow templateThemedShadow(const ThemeableShadow& shadow);
TemplateThemedShadow templateThemedShadow(const ThemeableShadow& shadow, TemplateColorSpace space);
std::vector<TemplateThemedColor> templateThemedColors(const std::vector<ThemeableColor>& colors);
std::vector<TemplateThemedShadow> templateThemedShadows(const std::vector<ThemeableShadow>& shadows);
TemplateThemedNumber templateThemedNumber(const ThemeableNumber& value);
TemplateThemedBoolean templateThemedBoolean(const ThemeableBoolean& value);
TemplateThemedString templateThemedString(const ThemeableString& value);

}  // namespace tintwork
