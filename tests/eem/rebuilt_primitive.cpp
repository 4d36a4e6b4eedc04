#include "rebuilt_primitive.h"

#include <cmath>

namespace {

constexpr double pi = 3.14159265358979323846;

// Takes the fields of a record one after the other and notes what differs from the model's.
class Comparison {
public:
    explicit Comparison(const eemcheck::Record& record) : record_(record) {}

    double number() { return at_ < record_.numbers.size() ? record_.numbers[at_++] : std::nan(""); }
    HxGePoint3D point() {
        const double x = number();
        const double y = number();
        return {x, y, number()};
    }
    HxGeVector3D direction() { return point().asVector(); }

    void same(double found, double expected, const char* what) {
        if (!(std::fabs(found - expected) <= 1e-9 * std::max(1.0, std::fabs(expected)))) {
            text_ += std::string(what) + " " + std::to_string(found) + " for " + std::to_string(expected) + "; ";
        }
    }
    void same(const HxGeVector3D& found, const HxGeVector3D& expected, const char* what) {
        same(found.x, expected.x, what);
        same(found.y, expected.y, what);
        same(found.z, expected.z, what);
    }
    void same(const HxGePoint3D& found, const HxGePoint3D& expected, const char* what) {
        same(found.asVector(), expected.asVector(), what);
    }
    void nextNumber(double expected, const char* what) { same(number(), expected, what); }
    void nextPoint(const HxGePoint3D& expected, const char* what) { same(point(), expected, what); }
    void nextDirection(const HxGeVector3D& expected, const char* what) { same(direction(), expected, what); }
    void code(std::int32_t expected) { same(record_.code, expected, "code"); }
    void integer(std::int32_t expected, const char* what) {
        same(record_.integers.size() == 1 ? record_.integers[0] : -1, expected, what);
    }
    const eemcheck::Record& record() const { return record_; }
    std::string result() {
        same(static_cast<double>(at_), static_cast<double>(record_.numbers.size()), "count of numbers");
        return text_;
    }

private:
    const eemcheck::Record& record_;
    std::size_t at_ = 0;
    std::string text_;
};

void compare(const HextCylinder3D& m, Comparison& c) {
    c.code(0);
    c.nextPoint(m.startPoint, "start");
    c.nextPoint(m.endPoint, "end");
    c.nextNumber(m.diameter / 2, "radius");
}
void compare(const HextScylinder3D& m, Comparison& c) {
    c.code(10);
    c.nextPoint(m.startPoint, "start");
    c.nextPoint(m.endPoint, "end");
    c.nextDirection(m.vect, "normal");
    c.nextNumber(m.diameter / 2, "radius");
}
// Boxes are the same when their centres are.
void compare(const HextBox3D& m, Comparison& c) {
    c.code(m.pointKind == 0 ? 1 : 2);
    HextBox3D rebuilt;
    rebuilt.point = c.point();
    rebuilt.xAxis = c.direction();
    rebuilt.yAxis = c.direction();
    rebuilt.xLength = c.number();
    rebuilt.yLength = c.number();
    rebuilt.zLength = c.number();
    rebuilt.handedness = c.record().handedness;
    HxGePoint3D expected = m.center();
    if (m.pointKind != 0) {
        // The record keeps the height of the centre.
        const HxGeVector3D z = m.xAxis.crossProduct(m.yAxis).normal() * (m.handedness == 0 ? -1.0 : 1.0);
        expected += z * (m.zLength / 2);
    }
    c.same(rebuilt.center(), expected, "centre");
    c.same(rebuilt.xAxis, m.xAxis, "x axis");
    c.same(rebuilt.yAxis, m.yAxis, "y axis");
    c.same(HxGeVector3D(rebuilt.xLength, rebuilt.yLength, rebuilt.zLength), {m.xLength, m.yLength, m.zLength}, "size");
}
template <typename Cone>
void compareCone(const Cone& m, Comparison& c) {
    c.nextPoint(m.startPoint, "start");
    c.nextPoint(m.endPoint, "end");
    c.nextNumber(m.startDiameter / 2, "start radius");
    c.nextNumber(m.endDiameter / 2, "end radius");
}
void compare(const HextConcone3D& m, Comparison& c) {
    c.code(3);
    compareCone(m, c);
}
void compare(const HextEcone3D& m, Comparison& c) {
    c.code(4);
    compareCone(m, c);
    c.nextDirection(m.vect, "offset");
}
void compare(const HextOval3D& m, Comparison& c) {
    c.code(5);
    c.nextPoint(m.point, "base");
    c.nextNumber(m.axialRadius, "axial");
    c.nextNumber(m.radialRadius, "radial");
    c.nextNumber(m.baseRadius, "base radius");
    c.nextDirection(m.vect, "direction");
}
// A turned vertex stands as far from the axis, half a side further round.
void compare(const HextPrism3D& m, Comparison& c) {
    c.code(m.sideMode == 0 ? 6 : 7);
    c.nextPoint(m.endPoint, "end");
    c.nextPoint(m.startPoint, "start");
    const HxGeVector3D vertex = c.point() - m.endPoint;
    const HxGeVector3D original = m.vertexPoint - m.endPoint;
    const HxGeVector3D axis = (m.startPoint - m.endPoint).normal();
    const double turn = std::atan2(axis.dotProduct(original.crossProduct(vertex)), original.dotProduct(vertex));
    c.same(vertex.length(), original.length(), "radius");
    c.same(axis.dotProduct(vertex), axis.dotProduct(original), "height of the vertex");
    c.same(turn, m.sideMode == 0 ? 0 : pi / m.sides, "turn");
    c.integer(m.sides, "sides");
}
void compareVertex(const eemcheck::Vertex& found, std::int32_t kind, const HxGePoint3D& expected, Comparison& c) {
    c.same(found.kind, kind, "kind");
    c.same(HxGePoint3D(found.point[0], found.point[1], found.point[2]), expected, "vertex");
}
void compare(const HextRevolve& m, Comparison& c) {
    c.code(8);
    const HextVertexList empty;
    const HextVertexList& profile = m.profile ? *m.profile : empty;
    const std::vector<eemcheck::Vertex>& list = c.record().lists.at(0);
    c.same(static_cast<double>(list.size()), static_cast<double>(profile.size()), "vertices");
    for (std::size_t i = 0; i < std::min(list.size(), profile.size()); ++i) {
        compareVertex(list[i], profile[i].kind, profile[i].point, c);
    }
    c.nextPoint(m.center, "centre");
    c.nextDirection(m.axis, "axis");
    c.nextNumber(m.angle, "angle");
}
void compare(const HextSaddle3D& m, Comparison& c) {
    c.code(9);
    c.nextPoint(m.point, "point");
    c.nextDirection(m.axis, "axis");
    c.nextDirection(m.sectionAxis, "section axis");
    c.nextNumber(m.length, "length");
    c.nextNumber(m.sectionLength, "section length");
    c.nextNumber(m.sectionHeight, "section height");
    c.nextNumber(m.circleRadius, "radius");
}
void compare(const HextSphere3D& m, Comparison& c) {
    c.code(11);
    c.nextPoint(m.center, "centre");
    c.nextNumber(m.radius, "radius");
}
// World vertices taken back into the frame of the outline.
void compareOutline(const std::vector<eemcheck::Vertex>& list, const HextVertexList& outline, const HextSpolygon& m,
                    Comparison& c) {
    c.same(static_cast<double>(list.size()), static_cast<double>(outline.size()), "vertices");
    const TlGeMatrix3d toLocal =
        TlGeMatrix3d::coordSystem(m.origin, m.xAxis.normal(), m.yAxis.normal(), m.xAxis.crossProduct(m.yAxis).normal())
            .inverse();
    for (std::size_t i = 0; i < std::min(list.size(), outline.size()); ++i) {
        eemcheck::Vertex local = list[i];
        const HxGePoint3D p = toLocal * HxGePoint3D(local.point[0], local.point[1], local.point[2]);
        local.point = {p.x, p.y, p.z};
        compareVertex(local, outline[i].kind, outline[i].point, c);
    }
}
void compare(const HextSpolygon& m, Comparison& c) {
    c.code(12);
    std::vector<HextVertexList> outlines{m.outline ? *m.outline : HextVertexList()};
    if (m.holes) {
        outlines.insert(outlines.end(), m.holes->begin(), m.holes->end());
    }
    const auto& lists = c.record().lists;
    c.same(static_cast<double>(lists.size()), static_cast<double>(outlines.size()), "lists");
    for (std::size_t i = 0; i < std::min(lists.size(), outlines.size()); ++i) {
        compareOutline(lists[i], outlines[i], m, c);
    }
    c.nextDirection(m.xAxis.crossProduct(m.yAxis).normal(), "normal");
    c.nextNumber(m.height, "height");
}
void compare(const HextSqucir3D& m, Comparison& c) {
    c.code(13);
    c.nextPoint(m.basePoint, "base");
    c.nextPoint(m.topCenter, "top");
    c.nextDirection(m.xAxis, "x axis");
    c.nextDirection(m.baseNormal, "normal");
    c.nextNumber(m.xLength, "x length");
    c.nextNumber(m.yLength, "y length");
    c.nextNumber(m.topRadius, "radius");
}
void compare(const HextSqucone3D& m, Comparison& c) {
    c.code(14);
    c.nextPoint(m.point, "point");
    c.nextDirection(m.xAxis, "x axis");
    c.nextDirection(m.zAxis, "z axis");
    c.nextDirection(m.offsetDirection, "offset direction");
    for (const double size : {m.bottomX, m.bottomY, m.topX, m.topY, m.height, m.offsetLength}) {
        c.nextNumber(size, "size");
    }
}
// The start turned by the sweep about the axis comes to the end of the centre line. The long way round keeps the axis
// of the short one, so there it is the start turned backwards.
template <typename Bend>
void compareArc(const Bend& m, const HxGeVector3D& axisByAngle, Comparison& c) {
    c.nextPoint(m.center, "centre");
    c.nextPoint(m.startPoint, "start");
    const HxGeVector3D axis = c.direction();
    const double sweep = c.number();
    if (m.form != 0) {
        c.same(axis, axisByAngle, "axis");
        c.same(sweep * 180 / pi, m.angle, "degrees");
    } else if (m.arcKind >= 2) {
        c.same(axis, m.thirdField.asVector(), "axis");
        c.same(sweep, m.arcKind == 2 ? 2 * pi : pi, "sweep");
    } else {
        const double turn = m.arcKind == 0 ? sweep : 2 * pi - sweep;
        const HxGeVector3D end = (m.startPoint - m.center).rotatedBy(turn, axis);
        c.same(axis.length(), 1, "axis");
        c.same(end.normal(), (m.thirdField - m.center).normal(), "end");
        c.same(sweep <= pi, m.arcKind == 0, "way");
    }
}
void compare(const HextSqutorus3D& m, Comparison& c) {
    c.code(m.form == 0 ? 15 : 16);
    compareArc(m, m.normal, c);
    for (const double size : {m.startWidth, m.startHeight, m.endWidth, m.endHeight}) {
        c.nextNumber(size, "size");
    }
}
void compare(const HextTorus3D& m, Comparison& c) {
    c.code(m.form == 0 ? 17 : 18);
    compareArc(m, m.thirdField.asVector(), c);
    c.nextNumber(m.startDiameter / 2, "start radius");
    c.nextNumber(m.endDiameter / 2, "end radius");
}
void compare(const HextWedge3D& m, Comparison& c) {
    c.code(19);
    c.nextPoint(m.point1, "point 1");
    c.nextPoint(m.point2, "point 2");
    c.nextPoint(m.point3, "point 3");
    c.nextNumber(m.wedgeSize, "size");
}
void compare(const HextPrimaryLine& m, Comparison& c) {
    c.code(20);
    c.nextPoint(m.startPoint, "start");
    c.nextPoint(m.endPoint, "end");
}

template <typename Class>
bool compareAs(const HextPrimary& original, Comparison& c) {
    if (original.isA() != Class::desc()) {
        return false;
    }
    compare(static_cast<const Class&>(original), c);
    return true;
}

template <typename... Classes>
bool compareAny(const HextPrimary& original, Comparison& c) {
    return (compareAs<Classes>(original, c) || ...);
}

}  // namespace

std::string difference(const eemcheck::Record& record, const HextPrimary& original) {
    Comparison c(record);
    const bool isKnown =
        compareAny<HextCylinder3D, HextScylinder3D, HextBox3D, HextConcone3D, HextEcone3D, HextOval3D, HextPrism3D,
                   HextRevolve, HextSaddle3D, HextSphere3D, HextSpolygon, HextSqucir3D, HextSqucone3D, HextSqutorus3D,
                   HextTorus3D, HextWedge3D, HextPrimaryLine>(original, c);
    if (const HextPrimary3D* solid = HextPrimary3D::cast(&original)) {
        c.same(record.handedness, solid->handedness, "handedness");
    }
    return isKnown ? c.result() : std::string("no record expected for ") + original.isA()->name();
}
