#include "tolmar/mesh/region.h"

#include <cmath>
#include <numeric>

namespace tolmar {

namespace {

// Part of the squared extent of a region below which a doubled area counts as nothing: a few thousand roundings.
constexpr double flatPart = 1e-13;

// The lowest number among the points at each point's place.
std::vector<std::uint32_t> placesOf(const Region& region) {
    const PlainBuffer<Point2>& points = region.points;
    const auto before = [&points](std::uint32_t i, std::uint32_t j) {
        const Point2& a = points[i];
        const Point2& b = points[j];
        return a.x != b.x ? a.x < b.x : a.y != b.y ? a.y < b.y : i < j;
    };
    std::vector<std::uint32_t> order(points.size());
    std::iota(order.begin(), order.end(), 0U);
    std::sort(order.begin(), order.end(), before);
    std::vector<std::uint32_t> place(points.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        const bool same =
            i > 0 && points[order[i]].x == points[order[i - 1]].x && points[order[i]].y == points[order[i - 1]].y;
        place[order[i]] = same ? place[order[i - 1]] : order[i];
    }
    return place;
}

// Edges by the places at their ends, each with how often it is run forward less backward.
class EdgeBalance {
public:
    explicit EdgeBalance(const Region& region) : place_(placesOf(region)) {}
    void add(std::uint32_t from, std::uint32_t to, int runs) {
        const std::uint32_t a = place_[from];
        const std::uint32_t b = place_[to];
        if (a != b) {
            edges_.push_back({(std::uint64_t{std::min(a, b)} << 32) | std::max(a, b), a < b ? runs : -runs});
        }
    }
    bool isEven() {
        std::sort(edges_.begin(), edges_.end(), [](const Edge& a, const Edge& b) { return a.ends < b.ends; });
        int sum = 0;
        for (std::size_t i = 0; i < edges_.size(); ++i) {
            sum += edges_[i].runs;
            if ((i + 1 == edges_.size() || edges_[i + 1].ends != edges_[i].ends) && sum != 0) {
                return false;
            }
        }
        return true;
    }

private:
    struct Edge {
        std::uint64_t ends;
        int runs;
    };
    std::vector<std::uint32_t> place_;
    std::vector<Edge> edges_;
};

}  // namespace

void Region::clear() {
    points.clear();
    loopEnds.clear();
    edgeOfPiece.clear();
    hasArcs = false;
}

void flattenPiece(const OutlinePiece& piece, std::uint32_t chords, ArcTables& arcs, PlainBuffer<Point2>& out) {
    Point2* point = out.extend(chords);
    *point++ = piece.start;
    if (chords == 1) {
        return;
    }
    const double* arc = arcs.get(piece.sweep, chords) + 2;
    const double startCos = std::cos(piece.startAngle);
    const double startSin = std::sin(piece.startAngle);
    for (std::uint32_t k = 1; k < chords; ++k, arc += 2) {
        *point++ = {piece.center.x + piece.radiusX * (startCos * arc[0] - startSin * arc[1]),
                    piece.center.y + piece.radiusY * (startSin * arc[0] + startCos * arc[1])};
    }
}

bool flattenOutlines(const std::vector<Outline>& outlines, double tolerance, ArcTables& arcs, Region& region) {
    region.clear();
    for (const Outline& outline : outlines) {
        for (const OutlinePiece& piece : outline) {
            region.edgeOfPiece.push_back(static_cast<std::uint32_t>(region.pointCount()));
            std::uint32_t chords = 1;
            if (piece.isArc) {
                region.hasArcs = true;
                chords = arcChords(std::max(piece.radiusX, piece.radiusY), piece.sweep, tolerance);
            }
            if (region.pointCount() + chords > maxTriangles) {
                return false;
            }
            flattenPiece(piece, chords, arcs, region.points);
        }
        region.loopEnds.push_back(static_cast<std::uint32_t>(region.pointCount()));
    }
    region.edgeOfPiece.push_back(static_cast<std::uint32_t>(region.pointCount()));
    return true;
}

RegionMeasure measureRegion(const Region& region) {
    RegionMeasure measure;
    std::size_t first = 0;
    for (const std::uint32_t loopEnd : region.loopEnds) {
        double twice = 0;
        for (std::size_t i = first + 1; i + 1 < loopEnd; ++i) {
            twice += cross(region.points[first], region.points[i], region.points[i + 1]);
        }
        measure.area += twice / 2;
        ++(twice > 0 ? measure.outers : measure.holes);
        first = loopEnd;
    }
    return measure;
}

double leastCross(const Region& region) {
    Point2 low = region.points[0];
    Point2 high = low;
    for (const Point2& p : region.points) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    const double extent = std::max(high.x - low.x, high.y - low.y);
    return flatPart * extent * extent;
}

bool hasFlatLoop(const Region& region) {
    std::uint32_t first = 0;
    for (const std::uint32_t loopEnd : region.loopEnds) {
        if (loopEnd - first < 3) {
            return true;
        }
        first = loopEnd;
    }
    return region.loopEnds.empty();
}

bool fillsLoops(const Region& region, const PointTriangles& triangles) {
    EdgeBalance balance(region);
    for (std::size_t i = 0; i < triangles.size(); i += 3) {
        for (std::size_t k = 0; k < 3; ++k) {
            balance.add(triangles[i + k], triangles[i + (k + 1) % 3], 1);
        }
    }
    std::uint32_t first = 0;
    for (const std::uint32_t loopEnd : region.loopEnds) {
        for (std::uint32_t i = first; i < loopEnd; ++i) {
            balance.add(i, i + 1 == loopEnd ? first : i + 1, -1);
        }
        first = loopEnd;
    }
    return balance.isEven();
}

bool isConvexLoop(const Region& region, double least) {
    const std::size_t n = region.pointCount();
    if (region.loopEnds.size() != 1 || n < 3) {
        return false;
    }
    int reversals = 0;
    Point2 a = region.points[n - 2];
    Point2 b = region.points[n - 1];
    bool wasUp = b.y > a.y || (b.y == a.y && b.x > a.x);
    for (std::size_t i = 0; i < n; ++i) {
        const Point2 c = region.points[i];
        if (cross(a, b, c) <= least) {
            return false;
        }
        const bool up = c.y > b.y || (c.y == b.y && c.x > b.x);
        reversals += up != wasUp;
        wasUp = up;
        a = b;
        b = c;
    }
    return reversals <= 2;
}

}  // namespace tolmar
