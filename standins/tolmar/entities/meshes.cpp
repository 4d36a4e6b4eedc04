// Entities that hold meshes.
#include "tolmar/entity.h"

#include <utility>

namespace {

bool hasPoint(std::size_t count, std::int32_t number) {
    return number >= 0 && static_cast<std::size_t>(number) < count;
}

// Normals of the vertices as the unit sum of the vectors of their faces; (0, 0, 1) for a vertex of no face.
std::vector<TlGeVector3d> computeNormals(const std::vector<TlGePoint3d>& vertices,
                                         const std::vector<std::int32_t>& faces) {
    std::vector<TlGeVector3d> normals(vertices.size());
    for (std::size_t at = 0; at < faces.size(); at += static_cast<std::size_t>(faces[at]) + 1) {
        const std::int32_t* corner = faces.data() + at + 1;
        TlGeVector3d sum;
        for (std::int32_t k = 1; k + 1 < faces[at]; ++k) {
            const TlGePoint3d& p = vertices[corner[0]];
            sum += (vertices[corner[k]] - p).crossProduct(vertices[corner[k + 1]] - p);
        }
        for (std::int32_t k = 0; k < faces[at]; ++k) {
            normals[corner[k]] += sum;
        }
    }
    for (TlGeVector3d& normal : normals) {
        const double length = normal.length();
        normal = length > 0 ? normal / length : TlGeVector3d{0, 0, 1};
    }
    return normals;
}

}  // namespace

Tl::ErrorStatus TlDbSubDMesh::check(std::size_t vertexCount, const std::vector<std::int32_t>& faces) {
    std::size_t at = 0;
    while (at < faces.size()) {
        const std::int32_t count = faces[at++];
        if (count < 3 || static_cast<std::size_t>(count) > faces.size() - at) {
            return Tl::eInvalidInput;
        }
        for (std::int32_t k = 0; k < count; ++k) {
            if (!hasPoint(vertexCount, faces[at++])) {
                return Tl::eInvalidInput;
            }
        }
    }
    return Tl::eOk;
}

TlDbSubDMesh::TlDbSubDMesh(std::vector<TlGePoint3d> vertices, std::vector<std::int32_t> faces,
                           std::vector<TlGeVector3d> normals)
    : TlDbEntity(classRecord), vertices_(std::move(vertices)), faces_(std::move(faces)), normals_(std::move(normals)) {
    if (normals_.size() != vertices_.size()) {
        normals_ = computeNormals(vertices_, faces_);
    }
}

Tl::ErrorStatus TlDbSubDMesh::numOfVertices(std::int32_t& count) const {
    count = static_cast<std::int32_t>(vertices_.size());
    return Tl::eOk;
}

Tl::ErrorStatus TlDbSubDMesh::getVertices(std::vector<TlGePoint3d>& out) const {
    out = vertices_;
    return Tl::eOk;
}

Tl::ErrorStatus TlDbSubDMesh::getFaceArray(std::vector<std::int32_t>& out) const {
    out = faces_;
    return Tl::eOk;
}

Tl::ErrorStatus TlDbSubDMesh::getNormalArray(std::vector<TlGeVector3d>& out) const {
    out = normals_;
    return Tl::eOk;
}

TlDbPolyFaceMesh::TlDbPolyFaceMesh(std::vector<TlGePoint3d> points, std::vector<Face> faces)
    : TlDbEntity(classRecord), points_(std::move(points)), faces_(std::move(faces)) {}

HextPolygonMeshView::HextPolygonMeshView(std::vector<TlGePoint3d> points, std::vector<Face> faces)
    : TlDbEntity(classRecord), points_(std::move(points)), faces_(std::move(faces)) {}

TlDbPolyFaceMesh* HextPolygonMeshView::convertToPolyfaceMesh() const {
    for (const Face& face : faces_) {
        for (const std::int32_t number : face) {
            if (!hasPoint(points_.size(), number)) {
                return nullptr;
            }
        }
    }
    return faces_.empty() ? nullptr : new TlDbPolyFaceMesh(points_, faces_);
}

Tl::ErrorStatus HextPolygonMeshView::getPolyFaceMeshData(const TlDbPolyFaceMesh* mesh, std::vector<TlGePoint3d>& points,
                                                         std::vector<std::int32_t>& faceIndices) {
    points.clear();
    faceIndices.clear();
    if (mesh == nullptr) {
        return Tl::eInvalidInput;
    }
    points = mesh->points();
    faceIndices.reserve(4 * mesh->faces().size());
    for (const Face& face : mesh->faces()) {
        faceIndices.push_back(static_cast<std::int32_t>(face.size()));
        faceIndices.insert(faceIndices.end(), face.begin(), face.end());
    }
    return Tl::eOk;
}
