#pragma once
// Loading the document a flow works on.

#include <filesystem>
#include <memory>

#include "model/Project.h"

namespace tintwork {

// Reads and parses a document. Read and parse failures are thrown to the flow.
std::shared_ptr<OchreColorProject> loadDocument(const std::filesystem::path& path);

}  // namespace tintwork
