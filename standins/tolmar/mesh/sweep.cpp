#include "tolmar/mesh/sweep.h"

#include <algorithm>
#include <cmath>

namespace tolmar {

void RegionSweep::prepare(const Region& region) {
    const std::size_t n = region.pointCount();
    points_ = region.points.data();
    least_ = leastCross(region);
    previous_.clear();
    next_.clear();
    intervalOfEdge_.clear();
    links_.clear();
    intervals_.clear();
    root_ = none;
    seed_ = 0x9E3779B9u;
    Index* const previous = previous_.extend(n);
    Index* const next = next_.extend(n);
    std::fill_n(intervalOfEdge_.extend(n), n, none);
    Index first = 0;
    for (const std::uint32_t loopEnd : region.loopEnds) {
        const Index last = static_cast<Index>(loopEnd) - 1;
        for (Index i = first; i <= last; ++i) {
            previous[i] = i == first ? last : i - 1;
            next[i] = i == last ? first : i + 1;
        }
        first = last + 1;
    }
}

// True when two points stand at one place.
bool RegionSweep::sortEvents(const Region& region) {
    const Index n = static_cast<Index>(region.pointCount());
    events_.clear();
    rank_.clear();
    Event* const events = events_.extend(n);
    Index* const rank = rank_.extend(n);
    for (Index i = 0; i < n; ++i) {
        events[i] = {points_[i], i};
    }
    std::sort(events, events + n, [](const Event& a, const Event& b) {
        if (a.at.y != b.at.y) {
            return a.at.y < b.at.y;
        }
        return a.at.x != b.at.x ? a.at.x < b.at.x : a.point < b.point;
    });
    bool touching = false;
    for (Index i = 0; i < n; ++i) {
        rank[events[i].point] = i;
        touching |= i > 0 && events[i].at.x == events[i - 1].at.x && events[i].at.y == events[i - 1].at.y;
    }
    return touching;
}

RegionCheck RegionSweep::run(const Region& region, PointTriangles& triangles) {
    triangles.clear();
    out_ = &triangles;
    prepare(region);
    const bool touching = sortEvents(region);
    for (const Event& event : events_) {
        if (!handle(event.point)) {
            return RegionCheck::Failed;
        }
    }
    if (!finish(region, triangles)) {
        return RegionCheck::Failed;
    }
    return touching ? RegionCheck::Touching : RegionCheck::Ok;
}

bool RegionSweep::finish(const Region& region, PointTriangles& triangles) const {
    const RegionMeasure wanted = measureRegion(region);
    if (triangles.size() != 3 * (region.pointCount() + 2 * wanted.holes) - 6 * wanted.outers) {
        return false;
    }
    double area = 0;
    bool flat = false;
    for (std::size_t i = 0; i < triangles.size(); i += 3) {
        const double twice = cross(points_[triangles[i]], points_[triangles[i + 1]], points_[triangles[i + 2]]);
        if (twice < -least_) {
            return false;
        }
        flat |= twice <= least_;
        area += twice / 2;
    }
    if (std::fabs(area - wanted.area) > 1e-9 * std::fabs(wanted.area)) {
        return false;
    }
    return !flat || (removeFlatTriangles(region, least_, triangles) && fillsLoops(region, triangles));
}

bool RegionSweep::handle(Index v) {
    const Index p = previous_[v];
    const Index q = next_[v];
    const bool fromAbove = above(p, v);
    const bool toAbove = above(q, v);
    if (fromAbove != toAbove) {
        return fromAbove ? advanceLeft(v) : advanceRight(v);
    }
    const bool convex = cross(points_[p], points_[v], points_[q]) > 0;
    if (fromAbove) {
        return convex ? start(v) : split(v);
    }
    return convex ? end(v) : merge(v);
}

bool RegionSweep::start(Index v) {
    const Index added = addInterval(previous_[v], v);
    Interval& interval = intervals_[added];
    interval.chainLeft = interval.chainRight = interval.highest = addLink(v);
    Index parent = none;
    bool asUpper = false;
    for (Index at = root_; at != none;) {
        parent = at;
        asUpper = sideOfLeftEdge(intervals_[at], v) <= 0;
        at = asUpper ? intervals_[at].upper : intervals_[at].lower;
    }
    insertAt(added, parent, asUpper);
    return true;
}

bool RegionSweep::split(Index v) {
    Index at = root_;
    while (at != none) {
        if (sideOfLeftEdge(intervals_[at], v) > 0) {
            at = intervals_[at].lower;
        } else if (sideOfRightEdge(intervals_[at], v) < 0) {
            at = intervals_[at].upper;
        } else {
            break;
        }
    }
    if (at == none) {
        return false;
    }
    const Index added = addInterval(previous_[v], intervals_[at].rightEdge);
    Interval& left = intervals_[at];
    Interval& right = intervals_[added];
    const Index top = left.highest;
    Index toLeft = top;
    for (Index a = links_[toLeft].left; a != none && turn(a, toLeft, v) > least_; a = links_[toLeft].left) {
        emit(links_[a].point, links_[toLeft].point, v);
        toLeft = a;
    }
    Index toRight = top;
    for (Index b = links_[toRight].right; b != none && turn(toRight, b, v) > least_; b = links_[toRight].right) {
        emit(links_[toRight].point, links_[b].point, v);
        toRight = b;
    }
    if (toLeft == toRight) {
        // Both parts keep the point.
        toRight = addLink(links_[top].point);
        const Index behind = links_[top].right;
        if (behind != none) {
            join(toRight, behind);
        }
    }
    right.chainRight = toLeft == left.chainRight ? toRight : left.chainRight;
    left.chainRight = left.highest = addLink(v);
    join(toLeft, left.chainRight);
    right.chainLeft = right.highest = addLink(v);
    join(right.chainLeft, toRight);
    left.rightEdge = v;
    intervalOfEdge_[v] = at;
    insertBehind(added, at);
    return true;
}

bool RegionSweep::end(Index v) {
    const Index at = intervalOfEdge_[v];
    if (at == none || intervalOfEdge_[previous_[v]] != at) {
        return false;
    }
    for (Index a = intervals_[at].chainLeft; links_[a].right != none; a = links_[a].right) {
        emit(links_[a].point, links_[links_[a].right].point, v);
    }
    remove(at);
    return true;
}

bool RegionSweep::merge(Index v) {
    const Index leftAt = intervalOfEdge_[previous_[v]];
    const Index rightAt = intervalOfEdge_[v];
    if (leftAt == none || rightAt == none || leftAt == rightAt) {
        return false;
    }
    Interval& left = intervals_[leftAt];
    Interval& right = intervals_[rightAt];
    const Index link = addLink(v);
    cutFromRight(left, link);
    cutFromLeft(right, link);
    left.chainRight = right.chainRight;
    left.highest = link;
    left.rightEdge = right.rightEdge;
    intervalOfEdge_[left.rightEdge] = leftAt;
    remove(rightAt);
    return true;
}

bool RegionSweep::advanceLeft(Index v) {
    const Index at = intervalOfEdge_[v];
    if (at == none) {
        return false;
    }
    Interval& interval = intervals_[at];
    const Index link = addLink(v);
    cutFromLeft(interval, link);
    interval.chainLeft = interval.highest = link;
    interval.leftEdge = previous_[v];
    intervalOfEdge_[previous_[v]] = at;
    return true;
}

bool RegionSweep::advanceRight(Index v) {
    const Index at = intervalOfEdge_[previous_[v]];
    if (at == none) {
        return false;
    }
    Interval& interval = intervals_[at];
    const Index link = addLink(v);
    cutFromRight(interval, link);
    interval.chainRight = interval.highest = link;
    interval.rightEdge = v;
    intervalOfEdge_[v] = at;
    return true;
}

// Cuts off what the new link sees from the left end, and puts it there.
void RegionSweep::cutFromLeft(Interval& interval, Index link) {
    Index c = interval.chainLeft;
    const Index v = links_[link].point;
    for (Index d = links_[c].right; d != none && turn(c, d, v) > least_; d = links_[c].right) {
        emit(links_[c].point, links_[d].point, v);
        c = d;
    }
    join(link, c);
}

void RegionSweep::cutFromRight(Interval& interval, Index link) {
    Index c = interval.chainRight;
    const Index v = links_[link].point;
    for (Index b = links_[c].left; b != none && turn(b, c, v) > least_; b = links_[c].left) {
        emit(links_[b].point, links_[c].point, v);
        c = b;
    }
    join(c, link);
}

RegionSweep::Index RegionSweep::addLink(Index point) {
    links_.push_back({point, none, none});
    return static_cast<Index>(links_.size()) - 1;
}

void RegionSweep::join(Index left, Index right) {
    links_[left].right = right;
    links_[right].left = left;
}

void RegionSweep::emit(Index a, Index b, Index c) {
    std::uint32_t* const out = out_->extend(3);
    out[0] = static_cast<std::uint32_t>(a);
    out[1] = static_cast<std::uint32_t>(b);
    out[2] = static_cast<std::uint32_t>(c);
}

double RegionSweep::turn(Index linkA, Index linkB, Index point) const {
    return cross(points_[links_[linkA].point], points_[links_[linkB].point], points_[point]);
}

}  // namespace tolmar
