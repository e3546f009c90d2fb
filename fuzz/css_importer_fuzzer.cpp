// Feeds arbitrary bytes to the CSS and HTML importer: the first byte chooses between a
// style sheet and an HTML page, the rest is the text. It never fails on text in memory,
// so every input must import without crashing.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "import/CSSFileImporter.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) {
        return 0;
    }
    tintwork::OchreColorProjectItem root("Fuzz", "FUZZ", tintwork::OchreColorGroup{});
    tintwork::CSSFileImporter importer;
    importer.diagnostics = [](std::string_view) {};
    const bool asHTML = (data[0] & 1) != 0;
    importer.importText(std::string_view(reinterpret_cast<const char*>(data) + 1, size - 1), asHTML, root);
    return 0;
}
