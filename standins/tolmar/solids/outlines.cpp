#include "tolmar/solid.h"

#include <algorithm>
#include <cmath>

namespace tolmar {

namespace {

double twiceTriangle(const Point2& a, const Point2& b, const Point2& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

}  // namespace

double outlineArea(const Outline& outline) {
    double twice = 0;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const OutlinePiece& piece = outline[i];
        const Point2& end = outline[i + 1 == outline.size() ? 0 : i + 1].start;
        twice += twiceTriangle(outline.front().start, piece.start, end);
        if (piece.isArc) {
            twice += piece.radiusX * piece.radiusY * (piece.sweep - std::sin(piece.sweep));
        }
    }
    return twice / 2;
}

void reverseOutline(Outline& outline) {
    if (outline.empty()) {
        return;
    }
    // Each piece then starts where it ended, which is where the next one started.
    const Point2 first = outline.front().start;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        OutlinePiece& piece = outline[i];
        piece.start = i + 1 == outline.size() ? first : outline[i + 1].start;
        piece.startAngle += piece.sweep;
        piece.sweep = -piece.sweep;
    }
    std::reverse(outline.begin(), outline.end());
}

}  // namespace tolmar
