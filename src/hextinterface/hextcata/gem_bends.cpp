// Translators of round and rectangular elbows.
#include "frame/exceptions.h"
#include "hextinterface/hextbasemethod/object_tests.h"
#include "hextinterface/hextcata/gem_classes.h"

#include <algorithm>

// The course of a bend: the points in world coordinates, the tangents in the local frame's axes come later.
struct BendCourse {
    HxGePoint3D center;
    HxGePoint3D start;
    HxGePoint3D end;
    HxGeVector3D startTangent;
    HxGeVector3D endTangent;
    double sweep = 0;  // radians
};

namespace {

constexpr double sweepTolerance = 1e-5;
constexpr double degrees = tlGePi / 180.0;

enum ArcKind { ShortWay = 0, LongWay = 1, WholeCircle = 2, HalfCircle = 3 };

// The axis of a bend that is told by its points.
template <typename Bend>
HxGeVector3D bendAxis(const Bend& bend) {
    if (bend.arcKind == WholeCircle || bend.arcKind == HalfCircle) {
        return bend.thirdField.asVector().normal();
    }
    const HxGeVector3D r0 = (bend.startPoint - bend.center).normal();
    const HxGeVector3D r1 = (bend.thirdField - bend.center).normal();
    const HxGeVector3D axis = r0.isParallelTo(r1, nearlyParallel) ? r0.perpVector() : r0.crossProduct(r1);
    return bend.arcKind == LongWay ? -axis.normal() : axis.normal();
}

template <typename Bend>
double sweepOf(const Bend& bend) {
    const double angle = (bend.startPoint - bend.center).angleTo(bend.thirdField - bend.center);
    switch (bend.arcKind) {
    case LongWay:
        return 2 * tlGePi - angle;
    case WholeCircle:
        return 2 * tlGePi;
    case HalfCircle:
        return tlGePi;
    default:
        return angle;
    }
}

template <typename Bend>
HxGePoint3D endOf(const Bend& bend) {
    return bend.arcKind == WholeCircle  ? bend.startPoint
           : bend.arcKind == HalfCircle ? bend.center + (bend.center - bend.startPoint)
                                        : bend.thirdField;
}

// A bend by its points and the kind of its arc.
template <typename Bend>
BendCourse courseByPoints(const Bend& bend) {
    const HxGeVector3D axis = bendAxis(bend);
    BendCourse course{bend.center, bend.startPoint, endOf(bend), {}, {}, sweepOf(bend)};
    course.startTangent = (bend.startPoint - bend.center).normal().crossProduct(axis).normal();
    course.endTangent = bend.arcKind == WholeCircle ? -course.startTangent
                        : bend.arcKind == HalfCircle
                            ? course.startTangent
                            : axis.crossProduct((bend.thirdField - bend.center).normal()).normal();
    return course;
}

// A bend by axis and angle, which counts as degrees.
template <typename Bend>
BendCourse courseByAngle(const Bend& bend, HxGeVector3D axis) {
    if (bend.handedness == 0) {
        axis = -axis;
    }
    const double sweep = bend.angle * degrees;
    const HxGeVector3D radius = bend.startPoint - bend.center;
    const HxGeVector3D turned = radius.rotatedBy(sweep, axis);
    BendCourse course{bend.center, bend.startPoint, bend.center + turned, {}, {}, sweep};
    course.startTangent = radius.normal().crossProduct(axis).normal();
    course.endTangent = sweep == 2 * tlGePi ? -course.startTangent : axis.crossProduct(turned).normal();
    return course;
}

bool isSplit(const BendCourse& course) {
    return course.sweep > tlGePi + sweepTolerance;
}

BendCourse courseOf(const HextSqutorus3D& bend) {
    if (bend.form != 1) {
        return courseByPoints(bend);
    }
    const BendCourse course = courseByAngle(bend, bend.normal);
    if (course.startTangent.isZeroLength() || course.endTangent.isZeroLength()) {
        throw ExportException("");
    }
    return course;
}

}  // namespace

HEXT_CATA_TORUSTrans::HEXT_CATA_TORUSTrans(const HextTorus3D& primitive, const GemFrame& frame, int nextNumber)
    : HEXT_CATA_TORUSTrans(courseByPoints(primitive), std::min(primitive.startDiameter, primitive.endDiameter), frame,
                           nextNumber) {}

HEXT_CATA_TORUSTrans1::HEXT_CATA_TORUSTrans1(const HextTorus3D& primitive, const GemFrame& frame, int nextNumber)
    : HEXT_CATA_TORUSTrans(courseByAngle(primitive, primitive.thirdField.asVector()),
                           std::min(primitive.startDiameter / 2, primitive.endDiameter / 2), frame, nextNumber) {}

HEXT_CATA_TORUSTrans::HEXT_CATA_TORUSTrans(const BendCourse& course, double diameter, const GemFrame& frame,
                                           int nextNumber)
    : HEXT_CATA_GemTrans(frame, nextNumber) {
    fill(course, diameter);
}

void HEXT_CATA_TORUSTrans::fill(const BendCourse& course, double diameter) {
    HxGePoint3D start = toLocal(course.start);
    HxGeVector3D tangent = toLocalVector(course.startTangent);
    if (isSplit(course)) {
        const HxGePoint3D middle = toLocal(course.center + (course.center - course.start));
        extra_.axisA = addPoint(middle, {}, tangent);
        extra_.axisB = addPoint(start, course.start, tangent);
        extra_.diameter = diameter;
        extra_.valid = true;
        start = middle;
        tangent = -tangent;
    }
    main_.axisA = addPoint(start, course.start, tangent);
    main_.axisB = addPoint(toLocal(course.end), course.end, toLocalVector(course.endTangent));
    main_.diameter = diameter;
    main_.valid = true;
    hasPoints_ = true;
}

HEXT_CATA_SRTOTrans::HEXT_CATA_SRTOTrans(const HextSqutorus3D& primitive, const GemFrame& frame, int nextNumber)
    : HEXT_CATA_GemTrans(frame, nextNumber) {
    const BendCourse course = courseOf(primitive);
    HxGePoint3D start = toLocal(course.start);
    HxGeVector3D tangent = toLocalVector(course.startTangent);
    main_.width = std::min(primitive.startWidth, primitive.endWidth);
    main_.height = std::min(primitive.startHeight, primitive.endHeight);
    if (isSplit(course)) {
        const HxGePoint3D middle = toLocal(course.center + (course.center - course.start));
        extra_ = main_;
        extra_.axisA = addPoint(start, {}, tangent);
        extra_.axisB = addPoint(middle, {}, tangent);
        extra_.valid = true;
        start = middle;
        tangent = -tangent;
    }
    main_.axisA = addPoint(start, {}, tangent);
    main_.axisB = addPoint(toLocal(course.end), {}, toLocalVector(course.endTangent));
    main_.valid = true;
    hasPoints_ = true;
}
