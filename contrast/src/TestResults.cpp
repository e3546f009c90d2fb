#include "contrast/TestResults.h"

#include <nlohmann/json.hpp>
#include <sstream>

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

namespace {

// Writes the JSON document by hand, record by record, so that a report of millions of
// comparisons never exists twice in memory; nlohmann-json escapes the texts that need it.
class JSONWriter {
public:
    explicit JSONWriter(std::ostream& out) : out_(out) {}

    void groups(const std::vector<ColorTestGroupResult>& results) {
        array(results, [this](const ColorTestGroupResult& group) {
            key("testGroupName");
            text(group.testGroupName);
            next();
            key("testTime");
            text(group.testTime);
            next();
            key("passSummary");
            text(group.passSummary);
            next();
            key("failSummary");
            text(group.failSummary);
            next();
            key("resultPassPercent");
            out_ << group.resultPassPercent;
            next();
            key("tests");
            array(group.tests, [this](const ColorTestResult& test) { task(test); });
        });
        out_ << '\n';
    }

private:
    void task(const ColorTestResult& test) {
        key("testSummaryName");
        text(test.testSummaryName);
        next();
        key("testColors");
        array(test.testColors, [this](const TestColorResult& result) { comparison(result); });
    }

    void comparison(const TestColorResult& result) {
        key("foregroundColorName");
        text(result.foregroundColorName);
        next();
        key("foregroundCSSColorString");
        text(result.foregroundCSSColorString);
        next();
        key("backgroundColorName");
        text(result.backgroundColorName);
        next();
        key("backgroundCSSColorString");
        text(result.backgroundCSSColorString);
        next();
        key("source");
        text(colorSourceName(result.source));
        next();
        key("sourceCSSId");
        text(result.sourceCSSId);
        next();
        key("testResultSummary");
        text(result.testResultSummary);
        next();
        key("passed");
        out_ << (result.passed ? "true" : "false");
    }

    // An array of objects, each written by `member` between its braces.
    template <typename Element, typename Member>
    void array(const std::vector<Element>& elements, Member&& member) {
        if (elements.empty()) {
            out_ << "[]";
            return;
        }
        out_ << '[';
        ++depth_;
        for (std::size_t index = 0; index < elements.size(); ++index) {
            out_ << (index == 0 ? "" : ",");
            newline();
            out_ << '{';
            ++depth_;
            newline();
            member(elements[index]);
            --depth_;
            newline();
            out_ << '}';
        }
        --depth_;
        newline();
        out_ << ']';
    }

    void key(std::string_view name) {
        text(name);
        out_ << ": ";
    }

    void next() {
        out_ << ',';
        newline();
    }

    void newline() {
        out_ << '\n';
        for (int level = 0; level < depth_; ++level) {
            out_ << "  ";
        }
    }

    void text(std::string_view value) {
        for (const char character : value) {
            const auto byte = static_cast<unsigned char>(character);
            if (byte < 0x20 || byte >= 0x80 || character == '"' || character == '\\') {
                // Escapes, and UTF-8 checked (an invalid byte becomes U+FFFD rather than an error).
                out_ << nlohmann::json(std::string(value)).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
                return;
            }
        }
        out_ << '"' << value << '"';
    }

    std::ostream& out_;
    int depth_ = 0;
};

}  // namespace

void writeResultsJSON(std::ostream& out, const std::vector<ColorTestGroupResult>& results) {
    JSONWriter(out).groups(results);
}

std::string encodeResultsJSON(const std::vector<ColorTestGroupResult>& results) {
    std::ostringstream out;
    writeResultsJSON(out, results);
    return out.str();
}

}  // namespace tintwork
