#pragma once
// Extracts a small palette from a bitmap: exact pixel colours that cover more than a
// thousandth of the image, most frequent first, without colours close to one kept before.

#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>
#include <vector>

#include "colour/ColorValue.h"
#include "import/ColorImporter.h"
#include "model/Project.h"

namespace tintwork {

// How many pixels have exactly `color`.
struct ColorCount {
    ColorValue color;
    long long count = 0;
};

// The colours of `rgba` (width * height pixels of 8-bit red, green, blue and unpremultiplied
// alpha, row by row) whose alpha is above 0.4 and that cover more than a thousandth of the
// whole image, as sRGB colours with components over 255. Most frequent first; colours of equal
// count in the order they first appear, row by row.
std::vector<ColorCount> countFrequentColors(std::span<const std::uint8_t> rgba, int width, int height);

// Keeps, in order, each colour unless a colour kept before it is near (red, green and blue each
// within 0.1) or both are grey (red within less than 0.03 of green and of blue), so only the
// most frequent of all greys survives, black and white alike.
std::vector<ColorCount> thinOutColors(const std::vector<ColorCount>& sorted);

class ImageImporter : public ColorImporter {
public:
    ImageImporter() = default;

    // Decodes PNG, JPEG, GIF (first frame), BMP, TGA, PSD, HDR and PNM files; grey bitmaps
    // are read as RGB. One item "Color <pixel count>" per kept colour. Anything that does not
    // decode, or an image of more than pixelLimit pixels, throws "Unable to open image file".
    void importColors(const std::filesystem::path& url, OchreColorProjectItem& group) override;
    // The same import from the file's bytes.
    void importBytes(std::string_view bytes, OchreColorProjectItem& group);

    // Images of more pixels are refused from their header, before any pixel is decoded.
    long long pixelLimit = 100'000'000;
    static constexpr std::uintmax_t maxFileBytes = 512u * 1024u * 1024u;
};

}  // namespace tintwork
