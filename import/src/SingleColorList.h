#pragma once
// The scratch list of an importer that gathers single colours, with the duplicate test
// answered from an index: the same answer isDuplicateColor gives for a single colour
// (equal colour value, whatever the name), without a pass over the list per colour.

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <unordered_set>
#include <vector>

#include "import/ImportedColor.h"

namespace tintwork::importing {

// The most colours one import gathers. Each becomes an item of a few kilobytes, so a file
// of millions of distinct colours would otherwise exhaust memory.
inline constexpr std::size_t maxImportedColors = 65536;

// The diagnostic line of an import that reached maxImportedColors.
inline std::string tooManyColorsLine() {
    return "Only the first " + std::to_string(maxImportedColors) + " colours were read; the rest were left out";
}

class SingleColorList {
public:
    // Appends the colour under `name` unless a colour of the same value is already listed,
    // or the list is full.
    void add(const ColorValue& color, std::string name) {
        if (full()) {
            overflowed_ = true;
            return;
        }
        const auto components = color.rgbaComponents();
        bool comparable = true;
        Key key{static_cast<std::uint64_t>(color.encoding()), 0, 0, 0, 0};
        for (std::size_t i = 0; i < 4; ++i) {
            // A NaN equals nothing, so such a colour is never a duplicate; 0 and -0 are equal.
            if (std::isnan(components[i])) {
                comparable = false;
            }
            const double value = components[i] == 0.0 ? 0.0 : components[i];
            std::memcpy(&key[i + 1], &value, sizeof value);
        }
        if (comparable && !seen_.insert(key).second) {
            return;
        }
        list_.push_back(ImportedColor{{NamedColor(color, std::move(name))}, std::nullopt, ImportedColorType::singleColor});
    }

    const std::vector<ImportedColor>& entries() const { return list_; }
    bool full() const { return list_.size() >= maxImportedColors; }
    // True when a colour was turned away because the list was full.
    bool overflowed() const { return overflowed_; }

private:
    using Key = std::array<std::uint64_t, 5>;
    struct KeyHash {
        std::size_t operator()(const Key& key) const {
            std::uint64_t hash = 0xcbf29ce484222325ULL;
            for (std::uint64_t word : key) {
                hash = (hash ^ word) * 0x100000001b3ULL;
                hash ^= hash >> 29;
            }
            return static_cast<std::size_t>(hash);
        }
    };
    std::vector<ImportedColor> list_;
    std::unordered_set<Key, KeyHash> seen_;
    bool overflowed_ = false;
};

}  // namespace tintwork::importing
