// Vertex lists with arcs as outlines in a plane.
#pragma once

#include "plant/shapes/builder.h"

#include <vector>

namespace plant {

// Plane coordinates of a point: its distances from `origin` along two directions.
struct PlaneMap {
    HxGePoint3D origin;
    HxGeVector3D x;
    HxGeVector3D y;

    tolmar::Point2 operator()(const HxGePoint3D& p) const {
        const HxGeVector3D v = p - origin;
        return {v.dotProduct(x), v.dotProduct(y)};
    }
};

enum class Winding { CounterClockwise, Clockwise };

// eNotFinite, eTooLarge or eTooManyVertices.
[[nodiscard]] Tl::ErrorStatus checkVertices(const HextVertexList& list);

// The outline of a checked list of points in plane coordinates, run through as `winding` says. Repeated points, and
// points amid a straight run, are left out. eNoOutline, eBadOutline or eCoincidentPoints (a circle through points on
// one line).
//
// Kinds: a raw arc middle (7) counts as a middle (3), and is dropped as first or last of the list. 1 is a corner, 2 and
// 5 begin an arc through the next vertex to the one after or to the first of the list, 4 ends the list, 6 makes the
// whole outline a circle; a middle that no arc claims is skipped.
[[nodiscard]] Tl::ErrorStatus makeOutline(const HextVertexList& list, const std::vector<tolmar::Point2>& points,
                                          Winding winding, tolmar::Outline& outline);

}  // namespace plant
