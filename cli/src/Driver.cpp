#include "cli/Driver.h"

#include <algorithm>
#include <cctype>
#include <ostream>

#include "colour/FatalError.h"
#include "model/FileIO.h"

namespace tintwork {

namespace {

constexpr const char* usageLines[] = {
    "USAGE: TintWorkCLI [<arguments>] [<options>]",
    "",
    "ARGUMENTS:",
    "-b <path-to-tintwork-document>: Build. The equivalent of running `Build All` for the specified document.",
    "-t <path-to-tintwork-document>: Test. The equivalent of running `Test All` for the specified document.",
    "-i <path-to-json-document>: Import. If specified the colors in this JSON file will be used exclusively for "
    "building.",
    "-c <path-to-tintwork-document>: Configuration. Import all the build settings from the tintwork document "
    "specified.",
    "<path-to-tintwork-document> The path to the Tintwork document you want to build, including the file name.",
    "<path-to-json-document> The path to a Design Tokens JSON file containing all the colors you'd like to use, "
    "including the file name.",
    "",
    "OPTIONS:",
    "-o <output-folder> Only applicable when using the build or configuration option. If specified, Tintwork will "
    "use this folder instead of the one in the tasks you are exporting.",
    "-autohc [true | false] Only applicable when using the configuration option. If specified as true Tintwork will "
    "auto generate high contrast variants for colors you are exporting. If not specified defaults to false.",
    "",
    "EXAMPLES:",
    "/Applications/Tintwork.app/Contents/SharedSupport/TintworkCLI -b Colors.tintwork",
    "/Applications/Tintwork.app/Contents/SharedSupport/TintworkCLI -b Colors.tintwork -o ~/Downloads/Temp/",
    "/Applications/Tintwork.app/Contents/SharedSupport/TintworkCLI -t Colors.tintwork",
    "/Applications/Tintwork.app/Contents/SharedSupport/TintworkCLI -i colors.json -c Settings.tintwork -o "
    "~/Downloads/Temp/ -autohc true",
};

int invalidParameters(std::ostream& out) {
    out << "Invalid parameters\n";
    for (const char* line : usageLines) {
        out << line << '\n';
    }
    return exitFailure;
}

std::optional<std::string> lookup(const std::map<std::string, std::string>& table, const std::string& key) {
    auto found = table.find(key);
    if (found == table.end()) {
        return std::nullopt;
    }
    return found->second;
}

std::optional<std::string> expandedOption(const std::map<std::string, std::string>& table, const std::string& key) {
    auto value = lookup(table, key);
    if (value) {
        return expandTilde(*value);
    }
    return std::nullopt;
}

std::string lowercased(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

int dispatch(const std::map<std::string, std::string>& table, std::ostream& out) {
    if (table.empty()) {
        return invalidParameters(out);
    }
    if (auto document = expandedOption(table, "-b")) {
        return runBuild(*document, expandedOption(table, "-o"), out, out);
    }
    if (auto document = expandedOption(table, "-t")) {
        // The output folder is read like in the other flows but a test report is never
        // written to a file from the command line.
        (void)expandedOption(table, "-o");
        return runTests(*document, out);
    }
    if (auto json = expandedOption(table, "-i")) {
        auto settings = expandedOption(table, "-c");
        if (!settings) {
            return invalidParameters(out);
        }
        auto autoHighContrast = lookup(table, "-autohc");
        return runImportedBuild(*json, *settings, expandedOption(table, "-o"),
                                autoHighContrast && lowercased(*autoHighContrast) == "true", out, out);
    }
    return invalidParameters(out);
}

}  // namespace

std::map<std::string, std::string> scanArguments(const std::vector<std::string>& args) {
    std::map<std::string, std::string> table;
    if (args.size() < 3) {
        return table;
    }
    for (size_t i = 1; i + 1 < args.size(); i += 2) {
        table[args[i]] = args[i + 1];
    }
    return table;
}

int runDriver(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    try {
        return dispatch(scanArguments(args), out);
    } catch (const std::exception& fault) {
        // Flows report their own errors; anything reaching here is a fatal error or a program fault.
        return reportFault(fault, out, err);
    }
}

int reportFault(const std::exception& fault, std::ostream& out, std::ostream& err) {
    out.flush();
    err << "Fatal error: " << fault.what() << '\n';
    return exitFatal;
}

}  // namespace tintwork
