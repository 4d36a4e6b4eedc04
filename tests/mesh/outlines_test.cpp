// Extruded and revolved outlines of every kind: with arcs, holes, touching and crossing parts, and very long ones.
#include "mesh_checker.h"
#include "mesh_of.h"

#include <chrono>
#include <cmath>
#include <random>

namespace {

constexpr double pi = tlGePi;
constexpr double height = 10;

HextVertexList polygon(const std::vector<std::array<double, 2>>& points) {
    HextVertexList list;
    for (const auto& [x, y] : points) {
        list.push_back({1, {x, y, 0}});
    }
    return list;
}

HextVertexList circle(double x, double y, double r) {
    return {{6, {x + r, y, 0}}, {6, {x, y + r, 0}}, {6, {x - r, y, 0}}};
}

HextSpolygon extruded(HextVertexList outline, std::vector<HextVertexList> holes = {}) {
    HextSpolygon e;
    e.height = height;
    e.outline = std::move(outline);
    e.holes = std::move(holes);
    return e;
}

double shoelace(const HextVertexList& list) {
    double twice = 0;
    for (std::size_t i = 0; i < list.size(); ++i) {
        const TlGePoint3d& a = list[i].point;
        const TlGePoint3d& b = list[(i + 1) % list.size()].point;
        twice += a.x * b.y - a.y * b.x;
    }
    return std::fabs(twice) / 2;
}

HextVertexList star(int n, double inner, double outer) {
    HextVertexList list;
    for (int i = 0; i < n; ++i) {
        const double r = i % 2 == 0 ? outer : inner;
        list.push_back({1, {r * std::cos(2 * pi * i / n), r * std::sin(2 * pi * i / n), 0}});
    }
    return list;
}

HextVertexList comb(int teeth, bool upright) {
    std::vector<std::array<double, 2>> points{{0, -5}};
    for (int i = 0; i < teeth; ++i) {
        points.push_back({2.0 * i + 1, 50});
        points.push_back({2.0 * i + 2, 0});
    }
    points.push_back({2.0 * teeth, -5});
    for (auto& [x, y] : points) {
        if (!upright) {
            std::swap(x, y);
        }
    }
    return polygon(points);
}

// A band that winds out, a turn a unit, 0.4 wide. Its steps are so short that no chord reaches the next turn.
HextVertexList spiral(int n) {
    std::vector<double> angles{2 * pi};
    for (int i = 1; i < n; ++i) {
        angles.push_back(angles.back() + std::sqrt(0.6 / (angles.back() / (2 * pi))));
    }
    HextVertexList list;
    for (int i = 0; i < 2 * n; ++i) {
        const bool back = i >= n;
        const double angle = angles[static_cast<std::size_t>(back ? 2 * n - 1 - i : i)];
        const double r = angle / (2 * pi) + (back ? 0.4 : 0);
        list.push_back({1, {r * std::cos(angle), r * std::sin(angle), 0}});
    }
    return list;
}

TEST(Outlines, SimpleOnesAreTriangulatedExactly) {
    const std::vector<HextVertexList> outlines{
        star(5, 2, 5),
        star(64, 1, 100),
        star(1001, 50, 51),
        comb(1, true),
        comb(40, true),
        comb(40, false),
        spiral(200),
        // Many points at one height, and a staircase.
        polygon({{0, 0}, {1, 0}, {1, -1}, {2, -1}, {2, 0}, {3, 0}, {3, -1}, {4, -1}, {4, 0}, {5, 0}, {5, 3}, {0, 3}}),
        polygon({{0, 0}, {3, 0}, {3, 1}, {2, 1}, {2, 2}, {1, 2}, {1, 3}, {0, 3}}),
    };
    for (const HextVertexList& outline : outlines) {
        for (const double turn : {0.0, 0.4, 2.0}) {
            SCOPED_TRACE(std::to_string(outline.size()) + " points turned by " + std::to_string(turn));
            HextVertexList turned = outline;
            for (HextVertex& v : turned) {
                v.point = v.point.rotatedBy(turn, {0, 0, 1}, {7, 7, 0});
            }
            const Meshed meshed = meshOf(extruded(turned));
            ASSERT_TRUE(isManifold(meshed.mesh));
            EXPECT_EQ(meshed.mesh.points.size(), 2 * outline.size());
            EXPECT_NEAR(volumeOf(meshed.mesh), shoelace(outline) * height, 1e-9 * shoelace(outline) * height);
        }
    }
}

TEST(Outlines, RandomOnesWithHolesAreTriangulatedExactly) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> unit(0, 1);
    for (int round = 0; round < 200; ++round) {
        // Outline and holes are star-shaped about cells of a grid.
        const auto blob = [&](double x, double y, double least, double most) {
            HextVertexList list;
            const int n = 3 + int(unit(random) * 30);
            for (int i = 0; i < n; ++i) {
                const double r = least + (most - least) * unit(random);
                list.push_back({1, {x + r * std::cos(2 * pi * i / n), y + r * std::sin(2 * pi * i / n), 0}});
            }
            return list;
        };
        HextVertexList outline = blob(0, 0, 100, 200);
        double area = shoelace(outline);
        std::vector<HextVertexList> holes;
        for (int cell = 0; cell < 9 && outline.size() > 8; ++cell) {
            holes.push_back(blob((cell % 3 - 1) * 30, (cell / 3 - 1) * 30, 2, 14));
            area -= shoelace(holes.back());
        }
        const Meshed meshed = meshOf(extruded(outline, holes));
        ASSERT_TRUE(isManifold(meshed.mesh)) << "round " << round;
        EXPECT_NEAR(volumeOf(meshed.mesh), area * height, 1e-9 * area * height) << "round " << round;
    }
}

