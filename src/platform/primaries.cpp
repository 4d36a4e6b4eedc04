#include "platform/primaries.h"

#include "platform/hxcom.h"
#include "platform/smrtln.h"

#include <string_view>

namespace {

constexpr int flagShape = 1;
constexpr int flagBolts = 2;
constexpr int flagWelds = 4;

// One way to the shape of a class; `run` gives false for an object of another class.
struct ShapeSource {
    bool (*run)(const HxDbObject* object, HextPrimaryArray& list, Hext::ErrorStatus& status);
};

template <typename Class, auto Call>
constexpr ShapeSource source() {
    return {[](const HxDbObject* object, HextPrimaryArray& list, Hext::ErrorStatus& status) {
        const Class* typed = Class::cast(object);
        if (typed != nullptr) {
            status = Call(typed, list);
        }
        return typed != nullptr;
    }};
}

constexpr ShapeSource shapeSources[] = {
    source<HxDbAcadSerialObject, smrtln::getSerialPrimaries>(),
    source<HxDbBalloon, smrtln::getBalloonReality>(),
    source<HxDbStruct, smrtln::getStructReality>(),
    source<HxDbAxissLine, smrtln::getAxissReality>(),
    source<HxDbEquipment, [](auto* o, auto& l) { return smrtln::getEquipReality(o, l, false); }>(),
    source<HxDbSupportModel, [](auto* o, auto& l) { return smrtln::getSupportReality(o, l, nullptr, false); }>(),
    source<HxDbXGModel, [](auto* o, auto& l) { return smrtln::getXGReality(o, l, nullptr); }>(),
    source<HxDbTubeModelSpec, [](auto* o, auto& l) { return smrtln::getSmrtlnGraphy(o, "reality", l, nullptr); }>(),
};

bool hasSubObjects(const HxDbObject* object) {
    const HxDbSupportModel* support = HxDbSupportModel::cast(object);
    return support != nullptr && !support->getSubs().empty();
}

// Whether the platform is asked for the object's shape at all.
Hext::ErrorStatus shapeStatus(const HxDbObject* object, bool withBolts, bool withWelds) {
    if (object == nullptr) {
        return eNoShape;
    }
    const bool unwanted = (!withBolts && object->isKindOf(HxDbBoltNutModel::desc())) ||
                          (!withWelds && object->isKindOf(HxDbTubeWeld::desc()));
    return unwanted ? eNotWanted : Hext::eOk;
}

int drawFlags(bool withBolts, bool withWelds) {
    return flagShape | (withBolts ? flagBolts : 0) | (withWelds ? flagWelds : 0);
}

}  // namespace

Hext::ErrorStatus getPrimaries(const HxDbObject* object, HextPrimaryArray& list, bool withBolts, bool withWelds) {
    const Hext::ErrorStatus status = shapeStatus(object, withBolts, withWelds);
    if (status != Hext::eOk) {
        return status;
    }
    freeHextPrimaryArray(list);
    return CadGiDraw::getPrimarys(object, list, nullptr, drawFlags(withBolts, withWelds));
}

Hext::ErrorStatus viewPrimaries(const HxDbObject* object, HextPrimaryView& view, bool withBolts, bool withWelds) {
    view = {};
    const Hext::ErrorStatus status = shapeStatus(object, withBolts, withWelds);
    return status != Hext::eOk ? status : CadGiDraw::viewPrimarys(object, view, drawFlags(withBolts, withWelds));
}

Hext::ErrorStatus getObjectPrimaries(const HxDbObject* object, HextPrimaryArray& list) {
    freeHextPrimaryArray(list);
    if (object == nullptr) {
        return eNoShape;
    }
    Hext::ErrorStatus status = eNoShape;
    for (const ShapeSource& shape : shapeSources) {
        if (shape.run(object, list, status)) {
            break;
        }
    }
    if ((status == Hext::eOk && !list.empty()) || hasSubObjects(object)) {
        return Hext::eOk;
    }
    if (!object->isKindOf(HxDbTubeWeld::desc())) {
        hxcad::hextPrintf("对象ID'%I64d'取图形库失败，原因：%s", object->objectId().toIdWithoutVer(),
                          hxcom::getLastErrorText());
    }
    return eNoShape;
}

bool isObstruction(const HextPrimary& primitive) {
    const HextPrimary3D* solid = HextPrimary3D::cast(&primitive);
    const char* material = solid != nullptr ? solid->getMaterial() : nullptr;
    return material != nullptr && std::string_view(material) == obstructionMaterial;
}
