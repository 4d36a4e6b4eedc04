#include "max/shape.h"

#include "exportbase/shared_vertices.h"
#include "max/names.h"
#include "platform/entities.h"
#include "platform/left_out.h"
#include "platform/primaries.h"
#include "platform/smrtln.h"

#include <memory>

namespace maxfile {

namespace {

constexpr const char* notMeshed = "its solid cannot be divided into triangles";

Hext::ErrorStatus getShape(const HxDbSmrtlnEntity& object, HextPrimaryArray& list) {
    const HxDbBalloon* balloon = HxDbBalloon::cast(&object);
    return balloon != nullptr ? smrtln::getBalloonReality(balloon, list)
                              : smrtln::getSmrtlnGraphy(&object, "reality", list, nullptr);
}

// Why the entity gave no triangles; null when it gave some.
const char* meshParametric(const ORNACadPrimary3D& entity, Mesh& mesh) {
    TlDb3dSolid* made = nullptr;
    const Tl::ErrorStatus status = entity.getSolid(made);
    const std::unique_ptr<TlDb3dSolid> solid(made);
    if (solid == nullptr) {
        return tlErrorText(status);
    }
    return meshVertices(*solid, mesh) ? nullptr : notMeshed;
}

const char* meshEntity(const TlDbEntity* entity, Mesh& mesh) {
    if (entity == nullptr) {
        return "it cannot be turned into an entity";
    }
    if (const ORNACadPrimary3D* parametric = ORNACadPrimary3D::cast(entity)) {
        return meshParametric(*parametric, mesh);
    }
    if (entity->isKindOf(TlDb3dSolid::desc())) {
        return meshVertices(*entity, mesh) ? nullptr : notMeshed;
    }
    return "it is no solid";
}

}  // namespace

bool meshObject(const HxDbSmrtlnEntity& object, Mesh& mesh) {
    PrimaryList list;
    if (getShape(object, list.list()) != Hext::eOk) {
        return false;
    }
    const TransHextPrimary entities(list.list());
    for (std::size_t i = 0; i < list.size(); ++i) {
        const std::unique_ptr<TlDbEntity> entity(entities.get()[i]);
        if (const char* why = meshEntity(entity.get(), mesh)) {
            const std::string name = std::string(objectName(object)) + ": " + list.list()[i]->isA()->name();
            reportLeftOut({&object, name, "primitive"}, why);
        }
    }
    shareVertices(mesh);
    return true;
}

}  // namespace maxfile
