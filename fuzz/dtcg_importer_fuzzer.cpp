// Feeds arbitrary bytes to the standard Design Tokens reader, leniently and strictly.
// A file that is no token document is a documented failure; anything else must import
// without crashing, hanging or exhausting memory.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "import/DtcgImporter.h"
#include "import/ImportKinds.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (bool strict : {false, true}) {
        tintwork::OchreColorProjectItem root("Fuzz", "FUZZ", tintwork::OchreColorGroup{});
        tintwork::ImportOptions options;
        options.strict = strict;
        options.diagnostics = [](std::string_view) {};
        try {
            tintwork::DtcgImporter(options).importText(text, "fuzz.json", root);
            // Resolve every alias, as a build would.
            std::vector<const tintwork::OchreColorProjectItem*> stack{&root};
            while (!stack.empty()) {
                const tintwork::OchreColorProjectItem* item = stack.back();
                stack.pop_back();
                if (item->group) {
                    for (const tintwork::ProjectItemPtr& child : item->group->items) {
                        stack.push_back(child.get());
                    }
                }
                (void)item->resolvedColor();
                (void)item->resolvedNumber();
                (void)item->resolvedString();
                (void)item->resolvedShadow();
            }
        } catch (const tintwork::ImportSourceError&) {
        }
    }
    return 0;
}
