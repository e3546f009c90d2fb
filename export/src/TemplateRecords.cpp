#include "export/TemplateRecords.h"

namespace tintwork {

namespace {

template <typename Source, typename Target, typename Convert>
void copyVariants(const Themeable<Source>& source, TemplateThemed<Target>& target, Convert convert) {
    target.light = convert(source.lightVariant);
    if (source.lightVariantHighContrast) {
        target.highContrast = convert(*source.lightVariantHighContrast);
    }
    if (source.darkVariant) {
        target.dark = convert(*source.darkVariant);
    }
    if (source.darkVariantHighContrast) {
        target.darkHighContrast = convert(*source.darkVariantHighContrast);
    }
}

template <typename T>
TemplateThemed<T> copied(const Themeable<T>& source) {
    TemplateThemed<T> target;
    copyVariants(source, target, [](const T& value) { return value; });
    return target;
}

}  // namespace

TemplateColorSpace templateColorSpace(const ColorValue& color) {
    switch (color.encoding()) {
        case ColorEncoding::sRGB: return TemplateColorSpace::sRGB;
        case ColorEncoding::sRGBExtended: return TemplateColorSpace::extendedSRGB;
        default: return TemplateColorSpace::displayP3;
    }
}

TemplateRGBAColor templateColor(const ColorValue& color, TemplateColorSpace space) {
    return {color.red(), color.green(), color.blue(), color.alpha(), space};
}

ColorValue colorValue(const TemplateRGBAColor& color) {
    ColorEncoding encoding = ColorEncoding::displayP3;
    switch (color.colorSpace) {
        case TemplateColorSpace::sRGB: encoding = ColorEncoding::sRGB; break;
        case TemplateColorSpace::displayP3: encoding = ColorEncoding::displayP3; break;
        case TemplateColorSpace::extendedSRGB: encoding = ColorEncoding::sRGBExtended; break;
    }
    return ColorValue(encoding, color.red, color.green, color.blue, color.alpha);
}

TemplateThemedColor templateThemedColor(const ThemeableColor& color) {
    return templateThemedColor(color, templateColorSpace(color.lightVariant));
}

TemplateThemedColor templateThemedColor(const ThemeableColor& color, TemplateColorSpace space) {
    TemplateThemedColor record;
    copyVariants(color, record, [space](const ColorValue& value) { return templateColor(value, space); });
    record.name = color.name;
    return record;
}

TemplateThemedShadow templateThemedShadow(const ThemeableShadow& shadow) {
    return templateThemedShadow(shadow, templateColorSpace(shadow.lightVariant.color));
}

TemplateThemedShadow templateThemedShadow(const ThemeableShadow& shadow, TemplateColorSpace space) {
    TemplateThemedShadow record;
    copyVariants(shadow, record, [space](const ShadowDetails& details) {
        return TemplateShadow{details.xOffset, details.yOffset, details.blur, details.spread,
                              templateColor(details.color, space)};
    });
    record.name = shadow.name;
    return record;
}

std::vector<TemplateThemedColor> templateThemedColors(const std::vector<ThemeableColor>& colors) {
    std::vector<TemplateThemedColor> records;
    if (colors.empty()) {
        return records;
    }
    const TemplateColorSpace space = templateColorSpace(colors.front().lightVariant);
    records.reserve(colors.size());
    for (const auto& color : colors) {
        records.push_back(templateThemedColor(color, space));
    }
    return records;
}

std::vector<TemplateThemedShadow> templateThemedShadows(const std::vector<ThemeableShadow>& shadows) {
    std::vector<TemplateThemedShadow> records;
    if (shadows.empty()) {
        return records;
    }
    const TemplateColorSpace space = templateColorSpace(shadows.front().lightVariant.color);
    records.reserve(shadows.size());
    for (const auto& shadow : shadows) {
        records.push_back(templateThemedShadow(shadow, space));
    }
    return records;
}

TemplateThemedNumber templateThemedNumber(const ThemeableNumber& value) {
    return copied(value);
}

TemplateThemedBoolean templateThemedBoolean(const ThemeableBoolean& value) {
    return copied(value);
}

TemplateThemedString templateThemedString(const ThemeableString& value) {
    return copied(value);
}

}  // namespace tintwork
