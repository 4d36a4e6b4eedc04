// The walk over the manager trees that fills the export tree.
#pragma once

#include "frame/export_dialog.h"
#include "frame/tree_bars.h"
#include "obm/objects.h"
#include "obm/record.h"

#include <string>
#include <unordered_map>
#include <unordered_set>

namespace pmodel {

// Worlds, sites, zones and directories that are selected get a record each, and an ancestor that was not selected gets
// its record when something below it needs one. Zones and directories bring what is below them, selected or not. May
// throw ProgressCancelException.
class ObmWalk {
public:
    ObmWalk(ObmTree& tree, OBM3dPackage& package, const ExportDataDlg::NodeSelection& selection)
        : tree_(tree), selection_(selection), objects_(tree, package, bars_) {}

    // `shortName` is that of the tree's database; a null root is no tree.
    void walkTree(HxDbTreeNode* root, const char* shortName);

private:
    void visit(HxDbTreeNode* node, HxDbObject& object);
    void visitWorld(HxDbTreeNode* node, HxDbObject& object);
    void visitSite(HxDbTreeNode* node, HxDbObject& object);
    void visitZone(HxDbTreeNode* node, HxDbObject& object);
    void visitDirectory(HxDbTreeNode* node, HxDbObject& object);
    void visitOther(HxDbTreeNode* node, HxDbObject& object);

    void walkZone(HxDbTreeNode* node, ObmNode& record);
    void writeManager(HxDbTreeNode* node, const HxDbObject& object, ObmNode& zone);
    void walkDirectory(HxDbTreeNode* node, ObmNode& record);
    bool writeInDirectory(HxDbTreeNode* son, HxDbObject& object, ObmNode& record);

    ObmNode& addRecord(const HxDbTreeNode* node, const HxDbObject& object, int level);
    ObmNode& recordAbove(const HxDbTreeNode* node, int level);
    ObmNode& worldRecord();
    bool isBelowSelected(const HxDbTreeNode* node) const;

    ObmTree& tree_;
    const ExportDataDlg::NodeSelection& selection_;
    TreeBars bars_;
    ObmObjects objects_;

    // Of the walk in hand.
    std::string shortName_;
    ObmNode* world_ = nullptr;
    std::unordered_map<const HxDbTreeNode*, ObmNode*> records_;
    std::unordered_set<const HxDbTreeNode*> openDirectories_;
};

}  // namespace pmodel
