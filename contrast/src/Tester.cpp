#include "contrast/Tester.h"

#include <ctime>
#include <fstream>
#include <functional>
#include <unordered_map>

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

// Every test group's items at once, in the order collect gives them: one walk of
// the tree instead of one per group.
void collectAll(const std::vector<ProjectItemPtr>& items,
                std::unordered_map<const TestGroup*, std::vector<ProjectItemPtr>>& found) {
    for (const auto& item : items) {
        if (!item) {
            continue;
        }
        if (item->testGroup) {
            found[item->testGroup.get()].push_back(item);
        }
        if (item->group) {
            collectAll(item->group->items, found);
        }
    }
}

void writeReport(const std::filesystem::path& path, const std::vector<ColorTestGroupResult>& results) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (out) {
        writeResultsJSON(out, results);
        out.flush();
    }
    if (!out) {
        throw FileError("The test report could not be written to " + path.string());
    }
}

}  // namespace

Tester::Tester(std::shared_ptr<OchreColorProject> documentProject, std::optional<std::filesystem::path> reportFile)
    : project(std::move(documentProject)), exportToFile(std::move(reportFile)) {}

std::vector<ColorTestGroupResult> Tester::run() {
    std::vector<ColorTestGroupResult> results;
    if (!project) {
        return results;
    }
    std::unordered_map<const TestGroup*, std::vector<ProjectItemPtr>> itemsByGroup;
    collectAll(project->items, itemsByGroup);
    for (const auto& group : project->testGroups) {
        if (!group || group->tests.empty()) {
            continue;
        }
        ColorTestGroupResult result;
        result.testTime = currentTestTime();
        result.testGroupName = group->name;
        const std::vector<ProjectItemPtr>& testItems = itemsByGroup[group.get()];
        long long passed = 0;
        long long failed = 0;
        for (const auto& task : group->tests) {
            ColorTestResult taskResult{task.name, makeColorTest(task, testItems)->run()};
            for (const auto& comparison : taskResult.testColors) {
                ++(comparison.passed ? passed : failed);
            }
            result.tests.push_back(std::move(taskResult));
        }
        summarise(result, passed, failed);
        results.push_back(std::move(result));
    }
    if (exportToFile) {
        writeReport(*exportToFile, results);
    }
    return results;
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
