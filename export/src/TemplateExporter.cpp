#include "export/TemplateExporter.h"

#include <unistd.h>

#include <array>
#include <system_error>

#include "export/CodeName.h"
#include "export/ExporterTags.h"
#include "export/TemplateValues.h"
#include "model/FileIO.h"
#include "template/Environment.h"

namespace tintwork {

TemplateExporter::TemplateExporter(std::shared_ptr<OchreColorProject> documentProject, std::string contents)
    : project(std::move(documentProject)), templateContents(std::move(contents)) {}

void TemplateExporter::exportTo(const std::filesystem::path& folder, const BuildTask& task,
                                const std::vector<ProjectItemPtr>& items, const std::filesystem::path&) {
    const std::filesystem::path target = appendingStoredPath(folder, task.exportFileNameWithExtension());
    removeItemIgnoringErrors(target);

    indexNamespaces(task);
    std::unordered_set<std::string> seenItems;
    seenItems.reserve(items.size());
    for (const auto& item : items) {
        if (item) {
            addItem(*item, task, seenItems);
        }
    }

    const std::string output = render(task);
    writeFileBytes(target, output);
}

std::string TemplateExporter::render(const BuildTask& task) const {
    auto extension = std::make_shared<stencil::Extension>();
    registerExporterTags(*extension);
    const stencil::Environment environment(nullptr, {extension});
    // The records are shared with the template values, which read them in place.
    auto items = std::make_shared<const std::vector<TemplateItem>>(itemsForExport);
    const stencil::Map context{
        {"items", templateItemsValue(std::move(items))},
        {"exportFileName", stencil::Value(task.exportFileName)},
        {"exportFileNameWithExtension", stencil::Value(task.exportFileNameWithExtension())},
    };
    return environment.renderTemplate(templateContents, context);
}

void TemplateExporter::indexNamespaces(const BuildTask& task) {
    indexedTask_ = &task;
    namespacePrefixes_.assign(1, std::string());
    namespaceOfItem_.clear();
    if (!project) {
        return;
    }
    // One walk over the whole tree: each item maps to the joined, transformed names
    // of the namespace groups around it. An explicit stack keeps deep trees off the
    // call stack.
    struct Frame {
        const std::vector<ProjectItemPtr>* items;
        std::size_t next;
        std::size_t prefix;
    };
    std::vector<Frame> stack{{&project->items, 0, 0}};
    while (!stack.empty()) {
        Frame& frame = stack.back();
        if (frame.next == frame.items->size()) {
            stack.pop_back();
            continue;
        }
        const ProjectItemPtr& item = (*frame.items)[frame.next++];
        if (!item) {
            continue;
        }
        const std::size_t prefix = frame.prefix;
        namespaceOfItem_.emplace(item.get(), prefix);
        if (item->itemType == ProjectItemType::group && item->group) {
            std::size_t childPrefix = prefix;
            if (item->group->providesNamespace) {
                std::string joined = namespacePrefixes_[prefix];
                appendCodeNamePart(joined, item->name, task.nameTransform);
                namespacePrefixes_.push_back(std::move(joined));
                childPrefix = namespacePrefixes_.size() - 1;
            }
            stack.push_back({&item->group->items, 0, childPrefix});
        }
    }
}

const std::string& TemplateExporter::namespacePrefix(const OchreColorProjectItem& item) const {
    const auto found = namespaceOfItem_.find(&item);
    return found == namespaceOfItem_.end() ? namespacePrefixes_.front() : namespacePrefixes_[found->second];
}

bool TemplateExporter::addValue(const OchreColorProjectItem& item, const std::string& name) {
    if (auto color = item.resolvedColor()) {
        addColor(*color, name);
    } else if (auto colors = item.resolvedColorSet()) {
        addColorSet(*colors, name);
    } else if (auto number = item.resolvedNumber()) {
        addNumber(*number, name);
    } else if (auto boolean = item.resolvedBoolean()) {
        addBoolean(*boolean, name);
    } else if (auto string = item.resolvedString()) {
        addString(*string, name);
    } else if (auto shadow = item.resolvedShadow()) {
        addShadow(*shadow, name);
    } else if (auto shadows = item.resolvedShadowSet()) {
        addShadowSet(*shadows, name);
    } else {
        return false;
    }
    return true;
}

void TemplateExporter::addItem(const OchreColorProjectItem& item, const BuildTask& task,
                               std::unordered_set<std::string>& seenItems) {
    if (indexedTask_ != &task || namespacePrefixes_.empty()) {
        indexNamespaces(task);
    }
    // Depth-first over groups without recursion: a group's members are visited in
    // order right where the group stands.
    struct Frame {
        const std::vector<ProjectItemPtr>* items;
        std::size_t next;
    };
    std::vector<Frame> stack;
    const OchreColorProjectItem* current = &item;
    while (true) {
        if (current && !seenItems.contains(current->uuid)) {
            std::string name = namespacePrefix(*current);
            appendCodeNamePart(name, current->name, task.nameTransform);
            if (task.namePrefix && !task.namePrefix->empty()) {
                name.insert(0, *task.namePrefix);
            }
            if (task.nameSuffix && !task.nameSuffix->empty()) {
                name += *task.nameSuffix;
            }
            if (addValue(*current, name)) {
                seenItems.insert(current->uuid);
            } else if (current->itemType == ProjectItemType::group && current->group) {
                stack.push_back({&current->group->items, 0});
            }
        }
        current = nullptr;
        while (!stack.empty() && stack.back().next == stack.back().items->size()) {
            stack.pop_back();
        }
        if (stack.empty()) {
            break;
        }
        current = (*stack.back().items)[stack.back().next++].get();
    }
}

void TemplateExporter::addColor(const ThemeableColor& color, const std::string& name) {
    TemplateItem record;
    record.name = name;
    record.colorItem = TemplateColorItem{templateThemedColor(color)};
    itemsForExport.push_back(std::move(record));
}

void TemplateExporter::addColorSet(const std::vector<ThemeableColor>& colors, const std::string& name) {
    TemplateItem record;
    record.name = name;
    record.colorSet = TemplateColorSetItem{templateThemedColors(colors)};
    itemsForExport.push_back(std::move(record));
}

void TemplateExporter::addNumber(const ThemeableNumber& value, const std::string& name) {
    TemplateItem record;
    record.name = name;
    record.number = TemplateNumberItem{templateThemedNumber(value)};
    itemsForExport.push_back(std::move(record));
}

void TemplateExporter::addBoolean(const ThemeableBoolean& value, const std::string& name) {
    TemplateItem record;
    record.name = name;
    record.boolean = TemplateBooleanItem{templateThemedBoolean(value)};
    itemsForExport.push_back(std::move(record));
}

void TemplateExporter::addString(const ThemeableString& value, const std::string& name) {
    TemplateItem record;
    record.name = name;
    record.string = TemplateStringItem{templateThemedString(value)};
    itemsForExport.push_back(std::move(record));
}

void TemplateExporter::addShadow(const ThemeableShadow& shadow, const std::string& name) {
    TemplateItem record;
    record.name = name;
    record.shadowItem = TemplateShadowItem{templateThemedShadow(shadow)};
    itemsForExport.push_back(std::move(record));
}

void TemplateExporter::addShadowSet(const std::vector<ThemeableShadow>& shadows, const std::string& name) {
    TemplateItem record;
    record.name = name;
    record.shadowSet = TemplateShadowSetItem{templateThemedShadows(shadows)};
    itemsForExport.push_back(std::move(record));
}

namespace {

// The folder of the running executable, from /proc/self/exe; empty when unknown.
std::filesystem::path executableFolder() {
    std::error_code error;
    const auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path() : executable.parent_path();
}

}  // namespace

std::filesystem::path templateURL(std::string_view name) {
    const std::string fileName = std::string(name) + ".stencil";
    // A Templates folder beside the executable (the build tree, a flat copy), else the
    // installed share folder, found from the executable's own folder so that a moved
    // installation keeps working.
    static const std::filesystem::path folder = executableFolder();
    const std::filesystem::path candidates[] = {folder / "Templates",
                                                (folder / TINTWORK_TEMPLATES_FROM_BINDIR).lexically_normal()};
    for (const std::filesystem::path& candidate : candidates) {
        std::error_code error;
        if (std::filesystem::exists(candidate / fileName, error)) {
            return candidate / fileName;
        }
    }
    return candidates[0] / fileName;
}

std::string readStockTemplate(std::string_view name) {
    return readFileBytes(templateURL(name));
}

}  // namespace tintwork
