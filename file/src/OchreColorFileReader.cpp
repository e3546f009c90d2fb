#include "file/OchreColorFileReader.h"

#include <pugixml.hpp>

#include <string>

#include "OchreColorReaderHelper.h"
#include "TextForms.h"
#include "model/Uuid.h"

namespace tintwork {

namespace {

std::string_view textOf(const pugi::xml_node& node) {
    return node.child_value();
}

std::string identifier(const pugi::xml_node& node) {
    const std::string_view id = textOf(node.child("id"));
    return id.empty() ? newUUID() : std::string(id);
}

std::optional<std::string> optionalText(const pugi::xml_node& node) {
    if (!node) {
        return std::nullopt;
    }
    return std::string(textOf(node));
}

std::optional<BuildTask> readTask(const pugi::xml_node& element) {
    const std::optional<long long> fileType = parseInteger(textOf(element.child("fileType")));
    const std::optional<long long> nameTransform = parseInteger(textOf(element.child("nameTransform")));
    const std::optional<BuildFileType> type = fileType ? buildFileTypeFromRaw(*fileType) : std::nullopt;
    const std::optional<BuildNameTransform> transform =
        nameTransform ? buildNameTransformFromRaw(*nameTransform) : std::nullopt;
    if (!type || !transform) {
        return std::nullopt;
    }
    BuildTask task;
    task.name = textOf(element.child("name"));
    task.uuid = identifier(element);
    task.exportFileFolder = textOf(element.child("folder"));
    task.exportFileName = textOf(element.child("fileName"));
    task.exportFileType = *type;
    task.nameTransform = *transform;
    task.exportFormat = buildExportFormatFromWord(textOf(element.child("format")));
    task.namePrefix = optionalText(element.child("namePrefix"));
    task.nameSuffix = optionalText(element.child("nameSuffix"));
    for (const pugi::xml_node& entry : element.child("configuration").children()) {
        const std::string_view value = textOf(entry);
        if (entry.type() == pugi::node_element && !value.empty()) {
            task.customData[entry.name()] = std::string(value);
        }
    }
    return task;
}

std::optional<TestTask> readTest(const pugi::xml_node& element) {
    const std::optional<TestTaskType> type = testTaskTypeFromWord(textOf(element.child("type")));
    if (!type) {
        return std::nullopt;
    }
    TestTask test;
    test.name = textOf(element.child("name"));
    test.uuid = identifier(element);
    test.taskType = *type;
    test.thresholdType = testThresholdTypeFromWord(textOf(element.child("thresholdType")));
    test.threshold = parseInteger(textOf(element.child("threshold")));
    test.minFontSize = parseInteger(textOf(element.child("fontSize")));
    test.minFontWeight = testFontWeightFromWord(textOf(element.child("fontWeight")));
    return test;
}

}  // namespace

std::shared_ptr<OchreColorProject> OchreColorFileReader::read(std::string_view bytes) const {
    pugi::xml_document document;
    // Line ends are kept as they stand so that a document reads back to the same text.
    const unsigned int options = pugi::parse_cdata | pugi::parse_escapes;
    const pugi::xml_parse_result result = document.load_buffer(bytes.data(), bytes.size(), options);
    if (!result) {
        throw DocumentFormatError("The document is not valid XML: " + std::string(result.description()) + " at offset " +
                                std::to_string(result.offset));
    }
    // Only the `project` below the root is read, whatever the root is called. XML
    // without one is some other kind of file, and reported rather than read as empty.
    const pugi::xml_node projectElement = document.document_element().child("project");
    if (!projectElement) {
        throw DocumentFormatError("The document has no tintwork project");
    }

    auto project = std::make_shared<OchreColorProject>();
    if (const pugi::xml_node description = projectElement.child("header").child("description")) {
        project->projectDescription = textOf(description);
    }
    for (const pugi::xml_node& setting : projectElement.child("settings").children("setting")) {
        if (const pugi::xml_node key = setting.child("key")) {
            project->settings.push_back({std::string(textOf(key)), std::string(textOf(setting.child("value")))});
        }
    }
    for (const pugi::xml_node& element : projectElement.child("buildGroups").children("buildGroup")) {
        auto group = std::make_shared<BuildGroup>();
        group->uuid = identifier(element);
        group->name = textOf(element.child("name"));
        group->isExpanded = textOf(element.child("expanded")) == std::string_view("1");
        for (const pugi::xml_node& taskElement : element.child("tasks").children("task")) {
            if (std::optional<BuildTask> task = readTask(taskElement)) {
                group->tasks.push_back(std::move(*task));
            }
        }
        project->buildGroups.push_back(std::move(group));
    }
    for (const pugi::xml_node& element : projectElement.child("testGroups").children("testGroup")) {
        auto group = std::make_shared<TestGroup>();
        group->uuid = identifier(element);
        group->name = textOf(element.child("name"));
        group->isExpanded = textOf(element.child("expanded")) == std::string_view("1");
        for (const pugi::xml_node& testElement : element.child("tests").children("test")) {
            if (std::optional<TestTask> test = readTest(testElement)) {
                group->tests.push_back(std::move(*test));
            }
        }
        project->testGroups.push_back(std::move(group));
    }

    const OchreColorReaderHelper helper(*project);
    for (const pugi::xml_node& element : projectElement.child("colorItems").children()) {
        if (ProjectItemPtr item = helper.readItem(element, false)) {
            project->items.push_back(std::move(item));
        }
    }
    project->linkAliases();
    return project;
}

}  // namespace tintwork
