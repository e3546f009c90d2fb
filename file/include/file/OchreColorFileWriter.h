#pragma once
// Writes a project as a .tintwork document.

#include <stdexcept>
#include <string>

#include "model/Project.h"

namespace tintwork {

// The project holds text that is not valid UTF-8.
class EncodingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class OchreColorFileWriter {
public:
    // The document as UTF-8 bytes. An item without its payload throws FatalError;
    // text that is not valid UTF-8 throws EncodingError.
    std::string write(const OchreColorProject& project) const;
};

// The root element's namespace and schema location.
inline constexpr const char* documentNamespace = "https://tintwork.app/tintwork";
inline constexpr const char* documentSchemaLocation = "https://tintwork.app/tintwork/schema/tintwork.xsd";
// The format version every written document carries.
inline constexpr const char* documentFormatVersion = "1.6";

}  // namespace tintwork
