#include "platform/tree_walker.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t fewestSlots = 64;

}  // namespace

bool NodeSet::insert(const HxDbTreeNode* node) {
    const auto address = reinterpret_cast<std::uintptr_t>(node);
    const std::uintptr_t cell = address % pageSize / cellSize;
    std::uint64_t& word = pageOf(address / pageSize).bits[cell / 64];
    const std::uint64_t bit = std::uint64_t{1} << (cell % 64);
    const bool isNew = (word & bit) == 0;
    word |= bit;
    return isNew;
}

NodeSet::Page& NodeSet::pageOf(std::uintptr_t number) {
    if (last_ < slots_.size() && slots_[last_].number == number) {
        return slots_[last_];
    }
    if (used_ * 2 >= slots_.size()) {
        grow();
    }
    last_ = slotOf(number);
    Page& page = slots_[last_];
    used_ += page.number == noPage ? 1 : 0;
    page.number = number;
    return page;
}

// Where a page is or would go. Neighbours follow each other, so a multiplication spreads them.
std::size_t NodeSet::slotOf(std::uintptr_t number) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = static_cast<std::size_t>(std::uint64_t{number} * 0x9E3779B97F4A7C15ULL >> 32U) & mask;
    while (slots_[slot].number != noPage && slots_[slot].number != number) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

void NodeSet::grow() {
    const std::vector<Page> old = std::exchange(slots_, std::vector<Page>(std::max(fewestSlots, slots_.size() * 2)));
    for (const Page& page : old) {
        if (page.number != noPage) {
            slots_[slotOf(page.number)] = page;
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
