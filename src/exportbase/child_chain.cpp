#include "exportbase/child_chain.h"

#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "tolmar/text.h"

#include <unordered_set>
#include <vector>

namespace {

void tellBrokenChain(const HxDbTreeNode* node, const HxDbTreeNode* repeated,
                     const std::vector<const HxDbTreeNode*>& chain) {
    const auto idOf = [](const HxDbTreeNode* item) { return static_cast<long long>(item->objectId().toInt()); };
    hxcad::hextPrintf("\n节点指向错误,指向链表如下:\n");
    hxcad::hextPrintf("\n%lld -->\n", idOf(repeated));
    for (const HxDbTreeNode* item : chain) {
        hxcad::hextPrintf("%lld -->", idOf(item));
    }
    hxcad::hextPrintf("\n");
    reportLeftOut({node->objectId(), tolmar::textOrEmpty(node->getName()), "tree"},
                  "the chain of its sons meets node " + std::to_string(idOf(repeated)) + " twice");
}

// The chain of a node whose sons meet a node twice.
ChildChain brokenChain(const HxDbTreeNode* node) {
    std::vector<const HxDbTreeNode*> chain;
    std::unordered_set<const HxDbTreeNode*> met;
    for (const HxDbTreeNode* son = node->getSon(); son != nullptr; son = son->getBrother()) {
        if (!met.insert(son).second) {
            tellBrokenChain(node, son, chain);
            return {false, chain.size()};
        }
        chain.push_back(son);
    }
    return {true, chain.size()};
}

}  // namespace

// A mark that is set anew after 1, 2, 4, 8... sons is met again when the chain runs in a circle.
ChildChain checkChildChain(const HxDbTreeNode* node) {
    std::size_t count = 0;
    std::size_t nextMark = 1;
    const HxDbTreeNode* mark = nullptr;
    for (const HxDbTreeNode* son = node->getSon(); son != nullptr; son = son->getBrother()) {
        if (son == mark) {
            return brokenChain(node);
        }
        if (++count == nextMark) {
            mark = son;
            nextMark *= 2;
        }
    }
    return {true, count};
}
