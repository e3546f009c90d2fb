#include "contrast/TestReports.h"

#include <array>

namespace tintwork {

namespace {

constexpr std::size_t flushSize = 1 << 20;

// The length of the UTF-8 sequence at the start of `text` and its code point; a length
// of 0 when the bytes there are no well-formed sequence (overlong, surrogate, too large).
std::size_t decodeUTF8(std::string_view text, char32_t& codePoint) {
    const auto lead = static_cast<unsigned char>(text[0]);
    std::size_t length = 0;
    char32_t value = 0;
    char32_t smallest = 0;
    if (lead < 0x80) {
        codePoint = lead;
        return 1;
    } else if ((lead & 0xE0) == 0xC0) {
        length = 2;
        value = lead & 0x1F;
        smallest = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3;
        value = lead & 0x0F;
        smallest = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4;
        value = lead & 0x07;
        smallest = 0x10000;
    } else {
        return 0;
    }
    if (text.size() < length) {
        return 0;
    }
    for (std::size_t index = 1; index < length; ++index) {
        const auto next = static_cast<unsigned char>(text[index]);
        if ((next & 0xC0) != 0x80) {
            return 0;
        }
        value = (value << 6) | (next & 0x3F);
    }
    if (value < smallest || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) {
        return 0;
    }
    codePoint = value;
    return length;
}

// Characters XML 1.0 allows in a document.
bool allowedInXML(char32_t codePoint) {
    return codePoint == 0x9 || codePoint == 0xA || codePoint == 0xD || (codePoint >= 0x20 && codePoint <= 0xD7FF) ||
           (codePoint >= 0xE000 && codePoint <= 0xFFFD) || (codePoint >= 0x10000 && codePoint <= 0x10FFFF);
}

// Bytes an attribute value can't hold as they are: markup characters, control
// characters, and every byte of a multi-byte sequence (checked for valid UTF-8).
constexpr auto needsCare = [] {
    std::array<bool, 256> table{};
    for (std::size_t byte = 0; byte < 256; ++byte) {
        table[byte] = byte < 0x20 || byte >= 0x7F || byte == '&' || byte == '<' || byte == '>' || byte == '"';
    }
    return table;
}();

void appendCount(std::string& out, std::string_view attribute, long long count) {
    out += ' ';
    out += attribute;
    out += "=\"";
    out += std::to_string(count);
    out += '"';
}

}  // namespace

void appendXMLAttributeText(std::string& out, std::string_view text) {
    std::size_t index = 0;
    while (index < text.size()) {
        // Plain printable ASCII goes as one run.
        std::size_t plain = index;
        while (plain < text.size() && !needsCare[static_cast<unsigned char>(text[plain])]) {
            ++plain;
        }
        out.append(text.substr(index, plain - index));
        index = plain;
        if (index == text.size()) {
            break;
        }
        switch (text[index]) {
            case '&': out += "&amp;"; ++index; continue;
            case '<': out += "&lt;"; ++index; continue;
            case '>': out += "&gt;"; ++index; continue;
            case '"': out += "&quot;"; ++index; continue;
            // Attribute values turn raw tabs and line breaks into spaces; references keep them.
            case '\t': out += "&#9;"; ++index; continue;
            case '\n': out += "&#10;"; ++index; continue;
            case '\r': out += "&#13;"; ++index; continue;
            default: break;
        }
        char32_t codePoint = 0;
        const std::size_t length = decodeUTF8(text.substr(index), codePoint);
        if (length == 0 || !allowedInXML(codePoint)) {
            out += "\xEF\xBF\xBD";
            index += length == 0 ? 1 : length;
            continue;
        }
        out.append(text.substr(index, length));
        index += length;
    }
}

JUnitReportWriter::JUnitReportWriter(std::ostream& out) : out_(out) {
    buffer_.reserve(flushSize + 4096);
}

void JUnitReportWriter::runStarted(const TestCounts& totals) {
    buffer_ += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites";
    appendCount(buffer_, "tests", totals.total());
    appendCount(buffer_, "failures", totals.failed);
    buffer_ += ">\n";
}

void JUnitReportWriter::groupStarted(const ColorTestGroupResult& group, const TestCounts& counts) {
    groupName_.clear();
    appendXMLAttributeText(groupName_, group.testGroupName);
    buffer_ += "  <testsuite name=\"";
    buffer_ += groupName_;
    buffer_ += '"';
    appendCount(buffer_, "tests", counts.total());
    appendCount(buffer_, "failures", counts.failed);
    buffer_ += ">\n";
}

void JUnitReportWriter::taskStarted(const std::string& testSummaryName) {
    className_ = groupName_;
    className_ += '.';
    appendXMLAttributeText(className_, testSummaryName);
}

void JUnitReportWriter::comparison(const TestColorComparison& result) {
    buffer_ += "    <testcase classname=\"";
    buffer_ += className_;
    buffer_ += "\" name=\"";
    appendXMLAttributeText(buffer_, result.foregroundColorName);
    buffer_ += " on ";
    appendXMLAttributeText(buffer_, result.backgroundColorName);
    buffer_ += " (";
    appendXMLAttributeText(buffer_, result.sourceCSSId);
    if (result.passed) {
        buffer_ += ")\"/>\n";
    } else {
        buffer_ += ")\">\n      <failure message=\"";
        appendXMLAttributeText(buffer_, result.testResultSummary);
        buffer_ += "\"/>\n    </testcase>\n";
    }
    flushIfFull();
}

void JUnitReportWriter::groupFinished(const ColorTestGroupResult& /*group*/, const TestCounts& /*counts*/) {
    buffer_ += "  </testsuite>\n";
    flushIfFull();
}

void JUnitReportWriter::runFinished(const TestCounts& /*totals*/) {
    buffer_ += "</testsuites>\n";
    out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    buffer_.clear();
    out_.flush();
}

void JUnitReportWriter::flushIfFull() {
    if (buffer_.size() >= flushSize) {
        out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
        buffer_.clear();
    }
}

}  // namespace tintwork
