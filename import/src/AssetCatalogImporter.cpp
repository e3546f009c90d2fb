#include "import/AssetCatalogImporter.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <functional>
#include <map>
#include <cmath>
#include <optional>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#include <nlohmann/json.hpp>

#include "ImportHelpers.h"
#include "SourceText.h"
#include "model/FileIO.h"
#include "model/Uuid.h"

namespace tintwork {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

constexpr std::string_view colorSetSuffix = ".colorset";
// A Contents.json is a few hundred bytes; anything far larger is not one.
constexpr std::uintmax_t maxContentsBytes = 1024u * 1024u;

// ---------------------------------------------------------------------------
// Contents.json records, as the catalog's writer stores them

struct ColorEntry {
    std::string idiom;
    std::string colorSpace;
    std::map<std::string, std::string> components;  // the text components by key
    bool dark = false;
    bool highContrast = false;
};

struct Contents {
    std::optional<bool> providesNamespace;
    std::vector<ColorEntry> colors;
};

std::string stringField(const Json& object, const char* key) {
    auto found = object.find(key);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

// Reads the colour entries of a record; an entry that is not a colour is left out.
void readColorEntries(const Json& colors, std::vector<ColorEntry>& out) {
    for (const Json& entry : colors) {
        if (!entry.is_object()) {
            continue;
        }
        auto color = entry.find("color");
        if (color == entry.end() || !color->is_object()) {
            continue;
        }
        auto components = color->find("components");
        if (components == color->end() || !components->is_object()) {
            continue;
        }
        ColorEntry read;
        read.idiom = stringField(entry, "idiom");
        read.colorSpace = stringField(*color, "color-space");
        for (const auto& [key, value] : components->items()) {
            if (value.is_string()) {
                read.components[key] = value.get<std::string>();
            }
        }
        auto appearances = entry.find("appearances");
        if (appearances != entry.end() && appearances->is_array()) {
            for (const Json& appearance : *appearances) {
                if (!appearance.is_object()) {
                    continue;
                }
                const std::string kind = stringField(appearance, "appearance");
                const std::string value = stringField(appearance, "value");
                read.dark = read.dark || (kind == "luminosity" && value == "dark");
                read.highContrast = read.highContrast || (kind == "contrast" && value == "high");
            }
        }
        out.push_back(read);
    }
}

// ---------------------------------------------------------------------------
// Components

// A decimal number taking the whole text (no white space, no sign "+"), finite.
std::optional<double> decimal(std::string_view text) {
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

// A colour channel as the catalog editor writes it: a decimal with a point ("0.302") as it
// stands, a whole number ("77") or hexadecimal ("0x4D") as an 8-bit value over 255.
std::optional<double> channel(std::string_view text) {
    if (text.size() > 2 && text.size() <= 4 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        unsigned value = 0;
        const auto [end, error] = std::from_chars(text.data() + 2, text.data() + text.size(), value, 16);
        if (error != std::errc() || end != text.data() + text.size()) {
            return std::nullopt;
        }
        return value / 255.0;
    }
    const bool wholeNumber = !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return c >= '0' && c <= '9';
    });
    std::optional<double> value = decimal(text);
    if (value && wholeNumber) {
        *value /= 255.0;
    }
    return value;
}

std::optional<std::string_view> component(const ColorEntry& entry, const char* key) {
    auto found = entry.components.find(key);
    if (found == entry.components.end()) {
        return std::nullopt;
    }
    return std::string_view(found->second);
}

// The sRGB value of a grey with a gamma of 2.2.
double greyToSRGB(double white) {
    const double linear = std::copysign(std::pow(std::fabs(white), 2.2), white);
    const double magnitude = std::fabs(linear);
    const double encoded = magnitude <= 0.0031308 ? 12.92 * magnitude : 1.055 * std::pow(magnitude, 1.0 / 2.4) - 0.055;
    return std::copysign(encoded, linear);
}

// The colour of one entry; nullopt for an unknown colour space or a component that doesn't read.
std::optional<ColorValue> entryColor(const ColorEntry& entry) {
    double alpha = 1.0;
    if (auto text = component(entry, "alpha")) {
        std::optional<double> value = decimal(*text);
        if (!value) {
            return std::nullopt;
        }
        alpha = std::clamp(*value, 0.0, 1.0);
    }
    if (entry.colorSpace == "gray-gamma-22" || entry.colorSpace == "extended-gray") {
        auto text = component(entry, "white");
        std::optional<double> white = text ? channel(*text) : std::nullopt;
        if (!white) {
            return std::nullopt;
        }
        const double grey = greyToSRGB(*white);
        return entry.colorSpace == "extended-gray" ? ColorValue(ColorEncoding::sRGBExtended, grey, grey, grey, alpha)
                                                   : ColorValue::sRGB(grey, grey, grey, alpha);
    }
    std::optional<ColorEncoding> encoding;
    if (entry.colorSpace == "srgb") {
        encoding = ColorEncoding::sRGB;
    } else if (entry.colorSpace == "display-p3") {
        encoding = ColorEncoding::displayP3;
    } else if (entry.colorSpace == "extended-srgb") {
        encoding = ColorEncoding::sRGBExtended;
    } else if (entry.colorSpace == "extended-linear-srgb") {
        encoding = ColorEncoding::extendedLinearSRGB;
    }
    if (!encoding) {
        return std::nullopt;
    }
    std::array<double, 3> rgb{};
    const char* keys[] = {"red", "green", "blue"};
    for (std::size_t i = 0; i < rgb.size(); ++i) {
        auto text = component(entry, keys[i]);
        std::optional<double> value = text ? channel(*text) : std::nullopt;
        if (!value) {
            return std::nullopt;
        }
        rgb[i] = *value;
    }
    const ColorValue color(*encoding, rgb[0], rgb[1], rgb[2], alpha);
    if (*encoding == ColorEncoding::extendedLinearSRGB) {
        // Documents keep colours in the encoded spaces.
        return color.converted(ColorEncoding::sRGBExtended);
    }
    return color;
}

// ---------------------------------------------------------------------------
// Items

AppearanceType appearanceOf(const ThemeableColor& color) {
    const bool dark = color.darkVariant || color.darkVariantHighContrast;
    const bool highContrast = color.lightVariantHighContrast || color.darkVariantHighContrast;
    if (dark && highContrast) {
        return AppearanceType::lightDarkHighContrast;
    }
    if (dark) {
        return AppearanceType::lightAndDark;
    }
    return highContrast ? AppearanceType::highContrast : AppearanceType::none;
}

// A colour item of a colour set's entries, or null when none of them reads.
ProjectItemPtr colorItem(const std::string& name, const Contents& contents) {
    // One value per appearance slot: the first entry that reads, unless a later entry for
    // every device ("universal") stands where a device-specific one did.
    struct Slot {
        std::optional<ColorValue> value;
        bool universal = false;
    };
    std::array<Slot, 4> slots;  // light, light high contrast, dark, dark high contrast
    std::optional<ColorValue> firstRead;
    for (const ColorEntry& entry : contents.colors) {
        std::optional<ColorValue> value = entryColor(entry);
        if (!value) {
            continue;
        }
        if (!firstRead) {
            firstRead = value;
        }
        const std::size_t index = (entry.dark ? 2 : 0) + (entry.highContrast ? 1 : 0);
        const bool universal = entry.idiom.empty() || entry.idiom == "universal";
        if (!slots[index].value || (universal && !slots[index].universal)) {
            slots[index] = {value, universal};
        }
    }
    if (!firstRead) {
        return nullptr;
    }
    ThemeableColor color;
    color.name = name;
    color.uuid = newUUID();
    color.lightVariant = slots[0].value.value_or(*firstRead);
    color.lightVariantHighContrast = slots[1].value;
    color.darkVariant = slots[2].value;
    color.darkVariantHighContrast = slots[3].value;
    OchreColorItem payload;
    payload.appearanceType = appearanceOf(color);
    payload.autoContrastAmount = defaultAutoContrastAmount;
    payload.colorSpace = importing::spaceOfEncoding(color.lightVariant.encoding());
    payload.color = std::move(color);
    return std::make_shared<OchreColorProjectItem>(name, newUUID(), std::move(payload));
}

// ---------------------------------------------------------------------------
// Walking the folders

// Orders names as a person would: letters regardless of case, runs of digits by their value
// (blue100 before blue1000), then byte order to break ties.
bool naturalLess(const std::string& lhs, const std::string& rhs) {
    std::size_t i = 0;
    std::size_t j = 0;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    while (i < lhs.size() && j < rhs.size()) {
        if (isDigit(lhs[i]) && isDigit(rhs[j])) {
            std::size_t endI = i;
            std::size_t endJ = j;
            while (endI < lhs.size() && isDigit(lhs[endI])) {
                ++endI;
            }
            while (endJ < rhs.size() && isDigit(rhs[endJ])) {
                ++endJ;
            }
            std::string_view left(lhs.data() + i, endI - i);
            std::string_view right(rhs.data() + j, endJ - j);
            while (left.size() > 1 && left.front() == '0') {
                left.remove_prefix(1);
            }
            while (right.size() > 1 && right.front() == '0') {
                right.remove_prefix(1);
            }
            if (left.size() != right.size()) {
                return left.size() < right.size();
            }
            if (left != right) {
                return left < right;
            }
            i = endI;
            j = endJ;
            continue;
        }
        const auto folded = [](char c) { return static_cast<unsigned char>(std::tolower(static_cast<unsigned char>(c))); };
        if (folded(lhs[i]) != folded(rhs[j])) {
            return folded(lhs[i]) < folded(rhs[j]);
        }
        ++i;
        ++j;
    }
    if ((lhs.size() - i) != (rhs.size() - j)) {
        return (lhs.size() - i) < (rhs.size() - j);
    }
    return lhs < rhs;
}

class CatalogWalk {
public:
    CatalogWalk(fs::path root, std::function<void(std::string_view)> diagnostic)
        : root_(std::move(root)), diagnostic_(std::move(diagnostic)) {
        visited_.insert(root_);
    }

