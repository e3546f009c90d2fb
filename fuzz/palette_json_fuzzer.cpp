// Feeds arbitrary bytes to both palette JSON importers. Text that is not JSON, or not of the
// importer's shape, is a documented failure; anything else must import without crashing.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "import/GenericJsonImporter.h"
#include "import/MaterialJSONImporter.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    tintwork::OchreColorProjectItem materials("Fuzz", "FUZZ", tintwork::OchreColorGroup{});
    try {
        tintwork::MaterialJSONImporter().importText(text, materials);
    } catch (const tintwork::DocumentColorParsingError&) {
    }
    tintwork::OchreColorProjectItem sets("Fuzz", "FUZZ", tintwork::OchreColorGroup{});
    try {
        tintwork::GenericJsonImporter().importText(text, sets);
    } catch (const tintwork::DocumentColorParsingError&) {
    }
    return 0;
}
