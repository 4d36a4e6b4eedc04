// Revolved profiles.
#include "plant/shapes/outline.h"

#include <algorithm>
#include <cmath>

namespace plant {

namespace {

// How far, in millimetres, a profile may stand off a plane through the axis.
constexpr double mostOffPlane = 1.0;
constexpr double leastSweep = 1e-9;
// What rounding leaves of a point on the axis, as a part of the profile's size.
constexpr double axisPart = 1e-9;

// The direction from the axis to the profile's farthest point. False when all points stand on the axis.
bool directionOf(const HextRevolve& revolve, const HxGeVector3D& axis, HxGeVector3D& direction) {
    double farthest = 0;
    for (const HextVertex& vertex : *revolve.profile) {
        const HxGeVector3D v = vertex.point - revolve.center;
        const HxGeVector3D across = v - axis * v.dotProduct(axis);
        if (across.lengthSqrd() > farthest) {
            farthest = across.lengthSqrd();
            direction = across;
        }
    }
    return std::sqrt(farthest) > leastLength;
}

// The smallest distance from the axis that an arc reaches.
double leastRadius(const tolmar::OutlinePiece& arc) {
    const double toFarSide = std::fmod(tlGePi - arc.startAngle, wholeTurn);
    const double ahead = toFarSide < 0 ? toFarSide + wholeTurn : toFarSide;
    const bool passes = arc.sweep > 0 ? ahead < arc.sweep : ahead - wholeTurn > arc.sweep;
    return passes ? arc.center.x - arc.radiusX : arc.start.x;
}

// Points that miss the axis by a rounding stand on it.
Tl::ErrorStatus settleAxis(tolmar::Outline& profile, double least) {
    for (tolmar::OutlinePiece& piece : profile) {
        const double reach = piece.isArc ? leastRadius(piece) : piece.start.x;
        if (std::min(reach, piece.start.x) < -least) {
            return Tl::eProfileCrossesAxis;
        }
        if (piece.start.x <= least) {
            piece.start.x = 0;
        }
    }
    return Tl::eOk;
}

Tl::ErrorStatus checkRevolve(const HextRevolve& r) {
    if (!r.profile || r.profile->empty()) {
        return Tl::eNoOutline;
    }
    const Tl::ErrorStatus status = firstFailure(
        {checkPoints({r.center}), checkDirections({r.axis}), checkNumbers({r.angle}), checkVertices(*r.profile)});
    if (status != Tl::eOk) {
        return status;
    }
    return std::fabs(r.angle) < leastSweep ? Tl::eBadAngle : Tl::eOk;
}

// A turn against the axis is one with it that starts at the other end.
void setTurn(double angle, const Axes& axes, tolmar::RevolvedBody& body) {
    const double start = std::max(angle < 0 ? angle : 0.0, -wholeTurn);
    body.x = axes.x * std::cos(start) + axes.y * std::sin(start);
    body.y = axes.y * std::cos(start) - axes.x * std::sin(start);
    body.axis = axes.z;
    body.angle = std::fabs(angle) > wholeTurn - leastSweep ? wholeTurn : std::fabs(angle);
}

}  // namespace

Tl::ErrorStatus buildRevolve(const HextRevolve& r, tolmar::Body& body) {
    if (const Tl::ErrorStatus status = checkRevolve(r); status != Tl::eOk) {
        return status;
    }
    Axes axes;
    if (makeAxes(r.axis, axes) != Tl::eOk) {
        return Tl::eZeroDirection;
    }
    HxGeVector3D outward;
    if (!directionOf(r, axes.z, outward) || makeAxes(r.axis, outward, axes) != Tl::eOk) {
        return Tl::eNoOutline;
    }
    const PlaneMap plane{r.center, axes.x, axes.z};
    std::vector<tolmar::Point2> points;
    points.reserve(r.profile->size());
    double farthest = 0;
    for (const HextVertex& vertex : *r.profile) {
        if (std::fabs((vertex.point - r.center).dotProduct(axes.y)) > mostOffPlane) {
            return Tl::eBadOutline;
        }
        points.push_back(plane(vertex.point));
        farthest = std::max(farthest, points.back().x);
    }
    tolmar::RevolvedBody revolved;
    revolved.center = r.center;
    setTurn(r.angle, axes, revolved);
    if (const Tl::ErrorStatus status = makeOutline(*r.profile, points, Winding::CounterClockwise, revolved.profile);
        status != Tl::eOk) {
        return status;
    }
    if (const Tl::ErrorStatus status = settleAxis(revolved.profile, std::max(leastLength, axisPart * farthest));
        status != Tl::eOk) {
        return status;
    }
    body = std::move(revolved);
    return Tl::eOk;
}

}  // namespace plant
