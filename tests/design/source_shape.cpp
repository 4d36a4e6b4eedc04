#include "source_shape.h"

#include "platform/entities.h"
#include "tolmar/mesh.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

Shape sourceShape(const HextPrimary3D& primitive) {
    const std::unique_ptr<TlDbEntity> entity(transHextPrimary3D(&primitive));
    TlDb3dSolid* made = nullptr;
    EXPECT_EQ(static_cast<const ORNACadPrimary3D&>(*entity).getSolid(made), 0);
    const std::unique_ptr<TlDb3dSolid> solid(made);
    tolmar::TriangleMesh mesh;
    EXPECT_EQ(tolmar::meshBody(*solid->body(), 0.005, mesh), tolmar::MeshStatus::Ok);
    Shape shape;
    for (std::size_t i = 0; i < mesh.nodeCount(); ++i) {
        shape.points.emplace_back(mesh.nodes[3 * i], mesh.nodes[3 * i + 1], mesh.nodes[3 * i + 2]);
    }
    const auto corner = [&](std::size_t i) { return shape.points[mesh.triangles[i]] - shape.points[0]; };
    for (std::size_t t = 0; t < mesh.triangles.size(); t += 3) {
        shape.volume += corner(t).dotProduct(corner(t + 1).crossProduct(corner(t + 2))) / 6;
    }
    return shape;
}

double reachError(const Shape& a, const Shape& b) {
    double error = 0;
    for (int i = 0; i < 27; ++i) {
        const HxGeVector3D direction = HxGeVector3D(i % 3 - 1, i / 3 % 3 - 1, i / 9 - 1).normal();
        error = std::max(error, std::fabs(a.reach(direction) - b.reach(direction)));
    }
    return error;
}
