// Every class of primitive, turned and moved anywhere: its catalogue lines are read back and compared with the
// primitive that they came from.
#include "random_place.h"

#include "frame/exceptions.h"
#include "hextinterface/hextcata/gem_trans.h"
#include "hextinterface/hextcata/lines.h"
#include "platform/primitives.h"
#include "support/test_support.h"

#include <functional>

namespace {

using Point = HxGePoint3D;
using Vector = HxGeVector3D;
using Shapes = std::vector<SolidShape>;
using PrimitivePtr = std::unique_ptr<HextPrimary>;

// Makes the primitive in the plant and tells what it is in the component's frame.
using MakeCase = std::function<Shapes(Random&, const Placement&, PrimitivePtr&)>;

// Directions may have any length.
Vector along(const Placement& p, const Vector& direction) {
    return p.along(direction) * 3;
}

template <typename Primitive>
Primitive& make(PrimitivePtr& out) {
    auto primitive = std::make_unique<Primitive>();
    Primitive& result = *primitive;
    out = std::move(primitive);
    return result;
}

SolidShape coneShape(const Point& a, double sizeA, const Point& b, double sizeB) {
    return {"cone", {sizeA + sizeB}, {a, b, a + (b - a) * (sizeB / (sizeA + sizeB))}};
}

Point middleOfArc(const Point& centre, const Vector& radius, const Vector& axis, double sweep) {
    return centre + radius.rotatedBy(sweep / 2, axis);
}

// What a bend is, cut opposite its start when it is more than half a circle.
Shapes bendShapes(const std::string& kind, const std::vector<double>& sizes, const Point& centre, const Vector& radius,
                  const Vector& axis, double sweep) {
    const auto piece = [&](double from, double to) {
        return SolidShape{kind,
                          sizes,
                          {centre + radius.rotatedBy(from, axis),
                           middleOfArc(centre, radius.rotatedBy(from, axis), axis, to - from),
                           centre + radius.rotatedBy(to, axis)}};
    };
    if (sweep > tlGePi + 1e-5) {
        return {piece(0, tlGePi), piece(tlGePi, sweep)};
    }
    return {piece(0, sweep)};
}

// Centre, start radius, axis and sweep of a random bend, in the component's frame.
struct Course {
    explicit Course(Random& random)
        : centre(random.point()), radius(random.direction() * random.number(50, 300)), axis(random.across(radius)) {}
    Point start() const { return centre + radius; }
    Point end(double sweep) const { return centre + radius.rotatedBy(sweep, axis); }
    Point centre;
    Vector radius;
    Vector axis;
};

template <typename Bend>
void place(Bend& bend, const Course& course, const Placement& place, int kind, double sweep) {
    bend.arcKind = kind;
    bend.center = place.at(course.centre);
    bend.startPoint = place.at(course.start());
    bend.thirdField = kind >= 2 ? Point() + place.along(course.axis * 3) : place.at(course.end(sweep));
}

template <int kind>
Shapes torus(Random& random, const Placement& p, PrimitivePtr& out) {
    auto& bend = make<HextTorus3D>(out);
    const Course course(random);
    const double sweep = kind == 0   ? random.number(0.3, 3)
                         : kind == 1 ? random.number(3.3, 6)
                         : kind == 2 ? 2 * tlGePi
                                     : tlGePi;
    place(bend, course, p, kind, sweep);
    bend.startDiameter = 80;
    bend.endDiameter = 60;
    return bendShapes("bend", {60}, course.centre, course.radius, course.axis, sweep);
}

// By axis and angle in degrees; the diameter comes out halved.
template <int handedness>
Shapes torusByAngle(Random& random, const Placement& p, PrimitivePtr& out) {
    auto& bend = make<HextTorus3D>(out);
    const Course course(random);
    place(bend, course, p, 2, 0);
    bend.form = 1;
    bend.handedness = handedness;
    bend.angle = random.number(20, 340);
    bend.startDiameter = 80;
    bend.endDiameter = 60;
    return bendShapes("bend", {30}, course.centre, course.radius, handedness == 0 ? -course.axis : course.axis,
                      bend.angle * tlGePi / 180);
}

template <int form>
Shapes squareTorus(Random& random, const Placement& p, PrimitivePtr& out) {
    auto& bend = make<HextSqutorus3D>(out);
    const Course course(random);
    const double sweep = random.number(0.5, 6);
    place(bend, course, p, sweep > tlGePi ? 1 : 0, sweep);
    bend.form = form;
    bend.normal = along(p, course.axis);
    bend.angle = sweep * 180 / tlGePi;
    bend.startWidth = 50;
    bend.endWidth = 40;
    bend.startHeight = 30;
    bend.endHeight = 35;
    return bendShapes("square bend", {40, 30}, course.centre, course.radius, course.axis, sweep);
}

Shapes cylinder(Random& random, const Placement& p, PrimitivePtr& out, const Point& a, const Point& b) {
    auto& c = make<HextCylinder3D>(out);
    c.startPoint = p.at(a);
    c.endPoint = p.at(b);
    c.diameter = random.number(20, 90);
    return {{"cylinder", {c.diameter}, {a, b}}};
}

Shapes cylinderOffTheOrigin(Random& random, const Placement& p, PrimitivePtr& out) {
    const Point a = random.point();
    return cylinder(random, p, out, a, random.point());
}

// Through the origin in a coordinate plane: beginning there, beyond it, or on both sides.
Shapes cylinderThroughTheOrigin(Random& random, const Placement& p, PrimitivePtr& out) {
    const int plane = static_cast<int>(random.number(0, 3));
    const double angle = random.number(-3, 3);
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const Vector axis = plane == 0 ? Vector(c, s, 0) : plane == 1 ? Vector(0, c, s) : Vector(c, 0, s);
    const double near[] = {0, 80, -70};
    const double start = near[static_cast<int>(random.number(0, 3))];
    const Point a = Point() + axis * start;
    const Point b = Point() + axis * random.number(100, 200);
    return random.number(0, 1) < 0.5 ? cylinder(random, p, out, a, b) : cylinder(random, p, out, b, a);
}

Shapes sloped(Random& random, const Placement& p, PrimitivePtr& out) {
    auto& c = make<HextScylinder3D>(out);
    const Point a = random.point();
    const Point b = random.point();
    c.startPoint = p.at(a);
    c.endPoint = p.at(b);
    c.vect = along(p, random.direction());
    c.diameter = 70;
    return {{"sloped", {70}, {a, b}}};
}

Shapes sphere(Random& random, const Placement& p, PrimitivePtr& out) {
    auto& s = make<HextSphere3D>(out);
    Point centre = random.point();
    if (random.number(0, 1) < 0.5) {
        centre.y = 0;
    }
    s.center = p.at(centre);
    s.radius = 25;
    return {{"sphere", {50}, {centre}}};
}

Shapes dish(Random& random, const Placement& p, PrimitivePtr& out) {
    auto& d = make<HextOval3D>(out);
    const bool atOrigin = random.number(0, 1) < 0.5;
    const Point base = atOrigin ? Point() : random.point();
    const Vector axis = atOrigin ? Vector(0, 0.6, -0.8) : random.direction();
    d.point = p.at(base);
    d.vect = along(p, axis);
    d.axialRadius = 40;
    d.radialRadius = 100;
    d.baseRadius = random.number(50, 100);
    return {{"dish", {2 * d.baseRadius}, {base, base + axis * d.getHeadHeight(d.baseRadius)}}};
}

Shapes cone(Random& random, const Placement& p, PrimitivePtr& out) {
    auto& c = make<HextConcone3D>(out);
    const bool onAxis = random.number(0, 1) < 0.5;
    const Point a = onAxis ? Point(random.number(-90, 200), 0, 0) : random.point();
    const Point b = onAxis ? Point(-220, 0, 0) : random.point();
    c.startPoint = p.at(a);
    c.endPoint = p.at(b);
    c.startDiameter = 90;
    c.endDiameter = 40;
    return {coneShape(a, 90, b, 40)};
}

// In general position; and from the origin on along X with its offset along Y.
Shapes eccentricCone(Random& random, const Placement& p, PrimitivePtr& out) {
    auto& c = make<HextEcone3D>(out);
    const bool onAxis = random.number(0, 1) < 0.5;
    const Point a = onAxis ? Point() : random.point();
    const Vector axis = onAxis ? Vector(1, 0, 0) : random.direction();
    const Vector offset = onAxis ? Vector(0, -1, 0) : random.across(axis);
    const Point b = a + axis * random.number(100, 200) + offset * 25;
    const bool reversed = random.number(0, 1) < 0.5;
    c.startPoint = p.at(reversed ? b : a);
    c.endPoint = p.at(reversed ? a : b);
    c.startDiameter = reversed ? 40 : 90;
    c.endDiameter = reversed ? 90 : 40;
    c.vect = along(p, offset);
    return {coneShape(a, 90, b, 40)};
}

void addRectangle(std::vector<Point>& out, const Point& centre, const Vector& a, const Vector& b) {
    for (const Vector& corner : {a + b, a - b, -a + b, -a - b}) {
        out.push_back(centre + corner * 0.5);
    }
}

Shapes frustum(Random& random, const Placement& p, PrimitivePtr& out) {
    auto& f = make<HextSqucone3D>(out);
    const Point base = random.point();
    const Vector z = random.direction();
    const Vector x = random.across(z);
    const Vector y = z.crossProduct(x);
    const Vector offset = x * 0.6 + y * 0.8;
    f.point = p.at(base);
    f.zAxis = along(p, z);
    f.xAxis = along(p, x);
    f.offsetDirection = along(p, offset);
    f.offsetLength = 20;
    f.height = random.number(50, 150);
    f.bottomX = 100;
    f.bottomY = 80;
    f.topX = 60;
    f.topY = 30;
    SolidShape shape{"frustum", {}, {}};
    addRectangle(shape.points, base, x * 100, y * 80);
    addRectangle(shape.points, base + z * f.height + offset * 20, x * 60, y * 30);
    return {shape};
}

template <int pointKind>
Shapes box(Random& random, const Placement& p, PrimitivePtr& out) {
    auto& b = make<HextBox3D>(out);
    const Point centre = random.point();
    const Vector x = random.direction();
    const Vector y = random.across(x);
    const Vector z = x.crossProduct(y);
    b.pointKind = pointKind;
    b.point = p.at(pointKind == 1 ? centre : centre - x * 50 - y * 30 - z * 20);
    b.xAxis = along(p, x);
    b.yAxis = along(p, y);
    b.xLength = 100;
    b.yLength = 60;
    b.zLength = 40;
    SolidShape shape{"extrusion", {}, {}};
    addRectangle(shape.points, centre - z * 20, x * 100, y * 60);
    addRectangle(shape.points, centre + z * 20, x * 100, y * 60);
    return {shape};
}

template <int sign>
Shapes wedge(Random& random, const Placement& p, PrimitivePtr& out) {
    auto& w = make<HextWedge3D>(out);
    const Point corner[] = {random.point(), random.point(), random.point()};
    w.point1 = p.at(corner[0]);
    w.point2 = p.at(corner[1]);
    w.point3 = p.at(corner[2]);
    w.wedgeSize = sign * random.number(20, 90);
    const Vector up = (corner[2] - corner[1]).crossProduct(corner[0] - corner[1]).normal() * w.wedgeSize;
    SolidShape shape{"extrusion", {}, {}};
    for (const Point& point : corner) {
        shape.points.push_back(point);
        shape.points.push_back(point + up);
    }
    return {shape};
}

Shapes prism(Random& random, const Placement& p, PrimitivePtr& out) {
    auto& s = make<HextPrism3D>(out);
    const Point end = random.point();
    const Vector axis = random.direction();
    const Vector radius = random.across(axis) * 60;
    s.endPoint = p.at(end);
    s.startPoint = p.at(end + axis * 140);
    s.vertexPoint = p.at(end + radius);
    s.sides = 3 + static_cast<int>(random.number(0, 6));
    SolidShape shape{"extrusion", {}, {}};
    for (int i = 0; i < s.sides; ++i) {
        const Vector spoke = radius.rotatedBy(2 * tlGePi * i / s.sides, axis);
        shape.points.push_back(end + spoke);
        shape.points.push_back(end + spoke + axis * 140);
    }
    return {shape};
}

// The trough as wide as the section; its arc counts by its middle.
Shapes saddle(Random& random, const Placement& p, PrimitivePtr& out) {
    auto& s = make<HextSaddle3D>(out);
    const Point base = random.point();
    const Vector x = random.direction();
    const Vector y = random.across(x);
    const Vector z = x.crossProduct(y);
    s.point = p.at(base);
    s.axis = along(p, x);
    s.sectionAxis = along(p, y);
    s.length = 150;
    s.sectionLength = 80;
    s.sectionHeight = 70;
    s.circleRadius = random.number(45, 120);
    const double depth = s.circleRadius - std::sqrt(s.circleRadius * s.circleRadius - 40 * 40);
    SolidShape shape{"extrusion", {s.circleRadius}, {}};
    for (const Point& point :
         {base, base + z * 70, base + z * (70 - depth) + y * 40, base + z * 70 + y * 80, base + y * 80}) {
        shape.points.push_back(point);
        shape.points.push_back(point + x * 150);
    }
    return {shape};
}

// Square to round with its square end towards the origin: cut at half height.
Shapes transition(Random& random, const Placement& p, PrimitivePtr& out) {
    auto& s = make<HextSqucir3D>(out);
    const Vector x = random.direction();
    const Vector normal = random.across(x);
    const Point base = Point() + normal * 60;
    const Point top = base + normal * 100;
    s.basePoint = p.at(base);
    s.topCenter = p.at(top);
    s.xAxis = along(p, x);
    s.baseNormal = along(p, normal);
    s.xLength = 120;
    s.yLength = 90;
    s.topRadius = 30;
    const double cut = 60 + (90 - 60) / 2.0;
    const Vector y = normal.crossProduct(x);
    const Point middle = base + normal * 50;
    SolidShape square{"frustum", {}, {}};
    addRectangle(square.points, base, x * 120, y * 90);
    addRectangle(square.points, middle, x * (cut / std::sqrt(2)), y * (cut / std::sqrt(2)));
    return {coneShape(middle, cut, top, 60), square};
}

Shapes line(Random& random, const Placement& p, PrimitivePtr& out) {
    auto& l = make<HextPrimaryLine>(out);
    const Point a = random.point();
    const Point b = random.point();
    l.startPoint = p.at(a);
    l.endPoint = p.at(b);
    return {{"line", {}, {a, b}}};
}

struct Case {
    const char* name;
    MakeCase make;
    bool handed = false;  // by its definition, or in its catalogue lines
};
const Case cases[] = {
    {"cylinder off the origin", cylinderOffTheOrigin},
    {"cylinder through the origin", cylinderThroughTheOrigin},
    {"sloped cylinder", sloped},
    {"sphere", sphere},
    {"dish", dish},
    {"cone", cone},
    {"eccentric cone", eccentricCone},
    {"frustum", frustum},
    {"box by corner", box<0>, true},
    {"box by centre", box<1>, true},
    {"wedge", wedge<1>, true},
    {"wedge downwards", wedge<-1>, true},
    {"prism", prism},
    {"saddle", saddle, true},
    {"transition", transition},
    {"torus, short way", torus<0>},
    {"torus, long way", torus<1>},
    {"torus, whole circle", torus<2>, true},
    {"torus, half circle", torus<3>, true},
    {"torus by angle", torusByAngle<1>, true},
    {"torus by angle, left-handed", torusByAngle<0>, true},
    {"square bend", squareTorus<0>, true},
    {"square bend by angle", squareTorus<1>, true},
    {"line", line},
};

struct Translation {
    std::string text;
    CataPoints points;
    int next = firstAddedNumber;
    std::string_view lost;
};

Translation translate(const HextPrimary& primitive, const Placement& p, const std::string& refText = {}) {
    TextStream out;
    Translation result;
    result.lost =
        translatePrimitive(out.stream(), primitive, {p.origin, p.x, p.y, p.z, refText}, result.points, result.next);
    for (const CataPoint& point : result.points) {
        writePoint(out.stream(), "SET", point);
    }
    EXPECT_EQ(result.next, firstAddedNumber + static_cast<int>(result.points.size()));
    result.text = out.text();
    return result;
}

TEST(Primitives, ReadBackAsWhatTheyCameFromAnywhereInThePlant) {
    Random places(7);
    for (const Case& test : cases) {
        for (unsigned seed = 0; seed < 60; ++seed) {
            const std::string what = std::string(test.name) + ", seed " + std::to_string(seed);
            std::string first;
            for (int turn = 0; turn < 3; ++turn) {
                Random random(seed);
                PrimitivePtr primitive;
                const Placement p = turn == 0 ? Placement() : places.placement();
                const Shapes expected = test.make(random, p, primitive);
                const std::string text = translate(*primitive, p).text;
                const Shapes actual = CataText(text).solids();
                ASSERT_EQ(actual.size(), expected.size()) << what << "\n" << text;
                if (turn == 0) {
                    first = withoutNoise(text);
                }
                EXPECT_EQ(withoutNoise(text), first) << what;
                // A bend in two pieces stands in either order.
                const bool swapped = actual.size() == 2 && actual[0].kind == actual[1].kind &&
                                     actual[0].points[0].distanceTo(expected[0].points[0]) > 1 &&
                                     actual[0].points[2].distanceTo(expected[0].points[0]) > 1;
                for (std::size_t i = 0; i < expected.size(); ++i) {
                    expectSame(actual[swapped ? 1 - i : i], expected[i], what + "\n" + text);
                }
                if (HasFatalFailure() || HasNonfatalFailure()) {
                    return;
                }
            }
        }
    }
}

// Angles and elbows have a left-handed frame. Solids told by points and directions stand in it as they should; an
// extrusion follows the cross product of its axes, so a box or saddle leaves its base to the other side.
TEST(Primitives, InALeftHandedFrameOnlyBoxesAndSaddlesRunTheOtherWay) {
    Placement mirrored;
    mirrored.origin = {5000, -300, 120};
    mirrored.z = {0, 0, -1};
    for (const Case& test : cases) {
        Random random(3);
        PrimitivePtr primitive;
        const Shapes expected = test.make(random, mirrored, primitive);
        const Shapes actual = CataText(translate(*primitive, mirrored).text).solids();
        for (std::size_t i = 0; !test.handed && i < expected.size(); ++i) {
            expectSame(actual.at(i), expected[i], test.name);
        }
    }
    HextBox3D box;
    box.pointKind = 1;
    box.point = mirrored.origin;
    box.xLength = 100;
    box.yLength = 60;
    box.zLength = 40;
    SolidShape lowered{"extrusion", {}, {}};
    addRectangle(lowered.points, {0, 0, 20}, {100, 0, 0}, {0, 60, 0});
    addRectangle(lowered.points, {0, 0, 60}, {100, 0, 0}, {0, 60, 0});
    expectSame(CataText(translate(box, mirrored).text).solids().at(0), lowered, "box");
    HextSaddle3D saddle;
    saddle.point = mirrored.origin;
    saddle.length = 150;
    saddle.sectionLength = 80;
    saddle.sectionHeight = 70;
    saddle.circleRadius = 50;  // 20 deep
    SolidShape turned{"extrusion", {50}, {}};
    for (const Point& point : {Point(), Point(0, 0, -70), Point(0, 40, -50), Point(0, 80, -70), Point(0, 80, 0)}) {
        turned.points.push_back(point);
        turned.points.push_back(point - Vector(150, 0, 0));
    }
    expectSame(CataText(translate(saddle, mirrored).text).solids().at(0), turned, "saddle");
}

// Off the origin along its own axis, in each plane and either way round, words alone tell an eccentric cone; an axis in
// no plane takes points.
TEST(Primitives, AnEccentricConeOnItsAxisNeedsPointsOnlyOutsideThePlanes) {
    const struct {
        Vector axis;
        Vector offset;
        std::size_t points;
    } courses[] = {{{1, 0, 0}, {0, 1, 0}, 0},          {{0, 0.6, 0.8}, {1, 0, 0}, 0},
                   {{-0.6, 0, 0.8}, {0, -1, 0}, 0},    {{0, 1, 0}, {0.6, 0, -0.8}, 0},
                   {{0.6, 0, 0.8}, {-0.8, 0, 0.6}, 0}, {{2 / 3., 2 / 3., 1 / 3.}, {1 / 3., -2 / 3., 2 / 3.}, 3}};
    Random random(5);
    for (const auto& [axis, offset, points] : courses) {
        for (const bool reversed : {false, true}) {
            const Placement p = random.placement();
            const Point a = Point() + axis * 40;
            const Point b = a + axis * 100 + offset * 25;
            HextEcone3D cone;
            cone.startPoint = p.at(reversed ? b : a);
            cone.endPoint = p.at(reversed ? a : b);
            cone.startDiameter = reversed ? 40 : 90;
            cone.endDiameter = reversed ? 90 : 40;
            cone.vect = p.along(offset);
            const Translation t = translate(cone, p);
            EXPECT_EQ(t.points.size(), points) << t.text;
            expectSame(CataText(t.text).solids().at(0), coneShape(a, 90, b, 40), t.text);
        }
    }
}

std::string textOf(const HextPrimary& primitive, const std::string& refText = {}) {
    return translate(primitive, {}, refText).text;
}

TEST(Primitives, SpellTheirLines) {
    HextCylinder3D c;
    c.startPoint = {-30, 0, 0};
    c.endPoint = {50, 0, 0};
    c.diameter = 20;
    EXPECT_EQ(textOf(c), "call !!ORNACataLCYL('(-30.000000)','(50.000000)','X0.000000Y','20.000000')\n");
    c.startPoint = {0, 50, 0};
    c.endPoint = {0, 120, 0};
    EXPECT_EQ(textOf(c), "call !!ORNACataLCYL('(50.000000)','(120.000000)','X90.000000Y','20.000000')\n");
    EXPECT_EQ(textOf(c, "X DDANGLE Y"),
              "call !!ORNACataLCYL('(50.000000)','(120.000000)','X DDANGLE Y','20.000000')\n");
    c.startPoint = {100, 10, 0};
    c.endPoint = {100, 10, -50};
    EXPECT_EQ(
        textOf(c),
        "call !!ORNACataLCYL('(0.000000)','(50.000000)','p5','20.000000')\n"
        "call !!ORNACataPtca('/SET','5','0','0.000000','(100.000000)','(10.000000)','(0.000000)','Y-90.000000Z')\n");
    HextSphere3D s;
    s.radius = 5;
    EXPECT_EQ(textOf(s), "call !!ORNACataSSPH('X90.000000Y','(0.000000)','10.000000')\n");
    HextOval3D d;
    d.axialRadius = 25;
    d.radialRadius = d.baseRadius = 50;
    d.point = {0, 0, 40};
    // A dish that stands along its axis off the origin keeps its direction alone.
    EXPECT_EQ(textOf(d), "call !!ORNACataSDSH('Y90.000000Z','(0)','25.000000','100.000000')\n");
    HextConcone3D k;
    k.endPoint = {0, 0, 70};
    k.startDiameter = 30;
    k.endDiameter = 20;
    EXPECT_EQ(textOf(k), "call !!ORNACataLSNO('z','Y90.000000Z','(30.000000)','(20.000000)','(0.000000)','(70.000000)',"
                         "'(0.000000)','2')\n");
    HextPrimaryText text;
    EXPECT_EQ(textOf(text), "");
}

// Shears by the end that is cut and the sense of the tilt, for axes along X and Y.
TEST(Primitives, ASlopedCylinderTellsTheTiltOfTheEndThatIsCut) {
    HextScylinder3D c;
    c.startPoint = {10, 0, 0};
    c.endPoint = {60, 0, 0};
    c.vect = {std::cos(0.5), std::sin(0.5), 0};
    c.diameter = 8;
    const std::string tilt = std::to_string(0.5 * 180 / tlGePi);
    const std::string zero = "','(0.000000)";
    EXPECT_EQ(textOf(c), "call !!ORNACataSSLC('X0.000000Y','(50.000000)','8.000000','(0.000000)" + zero + "','(" +
                             tilt + ")" + zero + "','(10.000000)')\n");
    std::swap(c.startPoint, c.endPoint);
    c.vect = {std::cos(0.5), 0, -std::sin(0.5)};
    EXPECT_EQ(textOf(c), "call !!ORNACataSSLC('X0.000000Y','(50.000000)','8.000000','(0.000000)','(-" + tilt + ")" +
                             zero + zero + "','(10.000000)')\n");
    c.startPoint = {0, 0, 0};
    c.endPoint = {0, 50, 0};
    c.vect = {0, std::cos(0.5), std::sin(0.5)};
    EXPECT_NE(textOf(c).find("'(0.000000)','(" + tilt + ")','(0.000000)')"), std::string::npos) << textOf(c);
    c.vect = {0, -1, 0};
    EXPECT_NE(textOf(c).find("'(0.000000)','(0.000000)','(0.000000)','(0.000000)','(0.000000)')"), std::string::npos);
}

// Along Z the tilt in the plane of X and Z is told; that in the plane of Y and Z has no place in the line.
TEST(Primitives, ASlopedCylinderAlongZTellsItsTiltTowardsX) {
    HextScylinder3D c;
    c.startPoint = {0, 0, 20};
    c.endPoint = {0, 0, 90};
    c.diameter = 8;
    const std::string tilt = std::to_string(0.5 * 180 / tlGePi);
    const std::string begin = "call !!ORNACataSSLC('Y90.000000Z','(70.000000)','8.000000',";
    const std::string zero = "'(0.000000)','(0.000000)',";
    c.vect = {std::sin(0.5), 0, std::cos(0.5)};
    EXPECT_EQ(textOf(c), begin + zero + "'(0.000000)','(-" + tilt + ")','(20.000000)')\n");
    std::swap(c.startPoint, c.endPoint);
    c.vect = {std::sin(0.5), 0, -std::cos(0.5)};
    EXPECT_EQ(textOf(c), begin + "'(0.000000)','(-" + std::to_string(180 - 0.5 * 180 / tlGePi) + ")'," + zero +
                             "'(20.000000)')\n");
    c.vect = {0, std::sin(0.5), std::cos(0.5)};
    EXPECT_EQ(textOf(c), begin + zero + zero + "'(20.000000)')\n");
}

// Both halves of a transition stand at the end that is nearer to the origin; with that the round one, the frustum
// begins with its square.
TEST(Primitives, ATransitionBeginsAtTheEndNearerToTheOrigin) {
    HextSqucir3D s;
    s.topCenter = {0, 0, 60};
    s.basePoint = {0, 0, 160};
    s.baseNormal = {0, 0, -1};
    s.xLength = 120;
    s.yLength = 90;
    s.topRadius = 30;
    const double cut = 60 + (90 - 60) / 2.0;
    const std::string side = std::to_string(cut / std::sqrt(2.0));
    const Translation t = translate(s, {});
    const CataText text(t.text);
    EXPECT_EQ(text.calls("LSNO").at(0)->arguments,
              (std::vector<std::string>{"P6", "P5", "(60.000000)", "(75.000000)", "(0.000000)", "(50.000000)",
                                        "(50.000000)", "2"}));
    EXPECT_EQ(text.calls("LPYR").at(0)->arguments,
              (std::vector<std::string>{"P9", "P7", "P8", "(0.000000)", "(50.000000)", "90.000000", "120.000000", side,
                                        side, "(0.000000)", "(0.000000)"}));
    ASSERT_EQ(t.points.size(), 5U);
    for (const CataPoint& point : t.points) {
        EXPECT_TRUE(point.pos.isEqualTo({0, 0, 60})) << point.id;
    }
    EXPECT_TRUE(t.points[0].worldPoint.isEqualTo({0, 0, 160}));
}

TEST(Primitives, PointsOfBendsKnowTheirPlaceInThePlant) {
    HextTorus3D bend;
    bend.center = {100, 0, 0};
    bend.startPoint = {200, 0, 0};
    bend.thirdField = {100, -100, 0};
    bend.startDiameter = bend.endDiameter = 30;
    bend.arcKind = 1;
    const Translation t = translate(bend, {});
    ASSERT_EQ(t.points.size(), 4U);
    EXPECT_TRUE(t.points[0].worldPoint.isEqualTo({}));
    EXPECT_TRUE(t.points[1].worldPoint.isEqualTo({200, 0, 0}));
    EXPECT_TRUE(t.points[2].worldPoint.isEqualTo({200, 0, 0}));
    EXPECT_TRUE(t.points[3].worldPoint.isEqualTo({100, -100, 0}));
    const CataText text(t.text);
    ASSERT_EQ(text.calls("SCTO").size(), 2U);
    EXPECT_EQ(text.calls("SCTO")[0]->arguments[0], "P5");  // the extra one first
    bend.form = 1;
    bend.thirdField = {0, 0, 1};
    bend.angle = 270;
    EXPECT_EQ(CataText(translate(bend, {}).text).calls("SCTO")[0]->arguments[0], "P7");  // the main one first
    HextSqutorus3D flat;
    flat.center = bend.center;
    flat.startPoint = bend.startPoint;
    flat.thirdField = {100, 100, 0};
    flat.startWidth = flat.endWidth = 20;
    const Translation thin = translate(flat, {});
    EXPECT_EQ(thin.points.size(), 2U);
    EXPECT_EQ(CataText(thin.text).calls("SRTO").size(), 0U);
    EXPECT_EQ(thin.lost, "is too thin or too large for the catalogue");
    flat.startHeight = flat.endHeight = 5;
    EXPECT_EQ(translate(flat, {}).lost, "");
    EXPECT_EQ(translate(HextPrimaryText(), {}).lost, "");
    EXPECT_EQ(translate(HextRevolve(), {}).lost, "has no counterpart in the catalogue");
}

std::string failureOf(const HextPrimary& primitive) {
    TextStream out;
    CataPoints points;
    int next = firstAddedNumber;
    try {
        translatePrimitive(out.stream(), primitive, {}, points, next);
    } catch (const ExportException& failure) {
        EXPECT_TRUE(points.empty());
        EXPECT_EQ(next, firstAddedNumber);
        EXPECT_EQ(out.text(), "");
        return failure.what();
    }
    return "none";
}

TEST(Primitives, ThatCannotBeTranslatedSayWhy) {
    TestUi ui;
    HextBox3D box;
    box.xAxis = {0, 0, 0};
    EXPECT_EQ(failureOf(box), "无效方向");
    box.xAxis = {1, 0, 0};
    box.xLength = std::nan("");
    EXPECT_EQ(failureOf(box), "不能转换为HEXT长方体");
    HextWedge3D wedge;
    wedge.point3 = {10, 0, 0};
    wedge.point1 = {20, 0, 0};
    EXPECT_EQ(failureOf(wedge), "Wedge体元局部坐标系获取失败!");
    wedge.point1 = {0, 20, 0};
    wedge.wedgeSize = 1e200;
    EXPECT_NE(failureOf(wedge), "none");
    HextPrism3D prism;
    prism.startPoint = {0, 0, 10};
    prism.vertexPoint = {5, 0, 0};
    prism.sides = 101;
    EXPECT_EQ(failureOf(prism), "不能转换为HEXT拉伸体！");
    prism.sides = 100;
    EXPECT_EQ(failureOf(prism), "none");
    prism.vertexPoint = {0, 0, -5};
    EXPECT_EQ(failureOf(prism), "不能转换为HEXT拉伸体！");
    HextSaddle3D saddle;  // half a circle has no tangent corner
    saddle.length = 10;
    saddle.sectionLength = 60;
    saddle.sectionHeight = 40;
    saddle.circleRadius = 20;
    EXPECT_EQ(failureOf(saddle), "不能转换为HEXT拉伸体！");
    saddle.circleRadius = 50;
    EXPECT_EQ(failureOf(saddle), "none");
    saddle.sectionAxis = saddle.axis;
    EXPECT_EQ(failureOf(saddle), "不能转换为HEXT拉伸体！");
    HextSqucone3D frustum;
    frustum.xAxis = frustum.zAxis;
    EXPECT_EQ(failureOf(frustum), "不能转换为HEXT的矩形断面台");
    HextCylinder3D cylinder;
    cylinder.startPoint = {1, 1, 1};
    cylinder.endPoint = {1e200, 1, 2};
    EXPECT_EQ(failureOf(cylinder), "不能转换为HEXT圆柱！");
    HextOval3D dish;
    dish.axialRadius = 10;
    dish.radialRadius = 20;
    dish.baseRadius = 30;
    EXPECT_EQ(failureOf(dish), "参数无效");
    EXPECT_EQ(ui.printed, "\nheight is nan");
    HextSqutorus3D bend;
    bend.form = 1;
    bend.startPoint = {10, 0, 0};
    bend.normal = {1, 0, 0};
    bend.angle = 90;
    EXPECT_EQ(failureOf(bend), "");
}

}  // namespace