    void readFolder(const fs::path& folder, OchreColorProjectItem& parent, int depth) {
        if (!parent.group) {
            return;
        }
        for (const fs::path& entry : subfolders(folder)) {
            if (++foldersRead_ > maxFolders) {
                if (!countNoted_) {
                    countNoted_ = true;
                    diagnostic_("Only the first " + std::to_string(maxFolders) +
                                " folders of the asset catalog were read; the rest were left out");
                }
                return;
            }
            std::error_code code;
            const fs::path real = fs::canonical(entry, code);
            if (code || !visited_.insert(real).second) {
                continue;  // gone, or a folder already read through another link
            }
            const std::string lastComponent = importing::wellFormedUTF8(entry.filename().string());
            const Contents contents = readContents(entry / "Contents.json");
            if (lastComponent.size() >= colorSetSuffix.size() &&
                lastComponent.compare(lastComponent.size() - colorSetSuffix.size(), colorSetSuffix.size(),
                                      colorSetSuffix) == 0) {
                const std::string name = lastComponent.substr(0, lastComponent.size() - colorSetSuffix.size());
                if (ProjectItemPtr item = colorItem(name, contents)) {
                    parent.group->items.push_back(std::move(item));
                }
                continue;
            }
            if (depth >= AssetCatalogImporter::maxDepth) {
                if (!depthNoted_) {
                    depthNoted_ = true;
                    diagnostic_("Folders nested more than " + std::to_string(AssetCatalogImporter::maxDepth) +
                                " levels deep in the asset catalog were left out");
                }
                continue;
            }
            OchreColorGroup payload;
            payload.providesNamespace = contents.providesNamespace.value_or(false);
            auto group = std::make_shared<OchreColorProjectItem>(lastComponent, newUUID(), std::move(payload));
            readFolder(entry, *group, depth + 1);
            parent.group->items.push_back(std::move(group));
        }
    }

private:
    // True when `path` resolves to a place inside the catalog.
    bool insideCatalog(const fs::path& path) const {
        std::error_code code;
        const fs::path real = fs::canonical(path, code);
        if (code) {
            return false;
        }
        const fs::path relative = real.lexically_relative(root_);
        return !relative.empty() && *relative.begin() != "..";
    }

