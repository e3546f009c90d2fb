#include "contrast/ColorTest.h"

#include <charconv>
#include <cmath>
#include <unordered_map>
#include <utility>

#include "APCATerms.h"
#include "Rounding.h"
#include "colour/ColorConverter.h"
#include "contrast/APCA.h"
#include "contrast/WCAG.h"

namespace tintwork {

namespace {

// What a comparison needs of one item's colour in one variant. Everything that
// depends on that colour alone is computed here once, not once per pair.
struct PreparedColor {
    ColorValue color;
    SharedText cssText;
    bool opaque = true;
    bool inSRGB = false;
    // The colour in extended sRGB, for mixing a translucent foreground over it.
    std::optional<ColorValue> extended;
    // APCA terms of the colour's own components with the sRGB coefficients (inSRGB only).
    APCATerms sRGBTerms;
    // APCA terms of the colour converted to sRGB, with the Display P3 coefficients.
    std::optional<APCATerms> displayP3Terms;
    double wcagLuminance = 0;
};

struct PreparedItem {
    const OchreColorProjectItem* item = nullptr;
    SharedText name;
    std::optional<PreparedColor> variants[4];
};

// The outcome of one comparison. The message belongs to the test's message cache.
struct Verdict {
    const SharedText* summary = nullptr;
    bool passed = false;
};

std::optional<ColorSpace> spaceOf(const ColorValue& color) {
    switch (color.encoding()) {
        case ColorEncoding::sRGB: return ColorSpace::sRGB;
        case ColorEncoding::sRGBExtended: return ColorSpace::sRGBExtended;
        case ColorEncoding::displayP3: return ColorSpace::displayP3;
        case ColorEncoding::extendedLinearSRGB: return std::nullopt;
    }
    return std::nullopt;
}

const ColorConverterOptions& cssTextOptions() {
    static const ColorConverterOptions options{4, std::string("p3: "), std::nullopt, false};
    return options;
}

std::optional<PreparedColor> prepare(const ColorValue& color) {
    const auto space = spaceOf(color);
    if (!space) {
        return std::nullopt;
    }
    auto text = colorString(color, ColorFormat::cssColor, *space, cssTextOptions()).colorString;
    if (!text) {
        return std::nullopt;
    }
    PreparedColor prepared;
    prepared.color = color;
    prepared.cssText = SharedText(std::move(*text));
    prepared.opaque = color.alpha() >= 1.0;
    prepared.inSRGB = color.encoding() == ColorEncoding::sRGB;
    if (prepared.inSRGB) {
        prepared.sRGBTerms = apcaTerms(apcaLuminanceSRGB(color.red(), color.green(), color.blue()));
    }
    if (const auto clamped = color.converted(ColorEncoding::sRGB)) {
        prepared.displayP3Terms = apcaTerms(apcaLuminanceDisplayP3(clamped->red(), clamped->green(), clamped->blue()));
    }
    prepared.wcagLuminance = wcagRelativeLuminance(color);
    prepared.extended = color.converted(ColorEncoding::sRGBExtended);
    return prepared;
}

PreparedItem prepare(const OchreColorProjectItem& item) {
    PreparedItem prepared;
    prepared.item = &item;
    prepared.name = SharedText(item.name);
    // Only the variants the item has take part: a colour without a dark variant is not
    // compared in dark.
    if (const auto color = item.resolvedColor()) {
        for (std::size_t index = 0; index < 4; ++index) {
            if (const auto variant = color->storedVariant(allColorSources[index])) {
                prepared.variants[index] = prepare(*variant);
            }
        }
    }
    return prepared;
}

bool hasAnyVariant(const PreparedItem& item) {
    for (const auto& variant : item.variants) {
        if (variant) {
            return true;
        }
    }
    return false;
}

// An opaque extended sRGB colour: `front` at `alpha` over `back`, both in extended sRGB.
ColorValue mixedOver(const ColorValue& front, const ColorValue& back, double alpha) {
    const double showing = 1.0 - alpha;
    return ColorValue(ColorEncoding::sRGBExtended, front.red() + (back.red() - front.red()) * showing,
                      front.green() + (back.green() - front.green()) * showing,
                      front.blue() + (back.blue() - front.blue()) * showing, 1.0);
}

// flattenForeground of a translucent foreground, from the prepared extended sRGB forms.
std::optional<ColorValue> flattened(const PreparedColor& foreground, const PreparedColor& background) {
    if (!foreground.extended || !background.extended) {
        return std::nullopt;
    }
    return mixedOver(*foreground.extended, *background.extended, foreground.color.alpha());
}

// Signed Lc of a pair; nullopt when it can't be computed. A flattened foreground is in
// extended sRGB, so its pair always takes the Display P3 coefficients.
std::optional<double> pairLc(const PreparedColor& foreground, const PreparedColor& background) {
    double lc = 0;
    if (!foreground.opaque) {
        const auto mixed = flattened(foreground, background);
        const auto clamped = mixed ? mixed->converted(ColorEncoding::sRGB) : std::nullopt;
        if (!clamped || !background.displayP3Terms) {
            return std::nullopt;
        }
        lc = apcaContrast(apcaTerms(apcaLuminanceDisplayP3(clamped->red(), clamped->green(), clamped->blue())),
                          *background.displayP3Terms);
    } else if (foreground.inSRGB && background.inSRGB) {
        lc = apcaContrast(foreground.sRGBTerms, background.sRGBTerms);
    } else if (foreground.displayP3Terms && background.displayP3Terms) {
        lc = apcaContrast(*foreground.displayP3Terms, *background.displayP3Terms);
    } else {
        return std::nullopt;
    }
    if (std::isnan(lc)) {
        return std::nullopt;
    }
    return lc;
}

// Contrast ratio of a pair (three places); nullopt when it is no positive finite number.
std::optional<double> pairRatio(const PreparedColor& foreground, const PreparedColor& background) {
    double ratio = 0;
    if (foreground.opaque) {
        ratio = wcagContrastRatio(foreground.wcagLuminance, background.wcagLuminance);
    } else {
        const auto mixed = flattened(foreground, background);
        if (!mixed) {
            return std::nullopt;
        }
        ratio = wcagContrastRatio(wcagRelativeLuminance(*mixed), background.wcagLuminance);
    }
    if (!std::isfinite(ratio) || ratio <= 0) {
        return std::nullopt;
    }
    return ratio;
}

// Messages repeat across the pairs of a task (an Lc to one decimal, a required size),
// so each distinct one is built once and shared by its results.
class MessageCache {
public:
    // The key of a printed one-decimal value and its outcome; none for a value too
    // large to key exactly, whose message is then built on its own.
    static std::optional<long long> tenthsKey(double printed, bool passed) {
        if (!(std::fabs(printed) < 1e12)) {
            return std::nullopt;
        }
        return std::llround(printed * 10) * 2 + (passed ? 1 : 0);
    }

