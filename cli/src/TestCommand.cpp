// The test flow: runs a document's test groups and prints a heading, the pass and fail
// summaries per group and a closing count, optionally the failed comparisons, and
// streams the asked-for report files while the tests run.

#include <algorithm>
#include <filesystem>
#include <memory>
#include <ostream>
#include <vector>

#include "Documents.h"
#include "cli/Commands.h"
#include "cli/Driver.h"
#include "colour/FatalError.h"
#include "contrast/TestReports.h"
#include "contrast/Tester.h"
#include "model/FileIO.h"

namespace tintwork {

namespace {

// The highest exit status a process can report; a count above it must not wrap to a pass.
constexpr long long maximumExitStatus = 255;

// Failure lines are passed on in pieces of this size; without them everything printed
// is a few lines per group and goes out at the end of the run.
constexpr std::size_t flushSize = 1 << 16;

// The console lines of a run. Keeps the group counts and the text still to print, never
// a comparison. Without failure lines, the lines go out only when the run has finished,
// so a run stopped by a fatal error prints nothing. With them the run is counted first
// (the fail summary comes before the failures it counts), and any fatal error has
// stopped it before the first line.
class ConsoleLines final : public TestRunConsumer {
public:
    ConsoleLines(std::ostream& out, bool failures) : out_(out), failures_(failures) {}

    bool wantsCountsFirst() const override { return failures_; }

    void groupStarted(const ColorTestGroupResult& group, const TestCounts& /*counts*/) override {
        if (failures_) {
            summary(group);
        }
    }

    void taskStarted(const std::string& testSummaryName) override { taskName_ = testSummaryName; }

    void comparison(const TestColorComparison& result) override {
        if (!failures_ || result.passed) {
            return;
        }
        text_ += "  ";
        text_ += taskName_;
        text_ += ": ";
        text_ += result.foregroundColorName.str();
        text_ += " on ";
        text_ += result.backgroundColorName.str();
        text_ += " (";
        text_ += result.sourceCSSId.str();
        text_ += "): ";
        text_ += result.testResultSummary.str();
        text_ += '\n';
        if (text_.size() >= flushSize) {
            flush();
        }
    }

    void groupFinished(const ColorTestGroupResult& group, const TestCounts& /*counts*/) override {
        if (!failures_) {
            summary(group);
        }
        // A group passes only at 100 percent.
        ++(group.resultPassPercent <= 99 ? failedGroups_ : passedGroups_);
    }

    void runFinished(const TestCounts& /*totals*/) override {
        text_ += "Testing complete: " + std::to_string(passedGroups_) + " test groups passed, " +
                 std::to_string(failedGroups_) + " test groups failed\n";
        flush();
    }

    int exitStatus() const { return static_cast<int>(std::min(failedGroups_, maximumExitStatus)); }

private:
    // Consecutive groups of one name share one heading; an unnamed first group gets none.
    void summary(const ColorTestGroupResult& group) {
        if (group.testGroupName != lastPrintedName_) {
            text_ += "Test " + group.testGroupName + "\n--------------------------------\n";
            lastPrintedName_ = group.testGroupName;
        }
        text_ += group.passSummary + '\n' + group.failSummary + '\n';
    }

    void flush() {
        out_ << text_;
        out_.flush();
        text_.clear();
    }

    std::ostream& out_;
    const bool failures_;
    std::string text_;
    std::string taskName_;
    std::string lastPrintedName_;
    long long passedGroups_ = 0;
    long long failedGroups_ = 0;
};

// A report file being written: its writer streams into a temporary file that takes the
// target's place only when the run has finished.
struct ReportFile {
    std::unique_ptr<AtomicFileStream> file;
    std::unique_ptr<TestRunConsumer> writer;
};

template <typename Writer>
ReportFile openReport(const std::string& path) {
    ReportFile report;
    report.file = std::make_unique<AtomicFileStream>(std::filesystem::path(path));
    report.writer = std::make_unique<Writer>(report.file->stream());
    return report;
}

}  // namespace

int runTestCommand(const TestCommandOptions& options, std::ostream& out, std::ostream& /*err*/) {
    ConsoleLines console(out, options.failures);
    try {
        const auto project = loadDocument(std::filesystem::path(options.document));
        std::vector<ReportFile> reports;
        if (options.report) {
            reports.push_back(openReport<JSONReportWriter>(*options.report));
        }
        if (options.junit) {
            reports.push_back(openReport<JUnitReportWriter>(*options.junit));
        }

        std::vector<TestRunConsumer*> consumers{&console};
        for (const ReportFile& report : reports) {
            consumers.push_back(report.writer.get());
        }
        TestRunConsumers everyone(std::move(consumers));
        Tester(project, std::nullopt).run(everyone);
        for (ReportFile& report : reports) {
            report.file->commit();
        }
    } catch (const FatalError&) {
        throw;
    } catch (const std::exception& error) {
        // The document or a report file can't be read or written.
        out << "Error testing " << error.what() << '\n';
        return exitFailure;
    }
    return console.exitStatus();
}

}  // namespace tintwork
