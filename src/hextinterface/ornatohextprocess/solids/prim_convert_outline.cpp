// Solids that become a loop, extruded or revolved.
#include "hextinterface/ornatohextprocess/solids/prim_frames.h"

#include <cmath>

namespace design {
namespace {

constexpr double degrees = 180.0 / tlGePi;
constexpr std::size_t leastVertices = 3;
constexpr int mostSides = 10000;

void express(std::vector<PVertex>& vertices, const TlGeMatrix3d& matrix) {
    for (PVertex& vertex : vertices) {
        vertex.position = matrix * vertex.position;
    }
}

void noteLostArc(PrimGroup& group, const OutlineLoop& loop) {
    if (loop.closingArcLost) {
        group.leftOut.emplace_back("the closing arc of its outline is left out");
    }
}

}  // namespace

PrimGroup convertPrism(const HextPrism3D& prism) {
    if (prism.sides < static_cast<int>(leastVertices) || prism.sides > mostSides) {
        return {};
    }
    const HxGeVector3D along = prism.startPoint - prism.endPoint;
    const HxGeVector3D radius = prism.vertexPoint - prism.endPoint;
    _PExtru solid;
    solid.frame = frameYZ(prism.endPoint, radius, along);
    solid.height = along.length();
    const HxGeVector3D turnAxis = radius.crossProduct(along.crossProduct(radius)).normal();
    const TlGeMatrix3d toLocal = worldToFrame(solid.frame);
    for (int i = 1; i <= prism.sides; ++i) {
        const double angle = 2 * tlGePi * i / prism.sides;
        solid.loop.vertices.emplace_back(toLocal * prism.vertexPoint.rotatedBy(angle, turnAxis, prism.endPoint));
    }
    return oneSolid(std::move(solid));
}

PrimGroup convertWedge(const HextWedge3D& wedge) {
    const HxGePoint3D& corner = wedge.point2;
    const HxGeVector3D y = wedge.point3 - corner;
    _PExtru solid;
    solid.frame = frameYZ(corner, y, y.crossProduct(wedge.point1 - corner));
    solid.height = std::fabs(wedge.wedgeSize);
    if (wedge.wedgeSize < 0) {
        solid.frame.origin += solid.frame.zAxis * wedge.wedgeSize;
    }
    const TlGeMatrix3d toPlane =
        worldToFrame(CoordFrame(corner, solid.frame.xAxis, solid.frame.yAxis, solid.frame.zAxis));
    solid.loop.vertices = {PVertex(), PVertex(toPlane * wedge.point3), PVertex(toPlane * wedge.point1)};
    return oneSolid(std::move(solid));
}

namespace {

// The section's outline from its corner P0: up the side to P1, along the side with the trough to P3, back to P2.
std::vector<PVertex> saddleSection(const HextSaddle3D& saddle) {
    const double r = saddle.circleRadius;
    const double across = saddle.sectionLength;
    const HxGeVector3D y = saddle.sectionAxis.normal();
    const HxGeVector3D n = saddle.axis.crossProduct(saddle.sectionAxis).normal();
    const HxGePoint3D p1 = saddle.point + y * saddle.sectionHeight;
    const HxGePoint3D p2 = saddle.point + n * across;
    const HxGePoint3D p3 = p1 + n * across;
    std::vector<PVertex> outline{PVertex(saddle.point)};
    std::vector<PVertex> trough;
    if (across > 2 * r) {
        const double margin = (across - 2 * r) / 2;
        trough = arcVertices(p1 + n * margin, p1 + n * (margin + r) - y * r, p1 + n * (across - margin));
        outline.emplace_back(p1);
        trough.emplace_back(p3);
    } else {
        const double half = across / 2;
        trough = arcVertices(p1, p1 + n * half - y * (r - std::sqrt(r * r - half * half)), p3);
    }
    outline.insert(outline.end(), trough.begin(), trough.end());
    outline.emplace_back(p2);
    return outline;
}

}  // namespace

PrimGroup convertSaddle(const HextSaddle3D& saddle) {
    _PExtru solid;
    solid.frame = frameYZ(saddle.point, TlGeVector3d::kZAxis, saddle.axis);
    solid.height = saddle.length;
    solid.loop.vertices = saddleSection(saddle);
    express(solid.loop.vertices, worldToFrame(solid.frame));
    return oneSolid(std::move(solid));
}

PrimGroup convertRevolve(const HextRevolve& revolve) {
    if (!revolve.profile) {
        return {};
    }
    const HextVertexList profile = settleArcMiddles(*revolve.profile);
    if (profile.size() < leastVertices) {
        return {};
    }
    const HxGePoint3D& middle = profile[1].point;
    const HxGeVector3D n = (profile[0].point - middle).crossProduct(profile[2].point - middle);
    const HxGeVector3D x = revolve.axis.normal();
    const HxGeVector3D y = n.normal().crossProduct(x).normal();
    _PRevo solid;
    solid.frame = CoordFrame(revolve.center, x, y, x.crossProduct(y));
    solid.angle = revolve.angle * degrees;
    OutlineLoop loop = outlineToLoop(profile);
    if (loop.vertices.size() < leastVertices) {
        return {};
    }
    solid.loop.vertices = std::move(loop.vertices);
    express(solid.loop.vertices, worldToFrame(solid.frame));
    PrimGroup group = oneSolid(std::move(solid));
    noteLostArc(group, loop);
    return group;
}

namespace {

// The plane's normal in the coordinates of the outline. A normal that is told in world coordinates is the third axis of
// the plane's frame or its opposite; any other one is taken as an outline's own.
HxGeVector3D localNormal(const HextSpolygon& polygon, const HxGeVector3D& planeNormal) {
    if (!polygon.direction.isParallelTo(planeNormal, TlGeTol(1e-6, 1e-6))) {
        return polygon.direction;
    }
    return TlGeVector3d::kZAxis * (polygon.direction.dotProduct(planeNormal) < 0 ? -1.0 : 1.0);
}

// Other solids have the perpendicular of their axis along Y.
CoordFrame extrusionFrame(const HxGePoint3D& origin, const HxGeVector3D& normal) {
    return frameXZ(origin, normal.normal().perpVector(), normal);
}

// Maps outline coordinates into the frame of the extrusion.
class OutlinePlane {
public:
    explicit OutlinePlane(const CoordFrame& frame) : frame_(frame), toLocal_(worldToFrame(frame)) {}

