#include "rvm/shapes/primitive_shape.h"

#include "support/test_support.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

using namespace rvm;
using Point = HxGePoint3D;
using Vector = HxGeVector3D;

constexpr double near = 0.01;  // millimetres, single precision at plant coordinates

// A local point in millimetres, through the matrix, as world millimetres.
Point toWorld(const PrimitiveShape& shape, double x, double y, double z) {
    const Matrix& m = shape.matrix;
    const auto row = [&](std::size_t i) { return 1000.0 * (m[i] * x + m[i + 3] * y + m[i + 6] * z + m[i + 9]); };
    return {row(0), row(1), row(2)};
}

Vector axis(const PrimitiveShape& shape, std::size_t index) {
    const std::size_t i = 3 * index;
    return Vector(shape.matrix[i], shape.matrix[i + 1], shape.matrix[i + 2]) * 1000.0;
}

void expectPoint(const Point& got, const Point& wanted) {
    EXPECT_LT(got.distanceTo(wanted), near)
        << got.x << ' ' << got.y << ' ' << got.z << " for " << wanted.x << ' ' << wanted.y << ' ' << wanted.z;
}

void expectVector(const Vector& got, const Vector& wanted) {
    EXPECT_LT((got - wanted).length(), 1e-5) << got.x << ' ' << got.y << ' ' << got.z;
}

void expectOrthonormal(const PrimitiveShape& shape) {
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(axis(shape, i).length(), 1, 1e-5);
        EXPECT_NEAR(axis(shape, i).dotProduct(axis(shape, (i + 1) % 3)), 0, 1e-5);
    }
}

const Vector directions[] = {{0, 0, 1}, {0, 0, -1}, {1, 0, 0}, {0, -1, 0}, {1, 2, 3}, {-3, 1, -0.5}, {1e-4, 0, 1}};

// --------------------------------------------------------------------------------------------------------- the unit

TEST(PrimitiveShape, AxesAndOriginAreNarrowedThenDivided) {
    EXPECT_EQ(facetMatrix(), (Matrix{0.001F, 0, 0, 0, 0.001F, 0, 0, 0, 0.001F, 0, 0, 0}));
    HextSphere3D sphere;
    sphere.center = {123456.789, -0.1, 1e-3};
    PrimitiveShape shape;
    sphereShape(sphere, shape);
    EXPECT_EQ(shape.matrix[9], static_cast<float>(123456.789) / 1000.0F);
    EXPECT_EQ(shape.matrix[10], static_cast<float>(-0.1) / 1000.0F);
}

// ---------------------------------------------------------------------------------------------- cylinders and cones

// Local Z leads from start to end through the middle; `turn` is 1 for axes that turn right, -1 for left.
void expectRun(const PrimitiveShape& shape, double length, const Point& start, const Point& end, int turn) {
    expectPoint(toWorld(shape, 0, 0, -length / 2), start);
    expectPoint(toWorld(shape, 0, 0, length / 2), end);
    expectOrthonormal(shape);
    expectVector(axis(shape, 1), axis(shape, 2).crossProduct(axis(shape, 0)) * turn);
}

TEST(PrimitiveShape, CylindersAndConesRunFromStartToEnd) {
    const Point start(1000, 2000, 3000);
    PrimitiveShape shape;
    for (const Vector& direction : directions) {
        HextCylinder3D cylinder;
        cylinder.startPoint = start;
        cylinder.endPoint = start + direction * 500;
        cylinder.diameter = 88.9;
        cylinderShape(cylinder, shape);
        ASSERT_EQ(shape.kind, kindCylinder);
        ASSERT_EQ(shape.parameterCount, 2U);
        EXPECT_FLOAT_EQ(shape.parameters[0], 44.45F);
        expectRun(shape, shape.parameters[1], start, cylinder.endPoint, -1);
        HextConcone3D cone;
        cone.startPoint = start;
        cone.endPoint = cylinder.endPoint;
        cone.startDiameter = 100;
        cone.endDiameter = 40;
        coneShape(cone, shape);
        ASSERT_EQ(shape.kind, kindSnout);
        ASSERT_EQ(shape.parameterCount, 9U);
        EXPECT_EQ(shape.parameters[0], 50.0F);
        EXPECT_EQ(shape.parameters[1], 20.0F);
        expectRun(shape, shape.parameters[2], start, cone.endPoint, 1);
    }
}

