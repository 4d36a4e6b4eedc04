#include "mesh_of.h"

#include <memory>

Meshed meshOf(const HextPrimary3D& primitive, double tolerance) {
    Meshed meshed;
    const std::unique_ptr<TlDbEntity> entity(transHextPrimary3D(&primitive));
    const ORNACadPrimary3D* parametric = ORNACadPrimary3D::cast(entity.get());
    if (parametric == nullptr) {
        ADD_FAILURE() << primitive.isA()->name() << " gives no parametric entity";
        return meshed;
    }
    TlDb3dSolid* solid = nullptr;
    meshed.solid = parametric->getSolid(solid);
    const std::unique_ptr<TlDb3dSolid> owned(solid);
    EXPECT_EQ(meshed.solid == Tl::eOk, solid != nullptr);
    if (solid == nullptr) {
        return meshed;
    }
    tolmar::TriangleMesh mesh;
    meshed.status = tolmar::meshBody(*solid->body(), tolerance, mesh);
    if (meshed.status == tolmar::MeshStatus::Ok) {
        EXPECT_EQ(mesh.faces.size(), std::size_t(tolmar::faceCount(*solid->body())));
        meshed.mesh = plainMesh(mesh);
    } else {
        EXPECT_TRUE(mesh.nodes.empty() && mesh.triangles.empty() && mesh.faces.empty());
    }
    return meshed;
}
