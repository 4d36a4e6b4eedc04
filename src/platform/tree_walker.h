// Depth-first walk of a manager tree: parent before children, son before brother.
#pragma once

#include "platform/objects.h"

#include <tsl/robin_set.h>

#include <vector>

// A set of nodes. Never walked through: its order is that of addresses.
using NodeSet = tsl::robin_set<const HxDbTreeNode*>;

// The roots of all trees that take part: that of the main database first, none twice, none null.
std::vector<HxDbTreeNode*> dataTreeRoots();

// A node already visited is not entered again, so a corrupt tree with a cycle ends the walk.
class TreeWalker {
public:
    // Starts at `root`, whose brothers are not walked. A null root is a walk that is done.
    explicit TreeWalker(HxDbTreeNode* root);
    bool done() const { return current_ == nullptr && stack_.empty(); }
    // Null only when done.
    HxDbTreeNode* current() const { return current_; }
    void next();
    // The coming `next` goes to the brother and not to the son; one-shot.
    void skipChildren() { descend_ = false; }

private:
    HxDbTreeNode* enter(HxDbTreeNode* node);

    HxDbTreeNode* root_;
    HxDbTreeNode* current_ = nullptr;
    std::vector<HxDbTreeNode*> stack_;
    NodeSet visited_;
    bool descend_ = true;
};
