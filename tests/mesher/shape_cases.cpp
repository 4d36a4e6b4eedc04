#include "shape_cases.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double pi = tlGePi;
using Points = std::vector<TlGePoint3d>;
using Off = std::function<double(const TlGePoint3d&)>;

template <typename Class>
std::unique_ptr<Class> make() {
    return std::make_unique<Class>();
}

double none(double) {
    return 0;
}

// --- truth in the half plane of a revolution: distance of (r, z) from a profile of segments and arcs

struct Stroke {
    TlGePoint3d a, b;    // (r, z) in x and y
    double radius = 0;   // of an arc; 0 for a segment
    TlGePoint3d center;  // of an arc, which runs counter-clockwise from a to b
};

double ahead(double from, double to) {
    const double angle = std::fmod(to - from, 2 * pi);
    return angle < 0 ? angle + 2 * pi : angle;
}

double distanceToStroke(double r, double z, const Stroke& s) {
    const TlGePoint3d p(r, z, 0);
    if (s.radius > 0) {
        const auto angle = [&s](const TlGePoint3d& q) { return std::atan2(q.y - s.center.y, q.x - s.center.x); };
        const double sweep = s.a.isEqualTo(s.b) ? 2 * pi : ahead(angle(s.a), angle(s.b));
        if (ahead(angle(s.a), angle(p)) <= sweep) {
            return std::fabs(p.distanceTo(s.center) - s.radius);
        }
        return std::min(p.distanceTo(s.a), p.distanceTo(s.b));
    }
    const TlGeVector3d ab = s.b - s.a;
    const double t = std::clamp((p - s.a).dotProduct(ab) / ab.lengthSqrd(), 0.0, 1.0);
    return p.distanceTo(s.a + ab * t);
}

double distanceToStrokes(double r, double z, const std::vector<Stroke>& strokes) {
    double least = 1e300;
    for (const Stroke& s : strokes) {
        least = std::min(least, distanceToStroke(r, z, s));
    }
    return least;
}

Points pointsOf(const Stroke& s, int count) {
    Points out;
    for (int i = 0; i <= count; ++i) {
        const double t = double(i) / count;
        if (s.radius > 0) {
            const double from = std::atan2(s.a.y - s.center.y, s.a.x - s.center.x);
            const double sweep =
                s.a.isEqualTo(s.b) ? 2 * pi : ahead(from, std::atan2(s.b.y - s.center.y, s.b.x - s.center.x));
            out.emplace_back(s.center.x + s.radius * std::cos(from + sweep * t),
                             s.center.y + s.radius * std::sin(from + sweep * t), 0);
        } else {
            out.push_back(s.a + (s.b - s.a) * t);
        }
    }
    return out;
}

// About the local Z axis from X on, `strokes` being the profile without its part on the axis.
Off revolvedOff(const std::vector<Stroke>& strokes, double angle) {
    return [=](const TlGePoint3d& p) {
        const double r = std::hypot(p.x, p.y);
        double least = distanceToStrokes(r, p.z, strokes);
        if (angle < 2 * pi) {
            least = std::min({least, std::fabs(p.y), std::fabs(p.y * std::cos(angle) - p.x * std::sin(angle))});
        }
        return least;
    };
}

Points revolvedPoints(const std::vector<Stroke>& strokes, double angle) {
    Points out;
    for (const Stroke& s : strokes) {
        for (const TlGePoint3d& p : pointsOf(s, 5)) {
            for (int k = 0; k <= 13; ++k) {
                const double a = angle * k / 13;
                out.emplace_back(p.x * std::cos(a), p.x * std::sin(a), p.y);
            }
        }
    }
    return out;
}

// A region of strokes in X and Y, extruded along Z.
Off extrudedOff(const std::vector<Stroke>& strokes, double height) {
    return [=](const TlGePoint3d& p) {
        return std::min({distanceToStrokes(p.x, p.y, strokes), std::fabs(p.z), std::fabs(height - p.z)});
    };
}

Points extrudedPoints(const std::vector<Stroke>& strokes, double height) {
    Points out;
    for (const Stroke& s : strokes) {
        for (const TlGePoint3d& p : pointsOf(s, 23)) {
            for (const double z : {0.0, height / 3, height}) {
                out.emplace_back(p.x, p.y, z);
            }
        }
    }
    return out;
}

std::vector<Stroke> polygon(const Points& corners) {
    std::vector<Stroke> out;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        out.push_back({corners[i], corners[(i + 1) % corners.size()], 0, {}});
    }
    return out;
}

