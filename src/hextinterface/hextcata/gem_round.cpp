// Translators of cylinders, cones, spheres and heads.
#include "hextinterface/hextcata/gem_classes.h"

#include <cmath>
#include <utility>

namespace {

using gem::looseTol;
using gem::planeTolerance;

// Whether the line through two points, taken as vectors, runs through the origin in a coordinate plane.
bool runsThroughOrigin(const HxGePoint3D& near, const HxGePoint3D& far) {
    const HxGeVector3D n = near.asVector();
    const HxGeVector3D f = far.asVector();
    return planeOf(f, planeTolerance) > 0 &&
           (n.length() <= looseTol.equalPoint() || f.isParallelTo(n, TlGeContext::gTol));
}

void orderByDistance(HxGePoint3D& near, HxGePoint3D& far, const HxGePoint3D& base) {
    if (near.distanceTo(base) > far.distanceTo(base)) {
        std::swap(near, far);
    }
}

double signedDistance(const HxGePoint3D& near, const HxGePoint3D& far, const HxGePoint3D& base) {
    const double distance = near.distanceTo(base);
    return (near - base).dotProduct(far - base) < 0 ? -distance : distance;
}

// The angle in degrees between two vectors of a plane, with the sign of `term`; 0 for a small term and for 180.
double shearAngle(const HxGeVector3D& axis, const HxGeVector3D& normal, double term) {
    if (std::fabs(term) < 1e-5) {
        return 0;
    }
    const double angle = axis.angleTo(normal) * 180.0 / tlGePi;
    if (std::fabs(angle - 180) < 1e-5) {
        return 0;
    }
    return term < 0 ? -angle : angle;
}

double shearX(const HxGeVector3D& axis, const HxGeVector3D& normal) {
    const HxGeVector3D a(axis.x, axis.y, 0);
    const HxGeVector3D n(normal.x, normal.y, 0);
    return shearAngle(a, n, -n.x * a.y + n.y * a.x);
}

double shearY(const HxGeVector3D& axis, const HxGeVector3D& normal) {
    const bool alongY = axis.isParallelTo(HxGeVector3D::kYAxis, looseTol);
    const HxGeVector3D a(alongY ? axis.y : axis.x, 0, axis.z);
    const HxGeVector3D n(alongY ? normal.y : normal.x, 0, normal.z);
    return shearAngle(a, n, -n.x * a.z + n.z * a.x);
}

}  // namespace

HEXT_CATA_SCYLTrans::HEXT_CATA_SCYLTrans(const HextCylinder3D& primitive, const GemFrame& frame, int nextNumber)
    : HEXT_CATA_GemTrans(frame, nextNumber), near_(toLocal(primitive.getStartPoint())),
      far_(toLocal(primitive.getEndPoint())), diameter_(primitive.getDiameter()) {
    orderByDistance(near_, far_, {});
    if (runsThroughOrigin(near_, far_)) {
        HEXT_CATA_SCYLTrans::translateAt({}, true);
        return;
    }
    addPoint(near_, {}, far_ - near_);
    hasPoints_ = true;
    HEXT_CATA_SCYLTrans::translateAt(near_, false);
}

void HEXT_CATA_SCYLTrans::translateAt(const HxGePoint3D& base, bool useWords) {
    HxGePoint3D near = near_;
    HxGePoint3D far = far_;
    orderByDistance(near, far, base);
    object_.bottom = signedDistance(near, far, base);
    object_.top = far.distanceTo(base);
    object_.axis = useWords ? axisText(far - base) : smallRef();
    object_.diameter = diameter_;
    object_.valid = true;
}

HEXT_CATA_SSLCTrans::HEXT_CATA_SSLCTrans(const HextScylinder3D& primitive, const GemFrame& frame, int nextNumber)
    : HEXT_CATA_GemTrans(frame, nextNumber) {
    HxGePoint3D start = toLocal(primitive.getStartPoint());
    HxGePoint3D end = toLocal(primitive.getEndPoint());
    const bool throughOrigin = runsThroughOrigin(start, end);
    const bool swapped = start.asVector().length() > end.asVector().length();
    if (swapped) {
        std::swap(start, end);
    }
    HxGePoint3D base;
    if (!throughOrigin) {
        addPoint(start, {}, end - start);
        hasPoints_ = true;
        base = start;
    }
    const HxGeVector3D axis = end - start;
    const HxGeVector3D normal = toLocalVector(primitive.vect);
    (swapped ? object_.topShearX : object_.bottomShearX) = shearX(axis, normal);
    (swapped ? object_.topShearY : object_.bottomShearY) = shearY(axis, normal);
    object_.height = axis.length();
    object_.diameter = primitive.getDiameter();
    object_.distance = start.distanceTo(base);
    object_.axis = hasPoints_ ? smallRef() : axisText(axis);
    object_.valid = true;
}

