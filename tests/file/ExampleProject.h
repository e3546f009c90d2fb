#pragma once
// The example documents kept in examples/, built in code.

#include <memory>

#include "model/Project.h"

namespace tintwork::example {

// A fixed document: every identifier is spelled out, so it writes the same bytes every time.
std::shared_ptr<OchreColorProject> makeExampleProject();
// examples/Contrast.tintwork: contrast tests that fail on purpose, in all four appearances.
std::shared_ptr<OchreColorProject> makeContrastExampleProject();

}  // namespace tintwork::example