TEST(Outlines, NeedlessPointsAreLeftOut) {
    // A square with points amid its sides, repeated points, a spike, and its first point once more at the end.
    const HextVertexList list = polygon(
        {{0, 0}, {3, 0}, {3, 0}, {7, 0}, {10, 0}, {10, 10}, {10, 14}, {10, 10}, {5, 10}, {0, 10}, {0, 4}, {0, 0}});
    const Meshed meshed = meshOf(extruded(list));
    ASSERT_TRUE(isManifold(meshed.mesh));
    EXPECT_EQ(meshed.mesh.triangles.size(), 12U);
    EXPECT_DOUBLE_EQ(volumeOf(meshed.mesh), 1000);
}

TEST(Outlines, ArcsOfOneChordStillEncloseSomething) {
    // A lens of two arcs, each of them less than the tolerance high.
    const HextVertexList lens{{2, {40, 50, 0}}, {3, {50, 49.2, 0}}, {5, {60, 50, 0}}, {3, {50, 50.8, 0}}};
    const double radius = (100 + 0.64) / 1.6;
    const double half = std::asin(10 / radius);
    const double area = radius * radius * (2 * half - std::sin(2 * half));
    const Meshed alone = meshOf(extruded(lens));
    ASSERT_TRUE(isManifold(alone.mesh));
    EXPECT_NEAR(volumeOf(alone.mesh), area * height, 0.3 * area * height);
    const Meshed hole = meshOf(extruded(polygon({{0, 0}, {100, 0}, {100, 100}, {0, 100}}), {lens}));
    ASSERT_TRUE(isManifold(hole.mesh));
    EXPECT_NEAR(volumeOf(hole.mesh), (1e4 - area) * height, 0.3 * area * height);
}

TEST(Outlines, WallsThinnerThanTheToleranceStayWhole) {
    const double r = 1000;
    for (const double wall : {0.3, 0.01}) {
        const double inner = r - wall;
        const Meshed ring = meshOf(extruded(circle(0, 0, r), {circle(0, 0, inner)}));
        ASSERT_TRUE(isManifold(ring.mesh)) << wall;
        const double area = pi * (r * r - inner * inner);
        // The chords are fine enough to keep the wall: half of its volume may be lost, not all.
        EXPECT_NEAR(volumeOf(ring.mesh), area * height, 0.5 * area * height) << wall;
        const Meshed eccentric = meshOf(extruded(circle(0, 0, r), {circle(wall / 2, 0, r - wall)}));
        EXPECT_TRUE(isManifold(eccentric.mesh)) << wall;
    }
    // A sickle between two arcs.
    HextVertexList sickle{{2, {-500, 0, 0}}, {3, {0, 100, 0}}, {2, {500, 0, 0}}, {3, {0, 99.5, 0}}, {1, {-500, 0, 0}}};
    EXPECT_TRUE(isManifold(meshOf(extruded(sickle)).mesh));
}

