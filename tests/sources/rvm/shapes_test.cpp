// Every kind of primitive: what it becomes, how large it is and where it stands.
#include "sources/rvm/measure.h"
#include "sources/rvm/rvm_writer.h"
#include "sources/rvm/told_review.h"

#include <cmath>

namespace {

constexpr double pi = 3.14159265358979;

// The primitives of a file with one group of one primitive.
struct One {
    std::unique_ptr<ToldReview> told;
    std::vector<const HextPrimary*> primitives;

    explicit One(const std::string& file) : told(std::make_unique<ToldReview>(file)) {
        EXPECT_EQ(told->refusal, "");
        for (const ToldObject& object : told->builder.objects) {
            for (const auto& primitive : object.primitives) {
                primitives.push_back(primitive.get());
            }
        }
    }
    Measured measured() const {
        EXPECT_EQ(primitives.size(), 1U) << told->findings();
        return primitives.empty() ? Measured() : measure(*primitives.front());
    }
};

One one(std::uint32_t kind, const std::vector<double>& parameters, const Frame& frame = {},
        std::string_view role = "PRIM", const std::vector<double>& box = std::vector<double>(6, 0.0)) {
    return One(RvmWriter().group("/G").primitive(kind, parameters, frame, role, box).endGroup().finish());
}

// A frame whose axes have these lengths; a negative one mirrors.
Frame scaled(double x, double y, double z) {
    Frame frame = at(1, 2, 3);
    frame.x = {0.001 * x, 0, 0};
    frame.y = {0, 0.001 * y, 0};
    frame.z = {0, 0, 0.001 * z};
    return frame;
}

struct Expected {
    const char* what;
    std::uint32_t kind;
    std::vector<double> parameters;
    const char* className;
    double volume;
    HxGePoint3D low;
    HxGePoint3D high;
};

void expectNear(const HxGePoint3D& a, const HxGePoint3D& b, double tolerance, const char* what) {
    EXPECT_LT(a.distanceTo(b), tolerance) << what << ": " << a.x << " " << a.y << " " << a.z;
}

const std::vector<Expected> cases = {
    {"box", 2, {10, 20, 30}, "HextBox3D", 6000, {-5, -10, -15}, {5, 10, 15}},
    {"cylinder", 8, {10, 50}, "HextCylinder3D", pi * 100 * 50, {-10, -10, -25}, {10, 10, 25}},
    {"sphere", 9, {20}, "HextSphere3D", 4.0 / 3 * pi * 1000, {-10, -10, -10}, {10, 10, 10}},
    {"frustum with offset",
     1,
     {40, 40, 20, 20, 10, 0, 30},
     "HextSqucone3D",
     30 * (1600 + 400 + 800) / 3.0,
     {-25, -20, -15},
     {15, 20, 15}},
    {"wedge of a zero side",
     1,
     {40, 20, 0, 20, 0, 0, 30},
     "HextSqucone3D",
     40 * 30 / 2.0 * 20,
     {-20, -10, -15},
     {20, 10, 15}},
    {"pyramid with a point",
     1,
     {40, 40, 0, 0, 0, 0, 30},
     "HextSqucone3D",
     1600 * 30 / 3.0,
     {-20, -20, -15},
     {20, 20, 15}},
    {"rectangular torus",
     3,
     {50, 70, 10, pi / 2},
     "HextSqutorus3D",
     pi / 4 * (4900 - 2500) * 10,
     {0, 0, -5},
     {70, 70, 5}},
    {"rectangular torus, three quarters",
     3,
     {50, 70, 10, 3 * pi / 2},
     "HextSqutorus3D",
     3 * pi / 4 * (4900 - 2500) * 10,
     {-70, -70, -5},
     {70, 70, 5}},
    {"rectangular torus from its centre, whole",
     3,
     {0, 70, 10, 2 * pi},
     "HextSqutorus3D",
     pi * 4900 * 10,
     {-70, -70, -5},
     {70, 70, 5}},
    {"torus", 4, {50, 10, pi / 2}, "HextTorus3D", pi * 100 * 50 * pi / 2, {0, 0, -10}, {60, 60, 10}},
    {"half a torus", 4, {50, 10, pi}, "HextTorus3D", pi * 100 * 50 * pi, {-60, 0, -10}, {60, 60, 10}},
    {"whole torus", 4, {50, 10, 2 * pi}, "HextTorus3D", pi * 100 * 50 * 2 * pi, {-60, -60, -10}, {60, 60, 10}},
    {"elliptical dish", 5, {40, 10}, "HextOval3D", 2.0 / 3 * pi * 1600 * 10, {-40, -40, 0}, {40, 40, 10}},
    {"spherical dish", 6, {40, 10}, "HextOval3D", pi * 10 * (3 * 1600 + 100) / 6, {-40, -40, 0}, {40, 40, 10}},
    {"half a sphere", 6, {40, 40}, "HextOval3D", 2.0 / 3 * pi * 64000, {-40, -40, 0}, {40, 40, 40}},
    {"spherical dish above half",
     6,
     {30, 90},
     "HextRevolve",
     pi * 90 * (3 * 900 + 8100) / 6,
     {-50, -50, 0},
     {50, 50, 90}},
    {"snout",
     7,
     {20, 10, 30, 0, 0, 0, 0, 0, 0},
     "HextConcone3D",
     pi * 30 * (400 + 200 + 100) / 3,
     {-20, -20, -15},
     {20, 20, 15}},
    {"cone", 7, {0, 20, 30, 0, 0, 0, 0, 0, 0}, "HextConcone3D", pi * 30 * 400 / 3, {-20, -20, -15}, {20, 20, 15}},
    {"snout of equal radii",
     7,
     {20, 20, 30, 0, 0, 0, 0, 0, 0},
     "HextCylinder3D",
     pi * 400 * 30,
     {-20, -20, -15},
     {20, 20, 15}},
    {"eccentric snout",
     7,
     {20, 10, 30, 10, 0, 0, 0, 0, 0},
     "HextEcone3D",
     pi * 30 * (400 + 200 + 100) / 3,
     {-25, -20, -15},
     {15, 20, 15}},
    // A sheared end keeps the volume: what it loses on one side it wins on the other.
    {"bottom sheared",
     7,
     {20, 20, 60, 0, 0, 0.3, 0, 0, 0},
     "HextScylinder3D",
     pi * 400 * 60,
     {-20, -20, -30 - 20 * std::tan(0.3)},
     {20, 20, 30}},
    {"top sheared",
     7,
     {20, 20, 60, 0, 0, 0, 0, 0, 0.3},
     "HextScylinder3D",
     pi * 400 * 60,
     {-20, -20, -30},
     {20, 20, 30 + 20 * std::tan(0.3)}},
    {"both ends sheared",
     7,
     {20, 20, 80, 0, 0, 0.3, 0, -0.2, 0.1},
     "HextPrimaryAcad",
     pi * 400 * 80,
     {-20, -20, -40 - 20 * std::tan(0.3)},
     {20, 20, 40 + 20 * std::hypot(std::tan(0.2), std::tan(0.1))}},
    {"torus wider than its bend",
     4,
     {10, 20, pi / 2},
     "HextPrimaryAcad",
     pi * 400 * 10 * pi / 2,
     {-10, -10, -20},
     {30, 30, 20}},
};

}  // namespace

