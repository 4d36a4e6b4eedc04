// Sizes, points and directions that make no solid: a reason each time, never a crash, never a mesh with a hole in it.
#include "mesh_of.h"
#include "shapes/cases.h"
#include "shapes/numbers.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

// Changes a good primitive into a bad one.
struct BadCase {
    const char* shape;  // name in shapeCases()
    const char* what;
    void (*spoil)(HextPrimary3D& primitive);
    Tl::ErrorStatus status;
};

template <typename Class>
Class& as(HextPrimary3D& p) {
    return static_cast<Class&>(p);
}

const BadCase badCases[] = {
    {"box", "a length of 0", [](auto& p) { as<HextBox3D>(p).yLength = 0; }, Tl::eZeroSize},
    {"box", "a negative length", [](auto& p) { as<HextBox3D>(p).xLength = -5; }, Tl::eZeroSize},
    {"box", "a NaN length", [](auto& p) { as<HextBox3D>(p).zLength = nan; }, Tl::eNotFinite},
    {"box", "an infinite point", [](auto& p) { as<HextBox3D>(p).point.x = infinite; }, Tl::eNotFinite},
    {"box", "a zero axis", [](auto& p) { as<HextBox3D>(p).xAxis = {}; }, Tl::eZeroDirection},
    {"box", "parallel axes", [](auto& p) { as<HextBox3D>(p).xAxis = as<HextBox3D>(p).yAxis * -2; }, Tl::eZeroDirection},
    {"box", "beyond the limit", [](auto& p) { as<HextBox3D>(p).point.y = 2e9; }, Tl::eTooLarge},
    {"cylinder", "coincident ends", [](auto& p) { as<HextCylinder3D>(p).endPoint = as<HextCylinder3D>(p).startPoint; },
     Tl::eCoincidentPoints},
    {"cylinder", "a diameter of 0", [](auto& p) { as<HextCylinder3D>(p).diameter = 0; }, Tl::eZeroSize},
    {"cylinder", "a negative diameter", [](auto& p) { as<HextCylinder3D>(p).diameter = -1; }, Tl::eZeroSize},
    {"sheared cylinder", "a cut along the axis",
     [](auto& p) {
         auto& c = as<HextScylinder3D>(p);
         c.vect = (c.endPoint - c.startPoint).perpVector();
     },
     Tl::eSelfCutting},
    {"sheared cylinder", "a zero cut", [](auto& p) { as<HextScylinder3D>(p).vect = {}; }, Tl::eZeroDirection},
    {"cone", "no diameters", [](auto& p) { as<HextConcone3D>(p).startDiameter = as<HextConcone3D>(p).endDiameter = 0; },
     Tl::eZeroSize},
    {"cone", "a negative end", [](auto& p) { as<HextConcone3D>(p).endDiameter = -1; }, Tl::eZeroSize},
    {"eccentric cone", "no eccentricity", [](auto& p) { as<HextEcone3D>(p).vect = {}; }, Tl::eZeroDirection},
    {"frustum", "no height", [](auto& p) { as<HextSqucone3D>(p).height = 0; }, Tl::eZeroSize},
    {"frustum", "no width anywhere", [](auto& p) { as<HextSqucone3D>(p).topX = as<HextSqucone3D>(p).bottomX = 0; },
     Tl::eZeroSize},
    {"frustum", "a shift along nothing", [](auto& p) { as<HextSqucone3D>(p).offsetDirection = {}; },
     Tl::eZeroDirection},
    {"wedge", "points on one line", [](auto& p) { as<HextWedge3D>(p).point1 = as<HextWedge3D>(p).point2; },
     Tl::eCoincidentPoints},
    {"wedge", "no size", [](auto& p) { as<HextWedge3D>(p).wedgeSize = 0; }, Tl::eZeroSize},
    {"prism of 6 sides", "two sides", [](auto& p) { as<HextPrism3D>(p).sides = 2; }, Tl::eBadSides},
    {"prism of 6 sides", "101 sides", [](auto& p) { as<HextPrism3D>(p).sides = 101; }, Tl::eBadSides},
    {"prism of 6 sides", "a vertex on the axis",
     [](auto& p) { as<HextPrism3D>(p).vertexPoint = as<HextPrism3D>(p).startPoint; }, Tl::eCoincidentPoints},
    {"sphere", "no radius", [](auto& p) { as<HextSphere3D>(p).radius = 0; }, Tl::eZeroSize},
    {"head, flat", "no base", [](auto& p) { as<HextOval3D>(p).baseRadius = 0; }, Tl::eZeroSize},
    {"head, flat", "no direction", [](auto& p) { as<HextOval3D>(p).vect = {}; }, Tl::eZeroDirection},
    {"torus, short way", "no bend radius", [](auto& p) { as<HextTorus3D>(p).center = as<HextTorus3D>(p).startPoint; },
     Tl::eCoincidentPoints},
    {"torus, short way", "a tube wider than the bend", [](auto& p) { as<HextTorus3D>(p).startDiameter = 500; },
     Tl::eSelfCutting},
    {"torus, short way", "an unknown arc kind", [](auto& p) { as<HextTorus3D>(p).arcKind = 9; }, Tl::eInvalidInput},
    {"torus, full", "no axis", [](auto& p) { as<HextTorus3D>(p).thirdField = {}; }, Tl::eZeroDirection},
    {"torus, by radians", "no angle", [](auto& p) { as<HextTorus3D>(p).angle = 0; }, Tl::eBadAngle},
    {"torus, by radians", "a NaN angle", [](auto& p) { as<HextTorus3D>(p).angle = nan; }, Tl::eNotFinite},
    {"square torus, short way", "no section",
     [](auto& p) { as<HextSqutorus3D>(p).startWidth = as<HextSqutorus3D>(p).endWidth = 0; }, Tl::eZeroSize},
    {"square torus, by radians", "no axis", [](auto& p) { as<HextSqutorus3D>(p).normal = {}; }, Tl::eZeroDirection},
    {"saddle with ledges", "a trough through the block", [](auto& p) { as<HextSaddle3D>(p).sectionHeight = 30; },
     Tl::eSelfCutting},
    {"saddle with ledges", "parallel axes", [](auto& p) { as<HextSaddle3D>(p).sectionAxis = as<HextSaddle3D>(p).axis; },
     Tl::eZeroDirection},
    {"square to round", "a top in the base",
     [](auto& p) { as<HextSqucir3D>(p).topCenter = as<HextSqucir3D>(p).basePoint; }, Tl::eZeroSize},
    {"extrusion of an L, clockwise", "no outline", [](auto& p) { as<HextSpolygon>(p).outline = {}; }, Tl::eNoOutline},
    {"extrusion of an L, clockwise", "an empty outline",
     [](auto& p) { as<HextSpolygon>(p).outline = HextVertexList(); }, Tl::eNoOutline},
    {"extrusion of an L, clockwise", "one point",
     [](auto& p) {
         as<HextSpolygon>(p).outline = HextVertexList{{1, {1, 2, 3}}};
     },
     Tl::eNoOutline},
    {"extrusion of an L, clockwise", "points at one place",
     [](auto& p) {
         as<HextSpolygon>(p).outline = HextVertexList(50, {1, {1, 2, 3}});
     },
     Tl::eNoOutline},
    {"extrusion of an L, clockwise", "points on one line",
     [](auto& p) {
         as<HextSpolygon>(p).outline = HextVertexList{{1, {0, 0, 0}}, {1, {1, 1, 0}}, {4, {5, 5, 0}}};
     },
     Tl::eNoOutline},
    {"extrusion of an L, clockwise", "an even figure of eight",
     [](auto& p) {
         as<HextSpolygon>(p).outline = HextVertexList{{1, {0, 0, 0}}, {1, {1, 1, 0}}, {1, {1, 0, 0}}, {4, {0, 1, 0}}};
     },
     Tl::eBadOutline},
    {"extrusion of an L, clockwise", "a circle of equal points",
     [](auto& p) {
         as<HextSpolygon>(p).outline = HextVertexList(3, {6, {1, 2, 0}});
     },
     Tl::eCoincidentPoints},
    {"extrusion of an L, clockwise", "a NaN vertex", [](auto& p) { (*as<HextSpolygon>(p).outline)[2].point.y = nan; },
     Tl::eNotFinite},
    {"extrusion of an L, clockwise", "a million vertices and one",
     [](auto& p) {
         as<HextSpolygon>(p).outline = HextVertexList(1'000'001, {1, {1, 2, 0}});
     },
     Tl::eTooManyVertices},
    {"extrusion of an L, clockwise", "no height", [](auto& p) { as<HextSpolygon>(p).height = 0; }, Tl::eZeroSize},
    {"extrusion with arcs and holes", "an infinite hole",
     [](auto& p) { (*as<HextSpolygon>(p).holes)[1][0].point.x = infinite; }, Tl::eNotFinite},
    {"revolved ring, whole", "no profile", [](auto& p) { as<HextRevolve>(p).profile = {}; }, Tl::eNoOutline},
    {"revolved ring, whole", "no axis", [](auto& p) { as<HextRevolve>(p).axis = {}; }, Tl::eZeroDirection},
    {"revolved ring, whole", "no angle", [](auto& p) { as<HextRevolve>(p).angle = 0; }, Tl::eBadAngle},
    {"revolved ring, whole", "a profile across the axis", [](auto& p) { as<HextRevolve>(p).center.x += 40; },
     Tl::eProfileCrossesAxis},
};

