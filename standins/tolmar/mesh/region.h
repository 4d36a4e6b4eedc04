// Plane regions: closed outlines as points, and their triangles.
#pragma once

#include "tolmar/mesh/circle.h"

#include <vector>

namespace tolmar {

// Closed loops of points: the first counter-clockwise, holes clockwise. `edgeOfPiece` holds, for each piece of the
// outlines in turn, the number of its first edge (edge i leads on from point i), and the number of edges at the end.
struct Region {
    PlainBuffer<Point2> points;
    std::vector<std::uint32_t> loopEnds;  // number behind the last point of each loop
    std::vector<std::uint32_t> edgeOfPiece;
    bool hasArcs = false;

    void clear();
    std::size_t pointCount() const { return points.size(); }
};

// The outlines at a chord tolerance; false when they take more than maxTriangles points.
bool flattenOutlines(const std::vector<Outline>& outlines, double tolerance, ArcTables& arcs, Region& region);
// Appends a piece's points from its start up to, but without, its end.
void flattenPiece(const OutlinePiece& piece, std::uint32_t chords, ArcTables& arcs, PlainBuffer<Point2>& out);

struct RegionMeasure {
    double area = 0;
    std::size_t outers = 0;  // loops that run counter-clockwise
    std::size_t holes = 0;
};
RegionMeasure measureRegion(const Region& region);

enum class RegionCheck {
    Ok,
    Touching,  // the triangles are good, but points of equal position stand in them
    Failed     // outlines cross or touch in a way that leaves no triangles
};

// Twice the area of a triangle, positive counter-clockwise.
inline double cross(const Point2& a, const Point2& b, const Point2& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

// Areas (doubled) up to this count as nothing in this region.
double leastCross(const Region& region);

using PointTriangles = PlainBuffer<std::uint32_t>;

// True when a loop has fewer than three points.
bool hasFlatLoop(const Region& region);
// Every vertex turns left by more than nothing, and the loop goes round once.
bool isConvexLoop(const Region& region, double least);
// Replaces triangles of (almost) no area by turning the edge they share with a neighbour. False when one is left.
bool removeFlatTriangles(const Region& region, double least, PointTriangles& triangles);

// True when the triangles' edges, taken by place, leave exactly those of the loops: what is built on both then closes.
bool fillsLoops(const Region& region, const PointTriangles& triangles);

// The tessellator of GLU, for outlines that touch or cross. `uniteOutlines` replaces the region by the outlines of
// where its winding number is positive; false when nothing is left or the outlines cross too often.
bool uniteOutlines(Region& region);
bool tessellateRegion(const Region& region, PointTriangles& triangles);

}  // namespace tolmar
