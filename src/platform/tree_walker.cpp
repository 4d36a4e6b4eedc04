#include "platform/tree_walker.h"

bool NodeSet::insert(const HxDbTreeNode* node) {
    const auto address = reinterpret_cast<std::uintptr_t>(node);
    if (lastPage_ == nullptr || address / pageSize != lastNumber_) {
        lastNumber_ = address / pageSize;
        lastPage_ = &pages_[lastNumber_];
    }
    const std::uintptr_t cell = address % pageSize / cellSize;
    std::uint64_t& word = (*lastPage_)[cell / 64];
    const std::uint64_t bit = std::uint64_t{1} << (cell % 64);
    const bool isNew = (word & bit) == 0;
    word |= bit;
    return isNew;
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
