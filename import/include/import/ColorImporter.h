#pragma once
// The interface every importer implements, and the import side's one error.

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "model/Project.h"

namespace tintwork {

// A failed import: the description is the message itself.
class DocumentColorParsingError : public std::runtime_error {
public:
    explicit DocumentColorParsingError(const std::string& text) : std::runtime_error(text), message(text) {}

    std::string message;
};

// Reads one source file into a group item. Importers are stateless, built with no
// arguments and used for one call.
class ColorImporter {
public:
    virtual ~ColorImporter() = default;
    // Appends what the source holds to the children of `group` (a group item). Throws
    // when the whole file is unusable; a bad entry is dropped silently.
    virtual void importColors(const std::filesystem::path& url, OchreColorProjectItem& group) = 0;

    // Receives the importer's diagnostic lines (decoding fallbacks, skipped records);
    // unset, they are printed on standard output.
    std::function<void(std::string_view)> diagnostics;

protected:
    void printDiagnostic(std::string_view line) const;
};

}  // namespace tintwork
