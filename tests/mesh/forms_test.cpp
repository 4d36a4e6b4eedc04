// The host's meshing classes, and the forms in which the exports get a mesh.
#include "exportbase/mesher.h"
#include "mesh_of.h"
#include "shapes/cases.h"
#include "tolmar/brep.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

std::unique_ptr<TlDb3dSolid> solidOf(const HextPrimary3D& primitive) {
    const std::unique_ptr<TlDbEntity> entity(transHextPrimary3D(&primitive));
    TlDb3dSolid* solid = nullptr;
    EXPECT_EQ(ORNACadPrimary3D::cast(entity.get())->getSolid(solid), Tl::eOk);
    return std::unique_ptr<TlDb3dSolid>(solid);
}

std::vector<std::unique_ptr<TlDb3dSolid>> someSolids() {
    std::vector<std::unique_ptr<TlDb3dSolid>> solids;
    for (const ShapeCase& shape : shapeCases()) {
        solids.push_back(solidOf(*shape.make(Place(), 150)));
    }
    return solids;
}

// The mesh as the host's traversers give it, with the nodes searched one by one.
struct Traversed {
    std::vector<TlGePoint3d> positions;
    std::vector<std::vector<TlGeVector3d>> normals;
    std::vector<std::uint32_t> indices;

    explicit Traversed(const TlDbEntity& solid) {
        TlBrBrep brep;
        EXPECT_EQ(brep.set(solid), TlBr::eOk);
        TlBrMesh2dControl control;
        EXPECT_EQ(control.setDistTol(1.0), TlBr::eOk);
        EXPECT_EQ(control.setElementShape(TlBr::kAllTriangles), TlBr::eOk);
        TlBrMesh2dFilter filter;
        filter.insert({&brep, &control});
        TlBrMesh2d mesh;
        EXPECT_EQ(mesh.generate(filter), TlBr::eOk);
        TlBrMesh2dElement2dTraverser elements;
        EXPECT_EQ(elements.setMesh(mesh), TlBr::eOk);
        for (; !elements.done(); elements.next()) {
            TlBrElement2d element;
            EXPECT_EQ(elements.getElement(element), TlBr::eOk);
            addElement(element);
        }
    }

    void addElement(const TlBrElement2d& element) {
        TlGeVector3d normal;
        EXPECT_EQ(element.getNormal(normal), TlBr::eOk);
        TlBrElement2dNodeTraverser nodes;
        EXPECT_EQ(nodes.setElement(element), TlBr::eOk);
        for (; !nodes.done(); nodes.next()) {
            TlBrNode node;
            TlGePoint3d p;
            EXPECT_EQ(nodes.getNode(node), TlBr::eOk);
            EXPECT_EQ(node.getPoint(p), TlBr::eOk);
            std::size_t at = 0;
            while (at < positions.size() && !positions[at].isEqualTo(p)) {
                ++at;
            }
            if (at == positions.size()) {
                positions.push_back(p);
                normals.emplace_back();
            }
            normals[at].push_back(normal);
            indices.push_back(static_cast<std::uint32_t>(at));
        }
    }
};

TEST(Forms, MeshSolidGivesWhatASearchForEqualPositionsGives) {
    for (const auto& solid : someSolids()) {
        const Traversed slow(*solid);
        MeshIndices indices;
        MeshPositions positions;
        MeshNormals normals;
        ASSERT_TRUE(meshSolid(*solid, indices, positions, normals));
        ASSERT_EQ(indices.size(), 1U);
        ASSERT_EQ(indices[0].size(), slow.indices.size() + 1);
        EXPECT_EQ(indices[0].back(), 0xFFFFFFFFU);
        ASSERT_EQ(positions[0].size(), 3 * slow.positions.size() + 1);
        EXPECT_EQ(positions[0].back(), std::ldexp(1.0, 64));
        ASSERT_EQ(normals[0].size(), positions[0].size());
        EXPECT_EQ(normals[0].back(), std::ldexp(1.0, 64));
        for (std::size_t i = 0; i < slow.indices.size(); ++i) {
            const std::size_t fast = 3 * std::size_t{indices[0][i]};
            const TlGePoint3d p(positions[0][fast], positions[0][fast + 1], positions[0][fast + 2]);
            const TlGeVector3d n(normals[0][fast], normals[0][fast + 1], normals[0][fast + 2]);
            ASSERT_TRUE(p.isEqualTo(slow.positions[slow.indices[i]]));
            TlGeVector3d mean;
            for (const TlGeVector3d& one : slow.normals[slow.indices[i]]) {
                mean += one;
            }
            ASSERT_NEAR((mean / double(slow.normals[slow.indices[i]].size()) - n).length(), 0, 1e-9);
        }
    }
}

TEST(Forms, ListsGrowByOneArrayASolidAndKeepTheirStorage) {
    const auto solids = someSolids();
    MeshIndices indices;
    MeshPositions positions;
    MeshNormals normals;
    for (int round = 0; round < 2; ++round) {
        indices.clear();
        positions.clear();
        normals.clear();
        EXPECT_TRUE(indices.empty());
        ASSERT_TRUE(meshSolid(*solids[5], indices, positions, normals));
        ASSERT_TRUE(meshSolid(*solids[0], indices, positions, normals));
        // An entity without a boundary adds nothing.
        EXPECT_FALSE(meshSolid(TlDbHatch(), indices, positions, normals));
        ASSERT_EQ(indices.size(), 2U);
        EXPECT_EQ(indices[1].size(), 37U);
        EXPECT_EQ(positions[1].size(), 25U);
        EXPECT_EQ(normals.size(), 2U);
    }
}

