#include "import/CSSFileImporter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <numbers>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <re2/re2.h>

#include "HTMLStyles.h"
#include "SingleColorList.h"
#include "SourceText.h"
#include "colour/ColorSpace.h"
#include "colour/Oklab.h"
#include "import/SetBuilder.h"
#include "model/Uuid.h"

namespace tintwork {

namespace {

using importing::SingleColorList;

// ---------------------------------------------------------------------------
// Patterns

// A CSS number: sign, digits with an optional fraction or a fraction alone, exponent; or
// "none", a component left out, which counts as 0.
#define CSS_NUMBER R"((?:[+-]?(?:\d+(?:\.\d*)?|\.\d+)(?:[eE][+-]?\d+)?|(?i:none)))"
// The declaration a colour stands in: an optional "$" or "--", the captured property name,
// ":" and any value text before the colour within the same declaration.
#define DECLARATION R"((?:(?:\$|--)?(-?[A-Za-z_][\w-]*)\s*:[^;{}:]*?)?)"
// Separators between components: a comma or white space; before alpha "," or "/".
#define COMPONENT_SEPARATOR R"(\s*(?:,\s*|\s+))"
#define ALPHA R"((?:\s*[,/]\s*()" CSS_NUMBER R"(%?))?\s*\))"
#define ANGLE_UNIT R"((?i:(deg|grad|rad|turn))?)"

struct Patterns {
    // Eight or six hexadecimal digits, then four or three; a longer run is no colour.
    RE2 longHex{DECLARATION R"(#([0-9A-Fa-f]{8}|[0-9A-Fa-f]{6})\b)"};
    RE2 shortHex{DECLARATION R"(#([0-9A-Fa-f]{4}|[0-9A-Fa-f]{3})\b)"};
    RE2 colorFunction{DECLARATION R"((?i:color)\(\s*([A-Za-z][\w-]*)\s+()" CSS_NUMBER R"(%?)\s+()" CSS_NUMBER
                          R"(%?)\s+()" CSS_NUMBER R"(%?))" R"((?:\s*/\s*()" CSS_NUMBER R"(%?))?\s*\))"};
    RE2 rgb{DECLARATION R"((?i:rgba?)\(\s*()" CSS_NUMBER R"(%?))" COMPONENT_SEPARATOR "(" CSS_NUMBER
                R"(%?))" COMPONENT_SEPARATOR "(" CSS_NUMBER R"(%?))" ALPHA};
    RE2 hsl{DECLARATION R"((?i:hsla?)\(\s*()" CSS_NUMBER ")" ANGLE_UNIT COMPONENT_SEPARATOR "(" CSS_NUMBER
                ")%?" COMPONENT_SEPARATOR "(" CSS_NUMBER ")%?" ALPHA};
    RE2 oklab{DECLARATION R"((?i:oklab)\(\s*()" CSS_NUMBER R"(%?)\s+()" CSS_NUMBER R"(%?)\s+()" CSS_NUMBER
                  R"(%?))" R"((?:\s*/\s*()" CSS_NUMBER R"(%?))?\s*\))"};
    RE2 oklch{DECLARATION R"((?i:oklch)\(\s*()" CSS_NUMBER R"(%?)\s+()" CSS_NUMBER R"(%?)\s+()" CSS_NUMBER
                  ")" ANGLE_UNIT R"((?:\s*/\s*()" CSS_NUMBER R"(%?))?\s*\))"};
};

#undef CSS_NUMBER
#undef DECLARATION
#undef COMPONENT_SEPARATOR
#undef ALPHA
#undef ANGLE_UNIT

// Compiled once, on first use.
const Patterns& patterns() {
    static const Patterns compiled;
    return compiled;
}

// ---------------------------------------------------------------------------
// Numbers

// A matched number; nullopt when it is not finite as a double.
std::optional<double> number(std::string_view text) {
    if (!text.empty() && text.back() == '%') {
        text.remove_suffix(1);
    }
    if (text.size() == 4 && (text[0] | 0x20) == 'n' && (text[1] | 0x20) == 'o' && (text[2] | 0x20) == 'n' &&
        (text[3] | 0x20) == 'e') {
        return 0.0;
    }
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

bool isPercentage(std::string_view text) {
    return !text.empty() && text.back() == '%';
}

// A number, with a percentage scaled so that 100% gives `full`.
std::optional<double> scaled(std::string_view text, double full) {
    std::optional<double> value = number(text);
    if (value && isPercentage(text)) {
        *value = *value / 100.0 * full;
    }
    return value;
}

double clamped(double value) {
    return std::clamp(value, 0.0, 1.0);
}

// Alpha after "/" or ",": absent is opaque, a percentage or a number above 1 is read over
// 100 (so 50 and 50% both give 0.5), and the result lies in 0..1.
std::optional<double> alphaValue(std::string_view text) {
    if (text.empty()) {
        return 1.0;
    }
    std::optional<double> value = number(text);
    if (!value) {
        return std::nullopt;
    }
    if (isPercentage(text) || *value > 1.0) {
        *value /= 100.0;
    }
    return clamped(*value);
}

// An angle in degrees from a number and its unit (none meaning degrees).
std::optional<double> degrees(std::string_view text, std::string unit) {
    std::optional<double> value = number(text);
    if (!value) {
        return std::nullopt;
    }
    std::transform(unit.begin(), unit.end(), unit.begin(), [](unsigned char c) { return std::tolower(c); });
    if (unit == "rad") {
        return *value * 180.0 / std::numbers::pi;
    }
    if (unit == "grad") {
        return *value * 0.9;
    }
    if (unit == "turn") {
        return *value * 360.0;
    }
    return value;
}

// ---------------------------------------------------------------------------
// Colours

// The sRGB colour of HSL components: hue in degrees, saturation and lightness in 0..1.
ColorValue fromHSL(double hue, double saturation, double lightness, double alpha) {
    hue = std::fmod(hue, 360.0);
    if (hue < 0) {
        hue += 360.0;
    }
    const double chroma = (1.0 - std::fabs(2.0 * lightness - 1.0)) * saturation;
    const auto channel = [&](double n) {
        const double k = std::fmod(n + hue / 30.0, 12.0);
        return lightness - chroma / 2.0 * std::max(-1.0, std::min({k - 3.0, 9.0 - k, 1.0}));
    };
    return ColorValue::sRGB(clamped(channel(0)), clamped(channel(8)), clamped(channel(4)), alpha);
}

// A colour given by OKLAB components, in Display P3 so that wide colours keep their gamut.
std::optional<ColorValue> fromPerceptual(const RawRGBValues& linear) {
    const ColorValue value(ColorEncoding::extendedLinearSRGB, linear.red, linear.green, linear.blue, linear.alpha);
    std::optional<ColorValue> converted = value.converted(ColorEncoding::displayP3);
    if (!converted || !std::isfinite(converted->red()) || !std::isfinite(converted->green()) ||
        !std::isfinite(converted->blue())) {
        return std::nullopt;
    }
    return converted;
}

std::optional<ColorValue> hexColor(std::string_view digits) {
    const auto digit = [&](std::size_t i) {
        const char c = digits[i];
        return c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10;
    };
    std::array<double, 4> channels{0, 0, 0, 1};
    const bool pairs = digits.size() >= 6;
    const std::size_t count = pairs ? digits.size() / 2 : digits.size();
    for (std::size_t i = 0; i < count; ++i) {
        const int value = pairs ? digit(2 * i) * 16 + digit(2 * i + 1) : digit(i) * 17;
        channels[i] = value / 255.0;
    }
    return ColorValue::sRGB(channels[0], channels[1], channels[2], channels[3]);
}

// ---------------------------------------------------------------------------
// Searching

// True when the text after a match runs into "{" before any ";" or "}": the match stands in
// a selector or an at-rule's condition ("#fade {", "@supports (color: color(...)) {"),
// not in a value.
bool inSelector(std::string_view text, std::size_t end) {
    constexpr std::size_t lookahead = 512;
    const std::size_t stop = std::min(text.size(), end + lookahead);
    for (std::size_t i = end; i < stop; ++i) {
        if (text[i] == '{') {
            return true;
        }
        if (text[i] == ';' || text[i] == '}') {
            return false;
        }
    }
    return false;
}

// Runs `pattern` over the whole text; each match gives its declaration name (group 1) and
// the remaining groups to `make`, which returns the colour or nothing.
template <std::size_t Groups, typename Make>
void search(std::string_view text, const RE2& pattern, SingleColorList& list, Make make) {
    std::array<re2::StringPiece, Groups + 1> groups;
    std::size_t at = 0;
    while (at <= text.size() && !list.overflowed() &&
           pattern.Match(re2::StringPiece(text.data(), text.size()), at, text.size(), RE2::UNANCHORED, groups.data(),
                         static_cast<int>(groups.size()))) {
        const std::size_t matchEnd = static_cast<std::size_t>(groups[0].data() - text.data()) + groups[0].size();
        const std::size_t matchStart = static_cast<std::size_t>(groups[0].data() - text.data());
        at = matchEnd > matchStart ? matchEnd : matchStart + 1;
        if (inSelector(text, matchEnd)) {
            continue;
        }
        std::array<std::string_view, Groups - 1> components;
        for (std::size_t i = 0; i + 1 < Groups; ++i) {
            components[i] = std::string_view(groups[i + 2].data(), groups[i + 2].size());
        }
        if (std::optional<ColorValue> color = make(components)) {
            const std::string_view name(groups[1].data(), groups[1].size());
            list.add(*color, name.empty() ? std::string("Color") : std::string(name));
        }
    }
}

using Parts1 = std::array<std::string_view, 1>;
using Parts4 = std::array<std::string_view, 4>;
using Parts5 = std::array<std::string_view, 5>;

void findHexColors(std::string_view text, SingleColorList& list) {
    const auto make = [](const Parts1& parts) { return hexColor(parts[0]); };
    search<2>(text, patterns().longHex, list, make);
    search<2>(text, patterns().shortHex, list, make);
}

void findColorFunctionColors(std::string_view text, SingleColorList& list) {
    search<6>(text, patterns().colorFunction, list, [](const Parts5& parts) -> std::optional<ColorValue> {
        std::string space(parts[0]);
        std::transform(space.begin(), space.end(), space.begin(), [](unsigned char c) { return std::tolower(c); });
        const auto red = scaled(parts[1], 1.0);
        const auto green = scaled(parts[2], 1.0);
        const auto blue = scaled(parts[3], 1.0);
        const auto alpha = alphaValue(parts[4]);
        if (!red || !green || !blue || !alpha) {
            return std::nullopt;
        }
        const ColorEncoding encoding = space == "display-p3" ? ColorEncoding::displayP3 : ColorEncoding::sRGB;
        return ColorValue(encoding, clamped(*red), clamped(*green), clamped(*blue), *alpha);
    });
}

void findRGBColors(std::string_view text, SingleColorList& list) {
    search<5>(text, patterns().rgb, list, [](const Parts4& parts) -> std::optional<ColorValue> {
        const auto red = scaled(parts[0], 255.0);
        const auto green = scaled(parts[1], 255.0);
        const auto blue = scaled(parts[2], 255.0);
        const auto alpha = alphaValue(parts[3]);
        if (!red || !green || !blue || !alpha) {
            return std::nullopt;
        }
        return ColorValue::sRGB(clamped(*red / 255.0), clamped(*green / 255.0), clamped(*blue / 255.0), *alpha);
    });
}

void findHSLColors(std::string_view text, SingleColorList& list) {
    search<6>(text, patterns().hsl, list, [](const Parts5& parts) -> std::optional<ColorValue> {
        const auto hue = degrees(parts[0], std::string(parts[1]));
        const auto saturation = number(parts[2]);
        const auto lightness = number(parts[3]);
        const auto alpha = alphaValue(parts[4]);
        if (!hue || !saturation || !lightness || !alpha) {
            return std::nullopt;
        }
        return fromHSL(*hue, clamped(*saturation / 100.0), clamped(*lightness / 100.0), *alpha);
    });
}

// OKLAB's a and b, and OKLCH's chroma, read 100% as 0.4.
constexpr double perceptualFullRange = 0.4;

void findOklabColors(std::string_view text, SingleColorList& list) {
    search<5>(text, patterns().oklab, list, [](const Parts4& parts) -> std::optional<ColorValue> {
        const auto l = scaled(parts[0], 1.0);
        const auto a = scaled(parts[1], perceptualFullRange);
        const auto b = scaled(parts[2], perceptualFullRange);
        const auto alpha = alphaValue(parts[3]);
        if (!l || !a || !b || !alpha) {
            return std::nullopt;
        }
        return fromPerceptual(fromOKLAB(*l, *a, *b, *alpha));
    });
}

void findOklchColors(std::string_view text, SingleColorList& list) {
    search<6>(text, patterns().oklch, list, [](const Parts5& parts) -> std::optional<ColorValue> {
        const auto lightness = scaled(parts[0], 1.0);
        const auto chroma = scaled(parts[1], perceptualFullRange);
        const auto hue = degrees(parts[2], std::string(parts[3]));
        const auto alpha = alphaValue(parts[4]);
        if (!lightness || !chroma || !hue || !alpha) {
            return std::nullopt;
        }
        return fromPerceptual(fromOKLCH(*lightness, *chroma, *hue * std::numbers::pi / 180.0, *alpha));
    });
}

// The six searches, in the order that decides which form a colour found twice keeps.
void findColors(std::string_view text, SingleColorList& list) {
    findHexColors(text, list);
    findColorFunctionColors(text, list);
    findRGBColors(text, list);
    findHSLColors(text, list);
    findOklabColors(text, list);
    findOklchColors(text, list);
}

// ---------------------------------------------------------------------------
// Colour sets

// A colour's name with one number cut out, and where that number stood.
struct PotentialColorSetKey {
    std::string name;
    std::size_t position = 0;
    friend auto operator<=>(const PotentialColorSetKey&, const PotentialColorSetKey&) = default;
};

struct PotentialColorSetColor {
    std::size_t index = 0;  // position among the group's children
    std::string name;       // the number, as written
};

struct DigitRun {
    std::size_t position;
    std::size_t length;
};

std::vector<DigitRun> digitRuns(const std::string& name) {
    std::vector<DigitRun> runs;
    for (std::size_t i = 0; i < name.size();) {
        if (name[i] >= '0' && name[i] <= '9') {
            std::size_t end = i;
            while (end < name.size() && name[end] >= '0' && name[end] <= '9') {
                ++end;
            }
            runs.push_back({i, end - i});
            i = end;
        } else {
            ++i;
        }
    }
    return runs;
}

// Digits without leading zeros, so that numbers of any length compare by value.
std::string_view significant(std::string_view digits) {
    while (digits.size() > 1 && digits.front() == '0') {
        digits.remove_prefix(1);
    }
    return digits;
}

bool numberLess(std::string_view lhs, std::string_view rhs) {
    lhs = significant(lhs);
    rhs = significant(rhs);
    return lhs.size() != rhs.size() ? lhs.size() < rhs.size() : lhs < rhs;
}

constexpr std::size_t minSetSize = 3;
constexpr std::size_t maxSetSize = 32;
// Longer names, and numbers further left in a name, take no part in families: each key
// copies the name, and a scale's step is never that far in.
constexpr std::size_t maxFamilyNameLength = 256;
constexpr std::size_t maxRunsPerName = 8;

struct PlannedSet {
    std::string name;
    std::vector<PotentialColorSetColor> members;  // in ascending order of their numbers
};

// Splits a family into runs of distinct numbers: the first use of each number, the second,
// and so on. A style sheet that gives a scale twice (hex, then color(display-p3 ...) for wide
// screens) so makes two sets rather than one with every step twice.
std::vector<std::vector<PotentialColorSetColor>> byOccurrence(const std::vector<PotentialColorSetColor>& family) {
    std::vector<std::vector<PotentialColorSetColor>> rounds;
    std::map<std::string, std::size_t, std::less<>> seen;
    for (const PotentialColorSetColor& member : family) {
        const std::size_t occurrence = seen[std::string(significant(member.name))]++;
        if (occurrence == rounds.size()) {
            rounds.emplace_back();
        }
        rounds[occurrence].push_back(member);
    }
    return rounds;
}

}  // namespace

void CSSFileImporter::detectColorSets(OchreColorProjectItem& group) {
    if (!group.group) {
        return;
    }
    std::vector<ProjectItemPtr>& items = group.group->items;
    std::vector<std::vector<DigitRun>> runs(items.size());
    std::size_t mostRuns = 0;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i] && items[i]->itemType == ProjectItemType::color && items[i]->color &&
            items[i]->name.size() <= maxFamilyNameLength) {
            runs[i] = digitRuns(items[i]->name);
            if (runs[i].size() > maxRunsPerName) {
                runs[i].erase(runs[i].begin(), runs[i].end() - maxRunsPerName);
            }
            mostRuns = std::max(mostRuns, runs[i].size());
        }
    }
    // A name with several numbers belongs to the family of its last number when that family
    // qualifies, else of the one before, and so on: the last number is most often the step
    // of a scale (--md-red-a100, --space-2-100).
    std::vector<bool> taken(items.size(), false);
    std::vector<PlannedSet> planned;
    for (std::size_t fromRight = 0; fromRight < mostRuns; ++fromRight) {
        std::map<PotentialColorSetKey, std::vector<PotentialColorSetColor>> families;
        std::vector<PotentialColorSetKey> order;
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (taken[i] || runs[i].size() <= fromRight) {
                continue;
            }
            const DigitRun run = runs[i][runs[i].size() - 1 - fromRight];
            const std::string& name = items[i]->name;
            PotentialColorSetKey key{name.substr(0, run.position) + name.substr(run.position + run.length),
                                     run.position};
            auto [family, added] = families.try_emplace(key);
            if (added) {
                order.push_back(key);
            }
            family->second.push_back({i, name.substr(run.position, run.length)});
        }
        for (const PotentialColorSetKey& key : order) {
            const auto rounds = byOccurrence(families[key]);
            for (std::size_t round = 0; round < rounds.size(); ++round) {
                std::vector<PotentialColorSetColor> members = rounds[round];
                if (members.size() < minSetSize || members.size() > maxSetSize) {
                    continue;
                }
                std::stable_sort(members.begin(), members.end(), [](const auto& lhs, const auto& rhs) {
                    return numberLess(lhs.name, rhs.name);
                });
                std::string setName = key.name;
                if (!setName.empty() && setName.back() == '-') {
                    setName.pop_back();
                }
                if (round > 0) {
                    setName += " " + std::to_string(round + 1);
                }
                for (const PotentialColorSetColor& member : members) {
                    taken[member.index] = true;
                }
                planned.push_back({std::move(setName), std::move(members)});
            }
        }
    }
    if (planned.empty()) {
        return;
    }
    // Each set takes the place of its first member in the group; the other members go.
    std::vector<ProjectItemPtr> replacement(items.size());
    for (PlannedSet& set : planned) {
        std::vector<ThemeableColor> colors;
        std::size_t first = items.size();
        for (const PotentialColorSetColor& member : set.members) {
            ThemeableColor color;
            color.uuid = newUUID();
            color.name = member.name;
            color.lightVariant = items[member.index]->color->color.lightVariant;
            colors.push_back(std::move(color));
            first = std::min(first, member.index);
        }
        replacement[first] = std::make_shared<OchreColorProjectItem>(set.name, newUUID(), makeColorSet(colors));
    }
    std::vector<ProjectItemPtr> rebuilt;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (replacement[i]) {
            rebuilt.push_back(std::move(replacement[i]));
        } else if (!taken[i]) {
            rebuilt.push_back(std::move(items[i]));
        }
    }
    items = std::move(rebuilt);
}

