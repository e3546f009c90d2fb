#pragma once
// Helpers shared by the importer tests: the sample folder, temporary files and a
// one-line-per-item text of an imported tree for whole-result comparisons.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "model/Project.h"
#include "model/Uuid.h"

namespace tintwork::testing {

// The folder of real-world sample inputs; empty when it isn't beside the checkout.
inline std::filesystem::path corpusFolder(std::string_view sub) {
    const std::filesystem::path folder = std::filesystem::path(TINTWORK_SHARED_DIR) / "corpus" / sub;
    std::error_code code;
    return std::filesystem::is_directory(folder, code) ? folder : std::filesystem::path();
}

inline ProjectItemPtr newGroupItem(std::string name = "Import") {
    return std::make_shared<OchreColorProjectItem>(std::move(name), newUUID(), OchreColorGroup{});
}

// A fresh empty folder for one test, removed when the object goes.
class ScratchFolder {
public:
    ScratchFolder() {
        path = std::filesystem::temp_directory_path() / ("tintwork-import-" + newUUID());
        std::filesystem::create_directories(path);
    }
    ~ScratchFolder() {
        std::error_code code;
        std::filesystem::remove_all(path, code);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    // Writes `text` to `name` below the folder, creating folders on the way.
    std::filesystem::path write(const std::string& name, std::string_view text) const {
        const std::filesystem::path file = path / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
        return file;
    }

    std::filesystem::path path;
};

// "#RRGGBB" or "#RRGGBBAA" of a colour's components rounded to bytes, with " p3" for a
// Display P3 colour and " ext" for extended sRGB.
inline std::string hexText(const ColorValue& color) {
    const auto byte = [](double value) { return static_cast<int>(std::lround(std::clamp(value, 0.0, 1.0) * 255.0)); };
    char buffer[32];
    if (color.alpha() < 1.0) {
        std::snprintf(buffer, sizeof buffer, "#%02X%02X%02X%02X", byte(color.red()), byte(color.green()),
                      byte(color.blue()), byte(color.alpha()));
    } else {
        std::snprintf(buffer, sizeof buffer, "#%02X%02X%02X", byte(color.red()), byte(color.green()),
                      byte(color.blue()));
    }
    std::string text = buffer;
    if (color.encoding() == ColorEncoding::displayP3) {
        text += " p3";
    } else if (color.encoding() != ColorEncoding::sRGB) {
        text += " ext";
    }
    return text;
}

// One line per item below `group`, indented by depth: "name: #hex" for a colour (with
// " / dark #hex" and so on for its variants), "name [#hex, ...]" for a set with its members'
// names, "name/" for a group.
inline void describe(const OchreColorProjectItem& group, std::string& out, int depth = 0) {
    for (const ProjectItemPtr& child : group.group->items) {
        out += std::string(static_cast<std::size_t>(depth) * 2, ' ') + child->name;
        if (child->color) {
            const ThemeableColor& color = child->color->color;
            out += ": " + hexText(color.lightVariant);
            if (color.lightVariantHighContrast) {
                out += " / hc " + hexText(*color.lightVariantHighContrast);
            }
            if (color.darkVariant) {
                out += " / dark " + hexText(*color.darkVariant);
            }
            if (color.darkVariantHighContrast) {
                out += " / dark hc " + hexText(*color.darkVariantHighContrast);
            }
        } else if (child->colorSet) {
            out += " [";
            for (std::size_t i = 0; i < child->colorSet->colors.size(); ++i) {
                const ThemeableColor& member = child->colorSet->colors[i];
                out += (i > 0 ? ", " : "") + member.name + " " + hexText(member.lightVariant);
            }
            out += "]";
        } else if (child->group) {
            out += "/\n";
            describe(*child, out, depth + 1);
            continue;
        }
        out += "\n";
    }
}

inline std::string describe(const OchreColorProjectItem& group) {
    std::string out;
    describe(group, out);
    return out;
}

}  // namespace tintwork::testing
