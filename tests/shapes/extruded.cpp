// Extruded outlines, prisms, wedges and saddles.
#include "shapes/truth.h"

#include <algorithm>
#include <cmath>

namespace truth {

namespace {

std::unique_ptr<HextSpolygon> extrusion(const Place& at, double s, double height) {
    auto e = make<HextSpolygon>();
    e->origin = at.at(0, 0, 0);
    e->xAxis = at.along(2, 0, 0);
    e->yAxis = at.along(0, 2, 0);
    e->direction = at.along(0, 0, 2);
    e->height = height * s;
    return e;
}

HextVertexList scaled(HextVertexList list, double s) {
    for (HextVertex& v : list) {
        v.point = {v.point.x * s, v.point.y * s, v.point.z * s};
    }
    return list;
}

struct Outlined {
    std::string name;
    HextVertexList outline;
    std::vector<HextVertexList> holes;
    std::vector<Stroke> strokes;
    double area;
    double perimeter;
    std::function<double(double)> points;  // on the outlines by the chord rule
};

ShapeCase outlinedCase(const Outlined& o) {
    const double h = 0.25;
    const double holes = double(o.holes.size());
    return {o.name,
            [=](const Place& at, double s) {
                auto e = extrusion(at, s, h);
                e->outline = scaled(o.outline, s);
                std::vector<HextVertexList> lists;
                for (const HextVertexList& hole : o.holes) {
                    lists.push_back(scaled(hole, s));
                }
                e->holes = lists;
                return e;
            },
            extrudedOff(o.strokes, h),
            o.area * h,
            2 * o.area + o.perimeter * h,
            [=](double s) { return 4 * o.points(s) + 4 * holes - 4; }};
}

void addOutlines(Shapes& out) {
    const auto vertex = [](int kind, double x, double y) {
        return HextVertex{static_cast<std::int16_t>(kind), {x, y, 0}};
    };
    const double d = std::sqrt(0.5);
    out.push_back(outlinedCase(
        {"extrusion of an L, clockwise",
         {vertex(1, 0, 0), vertex(1, 0, 1), vertex(1, 0.2, 1), vertex(1, 0.2, 0.2), vertex(1, 1, 0.2), vertex(4, 1, 0)},
         {},
         polygon({{0, 0, 0}, {1, 0, 0}, {1, 0.2, 0}, {0.2, 0.2, 0}, {0.2, 1, 0}, {0, 1, 0}}),
         0.36,
         4,
         [](double) { return 6.0; }}));
    // A stadium: two half circles of radius 0.3, the second one closing, and a round hole in each half.
    out.push_back(outlinedCase(
        {"extrusion with arcs and holes",
         {vertex(1, 0, 0), vertex(2, 1, 0), vertex(7, 1 + 0.3 * d, 0.3 - 0.3 * d), vertex(1, 1, 0.6), vertex(5, 0, 0.6),
          vertex(3, -0.3, 0.3)},
         {{vertex(6, 0.1, 0.3), vertex(6, 0, 0.4), vertex(6, -0.1, 0.3)},
          {vertex(6, 1.2, 0.3), vertex(6, 1, 0.1), vertex(6, 0.8, 0.3)}},
         {{{0, 0, 0}, {1, 0, 0}, 0, {}},
          {{1, 0, 0}, {1, 0.6, 0}, 0.3, {1, 0.3, 0}},
          {{1, 0.6, 0}, {0, 0.6, 0}, 0, {}},
          {{0, 0.6, 0}, {0, 0, 0}, 0.3, {0, 0.3, 0}},
          {{0.1, 0.3, 0}, {0.1, 0.3, 0}, 0.1, {0, 0.3, 0}},
          {{1.2, 0.3, 0}, {1.2, 0.3, 0}, 0.2, {1, 0.3, 0}}},
         0.6 + pi * (0.09 - 0.01 - 0.04),
         2 + 2 * pi * (0.3 + 0.1 + 0.2),
         [](double s) { return 2 + 2 * std::ceil(chords(0.3 * s) / 2) + chords(0.1 * s) + chords(0.2 * s); }}));
    // A chain of arcs: a half circle to the right and three quarters of one to the left make an S-like blade.
    out.push_back(outlinedCase({"extrusion with chained arcs",
                                {vertex(2, 0, 0), vertex(3, 0.25, 0.25), vertex(2, 0.5, 0), vertex(3, 0.75, -0.25),
                                 vertex(1, 1, 0), vertex(1, 1, -1), vertex(4, 0, -1)},
                                {},
                                {{{0.5, 0, 0}, {0, 0, 0}, 0.25, {0.25, 0, 0}},
                                 {{0.5, 0, 0}, {1, 0, 0}, 0.25, {0.75, 0, 0}},
                                 {{1, 0, 0}, {1, -1, 0}, 0, {}},
                                 {{1, -1, 0}, {0, -1, 0}, 0, {}},
                                 {{0, -1, 0}, {0, 0, 0}, 0, {}}},
                                1,
                                3 + pi * 0.5,
                                [](double s) { return 3 + 2 * std::ceil(chords(0.25 * s) / 2); }}));
    out.push_back(
        outlinedCase({"extrusion of a ring",
                      {vertex(6, 0.5, 0), vertex(6, 0, 0.5), vertex(6, -0.5, 0)},
                      {{vertex(6, 0, 0.49), vertex(6, 0.49, 0), vertex(6, -0.49, 0)}},
                      {{{0.5, 0, 0}, {0.5, 0, 0}, 0.5, {0, 0, 0}}, {{0.49, 0, 0}, {0.49, 0, 0}, 0.49, {0, 0, 0}}},
                      pi * (0.25 - 0.2401),
                      2 * pi * 0.99,
                      [](double s) { return chords(0.5 * s) + chords(0.49 * s); }}));
    const std::vector<Stroke> triangle = polygon({{0, 0, 0}, {0.8, 0, 0}, {0.1, 0.5, 0}});
    out.push_back({"wedge",
                   [](const Place& at, double s) {
                       auto w = make<HextWedge3D>();
                       w->point1 = at.at(0.1 * s, 0.5 * s, 0);
                       w->point2 = at.at(0, 0, 0);
                       w->point3 = at.at(0.8 * s, 0, 0);
                       w->wedgeSize = 0.4 * s;
                       return w;
                   },
                   extrudedOff(triangle, 0.4), 0.08, 0.4 + 0.4 * (0.8 + std::hypot(0.1, 0.5) + std::hypot(0.7, 0.5)),
                   [](double) { return 8; }});
}

void addPrisms(Shapes& out) {
    for (const int sides : {3, 6, 100}) {
        Points corners;
        for (int i = 0; i < sides; ++i) {
            corners.emplace_back(0.5 * std::cos(2 * pi * i / sides), 0.5 * std::sin(2 * pi * i / sides), 0);
        }
        const std::vector<Stroke> strokes = polygon(corners);
        const double area = sides / 2.0 * 0.25 * std::sin(2 * pi / sides);
        out.push_back({"prism of " + std::to_string(sides) + " sides",
                       [sides](const Place& at, double s) {
                           auto p = make<HextPrism3D>();
                           p->endPoint = at.at(0, 0, 0);
                           p->startPoint = at.at(0, 0, 0.7 * s);
                           p->vertexPoint = at.at(0.5 * s, 0, 0);
                           p->sides = sides;
                           return p;
                       },
                       extrudedOff(strokes, 0.7), area * 0.7, 2 * area + 0.7 * sides * std::sin(pi / sides),
                       [sides](double) { return 4 * sides - 4; }});
    }
}

ShapeCase saddleCase(const std::string& name, double across, double high, double r) {
    // Local X along the section, Y up, Z along the axis.
    const double half = std::min(r, across / 2);
    const double center = high + std::sqrt(r * r - half * half);
    std::vector<Stroke> strokes = polygon({{across / 2 - half, high, 0},
                                           {0, high, 0},
                                           {0, 0, 0},
                                           {across, 0, 0},
                                           {across, high, 0},
                                           {across / 2 + half, high, 0}});
    strokes.back() = {{across / 2 - half, high, 0}, {across / 2 + half, high, 0}, r, {across / 2, center, 0}};
    if (half == across / 2) {
        strokes = {strokes[1], strokes[2], strokes[3], strokes.back()};
    }
    const double sweep = 2 * std::asin(half / r);
    const double area = across * high - r * r * (sweep - std::sin(sweep)) / 2;
    const double perimeter = 2 * across + 2 * high - 2 * half + r * sweep;
    return {name,
            [=](const Place& at, double s) {
                auto saddle = make<HextSaddle3D>();
                saddle->point = at.at(0, 0, 0);
                saddle->axis = at.along(0, 0, 2);
                saddle->sectionAxis = at.along(5, 0, 0);
                saddle->length = 0.9 * s;
                saddle->sectionLength = across * s;
                saddle->sectionHeight = high * s;
                saddle->circleRadius = r * s;
                return saddle;
            },
            extrudedOff(strokes, 0.9),
            area * 0.9,
            2 * area + perimeter * 0.9,
            [=](double s) {
                const double onArc = std::ceil(chords(r * s) * sweep / (2 * pi));
                return 4 * (strokes.size() - 1 + onArc) - 4;
            }};
}

}  // namespace

void addExtrusions(Shapes& out) {
    addOutlines(out);
    addPrisms(out);
    out.push_back(saddleCase("saddle with ledges", 0.9, 0.5, 0.3));
    out.push_back(saddleCase("saddle from edge to edge", 0.6, 0.5, 0.5));
}

}  // namespace truth
