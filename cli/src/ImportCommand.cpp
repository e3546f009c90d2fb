// tintwork import: reads sources of one kind into groups and writes them as Design
// Tokens JSON (standard output or a file) or as a document, new or appended to another.

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <ostream>
#include <sstream>
#include <unordered_set>

#include "Documents.h"
#include "cli/Commands.h"
#include "colour/FatalError.h"
#include "export/CodeName.h"
#include "export/JsonDesignExporter.h"
#include "file/OchreColorFileWriter.h"
#include "import/ImportKinds.h"
#include "model/FileIO.h"

namespace tintwork {

namespace {

enum class OutputForm { standardOutput, json, document };

std::string lowercased(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

OutputForm outputForm(const ImportCommandOptions& options) {
    if (!options.output) {
        if (options.into) {
            throw UsageError("--into needs -o naming the .tintwork document to write");
        }
        return OutputForm::standardOutput;
    }
    const std::string extension = lowercased(std::filesystem::path(*options.output).extension().string());
    if (extension == ".tintwork") {
        return OutputForm::document;
    }
    if (extension == ".json" && !options.into) {
        return OutputForm::json;
    }
    if (options.into) {
        throw UsageError("--into needs -o naming a .tintwork document, not \"" + *options.output + "\"");
    }
    throw UsageError("-o must name a .json or .tintwork file, not \"" + *options.output + "\"");
}

std::string kindList() {
    std::string words;
    for (const ImportKind& kind : importKinds()) {
        words += (words.empty() ? "" : ", ") + std::string(kind.word);
    }
    return words;
}

const ImportKind& usableKind(const std::string& word) {
    const ImportKind* kind = findImportKind(word);
    if (kind == nullptr) {
        throw UsageError("unknown kind \"" + word + "\" (kinds: " + kindList() + ")");
    }
    if (!kind->makeImporter) {
        throw UsageError("the \"" + word + "\" importer is not available in this build yet");
    }
    return *kind;
}

// The appearance words --modes takes, one per source, "light" among them once.
std::vector<std::string> parseModes(const std::string& text, std::size_t sourceCount) {
    static const std::vector<std::string> words = {"light", "dark", "high-contrast", "dark-high-contrast"};
    std::vector<std::string> modes;
    std::stringstream stream(text);
    for (std::string mode; std::getline(stream, mode, ',');) {
        if (std::find(words.begin(), words.end(), mode) == words.end()) {
            throw UsageError("--modes: unknown appearance \"" + mode +
                             "\" (light, dark, high-contrast, dark-high-contrast)");
        }
        if (std::find(modes.begin(), modes.end(), mode) != modes.end()) {
            throw UsageError("--modes: \"" + mode + "\" is named twice");
        }
        modes.push_back(mode);
    }
    if (std::find(modes.begin(), modes.end(), "light") == modes.end()) {
        throw UsageError("--modes must name the light source");
    }
    if (modes.size() != sourceCount) {
        throw UsageError("--modes names " + std::to_string(modes.size()) + " appearances for " +
                         std::to_string(sourceCount) + " sources");
    }
    return modes;
}

ImportOptions importOptions(const ImportCommandOptions& options, std::ostream& err) {
    ImportOptions result;
    result.diagnostics = [&err](std::string_view line) { err << line << '\n'; };
    if (options.unmanagedAs) {
        if (options.kind != "sketch") {
            throw UsageError("--unmanaged-as applies to the sketch kind only");
        }
        if (*options.unmanagedAs == "srgb") {
            result.unmanagedColorSpace = ColorSpace::sRGB;
        } else if (*options.unmanagedAs == "display-p3") {
            result.unmanagedColorSpace = ColorSpace::displayP3;
        } else {
            throw UsageError("--unmanaged-as takes srgb or display-p3, not \"" + *options.unmanagedAs + "\"");
        }
    }
    if ((options.modes || options.strict) && options.kind != "dtcg") {
        throw UsageError(std::string(options.modes ? "--modes" : "--strict") + " applies to the dtcg kind only");
    }
    if (options.modes) {
        result.modes = parseModes(*options.modes, options.sources.size());
    }
    result.strict = options.strict;
    return result;
}

// Every item below `item`, and the item itself, exported by `group`.
void assignBuildGroup(OchreColorProjectItem& item, const BuildGroupPtr& group) {
    item.buildGroup = group;
    if (item.group) {
        for (const ProjectItemPtr& child : item.group->items) {
            assignBuildGroup(*child, group);
        }
    }
}

// The document the groups go into: the --into document, or a new one named after the output.
std::shared_ptr<OchreColorProject> receivingDocument(const ImportCommandOptions& options) {
    if (options.into) {
        return loadDocument(*options.into);
    }
    auto project = std::make_shared<OchreColorProject>();
    project->name = std::filesystem::path(*options.output).stem().string();
    return project;
}

std::string documentText(OchreColorProject& project, const std::vector<ProjectItemPtr>& groups) {
    const BuildGroupPtr firstGroup = project.buildGroups.empty() ? nullptr : project.buildGroups.front();
    for (const ProjectItemPtr& group : groups) {
        if (firstGroup) {
            assignBuildGroup(*group, firstGroup);
        }
        project.items.push_back(group);
    }
    return OchreColorFileWriter().write(project);
}

BuildTask tokensTask() {
    BuildTask task;
    task.exportFileType = BuildFileType::jsonDesignToken;
    return task;
}

// Items whose token name an earlier item of their group already takes. A JSON object
// keeps one token per name, so these items are not in the JSON (importers that name
// every colour alike, such as Figma's "color", make many of them).
std::size_t itemsHiddenByName(const std::vector<ProjectItemPtr>& items, const BuildTask& task) {
    std::size_t hidden = 0;
    std::unordered_set<std::string> taken;
    for (const ProjectItemPtr& item : items) {
        if (item->group) {
            hidden += itemsHiddenByName(item->group->items, task);
        } else if (!taken.insert(codeName({}, item->name, task)).second) {
            ++hidden;
        }
    }
    return hidden;
}

std::string tokensText(const std::vector<ProjectItemPtr>& groups, std::ostream& err) {
    const BuildTask task = tokensTask();
    if (const std::size_t hidden = itemsHiddenByName(groups, task); hidden > 0) {
        err << "tintwork: warning: " << hidden
            << " imported items share their token name with another item of their group and are not in the "
               "JSON; -o FILE.tintwork keeps them all\n";
    }
    return JsonDesignExporter(nullptr).exportText(task, groups);
}

// Reads every source; the first failure names its source and ends the import.
std::vector<ProjectItemPtr> readSources(const ImportKind& kind, const ImportCommandOptions& command,
                                        const ImportOptions& options) {
    std::vector<std::filesystem::path> sources(command.sources.begin(), command.sources.end());
    // A kind that reads its sources together sees all of them (references across files).
    if (kind.importAll) {
        return kind.importAll(sources, options);
    }
    std::vector<ProjectItemPtr> groups;
    for (const std::filesystem::path& source : sources) {
        try {
            groups.push_back(importSource(kind, source, options));
        } catch (const FatalError&) {
            throw;
        } catch (const std::exception& error) {
            throw ImportSourceError(source, error.what());
        }
    }
    return groups;
}

}  // namespace

int runImportCommand(const ImportCommandOptions& command, std::ostream& out, std::ostream& err) {
    const ImportKind& kind = usableKind(command.kind);
    const OutputForm form = outputForm(command);
    const ImportOptions options = importOptions(command, err);

    const std::string target = command.output.value_or("");
    std::shared_ptr<OchreColorProject> document;
    std::vector<ProjectItemPtr> groups;
    try {
        if (form == OutputForm::document) {
            try {
                document = receivingDocument(command);
            } catch (const FatalError&) {
                throw;
            } catch (const std::exception& error) {
                throw ImportSourceError(command.into.value_or(target), error.what());
            }
        }
        groups = readSources(kind, command, options);
    } catch (const ImportSourceError& error) {
        err << "tintwork: " << error.source.string() << ": " << error.what() << '\n';
        return 1;
    }

    // Nothing is written until every source has been read.
    try {
        switch (form) {
            case OutputForm::standardOutput: out << tokensText(groups, err); break;
            case OutputForm::json: writeFileAtomically(target, tokensText(groups, err)); break;
            case OutputForm::document: writeFileAtomically(target, documentText(*document, groups)); break;
        }
    } catch (const FatalError&) {
        throw;
    } catch (const std::exception& error) {
        err << "tintwork: " << (form == OutputForm::standardOutput ? std::string("output") : target) << ": "
            << error.what() << '\n';
        return 1;
    }
    return 0;
}

}  // namespace tintwork
