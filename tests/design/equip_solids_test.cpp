// Every class of solid, written as macro text, read back and rebuilt, against the mesh of its source.
#include "fixture.h"
#include "shapes/cases.h"
#include "source_shape.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>

namespace {

// The ratio of the macro solids' volume to the source's, and how far their extents differ in millimetres.
struct Bound {
    double volume = 1;
    double reach = 0;
};

struct Source {
    std::string name;
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

void head(const Place& at, HextOval3D& o, double axial, double base) {
    o.point = at.at(1, 2, 3), o.vect = at.along(0, 0, 4);
    o.axialRadius = axial, o.radialRadius = 500, o.baseRadius = base;
}
void transition(const Place& at, HextSqucir3D& s, double side, double radius) {
    s.basePoint = at.at(0, 0, 0), s.xAxis = at.along(2, 0, 0), s.baseNormal = at.along(0, 0, 1);
    s.topCenter = at.at(100, 50, 600), s.xLength = 600, s.yLength = side, s.topRadius = radius;
}

const std::vector<Source> sources = {
    source<HextScylinder3D>("sloped cylinder",
                            [](const Place& at, HextScylinder3D& c) {
                                c.startPoint = at.at(0, 0, 800), c.endPoint = at.at(0, 0, 0), c.diameter = 200;
                                c.vect = at.along(1, 2, 6);
                            }),
    source<HextScylinder3D>("sloped cylinder cut straight",
                            [](const Place& at, HextScylinder3D& c) {
                                c.startPoint = at.at(0, 0, 800), c.endPoint = at.at(0, 0, 0), c.diameter = 200;
                                c.vect = at.along(0, 0, 6);
                            }),
    source<HextEcone3D>("eccentric cone that leans far out and widens",
                        [](const Place& at, HextEcone3D& c) {
                            c.startPoint = at.at(5, 5, 5), c.endPoint = at.at(305, 605, 405),
                            c.vect = at.along(-1, -2, 0);
                            c.startDiameter = 100, c.endDiameter = 300;
                        }),
    source<HextEcone3D>("eccentric cone with discs across no axis",
                        [](const Place& at, HextEcone3D& c) {
                            c.startPoint = at.at(0, 0, 0), c.endPoint = at.at(100, 0, 500), c.vect = at.along(1, 1, 1);
                            c.startDiameter = 300, c.endDiameter = 100;
                        }),
    source<HextWedge3D>("wedge of negative size",
                        [](const Place& at, HextWedge3D& w) {
                            w.point1 = at.at(400, 30, 0), w.point2 = at.at(0, 0, 0), w.point3 = at.at(50, 300, 0);
                            w.wedgeSize = -250;
                        }),
    source<HextSpolygon>("extruded outline with a hole",
                         [](const Place& at, HextSpolygon& s) {
                             s.origin = at.at(70, 80, 90), s.xAxis = at.along(0, 1, 0), s.yAxis = at.along(0, 0, 1);
                             s.direction = at.along(1, 0, 0), s.height = 150, s.outline = rounded;
                             s.holes = std::vector<HextVertexList>{roundHole};
                         }),
    source<HextSpolygon>("extruded outline against its third axis",
                         [](const Place& at, HextSpolygon& s) {
                             s.origin = at.at(70, 80, 90), s.xAxis = at.along(1, 0, 0), s.yAxis = at.along(0, 1, 0);
                             s.direction = at.along(0, 0, -3), s.height = 150, s.outline = rounded;
                         }),
    source<HextOval3D>("spherical head", [](const Place& at, HextOval3D& o) { head(at, o, 500, 300); }),

    // Conversions that are approximate, with what they are off; EquipBounds has more.
    source<HextScylinder3D>("sloped cylinder with a normal into the solid",
                            [](const Place& at, HextScylinder3D& c) {
                                c.startPoint = at.at(0, 0, 800), c.endPoint = at.at(0, 0, 0), c.diameter = 200;
                                c.vect = at.along(1, 0, -6);
                            },
                            {1, 655.45}),
    source<HextOval3D>("elliptical head, in 32 segments", [](const Place& at, HextOval3D& o) { head(at, o, 250, 500); },
                       {0.99943, 0.14}),
    source<HextSqucir3D>("rectangle to smaller round",
                         [](const Place& at, HextSqucir3D& s) { transition(at, s, 400, 150); }, {0.79299}),
    source<HextSqucir3D>(
        "rectangle to smaller round below it",
        [](const Place& at, HextSqucir3D& s) { transition(at, s, 400, 150), s.topCenter = at.at(100, 50, -600); },
        {0.79299}),
};

// The world itself, the world turned about, and frames of any direction.
std::vector<Place> placements() {
    const HxGeVector3D x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1};
    std::vector<Place> all = {
        Place(), {{100, 0, 0}, y, z, x}, {{0, -100, 5}, -x, z, y}, {{0, 0, 0}, y, -x, z}, {{0, 0, 0}, x, -y, -z}};
    std::mt19937 random(7);
    const auto number = [&] { return random() / 2147483648.0 - 1; };
    const auto any = [&] { return HxGeVector3D(number(), number(), number()); };
    for (int i = 0; i < 10; ++i) {
        const HxGeVector3D first = any().normal();
        const HxGeVector3D third = first.crossProduct(any()).normal();
        all.push_back({HxGePoint3D() + any() * 20000, first, third.crossProduct(first), third});
    }
    return all;
}

// What the macros approximate or mirror stands above and below; they have no bend of a negative angle.
bool isExact(const std::string& name) {
    const char* others[] = {"sphere",  "head",   "square to round", "reducing",
                            "sheared", "saddle", "backward",        "arcs and holes"};
    return std::none_of(std::begin(others), std::end(others),
                        [&](const char* other) { return name.find(other) != std::string::npos; });
}

// The shapes of the shared table that are exact, and those above.
std::vector<Source> allSources() {
    std::vector<Source> all = sources;
    for (const ShapeCase& shape : shapeCases()) {
        if (isExact(shape.name)) {
            all.push_back({shape.name, {}, [&shape](const Place& at) { return shape.make(at, 600); }});
        }
    }
    return all;
}

class EquipSolids : public EquipTest {};

}  // namespace

TEST_F(EquipSolids, MeanWhatTheirSourcesMean) {
    for (const Source& source : allSources()) {
        SCOPED_TRACE(source.name);
        double reach = 0;
        for (const Place& placement : placements()) {
            const auto primitive = source.at(placement);
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
