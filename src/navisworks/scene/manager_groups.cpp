#include "navisworks/scene/manager_groups.h"

#include "exportbase/manager_contents.h"
#include "navisworks/library/session.h"
#include "navisworks/properties/attribute.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "tolmar/code_page.h"

#include <unordered_set>

namespace nv {

namespace {

// The label of a property, where there is one, takes the place of its key.
std::vector<KVParams> labelled(std::vector<KVParams> params) {
    for (KVParams& entry : params) {
        if (!entry.description.empty()) {
            entry.key = entry.description;
        }
    }
    return params;
}

// The objects that open; the others stand in the run report.
std::vector<HxDbObject*> openAll(const std::vector<HxDbObjectId>& ids) {
    std::vector<HxDbObject*> objects;
    for (const HxDbObjectId id : ids) {
        if (HxDbObject* object = openAs<HxDbObject>(id)) {
            objects.push_back(object);
        } else {
            reportLeftOut({id, "", "object"}, "it cannot be opened");
        }
    }
    return objects;
}

// Objects of a pipeline that stand in no run have no place when it opens into its runs.
void reportRunless(const HxDbTreeNode* node, const smrtln::PipeRuns& runs) {
    std::unordered_set<HxDbObjectId> inRun;
    for (const auto& run : runs) {
        inRun.insert(run.second.begin(), run.second.end());
    }
    std::vector<HxDbObject*> all;
    getAllSubObjects(node, all, nullptr);
    for (const HxDbObject* object : all) {
        const bool isLoss = !object->isKindOf(HxDbTubeWeld::desc()) && !object->isKindOf(HxDbTubeStop::desc());
        if (isLoss && !inRun.contains(object->objectId())) {
            reportLeftOut(object, "object", "it stands in no run of its pipeline");
        }
    }
}

}  // namespace

void ManagerGroups::addManager(HxDbObject* object, HxDbTreeNode* treeNode, LiNwcGroup parentGroup,
                               const ExportDataDlg::NodeSelection& selection) {
    if (object->isKindOf(HxDbSmrtlnEntity::desc())) {
        reportLeftOut(object, "object", "it stands in no manager");
    }
    const OwnedAttribute attribute = objects_.propertiesOf(*object);
    const OwnedGroup group(LiNwcGroupCreate());
    LiNwcNodeSetName(group.get(), tolmar::toWide(objects_.nameOf(*object)).c_str());
    const bool opensRuns = options_.expandPipeRuns && object->isKindOf(HextPipeline::desc());
    if (!opensRuns || !addPipeRuns(*object, treeNode, group.get())) {
        addContents(object, treeNode, group.get(), selection);
    }
    LiNwcNodeAddAttribute(group.get(), attribute.get());
    LiNwcGroupAddNode(parentGroup, group.get());
    LibrarySession::check();
}

// False, with a message and nothing added, when the platform does not tell the runs.
bool ManagerGroups::addPipeRuns(const HxDbObject& pipeline, const HxDbTreeNode* treeNode, LiNwcGroup group) {
    smrtln::PipeRuns runs;
    smrtln::PipeRunParams params;
    if (!smrtln::getPiperunOfPipeline(pipeline.objectId(), runs, params, hxcom::getCurrentModule())) {
        hxcad::hextPrintf("\n无法展开piperun分支");
        return false;
    }
    for (const auto& [name, items] : runs) {
        addPipeRun(name, labelled(params[name]), items, treeNode, group);
    }
    reportRunless(treeNode, runs);
    return true;
}

void ManagerGroups::addPipeRun(const std::string& name, const std::vector<KVParams>& params,
                               const std::vector<HxDbObjectId>& items, const HxDbTreeNode* treeNode,
                               LiNwcGroup parent) {
    const OwnedGroup group(LiNwcGroupCreate());
    LiNwcNodeSetName(group.get(), tolmar::toWide(name).c_str());
    const OwnedAttribute attribute = newPropertyAttribute();
    addProperties(params, attribute.get());
    objects_.addObjects(treeNode, group.get(), openAll(items));
    LiNwcNodeAddAttribute(group.get(), attribute.get());
    LiNwcGroupAddNode(parent, group.get());
}

void ManagerGroups::addContents(HxDbObject* object, HxDbTreeNode* treeNode, LiNwcGroup group,
                                const ExportDataDlg::NodeSelection& selection) {
    const auto passes = [&selection](const HxDbTreeNode* node) { return isChecked(selection, node); };
    for (const ContentPart& part : managerContents(object, treeNode, passes)) {
        objects_.addObjects(part.node, group, part.objects);
    }
}

}  // namespace nv