TEST(RvmShapes, EveryKindKeepsItsSizeAndPlace) {
    for (const Expected& expected : cases) {
        SCOPED_TRACE(expected.what);
        const Measured here = one(expected.kind, expected.parameters, at(1, 2, 3)).measured();
        const HxGeVector3D shift(1000, 2000, 3000);
        EXPECT_EQ(here.className, expected.className);
        // Chords cost some of a round volume: a mesh of ours stands off by a tenth of a millimetre, here of radius 20.
        const bool isMesh = here.className == "HextPrimaryAcad";
        EXPECT_NEAR(here.volume, expected.volume, expected.volume * (isMesh ? 0.03 : 0.002));
        const double tolerance = isMesh ? 0.3 : 0.05;
        if (expected.what != std::string("torus wider than its bend")) {
            expectNear(here.low, expected.low + shift, tolerance, "low");
            expectNear(here.high, expected.high + shift, tolerance, "high");
        }
    }
}

TEST(RvmShapes, MirroredAndUnevenAxesGiveTheSameSolidScaled) {
    const std::vector<std::array<double, 3>> scales = {{-1, 1, 1}, {1, -1, 1}, {1, 1, -1}, {-1, -1, -1},
                                                       {2, 2, 2},  {2, 2, 3},  {1, 2, 3},  {-1, 2, -3}};
    for (const Expected& expected : cases) {
        for (const auto& scale : scales) {
            SCOPED_TRACE(std::string(expected.what) + " " + std::to_string(scale[0]) + " " + std::to_string(scale[1]) +
                         " " + std::to_string(scale[2]));
            const Measured here =
                one(expected.kind, expected.parameters, scaled(scale[0], scale[1], scale[2])).measured();
            const double volume = expected.volume * std::fabs(scale[0] * scale[1] * scale[2]);
            EXPECT_NEAR(here.volume, volume, volume * (here.className == "HextPrimaryAcad" ? 0.03 : 0.002));
            if (expected.what == std::string("torus wider than its bend")) {
                continue;
            }
            const auto corner = [&](const HxGePoint3D& p, const HxGePoint3D& q, bool low) {
                const auto side = [&](double a, double b, double s) {
                    return low ? std::min(a * s, b * s) : std::max(a * s, b * s);
                };
                return HxGePoint3D(1000 + side(p.x, q.x, scale[0]), 2000 + side(p.y, q.y, scale[1]),
                                   3000 + side(p.z, q.z, scale[2]));
            };
            expectNear(here.low, corner(expected.low, expected.high, true), 0.4, "low");
            expectNear(here.high, corner(expected.low, expected.high, false), 0.4, "high");
        }
    }
}

