#include "obm/walk.h"

#include "exportbase/child_chain.h"
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

// Names of records whose object has none; the world has its database's short name.
constexpr const char* namelessRecords[] = {"", "ORNA_SITE", "ORNA_ZONE", "ORNA_ZONEDIR"};

Level levelOf(const HxDbObject& object) {
    struct Row {
        const HxRxClass* type;
        Level level;
    };
    static const Row rows[] = {{HextWorld::desc(), worldLevel},
                               {HextSite::desc(), siteLevel},
                               {HextZone::desc(), zoneLevel},
                               {HextZoneDirectory::desc(), directoryLevel}};
    for (const Row& row : rows) {
        if (object.isKindOf(row.type)) {
            return row.level;
        }
    }
    return noLevel;
}

const char* nameOf(const HxDbObject& object, const char* otherwise) {
    const char* name = object.getDisplayName();
    return name != nullptr ? name : otherwise;
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
    progress_.fetch();
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
    progress_.finish();
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
    progress_.open(title, 3);
    addRecord(node, object, worldLevel);
}

void ObmWalk::visitSite(HxDbTreeNode* node, HxDbObject& object) {
    progress_.open(title, 2);
    if (progress_.barCount() >= 3) {
        progress_.setText(nameOf(object, namelessRecords[siteLevel]), progress_.barCount() - 2);
    }
    addRecord(node, object, siteLevel);
}

void ObmWalk::visitZone(HxDbTreeNode* node, HxDbObject& object) {
    progress_.open(title, 1);
    if (progress_.barCount() >= 2) {
        progress_.setText(nameOf(object, namelessRecords[zoneLevel]), progress_.barCount() - 1);
    }
    walkZone(node, addRecord(node, object, zoneLevel));
    if (progress_.barCount() >= 2) {
        progress_.setBar(++zonesDone_, zonesOfSite_, progress_.barCount() - 2);
    }
}

void ObmWalk::visitDirectory(HxDbTreeNode* node, HxDbObject& object) {
    progress_.open(directoryTitle, 1);
    if (progress_.barCount() >= 2) {
        progress_.setText(nameOf(object, namelessRecords[directoryLevel]), progress_.barCount() - 1);
    }
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
        zonesOfSite_ = checkChildChain(node).count;
        zonesDone_ = 0;
    }
    ObmNode& parent = recordAbove(node, level);
    ObmNode& record = tree_.add(parent, nameOf(object, namelessRecords[level]));
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
            progress_.setBar(done++, sons.count, progress_.barCount() - 1);
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
            progress_.setBar(done++, sons.count, progress_.barCount() - 1);
        }
    }
    progress_.setBar(0, 1, progress_.barCount() - 1);
    openDirectories_.erase(node);
}

// True for a son whose objects went into the directory's own record.
bool ObmWalk::writeInDirectory(HxDbTreeNode* son, HxDbObject& object, ObmNode& record) {
    if (object.isKindOf(HextZoneDirectory::desc())) {
        walkDirectory(son, tree_.add(record, nameOf(object, namelessRecords[directoryLevel])));
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
