// Colour text throughput: each case is named after the input it handles and
// reports colours per second.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "colour/ColorConverter.h"

namespace {

using namespace tintwork;

std::vector<ColorValue> sampleColours() {
    std::vector<ColorValue> colours;
    for (int i = 0; i < 256; ++i) {
        const ColorEncoding encoding = i % 8 == 0 ? ColorEncoding::displayP3 : ColorEncoding::sRGB;
        colours.emplace_back(encoding, (i * 37 % 101) / 100.0, (i * 53 % 101) / 100.0, (i * 71 % 101) / 100.0,
                             i % 16 == 0 ? 0.5 : 1.0);
    }
    return colours;
}

void WriteEveryFormat(benchmark::State& state) {
    const auto colours = sampleColours();
    ColorConverterOptions options;
    options.p3Prefix = "p3: ";
    for (auto _ : state) {
        for (const ColorValue& colour : colours) {
            for (ColorFormat format : allColorFormats) {
                benchmark::DoNotOptimize(colorString(colour, format, ColorSpace::displayP3, options));
            }
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(colours.size() * allColorFormats.size()));
}
BENCHMARK(WriteEveryFormat);

// Texts that the reader finds at the start, the middle and the end of its fallback list.
void ReadTexts(benchmark::State& state, std::vector<std::string> texts) {
    for (auto _ : state) {
        for (const std::string& text : texts) {
            benchmark::DoNotOptimize(parseColor(text, ColorFormat::cssOKLCH, ColorSpace::sRGB, true));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(texts.size()));
}
BENCHMARK_CAPTURE(ReadTexts, SwiftNSColor, {"NSColor(red: 0.2, green: 0.4, blue: 0.6, alpha: 0.5)"});
BENCHMARK_CAPTURE(ReadTexts, CSSHex, {"#336699", "#abc", "p3: #33669980"});
BENCHMARK_CAPTURE(ReadTexts, FloatRGBA, {"0 0 1 1", "0.25, 0.5, 0.75, 1"});
BENCHMARK_CAPTURE(ReadTexts, NoColour, {"this text holds no colour at all, only words"});

} // namespace