// --- round solids between two discs; the axis leans by `lean` along X at the height 1

struct Frustum {
    double r0, r1, height, lean;

    Off off() const {
        const Frustum f = *this;
        return [f](const TlGePoint3d& p) {
            const double t = p.z / f.height;
            const double wall = std::fabs(std::hypot(p.x - f.lean * p.z, p.y) - (f.r0 + (f.r1 - f.r0) * t));
            return std::min({wall, std::fabs(p.z), std::fabs(f.height - p.z)});
        };
    }
    Points points() const {
        Points out;
        for (const double t : {0.0, 0.4, 1.0}) {
            const double r = r0 + (r1 - r0) * t;
            for (int k = 0; k < 29; ++k) {
                const double a = 2 * pi * k / 29;
                out.emplace_back(lean * height * t + r * std::cos(a), r * std::sin(a), height * t);
            }
        }
        return out;
    }
    double volume() const { return pi * height * (r0 * r0 + r0 * r1 + r1 * r1) / 3; }
    double area() const { return pi * (r0 + r1) * std::hypot(height, r1 - r0) + pi * (r0 * r0 + r1 * r1); }
    double rule(double s) const {
        const double start = r0 > 0 ? chords(r0 * s) : 0;
        const double end = r1 > 0 ? chords(r1 * s) : 0;
        return 2 * (start + end) - (start > 0 ? 2 : 0) - (end > 0 ? 2 : 0);
    }
};

template <typename Cone>
std::unique_ptr<HextPrimary3D> makeCone(const Frustum& f, const Place& at, double s) {
    auto cone = make<Cone>();
    cone->startPoint = at.at(0, 0, 0);
    cone->endPoint = at.at(f.lean * f.height * s, 0, f.height * s);
    cone->startDiameter = 2 * f.r0 * s;
    cone->endDiameter = 2 * f.r1 * s;
    if constexpr (std::is_same_v<Cone, HextEcone3D>) {
        cone->vect = at.along(2, 0, 0);
    }
    return cone;
}

template <typename Cone>
ShapeCase coneCase(const std::string& name, const Frustum& f) {
    return {name,
            [f](const Place& at, double s) { return makeCone<Cone>(f, at, s); },
            f.off(),
            [f] { return f.points(); },
            f.volume(),
            f.lean == 0 ? f.area() : 0,
            [f](double s) { return f.rule(s); }};
}

void addRound(std::vector<ShapeCase>& out) {
    const Frustum cylinder{0.4, 0.4, 1, 0};
    out.push_back({"cylinder",
                   [](const Place& at, double s) {
                       auto c = make<HextCylinder3D>();
                       c->startPoint = at.at(0, 0, 0);
                       c->endPoint = at.at(0, 0, s);
                       c->diameter = 0.8 * s;
                       return c;
                   },
                   cylinder.off(), [cylinder] { return cylinder.points(); }, cylinder.volume(), cylinder.area(),
                   [cylinder](double s) { return cylinder.rule(s); }});
    out.push_back(coneCase<HextConcone3D>("cone", {0.5, 0.2, 0.8, 0}));
    out.push_back(coneCase<HextConcone3D>("cone, slight", {0.5, 0.4975, 0.8, 0}));
    out.push_back(coneCase<HextConcone3D>("cone to a tip", {0.5, 0, 0.8, 0}));
    out.push_back(coneCase<HextConcone3D>("cone from a tip", {0, 0.5, 0.8, 0}));
    out.push_back(coneCase<HextEcone3D>("eccentric cone", {0.5, 0.3, 0.8, 0.25}));
    out.push_back(coneCase<HextEcone3D>("eccentric cone to a tip", {0.3, 0, 0.8, -0.5}));
}

void addSlopedCylinder(std::vector<ShapeCase>& out) {
    // The sloped end passes through the origin with the normal (1, 0, 2): z = -x / 2 on it.
    const double r = 0.4;
    out.push_back({"sheared cylinder",
                   [r](const Place& at, double s) {
                       auto c = make<HextScylinder3D>();
                       c->startPoint = at.at(0, 0, 0);
                       c->endPoint = at.at(0, 0, s);
                       c->diameter = 2 * r * s;
                       c->vect = at.along(1, 0, 2);
                       return c;
                   },
                   [r](const TlGePoint3d& p) {
                       return std::min({std::fabs(std::hypot(p.x, p.y) - r), std::fabs(1 - p.z),
                                        std::fabs(p.x + 2 * p.z) / std::sqrt(5.0)});
                   },
                   [r] {
                       Points points;
                       for (int k = 0; k < 40; ++k) {
                           const double x = r * std::cos(pi * k / 20);
                           const double y = r * std::sin(pi * k / 20);
                           for (const double z : {-x / 2, 0.5, 1.0}) {
                               points.emplace_back(x, y, z);
                           }
                       }
                       return points;
                   },
                   pi * r * r, 2 * pi * r + pi * r * r * (1 + std::sqrt(5.0) / 2),
                   [r](double s) { return 2 * chords(r * s) + 2 * chords(r * s * std::sqrt(5.0) / 2) - 4; }});
}

