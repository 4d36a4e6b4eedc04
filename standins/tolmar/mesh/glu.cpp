// Regions whose outlines touch or cross, by the tessellator of GLU. It works on the processor alone.
#include "tolmar/mesh/region.h"

#include <GL/glu.h>

#include <cmath>
#include <cstring>
#include <memory>

namespace tolmar {

namespace {

// The tessellator walks round its loops again and again: 10 s for 100'000 points, half a second for these. It sweeps
// along X and searches its active edges in turn, and a crossing costs a new point: the edges side by side in X say how
// long it will search. Beyond these it is not asked.
constexpr std::size_t mostPoints = 20'000;
constexpr std::size_t mostPairTests = 40'000'000;

bool samePlace(const Point2& a, const Point2& b) {
    return a.x == b.x && a.y == b.y;
}

struct Tessellation {
    PlainBuffer<Point2> points;  // those of the region, then the crossings
    PlainBuffer<std::uint32_t> loopEnds;
    PlainBuffer<std::uint32_t> numbers;
    bool failed = false;
};

void* toData(std::size_t number) {
    // 0 stands for "no point" in the tessellator.
    return reinterpret_cast<void*>(number + 1);
}

std::uint32_t toNumber(void* data) {
    return static_cast<std::uint32_t>(reinterpret_cast<std::size_t>(data) - 1);
}

void GLAPIENTRY onBegin(GLenum, void*) {}

void GLAPIENTRY onVertex(void* vertex, void* self) {
    static_cast<Tessellation*>(self)->numbers.push_back(toNumber(vertex));
}

void GLAPIENTRY onEnd(void* self) {
    auto& tessellation = *static_cast<Tessellation*>(self);
    tessellation.loopEnds.push_back(static_cast<std::uint32_t>(tessellation.numbers.size()));
}

// Its presence makes the tessellator give plain triangles.
void GLAPIENTRY onEdgeFlag(GLboolean, void*) {}

void GLAPIENTRY onCombine(GLdouble coords[3], void* met[4], GLfloat[4], void** out, void* self) {
    auto& tessellation = *static_cast<Tessellation*>(self);
    if (met[0] != nullptr && samePlace(tessellation.points[toNumber(met[0])], {coords[0], coords[1]})) {
        *out = met[0];
        return;
    }
    *out = toData(tessellation.points.size());
    tessellation.points.push_back({coords[0], coords[1]});
}

void GLAPIENTRY onError(GLenum, void* self) {
    static_cast<Tessellation*>(self)->failed = true;
}

using Callback = void(GLAPIENTRY*)();

template <typename Function>
void connect(GLUtesselator* tess, GLenum which, Function* function) {
    gluTessCallback(tess, which, reinterpret_cast<Callback>(function));
}

void feed(GLUtesselator* tess, const Region& region) {
    std::size_t i = 0;
    for (const std::uint32_t loopEnd : region.loopEnds) {
        gluTessBeginContour(tess);
        for (; i < loopEnd; ++i) {
            GLdouble at[3] = {region.points[i].x, region.points[i].y, 0};
            gluTessVertex(tess, at, toData(i));
        }
        gluTessEndContour(tess);
    }
}

bool tessellate(const Region& region, bool outlinesOnly, Tessellation& result) {
    const std::unique_ptr<GLUtesselator, decltype(&gluDeleteTess)> tess(gluNewTess(), &gluDeleteTess);
    if (tess == nullptr) {
        return false;
    }
    const std::size_t n = region.pointCount();
    std::memcpy(result.points.extend(n), region.points.data(), n * sizeof(Point2));
    connect(tess.get(), GLU_TESS_BEGIN_DATA, &onBegin);
    connect(tess.get(), GLU_TESS_VERTEX_DATA, &onVertex);
    connect(tess.get(), GLU_TESS_END_DATA, &onEnd);
    connect(tess.get(), GLU_TESS_COMBINE_DATA, &onCombine);
    connect(tess.get(), GLU_TESS_ERROR_DATA, &onError);
    if (!outlinesOnly) {
        connect(tess.get(), GLU_TESS_EDGE_FLAG_DATA, &onEdgeFlag);
    }
    gluTessProperty(tess.get(), GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_POSITIVE);
    gluTessProperty(tess.get(), GLU_TESS_BOUNDARY_ONLY, outlinesOnly ? GL_TRUE : GL_FALSE);
    gluTessNormal(tess.get(), 0, 0, 1);
    gluTessBeginPolygon(tess.get(), &result);
    feed(tess.get(), region);
    gluTessEndPolygon(tess.get());
    return !result.failed && !result.numbers.empty();
}

struct Span {
    double low;
    double high;
    Point2 a;
    Point2 b;
};

bool crossing(const Span& s, const Span& t) {
    return (cross(s.a, s.b, t.a) > 0) != (cross(s.a, s.b, t.b) > 0) &&
           (cross(t.a, t.b, s.a) > 0) != (cross(t.a, t.b, s.b) > 0);
}

std::vector<Span> edgeSpans(const Region& region) {
    std::vector<Span> spans;
    spans.reserve(region.pointCount());
    std::size_t first = 0;
    for (const std::uint32_t loopEnd : region.loopEnds) {
        for (std::size_t i = first; i < loopEnd; ++i) {
            const Point2 a = region.points[i];
            const Point2 b = region.points[i + 1 == loopEnd ? first : i + 1];
            spans.push_back({std::min(a.x, b.x), std::max(a.x, b.x), a, b});
        }
        first = loopEnd;
    }
    std::sort(spans.begin(), spans.end(), [](const Span& s, const Span& t) { return s.low < t.low; });
    return spans;
}

// Neighbouring edges may count as crossing; their number is bounded like that of the points.
bool crossesSeldom(const Region& region) {
    const std::vector<Span> spans = edgeSpans(region);
    const std::size_t mostCrossings = 8 * spans.size() + 64;
    std::size_t tests = 0;
    std::size_t crossings = 0;
    for (std::size_t i = 0; i < spans.size(); ++i) {
        for (std::size_t j = i + 1; j < spans.size() && spans[j].low <= spans[i].high; ++j) {
            crossings += crossing(spans[i], spans[j]);
            if (++tests > mostPairTests || crossings > mostCrossings) {
                return false;
            }
        }
    }
    return true;
}

// The outlines that came out, without points that repeat their neighbour and without loops of fewer than three points.
Region outlinesOf(const Tessellation& result) {
    Region region;
    std::size_t from = 0;
    for (const std::uint32_t loopEnd : result.loopEnds) {
        const std::size_t start = region.pointCount();
        for (; from < loopEnd; ++from) {
            const Point2 p = result.points[result.numbers[from]];
            if (region.pointCount() == start || !samePlace(p, region.points[region.pointCount() - 1])) {
                region.points.push_back(p);
            }
        }
        while (region.pointCount() > start + 1 &&
               samePlace(region.points[start], region.points[region.pointCount() - 1])) {
            region.points.truncate(region.pointCount() - 1);
        }
        if (region.pointCount() < start + 3) {
            region.points.truncate(start);
            continue;
        }
        region.loopEnds.push_back(static_cast<std::uint32_t>(region.pointCount()));
    }
    return region;
}

}  // namespace

bool uniteOutlines(Region& region) {
    if (region.pointCount() > mostPoints || !crossesSeldom(region)) {
        return false;
    }
    Tessellation result;
    if (!tessellate(region, true, result)) {
        return false;
    }
    Region united = outlinesOf(result);
    if (united.loopEnds.empty()) {
        return false;
    }
    // The pieces are lost: one stands for all edges, the others for none.
    united.edgeOfPiece.assign(region.edgeOfPiece.size(), static_cast<std::uint32_t>(united.pointCount()));
    united.edgeOfPiece.front() = 0;
    region = std::move(united);
    return true;
}

bool tessellateRegion(const Region& region, PointTriangles& triangles) {
    triangles.clear();
    Tessellation result;
    if (!tessellate(region, false, result) || result.points.size() != region.pointCount()) {
        return false;
    }
    std::memcpy(triangles.extend(result.numbers.size()), result.numbers.data(),
                result.numbers.size() * sizeof(std::uint32_t));
    removeFlatTriangles(region, leastCross(region), triangles);
    return true;
}

}  // namespace tolmar
