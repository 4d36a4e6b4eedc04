// Translators of solids with flat faces: boxes, extrusions, frustums, transitions; and of lines.
#include "frame/exceptions.h"
#include "hextinterface/hextcata/gem_classes.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int mostSides = 100;
constexpr double shortestAxis = 1e-6;
// A half circle has no tangent corner: its vertex runs away to where no plant reaches.
constexpr double farthestVertex = 1e9;

bool isUsable(const HEXT_CATA_Vertex& vertex) {
    return std::fabs(vertex.x) <= farthestVertex && std::fabs(vertex.y) <= farthestVertex;
}

// A vertex of an arc: the tangent corner of its end points, rounded by its radius.
struct Corner {
    HxGePoint3D point;
    double radius = 0;
};

Corner corner(const HxGePoint3D& a, const HxGePoint3D& b, const HxGePoint3D& c) {
    const TlGeCircArc3d arc(a, b, c);
    const HxGeVector3D middle = b - arc.center();
    const double angle = middle.angleTo(a - arc.center());
    return {arc.center() + middle.normal() * (arc.radius() / std::cos(angle)), arc.radius()};
}

}  // namespace

HEXT_CATA_BOXSTrans::HEXT_CATA_BOXSTrans(const HextBox3D& primitive, const GemFrame& frame, int nextNumber)
    : HEXT_CATA_GemTrans(frame, nextNumber) {
    if (primitive.xAxis.length() < shortestAxis || primitive.yAxis.length() < shortestAxis) {
        throw ExportException("无效方向");
    }
    const HxGeVector3D x = primitive.xAxis.normal();
    const HxGeVector3D y = primitive.yAxis.normal();
    const HxGeVector3D z = x.crossProduct(y);
    const HxGePoint3D base = primitive.center() - z * (primitive.zLength / 2);
    const double hx = primitive.xLength / 2;
    const double hy = primitive.yLength / 2;
    extrusion_.vertices = {{-hx, hy, 0}, {hx, hy, 0}, {hx, -hy, 0}, {-hx, -hy, 0}};
    extrusion_.axisA = addPoint(toLocal(base), {}, toLocalVector(x));
    extrusion_.axisB = addPoint(toLocal(base), {}, toLocalVector(y));
    extrusion_.height = primitive.zLength;
    extrusion_.valid = std::all_of(extrusion_.vertices.begin(), extrusion_.vertices.end(), isUsable);
    hasPoints_ = true;
}

void HEXT_CATA_BOXSTrans::write(CataStream& out, const char* failure) const {
    if (box_.valid) {
        box_.write(out, gem::writeMode);
        return;
    }
    writeOne(out, extrusion_, failure);
}

HEXT_CATA_SEXTTrans::HEXT_CATA_SEXTTrans(const HextWedge3D& primitive, const GemFrame& frame, int nextNumber)
    : HEXT_CATA_GemTrans(frame, nextNumber) {
    const HxGeVector3D up =
        (primitive.point3 - primitive.point2).crossProduct(primitive.point1 - primitive.point2).normal();
    const HxGePoint3D l0 = toLocal(primitive.point1);
    const HxGePoint3D l1 = toLocal(primitive.point2);
    const HxGePoint3D l2 = toLocal(primitive.point3);
    const HxGePoint3D top = toLocal(primitive.point2 + up * primitive.wedgeSize);
    const HxGeVector3D e1 = (l2 - l1).normal();
    HxGeVector3D e2 = (top - l1).normal();
    if (e2.isZeroLength()) {
        e2 = e1.crossProduct(l0 - l1).normal();
    }
    const HxGeVector3D e3 = e1.crossProduct(e2).normal();
    if (e1.isZeroLength() || e2.isZeroLength() || e3.isZeroLength()) {
        throw ExportException("Wedge体元局部坐标系获取失败!");
    }
    object_.axisA = addPoint(l1, {}, e3);
    object_.axisB = addPoint(l1, {}, e1);
    object_.height = top.distanceTo(l1);
    for (const HxGePoint3D& point : {l0, l1, l2}) {
        const HxGePoint3D image = toFrame(point, l1, e3, e1, e2);
        object_.vertices.push_back({image.x, image.y, 0});
    }
    object_.valid = true;
    hasPoints_ = true;
}

