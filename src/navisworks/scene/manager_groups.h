// Managers as groups of the scene: what they hold, whole or by pipe runs.
#pragma once

#include "frame/export_dialog.h"
#include "navisworks/scene/object_groups.h"
#include "platform/smrtln.h"

#include <string>
#include <vector>

namespace nv {

class ManagerGroups {
public:
    ManagerGroups(const Options& options, ObjectGroups& objects) : options_(options), objects_(objects) {}

    // A group with the manager's properties and contents. A smart object in a manager's place has none, which the run
    // report says.
    void addManager(HxDbObject* object, HxDbTreeNode* treeNode, LiNwcGroup parentGroup,
                    const ExportDataDlg::NodeSelection& selection);

private:
    bool addPipeRuns(const HxDbObject& pipeline, const HxDbTreeNode* treeNode, LiNwcGroup group);
    void addPipeRun(const std::string& name, const std::vector<KVParams>& params,
                    const std::vector<HxDbObjectId>& items, const HxDbTreeNode* treeNode, LiNwcGroup parent);
    void addContents(HxDbObject* object, HxDbTreeNode* treeNode, LiNwcGroup group,
                     const ExportDataDlg::NodeSelection& selection);

    const Options& options_;
    ObjectGroups& objects_;
};

}  // namespace nv
