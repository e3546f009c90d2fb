#pragma once
// Runs the test groups of a project: every task of every group through its contrast
// test, with pass and fail summaries per group, optionally written out as a JSON report.

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "contrast/TestResults.h"
#include "contrast/TestRunConsumer.h"
#include "model/Project.h"

namespace tintwork {

class Tester {
public:
    Tester(std::shared_ptr<OchreColorProject> project, std::optional<std::filesystem::path> exportToFile);

    // One result per group that has tasks, in document order. With exportToFile set the
    // results are also written there as JSON; a failed write throws FileError.
    std::vector<ColorTestGroupResult> run();
    // Runs the groups and hands what happens to `consumer`, keeping no comparison itself:
    // every group that has tasks, in document order. exportToFile is not written here.
    void run(TestRunConsumer& consumer);

    std::shared_ptr<OchreColorProject> project;
    std::optional<std::filesystem::path> exportToFile;
};

// The items attached to the group, depth-first in document order.
std::vector<ProjectItemPtr> itemsForTestGroup(const OchreColorProject& project, const TestGroup& group);

// Fills passSummary, failSummary and resultPassPercent from the counts. Percentages are
// truncated, so 2 of 3 is 66. A group whose tasks compared nothing has nothing failed:
// "0 passed (0%)", "0 failed (0%)" and a resultPassPercent of 100.
void summarise(ColorTestGroupResult& result, long long passed, long long failed);

// The current local date and time in medium styles: "Nov 22, 2026 at 10:04:24 PM".
std::string currentTestTime();

}  // namespace tintwork
