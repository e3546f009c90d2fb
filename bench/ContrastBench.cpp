// Runs each kind of contrast task over 1,000 foreground and 1,000 background colours,
// each with four appearance variants: 4 million comparisons (and result records) per
// task. Prints wall time per task and the peak resident memory so far.

#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "contrast/ColorTest.h"
#include "contrast/Tester.h"

namespace {

using namespace tintwork;

constexpr int coloursPerSide = 1000;

long peakMemoryKiB() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

// A spread of colours: sRGB for most, one in eight Display P3 and one in sixteen translucent.
ColorValue sampleColour(int index, int variant) {
    const double red = ((index * 37 + variant * 11) % 101) / 100.0;
    const double green = ((index * 53 + variant * 29) % 97) / 96.0;
    const double blue = ((index * 71 + variant * 43) % 89) / 88.0;
    const double alpha = index % 16 == 5 ? 0.6 : 1.0;
    const ColorEncoding encoding = index % 8 == 3 ? ColorEncoding::displayP3 : ColorEncoding::sRGB;
    return ColorValue(encoding, red, green, blue, alpha);
}

ProjectItemPtr item(const std::string& name, int index, TestPosition position) {
    OchreColorItem payload;
    payload.color.name = name;
    payload.color.lightVariant = sampleColour(index, 0);
    payload.color.lightVariantHighContrast = sampleColour(index, 1);
    payload.color.darkVariant = sampleColour(index, 2);
    payload.color.darkVariantHighContrast = sampleColour(index, 3);
    auto result = std::make_shared<OchreColorProjectItem>(name, name, payload);
    result->testPosition = position;
    return result;
}

std::vector<ProjectItemPtr> sampleItems() {
    std::vector<ProjectItemPtr> items;
    for (int index = 0; index < coloursPerSide; ++index) {
        items.push_back(item("Text " + std::to_string(index), index, TestPosition::foreground));
        items.push_back(item("Surface " + std::to_string(index), index + coloursPerSide, TestPosition::background));
    }
    return items;
}

TestTask sampleTask(const char* name, TestTaskType type, std::optional<TestThresholdType> thresholdType) {
    TestTask task;
    task.name = name;
    task.taskType = type;
    task.thresholdType = thresholdType;
    task.minFontSize = 16;
    task.minFontWeight = TestFontWeight::fourHundred;
    return task;
}

template <typename Work>
void measure(const char* name, Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    const std::size_t count = work();
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    std::printf("%-28s %9zu results  %7.3f s  %6.1f M comparisons/s  peak %7.1f MiB\n", name, count, elapsed.count(),
                static_cast<double>(count) / elapsed.count() / 1e6, static_cast<double>(peakMemoryKiB()) / 1024.0);
}

}  // namespace

int main() {
    const auto items = sampleItems();
    const TestTask tasks[] = {
        sampleTask("APCA luminosity", TestTaskType::apcaContrastTest, TestThresholdType::luminosity),
        sampleTask("APCA text size", TestTaskType::apcaContrastTest, TestThresholdType::textSize),
        sampleTask("WCAG", TestTaskType::wcagContrastTest, std::nullopt),
    };
    std::printf("%d foreground x %d background colours, 4 variants; peak before tests %.1f MiB\n", coloursPerSide,
                coloursPerSide, static_cast<double>(peakMemoryKiB()) / 1024.0);
    for (const auto& task : tasks) {
        measure(task.name.c_str(), [&] { return makeColorTest(task, items)->run().size(); });
    }

    auto project = std::make_shared<OchreColorProject>();
    auto group = std::make_shared<TestGroup>();
    group->name = "Everything";
    group->tests.assign(std::begin(tasks), std::end(tasks));
    project->testGroups.push_back(group);
    for (const auto& entry : items) {
        entry->testGroup = group;
    }
    project->items = items;
    measure("Tester, all three tasks", [&] {
        const auto results = Tester(project, std::nullopt).run();
        std::size_t count = 0;
        for (const auto& test : results.front().tests) {
            count += test.testColors.size();
        }
        return count;
    });
    return 0;
}
