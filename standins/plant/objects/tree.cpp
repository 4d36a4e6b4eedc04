// The manager tree, databases and the opening of objects.
#include "plant/model/data.h"
#include "platform/hxcom.h"

#include <unordered_set>

using plant::currentModel;
using plant::Model;
using plant::ObjectData;

namespace {

constexpr Hext::ErrorStatus noSuchObject = 1;

HxDbTreeNode* rootOf(const plant::DatabaseData& database) {
    return database.root.object != nullptr ? &database.root.object->node : nullptr;
}

// Knows the nodes that were entered, where a tree may have a cycle.
class CycleGuard {
public:
    explicit CycleGuard(const HxDbTreeNode& start) : needed_(start.data().model->relinked) { enter(&start); }
    bool enter(const HxDbTreeNode* node) { return !needed_ || entered_.insert(node).second; }

private:
    bool needed_;
    std::unordered_set<const HxDbTreeNode*> entered_;
};

// Objects mostly follow each other in the table as they do in the tree.
void expect(const ObjectData* object) {
    constexpr std::uintptr_t ahead = 32;
    const std::uintptr_t at = reinterpret_cast<std::uintptr_t>(object) + ahead * sizeof(ObjectData);
    for (std::uintptr_t line = 0; line < sizeof(ObjectData); line += 64) {
        __builtin_prefetch(reinterpret_cast<const void*>(at + line));
    }
}

// The object of a node; null when it cannot be opened or is of another class.
HxDbObject* objectOf(const HxDbTreeNode& node, const HxRxClass* filter) {
    HxDbObject* object = plant::dataOf(node).opened();
    return object != nullptr && (filter == nullptr || object->isKindOf(filter)) ? object : nullptr;
}

HxDbTreeNode* currentManagerNode() {
    Model* model = currentModel();
    ObjectData* manager = model != nullptr ? model->project.currentManager.object : nullptr;
    return manager != nullptr ? &manager->node : nullptr;
}

}  // namespace

namespace hxcom {

HxDbTreeNode* getDataManTreeRoot() {
    return currentModel() != nullptr ? rootOf(*currentModel()->main) : nullptr;
}

bool getTreeRootOfOther(std::vector<HxDbObject*>& out) {
    out.clear();
    if (currentModel() == nullptr) {
        return false;
    }
    for (const plant::DatabaseData& database : currentModel()->databases) {
        HxDbTreeNode* root = rootOf(database);
        if (&database != currentModel()->main && root != nullptr) {
            out.push_back(root);
        }
    }
    return !out.empty();
}

HxDbDataBase* getMainDataBase(bool) {
    return currentModel() != nullptr ? &currentModel()->main->object : nullptr;
}

const char* queryDbShortName(const HxDbDataBase* database) {
    return database != nullptr ? database->data().shortName : nullptr;
}

void getSizeZone(const HxDbObject* manager, HextSite*& site, HextZone*& zone) {
    site = nullptr;
    zone = nullptr;
    HxDbTreeNode* node = manager != nullptr ? &plant::dataOf(*manager).node : nullptr;
    for (; node != nullptr && site == nullptr; node = node->getParent()) {
        HxDbObject* object = objectOf(*node, nullptr);
        site = HextSite::cast(object);
        zone = zone != nullptr ? zone : HextZone::cast(object);
    }
}

int getCurrentModule() {
    return currentModel() != nullptr ? currentModel()->project.module : 0;
}

const KVParams* findKVParamArray(const std::vector<KVParams>& list, const char* key) {
    if (key == nullptr) {
        return nullptr;
    }
    for (const KVParams& params : list) {
        if (params.key == key) {
            return &params;
        }
    }
    return nullptr;
}

}  // namespace hxcom

hxcad::ManagerTreeNodeFunc hxcad::getManagerTreeNodeGetFunc() {
    return currentManagerNode() != nullptr ? currentManagerNode : nullptr;
}

Hext::ErrorStatus hxdbOpenObject(HxDbObjectId id, HxDbObject*& object, HxDb::OpenMode, HxDbDataBase* database) {
    object = currentModel() != nullptr ? currentModel()->find(id.toInt()) : nullptr;
    if (object != nullptr && database != nullptr && object->database() != database) {
        object = nullptr;
    }
    return object != nullptr ? Hext::eOk : noSuchObject;
}

void getAllSubObjects(const HxDbTreeNode* node, std::vector<HxDbObject*>& out, const HxDbTreeNode* stop) {
    out.clear();
    if (node == nullptr) {
        return;
    }
    CycleGuard guard(*node);
    std::vector<const ObjectData*> waiting;  // brothers of those that were gone down from
    for (const ObjectData* next = node->data().son;;) {
        while (next == nullptr || !guard.enter(&next->node)) {
            if (waiting.empty()) {
                return;
            }
            next = waiting.back();
            waiting.pop_back();
        }
        if (&next->node == stop) {
            return;
        }
        expect(next);
        if (HxDbObject* object = plant::dataOf(next->node).opened()) {
            out.push_back(object);
        }
        if (next->son != nullptr && next->brother != nullptr) {
            waiting.push_back(next->brother);
        }
        next = next->son != nullptr ? next->son : next->brother;
    }
}

void getTreeNodeObject(const HxDbTreeNode* node, std::vector<HxDbObject*>& out, const HxRxClass* filter) {
    out.clear();
    HxDbObject* object = node != nullptr ? objectOf(*node, filter) : nullptr;
    if (object != nullptr) {
        out.push_back(object);
    }
}

void transIdArray2PointerArray(const std::vector<HxDbObjectId>& ids, std::vector<HxDbObject*>& out,
                               const HxRxClass* filter) {
    out.clear();
    for (const HxDbObjectId id : ids) {
        HxDbObject* object = nullptr;
        hxdbOpenObject(id, object, 3);
        if (object != nullptr && (filter == nullptr || object->isKindOf(filter))) {
            out.push_back(object);
        }
    }
}