    // A message without a key is kept only until the next one is asked for.
    template <typename Make>
    const SharedText& get(std::optional<long long> key, Make&& make) {
        if (!key) {
            unkeyed_ = SharedText(make());
            return unkeyed_;
        }
        return get(*key, std::forward<Make>(make));
    }

    template <typename Make>
    const SharedText& get(long long key, Make&& make) {
        if (key >= 0 && key < directKeys) {
            auto& slot = direct_[static_cast<std::size_t>(key)];
            if (!slot) {
                slot = SharedText(make());
            }
            return *slot;
        }
        auto [entry, inserted] = others_.try_emplace(key);
        if (inserted) {
            entry->second = SharedText(make());
        }
        return entry->second;
    }

private:
    // Keys of ordinary values (an Lc up to 130 in tenths, twice) are looked up directly.
    static constexpr long long directKeys = 4096;
    std::vector<std::optional<SharedText>> direct_ = std::vector<std::optional<SharedText>>(directKeys);
    std::unordered_map<long long, SharedText> others_;
    SharedText unkeyed_;
};

// Forms the pairs of the items, compares each in every variant and hands each result
// to `handle`. `compare` gives an optional Verdict for two prepared colours. The texts
// handed on are borrowed from the prepared items and the message cache.
template <typename Compare>
void comparePairs(const std::vector<ProjectItemPtr>& items, const ComparisonHandler& handle, Compare&& compare) {
    std::vector<PreparedItem> prepared;
    prepared.reserve(items.size());
    for (const auto& item : items) {
        if (item) {
            prepared.push_back(prepare(*item));
        }
    }
    std::vector<const PreparedItem*> foregrounds;
    std::vector<const PreparedItem*> backgrounds;
    for (const auto& item : prepared) {
        if (!hasAnyVariant(item)) {
            continue;
        }
        const TestPosition position = item.item->testPosition;
        if (position == TestPosition::foreground || position == TestPosition::both) {
            foregrounds.push_back(&item);
        }
        if (position == TestPosition::background || position == TestPosition::both) {
            backgrounds.push_back(&item);
        }
    }

    for (std::size_t index = 0; index < 4; ++index) {
        const ColorSource source = allColorSources[index];
        const SharedText sourceCSSId(std::string(colorSourceCSSId(source)));
        for (const PreparedItem* foreground : foregrounds) {
            const auto& foregroundColor = foreground->variants[index];
            if (!foregroundColor) {
                continue;
            }
            for (const PreparedItem* background : backgrounds) {
                const auto& backgroundColor = background->variants[index];
                if (background == foreground || !backgroundColor) {
                    continue;
                }
                const std::optional<Verdict> verdict = compare(*foregroundColor, *backgroundColor);
                if (!verdict) {
                    continue;
                }
                handle(TestColorComparison{foreground->name, foregroundColor->cssText, background->name,
                                           backgroundColor->cssText, source, sourceCSSId, *verdict->summary,
                                           verdict->passed});
            }
        }
    }
}

std::string shortestDecimal(double value) {
    char buffer[64];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    return std::string(buffer, end);
}

}  // namespace

ColorTest::ColorTest(TestTask task, std::vector<ProjectItemPtr> items)
    : test(std::move(task)), testItems(std::move(items)) {}

std::vector<TestColorResult> ColorTest::run() const {
    std::vector<TestColorResult> results;
    run([&results](const TestColorComparison& result) { results.push_back(result.record()); });
    return results;
}

void APCAColorTest::run(const ComparisonHandler& handle) const {
    MessageCache messages;
    if (test.thresholdType == TestThresholdType::textSize) {
        const long long fontSize = test.minFontSize.value_or(18);
        // Without a weight the task asks about regular text.
        const TestFontWeight weight = test.minFontWeight.value_or(TestFontWeight::fourHundred);
        const std::string weightText(testFontWeightWord(weight));
        const int weightValue = testFontWeightValue(weight);
        const SharedText pass("Pass");
        comparePairs(testItems, handle, [&](const PreparedColor& foreground, const PreparedColor& background) {
            const auto lc = pairLc(foreground, background);
            if (!lc) {
                return std::optional<Verdict>();
            }
            const int required = apcaRequiredFontSize(std::fabs(roundedToOnePlace(*lc)), weightValue);
            if (fontSize >= required) {
                return std::optional<Verdict>(Verdict{&pass, true});
            }
            const SharedText& message = messages.get(required, [&] {
                return apcaTextSizeMessage(fontSize, weightText, required, false);
            });
            return std::optional<Verdict>(Verdict{&message, false});
        });
        return;
    }

    const long long minimum = test.threshold.value_or(40);
    comparePairs(testItems, handle, [&](const PreparedColor& foreground, const PreparedColor& background) {
        const auto lc = pairLc(foreground, background);
        if (!lc) {
            return std::optional<Verdict>();
        }
        const double tested = std::fabs(roundedToOnePlace(*lc));
        const bool passed = tested > static_cast<double>(minimum);
        const SharedText& message = messages.get(MessageCache::tenthsKey(tested, passed),
                                                 [&] { return apcaLuminosityMessage(tested, minimum, passed); });
        return std::optional<Verdict>(Verdict{&message, passed});
    });
}

void WCAGColorTest::run(const ComparisonHandler& handle) const {
    MessageCache messages;
    comparePairs(testItems, handle, [&](const PreparedColor& foreground, const PreparedColor& background) {
        const auto ratio = pairRatio(foreground, background);
        if (!ratio) {
            return std::optional<Verdict>();
        }
        const bool passed = wcagLevel(*ratio) < 2;
        const double printed = roundedToOnePlace(*ratio);
        const SharedText& message =
            messages.get(MessageCache::tenthsKey(printed, passed), [&] { return wcagMessage(printed, passed); });
        return std::optional<Verdict>(Verdict{&message, passed});
    });
}

std::unique_ptr<ColorTest> makeColorTest(const TestTask& test, std::vector<ProjectItemPtr> testItems) {
    if (test.taskType == TestTaskType::wcagContrastTest) {
        return std::make_unique<WCAGColorTest>(test, std::move(testItems));
    }
    return std::make_unique<APCAColorTest>(test, std::move(testItems));
}

std::optional<ColorValue> flattenForeground(const ColorValue& foreground, const ColorValue& background) {
    if (foreground.alpha() >= 1.0) {
        return foreground;
    }
    const auto front = foreground.converted(ColorEncoding::sRGBExtended);
    const auto back = background.converted(ColorEncoding::sRGBExtended);
    if (!front || !back) {
        return std::nullopt;
    }
    return mixedOver(*front, *back, foreground.alpha());
}

std::string formatLc(double lc) {
    std::string text = shortestDecimal(lc);
    if (text.find_first_not_of("-0123456789") == std::string::npos) {
        text += ".0";
    }
    return text;
}

std::string formatRatio(double ratio) {
    return shortestDecimal(ratio);
}

std::string apcaLuminosityMessage(double lc, long long minimum, bool passed) {
    if (passed) {
        return "Pass with Lc " + formatLc(lc);
    }
    return "Fail Lc " + formatLc(lc) + " (min " + std::to_string(minimum) + " required)";
}

std::string apcaTextSizeMessage(long long fontSize, std::string_view weight, int requiredSize, bool passed) {
    if (passed) {
        return "Pass";
    }
    std::string message = "Fail text size " + std::to_string(fontSize) + " at weight " + std::string(weight);
    if (requiredSize < 400) {
        message += " (min size " + std::to_string(requiredSize) + ")";
    }
    return message;
}

std::string wcagMessage(double printedRatio, bool passed) {
    if (passed) {
        return "Pass with " + formatRatio(printedRatio) + ":1";
    }
    return "Fail with " + formatRatio(printedRatio) + ":1 (min 3.0 required)";
}

}  // namespace tintwork
