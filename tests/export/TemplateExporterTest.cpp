#include "export/TemplateExporter.h"

#include <gtest/gtest.h>

#include "ExportTestDocument.h"
#include "template/Errors.h"

namespace tintwork {
namespace {

using namespace tintwork::testing;

// Exports the document's Web group through `source` and gives the file's text.
std::string exportWith(const TestDocument& document, const std::string& source, const BuildTask& buildTask,
                       const std::string& folderName) {
    const auto folder = freshFolder(folderName);
    TemplateExporter exporter(document.project, source);
    exporter.exportTo(folder, buildTask, document.project->itemsForBuildGroup(*document.web), folder / "doc.tintwork");
    return readText(folder / buildTask.exportFileNameWithExtension());
}

constexpr const char* namesTemplate = "{% for item in items %}{{ item.name }}\n{% endfor %}";

TEST(TemplateExporter, FlattensItemsDepthFirstOnceEachWithNamespaces) {
    const auto document = makeTestDocument();
    const auto names = exportWith(document, namesTemplate, task("Names", BuildFileType::customTemplate, "names"), "flat");
    // The brand group names its members; the layout group doesn't; the broken alias and the
    // item outside the build group are left out; Primary, listed twice, comes once.
    EXPECT_EQ(names,
              "brand-primary\nbrand-accent\nbrand-grey\ncorner-radius\nrounded-corners\nfont-family\ncard\n"
              "elevation\nlink\n");
}

TEST(TemplateExporter, CodeNamesFollowTheTaskTransformPrefixAndSuffix) {
    auto document = makeTestDocument();
    auto buildTask = task("Names", BuildFileType::customTemplate, "names", BuildNameTransform::camelCase);
    buildTask.namePrefix = "tw";
    buildTask.nameSuffix = "Token";
    const auto names = exportWith(document, namesTemplate, buildTask, "camel");
    EXPECT_EQ(names,
              "twbrandPrimaryToken\ntwbrandAccentToken\ntwbrandGreyToken\ntwcornerRadiusToken\ntwroundedCornersToken\n"
              "twfontFamilyToken\ntwcardToken\ntwelevationToken\ntwlinkToken\n");

    buildTask.nameTransform = BuildNameTransform::none;
    buildTask.namePrefix = "";
    buildTask.nameSuffix.reset();
    EXPECT_EQ(exportWith(document, "{{ items.0.name }},{{ items.3.name }}", buildTask, "none"),
              "BrandPrimary,Corner Radius");
}

TEST(TemplateExporter, NestedNamespacesJoinOutermostFirst) {
    auto document = makeTestDocument();
    // Put a namespaced "Dark UI" group holding "Surface" inside the brand group.
    auto surface = colorItem("Surface", "SURFACE", themed("Surface", srgb(0.1, 0.1, 0.1)));
    auto darkUI = groupItem("Dark UI", "DARK-UI", true, {surface});
    document.project->items.front()->group->items.push_back(darkUI);
    const auto buildTask = task("Names", BuildFileType::customTemplate, "names", BuildNameTransform::snakeCase);
    EXPECT_EQ(exportWith(document, "{{ items.3.name }}", buildTask, "nested"), "brand_dark_ui_surface");
}

TEST(TemplateExporter, RecordsExposeEveryValueByFieldName) {
    const auto document = makeTestDocument();
    const std::string source =
        "{% for item in items %}{{ item.name }}:"
        "{% if item.colorItem %}{{ item.colorItem.color.name }} {{ item.colorItem.color.light.green }} "
        "{{ item.colorItem.color.light.colorSpace }} {% colorAsCSSHexRGB item.colorItem.color.dark %}"
        "{% if item.colorItem.color.darkHighContrast %} dhc={{ item.colorItem.color.darkHighContrast.blue }}{% endif %}"
        "{% elif item.colorSet %}{% for color in item.colorSet.colors %}[{{ color.name }} "
        "{{ color.light.red }}{% if color.dark %} dark {{ color.dark.red }}{% endif %}]{% endfor %}"
        "{% elif item.number %}{{ item.number.value.light }}/{{ item.number.value.dark }}"
        "{% elif item.boolean %}{{ item.boolean.value.light }}/{{ item.boolean.value.dark }}"
        "{% elif item.string %}{{ item.string.value.light }}/{{ item.string.value.highContrast }}"
        "{% elif item.shadowItem %}{{ item.shadowItem.shadow.light.blur }} {{ item.shadowItem.shadow.dark.spread }} "
        "{{ item.shadowItem.shadow.light.color.alpha }}"
        "{% elif item.shadowSet %}{% for s in item.shadowSet.shadows %}[{{ s.name }} {{ s.light.y }}]{% endfor %}"
        "{% endif %}\n{% endfor %}";
    const auto text = exportWith(document, source, task("Fields", BuildFileType::customTemplate, "fields"), "fields");
    EXPECT_EQ(text,
              "brand-primary:Primary 0.4 sRGB #6699FF dhc=1.0\n"
              "brand-accent:Accent 0.2 displayP3 Rendering color failed\n"
              "brand-grey:[100 0.9 dark 0.1][200 0.6]\n"
              "corner-radius:8.0/6.0\n"
              "rounded-corners:true/false\n"
              "font-family:Inter/Atkinson Hyperlegible\n"
              "card:16.0 2.0 0.25\n"
              "elevation:[1 1.0][2 2.0]\n"
              "link:Link 0.4 sRGB #6699FF dhc=1.0\n");
}

TEST(TemplateExporter, ContextHoldsTheFileNames) {
    const auto document = makeTestDocument();
    const auto text = exportWith(document, "{{ exportFileName }} {{ exportFileNameWithExtension }} {{ items.count }}",
                                 task("Names", BuildFileType::scss, "tokens"), "context");
    EXPECT_EQ(text, "tokens tokens.scss 9");
}

TEST(TemplateExporter, ReplacesTheOldFileAndWritesEvenWithoutItems) {
    const auto document = makeTestDocument();
    const auto folder = freshFolder("replace");
    const auto buildTask = task("Empty", BuildFileType::customTemplate, "out");
    writeText(folder / "out.txt", "old content that is much longer than the new one");
    TemplateExporter exporter(document.project, "{% for item in items %}x{% empty %}none{% endfor %}");
    exporter.exportTo(folder, buildTask, {}, folder / "doc.tintwork");
    EXPECT_EQ(readText(folder / "out.txt"), "none");

    // A folder in the file's place is removed too.
    std::filesystem::remove(folder / "out.txt");
    std::filesystem::create_directories(folder / "out.txt" / "inner");
    TemplateExporter again(document.project, "new");
    again.exportTo(folder, buildTask, {}, folder / "doc.tintwork");
    EXPECT_EQ(readText(folder / "out.txt"), "new");
}

TEST(TemplateExporter, EqualCodeNamesAreKeptApart) {
    auto document = makeTestDocument();
    auto twin = colorItem("Link", "LINK-TWIN", themed("Link", srgb(1, 1, 1)));
    twin->buildGroup = document.web;
    document.project->items.push_back(twin);
    const auto text = exportWith(document, "{% for item in items %}{{ item.name }} {% endfor %}",
                                 task("Names", BuildFileType::customTemplate, "names"), "twins");
    EXPECT_NE(text.find("link link "), std::string::npos);
}

TEST(TemplateExporter, TemplateErrorsPassThrough) {
    const auto document = makeTestDocument();
    EXPECT_THROW(exportWith(document, "{% for item in items %}", task("Bad", BuildFileType::customTemplate, "bad"),
                            "error"),
                 stencil::TemplateError);
    EXPECT_THROW(exportWith(document, "{% nosuchtag %}", task("Bad", BuildFileType::customTemplate, "bad"), "error2"),
                 stencil::TemplateError);
}

}  // namespace
}  // namespace tintwork
