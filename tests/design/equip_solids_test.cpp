// Every class of solid, written as macro text, read back and rebuilt, against the mesh of its source.
#include "fixture.h"
#include "source_shape.h"

#include <cmath>
#include <functional>
#include <random>

namespace {

// Places a primitive that is told in coordinates of its own.
class Place {
public:
    explicit Place(const TlGeMatrix3d& matrix) : matrix_(matrix) {}
    HxGePoint3D p(double x, double y, double z) const { return matrix_ * HxGePoint3D(x, y, z); }
    HxGeVector3D v(double x, double y, double z) const { return matrix_ * HxGeVector3D(x, y, z); }
    // A direction where a point stands.
    HxGePoint3D d(double x, double y, double z) const { return HxGePoint3D() + v(x, y, z); }
    HextVertexList list(HextVertexList own) const {
        for (HextVertex& vertex : own) {
            vertex.point = matrix_ * vertex.point;
        }
        return own;
    }

private:
    TlGeMatrix3d matrix_;
};

// The ratio of the macro solids' volume to the source's, and how far their extents differ in millimetres.
struct Bound {
    double volume = 1;
    double reach = 0;
};

struct Source {
    const char* name;
    Bound bound;
    std::function<std::unique_ptr<HextPrimary3D>(const Place&)> at;
};

template <typename Class>
Source source(const char* name, void (*fill)(const Place&, Class&), Bound bound = {}) {
    return {name, bound, [fill](const Place& at) {
                auto primitive = std::make_unique<Class>();
                fill(at, *primitive);
                return primitive;
            }};
}

// A closed outline with an arc at a corner and one into an edge.
const double diagonal = 300 + 300 * std::sqrt(0.5);
const HextVertexList rounded = {
    {1, {0, 0, 0}},     {1, {600, 0, 0}},   {2, {600, 300, 0}}, {3, {diagonal, diagonal, 0}},
    {1, {300, 600, 0}}, {2, {200, 600, 0}}, {7, {100, 500, 0}}, {4, {0, 600, 0}}};
const HextVertexList roundHole = {{6, {400, 300, 0}}, {3, {300, 400, 0}}, {3, {200, 300, 0}}};

template <typename Torus>
void bend(const Place& at, Torus& t, const HxGePoint3D& third) {
    t.center = at.p(0, 0, 0), t.startPoint = at.p(600, 0, 0), t.thirdField = third;
}
void pipe(HextTorus3D& t, double start = 200, double end = 200) {
    t.startDiameter = start, t.endDiameter = end;
}
void duct(HextSqutorus3D& t, double start = 200, double end = 200) {
    t.startWidth = start, t.endWidth = end, t.startHeight = t.endHeight = 300;
}
void sizes(HextBox3D& b) {
    b.xLength = 300, b.yLength = 500, b.zLength = 700;
}
void head(const Place& at, HextOval3D& o, double axial, double base) {
    o.point = at.p(1, 2, 3), o.vect = at.v(0, 0, 4);
    o.axialRadius = axial, o.radialRadius = 500, o.baseRadius = base;
}
void transition(const Place& at, HextSqucir3D& s, double side, double radius) {
    s.basePoint = at.p(0, 0, 0), s.xAxis = at.v(2, 0, 0), s.baseNormal = at.v(0, 0, 1);
    s.topCenter = at.p(100, 50, 600), s.xLength = 600, s.yLength = side, s.topRadius = radius;
}

const std::vector<Source> sources = {
    source<HextBox3D>("box from a corner",
                      [](const Place& at, HextBox3D& b) {
                          b.point = at.p(10, 20, 30), b.xAxis = at.v(1, 0, 0), b.yAxis = at.v(0, 1, 0), sizes(b);
                      }),
    source<HextBox3D>("left-handed box with long axes",
                      [](const Place& at, HextBox3D& b) {
                          b.point = at.p(10, 20, 30), b.xAxis = at.v(2, 0, 0), b.yAxis = at.v(0, 3, 0), sizes(b);
                          b.handedness = 0;
                      }),
    source<HextBox3D>("box about its centre",
                      [](const Place& at, HextBox3D& b) {
                          b.point = at.p(10, 20, 30), b.xAxis = at.v(0, 0, 2), b.yAxis = at.v(3, 0, 0), sizes(b);
                          b.pointKind = 1;
                      }),
    source<HextCylinder3D>("cylinder",
                           [](const Place& at, HextCylinder3D& c) {
                               c.startPoint = at.p(0, 0, 0), c.endPoint = at.p(300, 400, 0), c.diameter = 200;
                           }),
    source<HextScylinder3D>("sloped cylinder",
                            [](const Place& at, HextScylinder3D& c) {
                                c.startPoint = at.p(0, 0, 800), c.endPoint = at.p(0, 0, 0), c.diameter = 200;
                                c.vect = at.v(1, 2, 6);
                            }),
    source<HextScylinder3D>("sloped cylinder cut straight",
                            [](const Place& at, HextScylinder3D& c) {
                                c.startPoint = at.p(0, 0, 800), c.endPoint = at.p(0, 0, 0), c.diameter = 200;
                                c.vect = at.v(0, 0, 6);
                            }),
    source<HextConcone3D>("concentric cone",
                          [](const Place& at, HextConcone3D& c) {
                              c.startPoint = at.p(0, 0, 0), c.endPoint = at.p(0, 500, 100);
                              c.startDiameter = 400, c.endDiameter = 100;
                          }),
    source<HextEcone3D>("eccentric cone",
                        [](const Place& at, HextEcone3D& c) {
                            c.startPoint = at.p(5, 5, 5), c.endPoint = at.p(85, 5, 505), c.vect = at.v(2, 0, 0);
                            c.startDiameter = 400, c.endDiameter = 240;
                        }),
    source<HextEcone3D>("eccentric cone that leans far out and widens",
                        [](const Place& at, HextEcone3D& c) {
                            c.startPoint = at.p(5, 5, 5), c.endPoint = at.p(305, 605, 405), c.vect = at.v(-1, -2, 0);
                            c.startDiameter = 100, c.endDiameter = 300;
                        }),
    source<HextEcone3D>("eccentric cone with discs across no axis",
                        [](const Place& at, HextEcone3D& c) {
                            c.startPoint = at.p(0, 0, 0), c.endPoint = at.p(100, 0, 500), c.vect = at.v(1, 1, 1);
                            c.startDiameter = 300, c.endDiameter = 100;
                        }),
    source<HextSqucone3D>("rectangular frustum",
                          [](const Place& at, HextSqucone3D& c) {
                              c.point = at.p(0, 10, 20), c.zAxis = at.v(0, 0, 3), c.xAxis = at.v(2, 0, 0);
                              c.bottomX = 600, c.bottomY = 400, c.topX = 200, c.topY = 300, c.height = 500;
                              c.offsetDirection = at.v(3, 4, 0), c.offsetLength = 150;
                          }),
    source<HextWedge3D>("wedge",
                        [](const Place& at, HextWedge3D& w) {
                            w.point1 = at.p(400, 30, 0), w.point2 = at.p(0, 0, 0), w.point3 = at.p(50, 300, 0);
                            w.wedgeSize = 250;
                        }),
    source<HextWedge3D>("wedge of negative size",
                        [](const Place& at, HextWedge3D& w) {
                            w.point1 = at.p(400, 30, 0), w.point2 = at.p(0, 0, 0), w.point3 = at.p(50, 300, 0);
                            w.wedgeSize = -250;
                        }),
    source<HextPrism3D>("prism",
                        [](const Place& at, HextPrism3D& p) {
                            p.endPoint = at.p(0, 0, 0), p.startPoint = at.p(0, 0, 700), p.sides = 6;
                            p.vertexPoint = at.p(120, 160, 0);
                        }),
    source<HextTorus3D>("elbow", [](const Place& at, HextTorus3D& t) { bend(at, t, at.p(-360, 480, 0)), pipe(t); }),
    source<HextTorus3D>(
        "elbow the long way",
        [](const Place& at, HextTorus3D& t) { bend(at, t, at.p(-360, 480, 0)), pipe(t), t.arcKind = 1; }),
    source<HextTorus3D>("half ring",
                        [](const Place& at, HextTorus3D& t) { bend(at, t, at.d(0, 0, 2)), pipe(t), t.arcKind = 3; }),
    source<HextTorus3D>("ring",
                        [](const Place& at, HextTorus3D& t) { bend(at, t, at.d(0, 0, 2)), pipe(t), t.arcKind = 2; }),
    source<HextTorus3D>(
        "elbow about an axis, in degrees",
        [](const Place& at, HextTorus3D& t) { bend(at, t, at.d(0, 0, 1)), pipe(t), t.form = 1, t.angle = 215; }),
    source<HextSqutorus3D>("square elbow",
                           [](const Place& at, HextSqutorus3D& t) { bend(at, t, at.p(0, 600, 0)), duct(t); }),
    source<HextSqutorus3D>("square elbow about an axis, in radians",
                           [](const Place& at, HextSqutorus3D& t) {
                               bend(at, t, {}), duct(t), t.normal = at.v(0, 0, 3), t.form = 1, t.angle = 4;
                           }),
    source<HextRevolve>("revolved profile",
                        [](const Place& at, HextRevolve& r) {
                            r.center = at.p(-500, 0, 0), r.axis = at.v(0, 2, 0), r.angle = 5,
                            r.profile = at.list(rounded);
                        }),
    source<HextSpolygon>("extruded outline with a hole",
                         [](const Place& at, HextSpolygon& s) {
                             s.origin = at.p(70, 80, 90), s.xAxis = at.v(0, 1, 0), s.yAxis = at.v(0, 0, 1);
                             s.direction = at.v(1, 0, 0), s.height = 150, s.outline = rounded;
                             s.holes = std::vector<HextVertexList>{roundHole};
                         }),
    source<HextSpolygon>("extruded outline against its third axis",
                         [](const Place& at, HextSpolygon& s) {
                             s.origin = at.p(70, 80, 90), s.xAxis = at.v(1, 0, 0), s.yAxis = at.v(0, 1, 0);
                             s.direction = at.v(0, 0, -3), s.height = 150, s.outline = rounded;
                         }),
    source<HextOval3D>("spherical head", [](const Place& at, HextOval3D& o) { head(at, o, 500, 300); }),

    // Conversions that are approximate, with what they are off.
    source<HextScylinder3D>("sloped cylinder with a normal into the solid",
                            [](const Place& at, HextScylinder3D& c) {
                                c.startPoint = at.p(0, 0, 800), c.endPoint = at.p(0, 0, 0), c.diameter = 200;
                                c.vect = at.v(1, 0, -6);
                            },
                            {1, 655.45}),
    source<HextOval3D>("elliptical head, in 32 segments", [](const Place& at, HextOval3D& o) { head(at, o, 250, 500); },
                       {0.99943, 0.14}),
    source<HextOval3D>("flat head, as a part of a sphere",
                       [](const Place& at, HextOval3D& o) { head(at, o, 1.9, 500); }, {0.7517, 0.07}),
    source<HextSphere3D>("sphere, as a dish on a small base",
                         [](const Place& at, HextSphere3D& s) { s.center = at.p(1, 2, 3), s.radius = 500; },
                         {1.0469, 14}),
    source<HextTorus3D>("reducing elbow, as the smaller one",
                        [](const Place& at, HextTorus3D& t) { bend(at, t, at.p(0, 600, 0)), pipe(t, 200, 100); },
                        {0.42858, 50}),
    source<HextSqutorus3D>("reducing square elbow, as the smaller one",
                           [](const Place& at, HextSqutorus3D& t) { bend(at, t, at.p(0, 600, 0)), duct(t, 200, 100); },
                           {0.66667, 50}),
    source<HextSqucir3D>("square to round of one size",
                         [](const Place& at, HextSqucir3D& s) { transition(at, s, 600, 300); }, {0.82755}),
    source<HextSqucir3D>("rectangle to smaller round",
                         [](const Place& at, HextSqucir3D& s) { transition(at, s, 400, 150); }, {0.79299}),
    source<HextSqucir3D>(
        "rectangle to smaller round below it",
        [](const Place& at, HextSqucir3D& s) { transition(at, s, 400, 150), s.topCenter = at.p(100, 50, -600); },
        {0.79299}),
};

// The world itself, the world turned about, and frames of any direction.
std::vector<TlGeMatrix3d> placements() {
    const HxGeVector3D x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1};
    std::vector<TlGeMatrix3d> all = {TlGeMatrix3d(), TlGeMatrix3d::coordSystem({100, 0, 0}, y, z, x),
                                     TlGeMatrix3d::coordSystem({0, -100, 5}, -x, z, y),
                                     TlGeMatrix3d::coordSystem({0, 0, 0}, y, -x, z),
                                     TlGeMatrix3d::coordSystem({0, 0, 0}, x, -y, -z)};
    std::mt19937 random(7);
    const auto number = [&] { return random() / 2147483648.0 - 1; };
    const auto any = [&] { return HxGeVector3D(number(), number(), number()); };
    for (int i = 0; i < 10; ++i) {
        const HxGeVector3D first = any().normal();
        const HxGeVector3D third = first.crossProduct(any()).normal();
        all.push_back(
            TlGeMatrix3d::coordSystem(HxGePoint3D() + any() * 20000, first, third.crossProduct(first), third));
    }
    return all;
}

