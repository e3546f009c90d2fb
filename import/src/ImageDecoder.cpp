#include "ImageDecoder.h"

#include <climits>
#include <cstdlib>

// The decoder's functions stay private to this file, so no other part of the program can
// collide with them.
#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#define STBI_NO_STDIO
#include <stb/stb_image.h>

namespace tintwork::importing {

namespace {

// Grey becomes red, green and blue alike; a missing alpha is opaque.
void widenToRGBA(const stbi_uc* source, int channels, std::size_t pixelCount, std::uint8_t* target) {
    for (std::size_t i = 0; i < pixelCount; ++i, source += channels, target += 4) {
        const bool grey = channels < 3;
        target[0] = source[0];
        target[1] = grey ? source[0] : source[1];
        target[2] = grey ? source[0] : source[2];
        target[3] = channels == 2 ? source[1] : (channels == 4 ? source[3] : 255);
    }
}

}  // namespace

std::optional<DecodedImage> decodeImage(std::string_view bytes, long long maxPixels) {
    if (bytes.empty() || bytes.size() > static_cast<std::size_t>(INT_MAX)) {
        return std::nullopt;
    }
    const auto* data = reinterpret_cast<const stbi_uc*>(bytes.data());
    const int length = static_cast<int>(bytes.size());
    // The header alone tells the size, so a huge image is refused before any pixel is allocated.
    int width = 0;
    int height = 0;
    int channels = 0;
    if (stbi_info_from_memory(data, length, &width, &height, &channels) == 0 || width <= 0 || height <= 0 ||
        static_cast<long long>(width) * height > maxPixels) {
        return std::nullopt;
    }
    // Decoded in the file's own channels and widened here: the decoder's own widening of 16-bit
    // PNM images reads past its buffer.
    int decodedWidth = 0;
    int decodedHeight = 0;
    stbi_uc* decoded = stbi_load_from_memory(data, length, &decodedWidth, &decodedHeight, &channels, 0);
    if (decoded == nullptr) {
        return std::nullopt;
    }
    DecodedImage image;
    image.pixels = {decoded, stbi_image_free};
    if (decodedWidth != width || decodedHeight != height || channels < 1 || channels > 4) {
        return std::nullopt;
    }
    if (channels != 4) {
        const std::size_t pixelCount = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
        auto* rgba = static_cast<std::uint8_t*>(std::malloc(pixelCount * 4));
        if (rgba == nullptr) {
            return std::nullopt;
        }
        widenToRGBA(decoded, channels, pixelCount, rgba);
        image.pixels = {rgba, std::free};
    }
    image.width = width;
    image.height = height;
    return image;
}

}  // namespace tintwork::importing
