// Feeds arbitrary bytes to the SVG importer. Text that is not XML, or XML without an
// element, is a documented failure; anything else must import without crashing.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "import/ColorImporter.h"
#include "import/SVGImporter.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    tintwork::OchreColorProjectItem root("Fuzz", "FUZZ", tintwork::OchreColorGroup{});
    tintwork::SVGImporter importer;
    try {
        importer.importText(std::string_view(reinterpret_cast<const char*>(data), size), root);
    } catch (const tintwork::DocumentColorParsingError&) {
    }
    return 0;
}
