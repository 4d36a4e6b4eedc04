#include "exportbase/child_chain.h"

#include "platform/hxcom.h"
#include "tolmar/run_report.h"

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
    const char* name = node->getName();
    tolmar::runReport().passedOver(node->objectId().toInt(), name != nullptr ? name : "", "tree",
                                   "the chain of its sons meets node " + std::to_string(idOf(repeated)) + " twice");
}

}  // namespace

ChildChain checkChildChain(const HxDbTreeNode* node) {
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
