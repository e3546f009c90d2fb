#include "import/ImageImporter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "ImageDecoder.h"
#include "import/ImportedColor.h"
#include "model/FileIO.h"

namespace tintwork {

namespace {

constexpr const char* unableToOpenMessage = "Unable to open image file";
constexpr double alphaCutoff = 0.4;
constexpr double coverageFraction = 0.001;
constexpr double nearDistance = 0.1;
constexpr double greySpread = 0.03;
// From this many pixels on, opaque pixels are counted in a table of every RGB value (64 MB).
constexpr std::size_t directCountingPixels = std::size_t{1} << 20;

// An open-addressing table from a pixel's four bytes to how often they occur. Pixel counts
// are bounded by the image size, so 32 bits hold them; an empty slot has count 0.
class ColorTally {
public:
    struct Slot {
        std::uint32_t key = 0;
        std::uint32_t count = 0;
    };

    ColorTally() { slots_.resize(std::size_t{1} << bits_); }

    // The slot of `key`, inserted with count 0 when new. Valid until the next insertion.
    Slot& slotFor(std::uint32_t key) {
        std::size_t index = home(key);
        while (slots_[index].count != 0) {
            if (slots_[index].key == key) {
                return slots_[index];
            }
            index = (index + 1) & mask();
        }
        // Grows at three-quarter load: probe runs stay short, and an image of millions of distinct
        // translucent colours needs at most about 11 bytes of table per colour.
        if ((used_ + 1) * 4 > slots_.size() * 3) {
            grow();
            return slotFor(key);
        }
        ++used_;
        slots_[index].key = key;
        return slots_[index];
    }

    // The slot of `key`, or null.
    const Slot* find(std::uint32_t key) const {
        for (std::size_t index = home(key); slots_[index].count != 0; index = (index + 1) & mask()) {
            if (slots_[index].key == key) {
                return &slots_[index];
            }
        }
        return nullptr;
    }

    const std::vector<Slot>& slots() const { return slots_; }

private:
    std::size_t mask() const { return slots_.size() - 1; }
    // Fibonacci hashing: the top bits of the product mix every byte of the key.
    std::size_t home(std::uint32_t key) const { return (key * 0x9E3779B1u) >> (32 - bits_); }

    void grow() {
        std::vector<Slot> old(std::size_t{1} << (bits_ + 1));
        old.swap(slots_);
        ++bits_;
        for (const Slot& slot : old) {
            if (slot.count != 0) {
                std::size_t index = home(slot.key);
                while (slots_[index].count != 0) {
                    index = (index + 1) & mask();
                }
                slots_[index] = slot;
            }
        }
    }

