#include "tolmar/brep.h"

#include <cmath>
#include <vector>

struct TlBrFaceMeshes {
    tolmar::TriangleMesh mesh;
    double tolerance = 0;  // of `mesh`; 0 before there is one
    TlBr::ErrorStatus status = TlBr::eOk;
    std::vector<std::uint32_t> nodeOf;  // by node of `mesh`; `unused` at rest
};

namespace {

constexpr std::uint32_t unused = 0xFFFFFFFF;

TlBr::ErrorStatus toStatus(tolmar::MeshStatus status) {
    switch (status) {
    case tolmar::MeshStatus::Ok:
        return TlBr::eOk;
    case tolmar::MeshStatus::TooManyTriangles:
        return TlBr::eTooManyElements;
    case tolmar::MeshStatus::BadRegion:
        return TlBr::eBadTopology;
    }
    return TlBr::eBadTopology;
}

TlBr::ErrorStatus meshAllFaces(const tolmar::Body& body, double tolerance, TlBrFaceMeshes& meshes) {
    if (meshes.tolerance != tolerance) {
        meshes.mesh.clear();
        meshes.status = toStatus(tolmar::meshBody(body, tolerance, meshes.mesh));
        meshes.tolerance = tolerance;
        meshes.nodeOf.assign(meshes.mesh.nodeCount(), unused);
    }
    return meshes.status;
}

// Copies the triangles of one face, with the nodes that they use.
void copyFace(TlBrFaceMeshes& from, std::size_t face, tolmar::TriangleMesh& to) {
    const tolmar::TriangleMesh& mesh = from.mesh;
    const std::size_t first = 3 * std::size_t{mesh.faces[face].firstTriangle};
    const std::size_t last =
        face + 1 < mesh.faces.size() ? 3 * std::size_t{mesh.faces[face + 1].firstTriangle} : mesh.triangles.size();
    tolmar::MeshFace copied = mesh.faces[face];
    copied.firstTriangle = static_cast<std::uint32_t>(to.triangleCount());
    to.faces.push_back(copied);
    std::uint32_t* out = to.triangles.extend(last - first);
    for (std::size_t i = first; i < last; ++i) {
        std::uint32_t& node = from.nodeOf[mesh.triangles[i]];
        if (node == unused) {
            node = static_cast<std::uint32_t>(to.nodeCount());
            std::copy_n(mesh.nodes.data() + 3 * std::size_t{mesh.triangles[i]}, 3, to.nodes.extend(3));
        }
        *out++ = node;
    }
    for (std::size_t i = first; i < last; ++i) {
        from.nodeOf[mesh.triangles[i]] = unused;
    }
}

}  // namespace

TlBr::ErrorStatus TlBrBrep::set(const TlDbEntity& entity) {
    body_ = entity.body();
    return body_ != nullptr ? TlBr::eOk : TlBr::eNotApplicable;
}

TlBr::ErrorStatus TlBrBrepFaceTraverser::setBrep(const TlBrBrep& brep) {
    body_ = brep.body();
    index_ = 0;
    count_ = body_ != nullptr ? tolmar::faceCount(*body_) : 0;
    meshes_ = std::make_shared<TlBrFaceMeshes>();
    return body_ != nullptr ? TlBr::eOk : TlBr::eUninitialisedObject;
}

TlBr::ErrorStatus TlBrBrepFaceTraverser::next() {
    if (done()) {
        return TlBr::eOutOfRange;
    }
    ++index_;
    return TlBr::eOk;
}

TlBr::ErrorStatus TlBrBrepFaceTraverser::getFace(TlBrFace& face) const {
    if (done()) {
        return TlBr::eOutOfRange;
    }
    face.body_ = body_;
    face.face_ = index_;
    face.meshes_ = meshes_;
    return TlBr::eOk;
}

TlBr::ErrorStatus TlBrMesh2dControl::setDistTol(double tolerance) {
    if (!(tolerance > 0) || !std::isfinite(tolerance)) {
        return TlBr::eInvalidInput;
    }
    tolerance_ = tolerance;
    return TlBr::eOk;
}

TlBr::ErrorStatus TlBrMesh2dControl::setElementShape(TlBr::Element2dShape shape) {
    if (shape != TlBr::kDefault && shape != TlBr::kAllTriangles) {
        return TlBr::eInvalidInput;
    }
    shape_ = shape;
    return TlBr::eOk;
}

TlBr::ErrorStatus TlBrMesh2d::generate(const TlBrMesh2dFilter& filter) {
    mesh_.clear();
    for (const auto& [entity, control] : filter.items()) {
        const TlBr::ErrorStatus status =
            entity != nullptr && control != nullptr ? append(*entity, *control) : TlBr::eInvalidInput;
        if (status != TlBr::eOk) {
            mesh_.clear();
            return status;
        }
    }
    return TlBr::eOk;
}

TlBr::ErrorStatus TlBrMesh2d::generate(const TlBrEntity& entity, const TlBrMesh2dControl& control) {
    mesh_.clear();
    return append(entity, control);
}

TlBr::ErrorStatus TlBrMesh2d::append(const TlBrEntity& entity, const TlBrMesh2dControl& control) {
    if (entity.body() == nullptr) {
        return TlBr::eUninitialisedObject;
    }
    if (entity.faceIndex() >= 0) {
        // Only a TlBrFace stands for a face.
        return appendFace(static_cast<const TlBrFace&>(entity), control.distTol());
    }
    return toStatus(tolmar::meshBody(*entity.body(), control.distTol(), mesh_));
}

TlBr::ErrorStatus TlBrMesh2d::appendFace(const TlBrFace& face, double tolerance) {
    const TlBr::ErrorStatus status = meshAllFaces(*face.body(), tolerance, *face.meshes_);
    if (status == TlBr::eOk) {
        copyFace(*face.meshes_, static_cast<std::size_t>(face.faceIndex()), mesh_);
    }
    return status;
}
