// Documents written by the writer read back to the same project and the same bytes.

#include <gtest/gtest.h>

#include <filesystem>

#include "ExampleProject.h"
#include "file/OchreColorFileReader.h"
#include "file/OchreColorFileWriter.h"
#include "model/FileIO.h"

namespace tintwork {
namespace {

const std::filesystem::path sourceDir = TINTWORK_SOURCE_DIR;

std::string rewrite(const std::string& bytes) {
    return OchreColorFileWriter().write(*OchreColorFileReader().read(bytes));
}

TEST(DocumentRoundTrip, ExampleDocumentIsWhatItsGeneratorWrites) {
    const std::string stored = readFileBytes(sourceDir / "examples/Colors.tintwork");
    EXPECT_EQ(OchreColorFileWriter().write(*example::makeExampleProject()), stored)
        << "regenerate with: generate_example_document examples/Colors.tintwork";
    EXPECT_EQ(OchreColorFileWriter().write(*example::makeContrastExampleProject()),
              readFileBytes(sourceDir / "examples/Contrast.tintwork"))
        << "regenerate with: generate_example_document examples/Colors.tintwork examples/Contrast.tintwork";
    const std::string contrast = readFileBytes(sourceDir / "examples/Contrast.tintwork");
    EXPECT_EQ(contrast, rewrite(contrast));
}

TEST(DocumentRoundTrip, WrittenDocumentsReadBackToTheSameBytes) {
    const std::string example = readFileBytes(sourceDir / "examples/Colors.tintwork");
    EXPECT_EQ(example, rewrite(example));
    // Other documents settle after two rounds: an unset number, boolean or string alias
    // variant is not written, and comes back as an empty item reference, which is.
    for (const char* name : {"tests/file/data/handwritten.tintwork", "tests/file/data/damaged.tintwork"}) {
        SCOPED_TRACE(name);
        const std::string settled = rewrite(rewrite(readFileBytes(sourceDir / name)));
        EXPECT_EQ(settled, rewrite(settled));
    }
}

TEST(DocumentRoundTrip, HandwrittenDocumentReadsAsWritten) {
    const std::string text = rewrite(readFileBytes(sourceDir / "tests/file/data/handwritten.tintwork"));
    EXPECT_NE(std::string::npos, text.find("<description>Hand-kept palette for the docs site</description>"));
    EXPECT_NE(std::string::npos, text.find("<name>Ink &amp; Paper</name>"));
    EXPECT_NE(std::string::npos, text.find("<autoContrast>0.12</autoContrast>"));
    EXPECT_NE(std::string::npos, text.find("<value>&quot;Source Serif&quot;, Georgia, serif</value>"));
    EXPECT_NE(std::string::npos, text.find("<steps>3</steps>"));
    EXPECT_NE(std::string::npos, text.find("<subIndex>1</subIndex>"));
}

TEST(DocumentRoundTrip, ReloadedExampleKeepsItsStructureAndLinks) {
    auto project = OchreColorFileReader().read(readFileBytes(sourceDir / "examples/Colors.tintwork"));
    ASSERT_EQ(7u, project->items.size());
    ASSERT_EQ(2u, project->buildGroups.size());
    EXPECT_EQ(13u, project->buildGroups[0]->tasks.size());
    ASSERT_EQ(2u, project->testGroups.size());

    const std::vector<ProjectItemPtr> system = project->itemsForBuildGroup(*project->buildGroups[0]);
    ASSERT_EQ(6u, system.size());
    EXPECT_EQ("Brand", system[0]->name);

    const OchreColorProjectItem& semantic = *project->items[2];
    ASSERT_EQ("Semantic", semantic.name);
    const OchreColorProjectItem& background = *semantic.group->items[0];
    const std::optional<ThemeableColor> resolved = background.resolvedColor();
    ASSERT_TRUE(resolved);
    EXPECT_EQ("Background", resolved->name);
    const OchreColorProjectItem& gray = *project->items[1]->group->items[2];
    ASSERT_EQ("Gray", gray.name);
    EXPECT_EQ(gray.colorSet->colors[0].lightVariant, resolved->lightVariant);
    EXPECT_EQ(gray.colorSet->colors[0].darkVariant, resolved->darkVariant);
    const std::optional<ThemeableColor> text = semantic.group->items[1]->resolvedColor();
    ASSERT_TRUE(text);
    EXPECT_EQ(project->items[1]->group->items[0]->color->color.lightVariant, text->darkVariant);
    EXPECT_EQ(project->testGroups[0], background.testGroup);
    EXPECT_EQ(TestPosition::background, background.testPosition);

    const OchreColorProjectItem& brandRamp = *semantic.group->items[5];
    const auto members = brandRamp.resolvedColorSet();
    ASSERT_TRUE(members);
    EXPECT_EQ(9u, members->size());
}

}  // namespace
}  // namespace tintwork
