// The build, test and import-and-build flows. Each loads its document, runs the
// work and turns the outcome into console lines and an exit status.

#include <filesystem>
#include <memory>
#include <ostream>

#include "Documents.h"
#include "cli/Commands.h"
#include "cli/Driver.h"
#include "colour/FatalError.h"
#include "export/Builder.h"
#include "file/OchreColorFileReader.h"
#include "model/FileIO.h"

namespace tintwork {

std::shared_ptr<OchreColorProject> loadDocument(const std::filesystem::path& path) {
    const std::string bytes = readFileBytes(path);
    auto project = OchreColorFileReader().read(bytes);
    project->name = path.stem().string();
    return project;
}

namespace {

std::vector<std::string> allBuildGroups(const OchreColorProject& project) {
    std::vector<std::string> uuids;
    uuids.reserve(project.buildGroups.size());
    for (const auto& group : project.buildGroups) {
        uuids.push_back(group->uuid);
    }
    return uuids;
}

Builder makeBuilder(std::shared_ptr<OchreColorProject> project, const std::filesystem::path& documentURL,
                    const std::optional<std::string>& outputFolder) {
    auto groups = allBuildGroups(*project);
    return Builder(std::move(project), documentURL, "", std::move(groups), true, outputFolder);
}

// Runs the steps of a build flow and reports its outcome: the first error ends
// the flow with its text; program faults pass on to the driver.
template <typename Steps>
int reportBuild(std::ostream& out, std::ostream& err, Steps&& steps) {
    try {
        steps();
    } catch (const FatalError&) {
        throw;
    } catch (const std::exception& error) {
        err << "Error building " << error.what() << '\n';
        return exitFailure;
    }
    out << "Build Completed Successfully\n";
    return exitSuccess;
}

}  // namespace

int runBuild(const std::string& documentPath, const std::optional<std::string>& outputFolder, std::ostream& out,
             std::ostream& err) {
    return reportBuild(out, err, [&] {
        const std::filesystem::path documentURL(documentPath);
        Builder builder = makeBuilder(loadDocument(documentURL), documentURL, outputFolder);
        builder.buildAll();
    });
}

int runImportedBuild(const std::string& jsonPath, const std::string& settingsPath,
                     const std::optional<std::string>& outputFolder, bool autoHighContrast, std::ostream& out,
                     std::ostream& err, const TokenReader& readTokens) {
    return reportBuild(out, err, [&] {
        const std::filesystem::path settingsURL(settingsPath);
        Builder builder = makeBuilder(loadDocument(settingsURL), settingsURL, outputFolder);
        if (readTokens) {
            builder.replaceItems(readTokens(std::filesystem::path(jsonPath)), autoHighContrast);
        } else {
            builder.importColors(std::filesystem::path(jsonPath), autoHighContrast);
        }
        builder.buildAll();
    });
}

int runTests(const std::string& documentPath, std::ostream& out) {
    return runTestCommand(TestCommandOptions{documentPath, false, std::nullopt, std::nullopt}, out, out);
}

}  // namespace tintwork