void addSphereAndHeads(std::vector<ShapeCase>& out) {
    out.push_back({"sphere",
                   [](const Place& at, double s) {
                       auto sphere = make<HextSphere3D>();
                       sphere->center = at.at(0, 0, 0);
                       sphere->radius = 0.5 * s;
                       return sphere;
                   },
                   [](const TlGePoint3d& p) { return std::fabs(p.asVector().length() - 0.5); },
                   [] {
                       return revolvedPoints({{{0, -0.5, 0}, {0, 0.5, 0}, 0.5, {0, 0, 0}}}, 2 * pi);
                   },
                   pi / 6, pi,
                   [](double s) {
                       const double n = chords(0.5 * s);
                       return 2 * n * (std::ceil(n / 2) - 1);
                   }});
    struct Head {
        const char* name;
        double a, b, r;
    };
    for (const Head& h : {Head{"head, flat", 0.25, 0.5, 0.5}, Head{"head, pointed", 0.9, 0.5, 0.5},
                          Head{"head, part of an ellipse", 0.3, 0.6, 0.45}}) {
        const double z0 = h.a / h.b * std::sqrt(h.b * h.b - h.r * h.r);
        // Distance from the ellipse by its gradient, which is exact near it; the base is flat.
        const Off off = [h, z0](const TlGePoint3d& p) {
            const double r = std::hypot(p.x, p.y);
            const double z = p.z + z0;
            const double f = r * r / (h.b * h.b) + z * z / (h.a * h.a) - 1;
            const double gradient = 2 * std::hypot(r / (h.b * h.b), z / (h.a * h.a));
            const double wall = gradient > 0 ? std::fabs(f) / gradient : h.a;
            return std::min(wall, std::fabs(p.z));
        };
        const double rise = h.a - z0;
        out.push_back({h.name,
                       [h](const Place& at, double s) {
                           auto head = make<HextOval3D>();
                           head->point = at.at(0, 0, 0);
                           head->vect = at.along(0, 0, 3);
                           head->axialRadius = h.a * s;
                           head->radialRadius = h.b * s;
                           head->baseRadius = h.r * s;
                           return head;
                       },
                       off,
                       [h, z0] {
                           Points points;
                           const double from = std::acos(h.r / h.b);
                           for (int i = 0; i <= 9; ++i) {
                               const double t = from + (pi / 2 - from) * i / 9;
                               for (int k = 0; k < 15; ++k) {
                                   const double a = 2 * pi * k / 15;
                                   points.emplace_back(h.b * std::cos(t) * std::cos(a), h.b * std::cos(t) * std::sin(a),
                                                       h.a * std::sin(t) - z0);
                               }
                           }
                           return points;
                       },
                       pi * h.b * h.b * (rise - (h.a * h.a * h.a - z0 * z0 * z0) / (3 * h.a * h.a)), 0, none});
    }
}

// --- blocks

std::vector<Stroke> unitSquare() {
    return polygon({{0, 0, 0}, {1, 0, 0}, {1, 0.6, 0}, {0, 0.6, 0}});
}

ShapeCase boxCase(const std::string& name, int handedness, int pointKind) {
    const double z0 = pointKind == 1 ? -0.15 : (handedness == 0 ? -0.3 : 0);
    const double xy = pointKind == 1 ? 1 : 0;
    const Off inCorner = extrudedOff(unitSquare(), 0.3);
    return {name,
            [=](const Place& at, double s) {
                auto box = make<HextBox3D>();
                box->point = at.at(0, 0, 0);
                box->xLength = s;
                box->yLength = 0.6 * s;
                box->zLength = 0.3 * s;
                box->xAxis = at.along(2, 0, 0);
                box->yAxis = at.along(0, 0.5, 0);
                box->handedness = handedness;
                box->pointKind = pointKind;
                return box;
            },
            [=](const TlGePoint3d& p) {
                return inCorner({p.x + xy * 0.5, p.y + xy * 0.3, p.z - z0});
            },
            [=] {
                Points points = extrudedPoints(unitSquare(), 0.3);
                for (TlGePoint3d& p : points) {
                    p += TlGeVector3d(-xy * 0.5, -xy * 0.3, z0);
                }
                return points;
            },
            0.18,
            2 * (0.6 + 0.3 + 0.18),
            [](double) { return 12; }};
}

