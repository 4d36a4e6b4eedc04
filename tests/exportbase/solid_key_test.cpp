// Keys of solids: apart from their place, and nothing else.
#include "exportbase/solid_key.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace {

template <typename Class>
using Change = std::function<void(Class&)>;

std::vector<std::uint64_t> wordsOf(const HextPrimary& primitive) {
    SolidKey key;
    EXPECT_TRUE(makeSolidKey(primitive, key)) << primitive.isA()->name();
    return key.words;
}

// Each change makes another solid; moving its points does not, however much is lost in adding up.
template <typename Class>
void expectKeys(const Class& solid, const std::vector<Change<Class>>& changes,
                const std::vector<HxGePoint3D Class::*>& points) {
    const std::vector<std::uint64_t> words = wordsOf(solid);
    for (std::size_t i = 0; i < changes.size(); ++i) {
        Class other = solid;
        changes[i](other);
        EXPECT_NE(wordsOf(other), words) << solid.isA()->name() << ", change " << i;
    }
    const HxGeVector3D apart{1234567.1, -0.3, 1.0 / 3};
    Class moved = solid;
    for (HxGePoint3D Class::*const point : points) {
        moved.*point += apart;
    }
    SolidKey there;
    SolidKey here;
    EXPECT_TRUE(makeSolidKey(moved, there) && makeSolidKey(solid, here));
    EXPECT_EQ(there.words, here.words) << solid.isA()->name();
    EXPECT_LT(((there.place - here.place) - (points.empty() ? HxGeVector3D() : apart)).length(), 1e-9);
    for (HxGePoint3D Class::*const point : points) {
        for (const double bad : {std::numeric_limits<double>::quiet_NaN(), 1.1e9, -1.1e9}) {
            moved = solid;
            (moved.*point).y = bad;
            EXPECT_FALSE(makeSolidKey(moved, there)) << "its solid is refused";
        }
    }
}

template <typename Class, typename... Fields>
std::vector<Change<Class>> grown(Fields... fields) {
    return {[fields](Class& solid) { solid.*fields += 1; }...};
}

template <typename Class, typename... Fields>
std::vector<Change<Class>> turned(Fields... fields) {
    return {[fields](Class& solid) { (solid.*fields).y += 0.5; }...};
}