    OutlineLoop loop(HextVertexList list) const {
        for (HextVertex& vertex : list) {
            vertex.point = toLocal_ * vertex.point.orthoProject(frame_.origin, frame_.zAxis);
        }
        return outlineToLoop(list);
    }

private:
    const CoordFrame& frame_;
    TlGeMatrix3d toLocal_;
};

void addHoles(PrimGroup& group, const HextSpolygon& polygon, const OutlinePlane& plane) {
    for (const HextVertexList& list : *polygon.holes) {
        OutlineLoop loop = plane.loop(settleArcMiddles(list));
        noteLostArc(group, loop);
        if (loop.vertices.size() < leastVertices) {
            group.leftOut.emplace_back("a hole has fewer than three corners");
            continue;
        }
        _PExtru hole;
        hole.height = polygon.height;
        hole.loop.vertices = std::move(loop.vertices);
        group.addCut(std::move(hole));
    }
}

}  // namespace

PrimGroup convertSpolygon(const HextSpolygon& polygon) {
    const HextVertexList outline = polygon.outline ? settleArcMiddles(*polygon.outline) : HextVertexList();
    if (outline.size() < leastVertices) {
        return {};
    }
    const HxGeVector3D x = polygon.xAxis.normal();
    const HxGeVector3D y = polygon.yAxis.normal();
    const HxGeVector3D z = x.crossProduct(y).normal();
    const CoordFrame frame = extrusionFrame(outline.front().point, localNormal(polygon, z));
    const OutlinePlane plane(frame);
    OutlineLoop loop = plane.loop(outline);
    if (loop.vertices.size() < leastVertices) {
        return {};
    }
    _PExtru solid;
    solid.frame = frame;
    solid.transformBy(TlGeMatrix3d::coordSystem(polygon.origin, x, y, z));
    solid.height = polygon.height;
    solid.loop.vertices = std::move(loop.vertices);
    PrimGroup group = oneSolid(std::move(solid));
    noteLostArc(group, loop);
    if (polygon.holes) {
        addHoles(group, polygon, plane);
    }
    return group;
}

}  // namespace design
