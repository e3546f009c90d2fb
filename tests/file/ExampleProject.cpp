#include "ExampleProject.h"

#include <cstdio>
#include <string>
#include <utility>

namespace tintwork::example {

namespace {

ColorValue hex(unsigned int rgb, double alpha = 1.0) {
    return ColorValue::sRGB(((rgb >> 16) & 0xFF) / 255.0, ((rgb >> 8) & 0xFF) / 255.0, (rgb & 0xFF) / 255.0, alpha);
}

ThemeableColor themed(std::string name, ColorValue light, std::optional<ColorValue> dark = std::nullopt) {
    ThemeableColor color;
    color.name = std::move(name);
    color.lightVariant = light;
    color.darkVariant = dark;
    return color;
}

// Identifiers read like real ones but are fixed: a prefix per kind and a running number.
std::string fixedId(unsigned int number) {
    char text[40];
    std::snprintf(text, sizeof text, "6F1C2A40-0000-4000-8000-%012X", number);
    return text;
}

class ItemMaker {
public:
    template <typename Payload>
    ProjectItemPtr item(std::string name, Payload payload) {
        return std::make_shared<OchreColorProjectItem>(std::move(name), fixedId(++next_), std::move(payload));
    }

    template <typename Payload>
    ProjectItemPtr alias(std::string name, Payload payload) {
        // Aliases are stored without an identifier; they get a fresh one on every load.
        return std::make_shared<OchreColorProjectItem>(std::move(name), fixedId(0xA000 + ++next_), std::move(payload));
    }

