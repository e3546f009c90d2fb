#pragma once
// Reading documents, shared by the flows of both executables.

#include <filesystem>
#include <memory>

#include "model/Project.h"

namespace tintwork {

// Reads and parses a document, named after its file. Read and parse failures throw.
std::shared_ptr<OchreColorProject> loadDocument(const std::filesystem::path& path);

}  // namespace tintwork
