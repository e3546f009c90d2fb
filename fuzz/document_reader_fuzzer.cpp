// Feeds arbitrary bytes to the document reader. Unreadable documents may only raise
// DocumentFormatError; a document that loads must write, and settle to a fixed point
// after two write-and-read rounds (an unset number, boolean or string alias variant
// comes back once as an empty item reference). Resolving every item must terminate,
// with a value or with AliasChainError for a chain too long to follow.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "file/OchreColorFileReader.h"
#include "file/OchreColorFileWriter.h"

namespace {

void resolveAll(const tintwork::OchreColorProject& project) {
    project.walk([](tintwork::OchreColorProjectItem& item) {
        try {
            (void)item.resolvedColor();
            (void)item.resolvedColorSet();
            (void)item.resolvedNumber();
            (void)item.resolvedBoolean();
            (void)item.resolvedString();
            (void)item.resolvedShadow();
            (void)item.resolvedShadowSet();
        } catch (const tintwork::AliasChainError&) {
        }
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const tintwork::OchreColorFileReader reader;
    const tintwork::OchreColorFileWriter writer;
    std::shared_ptr<tintwork::OchreColorProject> project;
    try {
        project = reader.read(bytes);
    } catch (const tintwork::DocumentFormatError&) {
        return 0;
    }
    resolveAll(*project);
    std::string first;
    try {
        first = writer.write(*project);
    } catch (const tintwork::EncodingError&) {
        return 0;  // the input held text that is not UTF-8
    }
    // Element names of task configuration are written as read, so the output parses again.
    const std::string second = writer.write(*reader.read(first));
    const std::string third = writer.write(*reader.read(second));
    if (second != third) {
        std::abort();
    }
    return 0;
}
