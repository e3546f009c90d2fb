#pragma once
// The records a test run yields: one per comparison, per task and per test group,
// and their JSON encoding (keys are the field names, in field order).

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "contrast/SharedText.h"
#include "model/Themeable.h"

namespace tintwork {

// Every appearance variant, in the order the tests visit them.
inline constexpr ColorSource allColorSources[4] = {ColorSource::light, ColorSource::lightHighContrast,
                                                   ColorSource::dark, ColorSource::darkHighContrast};

// "light", "light-high-contrast", "dark", "dark-high-contrast".
std::string_view colorSourceCSSId(ColorSource source);
// The case name: "light", "lightHighContrast", "dark", "darkHighContrast".
std::string_view colorSourceName(ColorSource source);

// One comparison of one foreground and background pair in one appearance variant.
struct TestColorResult {
    SharedText foregroundColorName;
    SharedText foregroundCSSColorString;
    SharedText backgroundColorName;
    SharedText backgroundCSSColorString;
    ColorSource source = ColorSource::light;
    SharedText sourceCSSId;
    SharedText testResultSummary;
    bool passed = false;
};

// One comparison as a test hands it on while it runs: the texts are borrowed from the
// test for the duration of the call, so handing millions of them on copies nothing.
struct TestColorComparison {
    const SharedText& foregroundColorName;
    const SharedText& foregroundCSSColorString;
    const SharedText& backgroundColorName;
    const SharedText& backgroundCSSColorString;
    ColorSource source;
    const SharedText& sourceCSSId;
    const SharedText& testResultSummary;
    bool passed;

    // The comparison as a record to keep.
    TestColorResult record() const {
        return {foregroundColorName, foregroundCSSColorString, backgroundColorName, backgroundCSSColorString,
                source,              sourceCSSId,              testResultSummary,   passed};
    }
    // A kept record handed on again.
    static TestColorComparison of(const TestColorResult& result) {
        return {result.foregroundColorName, result.foregroundCSSColorString, result.backgroundColorName,
                result.backgroundCSSColorString, result.source, result.sourceCSSId, result.testResultSummary,
                result.passed};
    }
};

// The comparisons of one test task.
struct ColorTestResult {
    std::string testSummaryName;
    std::vector<TestColorResult> testColors;
};

// One test group: its tasks' results and the pass and fail summaries over all of them.
struct ColorTestGroupResult {
    std::string testGroupName;
    std::string testTime;
    std::string passSummary;
    std::string failSummary;
    int resultPassPercent = 0;
    std::vector<ColorTestResult> tests;
};

// Writes the results as a JSON array, two spaces of indentation per level.
void writeResultsJSON(std::ostream& out, const std::vector<ColorTestGroupResult>& results);
// The same JSON as one string.
std::string encodeResultsJSON(const std::vector<ColorTestGroupResult>& results);

}  // namespace tintwork
