// Bends of round and of rectangular section.
#include "sources/rvm/convert.h"

#include <algorithm>
#include <cmath>

namespace plant::rvm {

namespace {

enum ArcKind : std::int32_t { shortWay = 0, fullCircle = 2 };
constexpr double wholeTurn = 2 * tlGePi;
// Single precision leaves of a whole turn, and how near to half a turn the short way is not told by the end alone.
constexpr double turnNoise = 1e-5;
constexpr double clearOfHalf = 0.01;

// Start, end and axis of a turn of the given radius about the Z axis from X towards Y; mirrored axes turn the other
// way round, about the opposite axis.
template <typename Bend>
void setTurn(const Placement& at, double radius, double angle, Bend& bend) {
    const Vector axis = at.x.crossProduct(at.y).normal();
    bend.center = at.origin;
    bend.startPoint = at.at(radius, 0, 0);
    if (angle < tlGePi - clearOfHalf) {
        bend.arcKind = shortWay;
        bend.thirdField = at.at(radius * std::cos(angle), radius * std::sin(angle), 0);
    } else if (angle > wholeTurn - turnNoise) {
        bend.arcKind = fullCircle;
        bend.thirdField = Point() + axis;
    } else {
        bend.form = 1;
        bend.angle = angle;
        bend.thirdField = Point() + axis;
    }
}

}  // namespace

bool putCircularTorus(const Primitive& primitive, ShapeOutput& output) {
    const Placement& at = primitive.placement;
    HextTorus3D torus;
    torus.startDiameter = torus.endDiameter = 2 * primitive.p[1] * at.sx;
    // A tube wider than its bend cuts itself.
    if (!at.keepsSpheres() || torus.startDiameter <= leastLength || primitive.p[1] > primitive.p[0]) {
        return false;
    }
    setTurn(at, primitive.p[0], primitive.p[2], torus);
    output.put(torus);
    return true;
}

bool putRectangularTorus(const Primitive& primitive, ShapeOutput& output) {
    const Placement& at = primitive.placement;
    const auto [inner, outer] = std::minmax(primitive.p[0], primitive.p[1]);
    HextSqutorus3D torus;
    torus.startWidth = torus.endWidth = (outer - inner) * at.sx;
    torus.startHeight = torus.endHeight = primitive.p[2] * at.sz;
    if (!at.keepsCircles() || std::min(torus.startWidth, torus.startHeight) <= leastLength) {
        return false;
    }
    setTurn(at, (inner + outer) / 2, primitive.p[3], torus);
    torus.normal = at.x.crossProduct(at.y).normal();
    output.put(torus);
    return true;
}

}  // namespace plant::rvm