    ProjectItemPtr group(std::string name, std::vector<ProjectItemPtr> members, bool providesNamespace = true) {
        OchreColorGroup payload;
        payload.items = std::move(members);
        payload.providesNamespace = providesNamespace;
        auto node = item(std::move(name), std::move(payload));
        node->isExpanded = true;
        return node;
    }

private:
    unsigned int next_ = 0;
};

ProjectItemPtr colorItem(ItemMaker& builder, std::string name, ColorValue light, std::optional<ColorValue> dark,
                         AppearanceType appearance) {
    OchreColorItem payload;
    payload.color = themed(name, light, dark);
    payload.appearanceType = appearance;
    return builder.item(std::move(name), std::move(payload));
}

OchreColorAlias colorAlias(AliasSetType light, AliasSetType dark = AliasSetType::notSet(),
                           AppearanceType appearance = AppearanceType::none) {
    OchreColorAlias alias;
    alias.aliasTypes[0] = std::move(light);
    alias.aliasTypes[2] = std::move(dark);
    alias.appearanceType = appearance;
    return alias;
}

// Number, boolean and string aliases name their target for every appearance: a variant
// left unset would come back from a reload as an empty item reference.
void pointAllVariants(OchreColorItemAlias& alias, const std::string& uuid) {
    for (ItemAliasType& type : alias.aliasTypes) {
        type = ItemAliasType::item(uuid);
    }
}

ProjectItemPtr number(ItemMaker& builder, std::string name, double value, std::optional<double> dark = std::nullopt) {
    OchreColorNumber payload;
    payload.value.lightVariant = value;
    payload.value.darkVariant = dark;
    payload.minValue = 0;
    payload.maxValue = 64;
    payload.steps = 16;
    payload.appearanceType = dark ? AppearanceType::lightAndDark : AppearanceType::none;
    return builder.item(std::move(name), std::move(payload));
}

ShadowDetails shadowDetails(double y, double blur, double alpha) {
    ShadowDetails details;
    details.xOffset = 0;
    details.yOffset = y;
    details.blur = blur;
    details.spread = 0;
    details.color = hex(0x0B1220, alpha);
    return details;
}

BuildTask task(std::string name, BuildFileType type, std::string folder, std::string fileName,
               BuildNameTransform transform, unsigned int id) {
    BuildTask result;
    result.name = std::move(name);
    result.exportFileType = type;
    result.exportFileFolder = std::move(folder);
    result.exportFileName = std::move(fileName);
    result.nameTransform = transform;
    result.uuid = fixedId(0xB000 + id);
    return result;
}

}  // namespace

std::shared_ptr<OchreColorProject> makeExampleProject() {
    auto project = std::make_shared<OchreColorProject>();
    project->name = "Colors";
    project->projectDescription = "Colours, spacing, type and elevation of the Harbour design system.";
    project->settings = {{"DisplayMode", "group"}};

    // Build groups: the design system goes to every platform, the marketing site only to CSS.
    auto system = std::make_shared<BuildGroup>();
    system->uuid = fixedId(0xC001);
    system->name = "Design System";
    system->isExpanded = true;
    using T = BuildFileType;
    using N = BuildNameTransform;
    BuildTask css = task("CSS", T::css, "build/css", "colors", N::kebabCase, 1);
    css.exportFormat = BuildExportFormat::cssColor;
    css.namePrefix = "hb-";
    css.customData[std::string(customDataAppearanceColorType)] = "lightDark";
    BuildTask scss = task("SCSS", T::scss, "build/scss", "_colors", N::kebabCase, 2);
    scss.exportFormat = BuildExportFormat::cssRGBA;
    BuildTask less = task("LESS", T::less, "build/less", "colors", N::kebabCase, 3);
    less.exportFormat = BuildExportFormat::cssColor;
    BuildTask assets = task("Asset Catalog", T::assetCatalog, "build/xcassets", "Colors", N::pascalCase, 13);
    assets.customData[std::string(customDataAssetCatalogSymbols)] = "true";
    BuildTask swiftUI = task("SwiftUI", T::swiftUIEnum, "build/swift", "HarbourColors", N::camelCase, 5);
    swiftUI.nameSuffix = "Color";
    system->tasks = {
        css,
        scss,
        less,
        task("Plain Text", T::text, "build/text", "colors", N::none, 4),
        swiftUI,
        task("UIKit", T::swiftUIKitEnum, "build/swift", "HarbourUIColors", N::camelCase, 6),
        task("AppKit", T::swiftAppKitEnum, "build/swift", "HarbourNSColors", N::camelCase, 7),
        task("Android Resources", T::androidResource, "build/android/values", "colors", N::snakeCase, 8),
        task("Jetpack Compose", T::androidCompose, "build/android/compose", "HarbourColors", N::pascalCase, 9),
        task("Metal", T::metal, "build/metal", "HarbourColors", N::camelCase, 10),
        task("OpenGL", T::gl, "build/gl", "harbour_colors", N::snakeCase, 11),
        task("Design Tokens", T::jsonDesignToken, "build/json", "tokens", N::none, 12),
        assets,
    };
    auto marketing = std::make_shared<BuildGroup>();
    marketing->uuid = fixedId(0xC002);
    marketing->name = "Marketing Site";
    BuildTask marketingCss = task("Landing CSS", T::css, "build/marketing", "landing", N::kebabCase, 14);
    marketingCss.exportFormat = BuildExportFormat::cssOKLCH;
    marketing->tasks = {marketingCss};
    project->buildGroups = {system, marketing};

    // Test groups: text legibility on the neutral backgrounds, and brand colours against white.
    auto textTests = std::make_shared<TestGroup>();
    textTests->uuid = fixedId(0xD001);
    textTests->name = "Text Contrast";
    textTests->isExpanded = true;
    TestTask bodyText;
    bodyText.name = "Body text";
    bodyText.taskType = TestTaskType::apcaContrastTest;
    bodyText.uuid = fixedId(0xD101);
    bodyText.thresholdType = TestThresholdType::textSize;
    bodyText.minFontSize = 16;
    bodyText.minFontWeight = TestFontWeight::fourHundred;
    TestTask wcag;
    wcag.name = "WCAG AA";
    wcag.taskType = TestTaskType::wcagContrastTest;
    wcag.uuid = fixedId(0xD102);
    textTests->tests = {bodyText, wcag};
    auto brandTests = std::make_shared<TestGroup>();
    brandTests->uuid = fixedId(0xD002);
    brandTests->name = "Brand Luminosity";
    TestTask luminosity;
    luminosity.name = "Buttons";
    luminosity.taskType = TestTaskType::apcaContrastTest;
    luminosity.uuid = fixedId(0xD103);
    luminosity.thresholdType = TestThresholdType::luminosity;
    luminosity.threshold = 60;
    brandTests->tests = {luminosity};
    project->testGroups = {textTests, brandTests};

    ItemMaker builder;

    // Brand colours, and a nine-step blue ramp mixed in OKLCH.
    auto primary = colorItem(builder, "Primary", hex(0x2F6FED), hex(0x6A9BFF), AppearanceType::lightAndDark);
    auto secondary = colorItem(builder, "Secondary", hex(0x0F9D8A), hex(0x3CCFB9), AppearanceType::none);
    secondary->color->autoContrastAmount = 0.35;
    secondary->setAppearanceType(AppearanceType::lightDarkHighContrastAuto);
    auto accent = colorItem(builder, "Accent", hex(0xF5A524), std::nullopt, AppearanceType::highContrast);
    accent->color->color.lightVariantHighContrast = hex(0xB86E00);
    OchreColorSet blue;
    blue.colors = {themed("100", hex(0xE8F0FE)), themed("900", hex(0x0B2A6B))};
    blue.interpolationMethod = InterpolationMethod::oklch;
    blue.curveType = CurveType::hermite3;
    blue.curveAmount = 0.5;
    blue.type = SetType::twoItems;
    blue.steps = 9;
    blue.namingScheme = ColorNamingScheme::largeNumeric;
    regenerate(blue);
    auto blueSet = builder.item("Blue", std::move(blue));
    auto brand = builder.group("Brand", {primary, secondary, accent, blueSet});

    // Neutrals: a three-point grey ramp with dark variants and generated high contrast.
    auto white = colorItem(builder, "White", hex(0xFFFFFF), std::nullopt, AppearanceType::none);
    auto black = colorItem(builder, "Black", hex(0x0B1220), std::nullopt, AppearanceType::none);
    OchreColorSet gray;
    gray.colors = {themed("Start", hex(0xF8FAFC), hex(0x0F172A)), themed("Middle", hex(0x94A3B8), hex(0x64748B)),
                   themed("End", hex(0x0F172A), hex(0xF8FAFC))};
    gray.colorSpace = ColorSpace::displayP3;
    gray.interpolationMethod = InterpolationMethod::oklab;
    gray.curveType = CurveType::cosine;
    gray.curveAmount = 0.25;
    gray.type = SetType::threeItems;
    gray.steps = 9;
    gray.middleLocation = 0.5;
    gray.namingScheme = ColorNamingScheme::mediumNumeric;
    gray.autoContrastAmount = 0.4;
    regenerate(gray);
    auto graySet = builder.item("Gray", std::move(gray));
    graySet->setAppearanceType(AppearanceType::lightDarkHighContrastAuto);
    auto overlay = colorItem(builder, "Overlay", hex(0x0B1220, 0.48), std::nullopt, AppearanceType::none);
    overlay->color->colorSpace = ColorSpace::sRGBExtended;
    auto neutral = builder.group("Neutral", {white, black, graySet, overlay});

    // Semantic names point at the palette; they are what the apps use.
    // The background follows the grey ramp's own dark variant; text picks a colour per appearance.
    auto background = builder.alias("Background", colorAlias(AliasSetType::setItem(graySet->uuid, 0),
                                                             AliasSetType::notSet(), AppearanceType::lightAndDark));
    auto text = builder.alias("Text", colorAlias(AliasSetType::item(black->uuid), AliasSetType::item(white->uuid),
                                                 AppearanceType::lightAndDark));
    auto link = builder.alias("Link", colorAlias(AliasSetType::setItem(blueSet->uuid, 7),
                                                 AliasSetType::setItem(blueSet->uuid, 1),
                                                 AppearanceType::lightAndDark));
    auto action = builder.alias("Action", colorAlias(AliasSetType::item(primary->uuid)));
    OchreColorAlias focusPayload = colorAlias(AliasSetType::setItem(blueSet->uuid, 4));
    focusPayload.appearanceType = AppearanceType::highContrastAuto;
    focusPayload.autoContrastAmount = 0.6;
    auto focus = builder.alias("Focus Ring", std::move(focusPayload));
    auto brandRamp = builder.alias("Brand Ramp", colorAlias(AliasSetType::set(blueSet->uuid)));
    auto semantic = builder.group("Semantic", {background, text, link, action, focus, brandRamp});

    // Spacing and radii.
    auto small = number(builder, "Small", 4);
    auto medium = number(builder, "Medium", 8);
    auto large = number(builder, "Large", 16, 20);
    OchreColorNumberAlias gutterPayload;
    pointAllVariants(gutterPayload, medium->uuid);
    auto gutter = builder.alias("Gutter", std::move(gutterPayload));
    auto radius = number(builder, "Corner Radius", 6.5);
    auto spacing = builder.group("Spacing", {small, medium, large, gutter, radius});

    // Typography.
    OchreColorString fontFamily;
    fontFamily.value.lightVariant = "Inter, \"Helvetica Neue\", sans-serif";
    auto fontItem = builder.item("Font Family", std::move(fontFamily));
    OchreColorString monoFamily;
    monoFamily.value.lightVariant = "JetBrains Mono, Menlo, monospace";
    auto monoItem = builder.item("Monospace Font", std::move(monoFamily));
    OchreColorStringAlias bodyFont;
    pointAllVariants(bodyFont, fontItem->uuid);
    auto bodyFontItem = builder.alias("Body Font", std::move(bodyFont));
    OchreColorBoolean rounded;
    rounded.value.lightVariant = true;
    rounded.value.lightVariantHighContrast = false;
    rounded.appearanceType = AppearanceType::highContrast;
    auto roundedItem = builder.item("Rounded Buttons", std::move(rounded));
    OchreColorBooleanAlias underline;
    pointAllVariants(underline, roundedItem->uuid);
    auto underlineItem = builder.alias("Underline Links", std::move(underline));
    auto typography = builder.group("Typography", {fontItem, monoItem, bodyFontItem, roundedItem, underlineItem});

    // Elevation: one card shadow and a five-step shadow ramp.
    OchreColorShadow card;
    card.shadow.name = "Card";
    card.shadow.lightVariant = shadowDetails(2, 6, 0.12);
    card.shadow.darkVariant = shadowDetails(2, 8, 0.5);
    card.appearanceType = AppearanceType::lightAndDark;
    auto cardItem = builder.item("Card", std::move(card));
    OchreColorShadowSet elevation;
    ThemeableShadow low;
    low.name = "1";
    low.lightVariant = shadowDetails(1, 2, 0.08);
    ThemeableShadow high;
    high.name = "5";
    high.lightVariant = shadowDetails(24, 48, 0.24);
    elevation.shadows = {low, high};
    elevation.steps = 5;
    elevation.curveType = CurveType::hermite5;
    elevation.namingScheme = ColorNamingScheme::smallNumeric;
    regenerate(elevation);
    auto elevationSet = builder.item("Elevation", std::move(elevation));
    OchreColorShadowAlias popover;
    popover.aliasTypes[0] = AliasSetType::setItem(elevationSet->uuid, 3);
    auto popoverItem = builder.alias("Popover", std::move(popover));
    auto elevationGroup = builder.group("Elevation", {cardItem, elevationSet, popoverItem});

    // The marketing site has its own colours outside the namespaced palette.
    auto heroGradientStart = colorItem(builder, "Hero Start", hex(0x7C3AED), std::nullopt, AppearanceType::none);
    auto heroGradientEnd = colorItem(builder, "Hero End", hex(0xDB2777), std::nullopt, AppearanceType::none);
    auto marketingGroup = builder.group("Marketing", {heroGradientStart, heroGradientEnd}, false);
    marketingGroup->isExpanded = false;

    for (const ProjectItemPtr& group : {brand, neutral, semantic, spacing, typography, elevationGroup}) {
        group->buildGroup = system;
    }
    marketingGroup->buildGroup = marketing;

    auto attach = [](const ProjectItemPtr& item, const TestGroupPtr& group, TestPosition position) {
        item->testGroup = group;
        item->testPosition = position;
    };
    attach(text, textTests, TestPosition::foreground);
    attach(link, textTests, TestPosition::foreground);
    attach(background, textTests, TestPosition::background);
    attach(accent, brandTests, TestPosition::foreground);
    attach(secondary, brandTests, TestPosition::both);
    attach(white, brandTests, TestPosition::background);

    project->items = {brand, neutral, semantic, spacing, typography, elevationGroup, marketingGroup};
    project->linkAliases();
    return project;
}

}  // namespace tintwork::example
