#include "hextinterface/model_extraction.h"

#include "frame/export_dialog.h"
#include "frame/progress_slot.h"
#include "hextinterface/hextbasemethod/object_tests.h"
#include "hextinterface/hextbasemethod/used_colours.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/smrtln.h"
#include "platform/tree_walker.h"
#include "tolmar/run_report.h"
#include "tolmar/text.h"

#include <algorithm>

namespace {

constexpr int openRange = 99;
constexpr const char* openTitle = "提取所有数据中:";
constexpr Plant::Flow againstBranch = 1;

// Tells the objects of ventilation and cable work. Attributes are read past the cache: this is the only look at most
// objects before their own stage.
class SpecialModules {
public:
    // True when a pipeline has members and all of them are such objects.
    bool containAll(const HxDbObject* pipeline) const {
        std::vector<HxDbObject*> members;
        transIdArray2PointerArray(pipeline->getMemberIds(), members);
        return !members.empty() &&
               std::all_of(members.begin(), members.end(), [this](const HxDbObject* m) { return contains(m); });
    }
    bool contains(const HxDbObject* object) const {
        for (const smrtln::BomRecord& record : smrtln::getObjectBomRecords(object)) {
            if (record.key == key_) {
                return isSpecial(kvText(smrtln::toKVParams(record)));
            }
        }
        return false;
    }

private:
    static bool isSpecial(std::string_view module) { return module == "Hvac" || module == "Cable"; }
    static std::size_t keyNumber() {
        const auto keys = smrtln::bomKeys();
        return static_cast<std::size_t>(std::find(keys.begin(), keys.end(), "module") - keys.begin());
    }

    std::size_t key_ = keyNumber();  // beyond all keys when none is "module"
};

// Sorts the nodes of one tree; the selection and the lists are those of the command.
class Classifier {
public:
    Classifier(ModelScope& scope, ObjectSet& special) : scope_(scope), special_(special) {}

    void walk(HxDbTreeNode* root) {
        const auto& selection = ExportDataDlg::selectedNodes();
        for (TreeWalker walker(root); !walker.done(); walker.next()) {
            const HxDbTreeNode* node = walker.current();
            const auto at = selection.find(node->objectId());
            if (at == selection.end() || !at->second) {
                continue;
            }
            HxDbObject* object = objectOf(*node);
            if (object != nullptr && !sort(node, object)) {
                noteStray(node, object);
            }
        }
    }

private:
    // False for what belongs in no list.
    bool sort(const HxDbTreeNode* node, HxDbObject* object) {
        if (!object->isKindOf(HextManager::desc())) {
            return false;
        }
        const int colour = static_cast<HextNameNode*>(object)->getColorIdx();
        if (object->isKindOf(HextPipeline::desc())) {
            takePipeline(node, object, colour);
        } else if (object->isKindOf(HextStruct::desc())) {
            addAllBelow(node, scope_.containers[object]);
            useColour(ColourClass::Structure, colour);
        } else if (object->isKindOf(HextEquipe::desc())) {
            scope_.equipment.push_back(object);
            useColour(ColourClass::Equipment, colour);
        } else if (object->isKindOf(HextSupport::desc())) {
            scope_.supports.push_back(object);
            useColour(ColourClass::Support, colour);
        } else if (object->isKindOf(HextAxiss::desc())) {
            addAllBelow(node, scope_.grids[object]);
        } else {
            return false;
        }
        return true;
    }

    // Objects that no manager holds. Brothers come one after the other.
    void noteStray(const HxDbTreeNode* node, HxDbObject* object) {
        if (!object->isKindOf(HxDbSmrtlnEntity::desc())) {
            return;
        }
        if (node->getParent() != lastParent_) {
            lastParent_ = node->getParent();
            lastHolds_ = holdsObjects(lastParent_);
        }
        if (!lastHolds_) {
            scope_.strays.push_back(object);
        }
    }

    // An object that hangs on another one goes with that.
    static bool holdsObjects(const HxDbTreeNode* node) {
        const HxDbObject* object = node != nullptr ? objectOf(*node) : nullptr;
        return object != nullptr &&
               (object->isKindOf(HextManager::desc()) || object->isKindOf(HxDbSmrtlnEntity::desc()));
    }

    void takePipeline(const HxDbTreeNode* node, HxDbObject* pipeline, int colour) {
        getAllSubObjects(node, below_);
        for (HxDbObject* object : below_) {
            if (modules_.contains(object)) {
                scope_.containers[pipeline].push_back(object);
                special_.insert(object);
                useColour(ColourClass::Structure, colour);
            }
        }
        scope_.pipelines.push_back(pipeline);
        useColour(ColourClass::Pipeline, colour);
    }

    void addAllBelow(const HxDbTreeNode* node, ObjectList& list) {
        getAllSubObjects(node, below_);
        list.insert(list.end(), below_.begin(), below_.end());
    }

