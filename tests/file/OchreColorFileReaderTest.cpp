#include "file/OchreColorFileReader.h"

#include <gtest/gtest.h>

#include "DocumentText.h"
#include "colour/ColorSpace.h"

namespace tintwork {
namespace {

using testing::colorItemXml;
using testing::documentWith;

std::shared_ptr<OchreColorProject> read(const std::string& text) {
    return OchreColorFileReader().read(text);
}

// The one top-level item of a document holding `xml`, or null when it was dropped.
ProjectItemPtr onlyItem(const std::string& xml) {
    auto project = read(documentWith(xml));
    return project->items.empty() ? nullptr : project->items.front();
}

std::string setXml(const std::string& block, const std::string& colors = "") {
    return "<colorSet><id>S</id><name>Ramp</name><profile>sRGB</profile>" + block + "<colors>" + colors +
           "</colors></colorSet>";
}

std::string memberXml(const std::string& name, const std::string& rgba = "0 0 0 1") {
    return "<color><name>" + name + "</name><variants><variant><rgba>" + rgba + "</rgba></variant></variants></color>";
}

std::string numberXml(const std::string& value) {
    return "<numberItem><id>N</id><name>n</name><number><variants><variant><value>" + value +
           "</value></variant></variants></number></numberItem>";
}

TEST(OchreColorFileReader, RejectsBytesThatAreNoDocument) {
    try {
        read("<tintwork><project>");
        FAIL() << "expected DocumentFormatError";
    } catch (const DocumentFormatError& error) {
        EXPECT_STREQ("The document is not valid XML: Start-end tags mismatch at offset 18", error.what());
    }
    EXPECT_THROW(read(""), DocumentFormatError);
    EXPECT_THROW(read("plain text"), DocumentFormatError);
    EXPECT_THROW(read("<?xml version=\"1.0\"?><!-- nothing -->"), DocumentFormatError);
    try {
        read("<tintwork><header/></tintwork>");
        FAIL() << "expected DocumentFormatError";
    } catch (const DocumentFormatError& error) {
        EXPECT_STREQ("The document has no tintwork project", error.what());
    }
}

TEST(OchreColorFileReader, ReadsTheProjectWhateverTheRootIsCalled) {
    auto renamed = read("<palette><project><colorItems>" + colorItemXml("A", "Red") +
                        "</colorItems></project></palette>");
    ASSERT_EQ(1u, renamed->items.size());
    EXPECT_EQ("A", renamed->items[0]->uuid);
}

TEST(OchreColorFileReader, LoadsAnyVersionAndMissingContainers) {
    auto project = read(
        "<tintwork><project><header><version>9.9</version><description>Old</description></header>"
        "<colorItems>" +
        colorItemXml("A", "Red") + "</colorItems></project></tintwork>");
    EXPECT_EQ("Old", project->projectDescription);
    ASSERT_EQ(1u, project->items.size());
    EXPECT_TRUE(project->buildGroups.empty());
    EXPECT_TRUE(project->settings.empty());

    auto empty = read("<tintwork><project/></tintwork>");
    EXPECT_TRUE(empty->items.empty());
    EXPECT_EQ("", empty->projectDescription);
}

TEST(OchreColorFileReader, ReadsSettingsInOrder) {
    auto project = read(
        "<tintwork><project><settings><setting><key>DisplayMode</key><value>table</value></setting>"
        "<setting><key>Other</key></setting><setting><value>no key</value></setting>"
        "</settings></project></tintwork>");
    ASSERT_EQ(2u, project->settings.size());
    EXPECT_EQ("DisplayMode", project->settings[0].key);
    EXPECT_EQ("table", project->settings[0].value);
    EXPECT_EQ("Other", project->settings[1].key);
    EXPECT_EQ("", project->settings[1].value);
}

TEST(OchreColorFileReader, AppliesItemDefaults) {
    auto item = onlyItem(colorItemXml("A", "Red", "0.5 0.25 1 1", "<appearance>sideways</appearance>"));
    ASSERT_TRUE(item);
    EXPECT_EQ(AppearanceType::none, item->color->appearanceType);
    EXPECT_EQ(0.5, item->color->autoContrastAmount);
    EXPECT_EQ(ColorSpace::sRGB, item->color->colorSpace);
    EXPECT_EQ(ColorValue(ColorEncoding::sRGB, 0.5, 0.25, 1, 1), item->color->color.lightVariant);
    EXPECT_FALSE(item->isExpanded);
    EXPECT_EQ(TestPosition::both, item->testPosition);

    EXPECT_EQ(
        0.5,
        onlyItem(colorItemXml("A", "a", "1 0 0 1", "<autoContrast>lots</autoContrast>"))->color->autoContrastAmount);
    EXPECT_EQ(
        0.25,
        onlyItem(colorItemXml("A", "a", "1 0 0 1", "<autoContrast>0.25</autoContrast>"))->color->autoContrastAmount);
    EXPECT_EQ(AppearanceType::highContrastAuto,
              onlyItem(colorItemXml("A", "a", "1 0 0 1", "<appearance>highContrastAuto</appearance>"))
                  ->color->appearanceType);

    auto noId = onlyItem(
        "<colorItem><name>x</name><color><variants><variant><rgba>1 1 1 1</rgba></variant>"
        "</variants></color></colorItem>");
    ASSERT_TRUE(noId);
    EXPECT_EQ(36u, noId->uuid.size());
    EXPECT_EQ("", noId->color->color.name);
}

TEST(OchreColorFileReader, MakesColoursInTheProfileSpaceWithoutClamping) {
    auto p3 = onlyItem(
        "<colorItem><id>A</id><profile>DisplayP3</profile><color><variants><variant>"
        "<rgba>1.5 -0.25 0 0.5</rgba></variant></variants></color></colorItem>");
    EXPECT_EQ(ColorSpace::displayP3, p3->color->colorSpace);
    EXPECT_EQ(ColorValue(ColorEncoding::displayP3, 1.5, -0.25, 0, 0.5), p3->color->color.lightVariant);
    auto extended = onlyItem(
        "<colorItem><id>A</id><profile>extendedSRGB</profile><color><variants><variant>"
        "<rgba>2 0 0 1</rgba></variant></variants></color></colorItem>");
    EXPECT_EQ(ColorEncoding::sRGBExtended, extended->color->color.lightVariant.encoding());
    auto unknown = onlyItem(
        "<colorItem><id>A</id><profile>Lab</profile><color><variants><variant>"
        "<rgba>1 1 1 1</rgba></variant></variants></color></colorItem>");
    EXPECT_EQ(ColorSpace::sRGB, unknown->color->colorSpace);
}

TEST(OchreColorFileReader, DropsItemsWithoutAReadableLightVariant) {
    EXPECT_TRUE(onlyItem(colorItemXml("A", "a", "1 0 0 1")));
    EXPECT_TRUE(onlyItem(colorItemXml("A", "a", "  1   0 0  1 ")));
    EXPECT_FALSE(onlyItem(colorItemXml("A", "a", "1 0 0")));
    EXPECT_FALSE(onlyItem(colorItemXml("A", "a", "1 0 0 1 1")));
    EXPECT_FALSE(onlyItem(colorItemXml("A", "a", "1 0 x 1")));
    EXPECT_FALSE(onlyItem(colorItemXml("A", "a", "")));
    EXPECT_FALSE(onlyItem("<colorItem><id>A</id><color><variants/></color></colorItem>"));
    EXPECT_FALSE(onlyItem("<colorItem><id>A</id><color/></colorItem>"));
    EXPECT_FALSE(onlyItem("<colorItem><id>A</id></colorItem>"));
    EXPECT_FALSE(
        onlyItem("<colorItem><id>A</id><color><variants><variant type=\"dark\"><rgba>1 1 1 1</rgba>"
                 "</variant></variants></color></colorItem>"));
    EXPECT_FALSE(
        onlyItem("<colorItem><id>A</id><color><variants><variant><rgba>bad</rgba></variant>"
                 "<variant><rgba>1 1 1 1</rgba></variant></variants></color></colorItem>"));
}

TEST(OchreColorFileReader, TakesTheFirstVariantOfEachAppearance) {
    auto item = onlyItem(
        "<colorItem><id>A</id><color><variants>"
        "<variant type=\"dark\"><rgba>0 0 0 1</rgba></variant>"
        "<variant><rgba>1 1 1 1</rgba></variant>"
        "<variant type=\"dark\"><rgba>0.5 0.5 0.5 1</rgba></variant>"
        "<variant type=\"highContrast\"><rgba>broken</rgba></variant>"
        "<variant type=\"highContrast\"><rgba>0.2 0.2 0.2 1</rgba></variant>"
        "<variant type=\"darkHighContrast\"><rgba>0.1 0.1 0.1 1</rgba></variant>"
        "<variant type=\"sepia\"><rgba>0.3 0.3 0.3 1</rgba></variant>"
        "</variants></color></colorItem>");
    ASSERT_TRUE(item);
    const ThemeableColor& color = item->color->color;
    EXPECT_EQ(1.0, color.lightVariant.red());
    ASSERT_TRUE(color.darkVariant);
    EXPECT_EQ(0.0, color.darkVariant->red());
    EXPECT_FALSE(color.lightVariantHighContrast);
    ASSERT_TRUE(color.darkVariantHighContrast);
    EXPECT_EQ(0.1, color.darkVariantHighContrast->red());
}

TEST(OchreColorFileReader, ParsesNumbersStrictly) {
    auto value = [](const std::string& text) -> std::optional<double> {
        auto item = onlyItem(numberXml(text));
        return item ? std::optional(item->number->value.lightVariant) : std::nullopt;
    };
    EXPECT_EQ(3.0, value("3"));
    EXPECT_EQ(-0.25, value("-0.25"));
    EXPECT_EQ(1e20, value("1e+20"));
    EXPECT_EQ(2.0, value("+2"));
    EXPECT_EQ(std::nullopt, value(" 3"));
    EXPECT_EQ(std::nullopt, value("3px"));
    EXPECT_EQ(std::nullopt, value(""));
    EXPECT_EQ(std::nullopt, value("+-3"));
    EXPECT_EQ(std::nullopt, value("0x10"));

    auto number = onlyItem(
        "<numberItem><id>N</id><number><variants><variant><value>8</value></variant></variants>"
        "</number><min>0</min><max>wide</max><steps>16</steps></numberItem>");
    EXPECT_EQ(0.0, number->number->minValue);
    EXPECT_EQ(std::nullopt, number->number->maxValue);
    EXPECT_EQ(16, number->number->steps);
}

TEST(OchreColorFileReader, ReadsBooleansAndStrings) {
    auto boolean = [](const std::string& text) {
        return onlyItem("<booleanItem><id>B</id><boolean><variants><variant><value>" + text +
                        "</value></variant></variants></boolean></booleanItem>");
    };
    EXPECT_TRUE(boolean("true")->boolean->value.lightVariant);
    EXPECT_FALSE(boolean("false")->boolean->value.lightVariant);
    EXPECT_FALSE(boolean("yes"));
    EXPECT_FALSE(boolean("TRUE"));

    auto text = onlyItem(
        "<stringItem><id>S</id><string><variants><variant><value>Inter &amp; Co</value></variant>"
        "<variant type=\"dark\"><value/></variant></variants></string></stringItem>");
    EXPECT_EQ("Inter & Co", text->string->value.lightVariant);
    EXPECT_EQ("", text->string->value.darkVariant);
    EXPECT_FALSE(onlyItem("<stringItem><id>S</id><string><variants><variant/></variants></string></stringItem>"));
}

TEST(OchreColorFileReader, DropsSetsWithoutTheirRequiredFields) {
    const std::string full =
        "<steps>2</steps><interpolation>3</interpolation><curve>4</curve>"
        "<curveAmount>2.5</curveAmount><type>1</type><middle>0.4</middle><naming>3</naming>";
    auto set = onlyItem(setXml(full, memberXml("a") + memberXml("b")));
    ASSERT_TRUE(set);
    EXPECT_EQ(InterpolationMethod::oklab, set->colorSet->interpolationMethod);
    EXPECT_EQ(CurveType::lame, set->colorSet->curveType);
    EXPECT_EQ(2.5, set->colorSet->curveAmount);
    EXPECT_EQ(SetType::threeItems, set->colorSet->type);
    EXPECT_EQ(0.4, set->colorSet->middleLocation);
    EXPECT_EQ(ColorNamingScheme::mediumNumeric, set->colorSet->namingScheme);

    const std::string required = "<interpolation>0</interpolation><type>0</type><middle>0.5</middle>";
    EXPECT_TRUE(onlyItem(setXml(required + "<naming>0</naming>")));
    EXPECT_FALSE(onlyItem(setXml(required)));
    EXPECT_FALSE(onlyItem(setXml(required + "<naming>4</naming>")));
    EXPECT_FALSE(
        onlyItem(setXml("<interpolation>0</interpolation><type>3</type><middle>0.5</middle><naming>0</naming>")));
    EXPECT_FALSE(
        onlyItem(setXml("<interpolation>4</interpolation><type>0</type><middle>0.5</middle><naming>0</naming>")));
    EXPECT_FALSE(
        onlyItem(setXml("<interpolation>0</interpolation><type>0</type><middle>half</middle><naming>0</naming>")));
    EXPECT_FALSE(onlyItem(setXml("<type>0</type><middle>0.5</middle><naming>0</naming>")));

    auto defaults = onlyItem(setXml(required + "<naming>0</naming><curve>9</curve><curveAmount>steep</curveAmount>"));
    EXPECT_EQ(CurveType::linear, defaults->colorSet->curveType);
    EXPECT_EQ(1.0, defaults->colorSet->curveAmount);
}

TEST(OchreColorFileReader, CountsSetMembersFromTheDocumentNotFromSteps) {
    const std::string block =
        "<steps>5</steps><interpolation>0</interpolation><type>0</type><middle>0.5</middle>"
        "<naming>0</naming>";
    auto set = onlyItem(setXml(block, memberXml("1") + memberXml("2", "x") + memberXml("3") + memberXml("4")));
    ASSERT_TRUE(set);
    ASSERT_EQ(3u, set->colorSet->colors.size());
    EXPECT_EQ(3, set->colorSet->steps);
    EXPECT_EQ("4", set->colorSet->colors[2].name);
}

TEST(OchreColorFileReader, SkipsUnknownElementsAndKeepsSiblings) {
    auto project =
        read(documentWith(colorItemXml("A", "a") + "<gradient><id>G</id></gradient>" + colorItemXml("B", "b") +
                          "<group><id>G</id><name>Group</name><expanded>1</expanded><namespace>1</namespace>"
                          "<id>again</id>" +
                          colorItemXml("C", "c") + "</group>"));
    ASSERT_EQ(3u, project->items.size());
    EXPECT_EQ("A", project->items[0]->uuid);
    EXPECT_EQ("B", project->items[1]->uuid);
    const ProjectItemPtr& group = project->items[2];
    EXPECT_EQ(ProjectItemType::group, group->itemType);
    EXPECT_TRUE(group->isExpanded);
    EXPECT_TRUE(group->group->providesNamespace);
    ASSERT_EQ(1u, group->group->items.size());
    EXPECT_EQ("C", group->group->items[0]->uuid);
}

TEST(OchreColorFileReader, LinksItemsToBuildAndTestGroups) {
    const std::string buildGroups = "<buildGroup><id>BG</id><name>Web</name><tasks/></buildGroup>";
    const std::string testGroups = "<testGroup><id>TG</id><name>Text</name><tests/></testGroup>";
    auto project = read(documentWith(
        colorItemXml("A", "a", "1 0 0 1",
                     "<buildGroupId>BG</buildGroupId><testGroupId>TG</testGroupId>"
                     "<testPosition>foreground</testPosition>") +
            "<colorItem><id>B</id><color><variants><variant><rgba>1 1 1 1</rgba></variant></variants></color>"
            "<buildGroupId>nowhere</buildGroupId><testGroupId>TG</testGroupId><testPosition>top</testPosition>"
            "</colorItem>",
        buildGroups, testGroups));
    ASSERT_EQ(2u, project->items.size());
    EXPECT_EQ(project->buildGroups[0], project->items[0]->buildGroup);
    EXPECT_EQ(project->testGroups[0], project->items[0]->testGroup);
    EXPECT_EQ(TestPosition::foreground, project->items[0]->testPosition);
    EXPECT_EQ(nullptr, project->items[1]->buildGroup);
    EXPECT_EQ(project->testGroups[0], project->items[1]->testGroup);
    EXPECT_EQ(TestPosition::both, project->items[1]->testPosition);
}

TEST(OchreColorFileReader, DropsTasksWithAnUnreadableTypeOrTransform) {
    auto taskXml = [](const std::string& fileType, const std::string& transform) {
        return "<task><name>T</name><id>T1</id><folder>out</folder><fileName>colors</fileName>" + fileType + transform +
               "</task>";
    };
    const std::string tasks = taskXml("<fileType>13</fileType>", "<nameTransform>4</nameTransform>") +
                              taskXml("<fileType>14</fileType>", "<nameTransform>0</nameTransform>") +
                              taskXml("<fileType>-1</fileType>", "<nameTransform>0</nameTransform>") +
                              taskXml("<fileType>css</fileType>", "<nameTransform>0</nameTransform>") +
                              taskXml("", "<nameTransform>0</nameTransform>") +
                              taskXml("<fileType>1</fileType>", "<nameTransform>5</nameTransform>") +
                              taskXml("<fileType>1</fileType>", "") +
                              "<task><fileType>0</fileType><nameTransform>0</nameTransform></task>";
    auto project = read(documentWith(
        "", "<buildGroup><id>G</id><name>Web</name><expanded>1</expanded><tasks>" + tasks + "</tasks></buildGroup>"));
    ASSERT_EQ(1u, project->buildGroups.size());
    const BuildGroup& group = *project->buildGroups[0];
    EXPECT_TRUE(group.isExpanded);
    ASSERT_EQ(2u, group.tasks.size());
    EXPECT_EQ(BuildFileType::less, group.tasks[0].exportFileType);
    EXPECT_EQ(BuildNameTransform::kebabCase, group.tasks[0].nameTransform);
    EXPECT_EQ("colors.less", group.tasks[0].exportFileNameWithExtension());
    EXPECT_EQ(std::nullopt, group.tasks[0].exportFormat);
    EXPECT_EQ(std::nullopt, group.tasks[0].namePrefix);
    EXPECT_EQ("", group.tasks[1].exportFileFolder);
    EXPECT_EQ("", group.tasks[1].exportFileName);
    EXPECT_EQ(36u, group.tasks[1].uuid.size());
}

TEST(OchreColorFileReader, ReadsTaskOptionsAndConfiguration) {
    auto project =
        read(documentWith("",
                          "<buildGroup><id>G</id><tasks><task><fileType>3</fileType><nameTransform>0</nameTransform>"
                          "<format>cssOKLCH</format><namePrefix/><nameSuffix>Color</nameSuffix><configuration>"
                          "<assetCatalogSymbols>true</assetCatalogSymbols><empty/><teamNote>first</teamNote>"
                          "<teamNote>second</teamNote></configuration></task>"
                          "<task><fileType>1</fileType><nameTransform>0</nameTransform><format>cssHSL</format></task>"
                          "</tasks></buildGroup>"));
    const BuildTask& task = project->buildGroups[0]->tasks[0];
    EXPECT_EQ(BuildExportFormat::cssOKLCH, task.exportFormat);
    EXPECT_EQ("", task.namePrefix);
    EXPECT_EQ("Color", task.nameSuffix);
    const std::map<std::string, std::string> expected = {{"assetCatalogSymbols", "true"}, {"teamNote", "second"}};
    EXPECT_EQ(expected, task.customData);
    EXPECT_EQ(std::nullopt, project->buildGroups[0]->tasks[1].exportFormat);
}

TEST(OchreColorFileReader, ReadsTestsAndLeavesUnreadableFieldsUnset) {
    auto project = read(documentWith(
        "", "",
        "<testGroup><id>TG</id><name>Text</name><tests>"
        "<test><name>Body</name><id>T1</id><type>apcaContrast</type><thresholdType>textSize</thresholdType>"
        "<threshold>60</threshold><fontSize>16</fontSize><fontWeight>400</fontWeight></test>"
        "<test><name>Plain</name><type>wcagContrast</type><thresholdType>size</thresholdType>"
        "<threshold>4.5</threshold><fontSize>big</fontSize><fontWeight>450</fontWeight></test>"
        "<test><name>Unknown</name><type>deltaE</type></test>"
        "</tests></testGroup>"));
    const std::vector<TestTask>& tests = project->testGroups[0]->tests;
    ASSERT_EQ(2u, tests.size());
    EXPECT_EQ(TestTaskType::apcaContrastTest, tests[0].taskType);
    EXPECT_EQ(TestThresholdType::textSize, tests[0].thresholdType);
    EXPECT_EQ(60, tests[0].threshold);
    EXPECT_EQ(16, tests[0].minFontSize);
    EXPECT_EQ(TestFontWeight::fourHundred, tests[0].minFontWeight);
    EXPECT_EQ(TestTaskType::wcagContrastTest, tests[1].taskType);
    EXPECT_EQ(std::nullopt, tests[1].thresholdType);
    EXPECT_EQ(std::nullopt, tests[1].threshold);
    EXPECT_EQ(std::nullopt, tests[1].minFontSize);
    EXPECT_EQ(std::nullopt, tests[1].minFontWeight);
}

TEST(OchreColorFileReader, ReadsAliasTypesWithTheirDefaults) {
    auto project = read(documentWith(
        colorItemXml("A", "a") +
        "<alias><name>Plain</name><typeDark>3</typeDark><referencedItemId>A</referencedItemId>"
        "<referencedItemIdDark>S</referencedItemIdDark><subIndexDark>2</subIndexDark></alias>"
        "<alias><name>Linked</name><type>1</type><referencedItemId>A</referencedItemId></alias>"
        "<numberAlias><name>Gap</name><type>2</type><referencedItemIdDark>N</referencedItemIdDark></numberAlias>"));
    ASSERT_EQ(4u, project->items.size());
    const OchreColorAlias& plain = *project->items[1]->colorAlias;
    EXPECT_EQ(AliasSetType::Kind::notSet, plain.aliasTypes[0].kind);
    EXPECT_EQ(AliasSetType::Kind::setItem, plain.aliasTypes[2].kind);
    EXPECT_EQ("S", plain.aliasTypes[2].uuid);
    EXPECT_EQ(2, plain.aliasTypes[2].index);
    EXPECT_EQ(AliasSetType::Kind::notSet, plain.aliasTypes[1].kind);

    const OchreColorProjectItem& linked = *project->items[2];
    EXPECT_EQ("Linked", linked.name);
    EXPECT_EQ(project->items[0].get(), linked.colorAlias->referencedProjectItems[0]);
    EXPECT_NE("A", linked.uuid);

    const OchreColorNumberAlias& gap = *project->items[3]->numberAlias;
    EXPECT_EQ(ItemAliasType::Kind::notSet, gap.aliasTypes[0].kind);
    EXPECT_EQ(ItemAliasType::Kind::item, gap.aliasTypes[1].kind);
    EXPECT_EQ(ItemAliasType::Kind::item, gap.aliasTypes[2].kind);
    EXPECT_EQ("N", gap.aliasTypes[2].itemUuid);
    EXPECT_EQ(nullptr, gap.referencedProjectItems[2]);
}

TEST(OchreColorFileReader, GivesAliasesWithoutIdentifierNewOnesOnEveryLoad) {
    const std::string text = documentWith(colorItemXml("A", "a") +
                                          "<alias><name>Link</name><type>1</type>"
                                          "<referencedItemId>A</referencedItemId></alias>");
    auto first = read(text);
    auto second = read(text);
    EXPECT_EQ(first->items[0]->uuid, second->items[0]->uuid);
    EXPECT_NE(first->items[1]->uuid, second->items[1]->uuid);
}

// A hand-written alias may carry an id, so that another alias can point at it; cycles
// made that way resolve to nothing instead of hanging.
TEST(OchreColorFileReader, AliasesWithAnIdentifierCanBeTargets) {
    auto project = read(documentWith(
        colorItemXml("A", "a", "0 0 1 1") +
        "<alias><id>L1</id><name>First</name><type>1</type><referencedItemId>A</referencedItemId></alias>"
        "<alias><name>Second</name><type>1</type><referencedItemId>L1</referencedItemId></alias>"
        "<alias><id>C1</id><name>Loop1</name><type>1</type><referencedItemId>C2</referencedItemId></alias>"
        "<alias><id>C2</id><name>Loop2</name><type>1</type><referencedItemId>C1</referencedItemId></alias>"
        "<numberItem><id>N</id><name>n</name><number><variants><variant><value>4</value></variant></variants>"
        "</number></numberItem>"
        "<numberAlias><id>NA</id><name>na</name><referencedItemId>N</referencedItemId></numberAlias>"
        "<numberAlias><name>nb</name><referencedItemId>NA</referencedItemId></numberAlias>"));
    ASSERT_EQ(8u, project->items.size());
    EXPECT_EQ("L1", project->items[1]->uuid);
    const std::optional<ThemeableColor> second = project->items[2]->resolvedColor();
    ASSERT_TRUE(second);
    EXPECT_EQ("Second", second->name);
    EXPECT_DOUBLE_EQ(1.0, second->lightVariant.blue());
    EXPECT_FALSE(project->items[3]->resolvedColor());
    EXPECT_FALSE(project->items[4]->resolvedColor());
    const std::optional<ThemeableNumber> chained = project->items[7]->resolvedNumber();
    ASSERT_TRUE(chained);
    EXPECT_DOUBLE_EQ(4.0, chained->lightVariant);
}

TEST(OchreColorFileReader, RefusesGroupsNestedBeyondTheDepthLimitByName) {
    const auto nestedIn = [](int levels) {
        std::string nested = colorItemXml("deep", "deep");
        for (int level = levels; level >= 1; --level) {
            nested = "<group><id>G" + std::to_string(level) + "</id><name>Level " + std::to_string(level) + "</name>" +
                     nested + "</group>";
        }
        return documentWith(nested + colorItemXml("A", "a"));
    };
    auto project = read(nestedIn(200));
    ASSERT_EQ(2u, project->items.size());
    ProjectItemPtr item = project->items[0];
    for (int depth = 0; depth < 200; ++depth) {
        ASSERT_TRUE(item->group && item->group->items.size() == 1u) << depth;
        item = item->group->items[0];
    }
    EXPECT_EQ("deep", item->uuid);

    // A deeper group is not dropped quietly: its items would be missing from every build.
    for (int levels : {201, 5000}) {
        try {
            read(nestedIn(levels));
            ADD_FAILURE() << levels << " nested groups were read";
        } catch (const DocumentFormatError& error) {
            EXPECT_STREQ("The group \u201cLevel 201\u201d is nested deeper than 200 groups.", error.what());
        }
    }
}

}  // namespace
}  // namespace tintwork
