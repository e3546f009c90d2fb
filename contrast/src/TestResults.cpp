#include "contrast/TestResults.h"

#include <sstream>

#include "contrast/TestReports.h"

namespace tintwork {

std::string_view colorSourceCSSId(ColorSource source) {
    switch (source) {
        case ColorSource::light: return "light";
        case ColorSource::lightHighContrast: return "light-high-contrast";
        case ColorSource::dark: return "dark";
        case ColorSource::darkHighContrast: return "dark-high-contrast";
    }
    return "light";
}

std::string_view colorSourceName(ColorSource source) {
    switch (source) {
        case ColorSource::light: return "light";
        case ColorSource::lightHighContrast: return "lightHighContrast";
        case ColorSource::dark: return "dark";
        case ColorSource::darkHighContrast: return "darkHighContrast";
    }
    return "light";
}

void writeResultsJSON(std::ostream& out, const std::vector<ColorTestGroupResult>& results) {
    JSONReportWriter writer(out);
    replayResults(results, writer);
}

std::string encodeResultsJSON(const std::vector<ColorTestGroupResult>& results) {
    std::ostringstream out;
    writeResultsJSON(out, results);
    return out.str();
}

}  // namespace tintwork
