#include "ImageDecoder.h"

#include <climits>

// The decoder's functions stay private to this file, so no other part of the program can
// collide with them.
#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#define STBI_NO_STDIO
#include <stb/stb_image.h>

namespace tintwork::importing {

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
    int decodedWidth = 0;
    int decodedHeight = 0;
    stbi_uc* pixels = stbi_load_from_memory(data, length, &decodedWidth, &decodedHeight, &channels, 4);
    if (pixels == nullptr) {
        return std::nullopt;
    }
    DecodedImage image;
    image.pixels = {pixels, stbi_image_free};
    if (decodedWidth != width || decodedHeight != height) {
        return std::nullopt;
    }
    image.width = width;
    image.height = height;
    return image;
}

}  // namespace tintwork::importing
