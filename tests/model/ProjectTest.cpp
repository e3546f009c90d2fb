#include "model/Project.h"

#include <gtest/gtest.h>

#include "ModelBuilders.h"

namespace tintwork {
namespace {

using testing::colorItem;
using testing::colorSet;
using testing::group;
using testing::projectWith;

std::vector<std::string> uuids(const std::vector<ProjectItemPtr>& items) {
    std::vector<std::string> result;
    for (const ProjectItemPtr& item : items) {
        result.push_back(item->uuid);
    }
    return result;
}

std::vector<std::string> uuids(const std::vector<OchreColorProjectItem*>& items) {
    std::vector<std::string> result;
    for (const OchreColorProjectItem* item : items) {
        result.push_back(item->uuid);
    }
    return result;
}

// brand { primary, inner { deep } }, loose, empty {}
std::shared_ptr<OchreColorProject> sampleProject() {
    return projectWith({group("brand", {colorItem("primary", 0.1), group("inner", {colorItem("deep", 0.2)})}),
                        colorItem("loose", 0.3), group("empty", {})});
}

TEST(Project, WalksGroupsBeforeTheirMembers) {
    auto project = sampleProject();
    std::vector<std::string> order;
    project->walk([&](OchreColorProjectItem& item) { order.push_back(item.uuid); });
    EXPECT_EQ((std::vector<std::string>{"brand", "primary", "inner", "deep", "loose", "empty"}), order);

    const OchreColorProjectStatistics counts = project->statistics();
    EXPECT_EQ(3, counts.groupCount);
    EXPECT_EQ(3, counts.colorItemCount);
    EXPECT_EQ(0, counts.colorSetCount);
}

TEST(Project, FindsItemsAndGroupsByUuid) {
    auto project = sampleProject();
    project->items.push_back(colorItem("deep", 0.9));
    EXPECT_EQ(0.2, project->findItem("deep")->color->color.lightVariant.red());
    EXPECT_EQ(nullptr, project->findItem("nothing"));
    const ProjectItemIndex index(*project);
    EXPECT_EQ(project->findItem("deep"), index.find("deep"));
    EXPECT_EQ(nullptr, index.find("nothing"));

    auto build = std::make_shared<BuildGroup>();
    build->uuid = "B";
    auto test = std::make_shared<TestGroup>();
    test->uuid = "T";
    project->buildGroups = {build};
    project->testGroups = {test};
    EXPECT_EQ(build, project->findBuildGroup("B"));
    EXPECT_EQ(nullptr, project->findBuildGroup("T"));
    EXPECT_EQ(test, project->findTestGroup("T"));
}

TEST(Project, GivesThePathFromTheTopDownToAnItem) {
    auto project = sampleProject();
    const OchreColorProjectItem& deep = *project->findItem("deep");
    EXPECT_EQ((std::vector<std::string>{"brand", "inner", "deep"}), uuids(project->pathToItem(deep)));
    EXPECT_EQ((std::vector<std::string>{"loose"}), uuids(project->pathToItem(*project->findItem("loose"))));
    auto stranger = colorItem("stranger", 0);
    EXPECT_TRUE(project->pathToItem(*stranger).empty());

    const ProjectItemIndex index(*project);
    EXPECT_EQ(project->pathToItem(deep), index.pathToItem(deep));
    EXPECT_TRUE(index.pathToItem(*stranger).empty());
}

TEST(Project, CollectsTheItemsOfABuildGroupDepthFirst) {
    auto project = sampleProject();
    auto web = std::make_shared<BuildGroup>();
    auto other = std::make_shared<BuildGroup>();
    project->findItem("deep")->buildGroup = web;
    project->findItem("brand")->buildGroup = web;
    project->findItem("loose")->buildGroup = web;
    project->findItem("primary")->buildGroup = other;
    EXPECT_EQ((std::vector<std::string>{"brand", "deep", "loose"}), uuids(project->itemsForBuildGroup(*web)));
    EXPECT_EQ((std::vector<std::string>{"primary"}), uuids(project->itemsForBuildGroup(*other)));
    EXPECT_TRUE(project->itemsForBuildGroup(BuildGroup{}).empty());
}

TEST(Project, AutomaticHighContrastGeneratesColourVariants) {
    auto plain = colorItem("plain", 0.9, 0.1);
    plain->setAppearanceType(AppearanceType::highContrastAuto);
    EXPECT_EQ(AppearanceType::highContrastAuto, plain->appearanceType());
    const ThemeableColor& color = plain->color->color;
    ASSERT_TRUE(color.lightVariantHighContrast);
    EXPECT_EQ(highContrastColor(color.lightVariant, 0.5), *color.lightVariantHighContrast);
    EXPECT_FALSE(color.darkVariantHighContrast);

    auto both = colorItem("both", 0.9, 0.1);
    both->color->autoContrastAmount = 0.2;
    both->setAppearanceType(AppearanceType::lightDarkHighContrastAuto);
    ASSERT_TRUE(both->color->color.darkVariantHighContrast);
    EXPECT_EQ(highContrastColor(*both->color->color.darkVariant, 0.2), *both->color->color.darkVariantHighContrast);

    auto manual = colorItem("manual", 0.9);
    manual->setAppearanceType(AppearanceType::highContrast);
    EXPECT_FALSE(manual->color->color.lightVariantHighContrast);

    auto ramp = colorSet("ramp", 3);
    OchreColorNumber numberPayload;
    auto number = std::make_shared<OchreColorProjectItem>("n", "n", numberPayload);
    auto folder = group("folder", {ramp, group("nested", {number})});
    folder->setAppearanceType(AppearanceType::lightDarkHighContrastAuto);
    EXPECT_EQ(AppearanceType::none, folder->appearanceType());
    EXPECT_EQ(AppearanceType::lightDarkHighContrastAuto, ramp->appearanceType());
    for (const ThemeableColor& member : ramp->colorSet->colors) {
        EXPECT_TRUE(member.lightVariantHighContrast);
        EXPECT_FALSE(member.darkVariantHighContrast);
    }
    EXPECT_EQ(AppearanceType::lightDarkHighContrastAuto, number->appearanceType());
    EXPECT_FALSE(number->number->value.lightVariantHighContrast);
}

}  // namespace
}  // namespace tintwork
