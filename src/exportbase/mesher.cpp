#include "exportbase/mesher.h"

#include "platform/hxcom.h"
#include "tolmar/brep.h"

#include <algorithm>
#include <cmath>

namespace {

// Reused from solid to solid, unless one was so large that its storage had better go back.
struct Workplace {
    static constexpr std::size_t mostKept = 1'000'000;
    TlBrMesh2d mesh;
    std::vector<double> sums;
    std::vector<std::uint32_t> counts;

    void tidy() {
        if (mesh.mesh().triangleCount() > mostKept) {
            *this = Workplace();
        }
    }
};

Workplace& workplace() {
    thread_local Workplace place;
    return place;
}

bool generate(const TlBrEntity& entity, TlBrMesh2d& mesh) {
    TlBrMesh2dControl control;
    control.setDistTol(meshTolerance);
    control.setElementShape(TlBr::kAllTriangles);
    const TlBr::ErrorStatus status = mesh.generate(entity, control);
    if (status != TlBr::eOk) {
        hxcad::hextPrintf("\n Error AcBrMesh2d::generate %d", static_cast<int>(status));
    }
    return status == TlBr::eOk;
}

// The core of all forms: the mesh of a solid or surface, until the next call. Null after a failure.
const tolmar::TriangleMesh* generate(const TlDbEntity& solid) {
    TlBrBrep brep;
    if (const TlBr::ErrorStatus status = brep.set(solid); status != TlBr::eOk) {
        hxcad::hextPrintf("\nError br.set(*p3DSolid) = %d", static_cast<int>(status));
        return nullptr;
    }
    TlBrMesh2d& mesh = workplace().mesh;
    return generate(brep, mesh) ? &mesh.mesh() : nullptr;
}

// Sums of unit normals and their number, for each node.
class NormalSums {
public:
    NormalSums(const tolmar::TriangleMesh& mesh, double* sums, std::uint32_t* counts)
        : mesh_(mesh), sums_(sums), counts_(counts) {
        const std::size_t faces = mesh.faces.size();
        for (std::size_t f = 0; f < faces; ++f) {
            const std::size_t first = mesh.faces[f].firstTriangle;
            const std::size_t last = f + 1 < faces ? mesh.faces[f + 1].firstTriangle : mesh.triangleCount();
            mesh.faces[f].flat ? addFlat(mesh.faces[f], first, last) : addCurved(first, last);
        }
    }

private:
    void add(const std::uint32_t* corner, double x, double y, double z) {
        for (int k = 0; k < 3; ++k) {
            double* sum = sums_ + 3 * std::size_t{corner[k]};
            sum[0] += x;
            sum[1] += y;
            sum[2] += z;
            ++counts_[corner[k]];
        }
    }

    void addFlat(const tolmar::MeshFace& face, std::size_t first, std::size_t last) {
        for (std::size_t t = first; t < last; ++t) {
            add(mesh_.triangles.data() + 3 * t, face.normal[0], face.normal[1], face.normal[2]);
        }
    }

    void addCurved(std::size_t first, std::size_t last) {
        for (std::size_t t = first; t < last; ++t) {
            const std::uint32_t* corner = mesh_.triangles.data() + 3 * t;
            const double* a = mesh_.nodes.data() + 3 * std::size_t{corner[0]};
            const double* b = mesh_.nodes.data() + 3 * std::size_t{corner[1]};
            const double* c = mesh_.nodes.data() + 3 * std::size_t{corner[2]};
            const double ux = b[0] - a[0];
            const double uy = b[1] - a[1];
            const double uz = b[2] - a[2];
            const double vx = c[0] - a[0];
            const double vy = c[1] - a[1];
            const double vz = c[2] - a[2];
            const double x = uy * vz - uz * vy;
            const double y = uz * vx - ux * vz;
            const double z = ux * vy - uy * vx;
            const double length = std::sqrt(x * x + y * y + z * z);
            const double scale = length > 0 ? 1 / length : 0;
            add(corner, x * scale, y * scale, z * scale);
        }
    }

