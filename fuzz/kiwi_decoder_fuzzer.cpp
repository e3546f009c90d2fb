// Feeds arbitrary bytes to the Kiwi decoder: a schema section, then a message of the type
// named "Message" (or the first type) read from the bytes after it. Data that ends early,
// nests too deeply or names unknown fields is a documented failure, and so are the two
// program stops of a corrupt schema (an unknown primitive type or type kind).
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "colour/FatalError.h"
#include "import/Kiwi.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    tintwork::KiwiReader reader(std::string_view(reinterpret_cast<const char*>(data), size));
    try {
        tintwork::KiwiSchema schema(reader);
        if (schema.types.empty()) {
            return 0;
        }
        const int type = schema.typeIndex("Message").value_or(0);
        tintwork::KiwiDecoder decoder(std::move(schema));
        decoder.setConverter("string", [](tintwork::KiwiValue value) { return value; });
        decoder.decodeField(reader, type, false);
    } catch (const tintwork::KiwiError&) {
    } catch (const tintwork::FatalError&) {
    }
    return 0;
}
