#include "contrast/Tester.h"

#include <ctime>

#include "contrast/ColorTest.h"
#include "model/FileIO.h"

namespace tintwork {

namespace {

int truncatedPercent(long long count, long long total) {
    return static_cast<int>(static_cast<double>(count) / static_cast<double>(total) * 100.0);
}

void collect(const std::vector<ProjectItemPtr>& items, const TestGroup& group, std::vector<ProjectItemPtr>& found) {
    for (const auto& item : items) {
        if (!item) {
            continue;
        }
        if (item->testGroup.get() == &group) {
            found.push_back(item);
        }
        if (item->group) {
            collect(item->group->items, group, found);
        }
    }
}

// Runs every task of a group over its items, counting the outcomes; with a consumer,
// each task and comparison is handed on as well.
TestCounts runTasks(const TestGroup& group, const std::vector<ProjectItemPtr>& testItems,
                    TestRunConsumer* consumer) {
    TestCounts counts;
    for (const auto& task : group.tests) {
        const auto test = makeColorTest(task, testItems);
        if (consumer == nullptr) {
            test->run([&counts](const TestColorComparison& result) { ++(result.passed ? counts.passed : counts.failed); });
            continue;
        }
        consumer->taskStarted(task.name);
        test->run([&counts, consumer](const TestColorComparison& result) {
            ++(result.passed ? counts.passed : counts.failed);
            consumer->comparison(result);
        });
        consumer->taskFinished();
    }
    return counts;
}

ColorTestGroupResult startGroup(const TestGroup& group) {
    ColorTestGroupResult result;
    result.testTime = currentTestTime();
    result.testGroupName = group.name;
    return result;
}

void add(TestCounts& totals, const TestCounts& counts) {
    totals.passed += counts.passed;
    totals.failed += counts.failed;
}

}  // namespace

Tester::Tester(std::shared_ptr<OchreColorProject> documentProject, std::optional<std::filesystem::path> reportFile)
    : project(std::move(documentProject)), exportToFile(std::move(reportFile)) {}

std::vector<ColorTestGroupResult> Tester::run() {
    TestResultCollector collector;
    run(collector);
    if (exportToFile) {
        AtomicFileStream file(*exportToFile);
        writeResultsJSON(file.stream(), collector.results);
        file.commit();
    }
    return std::move(collector.results);
}

void Tester::run(TestRunConsumer& consumer) {
    std::vector<const TestGroup*> groups;
    if (project) {
        for (const auto& group : project->testGroups) {
            if (group && !group->tests.empty()) {
                groups.push_back(group.get());
            }
        }
    }

    TestCounts totals;
    if (!consumer.wantsCountsFirst()) {
        consumer.runStarted(totals);
        for (const TestGroup* group : groups) {
            ColorTestGroupResult result = startGroup(*group);
            consumer.groupStarted(result, TestCounts{});
            const TestCounts counts = runTasks(*group, itemsForTestGroup(*project, *group), &consumer);
            summarise(result, counts.passed, counts.failed);
            add(totals, counts);
            consumer.groupFinished(result, counts);
        }
        consumer.runFinished(totals);
        return;
    }

    // Counted first: one pass that keeps only each group's summary, then the pass that
    // hands the comparisons on. A fatal fault surfaces in the first pass, before any output.
    std::vector<std::pair<ColorTestGroupResult, TestCounts>> summaries;
    summaries.reserve(groups.size());
    for (const TestGroup* group : groups) {
        ColorTestGroupResult result = startGroup(*group);
        const TestCounts counts = runTasks(*group, itemsForTestGroup(*project, *group), nullptr);
        summarise(result, counts.passed, counts.failed);
        add(totals, counts);
        summaries.emplace_back(std::move(result), counts);
    }
    consumer.runStarted(totals);
    for (std::size_t index = 0; index < groups.size(); ++index) {
        const auto& [result, counts] = summaries[index];
        consumer.groupStarted(result, counts);
        runTasks(*groups[index], itemsForTestGroup(*project, *groups[index]), &consumer);
        consumer.groupFinished(result, counts);
    }
    consumer.runFinished(totals);
}

std::vector<ProjectItemPtr> itemsForTestGroup(const OchreColorProject& project, const TestGroup& group) {
    std::vector<ProjectItemPtr> found;
    collect(project.items, group, found);
    return found;
}

void summarise(ColorTestGroupResult& result, long long passed, long long failed) {
    const long long total = passed + failed;
    const int passPercent = total == 0 ? 0 : truncatedPercent(passed, total);
    const int failPercent = total == 0 ? 0 : truncatedPercent(failed, total);
    result.passSummary = std::to_string(passed) + " passed (" + std::to_string(passPercent) + "%)";
    result.failSummary = std::to_string(failed) + " failed (" + std::to_string(failPercent) + "%)";
    result.resultPassPercent = total == 0 ? 100 : passPercent;
}

std::string currentTestTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char buffer[64];
    const std::size_t length = std::strftime(buffer, sizeof buffer, "%b %-d, %Y at %-I:%M:%S %p", &local);
    return std::string(buffer, length);
}

}  // namespace tintwork
