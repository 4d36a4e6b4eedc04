#include "tolmar/mesh/simple.h"

#include <cmath>

namespace tolmar {

namespace {

constexpr std::uint32_t quarters = 4;

struct Transition {
    std::uint32_t corner = 0;  // first of the four corner nodes
    Ring circle;
    std::uint32_t perQuarter = 0;

    std::uint32_t onCircle(std::uint32_t k) const { return circle.first + k % circle.chords; }
};

void putNodes(const SquareRoundBody& body, const Transition& t, ArcTables& arcs, TriangleMesh& mesh) {
    double* out = mesh.nodes.extend(3 * (std::size_t{quarters} + t.circle.chords));
    for (const TlGePoint3d& corner : body.corner) {
        out = putNode(out, corner);
    }
    const double* arc = arcs.get(twoPi, t.circle.chords);
    for (std::uint32_t k = 0; k < t.circle.chords; ++k, arc += 2) {
        out = putNode(out, body.top.center + body.top.u * arc[0] + body.top.v * arc[1]);
    }
}

// The quarter cone of a corner and the triangle that follows, with their faces.
std::uint32_t* putQuarter(std::uint32_t* out, std::uint32_t quarter, const Transition& t) {
    const std::uint32_t corner = t.corner + quarter;
    for (std::uint32_t k = 0; k < t.perQuarter; ++k) {
        const std::uint32_t at = quarter * t.perQuarter + k;
        out = putTriangle(out, corner, t.onCircle(at + 1), t.onCircle(at));
    }
    return putTriangle(out, corner, t.corner + (quarter + 1) % quarters, t.onCircle((quarter + 1) * t.perQuarter));
}

}  // namespace

MeshStatus meshSquareRound(const SquareRoundBody& body, double tolerance, ArcTables& arcs, TriangleMesh& mesh) {
    Transition t;
    t.perQuarter = arcChords(body.top.u.length(), tlGePi / 2, tolerance);
    t.corner = static_cast<std::uint32_t>(mesh.nodeCount());
    t.circle = {t.corner + quarters, quarters * t.perQuarter};
    if (2 * std::size_t{t.circle.chords} > maxTriangles) {
        return MeshStatus::TooManyTriangles;
    }
    putNodes(body, t, arcs, mesh);
    const std::size_t disc = t.circle.chords - 2;
    std::size_t face = mesh.triangleCount();
    std::uint32_t* out = mesh.triangles.extend(3 * (2 + disc + t.circle.chords + quarters));
    const TlGeVector3d up = body.top.u.crossProduct(body.top.v);
    beginFlatFace(mesh, face, -up);
    out = fanReversed(out, {t.corner, quarters});
    beginFlatFace(mesh, face + 2, up);
    out = fan(out, t.circle);
    face += 2 + disc;
    for (std::uint32_t quarter = 0; quarter < quarters; ++quarter) {
        out = putQuarter(out, quarter, t);
        beginFace(mesh, face);
        beginFace(mesh, face + t.perQuarter);
        face += t.perQuarter + 1;
    }
    return MeshStatus::Ok;
}

}  // namespace tolmar
