#pragma once
#include <string>

namespace tintwork {
// A new random identifier in upper-case UUID text (version 4).
std::string newUUID();
}  // namespace tintwork
