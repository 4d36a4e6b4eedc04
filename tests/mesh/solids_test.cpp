// Every primitive class, in every size and turned in space: closed, outward, within the tolerance, of the right volume.
#include "mesh_of.h"
#include "shapes/cases.h"

#include <cctype>
#include <cmath>

namespace {

Place turnedPlace() {
    Place place;
    place.origin = {1234.5, -789.25, 456.125};
    const TlGeVector3d axis = TlGeVector3d(1, 2, 3).normal();
    place.x = place.x.rotatedBy(0.7, axis);
    place.y = place.y.rotatedBy(0.7, axis);
    place.z = place.z.rotatedBy(0.7, axis);
    return place;
}

// The farthest that samples of the mesh stand off the true surface, in millimetres.
double worstOff(const ShapeCase& shape, const PlainMesh& mesh, const Place& place, double size) {
    double worst = 0;
    const std::size_t every = mesh.triangles.size() / 20000 + 1;
    eachSample(mesh, every, [&](const TlGePoint3d& p) {
        const TlGePoint3d local = place.local(p);
        worst = std::max(worst, size * shape.offSurface({local.x / size, local.y / size, local.z / size}));
    });
    return worst;
}

class Solids : public ::testing::TestWithParam<std::size_t> {
protected:
    const ShapeCase& shape() const { return shapeCases()[GetParam()]; }
};

TEST_P(Solids, AreClosedAndHoldTheToleranceInEverySize) {
    const Place place = turnedPlace();
    for (const double size : {0.1, 1.0, 10.0, 100.0, 1000.0, 1e4}) {
        SCOPED_TRACE(shape().name + " of size " + std::to_string(size));
        const PlainMesh mesh = meshOf(*shape().make(place, size)).mesh;
        ASSERT_TRUE(isManifold(mesh));
        EXPECT_GT(volumeOf(mesh), 0);
        EXPECT_LE(worstOff(shape(), mesh, place, size), 1.0 + 1e-6);
        // A mesh within the tolerance of the surface differs by no more than a layer of that thickness, so that nothing
        // of the surface is without mesh.
        EXPECT_NEAR(volumeOf(mesh), shape().volume * size * size * size, 1.5 * areaOf(mesh) + 10) << shape().name;
    }
}

TEST_P(Solids, AreClosedAtAKilometre) {
    const Place place = turnedPlace();
    // Surfaces that bend both ways take millions of triangles there: one of them stands for all.
    const bool many = shape().chordRule(1e6) > 1e6 || shape().chordRule(1e6) == 0;
    const double size = many && shape().name != "torus, by degrees" ? 1e5 : 1e6;
    const PlainMesh mesh = meshOf(*shape().make(place, size)).mesh;
    ASSERT_TRUE(isManifold(mesh)) << shape().name;
    EXPECT_LE(worstOff(shape(), mesh, place, size), 1.0 + 1e-6) << shape().name;
}

TEST_P(Solids, HaveTheVolumeAndAreaOfTheFormula) {
    const Place place = turnedPlace();
    const double size = 100;
    const double tolerance = 0.002;
    const PlainMesh mesh = meshOf(*shape().make(place, size), tolerance).mesh;
    ASSERT_FALSE(mesh.triangles.empty()) << shape().name;
    const double volume = shape().volume * size * size * size;
    EXPECT_NEAR(volumeOf(mesh), volume, areaOf(mesh) * tolerance) << shape().name;
    if (shape().area > 0) {
        const double area = shape().area * size * size;
        EXPECT_NEAR(areaOf(mesh), area, 2e-4 * area) << shape().name;
    }
}

TEST_P(Solids, TakeNoMoreTrianglesThanTheChordRuleDoes) {
    for (const double size : {100.0, 1000.0, 1e4}) {
        const double rule = shape().chordRule(size);
        if (rule > 0) {
            const PlainMesh mesh = meshOf(*shape().make(Place(), size)).mesh;
            EXPECT_LE(double(mesh.triangles.size()), shape().overRule * rule + 8)
                << shape().name << " of size " << size;
        }
    }
}

std::string caseName(const ::testing::TestParamInfo<std::size_t>& info) {
    std::string name = shapeCases()[info.param].name + "_" + std::to_string(info.param);
    for (char& c : name) {
        c = std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(Classes, Solids, ::testing::Range<std::size_t>(0, shapeCases().size()), caseName);

}  // namespace
