// How far the approximate conversions are off, over the range of their sizes: the figures of docs/hext-geometry.md.
#include "fixture.h"
#include "source_shape.h"

#include <cmath>
#include <limits>

namespace {

using Primitives = std::vector<std::unique_ptr<HextPrimary3D>>;

// Least and most ratio of the macro solids' volume to the source's, and by how much their extents differ at most, as a
// part of the shape's own size.
struct Off {
    double least = std::numeric_limits<double>::max();
    double most = 0;
    double reach = 0;
};

class EquipBounds : public EquipTest {
protected:
    Off measure(const Primitives& primitives, double size) {
        Off off;
        for (const auto& primitive : primitives) {
            const Shape expected = sourceShape(*primitive);
            const Shape shape = macroShape(*primitive);
            const double ratio = shape.volume / expected.volume;
            off.least = std::min(off.least, ratio);
            off.most = std::max(off.most, ratio);
            off.reach = std::max(off.reach, reachError(shape, expected) / size);
        }
        return off;
    }
    // The figures hold, and are no wider than they have to be.
    void expect(const Primitives& primitives, double size, const Off& stated) {
        const Off off = measure(primitives, size);
        EXPECT_NEAR(off.least, stated.least, 5e-4);
        EXPECT_NEAR(off.most, stated.most, 5e-4);
        EXPECT_NEAR(off.reach, stated.reach, 5e-4);
    }
};

Primitives heads(std::initializer_list<double> axial, std::initializer_list<double> base, int segments) {
    Primitives out;
    for (const double a : axial) {
        for (const double r : base) {
            auto head = std::make_unique<HextOval3D>();
            head->vect = {0, 0, 1};
            head->axialRadius = a, head->radialRadius = 500, head->baseRadius = r, head->segments = segments;
            out.push_back(std::move(head));
        }
    }
    return out;
}

Primitives transitions(double radius) {
    Primitives out;
    for (const double y : {100.0, 250.0, 400.0, 500.0}) {
        for (const double shift : {0.0, 200.0}) {
            auto transition = std::make_unique<HextSqucir3D>();
            transition->xAxis = {1, 0, 0}, transition->baseNormal = {0, 0, 1};
            transition->topCenter = {shift, shift / 2, 600};
            transition->xLength = 500, transition->yLength = y, transition->topRadius = radius;
            out.push_back(std::move(transition));
        }
    }
    return out;
}

template <typename Torus>
std::unique_ptr<Torus> quarterBend() {
    auto torus = std::make_unique<Torus>();
    torus->startPoint = {600, 0, 0};
    torus->thirdField = {0, 600, 0};
    return torus;
}

}  // namespace

TEST_F(EquipBounds, EllipticalHeads) {
    expect(heads({100, 250, 400, 750, 1000}, {250, 450, 500}, 8), 500, {0.9994, 1.0, 0.0006});
    expect(heads({100, 250, 400, 750, 1000}, {250, 450, 500}, 200), 500, {1.0, 1.0, 0.0001});
}

// A part of a sphere with the head's base and height.
TEST_F(EquipBounds, HeadsOfLessThanTwoMillimetres) {
    expect(heads({1, 1.5, 1.999}, {450, 475, 500}, 8), 500, {0.7516, 0.8920, 0.0002});
}

TEST_F(EquipBounds, Spheres) {
    for (const double radius : {100.0, 1000.0}) {
        Primitives sphere;
        sphere.push_back(std::make_unique<HextSphere3D>());
        static_cast<HextSphere3D&>(*sphere.back()).radius = radius;
        expect(sphere, radius, {1.0469, 1.0469, 0.0267});
    }
}

// The smaller end all the way: its section by the mean one of the true bend.
TEST_F(EquipBounds, ReducingBends) {
    constexpr double start = 200;
    for (const double end : {200.0, 180.0, 150.0, 100.0, 20.0}) {
        const double ratio = 3 * end * end / (start * start + start * end + end * end);
        const double reach = (start - end) / 2 / start;
        auto torus = quarterBend<HextTorus3D>();
        torus->startDiameter = start, torus->endDiameter = end;
        Primitives round;
        round.push_back(std::move(torus));
        expect(round, start, {ratio, ratio, reach});
        auto square = quarterBend<HextSqutorus3D>();
        square->startWidth = square->startHeight = start, square->endWidth = square->endHeight = end;
        Primitives ducts;
        ducts.push_back(std::move(square));
        expect(ducts, start, {ratio, ratio, std::sqrt(2) * reach});
    }
}

TEST_F(EquipBounds, SquareToRound) {
    expect(transitions(50), 500, {0.6440, 0.9230, 0});
    expect(transitions(150), 500, {0.5117, 0.8594, 0});
    expect(transitions(250), 500, {0.4939, 0.8276, 0});
    expect(transitions(400), 500, {0.5002, 0.8072, 0});
}

// Only a level axis stands across the frame's second axis, which is world Z.
TEST_F(EquipBounds, TiltedSaddles) {
    struct Row {
        double tilt;
        Off off;
    };
    for (const Row& row : {Row{0, {1, 1, 0}}, Row{5, {1.0032, 1.0032, 0.0956}}, Row{15, {1.0300, 1.0306, 0.2928}},
                           Row{30, {1.1345, 1.1425, 0.6309}}}) {
        Primitives saddles;
        for (int roll = 0; roll < 360; roll += 30) {
            auto saddle = std::make_unique<HextSaddle3D>();
            saddle->axis = HxGeVector3D(1, 0, 0).rotatedBy(row.tilt * tlGePi / 180, {0, 1, 0});
            saddle->sectionAxis = HxGeVector3D(0, 1, 0).rotatedBy(roll * tlGePi / 180, saddle->axis);
            saddle->length = 500, saddle->sectionLength = saddle->sectionHeight = 400, saddle->circleRadius = 150;
            saddles.push_back(std::move(saddle));
        }
        expect(saddles, 500, row.off);
    }
    HextSaddle3D upright;
    upright.axis = {0, 0, 1}, upright.sectionAxis = {1, 0, 0}, upright.length = 9;
    EXPECT_THROW(convertPrimary(upright), ExportException);
}
