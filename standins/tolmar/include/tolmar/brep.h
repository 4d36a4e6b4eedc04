// Boundary representation and meshing.
//
// A brep looks at the boundary of a solid or surface, a control says how fine, a filter takes the pair of both, and
// TlBrMesh2d::generate makes triangles. They are read by traversers, or directly as arrays (`nodes`, `triangles`),
// which is the fast form of the same mesh. Nothing here owns the entity: it has to outlive brep, faces and filter;
// the mesh stands on its own.
#pragma once

#include "tolmar/entity.h"
#include "tolmar/mesh.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace TlBr {

enum ErrorStatus : int {
    eOk = 0,
    eInvalidInput = 3,         // a tolerance that is not above 0, an element shape that is not made here
    eUninitialisedObject = 5,  // no boundary was set
    eNotApplicable = 6,        // the entity has no boundary
    eOutOfRange = 7,           // a traverser at its end
    eTooManyElements = 20,     // more than tolmar::maxTriangles would be needed
    eBadTopology = 21,         // a planar region that cannot be divided into triangles
};

enum Element2dShape : int { kDefault = 0, kAllTriangles = 3 };

}  // namespace TlBr

class TlBrEntity {
public:
    const tolmar::Body* body() const { return body_; }
    // The face that this entity stands for, from 0; -1 for the whole boundary.
    int faceIndex() const { return face_; }

protected:
    TlBrEntity() = default;
    ~TlBrEntity() = default;
    const tolmar::Body* body_ = nullptr;
    int face_ = -1;
};

class TlBrBrep final : public TlBrEntity {
public:
    // eNotApplicable for an entity without a boundary; the brep is then empty.
    TlBr::ErrorStatus set(const TlDbEntity& entity);
};

// A face knows the mesh of its whole body once it was made, and shares it with the other faces of its traverser.
struct TlBrFaceMeshes;

class TlBrFace final : public TlBrEntity {
    friend class TlBrBrepFaceTraverser;
    friend class TlBrMesh2d;
    std::shared_ptr<TlBrFaceMeshes> meshes_;
};

// The faces of a brep, in the fixed order of its body.
class TlBrBrepFaceTraverser final {
public:
    TlBr::ErrorStatus setBrep(const TlBrBrep& brep);
    bool done() const { return index_ >= count_; }
    TlBr::ErrorStatus next();
    TlBr::ErrorStatus getFace(TlBrFace& face) const;

private:
    const tolmar::Body* body_ = nullptr;
    int index_ = 0;
    int count_ = 0;
    std::shared_ptr<TlBrFaceMeshes> meshes_;
};

class TlBrMesh2dControl final {
public:
    // The farthest that a chord may stand from the curve or surface; millimetres, above 0.
    TlBr::ErrorStatus setDistTol(double tolerance);
    TlBr::ErrorStatus setElementShape(TlBr::Element2dShape shape);
    double distTol() const { return tolerance_; }
    TlBr::Element2dShape elementShape() const { return shape_; }

private:
    double tolerance_ = 1.0;
    TlBr::Element2dShape shape_ = TlBr::kDefault;
};

// Pairs of what to mesh and how. All pairs go into one mesh, in order.
class TlBrMesh2dFilter final {
public:
    void insert(const std::pair<const TlBrEntity*, const TlBrMesh2dControl*>& item) { items_.push_back(item); }
    void clear() { items_.clear(); }
    const auto& items() const { return items_; }

private:
    std::vector<std::pair<const TlBrEntity*, const TlBrMesh2dControl*>> items_;
};

class TlBrMesh2d final {
public:
    // Replaces the mesh. On failure the mesh is empty.
    TlBr::ErrorStatus generate(const TlBrMesh2dFilter& filter);
    // The same for one boundary, without a filter.
    TlBr::ErrorStatus generate(const TlBrEntity& entity, const TlBrMesh2dControl& control);
    const tolmar::TriangleMesh& mesh() const { return mesh_; }

private:
    TlBr::ErrorStatus append(const TlBrEntity& entity, const TlBrMesh2dControl& control);
    TlBr::ErrorStatus appendFace(const TlBrFace& face, double tolerance);
    tolmar::TriangleMesh mesh_;
};

class TlBrNode final {
public:
    TlBr::ErrorStatus getPoint(TlGePoint3d& point) const;

private:
    friend class TlBrElement2dNodeTraverser;
    const tolmar::TriangleMesh* mesh_ = nullptr;
    std::uint32_t index_ = 0;
};

class TlBrElement2d final {
public:
    // Unit normal, outward.
    TlBr::ErrorStatus getNormal(TlGeVector3d& normal) const;

private:
    friend class TlBrMesh2dElement2dTraverser;
    friend class TlBrElement2dNodeTraverser;
    const tolmar::TriangleMesh* mesh_ = nullptr;
    std::size_t index_ = 0;
};

// The elements of a mesh; the mesh has to outlive it and stay as it is.
class TlBrMesh2dElement2dTraverser final {
public:
    TlBr::ErrorStatus setMesh(const TlBrMesh2d& mesh);
    bool done() const { return mesh_ == nullptr || index_ >= mesh_->triangleCount(); }
    TlBr::ErrorStatus next();
    TlBr::ErrorStatus getElement(TlBrElement2d& element) const;

private:
    const tolmar::TriangleMesh* mesh_ = nullptr;
    std::size_t index_ = 0;
};

// The nodes of an element, counter-clockwise seen from outside.
class TlBrElement2dNodeTraverser final {
public:
    TlBr::ErrorStatus setElement(const TlBrElement2d& element);
    bool done() const { return mesh_ == nullptr || corner_ >= 3; }
    TlBr::ErrorStatus next();
    TlBr::ErrorStatus getNode(TlBrNode& node) const;

private:
    const tolmar::TriangleMesh* mesh_ = nullptr;
    std::size_t element_ = 0;
    int corner_ = 0;
};