struct Pyramid {
    double bx, by, tx, ty;
};

// Flat faces throughout: distances are those of the four sides' planes.
ShapeCase pyramidCase(const std::string& name, const Pyramid& f, double triangles) {
    const double h = 0.7;
    const double shift = 0.2;  // of the top along (3, 4, 0) / 5
    const Off off = [=](const TlGePoint3d& p) {
        const double t = p.z / h;
        const double x = p.x - 0.6 * shift * t;
        const double y = p.y - 0.8 * shift * t;
        const double wallX = std::fabs((f.bx + (f.tx - f.bx) * t) / 2 - std::fabs(x));
        const double wallY = std::fabs((f.by + (f.ty - f.by) * t) / 2 - std::fabs(y));
        return std::min({wallX, wallY, std::fabs(p.z), std::fabs(h - p.z)});
    };
    const double middle = (f.bx + f.tx) * (f.by + f.ty) / 4;
    return {name,
            [=](const Place& at, double s) {
                auto frustum = make<HextSqucone3D>();
                frustum->point = at.at(0, 0, 0);
                frustum->bottomX = f.bx * s;
                frustum->bottomY = f.by * s;
                frustum->topX = f.tx * s;
                frustum->topY = f.ty * s;
                frustum->height = h * s;
                frustum->zAxis = at.along(0, 0, 2);
                frustum->xAxis = at.along(3, 0, 0);
                frustum->offsetDirection = at.along(3, 4, 0);
                frustum->offsetLength = shift * s;
                return frustum;
            },
            off,
            [=] {
                Points points;
                for (const double t : {0.0, 0.5, 1.0}) {
                    for (const double u : {-0.5, 0.1, 0.5}) {
                        for (const double v : {-0.5, 0.5}) {
                            points.emplace_back(u * (f.bx + (f.tx - f.bx) * t) + 0.6 * shift * t,
                                                v * (f.by + (f.ty - f.by) * t) + 0.8 * shift * t, h * t);
                        }
                    }
                }
                return points;
            },
            h / 6 * (f.bx * f.by + 4 * middle + f.tx * f.ty),
            0,
            [triangles](double) { return triangles; }};
}

void addBlocks(std::vector<ShapeCase>& out) {
    out.push_back(boxCase("box", 1, 0));
    out.push_back(boxCase("box, left-handed", 0, 0));
    out.push_back(boxCase("box, centred", 1, 1));
    out.push_back(boxCase("box, centred and left-handed", 0, 1));
    out.push_back(pyramidCase("frustum", {0.8, 0.6, 0.3, 0.5}, 12));
    out.push_back(pyramidCase("frustum to an edge", {0.8, 0.6, 0.3, 0}, 8));
    out.push_back(pyramidCase("frustum to a tip", {0.8, 0.6, 0, 0}, 6));
    out.push_back(pyramidCase("frustum between edges", {0.8, 0, 0, 0.5}, 4));
}

// --- extruded

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
            [=] { return extrudedPoints(o.strokes, h); },
            o.area * h,
            2 * o.area + o.perimeter * h,
            [=](double s) { return 4 * o.points(s) + 4 * holes - 4; }};
}

void addExtrusions(std::vector<ShapeCase>& out) {
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
                   extrudedOff(triangle, 0.4), [=] { return extrudedPoints(triangle, 0.4); }, 0.08,
                   0.4 + 0.4 * (0.8 + std::hypot(0.1, 0.5) + std::hypot(0.7, 0.5)), [](double) { return 8; }});
}

void addPrisms(std::vector<ShapeCase>& out) {
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
                       extrudedOff(strokes, 0.7), [=] { return extrudedPoints(strokes, 0.7); }, area * 0.7,
                       2 * area + 0.7 * sides * std::sin(pi / sides), [sides](double) { return 4 * sides - 4; }});
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
            [=] { return extrudedPoints(strokes, 0.9); },
            area * 0.9,
            2 * area + perimeter * 0.9,
            [=](double s) {
                const double onArc = std::ceil(chords(r * s) * sweep / (2 * pi));
                return 4 * (strokes.size() - 1 + onArc) - 4;
            }};
}

