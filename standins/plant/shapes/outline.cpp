#include "plant/shapes/outline.h"

#include <algorithm>
#include <cmath>

namespace plant {

namespace {

using tolmar::Outline;
using tolmar::OutlinePiece;
using tolmar::Point2;

enum VertexKind : int {
    plain = 1,
    arcStart = 2,
    arcMiddle = 3,
    lastVertex = 4,
    closingArc = 5,
    circle = 6,
    rawMiddle = 7
};

// Part of the squared extent below which a doubled area counts as nothing.
constexpr double flatPart = 1e-12;
// An arc that bulges less than this part of its chord is straight.
constexpr double leastBulge = 1e-9;

double cross(const Point2& a, const Point2& b, const Point2& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

double distance(const Point2& a, const Point2& b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

bool samePlace(const Point2& a, const Point2& b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    return dx * dx + dy * dy <= leastLength * leastLength;
}

// An edge of the list: from `start` to the start of the next one, through `middle` where it is an arc.
struct Edge {
    Point2 start;
    Point2 middle;
    bool isArc = false;
};

struct Vertex {
    int kind;
    Point2 at;
};

std::vector<Vertex> settledVertices(const HextVertexList& list, const std::vector<Point2>& points) {
    std::vector<Vertex> out;
    out.reserve(list.size());
    for (std::size_t i = 0; i < list.size(); ++i) {
        const bool raw = list[i].kind == rawMiddle;
        const bool atEnd = i == 0 || i + 1 == list.size();
        if (!raw || !atEnd) {
            out.push_back({raw ? int{arcMiddle} : list[i].kind, points[i]});
        }
    }
    return out;
}

// Walks a list by the kinds of its vertices.
class OutlineWalk {
public:
    explicit OutlineWalk(const std::vector<Vertex>& vertices) : vertices_(vertices) {
        edges_.reserve(vertices.size());
        while (at_ < vertices_.size()) {
            step();
        }
    }
    std::vector<Edge>& edges() { return edges_; }

private:
    void step() {
        const Vertex& v = vertices_[at_];
        switch (v.kind) {
        case plain:
            corner(v.at);
            ++at_;
            break;
        case lastVertex:
            corner(v.at);
            at_ = vertices_.size();
            break;
        case closingArc:
            close();
            break;
        case arcStart:
            arc();
            break;
        default:
            ++at_;
        }
    }

    void corner(const Point2& p) { edges_.push_back({p, {}, false}); }

    void close() {
        const Point2& start = vertices_[at_].at;
        if (at_ + 1 < vertices_.size()) {
            edges_.push_back({start, vertices_[at_ + 1].at, true});
        } else {
            corner(start);
        }
        at_ = vertices_.size();
    }

    // An arc whose end begins no further arc leads on straight from there.
    void arc() {
        const Point2& start = vertices_[at_].at;
        if (at_ + 2 >= vertices_.size()) {
            corner(start);
            at_ = vertices_.size();
            return;
        }
        const Vertex& end = vertices_[at_ + 2];
        edges_.push_back({start, vertices_[at_ + 1].at, true});
        at_ += 2;
        if (end.kind != arcStart && end.kind != closingArc) {
            corner(end.at);
            ++at_;
        }
    }

    const std::vector<Vertex>& vertices_;
    std::size_t at_ = 0;
    std::vector<Edge> edges_;
};

struct Circle {
    Point2 center;
    double radius = 0;
};

bool circleThrough(const Point2& a, const Point2& b, const Point2& c, Circle& out) {
    const double twice = cross(a, b, c);
    const double longest = std::max({distance(a, b), distance(b, c), distance(c, a)});
    if (std::fabs(twice) <= leastBulge * longest * longest) {
        return false;
    }
    const double bx = b.x - a.x;
    const double by = b.y - a.y;
    const double cx = c.x - a.x;
    const double cy = c.y - a.y;
    const double b2 = bx * bx + by * by;
    const double c2 = cx * cx + cy * cy;
    const Point2 toCenter{(cy * b2 - by * c2) / (2 * twice), (bx * c2 - cx * b2) / (2 * twice)};
    out.center = {a.x + toCenter.x, a.y + toCenter.y};
    out.radius = std::hypot(toCenter.x, toCenter.y);
    return true;
}

OutlinePiece straight(const Point2& start) {
    OutlinePiece piece;
    piece.start = start;
    return piece;
}

// The angle from `from` counter-clockwise to `to`, in [0, 2 pi).
double angleAhead(double from, double to) {
    const double angle = std::fmod(to - from, wholeTurn);
    return angle < 0 ? angle + wholeTurn : angle;
}

OutlinePiece pieceOf(const Edge& edge, const Point2& end) {
    Circle c;
    if (!edge.isArc || samePlace(edge.start, end) || !circleThrough(edge.start, edge.middle, end, c)) {
        return straight(edge.start);
    }
    const auto angleOf = [&c](const Point2& p) { return std::atan2(p.y - c.center.y, p.x - c.center.x); };
    OutlinePiece piece{edge.start, true, c.center, c.radius, c.radius, angleOf(edge.start), 0};
    const double toEnd = angleAhead(piece.startAngle, angleOf(end));
    const double toMiddle = angleAhead(piece.startAngle, angleOf(edge.middle));
    piece.sweep = toMiddle < toEnd ? toEnd : toEnd - wholeTurn;
    return piece;
}

class Cleaner {
public:
    Cleaner(double least, std::size_t most) : least_(least) { out_.reserve(most); }

    // Adds a piece behind the others. What stands before it may turn out to be needless.
    void add(const OutlinePiece& piece) {
        while (!out_.empty() && isNeedless(out_.back(), piece.start)) {
            out_.pop_back();
        }
        out_.push_back(piece);
    }

    Outline finish() {
        while (out_.size() > 1 && isNeedless(out_.back(), out_.front().start)) {
            out_.pop_back();
        }
        std::size_t needless = 0;
        while (out_.size() - needless > 2 && isAmidStraight(out_.back(), out_[needless], out_[needless + 1].start)) {
            ++needless;
        }
        out_.erase(out_.begin(), out_.begin() + static_cast<std::ptrdiff_t>(needless));
        return std::move(out_);
    }

private:
    // The last piece so far, when the next one begins at `next`.
    bool isNeedless(const OutlinePiece& last, const Point2& next) const {
        if (last.isArc) {
            return false;
        }
        return samePlace(last.start, next) || (out_.size() > 1 && isAmidStraight(out_[out_.size() - 2], last, next));
    }

    bool isAmidStraight(const OutlinePiece& before, const OutlinePiece& piece, const Point2& next) const {
        return !before.isArc && !piece.isArc && std::fabs(cross(before.start, piece.start, next)) <= least_;
    }

    double least_;
    Outline out_;
};

double extentOf(const std::vector<Point2>& points) {
    Point2 low = points.front();
    Point2 high = low;
    for (const Point2& p : points) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    return std::max(high.x - low.x, high.y - low.y);
}

Tl::ErrorStatus makeCircle(const std::vector<Vertex>& vertices, std::size_t at, Outline& outline) {
    Circle c;
    if (at + 2 >= vertices.size() || !circleThrough(vertices[at].at, vertices[at + 1].at, vertices[at + 2].at, c)) {
        return Tl::eCoincidentPoints;
    }
    const Point2& start = vertices[at].at;
    const double angle = std::atan2(start.y - c.center.y, start.x - c.center.x);
    outline = {{start, true, c.center, c.radius, c.radius, angle, wholeTurn}};
    return Tl::eOk;
}

// Corners alone, each joined to the next by a line.
bool isPolygon(const std::vector<Vertex>& vertices) {
    const auto isCorner = [](const Vertex& v) { return v.kind == plain; };
    return std::all_of(vertices.begin(), vertices.end() - 1, isCorner) &&
           (isCorner(vertices.back()) || vertices.back().kind == lastVertex);
}

Outline polygonOf(const std::vector<Vertex>& vertices, double least) {
    Cleaner cleaner(least, vertices.size());
    for (const Vertex& vertex : vertices) {
        cleaner.add(straight(vertex.at));
    }
    return cleaner.finish();
}

Outline piecesOf(const std::vector<Vertex>& vertices, double least) {
    OutlineWalk walk(vertices);
    const std::vector<Edge>& edges = walk.edges();
    Cleaner cleaner(least, edges.size());
    for (std::size_t i = 0; i < edges.size(); ++i) {
        cleaner.add(pieceOf(edges[i], edges[i + 1 == edges.size() ? 0 : i + 1].start));
    }
    return cleaner.finish();
}

}  // namespace

Tl::ErrorStatus checkVertices(const HextVertexList& list) {
    if (list.size() > tlMaxOutlineVertices) {
        return Tl::eTooManyVertices;
    }
    for (const HextVertex& vertex : list) {
        if (const Tl::ErrorStatus status = checkPoints({vertex.point}); status != Tl::eOk) {
            return status;
        }
    }
    return Tl::eOk;
}

Tl::ErrorStatus makeOutline(const HextVertexList& list, const std::vector<Point2>& points, Winding winding,
                            Outline& outline) {
    const std::vector<Vertex> vertices = settledVertices(list, points);
    if (vertices.size() < 2) {
        return Tl::eNoOutline;
    }
    const double extent = extentOf(points);
    const double least = flatPart * extent * extent;
    const auto firstKnown = std::find_if(vertices.begin(), vertices.end(), [](const Vertex& v) {
        return v.kind == plain || v.kind == arcStart || (v.kind >= lastVertex && v.kind <= circle);
    });
    if (firstKnown != vertices.end() && firstKnown->kind == circle) {
        const auto at = static_cast<std::size_t>(firstKnown - vertices.begin());
        if (const Tl::ErrorStatus status = makeCircle(vertices, at, outline); status != Tl::eOk) {
            return status;
        }
    } else {
        outline = isPolygon(vertices) ? polygonOf(vertices, least) : piecesOf(vertices, least);
    }
    const bool anyArc = std::any_of(outline.begin(), outline.end(), [](const OutlinePiece& p) { return p.isArc; });
    if (outline.size() < 3 && !anyArc) {
        return Tl::eNoOutline;
    }
    const double area = tolmar::outlineArea(outline);
    if (std::fabs(area) <= least) {
        return Tl::eBadOutline;
    }
    if ((area > 0) != (winding == Winding::CounterClockwise)) {
        tolmar::reverseOutline(outline);
    }
    return Tl::eOk;
}

}  // namespace plant
