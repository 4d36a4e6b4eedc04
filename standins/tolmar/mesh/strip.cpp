#include "tolmar/mesh/strip.h"

namespace tolmar {

namespace {

std::uint32_t* quads(std::uint32_t* out, std::uint32_t a, std::uint32_t b, std::uint32_t count) {
    for (std::uint32_t i = 0; i < count; ++i) {
        out = putTriangle(out, a + i, a + i + 1, b + i);
        out = putTriangle(out, a + i + 1, b + i + 1, b + i);
    }
    return out;
}

std::uint32_t* tipBelow(std::uint32_t* out, std::uint32_t tip, const Ring& b, std::uint32_t count) {
    for (std::uint32_t j = 0; j < count; ++j) {
        out = putTriangle(out, tip, b.first + j + 1, b.first + j);
    }
    return out;
}

std::uint32_t* tipAbove(std::uint32_t* out, const Ring& a, std::uint32_t tip, std::uint32_t count) {
    for (std::uint32_t i = 0; i < count; ++i) {
        out = putTriangle(out, a.first + i, a.first + i + 1, tip);
    }
    return out;
}

// `lastA` and `lastB` are the nodes that end the last chord of each ring.
std::uint32_t* merged(std::uint32_t* out, const Ring& a, const Ring& b, std::uint32_t lastA, std::uint32_t lastB) {
    // Middles of the chords, (2 i + 1) / a.chords and (2 j + 1) / b.chords, over the common denominator.
    std::uint64_t middleA = b.chords;
    std::uint64_t middleB = a.chords;
    const std::uint64_t stepA = 2 * std::uint64_t{b.chords};
    const std::uint64_t stepB = 2 * std::uint64_t{a.chords};
    const std::uint32_t endA = a.first + a.chords;
    const std::uint32_t endB = b.first + b.chords;
    std::uint32_t i = a.first;
    std::uint32_t j = b.first;
    // Which ring goes on cannot be foretold: no branch depends on it.
    for (std::size_t left = stripTriangles(a, b); left > 0; --left) {
        const bool onA = middleA <= middleB;
        const std::uint32_t nextA = i + 1 == endA ? lastA : i + 1;
        const std::uint32_t nextB = j + 1 == endB ? lastB : j + 1;
        out = putTriangle(out, i, onA ? nextA : nextB, j);
        i = onA ? nextA : i;
        j = onA ? j : nextB;
        middleA += onA ? stepA : 0;
        middleB += onA ? 0 : stepB;
    }
    return out;
}

}  // namespace

std::uint32_t* closedStrip(std::uint32_t* out, const Ring& a, const Ring& b) {
    if (a.chords == 0 && b.chords == 0) {
        return out;
    }
    if (a.chords == 0) {
        out = tipBelow(out, a.first, b, b.chords - 1);
        return putTriangle(out, a.first, b.first, b.first + b.chords - 1);
    }
    if (b.chords == 0) {
        out = tipAbove(out, a, b.first, a.chords - 1);
        return putTriangle(out, a.first + a.chords - 1, a.first, b.first);
    }
    if (a.chords != b.chords) {
        return merged(out, a, b, a.first, b.first);
    }
    const std::uint32_t last = a.chords - 1;
    out = quads(out, a.first, b.first, last);
    out = putTriangle(out, a.first + last, a.first, b.first + last);
    return putTriangle(out, a.first, b.first, b.first + last);
}

std::uint32_t* openStrip(std::uint32_t* out, const Ring& a, const Ring& b) {
    if (a.chords == 0) {
        return tipBelow(out, a.first, b, b.chords);
    }
    if (b.chords == 0) {
        return tipAbove(out, a, b.first, a.chords);
    }
    if (a.chords != b.chords) {
        return merged(out, a, b, a.first + a.chords, b.first + b.chords);
    }
    return quads(out, a.first, b.first, a.chords);
}

std::uint32_t* fan(std::uint32_t* out, const Ring& ring) {
    for (std::uint32_t i = 1; i + 1 < ring.chords; ++i) {
        out = putTriangle(out, ring.first, ring.first + i, ring.first + i + 1);
    }
    return out;
}

std::uint32_t* fanReversed(std::uint32_t* out, const Ring& ring) {
    for (std::uint32_t i = 1; i + 1 < ring.chords; ++i) {
        out = putTriangle(out, ring.first, ring.first + i + 1, ring.first + i);
    }
    return out;
}

void beginFace(TriangleMesh& mesh, std::size_t firstTriangle) {
    MeshFace* face = mesh.faces.extend(1);
    face->firstTriangle = static_cast<std::uint32_t>(firstTriangle);
    face->flat = false;
}

void beginFlatFace(TriangleMesh& mesh, std::size_t firstTriangle, const TlGeVector3d& normal) {
    const TlGeVector3d unit = normal / normal.length();
    *mesh.faces.extend(1) = {static_cast<std::uint32_t>(firstTriangle), true, {unit.x, unit.y, unit.z}};
}

}  // namespace tolmar