    // The folder's subfolders in natural order of their names; a link counts only when it
    // leads to a folder inside the catalog. A folder that can't be listed has none.
    std::vector<fs::path> subfolders(const fs::path& folder) const {
        std::vector<fs::path> found;
        std::error_code code;
        fs::directory_iterator entries(folder, code);
        if (code) {
            return found;
        }
        for (auto it = entries; it != fs::directory_iterator(); it.increment(code)) {
            if (code) {
                break;
            }
            const fs::directory_entry& entry = *it;
            std::error_code statusCode;
            if (entry.is_symlink(statusCode) && !insideCatalog(entry.path())) {
                continue;
            }
            if (entry.is_directory(statusCode)) {
                found.push_back(entry.path());
            }
        }
        std::sort(found.begin(), found.end(), [](const fs::path& lhs, const fs::path& rhs) {
            return naturalLess(lhs.filename().string(), rhs.filename().string());
        });
        return found;
    }

    // The folder's contents record; an empty one when the file is missing, outside the
    // catalog, too large or not a record.
    Contents readContents(const fs::path& file) const {
        Contents contents;
        std::error_code code;
        if (!fs::is_regular_file(file, code) || (fs::is_symlink(file, code) && !insideCatalog(file))) {
            return contents;
        }
        std::string text;
        try {
            text = importing::readSourceFile(file, maxContentsBytes);
        } catch (const std::runtime_error&) {
            return contents;
        }
        const Json document = Json::parse(text, nullptr, false);
        if (document.is_discarded() || !document.is_object()) {
            return contents;
        }
        auto properties = document.find("properties");
        if (properties != document.end() && properties->is_object()) {
            auto namespaced = properties->find("provides-namespace");
            if (namespaced != properties->end() && namespaced->is_boolean()) {
                contents.providesNamespace = namespaced->get<bool>();
            }
        }
        auto colors = document.find("colors");
        if (colors != document.end() && colors->is_array()) {
            readColorEntries(*colors, contents.colors);
        }
        return contents;
    }

