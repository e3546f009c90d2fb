#pragma once
// What a test run reports as it goes: a group starts, its tasks and their comparisons
// follow, the group ends. A consumer keeps what it needs of them (counts, failed
// comparisons, a report file), so no one has to hold every comparison of a run.

#include <string>
#include <vector>

#include "contrast/TestResults.h"

namespace tintwork {

struct TestCounts {
    long long passed = 0;
    long long failed = 0;

    long long total() const { return passed + failed; }
};

class TestRunConsumer {
public:
    virtual ~TestRunConsumer() = default;

    // True when the consumer needs a group's summaries and counts before its comparisons
    // (a report that writes them first). The tester then counts the whole run before it
    // reports anything, at the cost of comparing everything twice.
    virtual bool wantsCountsFirst() const { return false; }

    // The run starts. The totals of all groups are known only when counted first.
    virtual void runStarted(const TestCounts& /*totals*/) {}
    // A group starts: its name and time, and, when counted first, its summaries and counts.
    // `group.tests` is always empty.
    virtual void groupStarted(const ColorTestGroupResult& /*group*/, const TestCounts& /*counts*/) {}
    virtual void taskStarted(const std::string& /*testSummaryName*/) {}
    // One comparison, in result order; its texts are borrowed for the call.
    virtual void comparison(const TestColorComparison& /*result*/) {}
    virtual void taskFinished() {}
    // The group ends, with its summaries and counts; `group.tests` is empty.
    virtual void groupFinished(const ColorTestGroupResult& /*group*/, const TestCounts& /*counts*/) {}
    // The run ends, with the totals of all groups.
    virtual void runFinished(const TestCounts& /*totals*/) {}
};

// Hands every event to each of several consumers, in the order given.
class TestRunConsumers final : public TestRunConsumer {
public:
    explicit TestRunConsumers(std::vector<TestRunConsumer*> consumers);

    bool wantsCountsFirst() const override;
    void runStarted(const TestCounts& totals) override;
    void groupStarted(const ColorTestGroupResult& group, const TestCounts& counts) override;
    void taskStarted(const std::string& testSummaryName) override;
    void comparison(const TestColorComparison& result) override;
    void taskFinished() override;
    void groupFinished(const ColorTestGroupResult& group, const TestCounts& counts) override;
    void runFinished(const TestCounts& totals) override;

private:
    std::vector<TestRunConsumer*> consumers_;
};

// Keeps every record of the run: what Tester::run() returns.
class TestResultCollector final : public TestRunConsumer {
public:
    void groupStarted(const ColorTestGroupResult& group, const TestCounts& counts) override;
    void taskStarted(const std::string& testSummaryName) override;
    void comparison(const TestColorComparison& result) override;
    void groupFinished(const ColorTestGroupResult& group, const TestCounts& counts) override;

    std::vector<ColorTestGroupResult> results;
};

// Hands recorded results to a consumer as if they were being run, with the counts taken
// from their comparisons.
void replayResults(const std::vector<ColorTestGroupResult>& results, TestRunConsumer& consumer);

}  // namespace tintwork
