#pragma once
// Gathers every distinct colour of a Figma document: the archive's "canvas.fig" holds a
// Kiwi schema and a Kiwi message, decoded whole into a generic tree whose colour-shaped
// values are harvested regardless of layers, pages or visibility.

#include <array>
#include <cstddef>
#include <filesystem>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "import/ColorImporter.h"
#include "import/ImportedColor.h"
#include "import/Kiwi.h"
#include "model/Project.h"

namespace tintwork {

// A node identifier; either part is null when the decoded struct lacks it.
struct GUID : KiwiObject {
    KiwiValue sessionID;
    KiwiValue localID;
};

// A transform, row by row from the decoded "m00", "m01", ... fields.
struct Matrix : KiwiObject {
    std::vector<std::vector<KiwiValue>> values;
};

class FigmaImporter : public ColorImporter {
public:
    FigmaImporter() = default;

    void importColors(const std::filesystem::path& url, OchreColorProjectItem& group) override;
    // The same import from the bytes of a whole document.
    void importArchive(std::string_view archive, OchreColorProjectItem& group);
    // The same import from the bytes of a document's "canvas.fig".
    void importCanvas(std::string_view canvas, OchreColorProjectItem& group);

    // True when a "documentColorProfile" entry, the first found depth first, is "DISPLAY_P3".
    bool findColorProfile(const KiwiDictionary& tree) const;
    // Appends one single colour named "color" per distinct "color" or "backgroundColor"
    // dictionary that has "r", "g", "b" and "a", in Display P3 or sRGB.
    void collectColors(const KiwiDictionary& node, bool isDisplayP3, std::vector<ImportedColor>& list) const;

    // The converters of the decoder: a GUID from its dictionary, a Matrix from its fields.
    static KiwiValue makeGUID(KiwiValue decoded);
    static KiwiValue makeMatrix(KiwiValue decoded);

private:
    // The exact value of a colour, which is what makes a single colour a duplicate.
    struct ColorKey {
        ColorEncoding encoding;
        std::array<double, 4> components;
        friend bool operator==(const ColorKey&, const ColorKey&) = default;
    };
    struct ColorKeyHash {
        std::size_t operator()(const ColorKey& key) const;
    };
    using ColorIndex = std::unordered_set<ColorKey, ColorKeyHash>;
    static ColorKey colorKey(const ColorValue& color);

    void collectColors(const KiwiDictionary& node, bool isDisplayP3, std::vector<ImportedColor>& list,
                       ColorIndex& seen) const;
    // Cuts a chunk out of the canvas and decompresses it, DEFLATE first and zstd second.
    std::string decompressChunk(std::string_view chunk, const char* failure, const char* what);
};

}  // namespace tintwork