template <typename Class>
std::vector<Change<Class>> operator+(std::vector<Change<Class>> a, const std::vector<Change<Class>>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

TEST(SolidKey, HoldsAllOfRoundSolidsButTheirPlace) {
    using Cylinder = HextCylinder3D;
    HextCylinder3D cylinder;
    cylinder.endPoint = {0.1, 0.2, 500};
    expectKeys(cylinder, grown<Cylinder>(&Cylinder::diameter) + turned<Cylinder>(&Cylinder::endPoint),
               {&Cylinder::startPoint, &Cylinder::endPoint});
    using Sloped = HextScylinder3D;
    expectKeys(HextScylinder3D(), grown<Sloped>(&Sloped::diameter) + turned<Sloped>(&Sloped::endPoint, &Sloped::vect),
               {&Sloped::startPoint, &Sloped::endPoint});
    using Cone = HextConcone3D;
    expectKeys(HextConcone3D(), grown<Cone>(&Cone::startDiameter, &Cone::endDiameter) + turned<Cone>(&Cone::endPoint),
               {&Cone::startPoint, &Cone::endPoint});
    using Eccentric = HextEcone3D;
    expectKeys(HextEcone3D(),
               grown<Eccentric>(&Eccentric::startDiameter, &Eccentric::endDiameter) +
                   turned<Eccentric>(&Eccentric::endPoint, &Eccentric::vect),
               {&Eccentric::startPoint, &Eccentric::endPoint});
    using Head = HextOval3D;
    expectKeys(HextOval3D(),
               grown<Head>(&Head::axialRadius, &Head::radialRadius, &Head::baseRadius) + turned<Head>(&Head::vect),
               {&Head::point});
    expectKeys(HextSphere3D(), grown<HextSphere3D>(&HextSphere3D::radius), {&HextSphere3D::center});
    EXPECT_NE(wordsOf(cylinder), wordsOf(HextConcone3D())) << "another class";
}

TEST(SolidKey, HoldsAllOfSolidsWithEdgesButTheirPlace) {
    using Box = HextBox3D;
    expectKeys(HextBox3D(),
               grown<Box>(&Box::xLength, &Box::yLength, &Box::zLength) + turned<Box>(&Box::xAxis, &Box::yAxis) +
                   grown<Box>(&Box::pointKind, &Box::handedness),
               {&Box::point});
    using Frustum = HextSqucone3D;
    expectKeys(HextSqucone3D(),
               grown<Frustum>(&Frustum::bottomX, &Frustum::bottomY, &Frustum::topX, &Frustum::topY, &Frustum::height,
                              &Frustum::offsetLength) +
                   turned<Frustum>(&Frustum::zAxis, &Frustum::xAxis, &Frustum::offsetDirection),
               {&Frustum::point});
    using Wedge = HextWedge3D;
    expectKeys(HextWedge3D(),
               grown<Wedge>(&Wedge::wedgeSize) + turned<Wedge>(&Wedge::point1, &Wedge::point2, &Wedge::point3),
               {&Wedge::point1, &Wedge::point2, &Wedge::point3});
    using Prism = HextPrism3D;
    expectKeys(HextPrism3D(),
               grown<Prism>(&Prism::sides, &Prism::sideMode) + turned<Prism>(&Prism::endPoint, &Prism::vertexPoint),
               {&Prism::startPoint, &Prism::endPoint, &Prism::vertexPoint});
    using Saddle = HextSaddle3D;
    expectKeys(HextSaddle3D(),
               grown<Saddle>(&Saddle::length, &Saddle::sectionLength, &Saddle::sectionHeight, &Saddle::circleRadius) +
                   turned<Saddle>(&Saddle::axis, &Saddle::sectionAxis),
               {&Saddle::point});
    using Transition = HextSqucir3D;
    expectKeys(HextSqucir3D(),
               grown<Transition>(&Transition::xLength, &Transition::yLength, &Transition::topRadius) +
                   turned<Transition>(&Transition::xAxis, &Transition::baseNormal, &Transition::topCenter),
               {&Transition::basePoint, &Transition::topCenter});
}

TEST(SolidKey, TheThirdFieldOfABendIsAPointOrADirection) {
    using Torus = HextTorus3D;
    const auto changes =
        grown<Torus>(&Torus::startDiameter, &Torus::endDiameter, &Torus::arcKind, &Torus::angle, &Torus::form) +
        turned<Torus>(&Torus::startPoint, &Torus::thirdField);
    expectKeys(HextTorus3D(), changes, {&Torus::center, &Torus::startPoint, &Torus::thirdField});
    HextTorus3D byAngle;
    byAngle.form = 1;
    expectKeys(byAngle, changes, {&Torus::center, &Torus::startPoint});
    HextTorus3D whole;
    whole.arcKind = 2;
    expectKeys(whole, changes, {&Torus::center, &Torus::startPoint});
    using Square = HextSqutorus3D;
    expectKeys(HextSqutorus3D(),
               grown<Square>(&Square::startWidth, &Square::startHeight, &Square::endWidth, &Square::endHeight,
                             &Square::arcKind, &Square::angle, &Square::form) +
                   turned<Square>(&Square::startPoint, &Square::thirdField, &Square::normal),
               {&Square::center, &Square::startPoint, &Square::thirdField});
}

TEST(SolidKey, OutlinesCountWithAllTheirVertices) {
    HextSpolygon extrusion;
    extrusion.outline = HextVertexList{{1, {0, 0, 0}}, {1, {1, 0, 0}}, {1, {0, 1, 0}}};
    using Extrusion = HextSpolygon;
    expectKeys(extrusion,
               grown<Extrusion>(&Extrusion::height) +
                   turned<Extrusion>(&Extrusion::xAxis, &Extrusion::yAxis, &Extrusion::direction) +
                   std::vector<Change<Extrusion>>{
                       [](Extrusion& e) { (*e.outline)[2].point.x = 0.5; },
                       [](Extrusion& e) { (*e.outline)[1].kind = 3; }, [](Extrusion& e) { e.outline->pop_back(); },
                       [](Extrusion& e) { e.holes = std::vector<HextVertexList>{*e.outline}; },
                       [](Extrusion& e) {
                           e.holes = std::vector<HextVertexList>{*e.outline};
                           e.outline = {};
                       }},
               {&Extrusion::origin});
    HextRevolve turn;
    turn.profile = *extrusion.outline;
    using Turn = HextRevolve;
    expectKeys(turn,
               grown<Turn>(&Turn::angle) + turned<Turn>(&Turn::axis, &Turn::center) +
                   std::vector<Change<Turn>>{[](Turn& r) { (*r.profile)[2].point.z = 0.5; },
                                             [](Turn& r) { (*r.profile)[1].kind = 3; }},
               {});
    HextRevolve moved = turn;
    moved.center += HxGeVector3D(1e6, 0.1, 0);
    for (HextVertex& vertex : *moved.profile) {
        vertex.point += HxGeVector3D(1e6, 0.1, 0);
    }
    EXPECT_EQ(wordsOf(moved), wordsOf(turn)) << "its vertices stand in the world";
    extrusion.outline = HextVertexList(1'000'000);
    SolidKey key;
    EXPECT_FALSE(makeSolidKey(extrusion, key)) << "as large as a mesh";
    EXPECT_LT(key.words.size(), 1000U);
    EXPECT_FALSE(makeSolidKey(HextPrimaryLine(), key));
    EXPECT_FALSE(makeSolidKey(HextPrimaryAcadSolid3D(), key));
}

}  // namespace