TEST(RvmShapes, LeaningAxesBecomeAMeshOfTheSameVolume) {
    Frame leaning;
    leaning.y = {0.0005, 0.001, 0};
    const Measured box = one(2, {10, 20, 30}, leaning).measured();
    EXPECT_EQ(box.className, "HextPrimaryAcad");
    EXPECT_NEAR(box.volume, 6000, 0.01);
    EXPECT_NEAR(box.high.x, 10, 1e-3);
}

TEST(RvmShapes, AMeshStandsOffByATenthOfAMillimetreAtMost) {
    const Measured small = one(8, {1000, 50}, scaled(1, 2, 1)).measured();
    EXPECT_EQ(small.className, "HextPrimaryAcad");
    // The area of a polygon whose chords stand off by a tenth of the larger radius, 2000 by then.
    EXPECT_GT(small.volume / 50, pi * 1000 * 2000 * (1 - 0.15 / 2000));
    EXPECT_LT(small.volume / 50, pi * 1000 * 2000);
}

TEST(RvmShapes, FlatThingsStayFlat) {
    const Measured disc = one(8, {10, 0}, at(1, 0, 0)).measured();
    EXPECT_EQ(disc.className, "HextPrimaryAcad");
    EXPECT_NEAR(disc.area, pi * 100, 4);
    EXPECT_EQ(disc.low.z, disc.high.z);
    EXPECT_NEAR(one(2, {10, 20, 0}).measured().area, 200, 1e-6);
    EXPECT_NEAR(one(5, {10, 0}).measured().area, pi * 100, 4);
    EXPECT_NEAR(one(1, {10, 0, 20, 0, 0, 0, 30}).measured().area, 2 * 15 * 30, 1e-6) << "a flat trapezium, both sides";
}

