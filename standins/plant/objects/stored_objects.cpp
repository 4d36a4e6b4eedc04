// Operations of stored objects, tree nodes, managers and databases.
#include "platform/objects.h"

#include "plant/model/data.h"

using plant::Member;
using plant::ObjectData;

namespace {

bool isNode(const HxDbObject& object) {
    return object.isA() == HxDbTreeNode::desc();
}

HxDbTreeNode* nodeOf(ObjectData* object) {
    return object != nullptr ? &object->node : nullptr;
}

std::vector<HxDbObjectId> listOrSons(const ObjectData& data, Member member, const HxRxClass* ofSons) {
    std::vector<HxDbObjectId> ids;
    if (const plant::Property* list = data.find(member)) {
        for (std::uint32_t i = 0; i < list->count; ++i) {
            ids.emplace_back(list->references[i].object->id);
        }
        return ids;
    }
    for (const ObjectData* son : data.sons()) {
        if (son->object().isKindOf(ofSons)) {
            ids.emplace_back(son->id);
        }
    }
    return ids;
}

}  // namespace

HxDbObjectId HxDbObject::objectId() const {
    return HxDbObjectId(isNode(*this) ? data_->model->nodeId(*data_) : data_->id);
}

HxDbDataBase* HxDbObject::database() const {
    return &data_->database().object;
}

void HxDbObject::openForWrite(int) {}

HxDbObjectId HxDbObject::getOwnerId() const {
    if (const plant::Property* owner = data_->find(Member::Owner)) {
        return HxDbObjectId(owner->reference.object->id);
    }
    return data_->parent != nullptr ? HxDbObjectId(data_->parent->id) : HxDbObjectId();
}

const char* HxDbObject::getDisplayName() const {
    const char* given = data_->text(Member::DisplayName);
    return given != nullptr ? given : data_->name;
}

std::vector<HxDbObjectId> HxDbObject::getMemberIds() const {
    return listOrSons(*data_, Member::Members, HxDbObject::desc());
}

const char* HxDbObject::getStandard() const {
    return data_->text(Member::Standard);
}

const char* HxDbDataBase::dbName() const {
    return data_->name;
}

HxDbTreeNode* HxDbTreeNode::getSon() const {
    return nodeOf(data_->son);
}
HxDbTreeNode* HxDbTreeNode::getBrother() const {
    return nodeOf(data_->brother);
}
HxDbTreeNode* HxDbTreeNode::getParent() const {
    return nodeOf(data_->parent);
}
const char* HxDbTreeNode::getName() const {
    return data_->name;
}
HxDbObjectId HxDbTreeNode::getTreeNodeValue() const {
    return HxDbObjectId(data_->id);
}

short HextNameNode::getColorIdx() const {
    return data_->color;
}

std::vector<HxDbObjectId> HxDbAssembly::getSubs() const {
    return listOrSons(*data_, Member::Subs, HxDbSmrtlnEntity::desc());
}
