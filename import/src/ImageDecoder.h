#pragma once
// Decodes bitmap files into 8-bit RGBA pixels, refusing oversized images before allocating.

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace tintwork::importing {

struct DecodedImage {
    int width = 0;
    int height = 0;
    // width * height pixels of red, green, blue and unpremultiplied alpha, row by row.
    std::unique_ptr<std::uint8_t, void (*)(void*)> pixels{nullptr, nullptr};
};

// The image in `bytes`, or nothing when it does not decode, has no pixels or has more than
// `maxPixels`. Grey and grey-with-alpha bitmaps come out as RGBA; 16-bit and HDR images are
// reduced to 8 bits.
std::optional<DecodedImage> decodeImage(std::string_view bytes, long long maxPixels);

}  // namespace tintwork::importing
