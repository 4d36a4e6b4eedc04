// The tree of intervals of a sweep: a treap, whose priorities come from a fixed sequence.
#include "tolmar/mesh/sweep.h"

namespace tolmar {

namespace {

std::uint32_t nextRandom(std::uint32_t& state) {
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    return state;
}

}  // namespace

// The left edge leads down from its upper point, the right edge up from its lower one; each is named by the point that
// it leads on from. Positive: `v` stands to the left.
double RegionSweep::sideOfLeftEdge(const Interval& interval, Index v) const {
    return cross(points_[next_[interval.leftEdge]], points_[interval.leftEdge], points_[v]);
}

double RegionSweep::sideOfRightEdge(const Interval& interval, Index v) const {
    return cross(points_[interval.rightEdge], points_[next_[interval.rightEdge]], points_[v]);
}

RegionSweep::Index RegionSweep::addInterval(Index leftEdge, Index rightEdge) {
    const Index added = static_cast<Index>(intervals_.size());
    intervals_.push_back({leftEdge, rightEdge, none, none, none, none, none, none, nextRandom(seed_)});
    intervalOfEdge_[leftEdge] = added;
    intervalOfEdge_[rightEdge] = added;
    return added;
}

void RegionSweep::replaceChild(Index parent, Index child, Index by) {
    if (parent == none) {
        root_ = by;
    } else if (intervals_[parent].lower == child) {
        intervals_[parent].lower = by;
    } else {
        intervals_[parent].upper = by;
    }
    if (by != none) {
        intervals_[by].parent = parent;
    }
}

void RegionSweep::insertAt(Index interval, Index parent, bool asUpper) {
    intervals_[interval].parent = parent;
    if (parent == none) {
        root_ = interval;
        return;
    }
    (asUpper ? intervals_[parent].upper : intervals_[parent].lower) = interval;
    while (intervals_[interval].parent != none &&
           intervals_[interval].priority > intervals_[intervals_[interval].parent].priority) {
        rotateUp(interval);
    }
}

void RegionSweep::insertBehind(Index interval, Index before) {
    Index at = intervals_[before].upper;
    if (at == none) {
        insertAt(interval, before, true);
        return;
    }
    while (intervals_[at].lower != none) {
        at = intervals_[at].lower;
    }
    insertAt(interval, at, false);
}

void RegionSweep::rotateUp(Index interval) {
    const Index parent = intervals_[interval].parent;
    replaceChild(intervals_[parent].parent, parent, interval);
    const bool wasLower = intervals_[parent].lower == interval;
    const Index moved = wasLower ? intervals_[interval].upper : intervals_[interval].lower;
    (wasLower ? intervals_[parent].lower : intervals_[parent].upper) = moved;
    if (moved != none) {
        intervals_[moved].parent = parent;
    }
    (wasLower ? intervals_[interval].upper : intervals_[interval].lower) = parent;
    intervals_[parent].parent = interval;
}

void RegionSweep::remove(Index interval) {
    for (;;) {
        const Interval& gone = intervals_[interval];
        if (gone.lower == none || gone.upper == none) {
            replaceChild(gone.parent, interval, gone.lower != none ? gone.lower : gone.upper);
            return;
        }
        const bool lowerFirst = intervals_[gone.lower].priority > intervals_[gone.upper].priority;
        rotateUp(lowerFirst ? gone.lower : gone.upper);
    }
}

}  // namespace tolmar
