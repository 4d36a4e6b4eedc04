#include "eem/walk.h"

#include "exportbase/child_chain.h"
#include "exportbase/object_properties.h"
#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/smrtln.h"
#include "tolmar/text.h"

#include <algorithm>

namespace eem {

namespace {

// The colour that a pipeline gives to its components; 0 for all else.
int pipelineColor(const HxDbObject& manager) {
    if (!manager.isKindOf(HextPipeline::desc())) {
        return 0;
    }
    const std::span<const std::string_view> keys = smrtln::bomKeys();
    for (const smrtln::BomRecord& record : smrtln::getObjectBomRecords(&manager)) {
        if (keys[record.key] == "color") {
            return integerOf(kvText(smrtln::toKVParams(record)));
        }
    }
    return 0;
}

// A manager, zone or the like, to which the walk of the tree has to come.
bool isTreePart(const HxDbObject* object) {
    return object->isKindOf(HextNameNode::desc());
}

}  // namespace

TreeWalk::TreeWalk(Content& content)
    : content_(content), selectedNodes_(ExportDataDlg::selectedNodes()),
      selectedObjects_(ExportDataDlg::selectedObjects()) {}

void TreeWalk::walk(HxDbTreeNode* root) {
    for (TreeWalker walker(root); !walker.done(); walker.next()) {
        // The scope dialog has told of those that do not open.
        if (const HxDbObject* object = objectOfNode(walker.current())) {
            enterNode(walker.current(), *object);
        }
        if (plainManagers_.contains(walker.current())) {
            walker.skipChildren();
        }
    }
    bars_.close();
}

// Every node of the tree, also those below a manager.
void TreeWalk::enterNode(HxDbTreeNode* node, const HxDbObject& object) {
    const TreeLevel* level = object.isKindOf(HextNameNode::desc()) ? levelOf(content_.levels(), object) : nullptr;
    if (level == nullptr) {
        reportMisplaced(node, object);
        return;
    }
    bars_.enter(*level, object, content_.title());
    if (level->type == HextSite::desc()) {
        bars_.startSite(checkChildChain(node).count);
    } else if (level->type == HextZone::desc()) {
        enterZone(node);
        bars_.zoneDone();
    } else if (level->type == HextZoneDirectory::desc()) {
        enterDirectory(node);
    }
}

void TreeWalk::enterZone(HxDbTreeNode* node) {
    const ChildChain chain = checkChildChain(node);
    std::size_t done = 0;
    for (HxDbTreeNode* son = chain.isWhole ? node->getSon() : nullptr; son != nullptr; son = son->getBrother()) {
        const HxDbObject* manager = objectOfNode(son);
        if (manager == nullptr) {
            continue;
        }
        if (content_.startManager(*manager)) {
            enterManager(son, *manager, pipelineColor(*manager));
            bars_.managerDone(done++, chain.count);
        } else {
            reportGrid(son, *manager);
        }
    }
}

void TreeWalk::enterDirectory(HxDbTreeNode* node) {
    if (std::find(openDirectories_.begin(), openDirectories_.end(), node) != openDirectories_.end()) {
        reportLeftOut({node->objectId(), tolmar::textOrEmpty(node->getName()), "tree"},
                      "the directory stands below itself");
        return;
    }
    const ChildChain chain = checkChildChain(node);
    std::size_t done = 0;
    openDirectories_.push_back(node);
    for (HxDbTreeNode* son = chain.isWhole ? node->getSon() : nullptr; son != nullptr; son = son->getBrother()) {
        const HxDbObject* object = objectOfNode(son);
        if (object != nullptr && object->isKindOf(HextZoneDirectory::desc())) {
            enterDirectory(son);
        } else if (object != nullptr && enterDirectorySon(son, *object)) {
            bars_.managerDone(done++, chain.count);
        }
    }
    openDirectories_.pop_back();
    bars_.resetManagers();
}

// Properties from the script take the place of the attributes, and of the colour among them.
bool TreeWalk::enterDirectorySon(HxDbTreeNode* node, const HxDbObject& object) {
    if (!content_.startManager(object)) {
        reportGrid(node, object);
        return false;
    }
    getObjectProperties(object.objectId(), properties_);
    enterManager(node, object, properties_.empty() ? pipelineColor(object) : 0);
    return true;
}

void TreeWalk::enterManager(HxDbTreeNode* node, const HxDbObject& manager, int color) {
    getAllSubObjects(node, objects_);
    if (objects_.empty()) {
        getTreeNodeObject(node, objects_);
    }
    if (std::none_of(objects_.begin(), objects_.end(), isTreePart)) {
        plainManagers_.insert(node);
    }
    const std::size_t all = objects_.size();
    std::for_each_n(objects_.begin(), std::min(CadGiDraw::shapesAhead, all), CadGiDraw::expectPrimarys);
    for (std::size_t i = 0; i < all; ++i) {
        if (i + CadGiDraw::shapesAhead < all) {
            CadGiDraw::expectPrimarys(objects_[i + CadGiDraw::shapesAhead]);
        }
        if (!selectedObjects_.contains(objects_[i]->objectId())) {
            reportRest(manager, i + 1);
            return;
        }
        bars_.objectDone(i + 1, all);
        takeObject(*objects_[i], color);
    }
    bars_.resetObjects();
    objectCount_ += all;
}

void TreeWalk::takeObject(const HxDbObject& object, int& color) {
    if (!isShapeObject(object)) {
        content_.passOver(object);
        return;
    }
    const auto& smart = static_cast<const HxDbSmrtlnEntity&>(object);
    if (smart.isKindOf(HxDbNonTube::desc())) {
        color = smart.getColorIdx();
    }
    content_.writeObject(smart, color);
}

void TreeWalk::reportGrid(const HxDbTreeNode* node, const HxDbObject& grid) const {
    if (isChecked(selectedNodes_, node)) {
        reportLeftOut(&grid, "grid", "grids have no place in an EEM file");
    }
}

// What was selected behind an object that was not. The list of a zone's son that is no manager ends at once, and what
// stands below it is walked on its own.
void TreeWalk::reportRest(const HxDbObject& manager, std::size_t from) const {
    for (std::size_t i = from; i < objects_.size() && manager.isKindOf(HextManager::desc()); ++i) {
        const HxDbObject& object = *objects_[i];
        const bool isLost = isShapeObject(object) && content_.isLossWhenMissed(object);
        if (isLost && selectedObjects_.contains(object.objectId())) {
            reportLeftOut(&object, "object", "an object before it in its manager was not selected");
        }
    }
}

// What was checked where no zone leads to it.
void TreeWalk::reportMisplaced(const HxDbTreeNode* node, const HxDbObject& object) {
    const HxDbTreeNode* parent = node->getParent();
    if (parent != lastParent_) {
        lastParent_ = parent;
        lastParentObject_ = objectOfNode(parent);
    }
    if (content_.isLossWhenMissed(object) && !content_.isReachedBelow(lastParentObject_, object) &&
        isChecked(selectedNodes_, node)) {
        const bool isObject = object.isKindOf(HxDbSmrtlnEntity::desc());
        reportLeftOut(&object, isObject ? "object" : "manager",
                      isObject ? "it stands under no manager" : "it stands in no zone");
    }
}

}  // namespace eem