    int bits_ = 12;
    std::size_t used_ = 0;
    std::vector<Slot> slots_;
};

// Which alpha bytes are counted: those above 0.4 once scaled to 0..1.
std::array<bool, 256> countedAlphas() {
    std::array<bool, 256> counted{};
    for (int alpha = 0; alpha < 256; ++alpha) {
        counted[static_cast<std::size_t>(alpha)] = alpha / 255.0 > alphaCutoff;
    }
    return counted;
}

// A colour's four bytes (red, green, blue, alpha) as one table key.
std::uint32_t keyOf(const std::array<std::uint8_t, 4>& bytes) {
    std::uint32_t key = 0;
    std::memcpy(&key, bytes.data(), sizeof key);
    return key;
}

ColorValue colorOfKey(std::uint32_t key) {
    std::array<std::uint8_t, 4> bytes{};
    std::memcpy(bytes.data(), &key, sizeof key);
    return ColorValue::sRGB(bytes[0] / 255.0, bytes[1] / 255.0, bytes[2] / 255.0, bytes[3] / 255.0);
}

// Reads pixels of 1 (grey), 2 (grey and alpha), 3 (RGB) or 4 (RGBA) channels as RGBA: grey
// stands for equal red, green and blue, and a missing alpha is opaque. Reading the decoder's
// own layout spares a widened copy of the bitmap.
template <int Channels>
struct PixelLayout {
    static std::uint8_t alpha(const std::uint8_t* pixel) {
        if constexpr (Channels == 2) {
            return pixel[1];
        } else if constexpr (Channels == 4) {
            return pixel[3];
        } else {
            return 255;
        }
    }
    // Red, green and blue as one number below 2^24.
    static std::uint32_t rgb(const std::uint8_t* pixel) {
        if constexpr (Channels < 3) {
            return std::uint32_t{pixel[0]} * 0x010101u;
        } else {
            return (std::uint32_t{pixel[0]} << 16) | (std::uint32_t{pixel[1]} << 8) | pixel[2];
        }
    }
    static std::uint32_t key(const std::uint8_t* pixel) {
        if constexpr (Channels == 4) {
            std::uint32_t key = 0;
            std::memcpy(&key, pixel, sizeof key);
            return key;
        } else {
            const std::uint32_t value = rgb(pixel);
            return keyOf({static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 8),
                          static_cast<std::uint8_t>(value), alpha(pixel)});
        }
    }
};

struct Candidate {
    std::uint32_t key = 0;
    long long count = 0;
    std::size_t firstPixel = 0;
};

// Sets firstPixel of each candidate whose count another candidate shares: the index of the first
// counted pixel of its colour. Scans only until every such colour has been met.
template <int Channels>
void locateTiedCandidates(std::vector<Candidate>& candidates, const std::uint8_t* pixels, std::size_t pixelCount,
                          const std::array<bool, 256>& counted) {
    using Layout = PixelLayout<Channels>;
    std::sort(candidates.begin(), candidates.end(),
              [](const Candidate& lhs, const Candidate& rhs) { return lhs.count > rhs.count; });
    ColorTally tied;  // count holds the candidate's index + 1
    std::size_t unplaced = 0;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        bool sharesCount = (i > 0 && candidates[i - 1].count == candidates[i].count) ||
                           (i + 1 < candidates.size() && candidates[i + 1].count == candidates[i].count);
        if (sharesCount) {
            tied.slotFor(candidates[i].key).count = static_cast<std::uint32_t>(i + 1);
            ++unplaced;
        }
    }
    std::vector<bool> placed(candidates.size(), false);
    for (std::size_t pixel = 0; pixel < pixelCount && unplaced > 0; ++pixel) {
        const std::uint8_t* bytes = pixels + pixel * Channels;
        if (!counted[Layout::alpha(bytes)]) {
            continue;
        }
        if (const ColorTally::Slot* slot = tied.find(Layout::key(bytes))) {
            const std::size_t index = slot->count - 1;
            if (!placed[index]) {
                placed[index] = true;
                candidates[index].firstPixel = pixel;
                --unplaced;
            }
        }
    }
}

// The colours above the threshold, most frequent first, ties in order of first appearance.
template <int Channels>
std::vector<ColorCount> countColors(const std::uint8_t* pixels, std::size_t pixelCount) {
    using Layout = PixelLayout<Channels>;
    const auto threshold = static_cast<long long>(static_cast<double>(pixelCount) * coverageFraction);
    static const std::array<bool, 256> counted = countedAlphas();

    // One pass in memory order. Large images count their opaque pixels in a table indexed by red,
    // green and blue: similar colours, which neighbouring pixels mostly have, then share cache
    // lines, where a hash table would scatter them. Other pixels, and all pixels of small images,
    // go to the hash table, where a run of equal pixels costs one look-up.
    std::unique_ptr<std::uint32_t, void (*)(void*)> opaque{nullptr, std::free};
    if (pixelCount >= directCountingPixels) {
        opaque.reset(static_cast<std::uint32_t*>(std::calloc(std::size_t{1} << 24, sizeof(std::uint32_t))));
    }
    std::uint32_t* opaqueCounts = opaque.get();
    ColorTally tally;
    ColorTally::Slot* last = nullptr;
    std::uint32_t lastKey = 0;
    const std::uint8_t* end = pixels + pixelCount * Channels;
    for (const std::uint8_t* pixel = pixels; pixel != end; pixel += Channels) {
        const std::uint8_t alpha = Layout::alpha(pixel);
        if (!counted[alpha]) {
            continue;
        }
        if (opaqueCounts != nullptr && alpha == 255) {
            ++opaqueCounts[Layout::rgb(pixel)];
            continue;
        }
        const std::uint32_t key = Layout::key(pixel);
        if (last == nullptr || key != lastKey) {
            last = &tally.slotFor(key);
            lastKey = key;
        }
        ++last->count;
    }

    std::vector<Candidate> candidates;
    for (const ColorTally::Slot& slot : tally.slots()) {
        if (slot.count > threshold) {
            candidates.push_back({slot.key, slot.count, 0});
        }
    }
    for (std::uint32_t rgb = 0; opaqueCounts != nullptr && rgb < (std::uint32_t{1} << 24); ++rgb) {
        if (opaqueCounts[rgb] > threshold) {
            const std::uint32_t key = keyOf({static_cast<std::uint8_t>(rgb >> 16), static_cast<std::uint8_t>(rgb >> 8),
                                             static_cast<std::uint8_t>(rgb), 255});
            candidates.push_back({key, opaqueCounts[rgb], 0});
        }
    }
    opaque.reset();
    locateTiedCandidates<Channels>(candidates, pixels, pixelCount, counted);
    std::stable_sort(candidates.begin(), candidates.end(), [](const Candidate& lhs, const Candidate& rhs) {
        return lhs.count != rhs.count ? lhs.count > rhs.count : lhs.firstPixel < rhs.firstPixel;
    });

    std::vector<ColorCount> result;
    result.reserve(candidates.size());
    for (const Candidate& candidate : candidates) {
        result.push_back({colorOfKey(candidate.key), candidate.count});
    }
    return result;
}

