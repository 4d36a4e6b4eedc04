// The walk through a data tree for an EEM file: zones and directories, their managers, the objects below those.
#pragma once

#include "eem/content.h"
#include "frame/export_dialog.h"
#include "platform/objects.h"
#include "platform/param_list.h"
#include "platform/tree_walker.h"

#include <cstddef>
#include <vector>

namespace eem {

// Serves one export. Works on the results of the scope dialog and needs a progress object in the slot; the cancel
// passes through.
class TreeWalk {
public:
    explicit TreeWalk(Content& content);
    TreeWalk(const TreeWalk&) = delete;
    TreeWalk& operator=(const TreeWalk&) = delete;

    // A null root is a tree without anything. The dialog is closed at the end.
    void walk(HxDbTreeNode* root);
    // Objects of all lists that were walked to their end.
    std::size_t objectCount() const { return objectCount_; }

private:
    void enterNode(HxDbTreeNode* node, const HxDbObject& object);
    void enterZone(HxDbTreeNode* node);
    void enterDirectory(HxDbTreeNode* node);
    bool enterDirectorySon(HxDbTreeNode* node, const HxDbObject& object);
    void enterManager(HxDbTreeNode* node, const HxDbObject& manager, int color);
    void takeObject(const HxDbObject& object, int& color);
    void reportMisplaced(const HxDbTreeNode* node, const HxDbObject& object);
    void reportGrid(const HxDbTreeNode* node, const HxDbObject& grid) const;
    void reportRest(const HxDbObject& manager, std::size_t from) const;

    Content& content_;
    const ExportDataDlg::NodeSelection& selectedNodes_;
    const ExportDataDlg::ObjectSelection& selectedObjects_;
    TreeBars bars_;
    std::size_t objectCount_ = 0;
    std::vector<HxDbObject*> objects_;
    // The directories that are being walked, outermost first.
    std::vector<const HxDbTreeNode*> openDirectories_;
    ParamList properties_;
    // Managers with nothing but objects below them: whatever hangs there has been walked.
    NodeSet plainManagers_;
    // The last parent that was asked for the place of its sons.
    const HxDbTreeNode* lastParent_ = nullptr;
    const HxDbObject* lastParentObject_ = nullptr;
};

}  // namespace eem