HEXT_CATA_SEXTTrans::HEXT_CATA_SEXTTrans(const HextPrism3D& primitive, const GemFrame& frame, int nextNumber)
    : HEXT_CATA_GemTrans(frame, nextNumber) {
    if (primitive.sides > mostSides || primitive.sides < 1) {
        return;
    }
    const HxGePoint3D p0 = toLocal(primitive.endPoint);
    const HxGePoint3D p1 = toLocal(primitive.startPoint);
    const HxGePoint3D p2 = toLocal(primitive.vertexPoint);
    const HxGeVector3D r = (p2 - p0).normal();
    const HxGeVector3D a = (p1 - p0).normal();
    const HxGeVector3D c = r.crossProduct(a).normal();
    if (c.isZeroLength()) {
        return;
    }
    object_.height = p1.distanceTo(p0);
    object_.axisA = addPoint(p0, {}, c);
    object_.axisB = addPoint(p0, {}, r);
    const HxGePoint3D center = toFrame(p0, p0, c, r, a);
    const HxGePoint3D vertex = toFrame(p2, p0, c, r, a);
    const HxGeVector3D radial = (vertex - center).normal();
    const HxGeVector3D axis = toFrame(p1, p0, c, r, a) - center;
    const HxGeVector3D turnAxis = radial.crossProduct(axis.crossProduct(radial).normal());
    for (int i = 0; i < primitive.sides; ++i) {
        const HxGePoint3D p = vertex.rotatedBy((i + 1) * 2 * tlGePi / primitive.sides, turnAxis, center);
        object_.vertices.push_back({p.x, p.y, 0});
    }
    object_.valid = true;
    hasPoints_ = true;
}

HEXT_CATA_SEXTTrans::HEXT_CATA_SEXTTrans(const HextSaddle3D& primitive, const GemFrame& frame, int nextNumber)
    : HEXT_CATA_GemTrans(frame, nextNumber) {
    const HxGePoint3D p = primitive.point;
    const HxGeVector3D x = primitive.axis.normal();
    const HxGeVector3D y = primitive.sectionAxis.normal();
    const HxGeVector3D z = x.crossProduct(y);
    if (z.isZeroLength()) {
        return;
    }
    const double lx = primitive.sectionLength;
    const double r = primitive.circleRadius;
    const HxGePoint3D f1 = p + z * primitive.sectionHeight;
    const HxGePoint3D f2 = p + y * lx;
    const HxGePoint3D f3 = f1 + y * lx;
    const auto add = [&](const HxGePoint3D& world, double radius) {
        const HxGePoint3D image = toFrame(world, p, y, z, x);
        object_.vertices.push_back({image.x, image.y, radius});
    };
    object_.vertices.push_back({});
    add(f1, 0);
    if (lx > 2 * r) {
        const double m = (lx - 2 * r) / 2;
        const HxGePoint3D f4 = f1 + y * m;
        const HxGePoint3D f5 = f1 + y * (lx - m);
        const Corner arc = corner(f4, f1 + y * (m + r) - z * r, f5);
        add(f4, 0);
        add(arc.point, arc.radius);
        add(f5, 0);
    } else {
        const double n = lx / 2;
        const Corner arc = corner(f1, f1 + y * n - z * (r - std::sqrt(r * r - n * n)), f3);
        add(arc.point, arc.radius);
    }
    add(f3, 0);
    add(f2, 0);
    object_.axisA = addPoint(toLocal(p), {}, toLocalVector(y));
    object_.axisB = addPoint(toLocal(p), {}, toLocalVector(z));
    addPoint(toLocal(p), {}, toLocalVector(x));
    object_.height = primitive.length;
    object_.valid = true;
    hasPoints_ = true;
}

void HEXT_CATA_SEXTTrans::write(CataStream& out, const char* failure) const {
    if (!std::all_of(object_.vertices.begin(), object_.vertices.end(), isUsable) || !std::isfinite(object_.height)) {
        throw ExportException(failure);
    }
    writeOne(out, object_, failure);
}

