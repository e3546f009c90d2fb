// Feeds arbitrary text to the colour text reader in every format and space,
// and prints whatever it reads back in every format. Fatal errors for values
// that have no text (NaN, infinity) are documented outcomes, not crashes.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "colour/ColorConverter.h"
#include "colour/FatalError.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace tintwork;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    ColorConverterOptions options;
    options.p3Prefix = "p3: ";
    options.suffixWhenClipped = " /* clipped */";
    for (ColorSpace space : allColorSpaces) {
        for (ColorFormat format : allColorFormats) {
            const ConvertedColor read = parseColor(text, format, space, size % 2 == 0);
            if (!read.color) {
                continue;
            }
            for (ColorFormat output : allColorFormats) {
                options.forceClip = output == ColorFormat::cssRGB;
                try {
                    static_cast<void>(colorString(*read.color, output, space, options));
                } catch (const FatalError&) {
                }
            }
        }
    }
    return 0;
}
