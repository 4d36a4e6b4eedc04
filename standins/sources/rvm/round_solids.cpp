// Cylinders, snouts, spheres and dishes.
#include "sources/rvm/convert.h"

#include <algorithm>
#include <cmath>

namespace plant::rvm {

namespace {

// Sizes of snouts in the world.
struct Cone {
    Point bottom;
    Point top;
    double bottomDiameter = 0;
    double topDiameter = 0;
};

bool isShaped(const Cone& cone) {
    return cone.bottom.distanceTo(cone.top) > leastLength &&
           std::max(cone.bottomDiameter, cone.topDiameter) > leastLength;
}

void putStraight(const Cone& cone, ShapeOutput& output) {
    if (cone.bottomDiameter == cone.topDiameter) {
        HextCylinder3D cylinder;
        cylinder.startPoint = cone.bottom;
        cylinder.endPoint = cone.top;
        cylinder.diameter = cone.bottomDiameter;
        return output.put(cylinder);
    }
    HextConcone3D straight;
    straight.startPoint = cone.bottom;
    straight.endPoint = cone.top;
    straight.startDiameter = cone.bottomDiameter;
    straight.endDiameter = cone.topDiameter;
    output.put(straight);
}

void putEccentric(const Cone& cone, const Vector& offset, ShapeOutput& output) {
    HextEcone3D eccentric;
    eccentric.startPoint = cone.bottom;
    eccentric.endPoint = cone.top;
    eccentric.startDiameter = cone.bottomDiameter;
    eccentric.endDiameter = cone.topDiameter;
    eccentric.vect = offset.normal();
    output.put(eccentric);
}

// Rises of an end for each unit of x and y.
struct Slope {
    double x = 0;
    double y = 0;
    bool isLevel() const { return x == 0 && y == 0; }
};

// A cylinder with one end cut; its cut end is the one at the start. False when the cut would reach the other end.
bool putSloped(const Cone& cone, const Primitive& snout, const Slope& slope, ShapeOutput& output) {
    const Placement& at = snout.placement;
    if (!(std::hypot(slope.x, slope.y) * snout.p[0] < snout.p[2])) {
        return false;
    }
    HextScylinder3D sloped;
    sloped.startPoint = cone.bottom;
    sloped.endPoint = cone.top;
    sloped.diameter = cone.bottomDiameter;
    sloped.vect = at.along(1, 0, slope.x).crossProduct(at.along(0, 1, slope.y)).normal();
    output.put(sloped);
    return true;
}

}  // namespace

bool putCylinder(const Primitive& primitive, ShapeOutput& output) {
    const Placement& at = primitive.placement;
    const double half = primitive.p[1] / 2;
    const double diameter = 2 * primitive.p[0] * at.sx;
    const Cone cone{at.at(0, 0, -half), at.at(0, 0, half), diameter, diameter};
    if (!at.keepsCircles() || !isShaped(cone)) {
        return false;
    }
    putStraight(cone, output);
    return true;
}

bool putSnout(const Primitive& primitive, ShapeOutput& output) {
    const Placement& at = primitive.placement;
    const auto& [bottomRadius, topRadius, height, offsetX, offsetY, bottomShearX, bottomShearY, topShearX, topShearY] =
        primitive.p;
    Cone cone{at.at(-offsetX / 2, -offsetY / 2, -height / 2), at.at(offsetX / 2, offsetY / 2, height / 2),
              2 * bottomRadius * at.sx, 2 * topRadius * at.sx};
    if (!at.keepsCircles() || !isShaped(cone) || height * at.sz <= leastLength) {
        return false;
    }
    const Slope bottom{std::tan(bottomShearX), std::tan(bottomShearY)};
    const Slope top{std::tan(topShearX), std::tan(topShearY)};
    const Vector offset = at.along(offsetX, offsetY, 0);
    const bool isOffset = offset.length() > leastLength;
    if (bottom.isLevel() && top.isLevel()) {
        isOffset ? putEccentric(cone, offset, output) : putStraight(cone, output);
        return true;
    }
    if (isOffset || bottomRadius != topRadius || (!bottom.isLevel() && !top.isLevel())) {
        return false;
    }
    if (bottom.isLevel()) {
        std::swap(cone.bottom, cone.top);
    }
    return putSloped(cone, primitive, bottom.isLevel() ? top : bottom, output);
}

bool putSphere(const Primitive& primitive, ShapeOutput& output) {
    const Placement& at = primitive.placement;
    HextSphere3D sphere;
    sphere.center = at.origin;
    sphere.radius = primitive.p[0] / 2 * at.sx;
    if (!at.keepsSpheres() || sphere.radius <= leastLength) {
        return false;
    }
    output.put(sphere);
    return true;
}

bool putEllipticalDish(const Primitive& primitive, ShapeOutput& output) {
    const Placement& at = primitive.placement;
    HextOval3D head;
    head.point = at.origin;
    head.vect = at.z;
    head.baseRadius = head.radialRadius = primitive.p[0] * at.sx;
    head.axialRadius = primitive.p[1] * at.sz;
    if (!at.keepsCircles() || std::min(head.baseRadius, head.axialRadius) <= leastLength) {
        return false;
    }
    output.put(head);
    return true;
}

namespace {

// A cap higher than half its sphere, as the profile of a solid of revolution: the axis, the base, and the arc.
void putHighCap(const Primitive& dish, double radius, ShapeOutput& output) {
    constexpr std::int16_t plain = 1;
    constexpr std::int16_t arcStart = 2;
    constexpr std::int16_t arcMiddle = 3;
    constexpr std::int16_t last = 4;
    const Placement& at = dish.placement;
    const double base = dish.p[0];
    const double height = dish.p[1];
    const double centre = height - radius;
    const double middle = (std::asin(-centre / radius) + tlGePi / 2) / 2;
    HextRevolve cap;
    cap.angle = 2 * tlGePi;
    cap.center = at.origin;
    cap.axis = at.z;
    cap.profile = HextVertexList{
        {plain, at.origin},
        {arcStart, at.at(base, 0, 0)},
        {arcMiddle, at.at(radius * std::cos(middle), 0, centre + radius * std::sin(middle))},
        {last, at.at(0, 0, height)},
    };
    output.put(cap);
}

}  // namespace

bool putSphericalDish(const Primitive& primitive, ShapeOutput& output) {
    const Placement& at = primitive.placement;
    const double base = primitive.p[0];
    const double height = primitive.p[1];
    if (!at.keepsCircles() || std::min(base * at.sx, height * at.sz) <= leastLength) {
        return false;
    }
    const double radius = (base * base + height * height) / (2 * height);
    if (height > base) {
        const bool isBall = at.keepsSpheres();
        if (isBall) {
            putHighCap(primitive, radius, output);
        }
        return isBall;
    }
    // Stretched along its axis, a cap of a sphere is one of an ellipsoid.
    HextOval3D head;
    head.point = at.origin;
    head.vect = at.z;
    head.baseRadius = base * at.sx;
    head.radialRadius = radius * at.sx;
    head.axialRadius = radius * at.sz;
    output.put(head);
    return true;
}

}  // namespace plant::rvm
