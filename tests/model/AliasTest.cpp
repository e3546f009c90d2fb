#include "model/Alias.h"

#include <gtest/gtest.h>

#include "ModelBuilders.h"
#include "model/Project.h"

namespace tintwork {
namespace {

using testing::colorAlias;
using testing::colorItem;
using testing::colorSet;
using testing::grey;
using testing::group;
using testing::projectWith;

int memberCount(std::vector<ProjectItemPtr> sets, std::vector<AliasSetType> types) {
    OchreColorAlias payload;
    for (std::size_t slot = 0; slot < types.size(); ++slot) {
        payload.aliasTypes[slot] = types[slot];
    }
    auto alias = std::make_shared<OchreColorProjectItem>("alias", "alias", payload);
    sets.push_back(alias);
    auto project = projectWith(sets);
    return setAliasMemberCount(*alias->colorAlias);
}

TEST(Alias, MemberCountIsTheShortestTargetWithUnsetVariantsCountingNinetyNine) {
    const std::vector<ProjectItemPtr> sets = {colorSet("S5", 5),   colorSet("S7", 7),   colorSet("S9", 9),
                                              colorSet("S11", 11), colorSet("S12", 12), colorSet("S120", 3, 120)};
    EXPECT_EQ(5, memberCount(sets, {AliasSetType::set("S5"), AliasSetType::set("S7"), AliasSetType::set("S9"),
                                    AliasSetType::set("S11")}));
    EXPECT_EQ(12, memberCount(sets, {AliasSetType::set("S12")}));
    EXPECT_EQ(99, memberCount(sets, {AliasSetType::set("S120")}));
    EXPECT_EQ(120, memberCount(sets, {AliasSetType::set("S120"), AliasSetType::set("S120"), AliasSetType::set("S120"),
                                      AliasSetType::set("S120")}));
    EXPECT_EQ(99, memberCount(sets, {AliasSetType::set("missing")}));
    EXPECT_EQ(0, memberCount(sets, {AliasSetType::setItem("S5", 1)}));
    EXPECT_EQ(0, memberCount(sets, {AliasSetType::set("S5"), AliasSetType::notSet(), AliasSetType::setItem("S7", 0)}));
}

TEST(Alias, ResolvesUnderItsOwnNameVariantByVariant) {
    auto base = colorItem("base", 0.2, 0.8);
    auto other = colorItem("other", 0.5);
    auto themed = colorItem("themed", 0.3, 0.6);
    auto inherits = colorAlias("Inherits", AliasSetType::item("base"));
    auto explicitDark = colorAlias("Explicit", AliasSetType::item("base"), AliasSetType::item("other"));
    auto themedDark = colorAlias("Themed", AliasSetType::item("other"), AliasSetType::item("themed"));
    auto brokenDark = colorAlias("Broken", AliasSetType::item("base"), AliasSetType::item("nowhere"));
    auto project = projectWith({base, other, themed, inherits, explicitDark, themedDark, brokenDark});

    const ThemeableColor a = *inherits->resolvedColor();
    EXPECT_EQ("Inherits", a.name);
    EXPECT_EQ(inherits->uuid, a.uuid);
    EXPECT_EQ(grey(0.2), a.lightVariant);
    EXPECT_EQ(grey(0.8), a.darkVariant);
    EXPECT_FALSE(a.lightVariantHighContrast);
    EXPECT_EQ(grey(0.5), explicitDark->resolvedColor()->darkVariant);
    EXPECT_EQ(grey(0.6), themedDark->resolvedColor()->darkVariant);
    EXPECT_EQ(grey(0.8), brokenDark->resolvedColor()->darkVariant);

    EXPECT_EQ(std::nullopt, colorAlias("x", AliasSetType::item("base"))->resolvedColor());
    EXPECT_EQ(grey(0.2), base->resolvedColor()->lightVariant);
    EXPECT_EQ(std::nullopt, base->resolvedNumber());
}

TEST(Alias, AutomaticHighContrastAliasesDeriveTheirOwnVariants) {
    auto base = colorItem("base", 0.8, 0.2);
    auto ramp = colorSet("ramp", 2);
    auto focus = colorAlias("Focus", AliasSetType::item("base"), AliasSetType::notSet());
    focus->colorAlias->appearanceType = AppearanceType::lightDarkHighContrastAuto;
    focus->colorAlias->autoContrastAmount = 0.3;
    auto rampAlias = colorAlias("Ramp", AliasSetType::set("ramp"));
    rampAlias->colorAlias->appearanceType = AppearanceType::highContrastAuto;
    auto project = projectWith({base, ramp, focus, rampAlias});
    const ThemeableColor color = *focus->resolvedColor();
    EXPECT_EQ(highContrastColor(grey(0.8), 0.3), color.lightVariantHighContrast);
    EXPECT_EQ(highContrastColor(grey(0.2), 0.3), color.darkVariantHighContrast);
    const std::vector<ThemeableColor> members = *rampAlias->resolvedColorSet();
    EXPECT_EQ(highContrastColor(grey(0.1), 0.5), members[1].lightVariantHighContrast);
    EXPECT_FALSE(members[1].darkVariantHighContrast);
}

TEST(Alias, PicksSetMembersByIndexAndTreatsOutOfRangeAsEmpty) {
    auto ramp = colorSet("ramp", 5, -1, 0.5);
    auto second = colorAlias("second", AliasSetType::setItem("ramp", 1));
    auto last = colorAlias("last", AliasSetType::setItem("ramp", 4), AliasSetType::setItem("ramp", 0));
    auto beyond = colorAlias("beyond", AliasSetType::setItem("ramp", 5));
    auto negative = colorAlias("negative", AliasSetType::setItem("ramp", -1));
    auto wholeSet = colorAlias("whole", AliasSetType::set("ramp"));
    auto project = projectWith({ramp, second, last, beyond, negative, wholeSet});
    EXPECT_EQ(grey(0.1), second->resolvedColor()->lightVariant);
    EXPECT_EQ(grey(0.5 + 1 / 100.0), second->resolvedColor()->darkVariant);
    EXPECT_EQ(grey(0.4), last->resolvedColor()->lightVariant);
    EXPECT_EQ(grey(0.5), last->resolvedColor()->darkVariant);
    EXPECT_EQ(std::nullopt, beyond->resolvedColor());
    EXPECT_EQ(std::nullopt, negative->resolvedColor());
    EXPECT_EQ(std::nullopt, wholeSet->resolvedColor());
    EXPECT_EQ(std::nullopt, second->resolvedColorSet());
}

TEST(Alias, ResolvesWholeSetsUpToTheMemberCount) {
    auto light = colorSet("light", 5);
    auto dark = colorSet("dark", 3, -1, 0.9);
    auto accent = colorItem("accent", 0.7);
    auto both = colorAlias("Both", AliasSetType::set("light"), AliasSetType::set("dark"));
    OchreColorAlias mixedPayload;
    mixedPayload.aliasTypes[0] = AliasSetType::set("light");
    mixedPayload.aliasTypes[1] = AliasSetType::item("accent");
    auto mixed = std::make_shared<OchreColorProjectItem>("Mixed", "Mixed", mixedPayload);
    auto chained = colorAlias("Chained", AliasSetType::set("Both"));
    auto project = projectWith({light, dark, accent, both, mixed, chained});

    const std::vector<ThemeableColor> members = *both->resolvedColorSet();
    ASSERT_EQ(3u, members.size());
    EXPECT_EQ("2", members[1].name);
    EXPECT_EQ(grey(0.1), members[1].lightVariant);
    EXPECT_EQ(grey(0.9 + 1 / 100.0), members[1].darkVariant);

    const std::vector<ThemeableColor> withAccent = *mixed->resolvedColorSet();
    ASSERT_EQ(5u, withAccent.size());
    EXPECT_EQ(grey(0.7), withAccent[4].lightVariantHighContrast);
    EXPECT_FALSE(withAccent[4].darkVariant);

    const std::vector<ThemeableColor> throughAlias = *chained->resolvedColorSet();
    EXPECT_EQ(3u, throughAlias.size());
}

TEST(Alias, CyclesAndLongChainsTerminate) {
    auto a = colorAlias("A", AliasSetType::item("B"));
    auto b = colorAlias("B", AliasSetType::item("A"));
    auto self = colorAlias("Self", AliasSetType::item("Self"), AliasSetType::item("Self"));
    auto setCycle = colorAlias("SetCycle", AliasSetType::set("SetCycle"));
    auto memberCycle = colorAlias("MemberCycle", AliasSetType::setItem("MemberCycle", 0));
    auto project = projectWith({a, b, self, setCycle, memberCycle});
    EXPECT_EQ(std::nullopt, a->resolvedColor());
    EXPECT_EQ(std::nullopt, self->resolvedColor());
    EXPECT_EQ(std::nullopt, setCycle->resolvedColorSet());
    EXPECT_EQ(std::nullopt, memberCycle->resolvedColor());

    // A chain of a few links resolves, and so does one of the longest length followed.
    std::vector<ProjectItemPtr> chain = {colorItem("end", 0.4)};
    for (int i = 0; i < 20000; ++i) {
        chain.push_back(colorAlias("link" + std::to_string(i), AliasSetType::item(chain.back()->uuid)));
    }
    // Every alias below points with all four variants at the next one: 4^n paths, one resolution each.
    std::vector<ProjectItemPtr> fan = {colorItem("root", 0.6)};
    for (int i = 0; i < 100; ++i) {
        OchreColorAlias payload;
        for (AliasSetType& type : payload.aliasTypes) {
            type = AliasSetType::item(fan.back()->uuid);
        }
        fan.push_back(std::make_shared<OchreColorProjectItem>("fan", "fan" + std::to_string(i), payload));
    }
    chain.insert(chain.end(), fan.begin(), fan.end());
    auto longProject = projectWith(chain);
    EXPECT_EQ(grey(0.4), chain[10]->resolvedColor()->lightVariant);
    // A chain too long to follow is refused by name instead of reading as a broken alias.
    try {
        (void)chain[20000]->resolvedColor();
        ADD_FAILURE() << "a chain of 20000 aliases resolved";
    } catch (const AliasChainError& error) {
        EXPECT_STREQ("The alias \u201clink19999\u201d leads through more than 256 aliases.", error.what());
    }
    EXPECT_THROW((void)chain[maximumAliasChainLength + 1]->resolvedColor(), AliasChainError);
    EXPECT_EQ(grey(0.4), chain[maximumAliasChainLength]->resolvedColor()->lightVariant);
    EXPECT_EQ(grey(0.6), fan.back()->resolvedColor()->variant(ColorSource::darkHighContrast));
}

TEST(Alias, ResolvesNumberBooleanStringAndShadowAliases) {
    OchreColorNumber number;
    number.value.lightVariant = 8;
    number.value.darkVariant = 12;
    auto gap = std::make_shared<OchreColorProjectItem>("gap", "gap", number);
    OchreColorNumberAlias gutterPayload;
    gutterPayload.aliasTypes[0] = ItemAliasType::item("gap");
    gutterPayload.aliasTypes[2] = ItemAliasType::item("");
    auto gutter = std::make_shared<OchreColorProjectItem>("gutter", "gutter", gutterPayload);

    OchreColorString font;
    font.value.lightVariant = "Inter";
    auto fontItem = std::make_shared<OchreColorProjectItem>("font", "font", font);
    OchreColorStringAlias bodyPayload;
    bodyPayload.aliasTypes[0] = ItemAliasType::item("font");
    auto body = std::make_shared<OchreColorProjectItem>("body", "body", bodyPayload);
    OchreColorBooleanAlias loopPayload;
    loopPayload.aliasTypes[0] = ItemAliasType::item("loop");
    auto loop = std::make_shared<OchreColorProjectItem>("loop", "loop", loopPayload);

    OchreColorShadowSet shadows;
    shadows.shadows.resize(3);
    shadows.shadows[2].lightVariant.blur = 24;
    shadows.steps = 3;
    auto elevation = std::make_shared<OchreColorProjectItem>("elevation", "elevation", shadows);
    OchreColorShadowAlias popoverPayload;
    popoverPayload.aliasTypes[0] = AliasSetType::setItem("elevation", 2);
    auto popover = std::make_shared<OchreColorProjectItem>("Popover", "popover", popoverPayload);

    auto project = projectWith({gap, gutter, fontItem, body, loop, elevation, popover});
    EXPECT_EQ(8, gutter->resolvedNumber()->lightVariant);
    EXPECT_EQ(12, gutter->resolvedNumber()->darkVariant);
    EXPECT_EQ("Inter", body->resolvedString()->lightVariant);
    EXPECT_EQ(std::nullopt, loop->resolvedBoolean());
    EXPECT_EQ(24, popover->resolvedShadow()->lightVariant.blur);
    EXPECT_EQ("Popover", popover->resolvedShadow()->name);
    EXPECT_EQ(3u, elevation->resolvedShadowSet()->size());
}

TEST(Alias, LinksToTheFirstItemInDocumentOrder) {
    auto nested = colorItem("twin", 0.1);
    auto later = colorItem("twin", 0.9);
    auto alias = colorAlias("alias", AliasSetType::setItem("twin", 3), AliasSetType::item("nowhere"));
    auto project = projectWith({group("g", {nested}), later, alias});
    EXPECT_EQ(nested.get(), alias->colorAlias->referencedProjectItems[0]);
    EXPECT_EQ(3, alias->colorAlias->referencedSetIndexes[0]);
    EXPECT_EQ(nullptr, alias->colorAlias->referencedProjectItems[2]);
    EXPECT_EQ(std::nullopt, alias->colorAlias->referencedSetIndexes[2]);
}

}  // namespace
}  // namespace tintwork