    ModelScope& scope_;
    ObjectSet& special_;
    SpecialModules modules_;
    ObjectList below_;
    const HxDbTreeNode* lastParent_ = nullptr;
    bool lastHolds_ = false;
};

std::vector<HxDbTreeNode*> selectedRoots() {
    const auto& selection = ExportDataDlg::selectedNodes();
    std::vector<HxDbTreeNode*> roots;
    HxDbTreeNode* main = hxcom::getDataManTreeRoot();
    if (main != nullptr && selectedValue(selection, main->objectId())) {
        roots.push_back(main);
    }
    std::vector<HxDbObject*> others;
    hxcom::getTreeRootOfOther(others);
    for (HxDbObject* other : others) {
        HxDbTreeNode* root = HxDbTreeNode::cast(other);
        if (root != nullptr && selectedValue(selection, root->objectId())) {
            roots.push_back(root);
        }
    }
    return roots;
}

bool startsAtCrowdedNozzle(const HxDbTubeModel* start) {
    if (!start->isKindOf(HxDbNozzleModel::desc())) {
        return false;
    }
    std::vector<HxDbObject*> connected;
    start->getAllConnObject(connected);
    return connected.size() != 1;
}

ComponentList openBranch(const HxDbObject* pipeline, const std::vector<HxDbObjectId>& ids) {
    ComponentList branch;
    for (const HxDbObjectId id : ids) {
        if (HxDbSmrtlnEntity* component = openAs<HxDbSmrtlnEntity>(id)) {
            branch.push_back(component);
        } else {
            reportLeftOut({id, tolmar::textOrEmpty(pipeline->getDisplayName()), "component"}, "cannot be opened");
        }
    }
    return branch;
}

void orient(ComponentList& branch) {
    if (branch.size() < 2) {
        return;
    }
    const int number = branch[0]->getConnNoOfSmrtln(branch[1], 0);
    if (branch[0]->getFlow(number) == againstBranch) {
        std::reverse(branch.begin(), branch.end());
    }
}

}  // namespace

ObjectSet& specialSet() {
    static ObjectSet set;
    return set;
}

bool classifyModel(ModelScope& scope, ObjectSet& special) {
    ExportDataDlg dialog(ExportDataDlg::HextOut, true);
    if (dialog.DoModal() != OrnLogicForm::ResultOk || ExportDataDlg::selectedNodes().empty()) {
        return false;
    }
    auto* progress = progressSlot();
    if (!progress->isProgressOpen()) {
        progress->openProgress(openRange, openTitle, 0);
    }
    progress->setBar(50, 0);
    progress->setText("模型分类中......");
    Classifier classifier(scope, special);
    for (HxDbTreeNode* root : selectedRoots()) {
        classifier.walk(root);
    }
    return true;
}

BranchTree extractBranches(const ObjectList& pipelines) {
    BranchTree branches;
    progressSlot()->addBar();
    progressSlot()->setText("提取分支......");
    for (std::size_t i = 0; i < pipelines.size(); ++i) {
        PipelineBranches found = getPipelineBranches(pipelines[i]);
        if (!found.empty()) {
            branches.push_back(std::move(found));
        }
        progressSlot()->setBar(percentage(i, pipelines.size()), 1);
    }
    progressSlot()->removeBar();
    return branches;
}

PipelineBranches getPipelineBranches(HxDbObject* pipeline) {
    const HxDbObjectId id = pipeline->objectId();
    const HxDbTubeModel* start = smrtln::getPipelineStart(id);
    if (start == nullptr) {
        if (!SpecialModules().containAll(pipeline)) {
            reportLeftOut(pipeline, "pipeline", "has no branches: nothing is in it");
        }
        return {};
    }
    if (startsAtCrowdedNozzle(start)) {
        reportLeftOut(pipeline, "pipeline", "has no branches: its first nozzle has other than one connection");
        return {};
    }
    PipelineBranches branches;
    std::vector<std::vector<HxDbObjectId>> idLists;
    smrtln::getBranchOfPipeline_piping(id, idLists, nullptr, nullptr, 0);
    for (const auto& ids : idLists) {
        branches.push_back(openBranch(pipeline, ids));
        orient(branches.back());
    }
    return branches;
}

namespace {

// Cuts shared ends off one branch, from its last component to its first; false for one shared inside.
class SharedEnds {
public:
    explicit SharedEnds(IdMarks& seen) : seen_(seen) {}
    bool examine(ComponentList& branch) {
        for (std::size_t i = branch.size(); i-- > 0;) {
            const HxDbObjectId id = branch[i]->objectId();
            if (seen_.insert(id)) {
                continue;
            }
            if (i != 0 && i + 1 != branch.size()) {
                hxcad::hextPrintf("多个分支存在相同管件%I64d:", static_cast<long long>(id.toInt()));
                return false;
            }
            reportLeftOut(branch[i], "branch end", "belongs to another branch already");
            branch.erase(branch.begin() + static_cast<std::ptrdiff_t>(i));
        }
        return true;
    }

private:
    IdMarks& seen_;
};

}  // namespace

bool checkSharedComponents(BranchTree& branches, IdMarks& componentIds) {
    SharedEnds ends(componentIds);
    for (PipelineBranches& pipeline : branches) {
        for (std::size_t j = pipeline.size(); j-- > 0;) {
            const bool wasEmpty = pipeline[j].empty();
            if (!ends.examine(pipeline[j])) {
                return false;
            }
            if (!wasEmpty && pipeline[j].empty()) {
                pipeline.erase(pipeline.begin() + static_cast<std::ptrdiff_t>(j));
            }
        }
    }
    branches.erase(std::remove_if(branches.begin(), branches.end(), [](const auto& p) { return p.empty(); }),
                   branches.end());
    return true;
}

std::vector<HxDbNozzleModel*> collectNozzles(const ObjectList& equipment) {
    std::vector<HxDbNozzleModel*> nozzles;
    for (const HxDbObject* item : equipment) {
        for (const HxDbObjectId id : item->getMemberIds()) {
            if (HxDbNozzleModel* nozzle = openAs<HxDbNozzleModel>(id)) {
                nozzles.push_back(nozzle);
            }
        }
    }
    return nozzles;
}

void colourBranches(const PipelineBranches& branches) {
    for (std::size_t i = 0; i < branches.size(); ++i) {
        const auto colour = static_cast<short>(i + 1);
        for (HxDbSmrtlnEntity* component : branches[i]) {
            component->openForWrite(1);
            component->setColorIdx(colour);
            tolmar::runReport().coloured(component->objectId().toInt(), colour);
        }
    }
}
