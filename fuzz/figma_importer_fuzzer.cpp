// Feeds arbitrary bytes to the Figma importer: bytes starting like a ZIP archive are a
// whole document, anything else the "canvas.fig" inside one. Failures of the import are
// documented; a schema without a "Message" type is one of its program stops.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "colour/FatalError.h"
#include "import/FigmaImporter.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    tintwork::OchreColorProjectItem group("Fuzz", "FUZZ", tintwork::OchreColorGroup{});
    tintwork::FigmaImporter importer;
    importer.diagnostics = [](std::string_view) {};
    try {
        if (bytes.substr(0, 2) == "PK") {
            importer.importArchive(bytes, group);
        } else {
            importer.importCanvas(bytes, group);
        }
    } catch (const tintwork::DocumentColorParsingError&) {
    } catch (const tintwork::FatalError&) {
    }
    return 0;
}
