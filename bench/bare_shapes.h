// A bare tessellation of the primitive classes: loops over angles that write points and indices into memory that is
// large enough, at the chord rule, and nothing else. No solid, no checks of the input, no equal treatment of twisted or
// doubly curved surfaces: chords of both directions hold the tolerance each, facets need not. Outlines that are not
// convex get a fan, which has the right number of triangles in the wrong place.
#pragma once

#include "platform/primitives.h"

#include <cstdint>
#include <vector>

namespace bench {

struct BareMesh {
    std::vector<double> points;
    std::vector<std::uint32_t> indices;
    double* nextPoint = nullptr;
    std::uint32_t* nextIndex = nullptr;

    void reserve(std::size_t triangles);
    void clear();
    std::size_t pointCount() const { return static_cast<std::size_t>(nextPoint - points.data()) / 3; }
    std::size_t triangleCount() const { return static_cast<std::size_t>(nextIndex - indices.data()) / 3; }
};

// False for a class or a form that is not made here.
bool bareTessellate(const HextPrimary3D& primitive, BareMesh& mesh);

}  // namespace bench
