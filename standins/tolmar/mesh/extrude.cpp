#include "tolmar/mesh/extrude.h"

namespace tolmar {

namespace {

// How often, and by how much, the tolerance is refined for outlines whose chords cross.
constexpr int refinements = 4;
constexpr double refinement = 4;

bool triangulateConvex(const Region& region, PointTriangles& triangles) {
    if (!isConvexLoop(region, leastCross(region))) {
        return false;
    }
    const auto n = static_cast<std::uint32_t>(region.pointCount());
    triangles.clear();
    fan(triangles.extend(3 * (std::size_t{n} - 2)), {0, n});
    return true;
}

RegionCheck triangulate(MeshScratch& scratch) {
    if (hasFlatLoop(scratch.region)) {
        return RegionCheck::Failed;
    }
    if (triangulateConvex(scratch.region, scratch.regionTriangles)) {
        return RegionCheck::Ok;
    }
    return scratch.sweep.run(scratch.region, scratch.regionTriangles);
}

struct Frame {
    const ExtrudedBody& body;
    TlGePoint3d at(const Point2& p) const { return body.origin + body.x * p.x + body.y * p.y; }
};

void putNodes(const ExtrudedBody& body, const Region& region, TriangleMesh& mesh) {
    const std::size_t n = region.pointCount();
    double* lower = mesh.nodes.extend(6 * n);
    double* upper = lower + 3 * n;
    const Frame frame{body};
    for (const Point2& p : region.points) {
        const TlGePoint3d at = frame.at(p);
        lower = putNode(lower, at);
        upper = putNode(upper, at + body.extrusion);
    }
}

void putRegions(const MeshScratch& scratch, std::uint32_t lower, TriangleMesh& mesh) {
    const PointTriangles& triangles = scratch.regionTriangles;
    const auto upper = lower + static_cast<std::uint32_t>(scratch.region.pointCount());
    std::uint32_t* out = mesh.triangles.extend(2 * triangles.size());
    for (std::size_t i = 0; i < triangles.size(); i += 3) {
        out = putTriangle(out, lower + triangles[i], lower + triangles[i + 2], lower + triangles[i + 1]);
    }
    for (std::size_t i = 0; i < triangles.size(); i += 3) {
        out = putTriangle(out, upper + triangles[i], upper + triangles[i + 1], upper + triangles[i + 2]);
    }
}

void putSides(const Region& region, std::uint32_t lower, TriangleMesh& mesh) {
    const auto n = static_cast<std::uint32_t>(region.pointCount());
    std::uint32_t* out = mesh.triangles.extend(6 * std::size_t{n});
    std::uint32_t first = 0;
    for (const std::uint32_t loopEnd : region.loopEnds) {
        for (std::uint32_t i = first; i < loopEnd; ++i) {
            const std::uint32_t a = lower + i;
            const std::uint32_t b = lower + (i + 1 == loopEnd ? first : i + 1);
            out = putTriangle(out, a, b, b + n);
            out = putTriangle(out, a, b + n, a + n);
        }
        first = loopEnd;
    }
}

void putFaces(const ExtrudedBody& body, const MeshScratch& scratch, std::size_t firstTriangle, TriangleMesh& mesh) {
    const std::size_t perRegion = scratch.regionTriangles.size() / 3;
    const TlGeVector3d up = body.x.crossProduct(body.y);
    beginFlatFace(mesh, firstTriangle, -up);
    beginFlatFace(mesh, firstTriangle + perRegion, up);
    const std::vector<std::uint32_t>& edges = scratch.region.edgeOfPiece;
    for (std::size_t piece = 0; piece + 1 < edges.size(); ++piece) {
        beginFace(mesh, firstTriangle + 2 * perRegion + 2 * std::size_t{edges[piece]});
    }
}

}  // namespace

MeshStatus makeRegion(const std::vector<Outline>& outlines, double tolerance, MeshScratch& scratch, bool& touching) {
    double sag = tolerance;
    for (int round = 0; round <= refinements; ++round, sag /= refinement) {
        if (!flattenOutlines(outlines, sag, scratch.arcs, scratch.region)) {
            return MeshStatus::TooManyTriangles;
        }
        const RegionCheck check = triangulate(scratch);
        if (check != RegionCheck::Failed) {
            touching = check == RegionCheck::Touching;
            return MeshStatus::Ok;
        }
        if (!scratch.region.hasArcs) {
            break;
        }
    }
    flattenOutlines(outlines, tolerance, scratch.arcs, scratch.region);
    touching = true;
    if (!uniteOutlines(scratch.region)) {
        return MeshStatus::BadRegion;
    }
    const bool done =
        triangulate(scratch) != RegionCheck::Failed || tessellateRegion(scratch.region, scratch.regionTriangles);
    // Parts that almost lie on each other may lose a triangle.
    return done && fillsLoops(scratch.region, scratch.regionTriangles) ? MeshStatus::Ok : MeshStatus::BadRegion;
}

MeshStatus meshExtruded(const ExtrudedBody& body, double tolerance, MeshScratch& scratch, TriangleMesh& mesh) {
    bool touching = false;
    const MeshStatus status = makeRegion(body.outlines, tolerance, scratch, touching);
    if (status != MeshStatus::Ok) {
        return status;
    }
    if (2 * scratch.region.pointCount() + 2 * scratch.regionTriangles.size() / 3 > maxTriangles) {
        return MeshStatus::TooManyTriangles;
    }
    const std::size_t firstNode = mesh.nodeCount();
    const std::size_t firstTriangle = mesh.triangleCount();
    const std::size_t firstFace = mesh.faces.size();
    const auto lower = static_cast<std::uint32_t>(firstNode);
    putNodes(body, scratch.region, mesh);
    putRegions(scratch, lower, mesh);
    putSides(scratch.region, lower, mesh);
    putFaces(body, scratch, firstTriangle, mesh);
    if (touching) {
        weldNodes(mesh, firstNode, firstTriangle, firstFace);
    }
    return MeshStatus::Ok;
}

}  // namespace tolmar
