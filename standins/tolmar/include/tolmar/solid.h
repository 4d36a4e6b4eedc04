// The boundary of a solid as analytic faces, in the forms in which solids are made: a block, a ruled pair of ellipses,
// an extruded region, a revolved profile, a transition from four corners to a circle.
//
// A body is a plain value. Whoever fills one keeps the rules told at each form; the mesher (mesh.h) relies on them.
// Lengths are millimetres in world coordinates. Faces are numbered in the order told at each form.
#pragma once

#include "tolmar/ge.h"

#include <array>
#include <variant>
#include <vector>

namespace tolmar {

struct Point2 {
    double x = 0;
    double y = 0;
};

// One piece of a closed plane outline: from `start` to the start of the next piece (of the first behind the last),
// straight, or along the ellipse center + (radiusX cos t, radiusY sin t) from t = startAngle over `sweep`, which is
// positive counter-clockwise. A sweep of 2 pi is allowed for the only piece of an outline.
struct OutlinePiece {
    Point2 start;
    bool isArc = false;
    Point2 center;
    double radiusX = 0;
    double radiusY = 0;
    double startAngle = 0;
    double sweep = 0;
};
using Outline = std::vector<OutlinePiece>;

// Signed area, positive for a counter-clockwise outline.
double outlineArea(const Outline& outline);
// The same outline run through the other way.
void reverseOutline(Outline& outline);

// center + u cos t + v sin t. Both vectors zero: a point.
struct Ellipse {
    TlGePoint3d center;
    TlGeVector3d u;
    TlGeVector3d v;
};

// Six quadrangles between the corners 0 to 3 (counter-clockwise seen from the corners 4 to 7) and 4 to 7 above them.
// Corners of the upper or of the lower four may coincide exactly, as long as a volume is left.
// Faces: lower, upper, then the side at the edge from corner 0 to 1, from 1 to 2 and so on.
struct BlockBody {
    std::array<TlGePoint3d, 8> corner;
};

// Ruled between points of the same parameter; each end that is no point has a flat face. Seen from `end` both ellipses
// run counter-clockwise. At most one end is a point. The ellipses stand in parallel planes, or both are cuts of one
// cylinder. Faces: the wall, the start, the end (also counted when it is a point, and then empty).
struct ConeBody {
    Ellipse start;
    Ellipse end;
};

// The plane region inside the first outline and outside the others, extruded. `x` and `y` are perpendicular unit
// vectors, and `extrusion` lies on the side of x cross y. The first outline runs counter-clockwise, the others
// clockwise. Faces: the region at the origin, the far one, then one side for each piece of each outline.
struct ExtrudedBody {
    TlGePoint3d origin;
    TlGeVector3d x;
    TlGeVector3d y;
    TlGeVector3d extrusion;
    std::vector<Outline> outlines;
};

// A profile turned about `axis` from the direction `x` towards `y` (perpendicular unit vectors, right-handed) by
// `angle`, above 0 and at most 2 pi, which is a whole turn. Profile coordinates are the distance from the axis, never
// below 0, and the height along it; it runs counter-clockwise. Pieces that lie on the axis give no face.
// With a taper the profile changes linearly with the angle: about `pivot`, by the factors at the end of the turn.
// Faces: one for each piece; then the profile at the start and at the end, unless the turn is whole.
struct RevolvedBody {
    TlGePoint3d center;
    TlGeVector3d x;
    TlGeVector3d y;
    TlGeVector3d axis;
    double angle = 0;
    Outline profile;
    bool tapered = false;
    Point2 pivot;
    Point2 endFactor{1, 1};
};

// From a rectangle to a circle. `corner` runs counter-clockwise seen from `top`; the corner 0 belongs to the quarter of
// the ellipse from t = 0 to pi/2, the corner 1 to the next, and so on. Faces: rectangle, circle, then in turn the
// quarter cone of each corner and the triangle that follows it.
struct SquareRoundBody {
    std::array<TlGePoint3d, 4> corner;
    Ellipse top;
};

using Body = std::variant<BlockBody, ConeBody, ExtrudedBody, RevolvedBody, SquareRoundBody>;

int faceCount(const Body& body);

}  // namespace tolmar