HEXT_CATA_SSPHTrans::HEXT_CATA_SSPHTrans(const HextSphere3D& primitive, const GemFrame& frame, int nextNumber)
    : HEXT_CATA_GemTrans(frame, nextNumber) {
    const HxGePoint3D center = toLocal(primitive.center);
    if (planeOf(center.asVector(), planeTolerance) < 1) {
        object_.axis = addPoint(center, {}, center.asVector());
        hasPoints_ = true;
    } else {
        object_.axis = axisText(center.asVector());
        object_.distance = center.asVector().length();
    }
    object_.diameter = 2 * primitive.radius;
    object_.valid = true;
}

HEXT_CATA_SDSHTrans::HEXT_CATA_SDSHTrans(const HextOval3D& primitive, const GemFrame& frame, int nextNumber)
    : HEXT_CATA_GemTrans(frame, nextNumber) {
    const double a = primitive.axialRadius;
    const double b = primitive.radialRadius;
    const double r = primitive.baseRadius;
    const double s = std::sqrt(b * b - r * r);
    const HxGeVector3D axis = toLocalVector(primitive.vect);
    const HxGePoint3D base = toLocal(primitive.point);
    const double d = base.asVector().length();
    const bool onAxis =
        planeOf(axis, planeTolerance) > 0 && (d < planeTolerance || base.asVector().isParallelTo(axis, looseTol));
    std::string text;
    if (onAxis) {
        text = axisText(axis);
    } else {
        text = addPoint(base, {}, axis);
        hasPoints_ = true;
    }
    object_ = HEXT_CATA_SDSH(std::move(text), onAxis ? d : s, a - a / b * s, 2 * r);
}

HEXT_CATA_LSNOTrans::HEXT_CATA_LSNOTrans(const HextConcone3D& primitive, const GemFrame& frame, int nextNumber)
    : HEXT_CATA_GemTrans(frame, nextNumber) {
    const HxGePoint3D start = toLocal(primitive.startPoint);
    HxGePoint3D near = start;
    HxGePoint3D far = toLocal(primitive.endPoint);
    orderByDistance(near, far, {});
    HxGePoint3D base;
    if (!runsThroughOrigin(near, far)) {
        object_.axis = addPoint(near, {}, far - near);
        hasPoints_ = true;
        base = near;
    }
    orderByDistance(near, far, base);
    const bool startIsNear = near.isEqualTo(start);
    object_.diameterA = startIsNear ? primitive.startDiameter : primitive.endDiameter;
    object_.diameterB = startIsNear ? primitive.endDiameter : primitive.startDiameter;
    object_.bottom = signedDistance(near, far, base);
    object_.top = far.distanceTo(base);
    object_.offsetAxis = hasPoints_ ? "Y" : "z";
    if (!hasPoints_) {
        object_.axis = axisText(far - base);
    }
    object_.valid = true;
}

HEXT_CATA_LSNOTrans::HEXT_CATA_LSNOTrans(const HextEcone3D& primitive, const GemFrame& frame, int nextNumber)
    : HEXT_CATA_GemTrans(frame, nextNumber) {
    HxGePoint3D a = toLocal(primitive.getStartPoint());
    HxGePoint3D b = toLocal(primitive.getEndPoint());
    HxGeVector3D v = toLocalVector(primitive.getVect()).normal();
    object_.diameterA = primitive.startDiameter;
    object_.diameterB = primitive.endDiameter;
    if (a.asVector().length() > b.asVector().length()) {
        std::swap(a, b);
        std::swap(object_.diameterA, object_.diameterB);
        v = -v;
    }
    object_.offset = v.dotProduct(b - a);
    const HxGeVector3D t = (b - (a + v * object_.offset)).normal();
    // An axis in no coordinate plane has no text of its own, so it takes the points, too, when it runs through the
    // origin.
    HxGePoint3D base;
    if (planeOf(t, planeTolerance) < 1 || planeOf(v, planeTolerance) < 1) {
        object_.axis = addPoint(a, {}, t);
        addPoint(a, {}, v);
        object_.offsetAxis = addPoint(a, {}, v);
        hasPoints_ = true;
        base = a;
    } else {
        object_.axis = axisText(t);
        object_.offsetAxis = planeText(v, planeOf(v, planeTolerance));
    }
    object_.bottom = a.distanceTo(base);
    object_.top = std::fabs((b - base).dotProduct(t));
    object_.valid = true;
}
