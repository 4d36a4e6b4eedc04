#include "rebuilt_primitive.h"

#include <cmath>

namespace {

constexpr double pi = 3.14159265358979323846;

// Takes the fields of a record one after the other and notes what differs from the model's.
class Comparison {
public:
    explicit Comparison(const readers::eem::Record& record) : record_(record) {}

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
    // The fields that follow; all() has the code before them.
    template <typename... Values>
    void next(const Values&... values) {
        (nextField(values), ...);
    }
    void code(std::int32_t expected) { same(record_.code, expected, "code"); }
    template <typename... Values>
    void all(std::int32_t expectedCode, const Values&... values) {
        code(expectedCode);
        next(values...);
    }
    void integer(std::int32_t expected, const char* what) {
        same(record_.integers.size() == 1 ? record_.integers[0] : -1, expected, what);
    }
    const readers::eem::Record& record() const { return record_; }
    std::string result() {
        same(static_cast<double>(at_), static_cast<double>(record_.numbers.size()), "count of numbers");
        return text_;
    }

private:
    void nextField(double expected) {
        const std::string what = "number " + std::to_string(at_);
        same(number(), expected, what.c_str());
    }
    void nextField(const HxGeVector3D& expected) { next(expected.x, expected.y, expected.z); }
    void nextField(const HxGePoint3D& expected) { next(expected.x, expected.y, expected.z); }

    const readers::eem::Record& record_;
    std::size_t at_ = 0;
    std::string text_;
};

void compare(const HextCylinder3D& m, Comparison& c) {
    c.all(0, m.startPoint, m.endPoint, m.diameter / 2);
}
void compare(const HextScylinder3D& m, Comparison& c) {
    c.all(10, m.startPoint, m.endPoint, m.vect, m.diameter / 2);
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
void compare(const HextConcone3D& m, Comparison& c) {
    c.all(3, m.startPoint, m.endPoint, m.startDiameter / 2, m.endDiameter / 2);
}
void compare(const HextEcone3D& m, Comparison& c) {
    c.all(4, m.startPoint, m.endPoint, m.startDiameter / 2, m.endDiameter / 2, m.vect);
}
void compare(const HextOval3D& m, Comparison& c) {
    c.all(5, m.point, m.axialRadius, m.radialRadius, m.baseRadius, m.vect);
}
// A turned vertex stands as far from the axis, half a side further round.
void compare(const HextPrism3D& m, Comparison& c) {
    c.code(m.sideMode == 0 ? 6 : 7);
    c.next(m.endPoint, m.startPoint);
    const HxGeVector3D vertex = c.point() - m.endPoint;
    const HxGeVector3D original = m.vertexPoint - m.endPoint;
    const HxGeVector3D axis = (m.startPoint - m.endPoint).normal();
    const double turn = std::atan2(axis.dotProduct(original.crossProduct(vertex)), original.dotProduct(vertex));
    c.same(vertex.length(), original.length(), "radius");
    c.same(axis.dotProduct(vertex), axis.dotProduct(original), "height of the vertex");
    c.same(turn, m.sideMode == 0 ? 0 : pi / m.sides, "turn");
    c.integer(m.sides, "sides");
}
void compareList(const std::vector<readers::eem::Vertex>& list, const HextVertexList& expected,
                 const TlGeMatrix3d& toLocal, Comparison& c) {
    c.same(static_cast<double>(list.size()), static_cast<double>(expected.size()), "vertices");
    for (std::size_t i = 0; i < std::min(list.size(), expected.size()); ++i) {
        const auto& at = list[i].point;
        c.same(list[i].kind, expected[i].kind, "kind");
        c.same(toLocal * HxGePoint3D(at[0], at[1], at[2]), expected[i].point, "vertex");
    }
}
void compare(const HextRevolve& m, Comparison& c) {
    c.code(8);
    compareList(c.record().lists.at(0), m.profile ? *m.profile : HextVertexList(), TlGeMatrix3d(), c);
    c.next(m.center, m.axis, m.angle);
}
void compare(const HextSaddle3D& m, Comparison& c) {
    c.all(9, m.point, m.axis, m.sectionAxis, m.length, m.sectionLength, m.sectionHeight, m.circleRadius);
}
void compare(const HextSphere3D& m, Comparison& c) {
    c.all(11, m.center, m.radius);
}
// World vertices are taken back into the frame of the outline.
void compare(const HextSpolygon& m, Comparison& c) {
    c.code(12);
    const HxGeVector3D normal = m.xAxis.crossProduct(m.yAxis).normal();
    const TlGeMatrix3d toLocal =
        TlGeMatrix3d::coordSystem(m.origin, m.xAxis.normal(), m.yAxis.normal(), normal).inverse();
    std::vector<HextVertexList> outlines{m.outline ? *m.outline : HextVertexList()};
    if (m.holes) {
        outlines.insert(outlines.end(), m.holes->begin(), m.holes->end());
    }
    const auto& lists = c.record().lists;
    c.same(static_cast<double>(lists.size()), static_cast<double>(outlines.size()), "lists");
    for (std::size_t i = 0; i < std::min(lists.size(), outlines.size()); ++i) {
        compareList(lists[i], outlines[i], toLocal, c);
    }
    c.next(normal, m.height);
}
void compare(const HextSqucir3D& m, Comparison& c) {
    c.all(13, m.basePoint, m.topCenter, m.xAxis, m.baseNormal, m.xLength, m.yLength, m.topRadius);
}
void compare(const HextSqucone3D& m, Comparison& c) {
    c.all(14, m.point, m.xAxis, m.zAxis, m.offsetDirection);
    c.next(m.bottomX, m.bottomY, m.topX, m.topY, m.height, m.offsetLength);
}
// The start turned by the sweep about the axis comes to the end of the centre line. The long way round keeps the axis
// of the short one, so there it is the start turned backwards.
template <typename Bend>
void compareArc(const Bend& m, const HxGeVector3D& axisByAngle, Comparison& c) {
    c.next(m.center, m.startPoint);
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
    c.next(m.startWidth, m.startHeight, m.endWidth, m.endHeight);
}
void compare(const HextTorus3D& m, Comparison& c) {
    c.code(m.form == 0 ? 17 : 18);
    compareArc(m, m.thirdField.asVector(), c);
    c.next(m.startDiameter / 2, m.endDiameter / 2);
}
void compare(const HextWedge3D& m, Comparison& c) {
    c.all(19, m.point1, m.point2, m.point3, m.wedgeSize);
}
void compare(const HextPrimaryLine& m, Comparison& c) {
    c.all(20, m.startPoint, m.endPoint);
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

std::string difference(const readers::eem::Record& record, const HextPrimary& original) {
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
