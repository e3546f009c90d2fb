#include "import/DtcgImporter.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "DtcgReader.h"
#include "model/FileIO.h"
#include "model/Uuid.h"

namespace tintwork {

namespace {

constexpr std::string_view groupPrefix = "DTCG Import";

ProjectItemPtr newImportGroup(const std::filesystem::path& source) {
    auto item = std::make_shared<OchreColorProjectItem>(std::string(groupPrefix) + " - " + source.filename().string(),
                                                        newUUID(), OchreColorGroup{});
    item->isExpanded = true;
    return item;
}

std::optional<ColorSource> slotOfMode(std::string_view mode) {
    if (mode == "light") {
        return ColorSource::light;
    }
    if (mode == "dark") {
        return ColorSource::dark;
    }
    if (mode == "high-contrast") {
        return ColorSource::lightHighContrast;
    }
    if (mode == "dark-high-contrast") {
        return ColorSource::darkHighContrast;
    }
    return std::nullopt;
}

}  // namespace

DtcgImporter::DtcgImporter(ImportOptions options) : options_(std::move(options)) {
    diagnostics = options_.diagnostics;
}

void DtcgImporter::importColors(const std::filesystem::path& url, OchreColorProjectItem& group) {
    importText(readFileBytes(url), url, group);
}

void DtcgImporter::importText(std::string_view text, const std::filesystem::path& sourceName,
                              OchreColorProjectItem& group) {
    ImportOptions options = options_;
    if (!options.diagnostics) {
        options.diagnostics = [this](std::string_view line) { printDiagnostic(line); };
    }
    dtcg::Reader reader(options);
    reader.addFile(sourceName, text);
    reader.resolve(false);
    reader.fillGroup(0, group);
    reader.applyAppearanceGroups(0, group);
    reader.finish({&group});
}

std::vector<ProjectItemPtr> DtcgImporter::importAll(const std::vector<std::filesystem::path>& sources,
                                                    const ImportOptions& options) {
    if (sources.empty()) {
        return {};
    }
    std::vector<ColorSource> slots;
    if (!options.modes.empty()) {
        if (options.modes.size() != sources.size()) {
            throw ImportSourceError(sources.front(), "--modes names " + std::to_string(options.modes.size()) +
                                                         " appearances for " + std::to_string(sources.size()) +
                                                         (sources.size() == 1 ? " file" : " files"));
        }
        for (std::size_t i = 0; i < options.modes.size(); ++i) {
            std::optional<ColorSource> slot = slotOfMode(options.modes[i]);
            if (!slot) {
                throw ImportSourceError(sources[i], "unknown mode \"" + options.modes[i] +
                                                        "\" (expected light, dark, high-contrast or "
                                                        "dark-high-contrast)");
            }
            if (std::find(slots.begin(), slots.end(), *slot) != slots.end()) {
                throw ImportSourceError(sources[i], "mode \"" + options.modes[i] + "\" given twice");
            }
            slots.push_back(*slot);
        }
        if (std::find(slots.begin(), slots.end(), ColorSource::light) == slots.end()) {
            throw ImportSourceError(sources.front(), "--modes needs a light file to merge the others into");
        }
    }
    dtcg::Reader reader(options);
    for (const std::filesystem::path& source : sources) {
        std::string text;
        try {
            text = readFileBytes(source);
        } catch (const FileError& error) {
            throw ImportSourceError(source, error.what());
        }
        reader.addFile(source, text);
    }
    // Files of one appearance each stand alone; otherwise references reach across files.
    reader.resolve(slots.empty());
    std::vector<ProjectItemPtr> groups;
    for (const std::filesystem::path& source : sources) {
        groups.push_back(newImportGroup(source));
    }
    for (std::size_t i = 0; i < sources.size(); ++i) {
        reader.fillGroup(i, *groups[i]);
    }
    if (slots.empty()) {
        std::vector<OchreColorProjectItem*> roots;
        for (std::size_t i = 0; i < sources.size(); ++i) {
            reader.applyAppearanceGroups(i, *groups[i]);
            roots.push_back(groups[i].get());
        }
        reader.finish(roots);
        return groups;
    }
    const std::size_t base = static_cast<std::size_t>(
        std::find(slots.begin(), slots.end(), ColorSource::light) - slots.begin());
    // Dark before the high-contrast files, so that appearance types come out complete.
    for (ColorSource slot : {ColorSource::dark, ColorSource::lightHighContrast, ColorSource::darkHighContrast}) {
        auto position = std::find(slots.begin(), slots.end(), slot);
        if (position != slots.end()) {
            const auto variant = static_cast<std::size_t>(position - slots.begin());
            reader.mergeFile(base, *groups[base], variant, *groups[variant], slot);
        }
    }
    reader.finish({groups[base].get()});
    return {groups[base]};
}

}  // namespace tintwork