std::vector<ColorCount> countColors(const std::uint8_t* pixels, int channels, std::size_t pixelCount) {
    switch (channels) {
        case 1: return countColors<1>(pixels, pixelCount);
        case 2: return countColors<2>(pixels, pixelCount);
        case 3: return countColors<3>(pixels, pixelCount);
        case 4: return countColors<4>(pixels, pixelCount);
        default: return {};
    }
}

bool isNear(const ColorValue& lhs, const ColorValue& rhs) {
    return std::abs(lhs.red() - rhs.red()) <= nearDistance && std::abs(lhs.green() - rhs.green()) <= nearDistance &&
           std::abs(lhs.blue() - rhs.blue()) <= nearDistance;
}

bool isGrey(const ColorValue& color) {
    return std::abs(color.red() - color.green()) < greySpread && std::abs(color.red() - color.blue()) < greySpread;
}

std::string readImageFile(const std::filesystem::path& url) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(url, error);
    if (error || size > ImageImporter::maxFileBytes) {
        throw DocumentColorParsingError(unableToOpenMessage);
    }
    try {
        return readFileBytes(url);
    } catch (const FileError&) {
        throw DocumentColorParsingError(unableToOpenMessage);
    }
}

}  // namespace

std::vector<ColorCount> countFrequentColors(std::span<const std::uint8_t> rgba, int width, int height) {
    if (width <= 0 || height <= 0 ||
        rgba.size() / 4 < static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {
        return {};
    }
    return countColors<4>(rgba.data(), static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
}

std::vector<ColorCount> thinOutColors(const std::vector<ColorCount>& sorted) {
    std::vector<ColorCount> kept;
    for (const ColorCount& candidate : sorted) {
        const bool dropped = std::any_of(kept.begin(), kept.end(), [&](const ColorCount& keeper) {
            return isNear(candidate.color, keeper.color) || (isGrey(candidate.color) && isGrey(keeper.color));
        });
        if (!dropped) {
            kept.push_back(candidate);
        }
    }
    return kept;
}

void ImageImporter::importColors(const std::filesystem::path& url, OchreColorProjectItem& group) {
    importBytes(readImageFile(url), group);
}

void ImageImporter::importBytes(std::string_view bytes, OchreColorProjectItem& group) {
    std::optional<importing::DecodedImage> image = importing::decodeImage(bytes, pixelLimit);
    if (!image) {
        throw DocumentColorParsingError(unableToOpenMessage);
    }
    const std::size_t pixelCount = static_cast<std::size_t>(image->width) * static_cast<std::size_t>(image->height);
    const std::vector<ColorCount> kept = thinOutColors(countColors(image->pixels.get(), image->channels, pixelCount));

    std::vector<ImportedColor> list;
    list.reserve(kept.size());
    for (const ColorCount& entry : kept) {
        // The number in the name is the pixel count, not a position.
        list.push_back({{NamedColor(entry.color, "Color " + std::to_string(entry.count))}, std::nullopt,
                        ImportedColorType::singleColor});
    }
    addImportedColors(list, group);
}

}  // namespace tintwork
