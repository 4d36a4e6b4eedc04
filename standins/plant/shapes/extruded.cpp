// Solids that are a plane outline extruded.
#include "plant/shapes/outline.h"

#include <algorithm>
#include <cmath>

namespace plant {

namespace {

constexpr std::int32_t leastSides = 3;
constexpr std::int32_t mostSides = 100;

tolmar::OutlinePiece corner(double x, double y) {
    tolmar::OutlinePiece piece;
    piece.start = {x, y};
    return piece;
}

tolmar::ExtrudedBody extrusionOf(const HxGePoint3D& origin, const Axes& axes, const HxGeVector3D& extrusion) {
    tolmar::ExtrudedBody body;
    body.origin = origin;
    body.x = axes.x;
    body.y = axes.y;
    body.extrusion = extrusion;
    return body;
}

}  // namespace

Tl::ErrorStatus buildWedge(const HextWedge3D& w, tolmar::Body& body) {
    if (const Tl::ErrorStatus status =
            firstFailure({checkPoints({w.point1, w.point2, w.point3}), checkNumbers({w.wedgeSize})});
        status != Tl::eOk) {
        return status;
    }
    if (std::fabs(w.wedgeSize) <= leastLength) {
        return Tl::eZeroSize;
    }
    const HxGeVector3D base = w.point3 - w.point2;
    const HxGeVector3D side = w.point1 - w.point2;
    Axes axes;
    const bool apart = base.length() > leastLength && side.length() > leastLength;
    if (!apart || makeAxes(base.crossProduct(side), base, axes) != Tl::eOk || side.dotProduct(axes.y) <= leastLength) {
        return Tl::eCoincidentPoints;
    }
    // A negative size leads to the other side; the triangle is then mirrored in the plane's frame.
    const double sign = w.wedgeSize < 0 ? -1 : 1;
    axes.y *= sign;
    tolmar::ExtrudedBody wedge = extrusionOf(w.point2, axes, axes.z * w.wedgeSize);
    tolmar::Outline triangle{corner(0, 0), corner(base.length(), 0),
                             corner(side.dotProduct(axes.x), side.dotProduct(axes.y))};
    if (sign < 0) {
        tolmar::reverseOutline(triangle);
    }
    wedge.outlines.push_back(std::move(triangle));
    body = std::move(wedge);
    return Tl::eOk;
}

Tl::ErrorStatus buildPrism(const HextPrism3D& p, tolmar::Body& body) {
    if (const Tl::ErrorStatus status = checkPoints({p.startPoint, p.endPoint, p.vertexPoint}); status != Tl::eOk) {
        return status;
    }
    if (p.sides < leastSides || p.sides > mostSides) {
        return Tl::eBadSides;
    }
    const HxGeVector3D along = p.startPoint - p.endPoint;
    const HxGeVector3D reach = p.vertexPoint - p.endPoint;
    const double radius = reach.length();
    Axes turned;
    if (along.length() <= leastLength || radius <= leastLength || makeAxes(reach, along, turned) != Tl::eOk) {
        return Tl::eCoincidentPoints;
    }
    // The polygon stands through the vertex point, across the part of the axis that is perpendicular to it.
    const Axes axes{turned.z, turned.x.crossProduct(turned.z), turned.x};
    tolmar::ExtrudedBody prism = extrusionOf(p.endPoint, axes, along);
    tolmar::Outline polygon;
    polygon.reserve(static_cast<std::size_t>(p.sides));
    const double step = wholeTurn / p.sides;
    const double first = p.sideMode == 0 ? 0 : step / 2;
    for (std::int32_t i = 0; i < p.sides; ++i) {
        polygon.push_back(corner(radius * std::cos(first + step * i), radius * std::sin(first + step * i)));
    }
    prism.outlines.push_back(std::move(polygon));
    body = std::move(prism);
    return Tl::eOk;
}

namespace {

// The trough in the upper edge of a section, from right to left, with the ledges beside it.
Tl::ErrorStatus addTrough(const HextSaddle3D& s, tolmar::Outline& section) {
    const double half = s.sectionLength / 2;
    const double r = s.circleRadius;
    const double halfChord = std::min(r, half);
    const double centerAbove = std::sqrt(std::max(r * r - halfChord * halfChord, 0.0));
    if (r - centerAbove >= s.sectionHeight - leastLength) {
        return Tl::eSelfCutting;
    }
    if (half - halfChord > leastLength) {
        section.push_back(corner(s.sectionLength, s.sectionHeight));
    }
    const double right = half + halfChord;
    const double startAngle = std::atan2(-centerAbove, halfChord);
    const double sweep = -(tlGePi + 2 * startAngle);
    section.push_back({{right, s.sectionHeight}, true, {half, s.sectionHeight + centerAbove}, r, r, startAngle, sweep});
    section.push_back(corner(half - halfChord, s.sectionHeight));
    if (half - halfChord > leastLength) {
        section.push_back(corner(0, s.sectionHeight));
    }
    return Tl::eOk;
}

}  // namespace

Tl::ErrorStatus buildSaddle(const HextSaddle3D& s, tolmar::Body& body) {
    const Tl::ErrorStatus status =
        firstFailure({checkPoints({s.point}), checkDirections({s.axis, s.sectionAxis}),
                      checkNumbers({s.length, s.sectionLength, s.sectionHeight, s.circleRadius})});
    if (status != Tl::eOk) {
        return status;
    }
    if (std::min({s.length, s.sectionLength, s.sectionHeight, s.circleRadius}) <= leastLength) {
        return Tl::eZeroSize;
    }
    Axes axes;
    if (makeAxes(s.axis, s.sectionAxis, axes) != Tl::eOk) {
        return Tl::eZeroDirection;
    }
    tolmar::ExtrudedBody saddle = extrusionOf(s.point, axes, axes.z * s.length);
    tolmar::Outline section{corner(0, 0), corner(s.sectionLength, 0)};
    if (const Tl::ErrorStatus trough = addTrough(s, section); trough != Tl::eOk) {
        return trough;
    }
    saddle.outlines.push_back(std::move(section));
    body = std::move(saddle);
    return Tl::eOk;
}

namespace {

// Maps the vertices of an extrusion's lists into its plane.
class ExtrusionPlane {
public:
    // The first outline vertex lies in the plane, whose normal is `direction`, to the side of the extrusion.
    Tl::ErrorStatus set(const HextSpolygon& e) {
        if (makeAxes(e.direction * (e.height < 0 ? -1.0 : 1.0), e.xAxis, axes_) != Tl::eOk ||
            makeAxes(e.xAxis, e.yAxis, frame_) != Tl::eOk) {
            return Tl::eZeroDirection;
        }
        origin_ = e.origin;
        xAxis_ = frame_.z;
        yAxis_ = unitOf(e.yAxis);
        first_ = world(e.outline->front().point);
        return Tl::eOk;
    }

