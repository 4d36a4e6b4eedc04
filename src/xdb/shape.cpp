#include "xdb/shape.h"

#include "exportbase/color_table.h"
#include "exportbase/shared_vertices.h"
#include "platform/entities.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "xdb/records.h"

#include <algorithm>
#include <memory>

namespace xdb {

namespace {

constexpr const char* notMeshed = "its solid cannot be divided into triangles";
constexpr std::uint64_t opaque = 0xFFFFFFFFFF000000U;  // alpha 255, its sign carried on to 64 bits

std::uint64_t colorWord(int index) {
    float rgb[3] = {0, 0, 0};
    colorToRgb(index, rgb);
    std::uint64_t word = opaque;
    for (int i = 0; i < 3; ++i) {
        word |= static_cast<std::uint64_t>(rgb[i]) << (16 - 8 * i);
    }
    return word;
}

template <typename Triple>
void appendFlat(const std::vector<Triple>& from, std::vector<double>& out) {
    out.reserve(from.size() * 3);
    for (const Triple& triple : from) {
        out.insert(out.end(), {triple.x, triple.y, triple.z});
    }
}

// A face array as a fan of triangles for each face.
std::vector<int> fansOf(const std::vector<std::int32_t>& faces) {
    std::vector<int> triangles;
    for (std::size_t at = 0; at < faces.size();) {
        const std::size_t first = at + 1;
        const std::size_t end = first + static_cast<std::size_t>(faces[at]);
        for (std::size_t corner = first + 1; corner + 1 < end; ++corner) {
            triangles.insert(triangles.end(), {faces[first], faces[corner], faces[corner + 1]});
        }
        at = end;
    }
    return triangles;
}

// The mean of each vertex's normals at length 1.
std::vector<double> meanNormals(const Mesh& mesh) {
    std::vector<double> normals(mesh.positions.size(), 0);
    for (std::size_t i = 0; i < mesh.vertexCount(); ++i) {
        const double count = std::max<std::uint32_t>(mesh.normalCounts[i], 1);
        const double* sum = mesh.normalSums.data() + 3 * i;
        const HxGeVector3D normal = HxGeVector3D(sum[0] / count, sum[1] / count, sum[2] / count).normal();
        normals[3 * i] = normal.x;
        normals[3 * i + 1] = normal.y;
        normals[3 * i + 2] = normal.z;
    }
    return normals;
}

}  // namespace

void ShapeWriter::write(const HxDbSmrtlnEntity& object, const HextPrimaryArray& list) {
    color_ = colorWord(object.getColorIdx());
    mesh_.clear();
    for (const HextPrimary* primitive : list) {
        const std::unique_ptr<TlDbEntity> entity(transHextPrimary(primitive));
        if (const char* why = writeEntity(entity.get())) {
            reportLeftOut(&object, primitive->isA()->name(), why);
        }
    }
    writeSolids();
}

const char* ShapeWriter::writeEntity(const TlDbEntity* entity) {
    if (entity == nullptr) {
        return "it cannot be turned into an entity";
    }
    if (const ORNACadPrimary3D* parametric = ORNACadPrimary3D::cast(entity)) {
        return meshParametric(*parametric);
    }
    if (entity->isKindOf(TlDb3dSolid::desc())) {
        return meshSolidNormals(*entity, mesh_) ? nullptr : notMeshed;
    }
    if (const TlDbSubDMesh* subD = TlDbSubDMesh::cast(entity)) {
        return writeSubDMesh(*subD);
    }
    hxcad::hextPrintf("%s\n", entity->isA()->name());
    return "it is no solid and no mesh";
}

const char* ShapeWriter::meshParametric(const ORNACadPrimary3D& entity) {
    TlDb3dSolid* made = nullptr;
    const Tl::ErrorStatus status = entity.getSolid(made);
    const std::unique_ptr<TlDb3dSolid> solid(made);
    if (solid == nullptr) {
        return tlErrorText(status);
    }
    return meshSolidNormals(*solid, mesh_) ? nullptr : notMeshed;
}

const char* ShapeWriter::writeSubDMesh(const TlDbSubDMesh& entity) {
    std::int32_t count = 0;
    std::vector<TlGePoint3d> vertices;
    std::vector<std::int32_t> faces;
    std::vector<TlGeVector3d> normals;
    if (entity.numOfVertices(count) != Tl::eOk || count == 0) {
        return "it has no vertices";
    }
    if (entity.getVertices(vertices) != Tl::eOk || entity.getFaceArray(faces) != Tl::eOk ||
        entity.getNormalArray(normals) != Tl::eOk) {
        return "its mesh cannot be read";
    }
    arrays_.colors.push_back(color_);
    appendFlat(vertices, arrays_.positions.emplace_back());
    appendFlat(normals, arrays_.normals.emplace_back());
    arrays_.indices.push_back(fansOf(faces));
    arrays_.normalIndices.push_back(arrays_.indices.back());
    arrays_.data.emplace_back();
    return nullptr;
}

// Of the triangles' vertices only those that have a position count.
void ShapeWriter::writeSolids() {
    shareVertices(mesh_);
    arrays_.colors.push_back(color_);
    arrays_.positions.push_back(mesh_.positions);
    arrays_.normals.push_back(meanNormals(mesh_));
    std::vector<int>& indices = arrays_.indices.emplace_back();
    indices.reserve(mesh_.indices.size());
    std::copy_if(mesh_.indices.begin(), mesh_.indices.end(), std::back_inserter(indices),
                 [this](std::uint32_t index) { return index < mesh_.vertexCount(); });
    arrays_.normalIndices.emplace_back(mesh_.indices.begin(), mesh_.indices.end());
}

}  // namespace xdb
