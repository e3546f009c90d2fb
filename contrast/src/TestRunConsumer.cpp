#include "contrast/TestRunConsumer.h"

#include <algorithm>
#include <utility>

namespace tintwork {

TestRunConsumers::TestRunConsumers(std::vector<TestRunConsumer*> consumers) : consumers_(std::move(consumers)) {}

bool TestRunConsumers::wantsCountsFirst() const {
    return std::any_of(consumers_.begin(), consumers_.end(),
                       [](const TestRunConsumer* consumer) { return consumer->wantsCountsFirst(); });
}

void TestRunConsumers::runStarted(const TestCounts& totals) {
    for (TestRunConsumer* consumer : consumers_) {
        consumer->runStarted(totals);
    }
}

void TestRunConsumers::groupStarted(const ColorTestGroupResult& group, const TestCounts& counts) {
    for (TestRunConsumer* consumer : consumers_) {
        consumer->groupStarted(group, counts);
    }
}

void TestRunConsumers::taskStarted(const std::string& testSummaryName) {
    for (TestRunConsumer* consumer : consumers_) {
        consumer->taskStarted(testSummaryName);
    }
}

void TestRunConsumers::comparison(const TestColorComparison& result) {
    for (TestRunConsumer* consumer : consumers_) {
        consumer->comparison(result);
    }
}

void TestRunConsumers::taskFinished() {
    for (TestRunConsumer* consumer : consumers_) {
        consumer->taskFinished();
    }
}

void TestRunConsumers::groupFinished(const ColorTestGroupResult& group, const TestCounts& counts) {
    for (TestRunConsumer* consumer : consumers_) {
        consumer->groupFinished(group, counts);
    }
}

void TestRunConsumers::runFinished(const TestCounts& totals) {
    for (TestRunConsumer* consumer : consumers_) {
        consumer->runFinished(totals);
    }
}

void TestResultCollector::groupStarted(const ColorTestGroupResult& group, const TestCounts& /*counts*/) {
    results.push_back(group);
}

void TestResultCollector::taskStarted(const std::string& testSummaryName) {
    results.back().tests.push_back(ColorTestResult{testSummaryName, {}});
}

void TestResultCollector::comparison(const TestColorComparison& result) {
    results.back().tests.back().testColors.push_back(result.record());
}

void TestResultCollector::groupFinished(const ColorTestGroupResult& group, const TestCounts& /*counts*/) {
    ColorTestGroupResult& kept = results.back();
    kept.passSummary = group.passSummary;
    kept.failSummary = group.failSummary;
    kept.resultPassPercent = group.resultPassPercent;
}

void replayResults(const std::vector<ColorTestGroupResult>& results, TestRunConsumer& consumer) {
    std::vector<TestCounts> groupCounts;
    groupCounts.reserve(results.size());
    TestCounts totals;
    for (const auto& group : results) {
        TestCounts counts;
        for (const auto& test : group.tests) {
            for (const auto& comparison : test.testColors) {
                ++(comparison.passed ? counts.passed : counts.failed);
            }
        }
        totals.passed += counts.passed;
        totals.failed += counts.failed;
        groupCounts.push_back(counts);
    }

    consumer.runStarted(totals);
    for (std::size_t index = 0; index < results.size(); ++index) {
        const ColorTestGroupResult& group = results[index];
        const ColorTestGroupResult heading{group.testGroupName, group.testTime,        group.passSummary,
                                           group.failSummary,   group.resultPassPercent, {}};
        consumer.groupStarted(heading, groupCounts[index]);
        for (const auto& test : group.tests) {
            consumer.taskStarted(test.testSummaryName);
            for (const auto& comparison : test.testColors) {
                consumer.comparison(TestColorComparison::of(comparison));
            }
            consumer.taskFinished();
        }
        consumer.groupFinished(heading, groupCounts[index]);
    }
    consumer.runFinished(totals);
}

}  // namespace tintwork
