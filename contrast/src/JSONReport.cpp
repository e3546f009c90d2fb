#include <array>
#include <nlohmann/json.hpp>

#include "contrast/TestReports.h"

namespace tintwork {

namespace {

// Bytes gathered before they go to the stream: large writes, few calls.
constexpr std::size_t flushSize = 1 << 20;

// Bytes a JSON string can't hold as they are: control characters, quote, backslash,
// and every byte of a multi-byte sequence (checked for valid UTF-8 on the slow path).
constexpr auto needsCare = [] {
    std::array<bool, 256> table{};
    for (std::size_t byte = 0; byte < 256; ++byte) {
        table[byte] = byte < 0x20 || byte >= 0x80 || byte == '"' || byte == '\\';
    }
    return table;
}();

// Appends the text as a JSON string. Plain ASCII goes as it is; anything else through
// nlohmann-json, which escapes and replaces invalid UTF-8 by U+FFFD instead of failing.
void appendText(std::string& out, std::string_view value) {
    for (const char character : value) {
        if (needsCare[static_cast<unsigned char>(character)]) {
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

// What stands between the values of a comparison object, keys and indentation included.
#define TINTWORK_MEMBER(name) ",\n            \"" name "\": "
constexpr std::string_view firstComparisonKey = "{\n            \"foregroundColorName\": ";
constexpr std::string_view comparisonKeys[] = {
    TINTWORK_MEMBER("foregroundCSSColorString"), TINTWORK_MEMBER("backgroundColorName"),
    TINTWORK_MEMBER("backgroundCSSColorString"), TINTWORK_MEMBER("source"),
    TINTWORK_MEMBER("sourceCSSId"),              TINTWORK_MEMBER("testResultSummary"),
    TINTWORK_MEMBER("passed"),
};
#undef TINTWORK_MEMBER

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

void JSONReportWriter::comparison(const TestColorComparison& result) {
    buffer_ += comparisonsWritten_++ == 0 ? "[\n" : ",\n";
    buffer_ += comparisonIndent;
    buffer_ += firstComparisonKey;
    appendText(buffer_, result.foregroundColorName);
    buffer_ += comparisonKeys[0];
    appendText(buffer_, result.foregroundCSSColorString);
    buffer_ += comparisonKeys[1];
    appendText(buffer_, result.backgroundColorName);
    buffer_ += comparisonKeys[2];
    appendText(buffer_, result.backgroundCSSColorString);
    buffer_ += comparisonKeys[3];
    appendText(buffer_, colorSourceName(result.source));
    buffer_ += comparisonKeys[4];
    appendText(buffer_, result.sourceCSSId);
    buffer_ += comparisonKeys[5];
    appendText(buffer_, result.testResultSummary);
    buffer_ += comparisonKeys[6];
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
