#include "obm/walk.h"

#include "exportbase/child_chain.h"
#include "frame/progress_slot.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/tree_walker.h"
#include "scripts/node_name.h"
#include "tolmar/text.h"

namespace pmodel {

namespace {

constexpr const char* title = "PModel导出";
constexpr const char* directoryTitle = "PMODEL导出";

enum Level : int { worldLevel = 0, siteLevel = 1, zoneLevel = 2, directoryLevel = 3, noLevel = 4 };

// By Level.
constexpr TreeLevel levels[] = {treelevels::world, treelevels::site, treelevels::zone, treelevels::directory};

Level levelOf(const HxDbObject& object) {
    const TreeLevel* level = ::levelOf(levels, object);
    return level != nullptr ? static_cast<Level>(level - levels) : noLevel;
}

void report(const HxDbTreeNode* node, const char* why) {
    reportLeftOutNode(*node, "node", why);
}

constexpr const char* doesNotOpen = "it cannot be opened";

}  // namespace

void ObmWalk::walkTree(HxDbTreeNode* root, const char* shortName) {
    if (root == nullptr) {
        return;
    }
    shortName_ = tolmar::textOrEmpty(shortName);
    world_ = nullptr;
    records_.clear();
    // Each tree has a dialog of its own.
    progressSlot() = hxcad::getNamedPipeProgressDialog();
    for (TreeWalker walker(root); !walker.done(); walker.next()) {
        HxDbTreeNode* node = walker.current();
        if (!isChecked(selection_, node)) {
            continue;
        }
        if (HxDbObject* object = objectOfNode(node)) {
            visit(node, *object);
        } else {
            report(node, doesNotOpen);
        }
    }
    bars_.close();
    progressSlot() = nullptr;
}

void ObmWalk::visit(HxDbTreeNode* node, HxDbObject& object) {
    switch (levelOf(object)) {
    case worldLevel:
        return visitWorld(node, object);
    case siteLevel:
        return visitSite(node, object);
    case zoneLevel:
        return visitZone(node, object);
    case directoryLevel:
        return visitDirectory(node, object);
    case noLevel:
        return visitOther(node, object);
    }
}

void ObmWalk::visitWorld(HxDbTreeNode* node, HxDbObject& object) {
    bars_.enter(treelevels::world, object, title);
    addRecord(node, object, worldLevel);
}

void ObmWalk::visitSite(HxDbTreeNode* node, HxDbObject& object) {
    bars_.enter(treelevels::site, object, title);
    addRecord(node, object, siteLevel);
}

void ObmWalk::visitZone(HxDbTreeNode* node, HxDbObject& object) {
    bars_.enter(treelevels::zone, object, title);
    walkZone(node, addRecord(node, object, zoneLevel));
    bars_.zoneDone();
}

void ObmWalk::visitDirectory(HxDbTreeNode* node, HxDbObject& object) {
    bars_.enter(treelevels::directory, object, directoryTitle);
    walkDirectory(node, addRecord(node, object, directoryLevel));
}

// Zones and directories bring the managers below them; what stands elsewhere has no place.
void ObmWalk::visitOther(HxDbTreeNode* node, HxDbObject& object) {
    if (object.isKindOf(HextAxiss::desc())) {
        report(node, "grids have no place in a package");
    } else if (object.isKindOf(HextNameNode::desc()) && !isBelowSelected(node)) {
        report(node, "no zone or directory above it is selected");
    }
}

bool ObmWalk::isBelowSelected(const HxDbTreeNode* node) const {
    for (node = node->getParent(); node != nullptr; node = node->getParent()) {
        const HxDbObject* object = objectOfNode(node);
        const Level level = object != nullptr ? levelOf(*object) : noLevel;
        if ((level == zoneLevel || level == directoryLevel) && isChecked(selection_, node)) {
            return true;
        }
    }
    return false;
}

// The record of a world, site, zone or directory, under that of the nearest ancestor of a higher level.
ObmNode& ObmWalk::addRecord(const HxDbTreeNode* node, const HxDbObject& object, int level) {
    if (level == worldLevel) {
        world_ = &tree_.add(tree_.root(), shortName_);
        return *(records_[node] = world_);
    }
    if (level == siteLevel) {
        bars_.startSite(checkChildChain(node).count);
    }
    ObmNode& parent = recordAbove(node, level);
    ObmNode& record = tree_.add(parent, nameOf(levels[level], object));
    records_[node] = &record;
    return record;
}

// The tree names the ancestors, so that nothing lands under the site or zone that happened to come before it.
ObmNode& ObmWalk::recordAbove(const HxDbTreeNode* node, int level) {
    for (node = node->getParent(); node != nullptr; node = node->getParent()) {
        const HxDbObject* object = objectOfNode(node);
        const Level above = object != nullptr ? levelOf(*object) : noLevel;
        if (above >= level || above == directoryLevel) {
            continue;
        }
        const auto known = records_.find(node);
        return known != records_.end() ? *known->second : addRecord(node, *object, above);
    }
    return worldRecord();
}

// For a tree that has no world at its root.
ObmNode& ObmWalk::worldRecord() {
    if (world_ == nullptr) {
        world_ = &tree_.add(tree_.root(), shortName_);
    }
    return *world_;
}

// The sons in order, selected or not. A son that is a directory counts as a manager here.
void ObmWalk::walkZone(HxDbTreeNode* node, ObmNode& record) {
    const ChildChain sons = checkChildChain(node);
    if (!sons.isWhole) {
        return;
    }
    std::size_t done = 0;
    TreeWalker walker(node);
    walker.next();
    while (!walker.done()) {
        HxDbTreeNode* son = walker.current();
        const HxDbObject* object = objectOfNode(son);
        if (object == nullptr) {
            report(son, doesNotOpen);
        } else if (!object->isKindOf(HextAxiss::desc())) {
            writeManager(son, *object, record);
            bars_.managerDone(done++, sons.count);
        }
        walker.skipChildren();
        walker.next();
    }
}

void ObmWalk::writeManager(HxDbTreeNode* node, const HxDbObject& object, ObmNode& zone) {
    ObmNode& record = tree_.add(zone, nodeName(&object, true));
    const int color = objects_.addBomData(object, record);
    objects_.writeObjects(node, record, color);
}

void ObmWalk::walkDirectory(HxDbTreeNode* node, ObmNode& record) {
    const ChildChain sons = checkChildChain(node);
    if (!sons.isWhole) {
        return;
    }
    if (!openDirectories_.insert(node).second) {
        report(node, "it stands inside itself");
        return;
    }
    std::size_t done = 0;
    for (HxDbTreeNode* son = node->getSon(); son != nullptr; son = son->getBrother()) {
        HxDbObject* object = objectOfNode(son);
        if (object == nullptr) {
            report(son, doesNotOpen);
        } else if (writeInDirectory(son, *object, record)) {
            bars_.managerDone(done++, sons.count);
        }
    }
    bars_.resetManagers();
    openDirectories_.erase(node);
}

// True for a son whose objects went into the directory's own record.
bool ObmWalk::writeInDirectory(HxDbTreeNode* son, HxDbObject& object, ObmNode& record) {
    if (object.isKindOf(HextZoneDirectory::desc())) {
        walkDirectory(son, tree_.add(record, nameOf(treelevels::directory, object)));
        return false;
    }
    if (object.isKindOf(HextAxiss::desc())) {
        return false;
    }
    const int color = objects_.addScriptProperties(object, record) ? 0 : objects_.addBomData(object, record);
    objects_.writeObjects(son, record, color);
    return true;
}

}  // namespace pmodel
