// Rings of nodes and the triangles between them.
#pragma once

#include "tolmar/mesh.h"

#include <cstdint>

namespace tolmar {

// Nodes `first`, `first + 1`, ... along a curve of `chords` chords. A closed ring has as many nodes, an open one has
// one more. No chords: a single node, the tip of a cone.
struct Ring {
    std::uint32_t first = 0;
    std::uint32_t chords = 0;
};

inline double* putNode(double* out, double x, double y, double z) {
    out[0] = x;
    out[1] = y;
    out[2] = z;
    return out + 3;
}

inline double* putNode(double* out, const TlGePoint3d& p) {
    return putNode(out, p.x, p.y, p.z);
}

inline std::uint32_t* putTriangle(std::uint32_t* out, std::uint32_t a, std::uint32_t b, std::uint32_t c) {
    out[0] = a;
    out[1] = b;
    out[2] = c;
    return out + 3;
}

inline std::size_t stripTriangles(const Ring& a, const Ring& b) {
    return std::size_t{a.chords} + b.chords;
}

// The strip between two rings that start at the same parameter: seen from outside `a` runs to the right below `b`.
// Rings of different division are matched chord by chord in the order of the chords' middles, which for circles in
// parallel planes is the hull of both: no triangle then stands farther off than the chords.
std::uint32_t* closedStrip(std::uint32_t* out, const Ring& a, const Ring& b);
std::uint32_t* openStrip(std::uint32_t* out, const Ring& a, const Ring& b);

// The convex polygon of a closed ring, counter-clockwise as the ring runs, or the other way round.
std::uint32_t* fan(std::uint32_t* out, const Ring& ring);
std::uint32_t* fanReversed(std::uint32_t* out, const Ring& ring);

// Adds a face that begins behind the triangles so far.
void beginFace(TriangleMesh& mesh, std::size_t firstTriangle);
void beginFlatFace(TriangleMesh& mesh, std::size_t firstTriangle, const TlGeVector3d& normal);

}  // namespace tolmar
