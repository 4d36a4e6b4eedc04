// Bends of round and of rectangular section.
#include "plant/shapes/builder.h"

#include <algorithm>
#include <cmath>

namespace plant {

namespace {

enum ArcKind : std::int32_t { shortWay = 0, longWay = 1, fullCircle = 2, halfCircle = 3 };
constexpr std::int16_t byAngle = 1;
constexpr TlGeTol parallelRadii(1e-5, 1e-5);
// Sweeps that miss a whole turn by less than this are whole; below it they are none.
constexpr double leastSweep = 1e-9;

// How a bend runs, whatever its section.
struct Bend {
    HxGePoint3D center;
    HxGePoint3D start;
    HxGePoint3D third;
    HxGeVector3D axisByAngle;
    std::int32_t arcKind;
    std::int16_t form;
    double angle;
};

struct Turn {
    Axes axes;  // X to the start, Z the axis
    double radius = 0;
    double sweep = 0;  // positive
};

HxGeVector3D axisOf(const Bend& bend, const HxGeVector3D& from, const HxGeVector3D& to) {
    if (bend.form == byAngle) {
        return bend.axisByAngle;
    }
    if (bend.arcKind == fullCircle || bend.arcKind == halfCircle) {
        return bend.third.asVector();
    }
    const HxGeVector3D axis = from.isParallelTo(to, parallelRadii) ? from.normal().perpVector() : from.crossProduct(to);
    return bend.arcKind == longWay ? -axis : axis;
}

double sweepOf(const Bend& bend, const HxGeVector3D& from, const HxGeVector3D& to) {
    if (bend.form == byAngle) {
        const double radians = std::fabs(bend.angle) > wholeTurn ? bend.angle * tlGePi / 180 : bend.angle;
        return std::clamp(radians, -wholeTurn, wholeTurn);
    }
    if (bend.arcKind == fullCircle) {
        return wholeTurn;
    }
    if (bend.arcKind == halfCircle) {
        return tlGePi;
    }
    if (from.isCodirectionalTo(to, parallelRadii)) {
        return wholeTurn;
    }
    const double between = from.angleTo(to);
    return bend.arcKind == longWay ? wholeTurn - between : between;
}

Tl::ErrorStatus checkBend(const Bend& bend) {
    const Tl::ErrorStatus status = firstFailure({checkPoints({bend.center, bend.start, bend.third}),
                                                 checkDirections({bend.axisByAngle}), checkNumbers({bend.angle})});
    if (status != Tl::eOk) {
        return status;
    }
    if (bend.form != byAngle && (bend.arcKind < shortWay || bend.arcKind > halfCircle)) {
        return Tl::eInvalidInput;
    }
    const bool toPoint = bend.form != byAngle && (bend.arcKind == shortWay || bend.arcKind == longWay);
    const bool coincident = bend.center.distanceTo(bend.start) <= leastLength ||
                            (toPoint && bend.center.distanceTo(bend.third) <= leastLength);
    return coincident ? Tl::eCoincidentPoints : Tl::eOk;
}

Tl::ErrorStatus makeTurn(const Bend& bend, Turn& turn) {
    if (const Tl::ErrorStatus status = checkBend(bend); status != Tl::eOk) {
        return status;
    }
    const HxGeVector3D from = bend.start - bend.center;
    const HxGeVector3D to = bend.third - bend.center;
    // The radius stands, and the axis is made perpendicular to it.
    Axes along;
    if (makeAxes(from, axisOf(bend, from, to), along) != Tl::eOk) {
        return Tl::eZeroDirection;
    }
    turn.axes = {along.z, along.x.crossProduct(along.z), along.x};
    turn.radius = from.length();
    turn.sweep = sweepOf(bend, from, to);
    if (std::fabs(turn.sweep) < leastSweep) {
        return Tl::eBadAngle;
    }
    if (turn.sweep < 0) {
        turn.sweep = -turn.sweep;
        turn.axes.z = -turn.axes.z;
        turn.axes.y = -turn.axes.y;
    }
    if (turn.sweep > wholeTurn - leastSweep) {
        turn.sweep = wholeTurn;
    }
    return Tl::eOk;
}

// The same turn from its other end.
void reverseTurn(Turn& turn) {
    const HxGeVector3D x = turn.axes.x * std::cos(turn.sweep) + turn.axes.y * std::sin(turn.sweep);
    turn.axes.z = -turn.axes.z;
    turn.axes.x = x;
    turn.axes.y = turn.axes.z.crossProduct(x);
}

tolmar::RevolvedBody bodyOf(const Bend& bend, const Turn& turn) {
    tolmar::RevolvedBody body;
    body.center = bend.center;
    body.x = turn.axes.x;
    body.y = turn.axes.y;
    body.axis = turn.axes.z;
    body.angle = turn.sweep;
    body.pivot = {turn.radius, 0};
    return body;
}

// A whole turn whose ends differ keeps both end faces.
void taper(tolmar::RevolvedBody& body, double x, double y) {
    if (x == 1 && y == 1) {
        return;
    }
    body.tapered = true;
    body.endFactor = {x, y};
    body.angle = std::min(body.angle, std::nextafter(wholeTurn, 0.0));
}

double orNothing(double size) {
    return size <= leastLength ? 0 : size;
}

tolmar::Outline rectangle(double radius, double width, double height) {
    tolmar::Outline outline(4);
    outline[0].start = {radius - width / 2, -height / 2};
    outline[1].start = {radius + width / 2, -height / 2};
    outline[2].start = {radius + width / 2, height / 2};
    outline[3].start = {radius - width / 2, height / 2};
    return outline;
}

}  // namespace

Tl::ErrorStatus buildTorus(const HextTorus3D& t, tolmar::Body& body) {
    const Bend bend{t.center, t.startPoint, t.thirdField, t.thirdField.asVector(), t.arcKind, t.form, t.angle};
    Turn turn;
    const Tl::ErrorStatus status = firstFailure({checkNumbers({t.startDiameter, t.endDiameter}), makeTurn(bend, turn)});
    if (status != Tl::eOk) {
        return status;
    }
    double start = orNothing(t.startDiameter / 2);
    double end = orNothing(t.endDiameter / 2);
    if (std::min(t.startDiameter, t.endDiameter) < 0 || std::max(start, end) <= leastLength) {
        return Tl::eZeroSize;
    }
    if (std::max(start, end) > turn.radius + leastLength) {
        return Tl::eSelfCutting;
    }
    // From the larger end to the smaller one.
    if (start < end) {
        std::swap(start, end);
        reverseTurn(turn);
    }
    tolmar::RevolvedBody torus = bodyOf(bend, turn);
    torus.profile = {{{turn.radius + start, 0}, true, {turn.radius, 0}, start, start, 0, wholeTurn}};
    taper(torus, end / start, end / start);
    body = std::move(torus);
    return Tl::eOk;
}

Tl::ErrorStatus buildSquareTorus(const HextSqutorus3D& t, tolmar::Body& body) {
    const Bend bend{t.center, t.startPoint, t.thirdField, t.normal, t.arcKind, t.form, t.angle};
    Turn turn;
    const Tl::ErrorStatus status =
        firstFailure({checkNumbers({t.startWidth, t.startHeight, t.endWidth, t.endHeight}), makeTurn(bend, turn)});
    if (status != Tl::eOk) {
        return status;
    }
    double width = orNothing(t.startWidth);
    double height = orNothing(t.startHeight);
    double endWidth = orNothing(t.endWidth);
    double endHeight = orNothing(t.endHeight);
    if (width * height < endWidth * endHeight) {
        std::swap(width, endWidth);
        std::swap(height, endHeight);
        reverseTurn(turn);
    }
    if (std::min({t.startWidth, t.startHeight, t.endWidth, t.endHeight}) < 0 || width == 0 || height == 0) {
        return Tl::eZeroSize;
    }
    if (std::max(width, endWidth) / 2 > turn.radius + leastLength) {
        return Tl::eSelfCutting;
    }
    tolmar::RevolvedBody torus = bodyOf(bend, turn);
    torus.profile = rectangle(turn.radius, std::min(width, 2 * turn.radius), height);
    taper(torus, endWidth / width, endHeight / height);
    body = std::move(torus);
    return Tl::eOk;
}

}  // namespace plant
