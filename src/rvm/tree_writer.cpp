#include "rvm/tree_writer.h"

#include "exportbase/manager_contents.h"
#include "frame/progress_slot.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/smrtln.h"
#include "tolmar/code_page.h"
#include "tolmar/text.h"

#include <unordered_set>

namespace rvm {

namespace {

HxDbObjectId idOf(const HxDbObject* object) {
    return object != nullptr ? object->objectId() : HxDbObjectId();
}

std::string displayName(const HxDbObject* object) {
    return tolmar::textOrEmpty(object != nullptr ? object->getDisplayName() : nullptr);
}

// The label of a site's or zone's row: the prefix and the name, or the prefix twice.
std::string rowText(const RvmNode& node) {
    const std::string prefix = node.level == levelSite ? "Site:" : "Zone:";
    const std::string name = displayName(node.object);
    return prefix + (name.empty() ? prefix : name);
}

// Opens the objects of a branch; those that do not open stand in the run report.
void openBranch(const std::vector<HxDbObjectId>& ids, std::vector<HxDbObject*>& objects) {
    objects.clear();
    for (const HxDbObjectId id : ids) {
        if (HxDbObject* object = openAs<HxDbObject>(id)) {
            objects.push_back(object);
        } else {
            reportLeftOut({id, "", "object"}, "it cannot be opened");
        }
    }
}

// Objects of a pipeline that stand in no branch have no place when it opens into its branches.
void reportBranchless(HxDbTreeNode* node, const std::vector<std::vector<HxDbObjectId>>& branches) {
    std::unordered_set<HxDbObjectId> inBranch;
    for (const auto& branch : branches) {
        inBranch.insert(branch.begin(), branch.end());
    }
    std::vector<HxDbObject*> all;
    getAllSubObjects(node, all, nullptr);
    for (const HxDbObject* object : all) {
        if (!inBranch.contains(object->objectId()) && !object->isKindOf(HxDbTubeWeld::desc())) {
            reportLeftOut(object, "object", "it stands in no branch of its pipeline");
        }
    }
}

}  // namespace

// By a stack of its own, so that no depth of the tree is too deep.
void TreeWriter::writeNode(const RvmNode& root, const std::string& name) {
    if (!begin(root, name)) {
        return;
    }
    while (!open_.empty()) {
        Open& top = open_.back();
        if (top.nextChild < top.node->children.size()) {
            begin(*top.node->children[top.nextChild++], {});
        } else {
            end(*top.node);
            open_.pop_back();
        }
    }
}

bool TreeWriter::begin(const RvmNode& node, const std::string& rootName) {
    if (node.object != nullptr && node.object->isKindOf(HextAxiss::desc())) {
        reportLeftOut(node.object, "grid", "grids have no place in an RVM file");
        return false;
    }
    const std::string plainName = node.level == levelRoot ? rootName : pair_.nameOf(node.object, true);
    reportProgress(node, plainName);
    const std::string name = uniqueName(plainName);
    beginGroup(name);
    if (node.level < levelManager) {
        pair_.text().writeElementStart(name, elementIndent(node.level));
    }
    if (node.level == levelSite || node.level == levelZone) {
        pair_.text().writeElementAttributes(idOf(node.object), node.level);
    }
    if (node.level == levelManager) {
        writeContents(node, name);
    }
    open_.push_back({&node, 0, pair_.options().compat ? std::make_unique<SiblingNames>() : nullptr});
    return true;
}

void TreeWriter::end(const RvmNode& node) {
    pair_.rvm().writeGroupEnd();
    const bool isClosedInText = node.level == levelSite || node.level == levelZone;
    if (isClosedInText || (node.level == levelRoot && pair_.options().compat)) {
        pair_.text().writeElementEnd(elementIndent(node.level));
    }
}

// Among the children of the innermost open element; without `compat` every name stands as it is.
std::string TreeWriter::uniqueName(const std::string& name) {
    return open_.empty() || open_.back().names == nullptr ? name : open_.back().names->unique(name);
}

void TreeWriter::beginGroup(const std::string& name) {
    pair_.rvm().writeGroupBegin(tolmar::toUtf8(name), noMaterial);
}

void TreeWriter::writeContents(const RvmNode& manager, const std::string& name) {
    if (manager.object == nullptr || !manager.object->isKindOf(HextManager::desc())) {
        reportLeftOut(manager.object, "node", "its class holds no objects");
        return;
    }
    const bool isPipeline = manager.object->isKindOf(HextPipeline::desc());
    if (isPipeline && pair_.options().expandBranches) {
        writeBranches(*manager.object, manager.treeNode);
    } else {
        writeParts(manager, name, isPipeline);
    }
}

// The attribute file gets an element for each part. The group is one for all, but with `compat` each further part has a
// group of its own, so that both files hold the same tree.
void TreeWriter::writeParts(const RvmNode& manager, const std::string& name, bool isPipeline) {
    const auto isSelected = [this](const HxDbTreeNode* node) { return isSelectedForRvm(selection_, node); };
    std::string partName = name;
    bool isFirst = true;
    for (const ContentPart& part : managerContents(manager.object, manager.treeNode, isSelected)) {
        if (part.objects.empty()) {
            continue;
        }
        if (!isFirst && pair_.options().compat) {
            pair_.rvm().writeGroupEnd();
            partName = uniqueName(name);
            beginGroup(partName);
        }
        isFirst = false;
        objects_.writeObjects(part.objects, part.id, partName, isPipeline);
    }
}

void TreeWriter::writeBranches(const HxDbObject& pipeline, HxDbTreeNode* node) {
    std::vector<std::vector<HxDbObjectId>> branches;
    smrtln::getBranchOfPipeline_piping(pipeline.objectId(), branches, nullptr, nullptr, 0);
    std::vector<HxDbObject*> objects;
    for (std::size_t i = 0; i < branches.size(); ++i) {
        const std::string name = uniqueName("Branch:" + std::to_string(i));
        openBranch(branches[i], objects);
        beginGroup(name);
        objects_.writeObjects(objects, HxDbObjectId(), name, true);
        pair_.rvm().writeGroupEnd();
    }
    reportBranchless(node, branches);
}

// A row for each of the three levels. A node counts as done when it is entered.
void TreeWriter::reportProgress(const RvmNode& node, const std::string& name) {
    if (node.level == levelRoot || progressSlot() == nullptr) {
        return;
    }
    const int row = node.level - 1;
    const std::string text = node.level == levelManager ? name : rowText(node);
    progressSlot()->setBarText(text.c_str(), row);
    const std::size_t done = ++done_[static_cast<std::size_t>(node.level)];
    progressSlot()->setBar(percentage(done, tree_.count(node.level)), row);
}

}  // namespace rvm
