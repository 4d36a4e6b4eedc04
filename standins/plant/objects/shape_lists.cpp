// The shapes of objects as lists of primitives.
#include "plant/model/data.h"
#include "plant/objects/last_error.h"
#include "platform/smrtln.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

constexpr Hext::ErrorStatus noShape = 18;
constexpr Hext::ErrorStatus notWanted = 2;
constexpr int withBolts = 2;
constexpr int withWelds = 4;

Hext::ErrorStatus fail(Hext::ErrorStatus status, const char* why) {
    plant::setLastError(why);
    return status;
}

Hext::ErrorStatus viewShape(const HxDbObject* object, HextPrimaryView& view) {
    view = {};
    if (object == nullptr || !object->data().hasShape) {
        return fail(noShape, "对象没有图形");
    }
    view = object->data().primitiveSpan();
    return Hext::eOk;
}

// Copies of the object's primitives, which belong to the caller.
Hext::ErrorStatus copyShape(const HxDbObject* object, HextPrimaryArray& list) {
    freeHextPrimaryArray(list);
    HextPrimaryView primitives;
    const Hext::ErrorStatus status = viewShape(object, primitives);
    list.reserve(primitives.size());
    for (const HextPrimary* primitive : primitives) {
        list.push_back(primitive->clone());
    }
    return status;
}

bool isUnwanted(const HxDbObject* object, int flags) {
    return (HxDbBoltNutModel::cast(object) != nullptr && (flags & withBolts) == 0) ||
           (HxDbTubeWeld::cast(object) != nullptr && (flags & withWelds) == 0);
}

Hext::ErrorStatus failUnwanted() {
    return fail(notWanted, "不需要的图形");
}

}  // namespace

namespace smrtln {

Hext::ErrorStatus getSmrtlnGraphy(const HxDbSmrtlnEntity* entity, const char* kind, HextPrimaryArray& list, void*) {
    if (kind == nullptr || std::strcmp(kind, "reality") != 0) {
        freeHextPrimaryArray(list);
        return fail(noShape, "没有这种图形");
    }
    return copyShape(entity, list);
}

Hext::ErrorStatus getEquipReality(const HxDbEquipment* equipment, HextPrimaryArray& list, bool) {
    return copyShape(equipment, list);
}
Hext::ErrorStatus getStructReality(const HxDbStruct* structure, HextPrimaryArray& list) {
    return copyShape(structure, list);
}
Hext::ErrorStatus getSupportReality(const HxDbSupportModel* support, HextPrimaryArray& list, void*, bool) {
    return copyShape(support, list);
}
Hext::ErrorStatus getXGReality(const HxDbXGModel* model, HextPrimaryArray& list, void*) {
    return copyShape(model, list);
}
Hext::ErrorStatus getAxissReality(const HxDbAxissLine* line, HextPrimaryArray& list) {
    return copyShape(line, list);
}
Hext::ErrorStatus getBalloonReality(const HxDbBalloon* balloon, HextPrimaryArray& list) {
    return copyShape(balloon, list);
}
Hext::ErrorStatus getSerialPrimaries(const HxDbAcadSerialObject* object, HextPrimaryArray& list) {
    return copyShape(object, list);
}

}  // namespace smrtln

Hext::ErrorStatus CadGiDraw::getPrimarys(const HxDbObject* object, HextPrimaryArray& list, void*, int flags) {
    if (isUnwanted(object, flags)) {
        freeHextPrimaryArray(list);
        return failUnwanted();
    }
    return copyShape(object, list);
}

Hext::ErrorStatus CadGiDraw::viewPrimarys(const HxDbObject* object, HextPrimaryView& view, int flags) {
    if (isUnwanted(object, flags)) {
        view = {};
        return failUnwanted();
    }
    return viewShape(object, view);
}

// The reader puts the list right behind its primitives, so neither has to be followed.
void CadGiDraw::expectPrimarys(const HxDbObject* object) {
    constexpr std::uintptr_t line = 64;
    constexpr std::uintptr_t usualSize = 96;
    constexpr std::uint32_t most = 4;
    if (object == nullptr) {
        return;
    }
    const plant::ObjectData& data = object->data();
    const auto end = reinterpret_cast<std::uintptr_t>(data.primitives + data.primitiveCount);
    const std::uintptr_t size = std::min(data.primitiveCount, most) * (usualSize + sizeof(HextPrimary*));
    for (std::uintptr_t at = (end - size) / line * line; at < end; at += line) {
        __builtin_prefetch(reinterpret_cast<const void*>(at));
    }
}
