// Feeds arbitrary bytes to the image importer. Bytes that do not decode are a documented
// failure; anything else must import without crashing or allocating beyond its bound.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "import/ImageImporter.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    tintwork::OchreColorProjectItem root("Fuzz", "FUZZ", tintwork::OchreColorGroup{});
    tintwork::ImageImporter importer;
    // A tiny header can claim a huge bitmap; a lower limit keeps each run quick.
    importer.pixelLimit = 1'000'000;
    try {
        importer.importBytes(std::string_view(reinterpret_cast<const char*>(data), size), root);
    } catch (const tintwork::DocumentColorParsingError&) {
    }
    return 0;
}
