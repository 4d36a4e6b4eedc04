// Bends, heads and spheres.
#include "frame/exceptions.h"
#include "hextinterface/ornatohextprocess/solids/prim_frames.h"

#include <algorithm>
#include <cmath>

namespace design {
namespace {

constexpr double degrees = 180.0 / tlGePi;
constexpr double halfTurn = 180;
constexpr TlGeTol radiiParallel{1e-5, 1e-5};
// An angle that prints as 0.000000.
constexpr double printsAsZero = 5e-7;

struct Bend {
    HxGePoint3D center;
    HxGeVector3D start;  // from the centre to the start of the centre line
    HxGeVector3D axis;
    double sweep = 0;  // degrees
};

// Where the radii point the same or opposite ways they tell no axis.
HxGeVector3D bendAxis(const HxGeVector3D& start, const HxGeVector3D& end) {
    return start.isParallelTo(end, radiiParallel) ? start.perpVector() : start.crossProduct(end);
}

Bend bendBetween(const HxGePoint3D& center, const HxGeVector3D& start, const HxGeVector3D& end, bool longWay) {
    const double angle = start.angleTo(end);
    const HxGeVector3D axis = bendAxis(start, end);
    if (start.isCodirectionalTo(end, radiiParallel)) {
        return {center, start, longWay ? -axis : axis, 360};
    }
    return longWay ? Bend{center, start, -axis, (2 * tlGePi - angle) * degrees}
                   : Bend{center, start, axis, angle * degrees};
}

template <typename Torus>
Bend bendOf(const Torus& torus, const HxGeVector3D& turnAxis) {
    const HxGeVector3D start = torus.startPoint - torus.center;
    if (torus.form == 1) {
        const bool inDegrees = torus.angle > 2 * tlGePi;
        return {torus.center, start, turnAxis, inDegrees ? torus.angle : torus.angle * degrees};
    }
    if (torus.arcKind == 2 || torus.arcKind == 3) {
        return {torus.center, start, torus.thirdField.asVector(), torus.arcKind == 2 ? 360.0 : halfTurn};
    }
    return bendBetween(torus.center, start, torus.thirdField - torus.center, torus.arcKind == 1);
}

// `solid` as far as half a turn, and a second piece for the rest.
template <typename Solid>
PrimGroup inPieces(Solid solid, const Bend& bend) {
    solid.frame = frameXZ(bend.center, bend.start, bend.axis);
    const double rest = bend.sweep - halfTurn;
    if (rest < printsAsZero) {
        solid.angle = bend.sweep;
        return oneSolid(std::move(solid));
    }
    if (rest > 360) {
        throw ExportException("角度异常");
    }
    solid.angle = halfTurn;
    PrimGroup group = oneSolid(solid);
    solid.frame.xAxis = -solid.frame.xAxis;
    solid.frame.yAxis = -solid.frame.yAxis;
    solid.angle = rest;
    group.addSolid(std::move(solid));
    return group;
}

constexpr int leastSegments = 32;
constexpr int mostSegments = 10000;

// The half section of the head, from its centre line along the base and up to the crown.
PLoop headProfile(const HextOval3D& oval, double height) {
    const double baseX = oval.axialRadius - height;
    const int segments = std::clamp(oval.segments, leastSegments, mostSegments);
    const double start = std::atan2(oval.baseRadius / oval.radialRadius, baseX / oval.axialRadius);
    PLoop loop;
    loop.vertices.reserve(static_cast<std::size_t>(segments) + 2);
    loop.vertices.emplace_back();
    for (int i = 0; i <= segments; ++i) {
        const double t = start * (segments - i) / segments;
        loop.vertices.emplace_back(
            HxGePoint3D(oval.axialRadius * std::cos(t) - baseX, oval.radialRadius * std::sin(t), 0));
    }
    return loop;
}

bool isSpherical(const HextOval3D& oval) {
    return std::fabs(oval.axialRadius - oval.radialRadius) < 0.01 || oval.axialRadius < 2;
}

}  // namespace

PrimGroup convertTorus(const HextTorus3D& torus) {
    const Bend bend = bendOf(torus, torus.thirdField.asVector());
    const double tube = std::min(torus.startDiameter, torus.endDiameter) / 2;
    _PCtor solid;
    solid.rIn = bend.start.length() - tube;
    solid.rOut = bend.start.length() + tube;
    return inPieces(std::move(solid), bend);
}

PrimGroup convertSqutorus(const HextSqutorus3D& torus) {
    const Bend bend = bendOf(torus, torus.normal);
    const double half = std::min(torus.startWidth, torus.endWidth) / 2;
    _PRtor solid;
    solid.rIn = bend.start.length() - half;
    solid.rOut = bend.start.length() + half;
    solid.height = std::min(torus.startHeight, torus.endHeight);
    return inPieces(std::move(solid), bend);
}

PrimGroup convertOval(const HextOval3D& oval) {
    const double height = oval.getHeadHeight(oval.baseRadius);
    const HxGeVector3D along = oval.vect.normal();
    const HxGeVector3D across = along.perpVector().normal();
    if (isSpherical(oval)) {
        _PDish dish;
        dish.frame = CoordFrame(oval.point, across.crossProduct(along), across, along);
        dish.dia = 2 * oval.baseRadius;
        dish.height = height;
        return oneSolid(std::move(dish));
    }
    _PRevo head;
    head.frame = CoordFrame(oval.point, along, across, along.crossProduct(across));
    head.angle = 360;
    head.loop = headProfile(oval, height);
    return oneSolid(std::move(head));
}

PrimGroup convertSphere(const HextSphere3D& sphere) {
    constexpr double least = 0.0001;
    const double radius = std::max(sphere.radius, least);
    _PDish dish;
    dish.frame.origin = sphere.center - TlGeVector3d::kZAxis * radius;
    dish.height = radius + std::sqrt(std::max(radius * radius - least * least, 0.0));
    dish.dia = dish.height / 4;
    return oneSolid(std::move(dish));
}

}  // namespace design
