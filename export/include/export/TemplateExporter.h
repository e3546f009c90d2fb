#pragma once
// The engine behind the text exporters: flattens a build group's items into
// TemplateItem records with their code names, renders a template over them and
// replaces the task's file with the result.

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "export/BuildTaskExporter.h"
#include "export/TemplateRecords.h"
#include "model/Project.h"

namespace tintwork {

// Receives each exported value with its final code name, one operation per kind.
class SimpleExporter {
public:
    virtual ~SimpleExporter() = default;
    virtual void addColor(const ThemeableColor& color, const std::string& name) = 0;
    virtual void addColorSet(const std::vector<ThemeableColor>& colors, const std::string& name) = 0;
    virtual void addNumber(const ThemeableNumber& value, const std::string& name) = 0;
    virtual void addBoolean(const ThemeableBoolean& value, const std::string& name) = 0;
    virtual void addString(const ThemeableString& value, const std::string& name) = 0;
    virtual void addShadow(const ThemeableShadow& shadow, const std::string& name) = 0;
    virtual void addShadowSet(const std::vector<ThemeableShadow>& shadows, const std::string& name) = 0;
};

class TemplateExporter : public BuildTaskExporter, public SimpleExporter {
public:
    // `templateContents` is the final template source (placeholders already filled).
    TemplateExporter(std::shared_ptr<OchreColorProject> project, std::string templateContents);

    // Removes the old file, flattens `items`, renders and writes
    // folder/exportFileNameWithExtension. Template and write errors pass through.
    void exportTo(const std::filesystem::path& folder, const BuildTask& task, const std::vector<ProjectItemPtr>& items,
                  const std::filesystem::path& documentURL) override;

    // Flattens one item (and, for a group without a value, its members depth-first)
    // into itemsForExport; an item whose uuid is in seenItems is skipped.
    void addItem(const OchreColorProjectItem& item, const BuildTask& task, std::unordered_set<std::string>& seenItems);

    // Renders templateContents over itemsForExport with the context keys "items",
    // "exportFileName" and "exportFileNameWithExtension".
    std::string render(const BuildTask& task) const;

    void addColor(const ThemeableColor& color, const std::string& name) override;
    void addColorSet(const std::vector<ThemeableColor>& colors, const std::string& name) override;
    void addNumber(const ThemeableNumber& value, const std::string& name) override;
    void addBoolean(const ThemeableBoolean& value, const std::string& name) override;
    void addString(const ThemeableString& value, const std::string& name) override;
    void addShadow(const ThemeableShadow& shadow, const std::string& name) override;
    void addShadowSet(const std::vector<ThemeableShadow>& shadows, const std::string& name) override;

    std::shared_ptr<OchreColorProject> project;
    std::string templateContents;
    std::vector<TemplateItem> itemsForExport;

private:
    // The transformed names of each item's enclosing namespace groups, joined,
    // worked out in one pass over the project for the task's transform.
    void indexNamespaces(const BuildTask& task);
    const std::string& namespacePrefix(const OchreColorProjectItem& item) const;
    // Adds the item's record when it has a value of its own; false for groups and empty items.
    bool addValue(const OchreColorProjectItem& item, const std::string& name);

    std::vector<std::string> namespacePrefixes_;
    std::unordered_map<const OchreColorProjectItem*, std::size_t> namespaceOfItem_;
    const BuildTask* indexedTask_ = nullptr;
};

// The file of a stock template: the "Templates" folder beside the running
// executable, or the installed copy (share/tintwork/Templates, found relative to the
// executable's folder) when that folder lacks the file.
std::filesystem::path templateURL(std::string_view name);
// The text of a stock template; FileError when it can't be read.
std::string readStockTemplate(std::string_view name);

}  // namespace tintwork
