// Image import throughput on 24-megapixel (6000 x 4000) bitmaps: the colour count alone on a
// photo-like bitmap, on flat swatches and on 24 million distinct translucent colours, and the whole import
// of a JPEG of the photo-like bitmap. Each reports pixels per second.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>

#include "import/ImageImporter.h"

namespace {

using namespace tintwork;

constexpr int width = 6000;
constexpr int height = 4000;
constexpr std::int64_t pixelCount = std::int64_t{width} * height;

std::uint32_t noise(std::uint32_t seed) {
    seed ^= seed >> 16;
    seed *= 0x7FEB352Du;
    seed ^= seed >> 15;
    return seed;
}

// Smooth gradients with a few levels of noise, as a photo has: millions of distinct colours,
// a few of them frequent enough to pass the threshold.
const std::vector<std::uint8_t>& photoLike() {
    static const std::vector<std::uint8_t> pixels = [] {
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(pixelCount) * 4);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const std::size_t i = (static_cast<std::size_t>(y) * width + static_cast<std::size_t>(x)) * 4;
                const std::uint32_t n = noise(static_cast<std::uint32_t>(y * width + x));
                const bool sky = y < height / 3;
                bytes[i] = static_cast<std::uint8_t>(sky ? 120 + (n & 3) : x * 200 / width + (n & 7));
                bytes[i + 1] = static_cast<std::uint8_t>(sky ? 170 + ((n >> 2) & 3) : y * 200 / height + ((n >> 3) & 7));
                bytes[i + 2] = static_cast<std::uint8_t>(sky ? 230 : (x + y) * 100 / (width + height) + ((n >> 6) & 15));
                bytes[i + 3] = 255;
            }
        }
        return bytes;
    }();
    return pixels;
}

// Twenty-four flat swatches in rows, as a palette chart has.
const std::vector<std::uint8_t>& flatSwatches() {
    static const std::vector<std::uint8_t> pixels = [] {
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(pixelCount) * 4);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const std::size_t i = (static_cast<std::size_t>(y) * width + static_cast<std::size_t>(x)) * 4;
                const std::uint32_t swatch = static_cast<std::uint32_t>((y / 1000) * 6 + x / 1000);
                bytes[i] = static_cast<std::uint8_t>(swatch * 37);
                bytes[i + 1] = static_cast<std::uint8_t>(swatch * 91);
                bytes[i + 2] = static_cast<std::uint8_t>(swatch * 53);
                bytes[i + 3] = 255;
            }
        }
        return bytes;
    }();
    return pixels;
}

// The worst case: every pixel a different translucent colour, so every pixel goes to the hash
// table and the table holds 24 million colours.
const std::vector<std::uint8_t>& translucentNoise() {
    static const std::vector<std::uint8_t> pixels = [] {
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(pixelCount) * 4);
        for (std::size_t i = 0; i < static_cast<std::size_t>(pixelCount); ++i) {
            const std::uint32_t value = static_cast<std::uint32_t>(i);
            bytes[i * 4] = static_cast<std::uint8_t>(value);
            bytes[i * 4 + 1] = static_cast<std::uint8_t>(value >> 8);
            bytes[i * 4 + 2] = static_cast<std::uint8_t>(value >> 16);
            bytes[i * 4 + 3] = static_cast<std::uint8_t>(200 + (value >> 24));
        }
        return bytes;
    }();
    return pixels;
}

void CountColors(benchmark::State& state, const std::vector<std::uint8_t>& (*bitmap)()) {
    const std::vector<std::uint8_t>& pixels = bitmap();
    for (auto _ : state) {
        benchmark::DoNotOptimize(countFrequentColors(pixels, width, height));
    }
    state.SetItemsProcessed(state.iterations() * pixelCount);
}
BENCHMARK_CAPTURE(CountColors, PhotoLike24MP, photoLike)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(CountColors, FlatSwatches24MP, flatSwatches)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(CountColors, TranslucentNoise24MP, translucentNoise)->Unit(benchmark::kMillisecond);

void ImportJpeg24MP(benchmark::State& state) {
    static const std::string jpeg = [] {
        std::string bytes;
        stbi_write_jpg_to_func(
            [](void* context, void* data, int size) {
                static_cast<std::string*>(context)->append(static_cast<const char*>(data),
                                                           static_cast<std::size_t>(size));
            },
            &bytes, width, height, 4, photoLike().data(), 90);
        return bytes;
    }();
    for (auto _ : state) {
        OchreColorProjectItem group("Image", "IMAGE", OchreColorGroup{});
        ImageImporter().importBytes(jpeg, group);
        benchmark::DoNotOptimize(group);
    }
    state.SetItemsProcessed(state.iterations() * pixelCount);
    state.counters["jpegMB"] = static_cast<double>(jpeg.size()) / 1e6;
}
BENCHMARK(ImportJpeg24MP)->Unit(benchmark::kMillisecond);

}  // namespace
