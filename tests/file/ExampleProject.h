#pragma once
// The design-system document kept as examples/Colors.tintwork, built in code.

#include <memory>

#include "model/Project.h"

namespace tintwork::example {

// A fixed document: every identifier is spelled out, so it writes the same bytes every time.
std::shared_ptr<OchreColorProject> makeExampleProject();

}  // namespace tintwork::example
