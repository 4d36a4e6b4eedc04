#include "platform/tree_walker.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t fewestSlots = 64;

}  // namespace

bool NodeSet::insert(const HxDbTreeNode* node) {
    const auto address = reinterpret_cast<std::uintptr_t>(node);
    const std::uintptr_t number = address / stretchSize;
    const std::uintptr_t cell = address % stretchSize / cellSize;
    Bits* bits = find(number);
    std::uint64_t& word = (bits != nullptr ? *bits : make(number))[cell / 64];
    const std::uint64_t bit = std::uint64_t{1} << (cell % 64);
    const bool isNew = (word & bit) == 0;
    word |= bit;
    return isNew;
}

bool NodeSet::contains(const HxDbTreeNode* node) const {
    const auto address = reinterpret_cast<std::uintptr_t>(node);
    const std::uintptr_t cell = address % stretchSize / cellSize;
    const Bits* bits = find(address / stretchSize);
    return bits != nullptr && ((*bits)[cell / 64] >> (cell % 64) & 1U) != 0;
}

NodeSet::Bits* NodeSet::find(std::uintptr_t number) const {
    if (last_ != nullptr && number == lastNumber_) {
        return last_;
    }
    const Slot slot = slots_.empty() ? Slot() : slots_[slotOf(number)];
    if (slot.bits == none) {
        return nullptr;
    }
    lastNumber_ = number;
    return last_ = bits_[slot.bits].get();
}

NodeSet::Bits& NodeSet::make(std::uintptr_t number) {
    if (bits_.size() * 2 >= slots_.size()) {
        grow();
    }
    slots_[slotOf(number)] = {number, static_cast<std::uint32_t>(bits_.size())};
    lastNumber_ = number;
    last_ = bits_.emplace_back(std::make_unique<Bits>()).get();
    return *last_;
}

// Where a stretch is or would go. Neighbours follow each other, so a multiplication spreads them.
std::size_t NodeSet::slotOf(std::uintptr_t number) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = static_cast<std::size_t>(std::uint64_t{number} * 0x9E3779B97F4A7C15ULL >> 32U) & mask;
    while (slots_[slot].bits != none && slots_[slot].number != number) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

void NodeSet::grow() {
    const std::vector<Slot> old = std::exchange(slots_, std::vector<Slot>(std::max(fewestSlots, slots_.size() * 2)));
    for (const Slot& slot : old) {
        if (slot.bits != none) {
            slots_[slotOf(slot.number)] = slot;
        }
    }
}

TreeWalker::TreeWalker(HxDbTreeNode* root) : root_(root) {
    current_ = enter(root);
}

HxDbTreeNode* TreeWalker::enter(HxDbTreeNode* node) {
    return node != nullptr && visited_.insert(node) ? node : nullptr;
}

void TreeWalker::next() {
    if (done()) {
        return;
    }
    HxDbTreeNode* from = current_;
    current_ = nullptr;
    if (from != nullptr) {
        if (HxDbTreeNode* brother = from == root_ ? nullptr : from->getBrother()) {
            stack_.push_back(brother);
        }
        current_ = descend_ ? enter(from->getSon()) : nullptr;
    }
    descend_ = true;
    while (current_ == nullptr && !stack_.empty()) {
        current_ = enter(stack_.back());
        stack_.pop_back();
    }
}
