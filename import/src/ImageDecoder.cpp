#include "ImageDecoder.h"

#include <cctype>
#include <climits>

// The decoder's functions stay private to this file, so no other part of the program can
// collide with them.
#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#define STBI_NO_STDIO
#include <stb/stb_image.h>

namespace tintwork::importing {

namespace {

// A binary grey or colour PNM file ("P5", "P6"), whose samples may have two bytes.
bool isBinaryPNM(std::string_view bytes) {
    return bytes.size() > 2 && bytes[0] == 'P' && (bytes[1] == '5' || bytes[1] == '6');
}

// The decoder hands 16-bit PNM samples over as they stand in the file, most significant byte
// first, without turning them into numbers; each sample's first byte is its 8-bit value. The
// values are packed into the front of the same buffer.
void keepHighBytes(std::uint8_t* samples, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        samples[i] = samples[2 * i];
    }
}

// The decoder reads a PNM header's numbers into an int without checking for overflow; a
// header number of more than nine digits cannot be a real size or sample range, so such a
// file is refused before the decoder sees it.
bool hasOversizedPNMNumber(std::string_view bytes) {
    if (!isBinaryPNM(bytes)) {
        return false;
    }
    std::size_t at = 2;
    for (int number = 0; number < 3 && at < bytes.size(); ++number) {
        while (at < bytes.size() && (std::isspace(static_cast<unsigned char>(bytes[at])) || bytes[at] == '#')) {
            if (bytes[at] == '#') {
                while (at < bytes.size() && bytes[at] != '\n' && bytes[at] != '\r') {
                    ++at;
                }
            } else {
                ++at;
            }
        }
        std::size_t digits = 0;
        while (at < bytes.size() && std::isdigit(static_cast<unsigned char>(bytes[at]))) {
            ++digits;
            ++at;
        }
        if (digits > 9) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::optional<DecodedImage> decodeImage(std::string_view bytes, long long maxPixels) {
    if (bytes.empty() || bytes.size() > static_cast<std::size_t>(INT_MAX) || hasOversizedPNMNumber(bytes)) {
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
    // Decoded in the file's own channels: the decoder's own widening of 16-bit PNM images reads
    // past its buffer, and the counting reads every layout anyway.
    int decodedWidth = 0;
    int decodedHeight = 0;
    DecodedImage image;
    if (isBinaryPNM(bytes) && stbi_is_16_bit_from_memory(data, length) != 0) {
        stbi_us* samples = stbi_load_16_from_memory(data, length, &decodedWidth, &decodedHeight, &channels, 0);
        if (samples == nullptr) {
            return std::nullopt;
        }
        image.pixels = {reinterpret_cast<std::uint8_t*>(samples), stbi_image_free};
        if (decodedWidth != width || decodedHeight != height || channels < 1 || channels > 4) {
            return std::nullopt;
        }
        keepHighBytes(image.pixels.get(), static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                                              static_cast<std::size_t>(channels));
    } else {
        stbi_uc* decoded = stbi_load_from_memory(data, length, &decodedWidth, &decodedHeight, &channels, 0);
        if (decoded == nullptr) {
            return std::nullopt;
        }
        image.pixels = {decoded, stbi_image_free};
    }
    if (decodedWidth != width || decodedHeight != height || channels < 1 || channels > 4) {
        return std::nullopt;
    }
    image.channels = channels;
    image.width = width;
    image.height = height;
    return image;
}

}  // namespace tintwork::importing
