#include "tolmar/mesh/simple.h"

#include <cmath>

namespace tolmar {

namespace {

bool equal(const TlGeVector3d& a, const TlGeVector3d& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

// The larger semi-axis.
double largestRadius(const Ellipse& e) {
    const double uu = e.u.lengthSqrd();
    const double vv = e.v.lengthSqrd();
    const double uv = e.u.dotProduct(e.v);
    return std::sqrt((uu + vv + std::sqrt((uu - vv) * (uu - vv) + 4 * uv * uv)) / 2);
}

struct ConeRings {
    Ring start;
    Ring end;
};

std::uint32_t ringChords(double radius, double tolerance) {
    return radius > 0 ? arcChords(radius, twoPi, tolerance) : 0;
}

// Rings so close that the chords of the larger one would cut the smaller one get the same division.
void equalise(double startRadius, double endRadius, ConeRings& rings) {
    std::uint32_t& a = rings.start.chords;
    std::uint32_t& b = rings.end.chords;
    if (a == 0 || b == 0 || a == b) {
        return;
    }
    const bool startLarger = startRadius > endRadius;
    const double large = startLarger ? startRadius : endRadius;
    const double small = startLarger ? endRadius : startRadius;
    if (small > large * std::cos(tlGePi / (startLarger ? a : b))) {
        a = b = std::max(a, b);
    }
}

std::uint32_t ringNodes(const Ring& ring) {
    return std::max<std::uint32_t>(ring.chords, 1);
}

double* putEllipse(double* out, const Ellipse& e, std::uint32_t chords, ArcTables& arcs) {
    if (chords == 0) {
        return putNode(out, e.center);
    }
    const double* arc = arcs.get(twoPi, chords);
    for (std::uint32_t k = 0; k < chords; ++k, arc += 2) {
        const double c = arc[0];
        const double s = arc[1];
        out = putNode(out, e.center.x + e.u.x * c + e.v.x * s, e.center.y + e.u.y * c + e.v.y * s,
                      e.center.z + e.u.z * c + e.v.z * s);
    }
    return out;
}

double* putShifted(double* out, const double* from, std::uint32_t count, const TlGeVector3d& by) {
    for (std::uint32_t k = 0; k < count; ++k, from += 3) {
        out = putNode(out, from[0] + by.x, from[1] + by.y, from[2] + by.z);
    }
    return out;
}

void putRings(const ConeBody& body, const ConeRings& rings, ArcTables& arcs, TriangleMesh& mesh) {
    double* const first = mesh.nodes.extend(3 * (std::size_t{ringNodes(rings.start)} + ringNodes(rings.end)));
    double* const second = putEllipse(first, body.start, rings.start.chords, arcs);
    const bool parallel = rings.start.chords == rings.end.chords && rings.end.chords > 0 &&
                          equal(body.start.u, body.end.u) && equal(body.start.v, body.end.v);
    if (parallel) {
        putShifted(second, first, rings.end.chords, body.end.center - body.start.center);
    } else {
        putEllipse(second, body.end, rings.end.chords, arcs);
    }
}

TlGeVector3d discNormal(const Ellipse& e) {
    const TlGeVector3d normal = e.u.crossProduct(e.v);
    return normal.lengthSqrd() > 0 ? normal : TlGeVector3d{0, 0, 1};
}

}  // namespace

MeshStatus meshCone(const ConeBody& body, double tolerance, ArcTables& arcs, TriangleMesh& mesh) {
    const double startRadius = largestRadius(body.start);
    const double endRadius = largestRadius(body.end);
    ConeRings rings;
    rings.start.chords = ringChords(startRadius, tolerance);
    rings.end.chords = ringChords(endRadius, tolerance);
    equalise(startRadius, endRadius, rings);
    const std::size_t wall = stripTriangles(rings.start, rings.end);
    if (2 * wall > maxTriangles) {
        return MeshStatus::TooManyTriangles;
    }
    rings.start.first = static_cast<std::uint32_t>(mesh.nodeCount());
    rings.end.first = rings.start.first + ringNodes(rings.start);
    putRings(body, rings, arcs, mesh);
    const std::size_t firstTriangle = mesh.triangleCount();
    const std::size_t startDisc = rings.start.chords == 0 ? 0 : rings.start.chords - 2;
    const std::size_t endDisc = rings.end.chords == 0 ? 0 : rings.end.chords - 2;
    std::uint32_t* out = mesh.triangles.extend(3 * (wall + startDisc + endDisc));
    out = closedStrip(out, rings.start, rings.end);
    out = fanReversed(out, rings.start);
    fan(out, rings.end);
    beginFace(mesh, firstTriangle);
    beginFlatFace(mesh, firstTriangle + wall, -discNormal(body.start));
    beginFlatFace(mesh, firstTriangle + wall + startDisc, discNormal(body.end));
    return MeshStatus::Ok;
}

}  // namespace tolmar
