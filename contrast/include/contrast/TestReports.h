#pragma once
// Report files of a test run, written as the run goes: the result records as a JSON
// array, and the comparisons as JUnit XML for CI dashboards. Both need each group's
// counts before its comparisons, so the tester counts the run first for them.

#include <ostream>
#include <string>

#include "contrast/TestRunConsumer.h"

namespace tintwork {

// The ColorTestGroupResult records as a JSON array: keys in field order, two spaces of
// indentation per level. Texts that are not valid UTF-8 have U+FFFD in place of bad bytes.
class JSONReportWriter final : public TestRunConsumer {
public:
    explicit JSONReportWriter(std::ostream& out);

    bool wantsCountsFirst() const override { return true; }
    void groupStarted(const ColorTestGroupResult& group, const TestCounts& counts) override;
    void taskStarted(const std::string& testSummaryName) override;
    void comparison(const TestColorComparison& result) override;
    void taskFinished() override;
    void groupFinished(const ColorTestGroupResult& group, const TestCounts& counts) override;
    void runFinished(const TestCounts& totals) override;

private:
    void flushIfFull();

    std::ostream& out_;
    std::string buffer_;
    long long groupsWritten_ = 0;
    long long tasksWritten_ = 0;
    long long comparisonsWritten_ = 0;
};

// JUnit XML: <testsuites> with the run's totals, one <testsuite> per group result and
// one <testcase> per comparison, classname "<group>.<task>", name "<foreground> on
// <background> (<variant>)", with a <failure> carrying the message when it failed.
class JUnitReportWriter final : public TestRunConsumer {
public:
    explicit JUnitReportWriter(std::ostream& out);

    bool wantsCountsFirst() const override { return true; }
    void runStarted(const TestCounts& totals) override;
    void groupStarted(const ColorTestGroupResult& group, const TestCounts& counts) override;
    void taskStarted(const std::string& testSummaryName) override;
    void comparison(const TestColorComparison& result) override;
    void groupFinished(const ColorTestGroupResult& group, const TestCounts& counts) override;
    void runFinished(const TestCounts& totals) override;

private:
    void flushIfFull();

    std::ostream& out_;
    std::string buffer_;
    std::string groupName_;
    // The escaped classname attribute of the current task.
    std::string className_;
};

// Appends the text as the value of a double-quoted XML attribute: markup characters and
// line breaks as references, bytes that are not valid UTF-8 or not allowed in XML as U+FFFD.
void appendXMLAttributeText(std::string& out, std::string_view text);

}  // namespace tintwork