void CSSFileImporter::importText(std::string_view text, bool asHTML, OchreColorProjectItem& group) {
    SingleColorList list;
    std::optional<importing::PageStyles> styles;
    if (asHTML) {
        styles = importing::pageStyles(text);
        if (!styles) {
            printDiagnostic("Parsing as HTML failed, falling back to full text parse instead");
        }
    }
    if (styles) {
        if (styles->styleElements.empty() && styles->styleAttributes.empty()) {
            printDiagnostic("The page has no style elements or style attributes, so no colours were read from it");
        }
        for (const std::string& style : styles->styleElements) {
            findColors(style, list);
        }
        for (const std::string& style : styles->styleAttributes) {
            findColors(style, list);
        }
    } else {
        findColors(text, list);
    }
    if (list.overflowed()) {
        printDiagnostic(importing::tooManyColorsLine());
    }
    addImportedColors(list.entries(), group);
    detectColorSets(group);
}

void CSSFileImporter::importColors(const std::filesystem::path& url, OchreColorProjectItem& group) {
    std::string text;
    try {
        text = importing::readSourceFile(url);
    } catch (const std::runtime_error&) {  // unreadable, a folder, or too large
        throw DocumentColorParsingError("Unable to read document");
    }
    if (!importing::isValidUTF8(text)) {
        throw DocumentColorParsingError("Unable to read document");
    }
    std::string extension = url.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return std::tolower(c); });
    importText(text, extension == ".html", group);
}

}  // namespace tintwork
