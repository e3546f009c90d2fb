#pragma once
// Reads a .tintwork document into a project.

#include <memory>
#include <stdexcept>
#include <string_view>

#include "model/Project.h"

namespace tintwork {

// The bytes are not a document at all (not XML, or XML without a project), or one
// the tool refuses whole (groups nested too deep to read every item).
class DocumentFormatError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class OchreColorFileReader {
public:
    // A new project from the document's bytes, with its aliases linked. Damaged parts
    // are dropped silently; bytes that are no document, or groups nested deeper than
    // 200 levels, throw DocumentFormatError.
    std::shared_ptr<OchreColorProject> read(std::string_view bytes) const;
};

}  // namespace tintwork
