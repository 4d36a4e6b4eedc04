#include "rvm/export_tree.h"

#include "platform/hxcom.h"
#include "platform/left_out.h"

namespace rvm {

namespace {

constexpr int managerDepth = 3;
constexpr int noLevel = -1;

// The level that a class has by itself; a directory has none, and any other node may be a manager.
int levelOfClass(const HxDbObject* object) {
    struct Row {
        const TlRxClass* type;
        int level;
    };
    static const Row rows[] = {{HextSite::desc(), 1}, {HextZone::desc(), 2}, {HextStdFloor::desc(), 2}};
    for (const Row& row : rows) {
        if (object->isKindOf(row.type)) {
            return row.level;
        }
    }
    return noLevel;
}

HxDbTreeNode* parentOf(const HxDbTreeNode* node) {
    return node != nullptr ? node->getParent() : nullptr;
}

int depthOf(const HxDbTreeNode* node) {
    int depth = 0;
    while ((node = parentOf(node)) != nullptr) {
        ++depth;
    }
    return depth;
}

void report(const HxDbTreeNode* node, const char* why) {
    reportLeftOutNode(*node, "node", why);
}

}  // namespace

bool isSelectedForRvm(const ExportDataDlg::NodeSelection& selection, const HxDbTreeNode* node) {
    const auto at = selection.find(node->objectId());
    return at == selection.end() || at->second;
}

RvmNode* RvmTree::makeNode(int level, HxDbObject* object, RvmNode* parent) {
    RvmNode& node = nodes_.emplace_back();
    node.level = level;
    node.object = object;
    ++counts_[static_cast<std::size_t>(level)];
    if (parent != nullptr) {
        parent->children.push_back(&node);
    }
    return &node;
}

RvmNode* RvmTree::makeRoot() {
    return makeNode(0, nullptr, nullptr);
}

RvmNode* RvmTree::buildTree(HxDbTreeNode* root) {
    top_ = nullptr;
    walk({root, nullptr, depthOf(root), false});
    return top_;
}

// Nodes for the ancestors of a node of `level`, from the root down; gives the lowest.
RvmNode* RvmTree::slotAbove(const HxDbTreeNode* node, int level) {
    std::array<const HxDbTreeNode*, managerDepth> ancestors{};
    for (int at = level - 1; at >= 0; --at) {
        node = parentOf(node);
        ancestors[static_cast<std::size_t>(at)] = node;
    }
    RvmNode* slot = nullptr;
    for (int at = 0; at < level; ++at) {
        slot = makeNode(at, objectOfNode(ancestors[static_cast<std::size_t>(at)]), slot);
        top_ = at == 0 ? slot : top_;
    }
    return slot;
}

// Depth first without recursion, however deep the tree: sons go before brothers. A row of brothers ends at the first
// node without a place, unless one ahead of it had a place.
void RvmTree::walk(Place first) {
    std::vector<Place> open{first};
    while (!open.empty()) {
        Place place = open.back();
        open.pop_back();
        if (place.node == nullptr || !enterOnce(place.node)) {
            continue;
        }
        HxDbObject* object = isSelectedForRvm(selection_, place.node) ? objectOfNode(place.node) : nullptr;
        RvmNode* sonSlot = object != nullptr ? placeNode(place, object) : nullptr;
        place.isRowOpen = place.isRowOpen || (sonSlot != nullptr && place.slot != nullptr);
        if (object == nullptr || place.isRowOpen) {
            open.push_back({place.node->getBrother(), place.slot, place.depth, place.isRowOpen});
        } else if (sonSlot == nullptr) {
            reportRest(place);
        }
        if (sonSlot != nullptr) {
            open.push_back({place.node->getSon(), sonSlot, place.depth + 1, false});
        }
    }
}

// False, which ends the row, for a node that was entered before: a tree that is bent into a loop ends.
bool RvmTree::enterOnce(const HxDbTreeNode* node) {
    const bool isNew = visited_.insert(node).second;
    if (!isNew) {
        report(node, "met a second time");
    }
    return isNew;
}

// Gives the slot for the node's sons, null when the node has no place in the tree.
RvmNode* RvmTree::placeNode(const Place& place, HxDbObject* object) {
    if (!holdsNodes(place.slot)) {
        return nullptr;
    }
    if (object->isKindOf(HextWorld::desc())) {
        return placeWorld(place, object);
    }
    const int level = levelOfClass(object);
    if (level != noLevel) {
        return makeNode(level, object, place.slot != nullptr ? place.slot : slotAbove(place.node, level));
    }
    if (object->isKindOf(HextZoneDirectory::desc())) {
        RvmNode* zone = place.slot != nullptr ? place.slot : slotAbove(place.node, managerDepth);
        zone->isDirectoryParent = true;
        return zone;
    }
    return placeManager(place, object);
}

RvmNode* RvmTree::placeWorld(const Place& place, HxDbObject* object) {
    if (place.slot != nullptr) {
        report(place.node, "a world below another has no place");
        return nullptr;
    }
    return top_ = makeNode(0, object, nullptr);
}

RvmNode* RvmTree::placeManager(const Place& place, HxDbObject* object) {
    const bool belowDirectory = place.slot != nullptr && place.slot->isDirectoryParent;
    if (place.depth != managerDepth && !(place.depth > managerDepth && belowDirectory)) {
        report(place.node, "its depth in the tree is not that of a manager");
        return nullptr;
    }
    RvmNode* slot = place.slot != nullptr ? place.slot : slotAbove(place.node, managerDepth);
    RvmNode* manager = makeNode(managerDepth, object, slot);
    manager->treeNode = place.node;
    return manager;
}

// What stands below a manager, of whatever class, is no node of the tree and goes out with the manager's contents.
bool RvmTree::holdsNodes(const RvmNode* slot) {
    return slot == nullptr || slot->level < managerDepth;
}

void RvmTree::reportRest(const Place& place) {
    if (!holdsNodes(place.slot)) {
        return;
    }
    HxDbTreeNode* node = place.node->getBrother();
    for (; node != nullptr && enterOnce(node); node = node->getBrother()) {
        report(node, "behind a node without a place at the head of its row");
    }
}

}  // namespace rvm
