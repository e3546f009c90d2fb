// Feeds arbitrary names and messages to the JSON and JUnit report writers: whatever the
// bytes, the JSON must parse and the XML must be well-formed, and a printable name must
// read back from its attribute as it was written.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "contrast/TestReports.h"

namespace {

// The input split at each 0x1F byte into up to five texts.
std::vector<std::string> fields(std::string_view text) {
    std::vector<std::string> parts;
    while (parts.size() < 4) {
        const auto end = text.find('\x1F');
        if (end == std::string_view::npos) {
            break;
        }
        parts.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    parts.emplace_back(text);
    parts.resize(5);
    return parts;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace tintwork;
    const auto parts = fields(std::string_view(reinterpret_cast<const char*>(data), size));
    const TestColorResult comparison{parts[2], "color(srgb 0 0 0)", parts[3], "color(srgb 1 1 1)",
                                     ColorSource::dark, "dark", parts[4], size % 2 == 0};
    const ColorTestGroupResult group{parts[0], "", "1 passed (100%)", "0 failed (0%)", 100,
                                     {ColorTestResult{parts[1], {comparison, comparison}}}};

    std::ostringstream json;
    JSONReportWriter jsonWriter(json);
    replayResults({group, group}, jsonWriter);
    if (!nlohmann::json::accept(json.str())) {
        std::abort();
    }

    std::ostringstream xml;
    JUnitReportWriter junitWriter(xml);
    replayResults({group}, junitWriter);
    pugi::xml_document document;
    if (!document.load_string(xml.str().c_str(), pugi::parse_escapes)) {
        std::abort();
    }
    // Printable ASCII reads back as it was written.
    const std::string& name = parts[0];
    const bool printable = std::all_of(name.begin(), name.end(), [](char c) { return c >= 0x20 && c <= 0x7E; });
    const std::string readBack = document.child("testsuites").child("testsuite").attribute("name").value();
    if (printable && readBack != name) {
        std::abort();
    }
    return 0;
}
