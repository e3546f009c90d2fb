// Runs each kind of contrast task over 1,000 foreground and 1,000 background colours,
// each with four appearance variants: 4 million comparisons per task. Prints wall time
// and the peak resident memory so far for: each task counted without records, a test
// group run counted (what the console prints), the same run writing the JSON report,
// the JUnit report and both, and last the run that keeps every record.

#include <sys/resource.h>

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "contrast/ColorTest.h"
#include "contrast/TestReports.h"
#include "contrast/Tester.h"
#include "model/FileIO.h"

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

// Processor time (user and system) of this process so far, in seconds: on a shared
// machine it says more than the wall time.
double processorSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    auto seconds = [](const timeval& time) { return static_cast<double>(time.tv_sec) + time.tv_usec / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

struct Timing {
    double wall = 0;
    double processor = 0;
};

template <typename Work>
Timing measure(const char* name, Work&& work) {
    const double processorStart = processorSeconds();
    const auto start = std::chrono::steady_clock::now();
    const std::size_t count = work();
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    const Timing timing{elapsed.count(), processorSeconds() - processorStart};
    std::printf("%-34s %9zu results  %7.3f s wall  %7.3f s cpu  %6.1f M/s  peak %7.1f MiB\n", name, count, timing.wall,
                timing.processor, static_cast<double>(count) / timing.processor / 1e6,
                static_cast<double>(peakMemoryKiB()) / 1024.0);
    return timing;
}

// Counts the comparisons of a run, as the console does, keeping none of them.
class Counter final : public TestRunConsumer {
public:
    void runFinished(const TestCounts& totals) override { count = static_cast<std::size_t>(totals.total()); }
    std::size_t count = 0;
};

std::shared_ptr<OchreColorProject> projectOf(const std::vector<ProjectItemPtr>& items, std::vector<TestTask> tasks) {
    auto project = std::make_shared<OchreColorProject>();
    auto group = std::make_shared<TestGroup>();
    group->name = "Everything";
    group->tests = std::move(tasks);
    project->testGroups.push_back(group);
    for (const auto& entry : items) {
        entry->testGroup = group;
    }
    project->items = items;
    return project;
}

// Runs the project counted, with the given report writers streaming into files of `folder`.
std::size_t runWithReports(const std::shared_ptr<OchreColorProject>& project, const std::filesystem::path& folder,
                           bool json, bool junit) {
    Counter counter;
    std::vector<TestRunConsumer*> consumers{&counter};
    std::unique_ptr<AtomicFileStream> jsonFile;
    std::unique_ptr<AtomicFileStream> junitFile;
    std::unique_ptr<JSONReportWriter> jsonWriter;
    std::unique_ptr<JUnitReportWriter> junitWriter;
    if (json) {
        jsonFile = std::make_unique<AtomicFileStream>(folder / "report.json");
        jsonWriter = std::make_unique<JSONReportWriter>(jsonFile->stream());
        consumers.push_back(jsonWriter.get());
    }
    if (junit) {
        junitFile = std::make_unique<AtomicFileStream>(folder / "report.xml");
        junitWriter = std::make_unique<JUnitReportWriter>(junitFile->stream());
        consumers.push_back(junitWriter.get());
    }
    TestRunConsumers everyone(std::move(consumers));
    Tester(project, std::nullopt).run(everyone);
    for (auto* file : {jsonFile.get(), junitFile.get()}) {
        if (file != nullptr) {
            file->commit();
        }
    }
    return counter.count;
}

std::uintmax_t sizeOrZero(const std::filesystem::path& path) {
    std::error_code code;
    const auto size = std::filesystem::file_size(path, code);
    return code ? 0 : size;
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
        measure(task.name.c_str(), [&] {
            std::size_t count = 0;
            makeColorTest(task, items)->run([&count](const TestColorComparison&) { ++count; });
            return count;
        });
    }

    // One task (4 million comparisons) for the report comparison, since a report of a
    // comparison is some 360 bytes of JSON.
    const auto folder = std::filesystem::temp_directory_path() / ("contrast-bench-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    const auto one = projectOf(items, {tasks[0]});
    const Timing plain = measure("Tester, one task, counted", [&] {
        Counter counter;
        Tester(one, std::nullopt).run(counter);
        return counter.count;
    });
    const Timing json = measure("  with --report", [&] { return runWithReports(one, folder, true, false); });
    const auto jsonBytes = sizeOrZero(folder / "report.json");
    std::filesystem::remove(folder / "report.json");
    const Timing junit = measure("  with --junit", [&] { return runWithReports(one, folder, false, true); });
    const auto junitBytes = sizeOrZero(folder / "report.xml");
    std::filesystem::remove(folder / "report.xml");
    const Timing both = measure("  with both", [&] { return runWithReports(one, folder, true, true); });
    std::filesystem::remove_all(folder);
    auto ratio = [&plain](const Timing& timing) { return timing.processor / plain.processor; };
    std::printf("cpu time over the counted run: --report %.2fx (%.0f MB), --junit %.2fx (%.0f MB), both %.2fx\n",
                ratio(json), static_cast<double>(jsonBytes) / 1e6, ratio(junit), static_cast<double>(junitBytes) / 1e6,
                ratio(both));

    const auto all = projectOf(items, std::vector<TestTask>(std::begin(tasks), std::end(tasks)));
    measure("Tester, all three tasks, counted", [&] {
        Counter counter;
        Tester(all, std::nullopt).run(counter);
        return counter.count;
    });
    // Last: the peak memory from here on is that of the records kept.
    measure("Tester, all three tasks, records", [&] {
        const auto results = Tester(all, std::nullopt).run();
        std::size_t count = 0;
        for (const auto& test : results.front().tests) {
            count += test.testColors.size();
        }
        return count;
    });
    return 0;
}
