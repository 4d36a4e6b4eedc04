#include "rvm/shapes/primitive_shape.h"

#include <bit>
#include <cmath>

namespace rvm {

namespace {

using Point = HxGePoint3D;
using Vector = HxGeVector3D;

constexpr double parallelTolerance = 1e-5;
constexpr double thinDiameter = 1e-5;
constexpr double alongTolerance = 0.0001;
constexpr double radiusTolerance = 1e-6;
constexpr double lineParameter = 5.0;
constexpr float millimetresPerMetre = 1000.0F;

struct Frame {
    Vector x;
    Vector y;
    Vector z;
    Point origin;
};

// Narrowed first, then divided in single precision.
float metres(double millimetres) {
    return static_cast<float>(millimetres) / millimetresPerMetre;
}

Matrix matrixOf(const Frame& f) {
    return {metres(f.x.x), metres(f.x.y), metres(f.x.z), metres(f.y.x),      metres(f.y.y),      metres(f.y.z),
            metres(f.z.x), metres(f.z.y), metres(f.z.z), metres(f.origin.x), metres(f.origin.y), metres(f.origin.z)};
}

template <typename... Numbers>
void setParameters(PrimitiveShape& shape, Numbers... numbers) {
    shape.parameters = {static_cast<float>(numbers)...};
    shape.parameterCount = sizeof...(numbers);
}

Point middle(const Point& a, const Point& b) {
    return {(a.x + b.x) / 2, (a.y + b.y) / 2, (a.z + b.z) / 2};
}

// Infinite and NaN have all bits of the exponent set; one more there carries into the sign. In integers, so that the
// compiler takes several numbers at once.
template <std::size_t N>
bool allFinite(const std::array<float, N>& values) {
    constexpr std::uint32_t sign = 0x80000000;
    constexpr std::uint32_t lowestExponentBit = 0x00800000;
    std::uint32_t carried = 0;
    for (const float value : values) {
        carried |= (std::bit_cast<std::uint32_t>(value) & ~sign) + lowestExponentBit;
    }
    return (carried & sign) == 0;
}

// The X axis that goes with a unit Z axis.
Vector xAxisFor(const Vector& z) {
    const bool near = std::fabs(z.x) <= parallelTolerance && std::fabs(z.y) <= parallelTolerance;
    if (near && z.isParallelTo(Vector::kZAxis, TlGeTol(parallelTolerance, parallelTolerance))) {
        return {z.z > 0 ? 1.0 : -1.0, 0, 0};
    }
    return Vector(-z.y, z.x, 0).normal();
}

Vector thirdAxis(const HextBox3D& box) {
    return box.xAxis.crossProduct(box.yAxis);
}

Point boxOrigin(const HextBox3D& box, const Vector& z) {
    if (box.pointKind == 1) {
        return box.point;
    }
    const double up = box.handedness == 1 ? box.zLength / 2 : -box.zLength / 2;
    return box.point + box.xAxis * (box.xLength / 2) + box.yAxis * (box.yLength / 2) + z * up;
}

double sweepOf(const HextTorus3D& torus, const Vector& toStart, const Vector& toEnd) {
    if (torus.form == 1) {
        return torus.angle > 2 * tlGePi ? torus.angle * tlGePi / 180 : torus.angle;
    }
    const double between = toStart.angleTo(toEnd);
    switch (torus.arcKind) {
    case 1:
        return between < tlGePi ? 2 * tlGePi - between : between;
    case 2:
        return 2 * tlGePi;
    case 3:
        return tlGePi;
    default:
        return between > tlGePi ? 2 * tlGePi - between : between;
    }
}

// Whether `thirdField` is the end of the centre line and not the axis.
bool endsAtPoint(const HextTorus3D& torus) {
    return torus.form != 1 && torus.arcKind != 2 && torus.arcKind != 3;
}

Vector torusAxis(const HextTorus3D& torus, const Vector& x, const Vector& toEnd) {
    if (torus.form == 1) {
        return torus.thirdField.asVector();
    }
    return endsAtPoint(torus) ? x.crossProduct(toEnd.normal()).normal() : torus.thirdField.asVector().normal();
}

// Start and end radii that disagree turn the frame about the start point.
void correctRadii(const HextTorus3D& torus, double startRadius, const Vector& toEnd, Frame& frame) {
    const double excess = startRadius - toEnd.length();
    if (!(std::fabs(excess) > radiusTolerance)) {
        return;
    }
    const Point moved = torus.thirdField - toEnd.normal() * excess;
    const double turn = (torus.thirdField - torus.startPoint).normal().angleTo((moved - torus.startPoint).normal());
    frame.x = frame.x.rotatedBy(turn, frame.z);
    frame.y = frame.y.rotatedBy(turn, frame.z);
    frame.origin = torus.startPoint - frame.x * startRadius;
}

}  // namespace

bool PrimitiveShape::isFinite() const {
    return allFinite(matrix) && allFinite(parameters);
}

const Matrix& facetMatrix() {
    static const Matrix matrix = matrixOf({Vector::kXAxis, Vector::kYAxis, Vector::kZAxis, Point::kOrigin});
    return matrix;
}

void boxShape(const HextBox3D& box, PrimitiveShape& shape) {
    const Vector z = thirdAxis(box);
    shape.kind = kindBox;
    shape.matrix = matrixOf({box.xAxis, box.yAxis, z, boxOrigin(box, z)});
    setParameters(shape, box.xLength, box.yLength, box.zLength);
}

void cylinderShape(const HextCylinder3D& cylinder, PrimitiveShape& shape) {
    const Vector along = cylinder.endPoint - cylinder.startPoint;
    shape.kind = kindCylinder;
    shape.matrix = {};
    if (!(cylinder.diameter < thinDiameter)) {
        const Vector z = along.normal();
        const Vector x = xAxisFor(z);
        shape.matrix = matrixOf({x, x.crossProduct(z), z, middle(cylinder.startPoint, cylinder.endPoint)});
    }
    setParameters(shape, cylinder.diameter / 2, along.length());
}

void coneShape(const HextConcone3D& cone, PrimitiveShape& shape) {
    const Vector along = cone.endPoint - cone.startPoint;
    const Vector z = along.normal();
    const Vector x = xAxisFor(z);
    shape.kind = kindSnout;
    shape.matrix = matrixOf({x, z.crossProduct(x), z, middle(cone.startPoint, cone.endPoint)});
    setParameters(shape, cone.startDiameter / 2, cone.endDiameter / 2, along.length(), 0, 0, 0, 0, 0, 0);
}

void eccentricConeShape(const HextEcone3D& cone, PrimitiveShape& shape) {
    const Vector along = cone.endPoint - cone.startPoint;
    const Vector a = along.normal();
    const Vector v = cone.vect.normal();
    const Point origin = middle(cone.startPoint, cone.endPoint);
    const double startRadius = cone.startDiameter / 2;
    const double endRadius = cone.endDiameter / 2;
    shape.kind = kindSnout;
    if (1 - std::fabs(a.dotProduct(v)) < alongTolerance) {
        const Vector x = xAxisFor(a);
        shape.matrix = matrixOf({x, a.crossProduct(x), a, origin});
        setParameters(shape, startRadius, endRadius, along.length(), 0, 0, 0, 0, 0, 0);
        return;
    }
    const Vector w = a.crossProduct(v).normal();
    const Vector h = v.crossProduct(w).normal();
    const double height = along.length() * std::sin(v.angleTo(a));
    const Vector toEnd = cone.endPoint - h * (height / 2) - origin;
    const double off = v.angleTo(toEnd);
    const double reach = 2 * toEnd.length();
    shape.matrix = matrixOf({v, w, h, origin});
    setParameters(shape, startRadius, endRadius, height, reach * std::cos(off), reach * std::sin(off), 0, 0, 0, 0);
}

void dishShape(const HextOval3D& oval, PrimitiveShape& shape) {
    const Vector z = oval.vect.normal();
    const Vector x = xAxisFor(z);
    shape.kind = kindDish;
    shape.matrix = matrixOf({x, x.crossProduct(z), z, oval.point});
    setParameters(shape, oval.baseRadius, oval.getHeadHeight(oval.baseRadius));
}

void sphereShape(const HextSphere3D& sphere, PrimitiveShape& shape) {
    shape.kind = kindSphere;
    shape.matrix = matrixOf({Vector::kXAxis, Vector::kYAxis, Vector::kZAxis, sphere.center});
    setParameters(shape, sphere.radius);
}

void torusShape(const HextTorus3D& torus, PrimitiveShape& shape) {
    const Vector toStart = torus.startPoint - torus.center;
    const Vector toEnd = torus.thirdField - torus.center;
    const double radius = toStart.length();
    Frame frame;
    frame.x = toStart.normal();
    frame.z = torusAxis(torus, frame.x, toEnd);
    frame.y = frame.z.crossProduct(frame.x).normal();
    frame.origin = torus.center;
    if (endsAtPoint(torus)) {
        correctRadii(torus, radius, toEnd, frame);
    }
    shape.kind = kindTorus;
    shape.matrix = matrixOf(frame);
    setParameters(shape, radius, torus.startDiameter / 2, sweepOf(torus, toStart, toEnd));
}

void lineShape(const HxGePoint3D& start, const HxGePoint3D& end, PrimitiveShape& shape) {
    const Vector v = start - end;
    Frame frame{Vector::kXAxis, Vector::kYAxis, Vector::kZAxis, middle(start, end)};
    if (!v.isParallelTo(Vector::kXAxis)) {
        const Vector across = v.crossProduct(Vector::kXAxis);
        frame.x = v.normal();
        frame.y = across.normal();
        frame.z = v.crossProduct(across).normal();
    }
    shape.kind = kindLine;
    shape.matrix = matrixOf(frame);
    setParameters(shape, lineParameter, v.length());
}

}  // namespace rvm
