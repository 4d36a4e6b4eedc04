// The mesher that all exports share: triangles only, chords at most 1 mm off, vertices shared by equal position.
//
// One core fills a `Mesh`; `meshSolid`, `meshVertices` and `meshSolidNormals` are its forms. All append to what they
// are given, so that a caller who keeps and clears his buffers allocates nothing in the long run. A failure adds
// nothing and says so on the command line.
#pragma once

#include "platform/geometry.h"
#include "tolmar/entity.h"

#include <cstdint>
#include <span>
#include <vector>

inline constexpr double meshTolerance = 100.0 / 100;

// A list of arrays that keeps its storage when cleared.
template <typename T>
class ArrayList {
public:
    std::size_t size() const { return used_; }
    bool empty() const { return used_ == 0; }
    void clear() { used_ = 0; }
    // A further array, empty; valid until the next append.
    std::vector<T>& append() {
        if (used_ == arrays_.size()) {
            arrays_.emplace_back();
        }
        arrays_[used_].clear();
        return arrays_[used_++];
    }
    const std::vector<T>& operator[](std::size_t i) const { return arrays_[i]; }

private:
    std::vector<std::vector<T>> arrays_;
    std::size_t used_ = 0;
};

// One array a meshed solid, the same place in all three lists. Indices: three to a triangle, then `indexEnd`.
// Positions and normals: three numbers a vertex, then `coordEnd`.
using MeshIndices = ArrayList<std::uint32_t>;
using MeshPositions = ArrayList<double>;
using MeshNormals = ArrayList<double>;
inline constexpr std::uint32_t indexEnd = 0xFFFFFFFF;
inline constexpr double coordEnd = 18446744073709551616.0;  // 2 to the power of 64

// A mesh without terminators. `normalSums` is filled by the core only when asked: three numbers a vertex, the sum of
// the unit normals of its triangles, and `normalCounts` says how many those are.
struct Mesh {
    std::vector<double> positions;
    std::vector<std::uint32_t> indices;
    std::vector<double> normalSums;
    std::vector<std::uint32_t> normalCounts;

    std::size_t vertexCount() const { return positions.size() / 3; }
    std::size_t triangleCount() const { return indices.size() / 3; }
    void clear();
};

// A mesh that stands somewhere else: three numbers a vertex, three indices a triangle.
struct MeshView {
    std::span<const double> positions;
    std::span<const std::uint32_t> indices;
};

// Appends an array to each list: positions with the arithmetic mean of the normals of their triangles, not
// renormalised. False, with nothing added, when the entity has no boundary or cannot be meshed.
bool meshSolid(const TlDbEntity& solid, MeshIndices& indices, MeshPositions& positions, MeshNormals& normals);

// Positions and indices only. Indices count from the first position of `mesh`, also when it held some before.
bool meshVertices(const TlDbEntity& solid, Mesh& mesh);

// The same in the mesher's own place, until its next call; empty after a failure.
MeshView meshInPlace(const TlDbEntity& solid);

// Positions, indices, and the normals of each position as their sum and number (the list of an element's normals is
// only ever added up). Vertices are shared within the solid; indices count from the first position of `mesh`.
bool meshSolidNormals(const TlDbEntity& solid, Mesh& mesh);

// The same for a face alone is `meshFace`: the caller has set a face and streams it by itself.
class TlBrFace;
bool meshFace(const TlBrFace& face, Mesh& mesh);

// `faceIndices` holds four values a face: a count, which is 3, and three point numbers. Each triangle adds three
// vertices of its own with the normal (p1 - p0) x (p2 - p0), not normalised. A face with another count or with a point
// that is not there is left out.
void meshPolyface(std::span<const HxGePoint3D> points, std::span<const std::int32_t> faceIndices, MeshIndices& indices,
                  MeshPositions& positions, MeshNormals& normals);
