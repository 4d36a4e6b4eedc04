#include "hextinterface/ornatohextprocess/design/gather_shapes.h"

#include "hextinterface/hextbasemethod/object_tests.h"
#include "hextinterface/manager/name_manager.h"
#include "hextinterface/ornatohextprocess/solids/prim_convert.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"

namespace design {
namespace {

void leaveOutPrimitive(const HextPrimary& primitive, const HxDbObject* source, std::string_view why) {
    reportLeftOut(source, "primitive", std::string(primitive.isA()->name()).append(": ").append(why));
}

}  // namespace

void finishManager(const DesignMacroSet& set) {
    if (set.whenManagerGathered) {
        set.whenManagerGathered();
    }
}

void addPrimitive(EquipRecord& record, const HextPrimary& primitive, const HxDbObject* source) {
    const HextPrimary3D* solid = HextPrimary3D::cast(&primitive);
    if (solid == nullptr) {
        return leaveOutPrimitive(primitive, source, "is no solid");
    }
    if (isObstruction(*solid)) {
        return leaveOutPrimitive(primitive, source, "belongs to the obstruction volume");
    }
    PrimGroup group = convertPrimary(primitive);
    if (group.empty()) {
        return leaveOutPrimitive(primitive, source, "no macro solid can be made of it");
    }
    for (const std::string& why : group.leftOut) {
        leaveOutPrimitive(primitive, source, why);
    }
    record.groups.push_back(std::move(group));
}

void addPrimitives(EquipRecord& record, const HextPrimaryArray& list, const HxDbObject* source) {
    for (const HextPrimary* primitive : list) {
        addPrimitive(record, *primitive, source);
    }
}

std::string colourFunction(const char* word, int index) {
    return word + std::to_string(index);
}

HxDbObject* openMember(HxDbObjectId id) {
    HxDbObject* member = nullptr;
    if (hxdbOpenObject(id, member, 3) != Hext::eOk) {
        reportLeftOut({id, "", "member"}, "cannot be opened");
        return nullptr;
    }
    return member;
}

}  // namespace design

void finishRecord(EquipRecord& record) {
    for (const PrimGroup& group : record.groups) {
        if (!group._posPrimitive.empty()) {
            record.frame.origin = group._posPrimitive.front()->frame.origin;
            break;
        }
    }
    const TlGeMatrix3d toElement = worldToFrame(record.frame);
    for (const PrimGroup& group : record.groups) {
        for (const PrimPtr& solid : group._posPrimitive) {
            solid->transformBy(toElement);
        }
    }
}
