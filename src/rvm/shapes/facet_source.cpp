#include "rvm/shapes/facet_source.h"

#include "platform/entities.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace rvm {

namespace {

using EntityPtr = std::unique_ptr<TlDbEntity>;

constexpr const char* notMeshed = "its solid cannot be meshed";
constexpr const char* notReadable = "its host content cannot be read";
constexpr const char* noPolygons = "its host content has no faces";

// The lists of one primitive, and why something is missing in them.
struct MeshJob {
    MeshIndices& indices;
    MeshPositions& positions;
    MeshNormals& normals;
    MeshTrouble trouble = nullptr;

    void add(const TlDbEntity& solid) {
        if (!meshSolid(solid, indices, positions, normals)) {
            trouble = notMeshed;
        }
    }
};

// The solid of a parametric entity; null, with the reason noted, when it makes none.
EntityPtr solidOf(const TlDbEntity* entity, MeshJob& job) {
    const ORNACadPrimary3D* parametric = ORNACadPrimary3D::cast(entity);
    if (parametric == nullptr) {
        job.trouble = notReadable;
        return nullptr;
    }
    TlDb3dSolid* solid = nullptr;
    const Tl::ErrorStatus status = parametric->getSolid(solid);
    EntityPtr owned(solid);
    if (status != Tl::eOk || solid == nullptr) {
        job.trouble = tlErrorText(status);
        return nullptr;
    }
    return owned;
}

bool addParametric(const TlDbEntity* entity, MeshJob& job) {
    if (const EntityPtr solid = solidOf(entity, job)) {
        job.add(*solid);
    }
    return true;
}

bool meshParametric(const HextPrimary& primitive, MeshJob& job) {
    const EntityPtr entity(transHextPrimary3D(HextPrimary3D::cast(&primitive)));
    return addParametric(entity.get(), job);
}

// Without a solid as a whole, the parts count.
bool meshWholeOrParts(const HextPrimary& primitive, MeshJob& job) {
    const EntityPtr entity(transHextPrimary3D(HextPrimary3D::cast(&primitive)));
    if (const EntityPtr solid = solidOf(entity.get(), job)) {
        job.add(*solid);
        return true;
    }
    std::vector<TlDbEntity*> parts;
    if (entity != nullptr && entity->explode(parts) == Tl::eOk) {
        job.trouble = nullptr;
        for (TlDbEntity* part : parts) {
            job.add(*EntityPtr(part));
        }
    }
    return true;
}

bool addPolygons(const HextPolygonMeshView& view, MeshJob& job) {
    const std::unique_ptr<TlDbPolyFaceMesh> mesh(view.convertToPolyfaceMesh());
    if (mesh == nullptr) {
        job.trouble = noPolygons;
        return false;
    }
    std::vector<HxGePoint3D> points;
    std::vector<std::int32_t> faces;
    HextPolygonMeshView::getPolyFaceMeshData(mesh.get(), points, faces);
    meshPolyface(points, faces, job.indices, job.positions, job.normals);
    return true;
}

bool addContent(const TlDbEntity& entity, MeshJob& job) {
    if (entity.isKindOf(ORNACadPrimary3D::desc())) {
        return addParametric(&entity, job);
    }
    if (const HextPolygonMeshView* view = HextPolygonMeshView::cast(&entity)) {
        return addPolygons(*view, job);
    }
    if (!entity.isKindOf(TlDb3dSolid::desc())) {
        job.trouble = noPolygons;
        return false;
    }
    job.add(entity);
    return true;
}

bool meshSerial(const HextPrimary& primitive, MeshJob& job) {
    const HextPrimaryAcad* content = HextPrimaryAcad::cast(&primitive);
    const EntityPtr entity(hxcad::setEntitySerialString(content->getSer()));
    if (entity == nullptr) {
        job.trouble = notReadable;
        return false;
    }
    return addContent(*entity, job);
}

bool meshSerialSolid(const HextPrimary& primitive, MeshJob& job) {
    const EntityPtr entity(hxcad::trans_solid_to_primary(&primitive));
    if (TlDb3dSolid::cast(entity.get()) == nullptr) {
        job.trouble = notReadable;
        return false;
    }
    job.add(*entity);
    return true;
}

struct FacetRow {
    const TlRxClass* type;
    bool (*mesh)(const HextPrimary& primitive, MeshJob& job);
};
const FacetRow facetRows[] = {
    {HextSpolygon::desc(), meshParametric},      {HextRevolve::desc(), meshParametric},
    {HextPrism3D::desc(), meshParametric},       {HextWedge3D::desc(), meshParametric},
    {HextSaddle3D::desc(), meshParametric},      {HextSqucir3D::desc(), meshParametric},
    {HextSqutorus3D::desc(), meshWholeOrParts},  {HextSqucone3D::desc(), meshWholeOrParts},
    {HextScylinder3D::desc(), meshWholeOrParts}, {HextPrimaryAcadSolid3D::desc(), meshSerialSolid},
    {HextPrimaryAcad::desc(), meshSerial},
};

bool finish(bool any, const MeshJob& job, MeshTrouble* trouble) {
    if (trouble != nullptr) {
        *trouble = job.trouble;
    }
    return any;
}

}  // namespace

NoPolygonBody::NoPolygonBody(const char* className) : std::runtime_error(std::string(className) + "不是多边形体元") {}

bool isPolygonBody(const TlRxClass* type) {
    return std::any_of(std::begin(facetRows), std::end(facetRows),
                       [type](const FacetRow& row) { return row.type == type; });
}

bool meshPrimitive(const HextPrimary& primitive, MeshIndices& indices, MeshPositions& positions, MeshNormals& normals,
                   MeshTrouble* trouble) {
    for (const FacetRow& row : facetRows) {
        if (primitive.isKindOf(row.type)) {
            MeshJob job{indices, positions, normals};
            return finish(row.mesh(primitive, job), job, trouble);
        }
    }
    throw NoPolygonBody(primitive.isA()->name());
}

bool meshEntity(const TlDbEntity& entity, MeshIndices& indices, MeshPositions& positions, MeshNormals& normals,
                MeshTrouble* trouble) {
    MeshJob job{indices, positions, normals};
    return finish(addContent(entity, job), job, trouble);
}

}  // namespace rvm