TEST(RvmShapes, WhatHasNoExtentIsToldAndLeftOut) {
    const struct {
        std::uint32_t kind;
        std::vector<double> parameters;
        const char* finding;
    } rows[] = {
        {8, {0, 10}, "rvm.zero-size 1"},      {2, {10, 0, 0}, "rvm.zero-size 1"},
        {9, {0}, "rvm.zero-size 1"},          {10, {5, 0}, "rvm.zero-size 1"},
        {8, {-1, 10}, "rvm.negative-size 1"}, {4, {50, 10, 0}, "rvm.bad-angle 1"},
        {8, {NAN, 10}, "rvm.not-finite 1"},   {7, {5, 5, 9, 0, 0, 1.5708, 0, 0, 0}, "rvm.bad-angle 1"},
    };
    for (const auto& row : rows) {
        const One told = one(row.kind, row.parameters);
        EXPECT_EQ(told.told->findings(), row.finding) << row.kind;
        EXPECT_TRUE(told.primitives.empty());
        EXPECT_NE(told.told->firstPlace(std::string(row.finding).substr(0, std::string(row.finding).find(' ')))
                      .find("review.rvm: offset "),
                  std::string::npos);
    }
    Frame singular;
    singular.x = {0, 0, 0};
    EXPECT_EQ(one(2, {1, 1, 1}, singular).told->findings(), "rvm.singular-matrix 1");
    EXPECT_EQ(one(2, {1, 1, 1}, at(INFINITY, 0, 0)).told->findings(), "rvm.not-finite 1");
    EXPECT_EQ(one(12, {1, 1}).told->findings(), "rvm.kind-unknown 1");
}

TEST(RvmShapes, LinesRunAlongZAndMayHaveTheirLengthInTheBoxAlone) {
    for (const double length : {100.0, 0.0}) {
        const One told = one(10, {5, length}, at(1, 0, 0), "PRIM", {-5, -5, -50, 5, 5, 50});
        ASSERT_EQ(told.primitives.size(), 1U);
        const std::vector<HxGePoint3D> ends = lineEnds(*told.primitives.front());
        ASSERT_EQ(ends.size(), 2U);
        expectNear(ends[0], {1000, 0, -50}, 1e-9, "start");
        expectNear(ends[1], {1000, 0, 50}, 1e-9, "end");
    }
}

TEST(RvmShapes, FilesOfOurOwnHaveRadiiOfSpheresAndLinesAlongX) {
    const auto file = [](std::uint32_t kind, const std::vector<double>& parameters, const std::vector<double>& box) {
        return One(RvmWriter(2, std::string_view("ORNA ORNA\0  more", 16))
                       .group("WORLD")
                       .group("S")
                       .group("Z")
                       .group("M")
                       .group("O")
                       .primitive(kind, parameters, {}, "PRIM", box)
                       .endGroup()
                       .endGroup()
                       .endGroup()
                       .endGroup()
                       .endGroup()
                       .finish(false));
    };
    const std::vector<double> none(6, 0.0);
    EXPECT_NEAR(file(9, {10}, none).measured().high.x, 10, 1e-3) << "the default form has a radius";
    EXPECT_NEAR(file(9, {20}, {-10, -10, -10, 10, 10, 10}).measured().high.x, 10, 1e-3) << "with a box, a diameter";
    const One line = file(10, {5, 100}, none);
    ASSERT_EQ(line.primitives.size(), 1U);
    ASSERT_EQ(lineEnds(*line.primitives.front()).size(), 2U);
    EXPECT_EQ(lineEnds(*line.primitives.front())[1].x, 50);
}

TEST(RvmShapes, ObstructionsAndInsulationAreObstructionVolumes) {
    for (const char* role : {"OBST", "INSU"}) {
        const One told = one(8, {10, 50}, {}, role);
        ASSERT_EQ(told.primitives.size(), 1U);
        const auto* solid = HextPrimary3D::cast(told.primitives.front());
        EXPECT_STREQ(solid->getMaterial(), "hext_temp_material");
        EXPECT_EQ(told.told->builder.named("G").attribute("rvm.obstruction-transparency"), "25");
    }
    EXPECT_EQ(HextPrimary3D::cast(one(8, {10, 50}).primitives.front())->getMaterial(), nullptr);
}