const ShapeCase& shapeNamed(const std::string& name) {
    for (const ShapeCase& shape : shapeCases()) {
        if (shape.name == name) {
            return shape;
        }
    }
    throw std::runtime_error("no shape " + name);
}

TEST(BadInput, GivesItsReason) {
    for (const BadCase& bad : badCases) {
        const std::unique_ptr<HextPrimary3D> primitive = shapeNamed(bad.shape).make(Place(), 100);
        ASSERT_EQ(meshOf(*primitive).solid, Tl::eOk) << bad.shape;
        bad.spoil(*primitive);
        const Tl::ErrorStatus status = meshOf(*primitive).solid;
        EXPECT_EQ(status, bad.status) << bad.shape << ", " << bad.what << ": " << tlErrorText(status);
        EXPECT_STRNE(tlErrorText(status), "") << bad.what;
        EXPECT_STRNE(tlErrorText(status), "unknown status") << bad.what;
    }
}

class OtherSolid final : public HextPrimary3D {
public:
    OtherSolid() : HextPrimary3D(HextPrimary3D::classRecord) {}
    HextPrimary* clone() const override { return new OtherSolid; }
};

TEST(BadInput, AnUnknownClassHasNoSolid) {
    EXPECT_EQ(meshOf(OtherSolid()).solid, Tl::eUnknownClass);
    EXPECT_EQ(transHextPrimary3D(nullptr), nullptr);
    EXPECT_EQ(transHextPrimary(nullptr), nullptr);
}

