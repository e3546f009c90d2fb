#include <nlohmann/json.hpp>

#include "contrast/TestReports.h"

namespace tintwork {

namespace {

// Bytes gathered before they go to the stream: large writes, few calls.
constexpr std::size_t flushSize = 1 << 20;

// Appends the text as a JSON string. Plain ASCII goes as it is; anything else through
// nlohmann-json, which escapes and replaces invalid UTF-8 by U+FFFD instead of failing.
void appendText(std::string& out, std::string_view value) {
    for (const char character : value) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte >= 0x80 || character == '"' || character == '\\') {
            out += nlohmann::json(std::string(value)).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
            return;
        }
    }
    out += '"';
    out += value;
    out += '"';
}

// A key at the given indentation, after the comma of the member before it (none for the first).
void appendKey(std::string& out, std::string_view indent, std::string_view name, bool first = false) {
    out += first ? "\n" : ",\n";
    out += indent;
    out += '"';
    out += name;
    out += "\": ";
}

constexpr std::string_view groupIndent = "  ";
constexpr std::string_view groupMemberIndent = "    ";
constexpr std::string_view taskIndent = "      ";
constexpr std::string_view taskMemberIndent = "        ";
constexpr std::string_view comparisonIndent = "          ";
constexpr std::string_view comparisonMemberIndent = "            ";

}  // namespace

JSONReportWriter::JSONReportWriter(std::ostream& out) : out_(out) {
    buffer_.reserve(flushSize + 4096);
}

void JSONReportWriter::groupStarted(const ColorTestGroupResult& group, const TestCounts& /*counts*/) {
    buffer_ += groupsWritten_++ == 0 ? "[\n" : ",\n";
    buffer_ += groupIndent;
    buffer_ += '{';
    appendKey(buffer_, groupMemberIndent, "testGroupName", true);
    appendText(buffer_, group.testGroupName);
    appendKey(buffer_, groupMemberIndent, "testTime");
    appendText(buffer_, group.testTime);
    appendKey(buffer_, groupMemberIndent, "passSummary");
    appendText(buffer_, group.passSummary);
    appendKey(buffer_, groupMemberIndent, "failSummary");
    appendText(buffer_, group.failSummary);
    appendKey(buffer_, groupMemberIndent, "resultPassPercent");
    buffer_ += std::to_string(group.resultPassPercent);
    appendKey(buffer_, groupMemberIndent, "tests");
    tasksWritten_ = 0;
}

void JSONReportWriter::taskStarted(const std::string& testSummaryName) {
    buffer_ += tasksWritten_++ == 0 ? "[\n" : ",\n";
    buffer_ += taskIndent;
    buffer_ += '{';
    appendKey(buffer_, taskMemberIndent, "testSummaryName", true);
    appendText(buffer_, testSummaryName);
    appendKey(buffer_, taskMemberIndent, "testColors");
    comparisonsWritten_ = 0;
}

void JSONReportWriter::comparison(const TestColorResult& result) {
    buffer_ += comparisonsWritten_++ == 0 ? "[\n" : ",\n";
    buffer_ += comparisonIndent;
    buffer_ += '{';
    appendKey(buffer_, comparisonMemberIndent, "foregroundColorName", true);
    appendText(buffer_, result.foregroundColorName);
    appendKey(buffer_, comparisonMemberIndent, "foregroundCSSColorString");
    appendText(buffer_, result.foregroundCSSColorString);
    appendKey(buffer_, comparisonMemberIndent, "backgroundColorName");
    appendText(buffer_, result.backgroundColorName);
    appendKey(buffer_, comparisonMemberIndent, "backgroundCSSColorString");
    appendText(buffer_, result.backgroundCSSColorString);
    appendKey(buffer_, comparisonMemberIndent, "source");
    appendText(buffer_, colorSourceName(result.source));
    appendKey(buffer_, comparisonMemberIndent, "sourceCSSId");
    appendText(buffer_, result.sourceCSSId);
    appendKey(buffer_, comparisonMemberIndent, "testResultSummary");
    appendText(buffer_, result.testResultSummary);
    appendKey(buffer_, comparisonMemberIndent, "passed");
    buffer_ += result.passed ? "true\n" : "false\n";
    buffer_ += comparisonIndent;
    buffer_ += '}';
    flushIfFull();
}

void JSONReportWriter::taskFinished() {
    if (comparisonsWritten_ == 0) {
        buffer_ += "[]";
    } else {
        buffer_ += '\n';
        buffer_ += taskMemberIndent;
        buffer_ += ']';
    }
    buffer_ += '\n';
    buffer_ += taskIndent;
    buffer_ += '}';
}

void JSONReportWriter::groupFinished(const ColorTestGroupResult& /*group*/, const TestCounts& /*counts*/) {
    if (tasksWritten_ == 0) {
        buffer_ += "[]";
    } else {
        buffer_ += '\n';
        buffer_ += groupMemberIndent;
        buffer_ += ']';
    }
    buffer_ += '\n';
    buffer_ += groupIndent;
    buffer_ += '}';
    flushIfFull();
}

void JSONReportWriter::runFinished(const TestCounts& /*totals*/) {
    buffer_ += groupsWritten_ == 0 ? "[]\n" : "\n]\n";
    out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    buffer_.clear();
    out_.flush();
}

void JSONReportWriter::flushIfFull() {
    if (buffer_.size() >= flushSize) {
        out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
        buffer_.clear();
    }
}

}  // namespace tintwork
