// Outlines with arcs as loops of filleted corners: the loops keep their properties and mean the same shape.
#include "hextinterface/ornatohextprocess/solids/equip_prims.h"
#include "rebuilt_shape.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr double radius = 500;

HxGePoint3D onCircle(double degrees, double r = radius) {
    return {r * std::cos(degrees * tlGePi / 180), r * std::sin(degrees * tlGePi / 180), 0};
}

// What the receiver reads of an extrusion of height 1.
macro::Solid written(const std::vector<PVertex>& vertices) {
    _PExtru solid;
    solid.height = 1;
    solid.loop.vertices = vertices;
    std::string text;
    solid.write(text);
    return macro::readElements(text).at(0).solids.at(0);
}

// Area of the circle's part beyond the chord of an arc.
double segment(double degrees) {
    const double angle = degrees * tlGePi / 180;
    return radius * radius / 2 * (angle - std::sin(angle));
}

// No vertex repeated, no fillet larger than its edges allow, and the area of the outline. Positions have six decimals.
void expectOutline(const macro::Solid& solid, double area) {
    EXPECT_EQ(faultsOf(solid.loop), "");
    EXPECT_NEAR(rebuild(solid).volume, area + filletSurplus(solid.loop), 1e-5 * area + 0.002);
}

std::vector<PVertex> loopOf(const HextVertexList& list) {
    return outlineToLoop(list).vertices;
}

HextVertex v(int kind, double degrees) {
    return {static_cast<std::int16_t>(kind), onCircle(degrees)};
}

}  // namespace

TEST(EquipArcs, EveryAngleBothWaysKeepsTheLoopsProperties) {
    for (int degrees = 1; degrees < 360; ++degrees) {
        for (const int way : {1, -1}) {
            SCOPED_TRACE(way * degrees);
            const macro::Solid solid =
                written(arcVertices(onCircle(0), onCircle(way * degrees / 3.0), onCircle(way * degrees)));
            expectOutline(solid, segment(degrees));
            // Square corners are passed where the end lies left of -3R/5, below the axis, or above -4R/5 on the right.
            const std::size_t corners = degrees < 127 ? 0 : degrees < 234 ? 1 : degrees < 307 ? 2 : 3;
            EXPECT_EQ(solid.loop.size(), 3 + corners);
        }
    }
}

TEST(EquipArcs, ALoopOnAnyPlaneHasItsCornersInThatPlane) {
    const TlGeMatrix3d place = TlGeMatrix3d::coordSystem({7000, -20, 13}, HxGeVector3D(2, 1, 2) / 3,
                                                         HxGeVector3D(-2, 2, 1) / 3, HxGeVector3D(-1, -2, 2) / 3);
    for (const double degrees : {40.0, 150.0, 260.0, 320.0}) {
        const auto flat = arcVertices(onCircle(0), onCircle(degrees / 2), onCircle(degrees));
        const auto placed = arcVertices(place * onCircle(0), place * onCircle(degrees / 2), place * onCircle(degrees));
        ASSERT_EQ(flat.size(), placed.size());
        for (std::size_t i = 0; i < flat.size(); ++i) {
            EXPECT_NEAR(placed[i].position.distanceTo(place * flat[i].position), 0, 1e-8);
            EXPECT_NEAR(placed[i].frad, flat[i].frad, 1e-8);
        }
    }
}

TEST(EquipArcs, AFlatArcIsExactThoughItsCentreIsFarAway) {
    // A sagitta of 0.001 on 1000 mm: the radius is 125 km.
    const auto corners = arcVertices({0, 0, 0}, {500, 0.001, 0}, {1000, 0, 0});
    ASSERT_EQ(corners.size(), 3u);
    EXPECT_NEAR(corners[1].position.x, 500, 1e-6);
    EXPECT_NEAR(corners[1].position.y, 0.002, 1e-6);
}

TEST(EquipArcs, DegenerateArcsBecomeEdges) {
    EXPECT_EQ(arcVertices({0, 0, 0}, {1, 0, 0}, {2, 0, 0}).size(), 2u);
    EXPECT_EQ(arcVertices({5, 5, 0}, {5, 5, 0}, {5, 5, 0}).size(), 1u);
}

TEST(EquipOutlines, AWholeCircle) {
    const macro::Solid solid = written(loopOf({v(6, 10), v(3, 130), v(3, 250), v(1, 300)}));
    EXPECT_EQ(solid.loop.size(), 5u);
    expectOutline(solid, tlGePi * radius * radius);
    EXPECT_TRUE(loopOf({v(6, 0), v(3, 120)}).empty());
}

TEST(EquipOutlines, ChainsOfArcsRepeatNoVertex) {
    for (int arcs = 2; arcs <= 6; ++arcs) {
        HextVertexList list;
        const double step = 300.0 / arcs;
        for (int i = 0; i < arcs; ++i) {
            list.push_back(v(2, i * step));
            list.push_back(v(3, (i + 0.4) * step));
        }
        list.push_back(v(4, 300));
        SCOPED_TRACE(arcs);
        expectOutline(written(loopOf(list)), segment(300));
    }
}

TEST(EquipOutlines, EdgesAndArcsMixed) {
    // A slot: two edges and two half circles, the second an arc that ends behind the last edge.
    const HextVertexList slot = {{1, {100, -50, 0}}, {2, {200, -50, 0}}, {3, {250, 0, 0}}, {1, {200, 50, 0}},
                                 {2, {0, 50, 0}},    {7, {-50, 0, 0}},   {4, {0, -50, 0}}};
    expectOutline(written(loopOf(settleArcMiddles(slot))), 200 * 100 + tlGePi * 50 * 50);
}

TEST(EquipOutlines, RawMiddlesAtTheEndsAreDropped) {
    const HextVertexList settled = settleArcMiddles({v(7, 0), v(2, 10), v(7, 20), v(4, 30), v(7, 40)});
    ASSERT_EQ(settled.size(), 3u);
    EXPECT_EQ(settled[1].kind, 3);
    EXPECT_EQ(settled[2].kind, 4);
}

TEST(EquipOutlines, ArcsCutShort) {
    // Too few vertices behind an arc's first: the vertex stays, unless it stands already.
    EXPECT_EQ(loopOf({v(1, 0), v(1, 90), v(2, 180), v(3, 200)}).size(), 3u);
    const auto chained = loopOf({v(1, 0), v(2, 90), v(3, 120), v(2, 180)});
    EXPECT_EQ(chained.size(), 4u);
    // An arc back to its own start is that point; strange kinds are skipped; nothing follows a last vertex.
    EXPECT_EQ(loopOf({v(2, 0), v(3, 90), v(1, 0), v(1, 50)}).size(), 2u);
    EXPECT_EQ(loopOf({v(3, 0), v(0, 10), v(1, 20), v(99, 30), v(4, 40), v(1, 50)}).size(), 2u);
}

TEST(EquipOutlines, AClosingArcNeedsVerticesBehindIt) {
    EXPECT_TRUE(outlineToLoop({v(1, 0), v(1, 90), v(5, 180), v(3, 270), v(1, 1)}).closingArcLost);
    const OutlineLoop lost = outlineToLoop({v(1, 0), v(1, 90), v(5, 180), v(3, 270)});
    EXPECT_TRUE(lost.closingArcLost);
    EXPECT_EQ(lost.vertices.size(), 2u);
    const OutlineLoop made = outlineToLoop({v(1, 0), v(1, 90), v(5, 180), v(3, 270), v(1, 1), v(1, 2)});
    EXPECT_FALSE(made.closingArcLost);
    expectOutline(written(made.vertices), segment(180) + radius * radius);
}
