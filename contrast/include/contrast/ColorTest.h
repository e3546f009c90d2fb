#pragma once
// The two contrast tests of a test task. Each pairs the foreground items with the
// background items and compares every pair in every appearance variant that both
// colours have, giving one result per comparison that could be made.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "colour/ColorValue.h"
#include "contrast/TestResults.h"
#include "model/BuildConfig.h"
#include "model/Project.h"

namespace tintwork {

// Receives each comparison of a test as it is made.
using ComparisonHandler = std::function<void(const TestColorComparison&)>;

class ColorTest {
public:
    ColorTest(TestTask test, std::vector<ProjectItemPtr> testItems);
    virtual ~ColorTest() = default;

    // Hands each comparison to `handle`, in result order: variants in order, foregrounds
    // outside, backgrounds inside. Holds no result itself.
    virtual void run(const ComparisonHandler& handle) const = 0;
    // Every result, in the same order.
    std::vector<TestColorResult> run() const;

    TestTask test;
    std::vector<ProjectItemPtr> testItems;
};

// APCA lightness contrast against a minimum Lc (luminosity) or a minimum font size (textSize).
class APCAColorTest final : public ColorTest {
public:
    using ColorTest::ColorTest;
    using ColorTest::run;
    void run(const ComparisonHandler& handle) const override;
};

// WCAG 2 contrast ratio; fails below 3.0.
class WCAGColorTest final : public ColorTest {
public:
    using ColorTest::ColorTest;
    using ColorTest::run;
    void run(const ComparisonHandler& handle) const override;
};

// The test that the task's type selects.
std::unique_ptr<ColorTest> makeColorTest(const TestTask& test, std::vector<ProjectItemPtr> testItems);

// The foreground as it shows over the background: an opaque colour as it is; a
// translucent one mixed over the background in extended sRGB and made opaque.
// nullopt when either colour can't be expressed in extended sRGB.
std::optional<ColorValue> flattenForeground(const ColorValue& foreground, const ColorValue& background);

// Shortest decimal text of the value, always with a decimal point: "45.0", "67.3".
std::string formatLc(double lc);
// Shortest decimal text of the value, no trailing ".0": "3", "4.5".
std::string formatRatio(double ratio);

// "Pass with Lc 45.3" or "Fail Lc 40.0 (min 40 required)".
std::string apcaLuminosityMessage(double lc, long long minimum, bool passed);
// "Pass" or "Fail text size 18 at weight 400 (min size 24)"; the bracket only for a
// required size below 400.
std::string apcaTextSizeMessage(long long fontSize, std::string_view weight, int requiredSize, bool passed);
// "Pass with 4.5:1" or "Fail with 2.9:1 (min 3.0 required)"; the ratio as printed.
std::string wcagMessage(double printedRatio, bool passed);

}  // namespace tintwork