void addSquareRound(std::vector<ShapeCase>& out) {
    // Quarter cones are ruled from a corner to its quarter of the circle; a section at the height t is the rectangle
    // scaled by 1 - t with a rim of t times the radius, moved by t times the lean.
    const double a = 0.8;
    const double b = 0.5;
    const double r = 0.3;
    const double h = 0.6;
    const double lean = 0.1;
    out.push_back({"square to round",
                   [=](const Place& at, double s) {
                       auto t = make<HextSqucir3D>();
                       t->basePoint = at.at(0, 0, 0);
                       t->topCenter = at.at(lean * s, 0, h * s);
                       t->xAxis = at.along(2, 0, 0);
                       t->baseNormal = at.along(0, 0, 3);
                       t->xLength = a * s;
                       t->yLength = b * s;
                       t->topRadius = r * s;
                       return t;
                   },
                   [=](const TlGePoint3d& p) {
                       const double t = p.z / h;
                       const double x = std::fabs(p.x - lean * t) - a / 2 * (1 - t);
                       const double y = std::fabs(p.y) - b / 2 * (1 - t);
                       const double outside =
                           std::hypot(std::max(x, 0.0), std::max(y, 0.0)) + std::min(std::max(x, y), 0.0);
                       return std::min({std::fabs(outside - r * t), std::fabs(p.z), std::fabs(h - p.z)});
                   },
                   [=] {
                       Points points;
                       for (int k = 0; k < 32; ++k) {
                           const double angle = pi * (k + 0.5) / 16;
                           const double x = std::cos(angle);
                           const double y = std::sin(angle);
                           for (const double t : {0.0, 0.5, 1.0}) {
                               points.emplace_back(lean * t + std::copysign(a / 2 * (1 - t), x) + r * t * x,
                                                   std::copysign(b / 2 * (1 - t), y) + r * t * y, h * t);
                           }
                       }
                       return points;
                   },
                   h * (a * b + (a + b) * r + pi * r * r) / 3, 0,
                   [=](double s) { return 2 * 4 * std::ceil(chords(r * s) / 4) + 4; }});
}

// --- bends, about local Z from X on

enum class Way { Short, Long, Full, Half, Degrees, Radians, Backward };

struct BendCase {
    std::string name;
    Way way;
    double angle;  // of the sweep that comes out
};

const std::vector<BendCase>& bendCases() {
    static const std::vector<BendCase> cases = {
        {"short way", Way::Short, pi / 2},
        {"short way, wide", Way::Short, 2.8},
        {"long way", Way::Long, 2 * pi - 2},
        {"full", Way::Full, 2 * pi},
        {"half", Way::Half, pi},
        {"by degrees", Way::Degrees, pi / 6},
        {"by radians", Way::Radians, 0.8},
        {"by radians backward", Way::Backward, 0.8},
    };
    return cases;
}

// Local frame of the body: a way that ends where the frame begins has its start at the far end.
template <typename Torus>
void setBend(Torus& torus, const BendCase& bend, const Place& at, double radius, double s) {
    const double a = bend.angle;
    const auto onCircle = [&](double angle) {
        return at.at(radius * s * std::cos(angle), radius * s * std::sin(angle), 0);
    };
    const bool byAngle = bend.way == Way::Degrees || bend.way == Way::Radians || bend.way == Way::Backward;
    torus.center = at.at(0, 0, 0);
    torus.startPoint = onCircle(bend.way == Way::Backward ? a : 0);
    torus.form = byAngle ? 1 : 0;
    torus.arcKind = bend.way == Way::Long ? 1 : bend.way == Way::Full ? 2 : bend.way == Way::Half ? 3 : 0;
    const TlGeVector3d axis = at.along(0, 0, 2);
    const bool axisInThird = byAngle || torus.arcKind >= 2;
    torus.thirdField = axisInThird ? TlGePoint3d::kOrigin + axis : onCircle(a);
    torus.angle = bend.way == Way::Degrees ? a * 180 / pi : bend.way == Way::Backward ? -a : a;
    if constexpr (std::is_same_v<Torus, HextSqutorus3D>) {
        torus.normal = axis;
    }
}

