// Depth-first walk of a manager tree: parent before children, son before brother.
#pragma once

#include "platform/objects.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

// A set of nodes, kept as a bit for each 16 bytes of the stretches of memory that they lie in: nodes that follow each
// other in a tree mostly lie near each other, so that most calls touch the stretch of the last one.
class NodeSet {
public:
    NodeSet() = default;
    NodeSet(const NodeSet&) = delete;
    NodeSet& operator=(const NodeSet&) = delete;
    // False for a node that is in the set already.
    bool insert(const HxDbTreeNode* node);
    bool contains(const HxDbTreeNode* node) const;

private:
    // Nodes are farther apart than a cell.
    static constexpr std::uintptr_t stretchSize = std::uintptr_t{64} << 10U;
    static constexpr std::uintptr_t cellSize = 16;
    static_assert(sizeof(HxDbTreeNode) >= cellSize);
    static constexpr std::uint32_t none = 0xFFFFFFFF;
    struct Slot {
        std::uintptr_t number = 0;  // of a stretch: its address by its size
        std::uint32_t bits = none;  // its place in bits_
    };
    using Bits = std::array<std::uint64_t, stretchSize / cellSize / 64>;
    // Null when no node of the stretch is in the set.
    Bits* find(std::uintptr_t number) const;
    Bits& make(std::uintptr_t number);
    std::size_t slotOf(std::uintptr_t number) const;
    void grow();

    std::vector<Slot> slots_;  // a power of two, at most half of them in use
    std::vector<std::unique_ptr<Bits>> bits_;
    mutable std::uintptr_t lastNumber_ = 0;
    mutable Bits* last_ = nullptr;
};

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