TEST(Outlines, TouchingPartsShareTheirPoints) {
    // Two squares that meet in a point; a hole with a corner on the outline; holes that meet in a point.
    const Meshed pinched = meshOf(extruded(polygon({{0, 0}, {1, 1}, {2, 1}, {2, 2}, {1, 2}, {1, 1}, {0, 1}})));
    ASSERT_TRUE(isClosed(pinched.mesh));
    EXPECT_NEAR(volumeOf(pinched.mesh), 1.5 * height, 1e-9);
    const HextVertexList square = polygon({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    const Meshed cornered = meshOf(extruded(square, {polygon({{0, 0}, {4, 2}, {2, 4}})}));
    ASSERT_TRUE(isClosed(cornered.mesh));
    EXPECT_NEAR(volumeOf(cornered.mesh), 94 * height, 1e-6);
    const Meshed met = meshOf(extruded(square, {polygon({{2, 2}, {5, 5}, {2, 5}}), polygon({{5, 5}, {8, 5}, {8, 8}})}));
    ASSERT_TRUE(isClosed(met.mesh));
    EXPECT_NEAR(volumeOf(met.mesh), 91 * height, 1e-6);
    // A corner amid an edge of the outline.
    const Meshed amid = meshOf(extruded(square, {polygon({{5, 0}, {7, 3}, {3, 3}})}));
    ASSERT_TRUE(isClosed(amid.mesh));
    EXPECT_NEAR(volumeOf(amid.mesh), 94 * height, 1e-6);
}

TEST(Outlines, CrossingHolesAreCutOutTogether) {
    const HextVertexList square = polygon({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    struct Case {
        std::vector<HextVertexList> holes;
        double area;
    };
    const Case cases[] = {
        {{polygon({{2, 2}, {6, 2}, {6, 6}, {2, 6}}), polygon({{4, 4}, {8, 4}, {8, 8}, {4, 8}})}, 100 - 28},
        {{polygon({{8, 4}, {14, 4}, {14, 6}, {8, 6}})}, 100 - 4},
        {{polygon({{20, 20}, {21, 20}, {21, 21}})}, 100},
        {{polygon({{-1, 4}, {11, 4}, {11, 5}, {-1, 5}})}, 90},  // in two parts
        {{polygon({{2, 2}, {2, 2}}), polygon({{1, 1}, {2, 2}, {3, 3}})}, 100},
    };
    for (const Case& c : cases) {
        const Meshed meshed = meshOf(extruded(square, c.holes));
        ASSERT_TRUE(isClosed(meshed.mesh)) << c.area;
        EXPECT_NEAR(volumeOf(meshed.mesh), c.area * height, 1e-3) << c.area;
    }
    // Nothing is left; a bow tie keeps the lobe that runs the outline's way.
    EXPECT_EQ(meshOf(extruded(square, {polygon({{-1, -1}, {11, -1}, {11, 11}, {-1, 11}})})).status,
              tolmar::MeshStatus::BadRegion);
    EXPECT_TRUE(isClosed(meshOf(extruded(polygon({{0, 0}, {4, 0}, {0, 3}, {3, 4}}))).mesh));
    // A star drawn in one line turns one way only and yet runs round twice: what it encloses counts once.
    HextVertexList line;
    for (int i = 0; i < 5; ++i) {
        line.push_back({1, {5 * std::cos(0.8 * pi * i), 5 * std::sin(0.8 * pi * i), 0}});
    }
    const double inner = 5 * std::cos(0.4 * pi) / std::cos(0.2 * pi);
    const Meshed meshed = meshOf(extruded(line));
    ASSERT_TRUE(isClosed(meshed.mesh));
    EXPECT_NEAR(volumeOf(meshed.mesh), shoelace(star(10, inner, 5)) * height, 1e-3);
}

TEST(Outlines, KindsAreReadAsTheyStand) {
    struct Case {
        const char* what;
        HextVertexList list;
        double area;
    };
    const double half = pi * 25 / 2;
    const Case cases[] = {
        {"a raw middle first and last is dropped",
         {{7, {5, 50, 0}}, {1, {0, 0, 0}}, {1, {10, 0, 0}}, {1, {10, 10, 0}}, {7, {50, 5, 0}}},
         50},
        {"the last vertex ends the list", {{1, {0, 0, 0}}, {1, {10, 0, 0}}, {4, {10, 10, 0}}, {1, {99, 99, 0}}}, 50},
        {"a middle that no arc claims is skipped",
         {{1, {0, 0, 0}}, {3, {5, -40, 0}}, {1, {10, 0, 0}}, {4, {10, 10, 0}}},
         50},
        {"an arc without its end is a corner",
         {{1, {0, 0, 0}}, {1, {10, 0, 0}}, {1, {10, 10, 0}}, {2, {0, 10, 0}}},
         100},
        {"an arc from a point to itself is that point",
         {{2, {0, 0, 0}}, {3, {5, 5, 0}}, {1, {0, 0, 0}}, {1, {10, 0, 0}}, {4, {10, 10, 0}}},
         50},
        {"a closing arc", {{1, {0, 0, 0}}, {5, {10, 0, 0}}, {3, {5, 5, 0}}}, half},
        {"a closing arc without a middle is a corner", {{1, {0, 0, 0}}, {1, {10, 0, 0}}, {5, {10, 10, 0}}}, 50},
        {"an arc through points on one line is straight",
         {{2, {0, 0, 0}}, {3, {5, 0, 0}}, {1, {10, 0, 0}}, {4, {10, 10, 0}}},
         50},
        {"two arcs make a circle", {{2, {0, 0, 0}}, {3, {5, 5, 0}}, {5, {10, 0, 0}}, {3, {5, -5, 0}}}, 2 * half},
    };
    for (const Case& c : cases) {
        const Meshed meshed = meshOf(extruded(c.list), 0.001);
        ASSERT_TRUE(isManifold(meshed.mesh)) << c.what;
        EXPECT_NEAR(volumeOf(meshed.mesh), c.area * height, 0.4) << c.what;
    }
}

TEST(Outlines, AxesNeedNotBePerpendicularAndDirectionsMayTurn) {
    HextSpolygon e = extruded(polygon({{0, 0}, {10, 0}, {10, 10}, {0, 10}}));
    e.origin = {5, 6, 7};
    e.yAxis = {1, 1, 0};
    const Meshed skew = meshOf(e);
    ASSERT_TRUE(isManifold(skew.mesh));
    EXPECT_NEAR(volumeOf(skew.mesh), 1000 * std::sqrt(0.5), 1e-9);
    e.yAxis = {0, 1, 0};
    for (const double h : {10.0, -10.0}) {
        for (const double z : {1.0, -1.0}) {
            e.height = h;
            e.direction = {0, 0, z};
            const Meshed meshed = meshOf(e);
            ASSERT_TRUE(isManifold(meshed.mesh));
            EXPECT_NEAR(volumeOf(meshed.mesh), 1000, 1e-9);
            const bool up = h * z > 0;
            for (const TlGePoint3d& p : meshed.mesh.points) {
                EXPECT_TRUE(p.z == 7 || p.z == (up ? 17 : -3)) << p.z;
            }
        }
    }
}

TEST(Outlines, AHundredThousandVerticesTakeNoQuadraticTime) {
    const int n = 100000;
    struct Case {
        const char* what;
        HextVertexList outline;
        bool works;
    };
    std::mt19937 random(3);
    std::uniform_real_distribution<double> unit(0, 1000);
    // A fine star whose last points make a loop that runs the other way.
    HextVertexList crossed = star(n, 999.9, 1000);
    crossed.push_back({1, {1100, 30, 0}});
    crossed.push_back({1, {1100, -30, 0}});
    HextVertexList tangle;
    for (int i = 0; i < n; ++i) {
        tangle.push_back({1, {unit(random), unit(random), 0}});
    }
    const Case cases[] = {
        {"circle", star(n, 1000, 1000), true},
        {"star", star(n, 500, 1000), true},
        {"comb", comb(n / 2, true), true},
        {"comb on its side", comb(n / 2, false), true},
        {"spiral", spiral(n / 2), true},
        {"crossed star", crossed, false},
        {"tangle", tangle, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const auto start = std::chrono::steady_clock::now();
        const Meshed meshed = meshOf(extruded(c.outline));
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        EXPECT_EQ(meshed.status == tolmar::MeshStatus::Ok, c.works);
        if (c.works) {
            EXPECT_TRUE(isClosed(meshed.mesh));
        }
        // About a tenth of a second; a quadratic search takes a quarter of a minute.
        EXPECT_LT(time.count(), 8);
    }
}

HextRevolve revolved(HextVertexList profile, double angle) {
    HextRevolve r;
    for (HextVertex& v : profile) {
        v.point = {v.point.x, 0, v.point.y};
    }
    r.axis = {0, 0, 1};
    r.angle = angle;
    r.profile = std::move(profile);
    return r;
}

TEST(Outlines, RevolvedProfilesMayTouchAndCrossThemselves) {
    const HextVertexList pinched = polygon({{10, 0}, {11, 1}, {12, 1}, {12, 2}, {11, 2}, {11, 1}, {10, 1}});
    const HextVertexList bow = polygon({{10, 0}, {14, 0}, {10, 3}, {13, 4}});
    // Touches the axis in two points and along an edge.
    const HextVertexList onAxis = polygon({{0, 0}, {5, 1}, {0, 2}, {5, 3}, {5, 5}, {0, 6}, {0, 4}, {4, 4}, {4, 3.5}});
    for (const double angle : {2 * pi, 1.0}) {
        EXPECT_TRUE(isClosed(meshOf(revolved(pinched, angle)).mesh)) << angle;
        EXPECT_TRUE(isClosed(meshOf(revolved(bow, angle)).mesh)) << angle;
        EXPECT_TRUE(isClosed(meshOf(revolved(onAxis, angle)).mesh)) << angle;
    }
    // A wall thinner than the tolerance between two arcs of the profile.
    HextVertexList shell{{2, {0, -500, 0}},  {3, {500, 0, 0}},   {1, {0, 500, 0}},
                         {2, {0, 499.7, 0}}, {3, {499.7, 0, 0}}, {1, {0, -499.7, 0}}};
    for (const double angle : {2 * pi, 2.0}) {
        const Meshed meshed = meshOf(revolved(shell, angle));
        ASSERT_TRUE(isClosed(meshed.mesh)) << angle;
    }
}

}  // namespace
