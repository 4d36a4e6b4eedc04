// Spheres and elliptical heads.
#include "plant/shapes/builder.h"

#include <algorithm>
#include <cmath>

namespace plant {

namespace {

tolmar::OutlinePiece line(double r, double z) {
    tolmar::OutlinePiece piece;
    piece.start = {r, z};
    return piece;
}

tolmar::RevolvedBody wholeTurnAbout(const HxGePoint3D& center, const Axes& axes) {
    tolmar::RevolvedBody body;
    body.center = center;
    body.x = axes.x;
    body.y = axes.y;
    body.axis = axes.z;
    body.angle = wholeTurn;
    return body;
}

}  // namespace

Tl::ErrorStatus buildSphere(const HextSphere3D& s, tolmar::Body& body) {
    if (const Tl::ErrorStatus status = firstFailure({checkPoints({s.center}), checkNumbers({s.radius})});
        status != Tl::eOk) {
        return status;
    }
    if (s.radius <= leastLength) {
        return Tl::eZeroSize;
    }
    tolmar::RevolvedBody sphere = wholeTurnAbout(s.center, {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    const double r = s.radius;
    sphere.profile = {{{0, -r}, true, {0, 0}, r, r, -tlGePi / 2, tlGePi}, line(0, r)};
    body = std::move(sphere);
    return Tl::eOk;
}

Tl::ErrorStatus buildHead(const HextOval3D& h, tolmar::Body& body) {
    const Tl::ErrorStatus status = firstFailure({checkPoints({h.point}), checkDirections({h.vect}),
                                                 checkNumbers({h.axialRadius, h.radialRadius, h.baseRadius})});
    if (status != Tl::eOk) {
        return status;
    }
    const double height = h.getHeadHeight(h.baseRadius);
    if (std::min({h.axialRadius, h.radialRadius, h.baseRadius, height}) <= leastLength) {
        return Tl::eZeroSize;
    }
    Axes axes;
    if (makeAxes(h.vect, axes) != Tl::eOk) {
        return Tl::eZeroDirection;
    }
    // An ellipse narrower than the base is widened to it, as its height is that of such a one.
    const double radial = std::max(h.radialRadius, h.baseRadius);
    const double from = std::acos(h.baseRadius / radial);
    tolmar::RevolvedBody head = wholeTurnAbout(h.point, axes);
    head.profile = {
        line(0, 0),
        {{h.baseRadius, 0}, true, {0, height - h.axialRadius}, radial, h.axialRadius, from, tlGePi / 2 - from},
        line(0, height)};
    body = std::move(head);
    return Tl::eOk;
}

}  // namespace plant
