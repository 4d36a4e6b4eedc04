// Where conversions branch, and what they refuse.
#include "fixture.h"
#include "hextinterface/ornatohextprocess/solids/prim_frames.h"
#include "support/failure.h"

#include <cmath>

namespace {

std::vector<macro::Solid> solidsOf(const HextPrimary& primitive) {
    std::string text;
    writeGroup(text, convertPrimary(primitive));
    return text.empty() ? std::vector<macro::Solid>() : macro::readElements(text).at(0).solids;
}

std::string refusalOf(const HextPrimary& primitive) {
    return failureOf<ExportException>([&] { convertPrimary(primitive); });
}

// "180 1" for the pieces of a bend.
std::string piecesOf(const HextPrimary& torus) {
    std::string text;
    for (const macro::Solid& piece : solidsOf(torus)) {
        text += (text.empty() ? "" : " ");
        appendTrimmed(text, piece.at("angle"));
    }
    return text;
}

HextTorus3D ring(const HxGePoint3D& end, int arcKind) {
    HextTorus3D torus;
    torus.startPoint = {0, 0, 600};
    torus.thirdField = end;
    torus.startDiameter = torus.endDiameter = 100;
    torus.arcKind = arcKind;
    return torus;
}

HextTorus3D turned(double angle) {
    HextTorus3D torus = ring({1, 0, 0}, 0);
    torus.form = 1;
    torus.angle = angle;
    return torus;
}

}  // namespace

TEST(EquipConvert, BendsBeyondHalfATurnComeInTwoPieces) {
    EXPECT_EQ(piecesOf(turned(180)), "180");
    EXPECT_EQ(piecesOf(turned(181)), "180 1");
    EXPECT_EQ(piecesOf(turned(tlGePi)), "180");
    EXPECT_EQ(piecesOf(turned(6.2)), "180 175.233833");
    // A second piece is written with half a turn at most.
    EXPECT_EQ(piecesOf(turned(540)), "180 180");
    EXPECT_EQ(refusalOf(turned(540.001)), "角度异常");
    const auto pieces = solidsOf(turned(300));
    EXPECT_EQ(directionText(pieces.at(0).frame.xAxis), "U");
    EXPECT_EQ(directionText(pieces.at(1).frame.xAxis), "D");
    EXPECT_EQ(directionText(pieces.at(1).frame.zAxis), "E");
}

TEST(EquipConvert, RadiiOnOneLineTellASweepButNoAxis) {
    EXPECT_EQ(piecesOf(ring({0, 0, -600}, 0)), "180");
    EXPECT_EQ(piecesOf(ring({0, 0, -600}, 1)), "180");
    EXPECT_EQ(piecesOf(ring({0, 0, 600}, 0)), "180 180");
    EXPECT_EQ(piecesOf(ring({0, 0, 600}, 1)), "180 180");
    // World Y x the radius for a radius along Z, the other way for the long way round.
    EXPECT_EQ(directionText(solidsOf(ring({0, 0, -600}, 0)).at(0).frame.zAxis), "E");
    EXPECT_EQ(directionText(solidsOf(ring({0, 0, -600}, 1)).at(0).frame.zAxis), "W");
    EXPECT_EQ(refusalOf(ring({0, 0, 0}, 0)), "无效方向");
}

// The plane of the slope is told by its normal's angle to the axis; a normal that points into the solid gives another
// slope than one that points out of it.
TEST(EquipConvert, TheShearIsTheNegativeAngleUpTo89Degrees) {
    const double expected[][2] = {{0, 0}, {10, -10}, {89, -89}, {100, 11}, {170, 81}, {180, 91}};
    for (const auto& [angle, shear] : expected) {
        HextScylinder3D cylinder;
        cylinder.startPoint = {0, 0, 500};
        cylinder.diameter = 100;
        const double radians = angle * tlGePi / 180;
        cylinder.vect = {std::sin(radians), 0, std::cos(radians)};
        EXPECT_NEAR(solidsOf(cylinder).at(0).at("xtshear"), shear, 1e-6) << angle;
    }
}

TEST(EquipConvert, HeadsAndSpheres) {
    HextOval3D oval;
    oval.axialRadius = 100, oval.radialRadius = 50, oval.baseRadius = 50, oval.segments = 8;
    const macro::Solid revolved = solidsOf(oval).at(0);
    EXPECT_EQ(revolved.function, "Revo");
    EXPECT_EQ(revolved.loop.size(), 34u);
    EXPECT_EQ(positionText(revolved.loop.front().at), "E 0 N 0 U 0");
    EXPECT_NEAR(revolved.loop[1].at.y, 50, 1e-6);
    EXPECT_NEAR(revolved.loop.back().at.x, 100, 1e-6);
    oval.segments = 2000000000;
    EXPECT_EQ(solidsOf(oval).at(0).loop.size(), 10002u);
    oval.axialRadius = 1.5, oval.radialRadius = 1;
    EXPECT_EQ(solidsOf(oval).at(0).function, "Dish");
    oval.axialRadius = 50.009, oval.radialRadius = 50, oval.baseRadius = 30;
    EXPECT_NEAR(solidsOf(oval).at(0).at("height"), oval.getHeadHeight(30), 1e-6);

    HextSphere3D sphere;
    EXPECT_EQ(solidsOf(sphere).at(0).at("height"), 0.0001);
    sphere.radius = 40;
    EXPECT_EQ(solidsOf(sphere).at(0).at("dia"), 20);
    EXPECT_EQ(solidsOf(sphere).at(0).at("height"), 80);
}