TEST(BadInput, TooManyTrianglesAreRefused) {
    // A sphere of 1000 km would take 5 thousand million triangles.
    HextSphere3D sphere;
    sphere.radius = 1e9;
    EXPECT_EQ(meshOf(sphere).status, tolmar::MeshStatus::TooManyTriangles);
    HextTorus3D torus;
    torus.startPoint = {1e8, 0, 0};
    torus.thirdField = {0, 0, 1};
    torus.arcKind = 2;
    torus.startDiameter = torus.endDiameter = 1e8;
    EXPECT_EQ(meshOf(torus).status, tolmar::MeshStatus::TooManyTriangles);
    HextCylinder3D cylinder;
    cylinder.endPoint = {0, 0, 10};
    cylinder.diameter = 100;
    EXPECT_EQ(meshOf(cylinder, 1e-16).status, tolmar::MeshStatus::TooManyTriangles);
    HextOval3D head;
    head.axialRadius = 100;
    head.radialRadius = head.baseRadius = 200;
    EXPECT_EQ(meshOf(head, 1e-16).status, tolmar::MeshStatus::TooManyTriangles);
    // A disc of that size takes few enough.
    cylinder.diameter = 1e9;
    EXPECT_EQ(meshOf(cylinder).status, tolmar::MeshStatus::Ok);
}

