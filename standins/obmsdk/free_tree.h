// Freeing a tree of nodes without recursion, however deep it is.
#pragma once

#include <vector>

namespace obm {

// `free` deletes one node.
template <typename Node, typename Free>
void freeTree(Node* root, Free&& free) {
    std::vector<Node*> open{root};
    while (!open.empty()) {
        Node* node = open.back();
        open.pop_back();
        open.insert(open.end(), node->children().begin(), node->children().end());
        free(node);
    }
}

}  // namespace obm