HEXT_CATA_LPYRTrans::HEXT_CATA_LPYRTrans(const HextSqucone3D& primitive, const GemFrame& frame, int nextNumber)
    : HEXT_CATA_GemTrans(frame, nextNumber) {
    const HxGePoint3D base = toLocal(primitive.point);
    const HxGeVector3D shift = toLocal(primitive.topCenter()) - base;
    const HxGeVector3D z = toLocalVector(primitive.zAxis).normal();
    const HxGeVector3D x = toLocalVector(primitive.xAxis).normal();
    const HxGeVector3D y = z.crossProduct(x).normal();
    if (y.isZeroLength()) {
        return;
    }
    object_.axisA = addPoint(base, {}, z);
    object_.axisB = addPoint(base, {}, x);
    object_.axisC = addPoint(base, {}, y);
    object_.height = primitive.height;
    object_.topY = primitive.topY;
    object_.topX = primitive.topX;
    object_.bottomX = primitive.bottomX;
    object_.bottomY = primitive.bottomY;
    object_.offsetX = shift.dotProduct(x);
    object_.offsetY = shift.dotProduct(y);
    object_.valid = true;
    hasPoints_ = true;
}

// The shape is cut at half height into a snout at the round end and a frustum at the rectangle.
HEXT_CATA_SQUCIRTrans::HEXT_CATA_SQUCIRTrans(const HextSqucir3D& primitive, const GemFrame& frame, int nextNumber)
    : HEXT_CATA_GemTrans(frame, nextNumber) {
    const double a = primitive.xLength;
    const double b = primitive.yLength;
    const double d = 2 * primitive.topRadius;
    const double m = d + (std::min(a, b) - d) / 2;
    const double q = m / std::sqrt(2.0);
    const HxGePoint3D top = toLocal(primitive.topCenter);
    const HxGePoint3D base = toLocal(primitive.basePoint);
    const HxGePoint3D foot = toLocal(primitive.topCenter.orthoProject(primitive.basePoint, primitive.baseNormal));
    const HxGePoint3D mid = foot + (top - foot) * 0.5;
    const HxGePoint3D midBase = base + (top - base) * 0.5;

    const bool fromTop = midBase.asVector().length() > top.asVector().length();
    const HxGeVector3D v1 = fromTop ? mid - top : top - mid;
    const HxGeVector3D v2 = fromTop ? midBase - mid : mid - midBase;
    const HxGePoint3D p0 = fromTop ? top : midBase;
    snout_.diameterA = fromTop ? d : m;
    snout_.diameterB = fromTop ? m : d;
    snout_.axis = addPoint(p0, primitive.basePoint, v1);
    snout_.offsetAxis = addPoint(p0, {}, v2);
    snout_.top = v1.length();
    snout_.offset = mid.distanceTo(p0);
    snout_.valid = true;

    const bool squareFirst = base.asVector().length() > p0.asVector().length();
    const HxGeVector3D v3 = squareFirst ? base - mid : mid - base;
    const HxGePoint3D position = squareFirst ? p0 : base;
    const HxGeVector3D x = toLocalVector(primitive.xAxis);
    const HxGeVector3D y = x.crossProduct(v3);
    pyramid_.axisB = addPoint(position, {}, x);
    pyramid_.axisC = addPoint(position, {}, y);
    pyramid_.axisA = addPoint(position, {}, v3);
    pyramid_.height = v1.length();
    pyramid_.bottomX = squareFirst ? q : a;
    pyramid_.bottomY = squareFirst ? q : b;
    pyramid_.topX = squareFirst ? a : q;
    pyramid_.topY = squareFirst ? b : q;
    pyramid_.offsetX = v2.dotProduct(x);
    pyramid_.offsetY = v2.dotProduct(y);
    pyramid_.valid = true;
    hasPoints_ = true;
}

void HEXT_CATA_SQUCIRTrans::write(CataStream& out, const char* failure) const {
    const HEXT_CATA_CateBase* objects[] = {&snout_, &pyramid_};
    bool whole = true;
    for (const HEXT_CATA_CateBase* object : objects) {
        if (object->valid) {
            object->write(out, gem::writeMode);
        }
        whole = whole && object->valid;
    }
    if (!whole) {
        throw ExportException(failure);
    }
}

HEXT_CATA_LINETrans::HEXT_CATA_LINETrans(const HextPrimaryLine& primitive, const GemFrame& frame, int nextNumber)
    : HEXT_CATA_GemTrans(frame, nextNumber) {
    for (const HxGePoint3D* end : {&primitive.startPoint, &primitive.endPoint}) {
        const HxGePoint3D local = toLocal(*end);
        object_.points.push_back(addPoint(local, {}, local.asVector()));
    }
    hasPoints_ = true;
    object_.valid = true;
}
