#include "navisworks/scene/tree.h"

#include "exportbase/child_chain.h"
#include "frame/tree_bars.h"
#include "navisworks/scene/grid_system.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/tree_walker.h"
#include "scripts/script_host.h"
#include "tolmar/code_page.h"

#include <vector>

namespace nv {

namespace {

constexpr const char* endedLevel = "an object before it cannot be opened";

bool hasName(const HxDbObject& object) {
    return object.getDisplayName() != nullptr && *object.getDisplayName() != '\0';
}

void setName(LiNwcGroup group, const std::string& name) {
    LiNwcNodeSetName(group, tolmar::toWide(name).c_str());
}

OwnedGroup namedGroup(const HxDbObject& object, const TreeLevel& level) {
    OwnedGroup group(LiNwcGroupCreate());
    setName(group.get(), hasName(object) ? object.getDisplayName() : level.nameless);
    return group;
}

// What stands below a zone goes with the zone. What stands above all zones, or under a site that is not selected, has
// no place.
void reportHomeless(const HxDbObject& object, const HxDbTreeNode* node) {
    const HxDbObject* above = objectOfNode(node->getParent());
    if (above != nullptr && (above->isKindOf(HextSite::desc()) || above->isKindOf(HextWorld::desc()))) {
        reportLeftOut(&object, "node", "it stands in no selected site and zone");
    }
}

void reportRest(const HxDbTreeNode* failed, const SceneTree::Selection& selection) {
    for (const HxDbTreeNode* node = failed->getBrother(); node != nullptr; node = node->getBrother()) {
        if (isChecked(selection, node)) {
            reportLeftOut(objectOfNode(node), "node", endedLevel);
        }
    }
}

}  // namespace

void SceneTree::addDataTree(LiNwcScene scene, HxDbTreeNode* root, const Selection& selection,
                            const std::string& shortName) {
    entered_.clear();
    Tree tree{scene, root, selection, OwnedGroup(LiNwcGroupCreate()), {}};
    for (TreeWalker walker(root); !walker.done(); walker.next()) {
        visit(walker.current(), tree, shortName);
    }
    LiNwcSceneAddNode(scene, tree.group.get());
}

void SceneTree::visit(HxDbTreeNode* node, Tree& tree, const std::string& shortName) {
    steps_.visit();
    HxDbObject* object = objectOfNode(node);
    if (object == nullptr) {
        // The dialog has no item for such a node.
        if (node->getParent() == nullptr || isChecked(tree.selection, node->getParent())) {
            reportLeftOutNode(*node, "node", "its object cannot be opened");
        }
        return;
    }
    const bool isWorld = object->isKindOf(HextWorld::desc());
    if (isWorld) {
        setName(tree.group.get(), shortName);
    }
    if (!isWorld && isChecked(tree.selection, node)) {
        addSelected(object, node, tree);
    }
}

void SceneTree::addSelected(HxDbObject* object, HxDbTreeNode* node, Tree& tree) {
    if (node == tree.root) {
        setName(tree.group.get(), treelevels::world.nameless);
    }
    if (object->isKindOf(HextSite::desc())) {
        addSite(*object, node, tree);
    } else if (object->isKindOf(HextZone::desc()) || object->isKindOf(HextZoneDirectory::desc())) {
        addBelowSite(*object, node, tree);
    } else if (node == tree.root) {
        addRootManager(object, tree);
    } else {
        reportHomeless(*object, node);
    }
}

void SceneTree::addSite(const HxDbObject& object, const HxDbTreeNode* node, Tree& tree) {
    OwnedGroup group = namedGroup(object, treelevels::site);
    LiNwcGroupAddNode(tree.group.get(), group.get());
    tree.sites[node->objectId()] = std::move(group);
}

// A zone or a zone directory, under its site or alone.
void SceneTree::addBelowSite(const HxDbObject& object, HxDbTreeNode* node, Tree& tree) {
    const HxDbTreeNode* parent = node->getParent();
    const auto site = parent != nullptr ? tree.sites.find(parent->objectId()) : tree.sites.end();
    if (site == tree.sites.end() && node != tree.root) {
        reportHomeless(object, node);
        return;
    }
    const bool isZone = object.isKindOf(HextZone::desc());
    entered_.insert(node->objectId());
    const OwnedGroup group = namedGroup(object, isZone ? treelevels::zone : treelevels::directory);
    LiNwcGroupAddNode(site != tree.sites.end() ? site->second.get() : tree.group.get(), group.get());
    const auto addAll = isZone ? &SceneTree::addZoneChildren : &SceneTree::addDirectoryChildren;
    (this->*addAll)(node, group.get(), tree.scene, tree.selection);
}

void SceneTree::addRootManager(HxDbObject* object, Tree& tree) {
    if (object->isKindOf(HextAxiss::desc())) {
        addGridSystem(*object, tree.root, tree.scene);
    } else {
        managers_.addManager(object, tree.root, tree.group.get(), tree.selection);
    }
}

void SceneTree::addZoneChildren(HxDbTreeNode* zoneNode, LiNwcGroup parentGroup, LiNwcScene scene,
                                const Selection& selection) {
    Level level{parentGroup, scene, selection, {}};
    if (const HxDbTreeNode* failed = addChildren(zoneNode, level)) {
        reportRest(failed, selection);
    }
    addSortedManagers(level);
}

void SceneTree::addDirectoryChildren(HxDbTreeNode* directoryNode, LiNwcGroup parentGroup, LiNwcScene scene,
                                     const Selection& selection) {
    Level level{parentGroup, scene, selection, {}};
    const HxDbTreeNode* failed = addChildren(directoryNode, level);
    if (failed == nullptr) {
        addSortedManagers(level);
        return;
    }
    hxcad::hextPrintf("\nOpen ObjId:%lld Fail", static_cast<long long>(failed->getTreeNodeValue().toInt()));
    reportRest(failed, selection);
    for (const auto& entry : level.waiting) {
        reportLeftOut(openAs<HxDbObject>(entry.first), "node", "an object behind it cannot be opened");
    }
}

const HxDbTreeNode* SceneTree::addChildren(const HxDbTreeNode* node, Level& level) {
    if (!checkChildChain(node).isWhole) {
        return nullptr;
    }
    for (HxDbTreeNode* child = node->getSon(); child != nullptr; child = child->getBrother()) {
        if (!isChecked(level.selection, child)) {
            continue;
        }
        HxDbObject* object = objectOfNode(child);
        if (object == nullptr) {
            return child;
        }
        addChild(object, child, level);
    }
    return nullptr;
}

void SceneTree::addChild(HxDbObject* object, HxDbTreeNode* node, Level& level) {
    if (object->isKindOf(HextZoneDirectory::desc())) {
        addDirectory(*object, node, level);
    } else if (object->isKindOf(HextAxiss::desc())) {
        if (options_.gridsAsGeometry) {
            managers_.addManager(object, node, level.parentGroup, level.selection);
        } else {
            addGridSystem(*object, node, level.scene);
        }
    } else if (options_.sortsManagers) {
        level.waiting.emplace(object->objectId(), node);
    } else {
        managers_.addManager(object, node, level.parentGroup, level.selection);
    }
}

void SceneTree::addDirectory(const HxDbObject& object, HxDbTreeNode* node, const Level& level) {
    if (!enterOnce(object, node)) {
        return;
    }
    const OwnedGroup group = namedGroup(object, treelevels::directory);
    addDirectoryChildren(node, group.get(), level.scene, level.selection);
    LiNwcGroupAddNode(level.parentGroup, group.get());
}

// False for a node that was entered before: a directory below itself has no end.
bool SceneTree::enterOnce(const HxDbObject& object, const HxDbTreeNode* node) {
    const bool isNew = entered_.insert(node->objectId()).second;
    if (!isNew) {
        reportLeftOut(&object, "tree", "the directory stands in the tree a second time");
    }
    return isNew;
}

// Ids that the script leaves out stand in the run report already.
void SceneTree::addSortedManagers(const Level& level) {
    if (level.waiting.empty()) {
        return;
    }
    std::vector<HxDbObjectId> ids;
    for (const auto& entry : level.waiting) {
        ids.push_back(entry.first);
    }
    std::vector<HxDbObjectId> sorted;
    sortTreeNodes(ids, sorted);
    for (const HxDbObjectId id : sorted) {
        const auto entry = level.waiting.find(id);
        HxDbObject* object = entry != level.waiting.end() ? openAs<HxDbObject>(id, 2) : nullptr;
        if (object != nullptr) {
            managers_.addManager(object, entry->second, level.parentGroup, level.selection);
        } else {
            reportLeftOut({id, "", "node"}, "sortTreeNodes gives it, but no manager has this id");
        }
    }
}

void SceneTree::addGridSystem(const HxDbObject& grid, const HxDbTreeNode* node, LiNwcScene scene) const {
    addGrid(grid, node, hasName(grid) ? grid.getDisplayName() : objects_.nameOf(grid), scene);
}

}  // namespace nv