// The section turns and changes from `from` to `to` on its way; `sectionOff` is the distance from a section's outline
// in its own plane, x away from the axis.
struct Sections {
    double radius;
    double angle;
    std::function<double(double x, double y, double t)> off;
    std::function<Points(double t)> outline;
    bool hasEnds;
};

Off bendOff(const Sections& b) {
    return [b](const TlGePoint3d& p) {
        const double turn = std::atan2(p.y, p.x);
        const double at = turn < -1e-9 ? turn + 2 * pi : turn;
        double least = b.off(std::hypot(p.x, p.y) - b.radius, p.z, std::clamp(at / b.angle, 0.0, 1.0));
        if (b.hasEnds) {
            least = std::min({least, std::fabs(p.y), std::fabs(p.y * std::cos(b.angle) - p.x * std::sin(b.angle))});
        }
        return least;
    };
}

Points bendPoints(const Sections& b) {
    Points out;
    for (int k = 0; k <= 11; ++k) {
        const double a = b.angle * k / 11;
        for (const TlGePoint3d& p : b.outline(k / 11.0)) {
            out.emplace_back((b.radius + p.x) * std::cos(a), (b.radius + p.x) * std::sin(a), p.y);
        }
    }
    return out;
}

ShapeCase torusCase(const BendCase& bend, double r0, double r1) {
    const double radius = 0.6;
    const auto at = [=](double t) { return r0 + (r1 - r0) * t; };
    const Sections sections{radius, bend.angle,
                            [=](double x, double y, double t) { return std::fabs(std::hypot(x, y) - at(t)); },
                            [=](double t) {
                                return pointsOf({{at(t), 0, 0}, {at(t), 0, 0}, std::max(at(t), 1e-9), {0, 0, 0}}, 16);
                            },
                            bend.angle < 2 * pi || r0 != r1};
    const double mean = (r0 * r0 + r0 * r1 + r1 * r1) / 3;
    const bool whole = bend.angle == 2 * pi;
    return {std::string(r0 == r1 ? "torus, " : "reducing torus, ") + bend.name,
            [=](const Place& place, double s) {
                auto torus = make<HextTorus3D>();
                setBend(*torus, bend, place, radius, s);
                const bool backward = bend.way == Way::Backward;
                torus->startDiameter = 2 * (backward ? r1 : r0) * s;
                torus->endDiameter = 2 * (backward ? r0 : r1) * s;
                return torus;
            },
            bendOff(sections), [=] { return bendPoints(sections); }, pi * mean * radius * bend.angle,
            r0 == r1 ? 2 * pi * r0 * radius * bend.angle + (whole ? 0 : 2 * pi * r0 * r0) : 0,
            [=](double s) {
                const double around = chords(std::max(r0, r1) * s);
                const double along = std::ceil(chords((radius + std::max(r0, r1)) * s) * bend.angle / (2 * pi) - 1e-9);
                return 2 * around * along + (whole && r0 == r1 ? 0 : 2 * (around - 2));
            },
            // The rule knows nothing of the twist of a reducing bend.
            r0 == r1               ? 1.1
            : std::min(r0, r1) > 0 ? 1.8
                                   : 2.0};
}

ShapeCase squareTorusCase(const BendCase& bend, double w0, double h0, double w1, double h1) {
    const double radius = 0.6;
    const auto size = [=](double t) { return TlGePoint3d((w0 + (w1 - w0) * t) / 2, (h0 + (h1 - h0) * t) / 2, 0); };
    const Sections sections{radius, bend.angle,
                            [=](double x, double y, double t) {
                                return std::min(std::fabs(size(t).x - std::fabs(x)),
                                                std::fabs(size(t).y - std::fabs(y)));
                            },
                            [=](double t) {
                                const TlGePoint3d h = size(t);
                                return Points{{h.x, h.y, 0}, {-h.x, h.y, 0}, {-h.x, -h.y, 0}, {h.x, -h.y, 0},
                                              {0, h.y, 0},   {h.x, 0, 0},    {-h.x, 0, 0}};
                            },
                            bend.angle < 2 * pi || w0 != w1 || h0 != h1};
    const bool even = w0 == w1 && h0 == h1;
    const bool whole = bend.angle == 2 * pi;
    const double mean = w0 * h0 / 3 + (w0 * h1 + w1 * h0) / 6 + w1 * h1 / 3;
    return {std::string(even ? "square torus, " : "reducing square torus, ") + bend.name,
            [=](const Place& place, double s) {
                auto torus = make<HextSqutorus3D>();
                setBend(*torus, bend, place, radius, s);
                const bool backward = bend.way == Way::Backward;
                torus->startWidth = (backward ? w1 : w0) * s;
                torus->startHeight = (backward ? h1 : h0) * s;
                torus->endWidth = (backward ? w0 : w1) * s;
                torus->endHeight = (backward ? h0 : h1) * s;
                return torus;
            },
            bendOff(sections),
            [=] { return bendPoints(sections); },
            mean * radius * bend.angle,
            even ? 2 * (w0 + h0) * radius * bend.angle + (whole ? 0 : 2 * w0 * h0) : 0,
            !even ? std::function<double(double)>(none)
                  : [=](double s) {
                        const auto along = [&](double r) {
                            return std::ceil(chords(r * s) * bend.angle / (2 * pi) - 1e-9);
                        };
                        return 4 * (along(radius + w0 / 2) + along(radius - w0 / 2)) + (whole ? 0 : 4);
                    }};
}