    const tolmar::TriangleMesh& mesh_;
    double* sums_;
    std::uint32_t* counts_;
};

void appendArrays(const tolmar::TriangleMesh& from, Mesh& mesh) {
    const auto base = static_cast<std::uint32_t>(mesh.vertexCount());
    mesh.positions.insert(mesh.positions.end(), from.nodes.begin(), from.nodes.end());
    const std::size_t first = mesh.indices.size();
    mesh.indices.insert(mesh.indices.end(), from.triangles.begin(), from.triangles.end());
    if (base > 0) {
        std::for_each(mesh.indices.begin() + static_cast<std::ptrdiff_t>(first), mesh.indices.end(),
                      [base](std::uint32_t& node) { node += base; });
    }
}

void appendMeans(const tolmar::TriangleMesh& mesh, Workplace& place, std::vector<double>& out) {
    place.sums.assign(mesh.nodes.size(), 0);
    place.counts.assign(mesh.nodeCount(), 0);
    NormalSums(mesh, place.sums.data(), place.counts.data());
    out.resize(mesh.nodes.size() + 1);
    for (std::size_t i = 0; i < mesh.nodeCount(); ++i) {
        const double count = std::max<std::uint32_t>(place.counts[i], 1);
        for (std::size_t k = 3 * i; k < 3 * i + 3; ++k) {
            out[k] = place.sums[k] / count;
        }
    }
    out.back() = coordEnd;
}

HxGeVector3D faceNormal(const HxGePoint3D* const (&p)[3]) {
    return (*p[1] - *p[0]).crossProduct(*p[2] - *p[0]);
}

}  // namespace

void Mesh::clear() {
    positions.clear();
    indices.clear();
    normalSums.clear();
    normalCounts.clear();
}

bool meshSolid(const TlDbEntity& solid, MeshIndices& indices, MeshPositions& positions, MeshNormals& normals) {
    const tolmar::TriangleMesh* mesh = generate(solid);
    if (mesh == nullptr) {
        return false;
    }
    std::vector<std::uint32_t>& numbers = indices.append();
    numbers.assign(mesh->triangles.begin(), mesh->triangles.end());
    numbers.push_back(indexEnd);
    std::vector<double>& places = positions.append();
    places.assign(mesh->nodes.begin(), mesh->nodes.end());
    places.push_back(coordEnd);
    appendMeans(*mesh, workplace(), normals.append());
    workplace().tidy();
    return true;
}

bool meshVertices(const TlDbEntity& solid, Mesh& mesh) {
    const tolmar::TriangleMesh* made = generate(solid);
    if (made == nullptr) {
        return false;
    }
    appendArrays(*made, mesh);
    workplace().tidy();
    return true;
}

MeshView meshInPlace(const TlDbEntity& solid) {
    workplace().tidy();
    const tolmar::TriangleMesh* made = generate(solid);
    if (made == nullptr) {
        return {};
    }
    return {{made->nodes.data(), made->nodes.size()}, {made->triangles.data(), made->triangles.size()}};
}

bool meshSolidNormals(const TlDbEntity& solid, Mesh& mesh) {
    const tolmar::TriangleMesh* made = generate(solid);
    if (made == nullptr) {
        return false;
    }
    appendArrays(*made, mesh);
    mesh.normalSums.resize(mesh.positions.size(), 0);
    mesh.normalCounts.resize(mesh.vertexCount(), 0);
    const std::size_t first = mesh.vertexCount() - made->nodeCount();
    NormalSums(*made, mesh.normalSums.data() + 3 * first, mesh.normalCounts.data() + first);
    workplace().tidy();
    return true;
}

bool meshFace(const TlBrFace& face, Mesh& mesh) {
    TlBrMesh2d& made = workplace().mesh;
    if (!generate(face, made)) {
        return false;
    }
    appendArrays(made.mesh(), mesh);
    workplace().tidy();
    return true;
}

void meshPolyface(std::span<const HxGePoint3D> points, std::span<const std::int32_t> faceIndices, MeshIndices& indices,
                  MeshPositions& positions, MeshNormals& normals) {
    std::vector<std::uint32_t>& numbers = indices.append();
    std::vector<double>& places = positions.append();
    std::vector<double>& directions = normals.append();
    const auto known = [&points](std::int32_t number) {
        return number >= 0 && static_cast<std::size_t>(number) < points.size();
    };
    for (std::size_t f = 0; f + 4 <= faceIndices.size(); f += 4) {
        const std::span<const std::int32_t> corner = faceIndices.subspan(f + 1, 3);
        if (faceIndices[f] != 3 || !std::all_of(corner.begin(), corner.end(), known)) {
            continue;
        }
        const HxGePoint3D* const p[3] = {&points[static_cast<std::size_t>(corner[0])],
                                         &points[static_cast<std::size_t>(corner[1])],
                                         &points[static_cast<std::size_t>(corner[2])]};
        const HxGeVector3D normal = faceNormal(p);
        for (const HxGePoint3D* point : p) {
            numbers.push_back(static_cast<std::uint32_t>(places.size() / 3));
            places.insert(places.end(), {point->x, point->y, point->z});
            directions.insert(directions.end(), {normal.x, normal.y, normal.z});
        }
    }
    numbers.push_back(indexEnd);
    places.push_back(coordEnd);
    directions.push_back(coordEnd);
}
