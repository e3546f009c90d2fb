#include "file/OchreColorFileWriter.h"

#include <gtest/gtest.h>

#include "colour/FatalError.h"
#include "file/OchreColorFileReader.h"

namespace tintwork {
namespace {

const std::string header =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
    "<tintwork xmlns=\"https://tintwork.app/tintwork\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
    "xsi:schemaLocation=\"https://tintwork.app/tintwork/schema/tintwork.xsd\">\n"
    "  <project>\n"
    "    <header>\n"
    "      <version>1.6</version>\n";

std::string write(const OchreColorProject& project) {
    return OchreColorFileWriter().write(project);
}

// The lines of the written `colorItems` element, without their indent.
std::string writtenItems(const OchreColorProject& project) {
    const std::string text = write(project);
    const std::size_t start = text.find("    <colorItems>\n");
    const std::size_t end = text.find("    </colorItems>\n");
    if (start == std::string::npos || end == std::string::npos) {
        return {};
    }
    std::string items = text.substr(start + 17, end - start - 17);
    std::string unindented;
    std::size_t position = 0;
    while (position < items.size()) {
        const std::size_t lineEnd = items.find('\n', position);
        const std::string line = items.substr(position, lineEnd - position + 1);
        unindented += line.substr(line.find_first_not_of(' '));
        position = lineEnd + 1;
    }
    return unindented;
}

ProjectItemPtr colorItem(const std::string& uuid, const std::string& name, ColorValue light) {
    OchreColorItem payload;
    payload.color.name = name;
    payload.color.lightVariant = light;
    return std::make_shared<OchreColorProjectItem>(name, uuid, payload);
}

TEST(OchreColorFileWriter, WritesAnEmptyProjectWithSelfClosedElements) {
    OchreColorProject project;
    EXPECT_EQ(header +
                  "      <description/>\n"
                  "    </header>\n"
                  "    <settings/>\n"
                  "    <colorItems/>\n"
                  "    <buildGroups/>\n"
                  "    <testGroups/>\n"
                  "  </project>\n"
                  "</tintwork>\n",
              write(project));
}

TEST(OchreColorFileWriter, TrimsAndEscapesValues) {
    OchreColorProject project;
    project.projectDescription = "  Tom & Jerry's \"<palette>\"\n";
    project.settings = {{"DisplayMode", " group "}, {"Empty", "   "}};
    const std::string text = write(project);
    EXPECT_NE(std::string::npos,
              text.find("<description>Tom &amp; Jerry&apos;s &quot;&lt;palette&gt;&quot;</description>\n"));
    EXPECT_NE(std::string::npos, text.find("<value>group</value>\n"));
    EXPECT_NE(std::string::npos, text.find("<key>Empty</key>\n        <value/>\n"));
}

TEST(OchreColorFileWriter, WritesAColourItemInItsOwnSpace) {
    OchreColorProject project;
    auto item = colorItem("C1", "Red", ColorValue(ColorEncoding::sRGB, 1.2, 0.123456789, 0, 1));
    item->color->appearanceType = AppearanceType::highContrastAuto;
    item->color->autoContrastAmount = 0.123;
    item->color->color.lightVariantHighContrast = ColorValue(ColorEncoding::sRGB, 0.5, 0.5, 0.5, 0.25);
    item->color->color.darkVariant = ColorValue(ColorEncoding::sRGB, 0, 0, 0, 1);
    item->isExpanded = true;
    project.items.push_back(item);
    EXPECT_EQ(
        "<colorItem>\n"
        "<id>C1</id>\n"
        "<name>Red</name>\n"
        "<profile>sRGB</profile>\n"
        "<appearance>highContrastAuto</appearance>\n"
        "<autoContrast>0.12</autoContrast>\n"
        "<color>\n"
        "<name>Red</name>\n"
        "<variants>\n"
        "<variant>\n"
        "<rgba>1.2 0.12346 0 1</rgba>\n"
        "</variant>\n"
        "<variant type=\"dark\">\n"
        "<rgba>0 0 0 1</rgba>\n"
        "</variant>\n"
        "<variant type=\"highContrast\">\n"
        "<rgba>0.5 0.5 0.5 0.25</rgba>\n"
        "</variant>\n"
        "</variants>\n"
        "</color>\n"
        "</colorItem>\n",
        writtenItems(project));

    OchreColorProject p3;
    auto converted = colorItem("C2", "Green", ColorValue::sRGB(0, 1, 0));
    converted->color->colorSpace = ColorSpace::displayP3;
    p3.items.push_back(converted);
    const std::string text = writtenItems(p3);
    EXPECT_NE(std::string::npos, text.find("<profile>DisplayP3</profile>\n"));
    EXPECT_NE(std::string::npos, text.find("<rgba>0.45"));
}

TEST(OchreColorFileWriter, WritesNumbersInTheirShortestForm) {
    OchreColorProject project;
    OchreColorNumber number;
    number.value.lightVariant = 3;
    number.value.darkVariant = 0.1;
    number.minValue = -2.5;
    number.steps = 4;
    number.appearanceType = AppearanceType::lightAndDark;
    project.items.push_back(std::make_shared<OchreColorProjectItem>("Gap", "N1", number));
    EXPECT_EQ(
        "<numberItem>\n<id>N1</id>\n<name>Gap</name>\n<number>\n<variants>\n"
        "<variant>\n<value>3</value>\n</variant>\n"
        "<variant type=\"dark\">\n<value>0.1</value>\n</variant>\n"
        "</variants>\n</number>\n<min>-2.5</min>\n<steps>4</steps>\n"
        "<appearance>lightanddark</appearance>\n</numberItem>\n",
        writtenItems(project));
}

TEST(OchreColorFileWriter, WritesAliasesWithoutIdentifierOrUnsetVariants) {
    OchreColorProject project;
    OchreColorAlias alias;
    alias.aliasTypes[0] = AliasSetType::setItem("SET", 4);
    alias.aliasTypes[3] = AliasSetType::item("DARKHC");
    auto item = std::make_shared<OchreColorProjectItem>("Focus", "ALIAS", alias);
    auto group = std::make_shared<TestGroup>();
    group->uuid = "TG";
    item->testGroup = group;
    item->testPosition = TestPosition::background;
    auto build = std::make_shared<BuildGroup>();
    build->uuid = "BG";
    item->buildGroup = build;
    project.items.push_back(item);
    OchreColorNumberAlias numberAlias;
    numberAlias.aliasTypes[0] = ItemAliasType::item("N");
    project.items.push_back(std::make_shared<OchreColorProjectItem>("Gap", "NA", numberAlias));
    EXPECT_EQ(
        "<alias>\n<name>Focus</name>\n<type>3</type>\n<typeDarkHighContrast>1</typeDarkHighContrast>\n"
        "<referencedItemId>SET</referencedItemId>\n<subIndex>4</subIndex>\n"
        "<referencedItemIdDarkHighContrast>DARKHC</referencedItemIdDarkHighContrast>\n"
        "<buildGroupId>BG</buildGroupId>\n<testGroupId>TG</testGroupId>\n<testPosition>background</testPosition>\n"
        "</alias>\n"
        "<numberAlias>\n<name>Gap</name>\n<type>1</type>\n<referencedItemId>N</referencedItemId>\n"
        "</numberAlias>\n",
        writtenItems(project));
}

TEST(OchreColorFileWriter, UnsetItemAliasVariantsComeBackAsItemReferences) {
    OchreColorProject project;
    auto target = std::make_shared<OchreColorProjectItem>("Gap", "N", OchreColorNumber{});
    OchreColorNumberAlias alias;
    alias.aliasTypes[0] = ItemAliasType::item("N");
    project.items = {target, std::make_shared<OchreColorProjectItem>("Gutter", "A", alias)};
    auto reloaded = OchreColorFileReader().read(write(project));
    const OchreColorNumberAlias& read = *reloaded->items[1]->numberAlias;
    EXPECT_EQ(reloaded->items[0].get(), read.referencedProjectItems[0]);
    EXPECT_EQ(ItemAliasType::Kind::item, read.aliasTypes[2].kind);
    EXPECT_EQ("", read.aliasTypes[2].itemUuid);
    EXPECT_EQ(nullptr, read.referencedProjectItems[2]);
}

TEST(OchreColorFileWriter, WritesTasksAndTestsWithOptionalFieldsOnlyWhenSet) {
    OchreColorProject project;
    auto build = std::make_shared<BuildGroup>();
    build->uuid = "BG";
    build->name = "Web";
    BuildTask task;
    task.name = "CSS";
    task.uuid = "T";
    task.exportFileFolder = "build/css";
    task.exportFileName = "colors";
    task.exportFileType = BuildFileType::less;
    task.nameTransform = BuildNameTransform::kebabCase;
    task.namePrefix = "";
    task.customData = {{"zeta", "last"}, {"alpha & omega", "first"}};
    build->tasks = {task};
    auto tests = std::make_shared<TestGroup>();
    tests->uuid = "TG";
    tests->name = "Text";
    tests->isExpanded = true;
    TestTask test;
    test.name = "Body";
    test.uuid = "X";
    test.taskType = TestTaskType::wcagContrastTest;
    test.minFontWeight = TestFontWeight::sevenHundred;
    tests->tests = {test};
    project.buildGroups = {build};
    project.testGroups = {tests};
    const std::string text = write(project);
    EXPECT_NE(std::string::npos, text.find("    <buildGroups>\n"
                                           "      <buildGroup>\n"
                                           "        <id>BG</id>\n"
                                           "        <name>Web</name>\n"
                                           "        <tasks>\n"
                                           "          <task>\n"
                                           "            <name>CSS</name>\n"
                                           "            <id>T</id>\n"
                                           "            <folder>build/css</folder>\n"
                                           "            <fileName>colors</fileName>\n"
                                           "            <fileType>13</fileType>\n"
                                           "            <nameTransform>4</nameTransform>\n"
                                           "            <namePrefix/>\n"
                                           "            <configuration>\n"
                                           "              <alpha & omega>first</alpha & omega>\n"
                                           "              <zeta>last</zeta>\n"
                                           "            </configuration>\n"
                                           "          </task>\n"
                                           "        </tasks>\n"
                                           "      </buildGroup>\n"
                                           "    </buildGroups>\n"
                                           "    <testGroups>\n"
                                           "      <testGroup>\n"
                                           "        <id>TG</id>\n"
                                           "        <name>Text</name>\n"
                                           "        <expanded>1</expanded>\n"
                                           "        <tests>\n"
                                           "          <test>\n"
                                           "            <name>Body</name>\n"
                                           "            <id>X</id>\n"
                                           "            <type>wcagContrast</type>\n"
                                           "            <fontWeight>700</fontWeight>\n"
                                           "          </test>\n"
                                           "        </tests>\n"
                                           "      </testGroup>\n"
                                           "    </testGroups>\n"));
}

TEST(OchreColorFileWriter, StopsAtAnItemWithoutPayload) {
    OchreColorProject project;
    auto item = colorItem("C", "Red", ColorValue::sRGB(1, 0, 0));
    item->color.reset();
    OchreColorGroup group;
    group.items = {item};
    project.items.push_back(std::make_shared<OchreColorProjectItem>("Group", "G", group));
    try {
        write(project);
        FAIL() << "expected FatalError";
    } catch (const FatalError& error) {
        EXPECT_STREQ("Unknown or invalid project item encountered", error.what());
    }
}

TEST(OchreColorFileWriter, RefusesTextThatIsNotUTF8) {
    OchreColorProject project;
    project.projectDescription = "caf\xE9";
    EXPECT_THROW(write(project), EncodingError);
    project.projectDescription = "caf\xC3\xA9 \xE2\x80\x94 \xF0\x9F\x8E\xA8";
    EXPECT_NO_THROW(write(project));
}

}  // namespace
}  // namespace tintwork