void addBends(std::vector<ShapeCase>& out) {
    for (const BendCase& bend : bendCases()) {
        out.push_back(torusCase(bend, 0.15, 0.15));
        out.push_back(squareTorusCase(bend, 0.3, 0.2, 0.3, 0.2));
    }
    const BendCase quarter = bendCases().front();
    const BendCase backward = bendCases().back();
    const BendCase full = bendCases()[3];
    out.push_back(torusCase(quarter, 0.25, 0.1));
    out.push_back(torusCase(quarter, 0.1, 0.25));
    out.push_back(torusCase(backward, 0.25, 0.1));
    out.push_back(torusCase(quarter, 0.2, 0));
    out.push_back(torusCase(quarter, 0, 0.2));
    out.push_back(torusCase(full, 0.25, 0.1));
    out.push_back(squareTorusCase(quarter, 0.4, 0.5, 0.2, 0.1));
    out.push_back(squareTorusCase(quarter, 0.1, 0.2, 0.4, 0.5));
    out.push_back(squareTorusCase(quarter, 0.3, 0.4, 0, 0.2));
    out.push_back(squareTorusCase(quarter, 0, 0, 0.3, 0.4));
}

// --- revolved profiles in the X Z plane of the frame

struct Revolved {
    std::string name;
    double angle;
    HextVertexList profile;  // x and z
    std::vector<Stroke> strokes;
    double area;
    double centroid;  // of the area, from the axis
    std::function<double(double)> rule;
};

ShapeCase revolvedCase(const Revolved& r) {
    return {r.name,
            [=](const Place& at, double s) {
                auto revolve = make<HextRevolve>();
                // Backward from the far end is the same solid.
                const double start = r.angle < 0 ? -r.angle : 0;
                HextVertexList list;
                for (const HextVertex& v : r.profile) {
                    const double x = v.point.x * s;
                    list.push_back({v.kind, at.at(x * std::cos(start), x * std::sin(start), v.point.z * s)});
                }
                revolve->center = at.at(0, 0, 0.3 * s);
                revolve->axis = at.along(0, 0, 4);
                revolve->angle = r.angle;
                revolve->profile = list;
                return revolve;
            },
            revolvedOff(r.strokes, std::fabs(r.angle)),
            [=] { return revolvedPoints(r.strokes, std::fabs(r.angle)); },
            r.area * r.centroid * std::fabs(r.angle),
            0,
            r.rule};
}

