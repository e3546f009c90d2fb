#include "model/Themeable.h"

#include <array>
#include <utility>

namespace tintwork {

namespace {

constexpr std::array<std::pair<AppearanceType, std::string_view>, 6> appearanceWords = {{
    {AppearanceType::none, "none"},
    {AppearanceType::lightAndDark, "lightanddark"},
    {AppearanceType::highContrast, "highContrast"},
    {AppearanceType::highContrastAuto, "highContrastAuto"},
    {AppearanceType::lightDarkHighContrast, "lightDarkHighContrast"},
    {AppearanceType::lightDarkHighContrastAuto, "lightDarkHighContrastAuto"},
}};

}  // namespace

std::string_view appearanceTypeWord(AppearanceType type) {
    for (const auto& [value, word] : appearanceWords) {
        if (value == type) {
            return word;
        }
    }
    return "none";
}

std::optional<AppearanceType> appearanceTypeFromWord(std::string_view word) {
    for (const auto& [value, text] : appearanceWords) {
        if (text == word) {
            return value;
        }
    }
    return std::nullopt;
}

bool isAutomaticHighContrast(AppearanceType type) {
    return type == AppearanceType::highContrastAuto || type == AppearanceType::lightDarkHighContrastAuto;
}

bool hasDarkAppearance(AppearanceType type) {
    return type == AppearanceType::lightAndDark || type == AppearanceType::lightDarkHighContrast ||
           type == AppearanceType::lightDarkHighContrastAuto;
}

bool hasHighContrastAppearance(AppearanceType type) {
    return type == AppearanceType::highContrast || type == AppearanceType::highContrastAuto ||
           type == AppearanceType::lightDarkHighContrast || type == AppearanceType::lightDarkHighContrastAuto;
}

ColorValue highContrastColor(const ColorValue& base, double amount) {
    return pushLightness(base, amount);
}

void generateHighContrastVariants(ThemeableColor& color, double amount, bool withDark) {
    color.lightVariantHighContrast = highContrastColor(color.lightVariant, amount);
    if (withDark && color.darkVariant) {
        color.darkVariantHighContrast = highContrastColor(*color.darkVariant, amount);
    }
}

}  // namespace tintwork
