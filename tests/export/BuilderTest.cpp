#include "export/Builder.h"

#include <gtest/gtest.h>

#include "ExportTestDocument.h"
#include "model/FileIO.h"

namespace tintwork {
namespace {

using namespace tintwork::testing;

struct BuildFixture {
    TestDocument document = makeTestDocument();
    std::filesystem::path folder;
    std::filesystem::path documentURL;

    explicit BuildFixture(const std::string& name) : folder(freshFolder(name)), documentURL(folder / "Acme.tintwork") {}

    // A custom template beside the document that lists the code names.
    BuildTask namesTask(const std::string& fileName, const std::string& exportFolder = "") {
        writeText(folder / "names.stencil", "{% for item in items %}{{ item.name }};{% endfor %}");
        auto result = task("Names", BuildFileType::customTemplate, fileName);
        result.customData["customTemplateLocation"] = "names.stencil";
        result.exportFileFolder = exportFolder;
        return result;
    }

    void build(std::optional<std::string> overriddenFolder = std::nullopt) {
        std::vector<std::string> groups;
        for (const auto& group : document.project->buildGroups) {
            groups.push_back(group->uuid);
        }
        Builder builder(document.project, documentURL, "", groups, true, std::move(overriddenFolder));
        builder.buildAll();
    }
};

TEST(Builder, WritesEachTaskIntoItsFolderRelativeToTheDocument) {
    BuildFixture fixture("folders");
    fixture.document.web->tasks = {fixture.namesTask("first", "out/deeper/deepest"), fixture.namesTask("second", "/abs"),
                                   fixture.namesTask("/tintwork-builder-third", "")};
    fixture.build();
    EXPECT_EQ(readText(fixture.folder / "out/deeper/deepest/first.txt").substr(0, 14), "brand-primary;");
    // Stored folders and file names always count from the document, even when they start with "/".
    EXPECT_TRUE(std::filesystem::exists(fixture.folder / "abs/second.txt"));
    EXPECT_TRUE(std::filesystem::exists(fixture.folder / "tintwork-builder-third.txt"));
    EXPECT_FALSE(std::filesystem::exists("/tintwork-builder-third.txt"));
}

TEST(Builder, KeepsAbsoluteFileNamesOfEveryFileTypeInsideTheTaskFolder) {
    BuildFixture fixture("absolute-names");
    const std::filesystem::path outside = freshFolder("absolute-names-outside");
    // A catalog is replaced as a whole folder tree: the one outside must survive.
    std::filesystem::create_directories(outside / "victim.xcassets");
    writeText(outside / "victim.xcassets" / "keep.txt", "keep");
    for (BuildFileType type : {BuildFileType::jsonDesignToken, BuildFileType::assetCatalog,
                               BuildFileType::androidResource, BuildFileType::css}) {
        BuildTask written = task("Absolute", type, (outside / "victim").string());
        written.exportFileFolder = "out";
        fixture.document.web->tasks.push_back(written);
    }
    // The name's folders lie inside the task's folder; like any folders in a file name
    // they must exist already.
    const std::filesystem::path inside = fixture.folder / "out" / outside.relative_path() / "victim";
    std::filesystem::create_directories(inside.parent_path());
    fixture.build();

    EXPECT_EQ("keep", readText(outside / "victim.xcassets" / "keep.txt"));
    EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(outside), std::filesystem::directory_iterator()));
    for (const char* extension : {".json", ".xml", ".css"}) {
        EXPECT_TRUE(std::filesystem::is_regular_file(inside.string() + extension)) << extension;
    }
    EXPECT_TRUE(std::filesystem::is_regular_file(inside.string() + ".xcassets/Contents.json"));
}

TEST(Builder, SkipsGroupsWithoutItemsTasksOrSelection) {
    BuildFixture fixture("skips");
    auto empty = std::make_shared<BuildGroup>();
    empty->uuid = "EMPTY";
    empty->tasks = {fixture.namesTask("empty", "empty-folder")};
    auto taskless = std::make_shared<BuildGroup>();
    taskless->uuid = "TASKLESS";
    fixture.document.project->buildGroups.push_back(empty);
    fixture.document.project->buildGroups.push_back(taskless);
    fixture.document.project->items.back()->buildGroup = taskless;
    fixture.document.web->tasks = {fixture.namesTask("web", "web")};
    fixture.build();
    EXPECT_TRUE(std::filesystem::exists(fixture.folder / "web/web.txt"));
    EXPECT_FALSE(std::filesystem::exists(fixture.folder / "empty-folder"));

    // Only the listed groups run; an empty list builds nothing.
    std::filesystem::remove_all(fixture.folder / "web");
    Builder none(fixture.document.project, fixture.documentURL, "", {}, true, std::nullopt);
    none.buildAll();
    Builder other(fixture.document.project, fixture.documentURL, "", {"EMPTY", "web-group"}, true, std::nullopt);
    other.buildAll();
    EXPECT_FALSE(std::filesystem::exists(fixture.folder / "web"));
}

