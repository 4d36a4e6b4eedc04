// The user's selection as a tree of four levels: root, sites, zones, managers.
#pragma once

#include "frame/export_dialog.h"
#include "platform/objects.h"

#include <array>
#include <deque>
#include <unordered_set>
#include <vector>

namespace rvm {

// A node of the export tree. Owned by its RvmTree.
struct RvmNode {
    int level = 0;                     // 0 root, 1 site, 2 zone, 3 manager
    HxDbObject* object = nullptr;      // null for a root without one and for a missing ancestor
    HxDbTreeNode* treeNode = nullptr;  // managers only
    std::vector<RvmNode*> children;    // in tree order
    bool isDirectoryParent = false;    // a directory stands below: deeper nodes count as managers
};

// True unless the selection holds the node as unchecked: an id that it does not hold counts as selected.
bool isSelectedForRvm(const ExportDataDlg::NodeSelection& selection, const HxDbTreeNode* node);

class RvmTree {
public:
    explicit RvmTree(const ExportDataDlg::NodeSelection& selection) : selection_(selection) {}
    RvmTree(const RvmTree&) = delete;
    RvmTree& operator=(const RvmTree&) = delete;

    // The top of the tree that a data tree's root gives, null when there is none. Several data trees may go into one
    // RvmTree, whose list of visited nodes they share until clearVisited. What is passed over stands in the run report.
    RvmNode* buildTree(HxDbTreeNode* root);
    void clearVisited() { visited_.clear(); }
    // A root for the children of several tops.
    RvmNode* makeRoot();

    // Number of nodes of a level from 1 to 3.
    std::size_t count(int level) const { return counts_[static_cast<std::size_t>(level)]; }

private:
    // A place in a row of brothers that hang under `slot`.
    struct Place {
        HxDbTreeNode* node;
        RvmNode* slot;
        int depth;
        bool isRowOpen;  // a brother ahead has a place
    };

    RvmNode* makeNode(int level, HxDbObject* object, RvmNode* parent);
    RvmNode* slotAbove(const HxDbTreeNode* node, int level);
    void walk(Place first);
    bool enterOnce(const HxDbTreeNode* node);
    RvmNode* placeNode(const Place& place, HxDbObject* object);
    RvmNode* placeWorld(const Place& place, HxDbObject* object);
    RvmNode* placeManager(const Place& place, HxDbObject* object);
    static bool holdsNodes(const RvmNode* slot);
    void reportRest(const Place& place);

    const ExportDataDlg::NodeSelection& selection_;
    std::deque<RvmNode> nodes_;
    std::unordered_set<const HxDbTreeNode*> visited_;
    std::array<std::size_t, 4> counts_{};
    RvmNode* top_ = nullptr;
};

}  // namespace rvm
