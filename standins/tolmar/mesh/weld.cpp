#include "tolmar/mesh/extrude.h"

#include <bit>

namespace tolmar {

namespace {

constexpr std::uint32_t freeSlot = 0xFFFFFFFF;

std::uint64_t hashPlace(const double* p) {
    std::uint64_t h = 0;
    for (int i = 0; i < 3; ++i) {
        // + 0.0 makes one of the two zeros.
        h = (h ^ std::bit_cast<std::uint64_t>(p[i] + 0.0)) * 0x9E3779B97F4A7C15u;
        h ^= h >> 31;
    }
    return h;
}

bool samePlace(const double* a, const double* b) {
    return a[0] == b[0] && a[1] == b[1] && a[2] == b[2];
}

// The new number of each node; moves the nodes that stay together.
std::vector<std::uint32_t> uniteNodes(TriangleMesh& mesh, std::size_t firstNode) {
    const std::size_t count = mesh.nodeCount() - firstNode;
    const std::size_t slots = std::bit_ceil(2 * count + 1);
    std::vector<std::uint32_t> table(slots, freeSlot);
    std::vector<std::uint32_t> number(count);
    double* const nodes = mesh.nodes.data() + 3 * firstNode;
    std::uint32_t used = 0;
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t slot = hashPlace(nodes + 3 * i) & (slots - 1);
        while (table[slot] != freeSlot && !samePlace(nodes + 3 * std::size_t{table[slot]}, nodes + 3 * i)) {
            slot = (slot + 1) & (slots - 1);
        }
        if (table[slot] == freeSlot) {
            table[slot] = used;
            std::copy_n(nodes + 3 * i, 3, nodes + 3 * std::size_t{used});
            ++used;
        }
        number[i] = table[slot];
    }
    mesh.nodes.truncate(3 * (firstNode + used));
    return number;
}

}  // namespace

void weldNodes(TriangleMesh& mesh, std::size_t firstNode, std::size_t firstTriangle, std::size_t firstFace) {
    const std::vector<std::uint32_t> number = uniteNodes(mesh, firstNode);
    const auto base = static_cast<std::uint32_t>(firstNode);
    std::uint32_t* out = mesh.triangles.data() + 3 * firstTriangle;
    const std::uint32_t* const begin = out;
    std::size_t face = firstFace;
    const std::size_t triangles = mesh.triangleCount();
    for (std::size_t t = firstTriangle; t < triangles; ++t) {
        while (face < mesh.faces.size() && mesh.faces[face].firstTriangle <= t) {
            mesh.faces[face++].firstTriangle =
                static_cast<std::uint32_t>(firstTriangle + static_cast<std::size_t>(out - begin) / 3);
        }
        const std::uint32_t* in = mesh.triangles.data() + 3 * t;
        const std::uint32_t a = base + number[in[0] - base];
        const std::uint32_t b = base + number[in[1] - base];
        const std::uint32_t c = base + number[in[2] - base];
        if (a != b && b != c && c != a) {
            out[0] = a;
            out[1] = b;
            out[2] = c;
            out += 3;
        }
    }
    mesh.triangles.truncate(3 * firstTriangle + static_cast<std::size_t>(out - begin));
    for (; face < mesh.faces.size(); ++face) {
        mesh.faces[face].firstTriangle = static_cast<std::uint32_t>(mesh.triangleCount());
    }
}

}  // namespace tolmar