TEST(Builder, OverriddenFolderTakesEveryTaskAndTheLaterTaskWins) {
    BuildFixture fixture("override");
    auto first = fixture.namesTask("same", "ignored");
    auto second = task("Plain", BuildFileType::customTemplate, "same");
    writeText(fixture.folder / "second.stencil", "second");
    second.customData["customTemplateLocation"] = "second.stencil";
    fixture.document.web->tasks = {first, second};
    const auto output = fixture.folder / "elsewhere" / "nested";
    fixture.build(output.string());
    EXPECT_EQ(readText(output / "same.txt"), "second");
    EXPECT_FALSE(std::filesystem::exists(fixture.folder / "ignored"));
}

TEST(Builder, TextTasksWriteTheSameStyleSheetAsCSSTasks) {
    BuildFixture fixture("text");
    fixture.document.web->tasks = {task("CSS", BuildFileType::css, "tokens"),
                                   task("Text", BuildFileType::text, "tokens")};
    fixture.build();
    std::string css = readText(fixture.folder / "tokens.css");
    EXPECT_NE(css.find("--brand-primary: color(srgb 0 0.4 0.8);"), std::string::npos);
    // The sheets differ only in the file name the header mentions.
    css.replace(css.find("tokens.css"), 10, "tokens.txt");
    EXPECT_EQ(readText(fixture.folder / "tokens.txt"), css);
}

TEST(Builder, FirstErrorEndsTheRunAndKeepsEarlierFiles) {
    BuildFixture fixture("errors");
    auto broken = task("Broken", BuildFileType::customTemplate, "broken");
    fixture.document.web->tasks = {fixture.namesTask("before"), broken, fixture.namesTask("after")};
    try {
        fixture.build();
        FAIL() << "the build should fail";
    } catch (const BuildError& error) {
        EXPECT_EQ(error.message, "No location set for custom template in 'Broken'");
        EXPECT_STREQ(error.what(), "BuildError(message: \"No location set for custom template in 'Broken'\")");
    }
    EXPECT_TRUE(std::filesystem::exists(fixture.folder / "before.txt"));
    EXPECT_FALSE(std::filesystem::exists(fixture.folder / "after.txt"));

    // A template error ends the build the same way.
    writeText(fixture.folder / "bad.stencil", "{% if %}");
    broken.customData["customTemplateLocation"] = "bad.stencil";
    fixture.document.web->tasks = {fixture.namesTask("before2"), broken, fixture.namesTask("after2")};
    EXPECT_THROW(fixture.build(), std::exception);
    EXPECT_TRUE(std::filesystem::exists(fixture.folder / "before2.txt"));
    EXPECT_FALSE(std::filesystem::exists(fixture.folder / "after2.txt"));
}

// A file where the task's folder should go makes the folder unwritable, whoever runs the tests.
TEST(Builder, UnwritableFolderEndsTheBuildAndKeepsEarlierFiles) {
    BuildFixture fixture("blocked");
    writeText(fixture.folder / "blocked", "a file where a folder should go");
    fixture.document.web->tasks = {fixture.namesTask("ok"), fixture.namesTask("inside", "blocked/sub"),
                                   fixture.namesTask("never")};
    EXPECT_THROW(fixture.build(), FileError);
    EXPECT_TRUE(std::filesystem::exists(fixture.folder / "ok.txt"));
    EXPECT_FALSE(std::filesystem::exists(fixture.folder / "never.txt"));
}

TEST(Builder, CustomTemplateLocationsCountFromTheDocumentAndLoseEscapes) {
    BuildFixture fixture("custom");
    std::filesystem::create_directories(fixture.folder / "my templates");
    writeText(fixture.folder / "my templates" / "list.stencil", "{{ items.count }} items");
    auto custom = task("Custom", BuildFileType::customTemplate, "custom");
    custom.customData["customTemplateLocation"] = "my%20templates/list.stencil";
    fixture.document.web->tasks = {custom};
    fixture.build();
    EXPECT_EQ(readText(fixture.folder / "custom.txt"), "9 items");

    for (const std::string location : {"missing.stencil", "my templates", ""}) {
        custom.customData["customTemplateLocation"] = location;
        fixture.document.web->tasks = {custom};
        EXPECT_THROW(
            {
                try {
                    fixture.build();
                } catch (const BuildError& error) {
                    EXPECT_EQ(error.message, "No location set for custom template in 'Custom'") << location;
                    throw;
                }
            },
            BuildError);
    }
    custom.customData.clear();
    fixture.document.web->tasks = {custom};
    EXPECT_THROW(fixture.build(), BuildError);
}

}  // namespace
}  // namespace tintwork