void addRevolved(std::vector<ShapeCase>& out) {
    const auto vertex = [](int kind, double x, double z) {
        return HextVertex{static_cast<std::int16_t>(kind), {x, 0, z}};
    };
    const HextVertexList ring{vertex(1, 0.3, 0), vertex(1, 0.5, 0), vertex(1, 0.5, 0.2), vertex(4, 0.3, 0.2)};
    const std::vector<Stroke> ringStrokes = polygon({{0.3, 0, 0}, {0.5, 0, 0}, {0.5, 0.2, 0}, {0.3, 0.2, 0}});
    const auto ringRule = [](double angle, double ends) {
        return [=](double s) {
            const auto along = [&](double r) { return std::ceil(chords(r * s) * angle / (2 * pi) - 1e-9); };
            return 4 * (along(0.5) + along(0.3)) + ends;
        };
    };
    out.push_back(revolvedCase({"revolved ring, whole", 2 * pi, ring, ringStrokes, 0.04, 0.4, ringRule(2 * pi, 0)}));
    out.push_back(revolvedCase({"revolved ring, part", 1.3, ring, ringStrokes, 0.04, 0.4, ringRule(1.3, 4)}));
    out.push_back(revolvedCase({"revolved ring, backward", -1.3, ring, ringStrokes, 0.04, 0.4, ringRule(1.3, 4)}));
    // On the axis along an edge, and at a point.
    const HextVertexList onAxis{vertex(1, 0, 0), vertex(1, 0.4, 0.1), vertex(1, 0.3, 0.5), vertex(4, 0, 0.6)};
    const std::vector<Stroke> open{
        {{0, 0, 0}, {0.4, 0.1, 0}, 0, {}}, {{0.4, 0.1, 0}, {0.3, 0.5, 0}, 0, {}}, {{0.3, 0.5, 0}, {0, 0.6, 0}, 0, {}}};
    std::vector<Stroke> closed = open;
    closed.push_back({{0, 0.6, 0}, {0, 0, 0}, 0, {}});
    const double area = 0.02 + 0.035 * 4 + 0.015;
    const double moment = (0.4 * 0.4 * 0.1 + 0.4 * (0.16 + 0.12 + 0.09) + 0.3 * 0.3 * 0.1) / 6;
    out.push_back(revolvedCase({"revolved on the axis, whole", 2 * pi, onAxis, open, area, moment / area, none}));
    out.push_back(revolvedCase({"revolved on the axis, part", 4, onAxis, open, area, moment / area, none}));
    const HextVertexList touching{vertex(1, 0, 0.2), vertex(1, 0.4, 0), vertex(4, 0.4, 0.5)};
    const std::vector<Stroke> triangle = polygon({{0, 0.2, 0}, {0.4, 0, 0}, {0.4, 0.5, 0}});
    out.push_back(revolvedCase({"revolved, touching the axis", 2 * pi, touching, triangle, 0.1, 0.8 / 3, none}));
    out.push_back(revolvedCase({"revolved, touching, part", 2, touching, triangle, 0.1, 0.8 / 3, none}));
    // A bead and a groove: a rectangle with a half circle out and one in.
    const HextVertexList bead{vertex(1, 0.3, 0),   vertex(2, 0.5, 0),   vertex(3, 0.6, 0.1),   vertex(1, 0.5, 0.2),
                              vertex(1, 0.5, 0.4), vertex(2, 0.3, 0.4), vertex(3, 0.36, 0.34), vertex(4, 0.3, 0.28)};
    const std::vector<Stroke> beadStrokes{{{0.3, 0, 0}, {0.5, 0, 0}, 0, {}},
                                          {{0.5, 0, 0}, {0.5, 0.2, 0}, 0.1, {0.5, 0.1, 0}},
                                          {{0.5, 0.2, 0}, {0.5, 0.4, 0}, 0, {}},
                                          {{0.5, 0.4, 0}, {0.3, 0.4, 0}, 0, {}},
                                          {{0.3, 0.28, 0}, {0.3, 0.4, 0}, 0.06, {0.3, 0.34, 0}},
                                          {{0.3, 0.28, 0}, {0.3, 0, 0}, 0, {}}};
    const double out1 = pi * 0.01 / 2;
    const double in1 = pi * 0.0036 / 2;
    const double beadArea = 0.08 + out1 - in1;
    const double beadMoment = 0.08 * 0.4 + out1 * (0.5 + 0.4 / (3 * pi)) - in1 * (0.3 + 0.24 / (3 * pi));
    out.push_back(
        revolvedCase({"revolved bead and groove", 2 * pi, bead, beadStrokes, beadArea, beadMoment / beadArea, none}));
    out.push_back(
        revolvedCase({"revolved bead and groove, part", 5, bead, beadStrokes, beadArea, beadMoment / beadArea, none}));
}

std::vector<ShapeCase> makeCases() {
    std::vector<ShapeCase> out;
    addBlocks(out);
    addRound(out);
    addSlopedCylinder(out);
    addSphereAndHeads(out);
    addExtrusions(out);
    addPrisms(out);
    out.push_back(saddleCase("saddle with ledges", 0.9, 0.5, 0.3));
    out.push_back(saddleCase("saddle from edge to edge", 0.6, 0.5, 0.5));
    addSquareRound(out);
    addBends(out);
    addRevolved(out);
    return out;
}

}  // namespace

double chords(double radius) {
    return radius <= 2 ? 3 : std::ceil(pi / std::acos(1 - 1 / radius) - 1e-9);
}

const std::vector<ShapeCase>& shapeCases() {
    static const std::vector<ShapeCase> cases = makeCases();
    return cases;
}
