// Cylinders and cones.
#include "plant/shapes/builder.h"

#include <algorithm>
#include <cmath>

namespace plant {

namespace {

// An eccentric cone whose axis runs along the eccentricity within this counts as concentric.
constexpr double alongEccentricity = 1e-4;

struct ConeSizes {
    HxGePoint3D start;
    HxGePoint3D end;
    double startDiameter;
    double endDiameter;
};

Tl::ErrorStatus checkCone(const ConeSizes& cone) {
    const Tl::ErrorStatus status =
        firstFailure({checkPoints({cone.start, cone.end}), checkNumbers({cone.startDiameter, cone.endDiameter})});
    if (status != Tl::eOk) {
        return status;
    }
    const double larger = std::max(cone.startDiameter, cone.endDiameter);
    const double smaller = std::min(cone.startDiameter, cone.endDiameter);
    if (larger <= leastLength || smaller < 0) {
        return Tl::eZeroSize;
    }
    return cone.start.distanceTo(cone.end) <= leastLength ? Tl::eCoincidentPoints : Tl::eOk;
}

tolmar::Ellipse circle(const HxGePoint3D& center, const Axes& axes, double diameter) {
    const double radius = diameter <= leastLength ? 0 : diameter / 2;
    return {center, axes.x * radius, axes.y * radius};
}

tolmar::ConeBody coneBetween(const ConeSizes& cone, const Axes& axes) {
    return {circle(cone.start, axes, cone.startDiameter), circle(cone.end, axes, cone.endDiameter)};
}

Tl::ErrorStatus buildConcentric(const ConeSizes& cone, tolmar::Body& body) {
    if (const Tl::ErrorStatus status = checkCone(cone); status != Tl::eOk) {
        return status;
    }
    Axes axes;
    const Tl::ErrorStatus status = makeAxes(cone.end - cone.start, axes);
    body = coneBetween(cone, axes);
    return status;
}

}  // namespace

Tl::ErrorStatus buildCylinder(const HextCylinder3D& c, tolmar::Body& body) {
    return buildConcentric({c.startPoint, c.endPoint, c.diameter, c.diameter}, body);
}

Tl::ErrorStatus buildCone(const HextConcone3D& c, tolmar::Body& body) {
    return buildConcentric({c.startPoint, c.endPoint, c.startDiameter, c.endDiameter}, body);
}

Tl::ErrorStatus buildEccentricCone(const HextEcone3D& c, tolmar::Body& body) {
    const ConeSizes cone{c.startPoint, c.endPoint, c.startDiameter, c.endDiameter};
    if (const Tl::ErrorStatus status = firstFailure({checkCone(cone), checkDirections({c.vect})}); status != Tl::eOk) {
        return status;
    }
    const HxGeVector3D offset = unitOf(c.vect);
    if (offset.lengthSqrd() == 0) {
        return Tl::eZeroDirection;
    }
    const HxGeVector3D axis = (c.endPoint - c.startPoint).normal();
    if (1 - std::fabs(axis.dotProduct(offset)) < alongEccentricity) {
        return buildConcentric(cone, body);
    }
    const HxGeVector3D height = axis - offset * axis.dotProduct(offset);
    Axes axes;
    const Tl::ErrorStatus status = makeAxes(height, offset, axes);
    body = coneBetween(cone, axes);
    return status;
}

Tl::ErrorStatus buildSlopedCylinder(const HextScylinder3D& c, tolmar::Body& body) {
    const ConeSizes cone{c.startPoint, c.endPoint, c.diameter, c.diameter};
    if (const Tl::ErrorStatus status = firstFailure({checkCone(cone), checkDirections({c.vect})}); status != Tl::eOk) {
        return status;
    }
    Axes axes;
    if (const Tl::ErrorStatus status = makeAxes(c.endPoint - c.startPoint, axes); status != Tl::eOk) {
        return status;
    }
    tolmar::ConeBody cylinder = coneBetween(cone, axes);
    // The sloped end is the one at the start: each of its points moves along the axis into the plane across `vect`.
    const HxGeVector3D cut = unitOf(c.vect);
    const double along = cut.dotProduct(axes.z);
    if (along == 0) {
        return cut.lengthSqrd() > 0 ? Tl::eSelfCutting : Tl::eZeroDirection;
    }
    tolmar::Ellipse& sloped = cylinder.start;
    const double shiftU = -cut.dotProduct(sloped.u) / along;
    const double shiftV = -cut.dotProduct(sloped.v) / along;
    if (!(std::hypot(shiftU, shiftV) < c.startPoint.distanceTo(c.endPoint))) {
        return Tl::eSelfCutting;
    }
    sloped.u += axes.z * shiftU;
    sloped.v += axes.z * shiftV;
    body = cylinder;
    return Tl::eOk;
}

}  // namespace plant
