// Feeds arbitrary bytes to the Sketch importer: bytes starting like a ZIP archive are a
// whole document; anything else is "document.json", a NUL, and the JSON every page
// reference reads. Unmanaged documents are read as sRGB so that their layers are walked.
#include <cstddef>
#include <cstdint>
#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "import/SketchImporter.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    tintwork::OchreColorProjectItem group("Fuzz", "FUZZ", tintwork::OchreColorGroup{});
    tintwork::SketchImporter importer;
    importer.unmanagedColorSpace = tintwork::ColorSpace::sRGB;
    try {
        if (bytes.substr(0, 2) == "PK") {
            importer.importArchive(bytes, group);
            return 0;
        }
        const std::size_t split = std::min(bytes.find('\0'), bytes.size());
        const std::string document(bytes.substr(0, split));
        const std::string page(bytes.substr(std::min(split + 1, bytes.size())));
        importer.importEntries(
            [&](const std::string& name) -> std::optional<std::string> {
                if (name == "document.json") {
                    return document;
                }
                return page;
            },
            group);
    } catch (const tintwork::DocumentColorParsingError&) {
    }
    return 0;
}