TEST(PrimitiveShape, AThinCylinderKeepsItsParametersAndLosesItsFrame) {
    HextCylinder3D cylinder;
    cylinder.endPoint = {0, 0, 100};
    PrimitiveShape shape;
    for (const double diameter : {0.0, 0.99e-5, -3.0}) {
        cylinder.diameter = diameter;
        cylinderShape(cylinder, shape);
        EXPECT_EQ(shape.matrix, Matrix{});
        EXPECT_EQ(shape.parameters[1], 100.0F);
    }
    cylinder.diameter = 1.01e-5;
    cylinderShape(cylinder, shape);
    EXPECT_NE(shape.matrix, Matrix{});
}

TEST(PrimitiveShape, VerticalAxesFollowTheWorldZRule) {
    HextConcone3D cone;
    cone.startDiameter = cone.endDiameter = 10;
    // The third is parallel within the tolerance.
    const std::pair<Point, Vector> cases[] = {
        {{0, 0, 5}, {1, 0, 0}}, {{0, 0, -5}, {-1, 0, 0}}, {{0, 0.9e-5, 1}, {1, 0, 0}}, {{0, 1.1e-5, 1}, {-1, 0, 0}}};
    for (const auto& [end, first] : cases) {
        cone.endPoint = end;
        PrimitiveShape shape;
        coneShape(cone, shape);
        expectVector(axis(shape, 0), first);
    }
}

TEST(PrimitiveShape, AnEccentricConeSplitsIntoHeightAndOffset) {
    struct Case {
        Vector along;
        Vector vect;
    };
    const Case cases[] = {{{30, 0, 200}, {1, 0, 0}},
                          {{-30, 0, 200}, {1, 0, 0}},
                          {{30, 40, 200}, {0.6, 0.8, 0}},
                          {{30, 0, 200}, {7, 0, 0}},
                          {{0, 0, 200}, {0, 1, 0}}};
    for (const Case& c : cases) {
        HextEcone3D cone;
        cone.startPoint = {100, 200, 300};
        cone.endPoint = cone.startPoint + c.along;
        cone.startDiameter = 100;
        cone.endDiameter = 60;
        cone.vect = c.vect;
        PrimitiveShape shape;
        eccentricConeShape(cone, shape);
        const auto& p = shape.parameters;
        ASSERT_EQ(shape.kind, kindSnout);
        EXPECT_EQ(p[0], 50.0F);
        EXPECT_EQ(p[1], 30.0F);
        EXPECT_NEAR(p[2], 200, near);
        EXPECT_NEAR(std::hypot(p[3], p[4]), std::hypot(c.along.x, c.along.y), near);
        expectPoint(toWorld(shape, -p[3] / 2, -p[4] / 2, -p[2] / 2), cone.startPoint);
        expectPoint(toWorld(shape, p[3] / 2, p[4] / 2, p[2] / 2), cone.endPoint);
        expectOrthonormal(shape);
    }
}

TEST(PrimitiveShape, AnEccentricConeAlongItsEccentricityCountsAsConcentric) {
    HextEcone3D eccentric;
    eccentric.endPoint = {0, 0, 250};
    eccentric.vect = {0.01, 0, -1};
    eccentric.startDiameter = 10;
    PrimitiveShape shape;
    eccentricConeShape(eccentric, shape);
    EXPECT_EQ(shape.parameters[2], 250.0F);
    EXPECT_EQ(shape.parameters[3], 0.0F);
    expectVector(axis(shape, 0), {1, 0, 0});
    expectVector(axis(shape, 1), {0, 1, 0});
    eccentric.vect = {0.02, 0, -1};  // 1 - |cos| is 0.0002 now
    eccentricConeShape(eccentric, shape);
    EXPECT_LT(shape.parameters[2], 6.0F);
}

// ------------------------------------------------------------------------------------------- boxes, heads, spheres

TEST(PrimitiveShape, ABoxKeepsItsCornersWhateverItsReferencePoint) {
    HextBox3D box;
    box.xAxis = {0, 1, 0};
    box.yAxis = {-1, 0, 0};
    box.point = {10, 20, 30};
    box.xLength = 4;
    box.yLength = 6;
    box.zLength = 8;
    struct Case {
        int kind;
        int handedness;
        Point center;
    };
    const Case cases[] = {{1, 1, {10, 20, 30}}, {1, 0, {10, 20, 30}}, {0, 1, {7, 22, 34}}, {0, 0, {7, 22, 26}}};
    for (const Case& c : cases) {
        box.pointKind = c.kind;
        box.handedness = c.handedness;
        PrimitiveShape shape;
        boxShape(box, shape);
        ASSERT_EQ(shape.kind, kindBox);
        EXPECT_EQ(shape.used().size(), 3U);
        EXPECT_EQ(shape.parameters[2], 8.0F);
        expectPoint(toWorld(shape, 0, 0, 0), c.center);
        expectPoint(toWorld(shape, 2, 3, 4), c.center + Vector(-3, 2, 4));
        if (c.kind == 0) {
            expectPoint(toWorld(shape, 0, 0, 0), box.center());
        }
    }
    box.xAxis = {2, 0, 0};
    box.yAxis = {0, 0, 3};
    PrimitiveShape shape;
    boxShape(box, shape);
    expectVector(axis(shape, 0), {2, 0, 0});  // axes stand as they are
    expectVector(axis(shape, 2), {0, -6, 0});
}

