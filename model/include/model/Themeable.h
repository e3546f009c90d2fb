#pragma once
// Values that differ by appearance: a mandatory light variant and three
// optional ones (light high contrast, dark, dark high contrast).

#include <optional>
#include <string>
#include <string_view>

#include "colour/ColorValue.h"

namespace tintwork {

// Selects one appearance variant.
enum class ColorSource { light, lightHighContrast, dark, darkHighContrast };

// Which variants an item has; stored in a document by the word of appearanceTypeWord.
enum class AppearanceType {
    none,
    lightAndDark,
    highContrast,
    highContrastAuto,
    lightDarkHighContrast,
    lightDarkHighContrastAuto,
};

// The stored word: "none", "lightanddark", "highContrast", ...
std::string_view appearanceTypeWord(AppearanceType type);
// The type for a stored word; nullopt for an unknown word.
std::optional<AppearanceType> appearanceTypeFromWord(std::string_view word);
// True for the two automatic high-contrast types.
bool isAutomaticHighContrast(AppearanceType type);
// True when the type carries dark variants (lightAndDark and the two lightDark... types).
bool hasDarkAppearance(AppearanceType type);
// True when the type carries high-contrast variants.
bool hasHighContrastAppearance(AppearanceType type);

// Four variants of one value. An absent variant answers with the light one, never
// with another optional variant.
template <typename T>
struct Themeable {
    T lightVariant{};
    std::optional<T> lightVariantHighContrast;
    std::optional<T> darkVariant;
    std::optional<T> darkVariantHighContrast;

    // The variant for a source, falling back to lightVariant.
    const T& variant(ColorSource source) const {
        const std::optional<T>* slot = nullptr;
        switch (source) {
            case ColorSource::light: return lightVariant;
            case ColorSource::lightHighContrast: slot = &lightVariantHighContrast; break;
            case ColorSource::dark: slot = &darkVariant; break;
            case ColorSource::darkHighContrast: slot = &darkVariantHighContrast; break;
        }
        return (slot && *slot) ? **slot : lightVariant;
    }
    // The stored slot for a source (light is always present).
    std::optional<T> storedVariant(ColorSource source) const {
        switch (source) {
            case ColorSource::light: return lightVariant;
            case ColorSource::lightHighContrast: return lightVariantHighContrast;
            case ColorSource::dark: return darkVariant;
            case ColorSource::darkHighContrast: return darkVariantHighContrast;
        }
        return std::nullopt;
    }
    // Sets (or clears, for an optional slot given nullopt) one variant.
    void setVariant(ColorSource source, std::optional<T> value) {
        switch (source) {
            case ColorSource::light:
                if (value) { lightVariant = *value; }
                break;
            case ColorSource::lightHighContrast: lightVariantHighContrast = std::move(value); break;
            case ColorSource::dark: darkVariant = std::move(value); break;
            case ColorSource::darkHighContrast: darkVariantHighContrast = std::move(value); break;
        }
    }
};

// A shadow: offsets, blur, spread and colour. The default is 0, 8, 8, 0 in black at 0.3 alpha.
struct ShadowDetails {
    double xOffset = 0;
    double yOffset = 8;
    double blur = 8;
    double spread = 0;
    ColorValue color = ColorValue(ColorEncoding::sRGB, 0, 0, 0, 0.3);
};

struct ThemeableColor : Themeable<ColorValue> {
    std::string name;
    std::string uuid;
};

struct ThemeableShadow : Themeable<ShadowDetails> {
    std::string name;
    std::string uuid;
};

using ThemeableNumber = Themeable<double>;
using ThemeableBoolean = Themeable<bool>;
using ThemeableString = Themeable<std::string>;

// The default autoContrastAmount of a new item.
inline constexpr double defaultAutoContrastAmount = 0.5;

// The two starting colours of a new item, opaque sRGB greys. The names are shown as
// they stand, "Grey" and "Gray" alike.
struct DefaultColors {
    static constexpr std::string_view lightName = "Light Grey";
    static constexpr std::string_view darkName = "Dark Gray";
    static ColorValue light() { return ColorValue::sRGB(0.83, 0.83, 0.83, 1.0); }
    static ColorValue dark() { return ColorValue::sRGB(0.66, 0.66, 0.66, 1.0); }
};

// The automatic high-contrast colour of a base colour: OKLCH lightness pushed by
// `amount` toward 1.15 (lightness above 0.5) or -0.15, in the base colour's encoding.
ColorValue highContrastColor(const ColorValue& base, double amount);

// Fills the two high-contrast variants of a colour from its light and dark variants
// (the dark one only when `withDark` and present) with highContrastColor.
void generateHighContrastVariants(ThemeableColor& color, double amount, bool withDark);

}  // namespace tintwork