TEST(EquipConvert, NothingIsMadeOfNothing) {
    HextPrism3D prism;
    prism.startPoint = {0, 0, 9}, prism.vertexPoint = {5, 0, 0}, prism.sides = 2;
    HextBox3D centred;
    centred.pointKind = 1, centred.yAxis = {};
    HextSpolygon edge;
    edge.outline = HextVertexList{{1, {0, 0, 0}}, {1, {5, 0, 0}}};
    HextRevolve edgeTurned;
    edgeTurned.profile = *edge.outline;
    for (const HextPrimary* primitive :
         std::initializer_list<const HextPrimary*>{&prism, &centred, &edge, &edgeTurned}) {
        EXPECT_TRUE(convertPrimary(*primitive).empty()) << primitive->isA()->name();
    }
    EXPECT_TRUE(convertPrimary(HextCylinder3D()).empty());
    EXPECT_TRUE(convertPrimary(HextConcone3D()).empty());
    EXPECT_TRUE(convertPrimary(HextSpolygon()).empty());
    EXPECT_TRUE(convertPrimary(HextRevolve()).empty());
    EXPECT_TRUE(convertPrimary(HextPrimaryAcadSolid3D()).empty());
}

TEST(EquipConvert, RefusalsTellTheirReason) {
    HextBox3D box;
    box.yAxis = {};
    EXPECT_EQ(refusalOf(box), "无效方向");
    EXPECT_EQ(refusalOf(HextScylinder3D()), "无效方向");
    HextSqucir3D point;
    point.topCenter = {0, 0, 100};
    EXPECT_EQ(refusalOf(point), "参数无效");
    HextRevolve straight;
    straight.profile = HextVertexList{{1, {1, 0, 0}}, {1, {2, 0, 0}}, {1, {3, 0, 0}}, {4, {3, 0, 5}}};
    EXPECT_EQ(refusalOf(straight), "无效方向");
}

TEST(EquipConvert, LostArcsAndHolesAreTold) {
    HextSpolygon plate;
    plate.height = 10;
    plate.outline = HextVertexList{{1, {0, 0, 0}}, {1, {9, 0, 0}}, {1, {9, 9, 0}}, {5, {0, 9, 0}}, {3, {-3, 4, 0}}};
    plate.holes = std::vector<HextVertexList>{{{1, {1, 1, 0}}, {4, {2, 2, 0}}}};
    const PrimGroup group = convertPrimary(plate);
    EXPECT_EQ(group.leftOut, (std::vector<std::string>{"the closing arc of its outline is left out",
                                                       "a hole has fewer than three corners"}));
    EXPECT_TRUE(group._negPrimitive.empty());
}

// An outline's normal in coordinates of the outline, in a plane that is not parallel to the world's.
TEST(EquipConvert, AnExtrusionTakesItsNormalInEitherFrame) {
    for (const HxGeVector3D& direction : {HxGeVector3D(0, -2, 0), HxGeVector3D(0, 0, 1)}) {
        HextSpolygon plate;
        plate.xAxis = {1, 0, 0}, plate.yAxis = {0, 0, 1}, plate.direction = direction, plate.height = 10;
        plate.outline = HextVertexList{{1, {0, 0, 0}}, {1, {9, 0, 0}}, {4, {9, 9, 0}}};
        const macro::Solid solid = solidsOf(plate).at(0);
        EXPECT_EQ(directionText(solid.frame.zAxis), "S");
        EXPECT_EQ(directionText(solid.frame.xAxis), "E") << "world Y of the outline's plane x its normal";
        EXPECT_NEAR(rebuild(solid).volume, 405, 1e-3);
    }
}

TEST(EquipConvert, AnAxisOutOfLineIsMadeFromTheOthers) {
    const HxGeVector3D x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1};
    const HxGeVector3D skewX{1, 1e-5, 0}, skewY{0, 1, 1e-5}, skewZ{1e-5, 0, 1};
    const auto repaired = [](HxGeVector3D a, HxGeVector3D b, HxGeVector3D c) {
        design::repairAxes(a, b, c);
        return std::array<HxGeVector3D, 3>{a, b, c};
    };
    const auto expect = [](const std::array<HxGeVector3D, 3>& axes, const HxGeVector3D& a, const HxGeVector3D& b,
                           const HxGeVector3D& c) {
        EXPECT_TRUE(axes[0].isEqualTo(a) && axes[1].isEqualTo(b) && axes[2].isEqualTo(c));
    };
    expect(repaired(x, y, -z), x, y, -z);
    expect(repaired(skewX, y, -z), skewX, y, z);
    expect(repaired(x, skewY, -z), x, skewY, x.crossProduct(skewY).normal());
    expect(repaired(-x, y, skewZ), y.crossProduct(skewZ).normal(), y, skewZ);
    expect(repaired(-x, skewY, skewZ), skewY.crossProduct(skewZ).normal(), skewY, skewZ);
    expect(repaired(skewX, -y, skewZ), skewX, skewZ.crossProduct(skewX).normal(), skewZ);
    expect(repaired(skewX, skewY, skewZ), skewX, skewY, skewZ);
}
