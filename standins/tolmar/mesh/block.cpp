#include "tolmar/mesh/simple.h"

namespace tolmar {

namespace {

constexpr int cornerCount = 8;
constexpr int blockFaces = 6;

// Two triangles a face, in the order of the faces.
constexpr std::uint8_t blockTriangles[blockFaces][6] = {
    {0, 3, 2, 0, 2, 1}, {4, 5, 6, 4, 6, 7}, {0, 1, 5, 0, 5, 4},
    {1, 2, 6, 1, 6, 5}, {2, 3, 7, 2, 7, 6}, {3, 0, 4, 3, 4, 7},
};

bool same(const TlGePoint3d& a, const TlGePoint3d& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

// Node of each corner: corners that coincide share one. Gives the number of nodes.
std::uint32_t putCorners(const BlockBody& body, std::uint32_t first, std::uint32_t (&node)[cornerCount],
                         TriangleMesh& mesh) {
    double* out = mesh.nodes.extend(3 * cornerCount);
    std::uint32_t used = 0;
    for (int i = 0; i < cornerCount; ++i) {
        const int group = i & 4;
        int twin = group;
        while (twin < i && !same(body.corner[twin], body.corner[i])) {
            ++twin;
        }
        if (twin == i) {
            out = putNode(out, body.corner[i]);
            node[i] = first + used++;
        } else {
            node[i] = node[twin];
        }
    }
    return used;
}

}  // namespace

MeshStatus meshBlock(const BlockBody& body, TriangleMesh& mesh) {
    const std::size_t first = mesh.nodeCount();
    const std::size_t firstTriangle = mesh.triangleCount();
    std::uint32_t node[cornerCount];
    const std::uint32_t used = putCorners(body, static_cast<std::uint32_t>(first), node, mesh);
    mesh.nodes.truncate(3 * (first + used));
    std::uint32_t* const begin = mesh.triangles.extend(6 * blockFaces);
    std::uint32_t* out = begin;
    for (const auto& face : blockTriangles) {
        beginFace(mesh, firstTriangle + static_cast<std::size_t>(out - begin) / 3);
        for (int corner = 0; corner < 6; corner += 3) {
            const std::uint32_t a = node[face[corner]];
            const std::uint32_t b = node[face[corner + 1]];
            const std::uint32_t c = node[face[corner + 2]];
            if (a != b && b != c && c != a) {
                out = putTriangle(out, a, b, c);
            }
        }
    }
    mesh.triangles.truncate(3 * firstTriangle + static_cast<std::size_t>(out - begin));
    return MeshStatus::Ok;
}

}  // namespace tolmar