    fs::path root_;
    std::function<void(std::string_view)> diagnostic_;
    std::set<fs::path> visited_;
    bool depthNoted_ = false;
    // Every folder becomes an item of a few kilobytes; a catalog beyond this many is no
    // catalog a person made, and reading it whole could exhaust memory.
    static constexpr std::size_t maxFolders = 65536;
    std::size_t foldersRead_ = 0;
    bool countNoted_ = false;
};

}  // namespace

void AssetCatalogImporter::importColors(const std::filesystem::path& url, OchreColorProjectItem& group) {
    std::error_code code;
    const std::string shown = "\u201c" + importing::wellFormedUTF8(url.filename().empty() ? url.parent_path().filename().string()
                                                                                          : url.filename().string()) +
                              "\u201d";
    if (!fs::exists(url, code)) {
        throw DocumentColorParsingError("The asset catalog " + shown + " couldn\u2019t be opened because there is no such folder.");
    }
    if (!fs::is_directory(url, code)) {
        throw DocumentColorParsingError("The asset catalog " + shown + " couldn\u2019t be opened because it isn\u2019t a folder.");
    }
    const fs::path root = fs::canonical(url, code);
    if (code) {
        throw DocumentColorParsingError("The asset catalog " + shown + " couldn\u2019t be opened.");
    }
    CatalogWalk walk(root, [this](std::string_view line) { printDiagnostic(line); });
    walk.readFolder(root, group, 0);
}

}  // namespace tintwork
