#include "platform/tree_walker.h"

#include "platform/hxcom.h"

#include <algorithm>

std::vector<HxDbTreeNode*> dataTreeRoots() {
    std::vector<HxDbTreeNode*> roots;
    const auto add = [&roots](HxDbTreeNode* root) {
        if (root != nullptr && std::find(roots.begin(), roots.end(), root) == roots.end()) {
            roots.push_back(root);
        }
    };
    add(hxcom::getDataManTreeRoot());
    std::vector<HxDbObject*> others;
    hxcom::getTreeRootOfOther(others);
    for (HxDbObject* other : others) {
        add(HxDbTreeNode::cast(other));
    }
    return roots;
}

TreeWalker::TreeWalker(HxDbTreeNode* root) : root_(root) {
    current_ = enter(root);
}

HxDbTreeNode* TreeWalker::enter(HxDbTreeNode* node) {
    return node != nullptr && visited_.insert(node).second ? node : nullptr;
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
