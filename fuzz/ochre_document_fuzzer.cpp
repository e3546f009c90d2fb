// Feeds arbitrary bytes to the drawing document importer, which reads them with the document
// reader and then gathers constants and materials. Unreadable documents are a documented failure.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "import/OchreImporter.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    tintwork::OchreColorProjectItem root("Fuzz", "FUZZ", tintwork::OchreColorGroup{});
    tintwork::OchreImporter importer;
    importer.diagnostics = [](std::string_view) {};
    try {
        importer.importBytes(std::string_view(reinterpret_cast<const char*>(data), size), root);
    } catch (const tintwork::DocumentColorParsingError&) {
    }
    return 0;
}
