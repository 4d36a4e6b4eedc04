// The node tree of the scene for the selected part of the data trees.
#pragma once

#include "navisworks/scene/manager_groups.h"

#include <map>
#include <set>
#include <string>

namespace nv {

class SceneTree {
public:
    using Selection = ExportDataDlg::NodeSelection;

    // What is handed over has to outlive the object.
    SceneTree(const Options& options, PropertyFile& file, NodeSteps& steps)
        : options_(options), steps_(steps), objects_(options, file, steps), managers_(options, objects_) {}

    // A root group with everything below `root` that is selected. `shortName` is that of the root's database.
    void addDataTree(LiNwcScene scene, HxDbTreeNode* root, const Selection& selection, const std::string& shortName);

    // The children of a zone or of a zone directory. An object that does not open ends the level; in a directory it
    // says so on the command line, and managers that wait for their order are lost with the rest.
    void addZoneChildren(HxDbTreeNode* zoneNode, LiNwcGroup parentGroup, LiNwcScene scene, const Selection& selection);
    void addDirectoryChildren(HxDbTreeNode* directoryNode, LiNwcGroup parentGroup, LiNwcScene scene,
                              const Selection& selection);

private:
    // One data tree on its way into the scene.
    struct Tree {
        LiNwcScene scene;
        HxDbTreeNode* root;
        const Selection& selection;
        OwnedGroup group;
        std::map<HxDbObjectId, OwnedGroup> sites;  // by tree node
    };
    // The children of one zone or directory.
    struct Level {
        LiNwcGroup parentGroup;
        LiNwcScene scene;
        const Selection& selection;
        std::map<HxDbObjectId, HxDbTreeNode*> waiting;  // managers that the script will order
    };

    void visit(HxDbTreeNode* node, Tree& tree, const std::string& shortName);
    void addSelected(HxDbObject* object, HxDbTreeNode* node, Tree& tree);
    void addSite(const HxDbObject& object, const HxDbTreeNode* node, Tree& tree);
    void addBelowSite(const HxDbObject& object, HxDbTreeNode* node, Tree& tree);
    void addRootManager(HxDbObject* object, Tree& tree);
    // Gives the node that ended the level; null when all were walked.
    const HxDbTreeNode* addChildren(const HxDbTreeNode* node, Level& level);
    void addChild(HxDbObject* object, HxDbTreeNode* node, Level& level);
    void addDirectory(const HxDbObject& object, HxDbTreeNode* node, const Level& level);
    bool enterOnce(const HxDbObject& object, const HxDbTreeNode* node);
    void addSortedManagers(const Level& level);
    void addGridSystem(const HxDbObject& grid, const HxDbTreeNode* node, LiNwcScene scene) const;

    const Options& options_;
    NodeSteps& steps_;
    ObjectGroups objects_;
    ManagerGroups managers_;
    std::set<HxDbObjectId> entered_;  // directories of the data tree in hand
};

}  // namespace nv