TEST(RvmShapes, AThousandKilometresAwayAMillimetreIsKept) {
    Frame frame = at(0, 0, 0);
    frame.origin = {131072, 65536, 0.125};
    const Loop square = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    const One plate(RvmWriter().group("/G").facets({{square}}, frame).endGroup().finish());
    const Measured here = plate.measured();
    EXPECT_NEAR(here.area, 1, 1e-6);
    expectNear(here.low, {131072000, 65536000, 125}, 1e-6, "low");
}

namespace {

Measured facets(const std::vector<Polygon>& polygons) {
    return One(RvmWriter().group("/G").facets(polygons).endGroup().finish()).measured();
}

}  // namespace

TEST(RvmFacets, PolygonsOfAnyFormKeepTheirArea) {
    const Loop square = {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}};
    const Loop hole = {{2, 2, 0}, {8, 2, 0}, {8, 8, 0}, {2, 8, 0}};
    const Loop reversedHole(hole.rbegin(), hole.rend());
    const Loop arrow = {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {5, 2, 0}, {0, 10, 0}};
    Loop repeated;
    for (const auto& corner : square) {
        repeated.insert(repeated.end(), 3, corner);
    }
    Loop collinear = square;
    collinear.insert(collinear.begin() + 1, {5, 0, 0});
    const Loop bow = {{0, 0, 0}, {10, 10, 0}, {10, 0, 0}, {0, 10, 0}, {-20, 5, 0}};
    EXPECT_NEAR(facets({{square}}).area, 100, 1e-6);
    EXPECT_NEAR(facets({{square, hole}}).area, 64, 1e-6);
    EXPECT_NEAR(facets({{square, reversedHole}}).area, 64, 1e-6);
    EXPECT_NEAR(facets({{arrow}}).area, 60, 1e-6);
    EXPECT_NEAR(facets({{repeated}}).area, 100, 1e-6);
    EXPECT_NEAR(facets({{collinear}}).area, 100, 1e-6);
    EXPECT_NEAR(facets({{square, {}}, {}, {{{1, 1, 1}, {1, 1, 1}, {2, 2, 2}}}}).area, 100, 1e-6);
    EXPECT_GT(facets({{bow}}).area, 100);
}

TEST(RvmFacets, ATetrahedronIsClosedAndOutwardAlsoWhenMirrored) {
    const std::array<double, 3> o{0, 0, 0}, x{10, 0, 0}, y{0, 10, 0}, z{0, 0, 10};
    const std::vector<Polygon> faces = {{{o, y, x}}, {{o, x, z}}, {{o, z, y}}, {{x, y, z}}};
    EXPECT_NEAR(facets(faces).volume, 1000.0 / 6, 1e-6);
    Frame mirrored;
    mirrored.x = {-0.001, 0, 0};
    const Measured other = One(RvmWriter().group("/G").facets(faces, mirrored).endGroup().finish()).measured();
    EXPECT_NEAR(other.volume, 1000.0 / 6, 1e-6);
    EXPECT_NEAR(other.low.x, -10, 1e-6);
}

TEST(RvmFacets, WithoutAreaTheyAreTold) {
    const One told(RvmWriter().group("/G").facets({}).endGroup().finish());
    EXPECT_EQ(told.told->findings(), "rvm.empty-facets 1");
}

TEST(RvmFacets, CountsBeyondTheChunkAreRefusedAtOnce) {
    for (const int place : {0, 1, 2}) {
        RvmWriter writer;
        writer.group("/G");
        const std::size_t chunk = writer.size();
        writer.beginPrimitive(11, {}, "PRIM", std::vector<double>(6, 0.0));
        for (int i = 0; i < place; ++i) {
            writer.word(1);
        }
        writer.word(0xFFFFFFFF).close().endGroup();
        const ToldReview told(writer.finish());
        EXPECT_EQ(told.refusal.find("offset " + std::to_string(chunk)), 0U) << told.refusal;
        EXPECT_NE(told.refusal.find("4294967295"), std::string::npos);
    }
}