TEST(PrimitiveShape, AHeadStandsOnItsBase) {
    for (const Vector& direction : directions) {
        HextOval3D oval;
        oval.point = {5, 6, 7};
        oval.vect = direction;
        oval.baseRadius = 100;
        oval.radialRadius = 100;
        oval.axialRadius = 50;
        PrimitiveShape shape;
        dishShape(oval, shape);
        ASSERT_EQ(shape.kind, kindDish);
        EXPECT_EQ(shape.parameters[0], 100.0F);
        EXPECT_EQ(shape.parameters[1], 50.0F);
        expectPoint(toWorld(shape, 0, 0, 50), oval.point + direction.normal() * 50);
        expectOrthonormal(shape);
    }
}

// --------------------------------------------------------------------------------------------------------- toruses

HextTorus3D quarterBend() {
    HextTorus3D torus;
    torus.center = {1000, 0, 0};
    torus.startPoint = {1000, 300, 0};
    torus.thirdField = {1000, 0, 300};
    torus.startDiameter = 60;
    torus.endDiameter = 40;
    return torus;
}

Point torusPoint(const PrimitiveShape& shape, double angle) {
    return toWorld(shape, shape.parameters[0] * std::cos(angle), shape.parameters[0] * std::sin(angle), 0);
}

TEST(PrimitiveShape, ABendRunsFromStartToEnd) {
    const HextTorus3D torus = quarterBend();
    PrimitiveShape shape;
    torusShape(torus, shape);
    ASSERT_EQ(shape.kind, kindTorus);
    EXPECT_EQ(shape.parameters[0], 300.0F);
    EXPECT_EQ(shape.parameters[1], 30.0F);
    EXPECT_FLOAT_EQ(shape.parameters[2], static_cast<float>(tlGePi / 2));
    expectPoint(torusPoint(shape, 0), torus.startPoint);
    expectPoint(torusPoint(shape, shape.parameters[2]), torus.thirdField);
    expectOrthonormal(shape);
}

// The long way keeps the axis of the short one, whole and half circles turn about the third field, and a sweep beyond a
// whole turn counts as degrees.
TEST(PrimitiveShape, FormAndKindTellSweepAndAxis) {
    struct Case {
        int form;
        int arcKind;
        double angle;
        Point third;
        double sweep;
        Vector axis;
    };
    const Case cases[] = {{0, 1, 0, {1000, 0, 300}, 1.5 * tlGePi, {1, 0, 0}},
                          {0, 2, 0, {5, 0, 0}, 2 * tlGePi, {1, 0, 0}},
                          {0, 3, 0, {5, 0, 0}, tlGePi, {1, 0, 0}},
                          {1, 0, 90, {2, 0, 0}, tlGePi / 2, {2, 0, 0}},
                          {1, 0, 6, {2, 0, 0}, 6, {2, 0, 0}},
                          {1, 0, 2 * tlGePi, {2, 0, 0}, 2 * tlGePi, {2, 0, 0}}};
    for (const Case& c : cases) {
        HextTorus3D torus = quarterBend();
        torus.form = c.form;
        torus.arcKind = c.arcKind;
        torus.angle = c.angle;
        torus.thirdField = c.third;
        PrimitiveShape shape;
        torusShape(torus, shape);
        EXPECT_FLOAT_EQ(shape.parameters[2], static_cast<float>(c.sweep));
        expectVector(axis(shape, 2), c.axis);
        expectVector(axis(shape, 1), {0, 0, 1});
        expectPoint(torusPoint(shape, 0), torus.startPoint);
    }
}

