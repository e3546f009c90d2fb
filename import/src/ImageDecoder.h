#pragma once
// Decodes bitmap files into 8-bit pixels, refusing oversized images before allocating.

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace tintwork::importing {

struct DecodedImage {
    int width = 0;
    int height = 0;
    // 1 (grey), 2 (grey, alpha), 3 (RGB) or 4 (RGBA, unpremultiplied).
    int channels = 4;
    // width * height pixels of `channels` bytes each, row by row.
    std::unique_ptr<std::uint8_t, void (*)(void*)> pixels{nullptr, nullptr};
};

// The image in `bytes`, or nothing when it does not decode, has no pixels or has more than
// `maxPixels`. Pixels keep the file's channels; 16-bit and HDR images are reduced to 8 bits.
std::optional<DecodedImage> decodeImage(std::string_view bytes, long long maxPixels);

}  // namespace tintwork::importing