TEST(Forms, VerticesAndNormalsAppendToOneMesh) {
    const auto solids = someSolids();
    Mesh plain;
    Mesh withNormals;
    std::size_t points = 0;
    for (const auto& solid : solids) {
        ASSERT_TRUE(meshVertices(*solid, plain));
        ASSERT_TRUE(meshSolidNormals(*solid, withNormals));
        EXPECT_EQ(*std::min_element(plain.indices.end() - 12, plain.indices.end()) >= points, true);
        const MeshView view = meshInPlace(*solid);
        EXPECT_TRUE(std::equal(view.positions.begin(), view.positions.end(),
                               plain.positions.begin() + static_cast<std::ptrdiff_t>(3 * points),
                               plain.positions.end()));
        EXPECT_EQ(view.indices.back() + points, plain.indices.back());
        points = plain.vertexCount();
    }
    EXPECT_FALSE(meshVertices(TlDbHatch(), plain));
    EXPECT_TRUE(meshInPlace(TlDbHatch()).positions.empty());
    EXPECT_FALSE(meshSolidNormals(TlDbHatch(), withNormals));
    EXPECT_EQ(plain.positions, withNormals.positions);
    EXPECT_EQ(plain.indices, withNormals.indices);
    EXPECT_TRUE(plain.normalSums.empty());
    ASSERT_EQ(withNormals.normalCounts.size(), points);
    std::vector<std::uint32_t> counts(points);
    for (const std::uint32_t index : plain.indices) {
        ++counts.at(index);
    }
    EXPECT_EQ(withNormals.normalCounts, counts);
}

TEST(Forms, FacesMakeUpTheWhole) {
    for (const auto& solid : someSolids()) {
        TlBrBrep brep;
        ASSERT_EQ(brep.set(*solid), TlBr::eOk);
        TlBrBrepFaceTraverser faces;
        ASSERT_EQ(faces.setBrep(brep), TlBr::eOk);
        Mesh whole;
        ASSERT_TRUE(meshVertices(*solid, whole));
        Mesh parts;
        int count = 0;
        for (; !faces.done(); faces.next(), ++count) {
            TlBrFace face;
            ASSERT_EQ(faces.getFace(face), TlBr::eOk);
            const std::size_t before = parts.indices.size();
            ASSERT_TRUE(meshFace(face, parts));
            for (std::size_t i = before; i < parts.indices.size(); ++i) {
                const double* a = parts.positions.data() + 3 * std::size_t{parts.indices[i]};
                const double* b = whole.positions.data() + 3 * std::size_t{whole.indices[i]};
                ASSERT_TRUE(a[0] == b[0] && a[1] == b[1] && a[2] == b[2]);
            }
        }
        EXPECT_EQ(count, tolmar::faceCount(*solid->body()));
        EXPECT_EQ(parts.indices.size(), whole.indices.size());
        TlBrFace behind;
        EXPECT_EQ(faces.getFace(behind), TlBr::eOutOfRange);
        EXPECT_EQ(faces.next(), TlBr::eOutOfRange);
    }
}

TEST(Forms, MeshingRefusesWhatItCannotDo) {
    TlBrBrep brep;
    EXPECT_EQ(brep.set(TlDbHatch()), TlBr::eNotApplicable);
    TlBrMesh2dControl control;
    EXPECT_EQ(control.setDistTol(0), TlBr::eInvalidInput);
    EXPECT_EQ(control.setDistTol(-1), TlBr::eInvalidInput);
    EXPECT_EQ(control.setDistTol(std::nan("")), TlBr::eInvalidInput);
    EXPECT_EQ(control.setElementShape(static_cast<TlBr::Element2dShape>(1)), TlBr::eInvalidInput);
    TlBrMesh2d mesh;
    EXPECT_EQ(mesh.generate(brep, control), TlBr::eUninitialisedObject);
    TlBrMesh2dFilter filter;
    filter.insert({nullptr, &control});
    EXPECT_EQ(mesh.generate(filter), TlBr::eInvalidInput);
    EXPECT_EQ(TlBrBrepFaceTraverser().setBrep(brep), TlBr::eUninitialisedObject);
    HextSphere3D large;
    large.radius = 1e9;
    const auto solid = solidOf(large);
    ASSERT_EQ(brep.set(*solid), TlBr::eOk);
    EXPECT_EQ(mesh.generate(brep, control), TlBr::eTooManyElements);
    EXPECT_EQ(mesh.mesh().nodeCount(), 0U);
    Mesh none;
    EXPECT_FALSE(meshVertices(*solid, none));
    EXPECT_EQ(none.vertexCount(), 0U);
}

TEST(Forms, APolyfaceSharesNothing) {
    const std::vector<HxGePoint3D> points{{0, 0, 0}, {2, 0, 0}, {0, 3, 0}, {0, 0, 4}};
    // The third face has another count, the fourth a point that is not there.
    const std::vector<std::int32_t> faces{3, 0, 1, 2, 3, 0, 2, 3, 4, 0, 1, 2, 3, 0, 1, 4, 3, 0};
    MeshIndices indices;
    MeshPositions positions;
    MeshNormals normals;
    meshPolyface(points, faces, indices, positions, normals);
    EXPECT_EQ(indices[0], (std::vector<std::uint32_t>{0, 1, 2, 3, 4, 5, 0xFFFFFFFF}));
    ASSERT_EQ(positions[0].size(), 19U);
    EXPECT_EQ(positions[0][13], 3);
    EXPECT_EQ(positions[0].back(), coordEnd);
    const std::vector<double> expected{0, 0, 6, 0, 0, 6, 0, 0, 6, 12, 0, 0, 12, 0, 0, 12, 0, 0, coordEnd};
    EXPECT_EQ(normals[0], expected);
}

}  // namespace
