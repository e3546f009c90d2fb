#pragma once
// The scratch list of an importer that gathers single colours, with the duplicate test
// answered from an index: the same answer isDuplicateColor gives for a single colour
// (equal colour value, whatever the name), without a pass over the list per colour.

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <unordered_set>
#include <string>
#include <vector>

#include "import/ImportedColor.h"

namespace tintwork::importing {

class SingleColorList {
public:
    // Appends the colour under `name` unless a colour of the same value is already listed.
    void add(const ColorValue& color, std::string name) {
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
};

}  // namespace tintwork::importing
