// Triangulation of a plane region by a sweep, O(n log n).
//
// The sweep goes up through the points in the order of y, then x. Between the edges that cross the sweep line, each
// interval of the inside keeps a chain: the upper rim of what is triangulated so far, from its left edge to its right
// one, with right turns only. A new point cuts off what it sees of the chain.
#pragma once

#include "tolmar/mesh/region.h"

namespace tolmar {

class RegionSweep {
public:
    // Triangles of point numbers, counter-clockwise, checked by their number and area.
    RegionCheck run(const Region& region, PointTriangles& triangles);

private:
    using Index = std::int32_t;
    static constexpr Index none = -1;

    struct Event {
        Point2 at;
        Index point;
    };
    struct Link {
        Index point;
        Index left;
        Index right;
    };
    // An interval of the inside on the sweep line; a node of the tree of intervals, ordered from left to right.
    struct Interval {
        Index leftEdge;
        Index rightEdge;
        Index chainLeft;
        Index chainRight;
        Index highest;
        Index parent;
        Index lower;
        Index upper;
        std::uint32_t priority;
    };

    void prepare(const Region& region);
    bool sortEvents(const Region& region);
    bool handle(Index v);
    bool start(Index v);
    bool split(Index v);
    bool end(Index v);
    bool merge(Index v);
    bool advanceLeft(Index v);
    bool advanceRight(Index v);

    Index addLink(Index point);
    void join(Index left, Index right);
    Index addInterval(Index leftEdge, Index rightEdge);
    void cutFromLeft(Interval& interval, Index link);
    void cutFromRight(Interval& interval, Index link);
    void emit(Index a, Index b, Index c);
    double turn(Index linkA, Index linkB, Index point) const;

    bool above(Index a, Index b) const { return rank_[a] > rank_[b]; }
    double sideOfLeftEdge(const Interval& interval, Index v) const;
    double sideOfRightEdge(const Interval& interval, Index v) const;
    void insertAt(Index interval, Index parent, bool asUpper);
    void insertBehind(Index interval, Index before);
    void rotateUp(Index interval);
    void remove(Index interval);
    void replaceChild(Index parent, Index child, Index by);

    bool finish(const Region& region, PointTriangles& triangles) const;

    const Point2* points_ = nullptr;
    double least_ = 0;
    PlainBuffer<Event> events_;
    PlainBuffer<Index> rank_;
    PlainBuffer<Index> previous_;
    PlainBuffer<Index> next_;
    PlainBuffer<Index> intervalOfEdge_;
    PlainBuffer<Link> links_;
    PlainBuffer<Interval> intervals_;
    Index root_ = none;
    std::uint32_t seed_ = 0;
    PointTriangles* out_ = nullptr;
};

}  // namespace tolmar