    void map(const HextVertexList& list, std::vector<tolmar::Point2>& out) const {
        out.clear();
        out.reserve(list.size());
        const PlaneMap plane{first_, axes_.x, axes_.y};
        for (const HextVertex& vertex : list) {
            out.push_back(plane(world(vertex.point)));
        }
    }

    tolmar::ExtrudedBody body(double height) const { return extrusionOf(first_, axes_, axes_.z * std::fabs(height)); }

private:
    HxGePoint3D world(const HxGePoint3D& p) const { return origin_ + xAxis_ * p.x + yAxis_ * p.y + frame_.y * p.z; }

    Axes axes_;
    Axes frame_;  // Z along the outline's X axis, Y along its third axis
    HxGePoint3D origin_;
    HxGeVector3D xAxis_;
    HxGeVector3D yAxis_;
    HxGePoint3D first_;
};

Tl::ErrorStatus checkExtrusion(const HextSpolygon& e) {
    if (!e.outline || e.outline->empty()) {
        return Tl::eNoOutline;
    }
    const Tl::ErrorStatus status =
        firstFailure({checkPoints({e.origin}), checkDirections({e.xAxis, e.yAxis, e.direction}),
                      checkNumbers({e.height}), checkVertices(*e.outline)});
    if (status != Tl::eOk) {
        return status;
    }
    if (std::fabs(e.height) <= leastLength) {
        return Tl::eZeroSize;
    }
    if (!e.holes) {
        return Tl::eOk;
    }
    for (const HextVertexList& hole : *e.holes) {
        if (const Tl::ErrorStatus holeStatus = checkVertices(hole); holeStatus != Tl::eOk) {
            return holeStatus;
        }
    }
    return Tl::eOk;
}

}  // namespace

Tl::ErrorStatus buildExtrusion(const HextSpolygon& e, tolmar::Body& body) {
    ExtrusionPlane plane;
    if (const Tl::ErrorStatus status = checkExtrusion(e); status != Tl::eOk) {
        return status;
    }
    if (const Tl::ErrorStatus status = plane.set(e); status != Tl::eOk) {
        return status;
    }
    tolmar::ExtrudedBody extruded = plane.body(e.height);
    extruded.outlines.resize(1);
    std::vector<tolmar::Point2> points;
    plane.map(*e.outline, points);
    if (const Tl::ErrorStatus status =
            makeOutline(*e.outline, points, Winding::CounterClockwise, extruded.outlines.front());
        status != Tl::eOk) {
        return status;
    }
    static const std::vector<HextVertexList> noHoles;
    for (const HextVertexList& hole : e.holes ? *e.holes : noHoles) {
        tolmar::Outline outline;
        plane.map(hole, points);
        // A hole without an inside cuts nothing.
        if (makeOutline(hole, points, Winding::Clockwise, outline) == Tl::eOk) {
            extruded.outlines.push_back(std::move(outline));
        }
    }
    body = std::move(extruded);
    return Tl::eOk;
}

}  // namespace plant
