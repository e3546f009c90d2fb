#include "import/SetBuilder.h"

#include <algorithm>
#include <optional>

#include "model/Uuid.h"

namespace tintwork {

namespace {

// Settings every imported set shares: a manual ramp that is never regenerated.
template <typename Set>
void applyImportedSetDefaults(Set& set, ColorSpace space, std::size_t count) {
    set.colorSpace = space;
    set.type = SetType::manual;
    set.namingScheme = ColorNamingScheme::manual;
    set.interpolationMethod = InterpolationMethod::linear;
    set.appearanceType = AppearanceType::none;
    set.steps = static_cast<int>(count);
    set.autoContrastAmount = defaultAutoContrastAmount;
    set.curveAmount = 1.0;
    set.middleLocation = 0.5;
}

const ColorValue& colorOf(const ThemeableColor& color) {
    return color.lightVariant;
}
const ColorValue& colorOf(const ThemeableShadow& shadow) {
    return shadow.lightVariant.color;
}

// A new member holding the light variant converted to `encoding`; nullopt when the
// conversion yields nothing.
std::optional<ThemeableColor> convertedMember(const ThemeableColor& source, ColorEncoding encoding) {
    std::optional<ColorValue> converted = source.lightVariant.converted(encoding);
    if (!converted) {
        return std::nullopt;
    }
    ThemeableColor member;
    member.name = source.name;
    member.uuid = newUUID();
    member.lightVariant = *converted;
    return member;
}
std::optional<ThemeableShadow> convertedMember(const ThemeableShadow& source, ColorEncoding encoding) {
    std::optional<ColorValue> converted = source.lightVariant.color.converted(encoding);
    if (!converted) {
        return std::nullopt;
    }
    ThemeableShadow member;
    member.name = source.name;
    member.uuid = newUUID();
    member.lightVariant = source.lightVariant;
    member.lightVariant.color = *converted;
    return member;
}

// Picks the one space for all members and converts them there when they differ.
template <typename Member>
std::pair<std::vector<Member>, ColorSpace> unifySpace(const std::vector<Member>& members) {
    auto all = [&](ColorEncoding encoding) {
        return std::all_of(members.begin(), members.end(),
                           [&](const Member& member) { return colorOf(member).encoding() == encoding; });
    };
    if (all(ColorEncoding::sRGB)) {
        return {members, ColorSpace::sRGB};
    }
    if (all(ColorEncoding::displayP3)) {
        return {members, ColorSpace::displayP3};
    }
    bool insideSRGB = std::none_of(members.begin(), members.end(),
                                   [](const Member& member) { return isOutsideSRGB(colorOf(member)); });
    ColorEncoding target = (all(ColorEncoding::sRGBExtended) && insideSRGB) ? ColorEncoding::sRGB
                                                                             : ColorEncoding::displayP3;
    std::vector<Member> converted;
    converted.reserve(members.size());
    for (const Member& member : members) {
        if (std::optional<Member> result = convertedMember(member, target)) {
            converted.push_back(std::move(*result));
        }
    }
    return {std::move(converted), target == ColorEncoding::sRGB ? ColorSpace::sRGB : ColorSpace::displayP3};
}

}  // namespace

OchreColorSet makeColorSet(const std::vector<ThemeableColor>& colors) {
    auto [members, space] = unifySpace(colors);
    OchreColorSet set;
    applyImportedSetDefaults(set, space, members.size());
    set.colors = std::move(members);
    return set;
}

OchreColorShadowSet makeShadowSet(const std::vector<ThemeableShadow>& shadows) {
    auto [members, space] = unifySpace(shadows);
    OchreColorShadowSet set;
    applyImportedSetDefaults(set, space, members.size());
    set.shadows = std::move(members);
    return set;
}

}  // namespace tintwork
