#include "hextinterface/ornatohextprocess/solids/prim_convert.h"

#include "hextinterface/ornatohextprocess/solids/prim_frames.h"

#include <algorithm>
#include <cmath>

namespace design {

CoordFrame frameAlong(const HxGePoint3D& origin, const HxGeVector3D& z) {
    const HxGeVector3D along = z.normal();
    const HxGeVector3D across = along.perpVector().normal();
    return CoordFrame(origin, across.crossProduct(along), across, along);
}

CoordFrame frameXZ(const HxGePoint3D& origin, const HxGeVector3D& x, const HxGeVector3D& z) {
    const HxGeVector3D first = x.normal();
    const HxGeVector3D third = z.normal();
    return CoordFrame(origin, first, third.crossProduct(first).normal(), third);
}

CoordFrame frameYZ(const HxGePoint3D& origin, const HxGeVector3D& y, const HxGeVector3D& z) {
    const HxGeVector3D second = y.normal();
    const HxGeVector3D third = z.normal();
    return CoordFrame(origin, second.crossProduct(third).normal(), second, third);
}

void repairAxes(HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) {
    constexpr int skew = 4;
    const bool skewX = axisClass(x) == skew;
    const bool skewY = axisClass(y) == skew;
    const bool skewZ = axisClass(z) == skew;
    if ((skewX && !skewY && !skewZ) || (skewY && !skewZ)) {
        z = x.crossProduct(y).normal();
    } else if (skewZ && !skewX) {
        x = y.crossProduct(z).normal();
    } else if (skewZ && skewX && !skewY) {
        y = z.crossProduct(x).normal();
    }
}

namespace {

PrimGroup convertBox(const HextBox3D& box) {
    HxGeVector3D x = box.xAxis.normal();
    HxGeVector3D y = box.yAxis.normal();
    HxGeVector3D z = x.crossProduct(y).normal();
    if (box.pointKind != 1) {
        repairAxes(x, y, z);
    } else if (x.isZeroLength() || y.isZeroLength() || z.isZeroLength()) {
        return {};
    }
    _PBox solid;
    solid.frame = CoordFrame(box.center(), x, y, z);
    solid.xlen = box.xLength;
    solid.ylen = box.yLength;
    solid.zlen = box.zLength;
    return oneSolid(std::move(solid));
}

PrimGroup convertCylinder(const HextCylinder3D& cylinder) {
    if (cylinder.startPoint.isEqualTo(cylinder.endPoint)) {
        return {};
    }
    _PCylinder solid;
    solid.frame = frameAlong(midpoint(cylinder.startPoint, cylinder.endPoint), cylinder.endPoint - cylinder.startPoint);
    solid.height = cylinder.startPoint.distanceTo(cylinder.endPoint);
    solid.dia = cylinder.diameter;
    return oneSolid(std::move(solid));
}

// Degrees, from the angle between the sloped end's normal and the axis.
double shearOf(double angle) {
    const double shear = -angle;
    return shear < -89 ? -(shear + 89) : shear;
}

PrimGroup convertScylinder(const HextScylinder3D& cylinder) {
    const HxGeVector3D along = (cylinder.startPoint - cylinder.endPoint).normal();
    const HxGeVector3D across =
        along.isParallelTo(cylinder.vect) ? along.perpVector().normal() : along.crossProduct(cylinder.vect).normal();
    _PSlcy solid;
    solid.frame =
        CoordFrame(midpoint(cylinder.startPoint, cylinder.endPoint), across.crossProduct(along), across, along);
    solid.dia = cylinder.diameter;
    solid.height = cylinder.startPoint.distanceTo(cylinder.endPoint);
    solid.xtshear = shearOf(cylinder.vect.angleTo(along) * 180.0 / tlGePi);
    return oneSolid(std::move(solid));
}

PrimGroup convertConcone(const HextConcone3D& cone) {
    if (cone.startPoint.isEqualTo(cone.endPoint)) {
        return {};
    }
    _PCone solid;
    solid.frame = frameAlong(midpoint(cone.startPoint, cone.endPoint), cone.endPoint - cone.startPoint);
    solid.dTop = cone.endDiameter;
    solid.dBottom = cone.startDiameter;
    solid.height = cone.startPoint.distanceTo(cone.endPoint);
    return oneSolid(std::move(solid));
}

PrimGroup convertEcone(const HextEcone3D& cone) {
    const HxGeVector3D axis = cone.endPoint - cone.startPoint;
    const HxGeVector3D offset = cone.vect.normal();
    const HxGeVector3D up = cone.vect.crossProduct(axis.crossProduct(cone.vect)).normal();
    _PSnou solid;
    solid.frame = CoordFrame(midpoint(cone.startPoint, cone.endPoint), offset.crossProduct(up).normal(), offset, up);
    solid.dTop = cone.endDiameter;
    solid.dBottom = cone.startDiameter;
    solid.height = cone.startPoint.distanceTo(cone.startPoint.orthoProject(cone.endPoint, up));
    const TlGeMatrix3d toLocal = worldToFrame(solid.frame);
    const HxGePoint3D foot = cone.endPoint.orthoProject(cone.startPoint, up);
    solid.yoff = (toLocal * foot).y - (toLocal * cone.startPoint).y;
    return oneSolid(std::move(solid));
}

PrimGroup convertSqucone(const HextSqucone3D& cone) {
    const HxGePoint3D top = cone.topCenter();
    _PPyra solid;
    solid.frame = frameXZ(midpoint(cone.point, top), cone.xAxis, cone.zAxis);
    solid.xbottom = cone.bottomX;
    solid.ybottom = cone.bottomY;
    solid.xtop = cone.topX;
    solid.ytop = cone.topY;
    solid.height = cone.height;
    const HxGeVector3D offset = worldToFrame(solid.frame) * (top - cone.point);
    solid.xoff = offset.x;
    solid.yoff = offset.y;
    return oneSolid(std::move(solid));
}

// Cut at half height: a snout up to the round end, a frustum down to the rectangle.
PrimGroup convertSqucir(const HextSqucir3D& transition) {
    const HxGePoint3D& top = transition.topCenter;
    const HxGePoint3D& base = transition.basePoint;
    const HxGePoint3D foot = top.orthoProject(base, transition.baseNormal);
    const HxGePoint3D middle = midpoint(top, base);
    const double height = top.distanceTo(foot) / 2;
    const double diagonal = std::hypot(transition.xLength, transition.yLength);
    const auto cutSide = [&](double side) { return (2 * side * transition.topRadius / diagonal + side) / 2; };

    _PSnou snout;
    snout.frame = frameXZ(midpoint(top, middle), transition.xAxis, top - foot);
    const HxGeVector3D offset = worldToFrame(snout.frame) * (foot - base) * 0.5;
    snout.dTop = 2 * transition.topRadius;
    snout.dBottom = std::min(cutSide(transition.xLength), cutSide(transition.yLength));
    snout.height = height;
    snout.xoff = offset.x;
    snout.yoff = offset.y;

    _PPyra frustum;
    frustum.frame = snout.frame;
    frustum.frame.origin = midpoint(middle, base);
    frustum.xbottom = transition.xLength;
    frustum.ybottom = transition.yLength;
    frustum.xtop = cutSide(transition.xLength);
    frustum.ytop = cutSide(transition.yLength);
    frustum.height = height;
    frustum.xoff = offset.x;
    frustum.yoff = offset.y;

    PrimGroup group = oneSolid(std::move(snout));
    group.addSolid(std::move(frustum));
    return group;
}

struct Conversion {
    const TlRxClass* source;
    PrimGroup (*convert)(const HextPrimary&);
};

template <typename Source, PrimGroup (*convert)(const Source&)>
Conversion conversion() {
    return {Source::desc(), [](const HextPrimary& primary) { return convert(static_cast<const Source&>(primary)); }};
}

// The first class that fits counts, so a derived class stands before its base.
const Conversion* findConversion(const HextPrimary& primary) {
    static const Conversion conversions[] = {
        conversion<HextBox3D, convertBox>(),
        conversion<HextPrism3D, convertPrism>(),
        conversion<HextScylinder3D, convertScylinder>(),
        conversion<HextCylinder3D, convertCylinder>(),
        conversion<HextConcone3D, convertConcone>(),
        conversion<HextEcone3D, convertEcone>(),
        conversion<HextSqucone3D, convertSqucone>(),
        conversion<HextWedge3D, convertWedge>(),
        conversion<HextOval3D, convertOval>(),
        conversion<HextSphere3D, convertSphere>(),
        conversion<HextTorus3D, convertTorus>(),
        conversion<HextSqutorus3D, convertSqutorus>(),
        conversion<HextSaddle3D, convertSaddle>(),
        conversion<HextSqucir3D, convertSqucir>(),
        conversion<HextRevolve, convertRevolve>(),
        conversion<HextSpolygon, convertSpolygon>(),
    };
    for (const Conversion& conversion : conversions) {
        if (primary.isKindOf(conversion.source)) {
            return &conversion;
        }
    }
    return nullptr;
}

}  // namespace
}  // namespace design

PrimGroup convertPrimary(const HextPrimary& primary) {
    const design::Conversion* conversion = design::findConversion(primary);
    return conversion != nullptr ? conversion->convert(primary) : PrimGroup();
}
