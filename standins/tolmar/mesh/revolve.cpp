#include "tolmar/mesh/revolve.h"

#include "tolmar/mesh/extrude.h"

#include <cmath>

namespace tolmar {

namespace {

class RevolveWriter {
public:
    RevolveWriter(const RevolvedBody& body, MeshScratch& scratch, const Profile& profile, TriangleMesh& mesh)
        : body_(body), scratch_(scratch), profile_(profile), mesh_(mesh), whole_(body.angle >= twoPi),
          base_(static_cast<std::uint32_t>(mesh.nodeCount())) {}

    void putNodes() {
        const Region& region = scratch_.region;
        const Ring& last = profile_.rings[profile_.rings.size() - 1];
        double* out = mesh_.nodes.extend(3 * (std::size_t{last.first} + nodesOf(last)));
        for (std::size_t i = 0; i < region.pointCount(); ++i) {
            const Ring& ring = profile_.rings[i];
            if (ring.chords == 0) {
                out = putNode(out, body_.center + body_.axis * region.points[i].y);
            } else if (body_.tapered) {
                out = putTaperedRing(out, region.points[i], ring);
            } else {
                out = putRing(out, region.points[i], ring);
            }
        }
    }

    void putWalls() {
        const Region& region = scratch_.region;
        std::uint32_t* out = mesh_.triangles.extend(3 * wallTriangles());
        const std::uint32_t* const begin = out;
        const std::size_t firstTriangle = static_cast<std::size_t>(out - mesh_.triangles.data()) / 3;
        std::size_t piece = 0;
        std::size_t first = 0;
        for (const std::uint32_t loopEnd : region.loopEnds) {
            for (std::size_t i = first; i < loopEnd; ++i) {
                for (; piece + 1 < region.edgeOfPiece.size() && region.edgeOfPiece[piece] <= i; ++piece) {
                    beginFace(mesh_, firstTriangle + static_cast<std::size_t>(out - begin) / 3);
                }
                const Ring a = numbered(profile_.rings[i]);
                const Ring b = numbered(profile_.rings[i + 1 == loopEnd ? first : i + 1]);
                if (a.chords + b.chords > 0) {
                    out = whole_ ? closedStrip(out, a, b) : openStrip(out, a, b);
                }
            }
            first = loopEnd;
        }
        for (; piece + 1 < region.edgeOfPiece.size(); ++piece) {
            beginFace(mesh_, mesh_.triangleCount());
        }
    }

    void putEnds() {
        if (whole_) {
            return;
        }
        const PointTriangles& triangles = scratch_.regionTriangles;
        beginFlatFace(mesh_, mesh_.triangleCount(), -body_.y);
        std::uint32_t* out = mesh_.triangles.extend(triangles.size());
        for (std::size_t i = 0; i < triangles.size(); i += 3) {
            out = putTriangle(out, startNode(triangles[i]), startNode(triangles[i + 1]), startNode(triangles[i + 2]));
        }
        const TlGeVector3d ahead = body_.y * std::cos(body_.angle) - body_.x * std::sin(body_.angle);
        beginFlatFace(mesh_, mesh_.triangleCount(), ahead);
        out = mesh_.triangles.extend(triangles.size());
        for (std::size_t i = 0; i < triangles.size(); i += 3) {
            out = putTriangle(out, endNode(triangles[i]), endNode(triangles[i + 2]), endNode(triangles[i + 1]));
        }
    }

private:
    std::size_t nodesOf(const Ring& ring) const {
        return ring.chords == 0 ? 1 : std::size_t{ring.chords} + (whole_ ? 0 : 1);
    }

    Ring numbered(const Ring& ring) const { return {base_ + ring.first, ring.chords}; }
    std::uint32_t startNode(std::uint32_t point) const { return base_ + profile_.rings[point].first; }
    std::uint32_t endNode(std::uint32_t point) const {
        return base_ + profile_.rings[point].first + profile_.rings[point].chords;
    }

    // Every ring takes part in the strips on its two sides.
    std::size_t wallTriangles() const {
        std::size_t count = 0;
        for (const Ring& ring : profile_.rings) {
            count += 2 * std::size_t{ring.chords};
        }
        return count;
    }

    double* putRing(double* out, const Point2& at, const Ring& ring) {
        const TlGePoint3d middle = body_.center + body_.axis * at.y;
        const TlGeVector3d u = body_.x * at.x;
        const TlGeVector3d v = body_.y * at.x;
        const double* arc = scratch_.arcs.get(body_.angle, ring.chords);
        for (std::size_t k = nodesOf(ring); k > 0; --k, arc += 2) {
            const double c = arc[0];
            const double s = arc[1];
            out =
                putNode(out, middle.x + u.x * c + v.x * s, middle.y + u.y * c + v.y * s, middle.z + u.z * c + v.z * s);
        }
        return out;
    }

    double* putTaperedRing(double* out, const Point2& at, const Ring& ring) {
        const double* arc = scratch_.arcs.get(body_.angle, ring.chords);
        const double dr = at.x - body_.pivot.x;
        const double dz = at.y - body_.pivot.y;
        for (std::uint32_t k = 0; k <= ring.chords; ++k, arc += 2) {
            const double part = double(k) / ring.chords;
            const double r = body_.pivot.x + dr * (1 + (body_.endFactor.x - 1) * part);
            const double z = body_.pivot.y + dz * (1 + (body_.endFactor.y - 1) * part);
            out = putNode(out, body_.center + body_.axis * z + body_.x * (r * arc[0]) + body_.y * (r * arc[1]));
        }
        return out;
    }

    const RevolvedBody& body_;
    MeshScratch& scratch_;
    const Profile& profile_;
    TriangleMesh& mesh_;
    bool whole_;
    std::uint32_t base_;
};

}  // namespace

MeshStatus meshRevolved(const RevolvedBody& body, double tolerance, MeshScratch& scratch, Profile& profile,
                        TriangleMesh& mesh) {
    const MeshStatus status = makeProfile(body, tolerance, scratch, profile);
    if (status != MeshStatus::Ok) {
        return status;
    }
    const std::size_t firstNode = mesh.nodeCount();
    const std::size_t firstTriangle = mesh.triangleCount();
    const std::size_t firstFace = mesh.faces.size();
    RevolveWriter writer(body, scratch, profile, mesh);
    writer.putNodes();
    writer.putWalls();
    writer.putEnds();
    const bool collapsed = body.tapered && (body.endFactor.x == 0 || body.endFactor.y == 0);
    if (profile.touching || collapsed) {
        weldNodes(mesh, firstNode, firstTriangle, firstFace);
    }
    return MeshStatus::Ok;
}

}  // namespace tolmar
