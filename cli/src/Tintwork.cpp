// The tintwork executable: subcommands over the flows and libraries TintWorkCLI uses.

#include <CLI/CLI.hpp>

#include <algorithm>
#include <ostream>

#include "cli/Commands.h"
#include "cli/Driver.h"

#ifndef TINTWORK_VERSION
#define TINTWORK_VERSION "0.0.0"
#endif

namespace tintwork {

namespace {

constexpr const char* importFooter = R"(Kinds and the groups they make:
  svg "SVG Import", css "CSS Import" (style sheets; .html files by their styles),
  asset-catalog "Asset Catalog" (an .xcassets folder), design-tokens "Design Tokens JSON Import"
  (this program's own token files), dtcg "DTCG Import" (standard Design Tokens files),
  figma "Figma Import", sketch "Sketch Import", image "Image Import", ochre "Ochre Import",
  material "Material Import", generic-json "JSON Import".
Each source becomes one group, in argument order. Without -o the groups are printed as
Design Tokens JSON; diagnostics go to standard error. Nothing is written when a source fails.

Examples:
  tintwork import css theme.css > tokens.json
  tintwork import svg icons/logo.svg icons/flag.svg -o colours.tintwork
  tintwork import asset-catalog App/Assets.xcassets -o colours.json
  tintwork import css brand.css -o Colors.tintwork --into Colors.tintwork
  tintwork import sketch --unmanaged-as srgb library.sketch
  tintwork import dtcg --modes light,dark light.tokens.json dark.tokens.json -o tokens.json
  tintwork import dtcg --strict tokens.json > /dev/null)";

constexpr const char* buildFooter = R"(Prints "Build Completed Successfully", or "Error building ..." on standard error with status 1.

Examples:
  tintwork build Colors.tintwork
  tintwork build Colors.tintwork -o ~/build/colours
  tintwork build Settings.tintwork --tokens tokens.json --autohc
  tintwork build Settings.tintwork --tokens tokens.json --tokens-format dtcg)";

constexpr const char* testFooter = R"(Prints each group's pass and fail counts and exits with the number of failed groups
(at most 255); 0 means every group passed.

Examples:
  tintwork test Colors.tintwork
  tintwork test Colors.tintwork --failures
  tintwork test Colors.tintwork --report results.json --junit results.xml)";

constexpr const char* mainFooter = R"(Run 'tintwork COMMAND --help' for a command's options and examples.

Examples:
  tintwork import css theme.css -o Colors.tintwork
  tintwork build Colors.tintwork -o build/
  tintwork test Colors.tintwork --failures --junit test-results.xml)";

// The name of the command a usage error belongs to: the subcommand being parsed, if any.
std::string commandName(const CLI::App& app) {
    const auto selected = app.get_subcommands();
    return selected.empty() ? std::string("usage") : selected.front()->get_name();
}

int usageError(const std::string& command, const std::string& what, std::ostream& err) {
    err << "tintwork: " << command << ": " << what << '\n';
    err << "Run 'tintwork" << (command == "usage" ? std::string() : " " + command) << " --help' for usage.\n";
    return exitUsage;
}

}  // namespace

int runTintwork(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    CLI::App app{"Builds, tests and imports colour design-token documents (.tintwork).", "tintwork"};
    app.set_version_flag("--version", std::string("tintwork ") + TINTWORK_VERSION);
    app.require_subcommand(1);
    app.footer(mainFooter);

    ImportCommandOptions import;
    std::string importOutput;
    std::string importInto;
    std::string unmanagedAs;
    std::string modes;
    CLI::App* importCommand = app.add_subcommand("import", "Read colours from files of one kind");
    importCommand->add_option("KIND", import.kind, "Kind of the sources (see below)")->required();
    importCommand->add_option("SOURCE", import.sources, "Files (or folders, for asset-catalog) to read")
        ->required();
    CLI::Option* outputOption =
        importCommand->add_option("-o,--output", importOutput, "Write X.json (tokens) or X.tintwork (a document)");
    CLI::Option* intoOption =
        importCommand->add_option("--into", importInto, "Append the groups to this document (with -o X.tintwork)");
    CLI::Option* unmanagedOption = importCommand->add_option(
        "--unmanaged-as", unmanagedAs, "sketch: read a file without colour profile as srgb or display-p3");
    CLI::Option* modesOption = importCommand->add_option(
        "--modes", modes, "dtcg: appearance of each source, e.g. light,dark,high-contrast,dark-high-contrast");
    importCommand->add_flag("--strict", import.strict, "dtcg: fail on the first rule a file breaks");
    importCommand->footer(importFooter);

    BuildCommandOptions build;
    std::string buildOutput;
    std::string tokens;
    CLI::App* buildCommand = app.add_subcommand("build", "Run every build group of a document");
    buildCommand->add_option("DOC", build.document, "The .tintwork document")->required();
    CLI::Option* buildOutputOption =
        buildCommand->add_option("-o,--output", buildOutput, "Write into this folder instead of the tasks' folders");
    CLI::Option* tokensOption =
        buildCommand->add_option("--tokens", tokens, "Build the colours of this token file with DOC's settings");
    buildCommand->add_flag("--autohc", build.autoHighContrast,
                           "With --tokens: give imported colours automatic high-contrast variants");
    buildCommand->add_option("--tokens-format", build.tokensFormat, "With --tokens: dialect (default) or dtcg");
    buildCommand->footer(buildFooter);

    TestCommandOptions test;
    std::string report;
    std::string junit;
    CLI::App* testCommand = app.add_subcommand("test", "Run every test group of a document");
    testCommand->add_option("DOC", test.document, "The .tintwork document")->required();
    testCommand->add_flag("--failures", test.failures, "List every failed comparison under its group");
    CLI::Option* reportOption = testCommand->add_option("--report", report, "Write the results as JSON");
    CLI::Option* junitOption = testCommand->add_option("--junit", junit, "Write the results as JUnit XML");
    testCommand->footer(testFooter);

    // The parser takes the arguments last first, without the program path.
    std::vector<std::string> reversed(args.rbegin(), args.rend());
    if (!reversed.empty()) {
        reversed.pop_back();
    }
    try {
        app.parse(reversed);
    } catch (const CLI::CallForHelp&) {
        out << app.help();
        return exitSuccess;
    } catch (const CLI::CallForAllHelp&) {
        out << app.help("", CLI::AppFormatMode::All);
        return exitSuccess;
    } catch (const CLI::CallForVersion& version) {
        out << version.what() << '\n';
        return exitSuccess;
    } catch (const CLI::ParseError& error) {
        return usageError(commandName(app), error.what(), err);
    }

    try {
        if (importCommand->parsed()) {
            if (outputOption->count() > 0) import.output = importOutput;
            if (intoOption->count() > 0) import.into = importInto;
            if (unmanagedOption->count() > 0) import.unmanagedAs = unmanagedAs;
            if (modesOption->count() > 0) import.modes = modes;
            return runImportCommand(import, out, err);
        }
        if (buildCommand->parsed()) {
            if (buildOutputOption->count() > 0) build.outputFolder = buildOutput;
            if (tokensOption->count() > 0) build.tokens = tokens;
            return runBuildCommand(build, out, err);
        }
        if (reportOption->count() > 0) test.report = report;
        if (junitOption->count() > 0) test.junit = junit;
        return runTestCommand(test, out, err);
    } catch (const UsageError& error) {
        return usageError(commandName(app), error.what(), err);
    } catch (const std::exception& fault) {
        // Commands report their own errors; anything reaching here is a fatal error or a program fault.
        return reportFault(fault, out, err);
    }
}

}  // namespace tintwork