TEST(PrimitiveShape, RadiiThatDisagreeTurnTheFrameAboutTheStart) {
    HextTorus3D torus = quarterBend();
    torus.thirdField = {1000, 0, 340};
    PrimitiveShape shape;
    torusShape(torus, shape);
    EXPECT_EQ(shape.parameters[0], 300.0F);
    expectPoint(torusPoint(shape, 0), torus.startPoint);
    // The chord to the end turns as far as it would if the end moved outward by the difference once more.
    const double turn = std::atan2(380, 300) - std::atan2(340, 300);
    EXPECT_NEAR(axis(shape, 0).angleTo(Vector(0, 1, 0)), turn, 1e-5);
    expectOrthonormal(shape);
    torus.thirdField = {1000, 0, 300.0000005};
    torusShape(torus, shape);
    expectPoint(toWorld(shape, 0, 0, 0), torus.center);
}

// ----------------------------------------------------------------------------------------------------------- lines

TEST(PrimitiveShape, ALineLiesAlongItsFirstAxis) {
    PrimitiveShape shape;
    lineShape({0, 0, 100}, {0, 0, 500}, shape);
    ASSERT_EQ(shape.kind, kindLine);
    EXPECT_EQ(shape.parameters[0], 5.0F);
    EXPECT_EQ(shape.parameters[1], 400.0F);
    expectPoint(toWorld(shape, 200, 0, 0), {0, 0, 100});
    expectOrthonormal(shape);
    lineShape({10, 0, 0}, {30, 0, 0}, shape);
    expectVector(axis(shape, 0), {1, 0, 0});
    expectVector(axis(shape, 1), {0, 1, 0});
}

// ----------------------------------------------------------------------------------------------------------- boxes

Box boxAround(const std::vector<Point>& points) {
    Box box{INFINITY, INFINITY, INFINITY, -INFINITY, -INFINITY, -INFINITY};
    for (const Point& p : points) {
        const float c[] = {static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z)};
        for (std::size_t i = 0; i < 3; ++i) {
            box[i] = std::min(box[i], c[i]);
            box[i + 3] = std::max(box[i + 3], c[i]);
        }
    }
    return box;
}

std::vector<Point> disc(double radius, double x, double y, double z) {
    std::vector<Point> points;
    for (int i = 0; i < 3600; ++i) {
        const double a = i * tlGePi / 1800;
        points.push_back({x + radius * std::cos(a), y + radius * std::sin(a), z});
    }
    return points;
}

std::vector<Point> torusSurface(double radius, double tube, double sweep) {
    std::vector<Point> points;
    for (int i = 0; i <= 720; ++i) {
        for (const Point& p : {Point(radius + tube, 0, 0), Point(radius - tube, 0, 0), Point(radius, 0, tube),
                               Point(radius, 0, -tube)}) {
            points.push_back(p.rotatedBy(sweep * i / 720, {0, 0, 1}, {}));
        }
    }
    return points;
}

void expectBox(const Box& got, const Box& wanted) {
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_NEAR(got[i], wanted[i], 0.02) << i;
    }
}

PrimitiveShape shapeOf(Kind kind, std::initializer_list<float> parameters) {
    PrimitiveShape shape;
    shape.kind = kind;
    std::copy(parameters.begin(), parameters.end(), shape.parameters.begin());
    shape.parameterCount = parameters.size();
    return shape;
}

TEST(LocalBox, FitsTheSurface) {
    expectBox(localBox(shapeOf(kindBox, {2, 4, 6})), {-1, -2, -3, 1, 2, 3});
    expectBox(localBox(shapeOf(kindDish, {50, 20})), {-50, -50, 0, 50, 50, 20});
    expectBox(localBox(shapeOf(kindCylinder, {5, 30})), {-5, -5, -15, 5, 5, 15});
    expectBox(localBox(shapeOf(kindSphere, {7})), {-7, -7, -7, 7, 7, 7});
    expectBox(localBox(shapeOf(kindLine, {5, 30})), {-15, 0, 0, 15, 0, 0});
    for (const float offset : {0.0F, 30.0F, -200.0F}) {
        std::vector<Point> points = disc(50, -offset / 2, 10, -40);
        const std::vector<Point> top = disc(20, offset / 2, -10, 40);
        points.insert(points.end(), top.begin(), top.end());
        expectBox(localBox(shapeOf(kindSnout, {50, 20, 80, offset, -20})), boxAround(points));
    }
    for (const float sweep : {0.3F, 1.6F, 3.2F, 4.8F, 6.2831853F}) {
        for (const float tube : {20.0F, 130.0F}) {
            expectBox(localBox(shapeOf(kindTorus, {100, tube, sweep})), boxAround(torusSurface(100, tube, sweep)));
        }
    }
}

}  // namespace
