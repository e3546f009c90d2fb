// One build of the realistic test document with a task of every file type: each
// lands in its folder under its own name, carrying the document's values.

#include <gtest/gtest.h>

#include "ExportTestDocument.h"
#include "export/Builder.h"

namespace tintwork {
namespace {

using namespace tintwork::testing;

TEST(NativeBuildAll, OneTaskOfEveryFileType) {
    TestDocument document = makeTestDocument();
    const auto folder = freshFolder("native-build-all");
    writeText(folder / "list.stencil", "{% for item in items %}{{ item.name }}\n{% endfor %}");

    std::vector<BuildTask>& tasks = document.web->tasks;
    for (int raw = 0; raw < buildFileTypeCount; ++raw) {
        const auto type = *buildFileTypeFromRaw(raw);
        BuildTask buildTask = task("Task " + std::to_string(raw), type, "tokens" + std::to_string(raw));
        buildTask.exportFileFolder = "out/" + std::to_string(raw % 3);
        if (type == BuildFileType::customTemplate) {
            buildTask.customData["customTemplateLocation"] = "list.stencil";
        }
        tasks.push_back(buildTask);
    }

    Builder builder(document.project, folder / "Doc.tintwork", "", {document.web->uuid}, true, std::nullopt);
    builder.buildAll();

    for (const BuildTask& buildTask : tasks) {
        const auto output = folder / buildTask.exportFileFolder / buildTask.exportFileNameWithExtension();
        ASSERT_TRUE(std::filesystem::exists(output)) << output;
        if (buildTask.exportFileType == BuildFileType::assetCatalog) {
            EXPECT_TRUE(std::filesystem::exists(output / "Brand" / "Primary.colorset" / "Contents.json"));
            continue;
        }
        const std::string text = readText(output);
        // Every text output names the primary colour: in the task's kebab case, in the
        // identifier form its language needs, or (Design Tokens JSON) as a nested key.
        const bool named = text.find("brand-primary") != std::string::npos ||
                           text.find("brandprimary") != std::string::npos ||
                           text.find("brand_primary") != std::string::npos ||
                           text.find("\"primary\"") != std::string::npos;
        EXPECT_TRUE(named) << output << "\n" << text;
        EXPECT_EQ(text.find("Rendering color failed"), std::string::npos) << output;
        EXPECT_EQ(text.find("Formatting shadow failed"), std::string::npos) << output;
    }
}

}  // namespace
}  // namespace tintwork