class EquipSolids : public EquipTest {};

}  // namespace

TEST_F(EquipSolids, MeanWhatTheirSourcesMean) {
    for (const Source& source : sources) {
        SCOPED_TRACE(source.name);
        double reach = 0;
        for (const TlGeMatrix3d& placement : placements()) {
            const auto primitive = source.at(Place(placement));
            const Shape expected = sourceShape(*primitive);
            const Shape shape = macroShape(*primitive);
            EXPECT_NEAR(shape.volume / expected.volume, source.bound.volume, 1e-4);
            reach = std::max(reach, reachError(shape, expected));
        }
        // Six decimals of positions and angles, the clearance of fillets, and the steps of both meshes.
        EXPECT_LT(reach, source.bound.reach + 0.03);
        EXPECT_GE(reach, source.bound.reach * 0.9);
    }
}

// The section's length runs across the section axis, and the trough lies at the far end of that axis: the solid is the
// source's mirror image. So it is for every direction of the section, as long as the axis is level.
TEST_F(EquipSolids, ALevelSaddleIsMirroredInItsSection) {
    HextSaddle3D saddle;
    saddle.point = {10, 20, 30};
    saddle.axis = {3, 4, 0};
    saddle.length = 500, saddle.sectionLength = 400, saddle.sectionHeight = 300;
    for (const HxGeVector3D& section :
         {HxGeVector3D(4, -3, 0), HxGeVector3D(-4, 3, 0), HxGeVector3D(0, 0, 2), HxGeVector3D(4, -3, 2)}) {
        for (const double radius : {150.0, 200.0, 260.0}) {
            saddle.sectionAxis = section;
            saddle.circleRadius = radius;
            const Shape expected = sourceShape(saddle);
            const Shape shape = macroShape(saddle);
            EXPECT_NEAR(shape.volume / expected.volume, 1, 2e-4) << radius;
            const HxGeVector3D across = section.normal();
            const HxGeVector3D third = saddle.axis.crossProduct(section).normal();
            const double ahead = saddle.point.asVector().dotProduct(across);
            EXPECT_NEAR(shape.reach(across) - ahead, 300, 1e-3);
            EXPECT_NEAR(shape.reach(-third) + saddle.point.asVector().dotProduct(third), 0, 1e-3);
            EXPECT_NEAR(shape.reach(third) - saddle.point.asVector().dotProduct(third), 400, 1e-3);
            EXPECT_NEAR(expected.reach(across) - ahead, 400, 1e-3);
        }
    }
}
