// The sons of a tree node, checked before they are walked.
#pragma once

#include "platform/objects.h"

#include <cstddef>

// Number of sons, along the chain from the node's son through the brothers. `isWhole` is false, and the count that of
// the nodes before the repeat, for a chain that meets a node twice: the command line then shows the chain, and the run
// report that the sons of `node` are passed over.
struct ChildChain {
    bool isWhole = true;
    std::size_t count = 0;
};
ChildChain checkChildChain(const HxDbTreeNode* node);
