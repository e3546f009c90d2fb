#pragma once
// Per-render bookkeeping kept in a Context: running loops, break and continue,
// inherited blocks and the nesting depth of include and extends.

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "template/Value.h"

namespace tintwork::stencil {

class BlockNode;

// Blocks by name, most derived first, as collected by extends.
struct BlockContext {
    std::map<std::string, std::vector<const BlockNode*>, std::less<>> blocks;
};

struct RenderState {
    enum class Termination { none, breakLoop, continueLoop };

    // Set by break or continue; loops consume it.
    Termination termination = Termination::none;
    std::optional<std::string> terminationLabel;
    // The labels of the running loops, innermost last (nullopt for unlabelled ones).
    std::vector<std::optional<std::string>> runningLoops;
    // Include and extends nesting, bounded so a template that includes itself stops.
    int nestingDepth = 0;
    std::shared_ptr<BlockContext> blockContext;
    // Text of blocks already rendered, for block.<name>.
    Map renderedBlocks;
    // Nodes rendered and loop elements visited so far, bounded so no template runs forever.
    std::uint64_t steps = 0;
    std::uint64_t stepLimit = 0;
};

inline constexpr int maximumNestingDepth = 64;
inline constexpr std::size_t maximumOutputSize = 256u << 20;
// The most values a range, a split or a string's characters may give.
inline constexpr std::size_t maximumCollectionSize = 1'000'000;

// Counts steps of work; fails once a render has done too much.
void countRenderStep(RenderState& state, std::uint64_t steps = 1);

}  // namespace tintwork::stencil