// Squares of such lengths are 0.
TEST(BadInput, DirectionsOfAnyLengthCount) {
    constexpr double tiny = 1e-200;
    const std::pair<const char*, void (*)(HextPrimary3D&)> cases[] = {
        {"box", [](auto& p) { as<HextBox3D>(p).xAxis *= tiny, as<HextBox3D>(p).yAxis *= tiny; }},
        {"sheared cylinder", [](auto& p) { as<HextScylinder3D>(p).vect *= tiny; }},
        {"eccentric cone", [](auto& p) { as<HextEcone3D>(p).vect *= tiny; }},
        {"frustum", [](auto& p) { as<HextSqucone3D>(p).offsetDirection *= tiny, as<HextSqucone3D>(p).zAxis *= tiny; }},
        {"head, flat", [](auto& p) { as<HextOval3D>(p).vect *= tiny; }},
        {"square to round", [](auto& p) { as<HextSqucir3D>(p).baseNormal *= tiny; }},
        {"extrusion of an L, clockwise",
         [](auto& p) {
             auto& e = as<HextSpolygon>(p);
             e.xAxis *= tiny, e.yAxis *= tiny, e.direction *= tiny;
         }},
        {"revolved ring, part", [](auto& p) { as<HextRevolve>(p).axis *= tiny; }},
    };
    for (const auto& [name, shrink] : cases) {
        const std::unique_ptr<HextPrimary3D> primitive = shapeNamed(name).make(Place(), 100);
        const double volume = volumeOf(meshOf(*primitive).mesh);
        shrink(*primitive);
        const Meshed meshed = meshOf(*primitive);
        ASSERT_EQ(meshed.solid, Tl::eOk) << name;
        EXPECT_NEAR(volumeOf(meshed.mesh), volume, 1e-9 * volume) << name;
    }
}

// Null for a solid without one.
HextVertexList* outlineOf(HextPrimary3D& primitive) {
    if (HextSpolygon* extrusion = HextSpolygon::cast(&primitive)) {
        return extrusion->outline.get();
    }
    HextRevolve* revolve = HextRevolve::cast(&primitive);
    return revolve != nullptr ? revolve->profile.get() : nullptr;
}

// Throws strange numbers at every class: whatever comes out is closed.
TEST(BadInput, StrangeNumbersNeverGiveABrokenMesh) {
    const double strange[] = {nan,  infinite, -infinite, 0, -0.0, -1,  1e-300, 1e300, 1e-7,
                              1e-5, 1e-3,     0.1,       1, 10,   1e3, 3.14,   -1e3,  6.2831853071795862,
                              1e6,  1e9,      -1e9};
    constexpr std::size_t small = 18;
    // Rounds of small numbers at the usual tolerance take turns with rounds of all at one that is coarse enough.
    std::size_t range = small;
    std::mt19937 random(11);
    const auto number = [&] { return strange[random() % range]; };
    int closed = 0;
    for (int round = 0; round < 300; ++round) {
        const bool large = round % 2 != 0;
        range = large ? std::size(strange) : small;
        for (const ShapeCase& shape : shapeCases()) {
            const std::unique_ptr<HextPrimary3D> p = shape.make(Place(), 100);
            const std::vector<double*> numbers = numbersOf(*p);
            for (std::uint32_t left = 1 + random() % 3; left > 0; --left) {
                *numbers[random() % numbers.size()] = number();
            }
            if (HextVertexList* outline = outlineOf(*p)) {
                (*outline)[random() % outline->size()].kind = static_cast<std::int16_t>(random() % 9);
            }
            const Meshed meshed = meshOf(*p, large ? 1e5 : 1.0);
            if (meshed.status == tolmar::MeshStatus::Ok) {
                EXPECT_TRUE(std::isfinite(areaOf(meshed.mesh)) && isRunBothWays(meshed.mesh))
                    << shape.name << ", round " << round;
                ++closed;
            }
        }
    }
    EXPECT_GT(closed, 1000);
}

}  // namespace
