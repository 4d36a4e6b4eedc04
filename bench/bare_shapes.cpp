#include "bare_shapes.h"

#include <algorithm>
#include <cmath>

namespace bench {

namespace {

constexpr double tolerance = 1.0;
constexpr double pi = tlGePi;
constexpr std::uint32_t mostChords = 4096;

struct Frame {
    HxGePoint3D o;
    HxGeVector3D x, y, z;
};

std::uint32_t chords(double radius, double sweep) {
    const double half = radius <= 2 * tolerance ? pi / 3 : std::acos(1 - tolerance / radius);
    return static_cast<std::uint32_t>(std::max(std::ceil(std::fabs(sweep) / (2 * half) - 1e-9), 1.0));
}

// cos and sin of equal steps, by rotation.
struct Angles {
    double c[mostChords + 1];
    double s[mostChords + 1];

    void fill(double from, double sweep, std::uint32_t n) {
        const double dc = std::cos(sweep / n);
        const double ds = std::sin(sweep / n);
        c[0] = std::cos(from);
        s[0] = std::sin(from);
        for (std::uint32_t k = 0; k < n; ++k) {
            c[k + 1] = c[k] * dc - s[k] * ds;
            s[k + 1] = c[k] * ds + s[k] * dc;
        }
    }
};
Angles along;
Angles around;

void put(BareMesh& m, const HxGePoint3D& p) {
    m.nextPoint[0] = p.x;
    m.nextPoint[1] = p.y;
    m.nextPoint[2] = p.z;
    m.nextPoint += 3;
}

void put(BareMesh& m, std::uint32_t a, std::uint32_t b, std::uint32_t c) {
    m.nextIndex[0] = a;
    m.nextIndex[1] = b;
    m.nextIndex[2] = c;
    m.nextIndex += 3;
}

void ring(BareMesh& m, const HxGePoint3D& o, const HxGeVector3D& u, const HxGeVector3D& v, std::uint32_t n) {
    for (std::uint32_t k = 0; k < n; ++k) {
        put(m, o + u * around.c[k] + v * around.s[k]);
    }
}

void strip(BareMesh& m, std::uint32_t a, std::uint32_t b, std::uint32_t n, bool closed) {
    for (std::uint32_t k = 0; k + 1 < n; ++k) {
        put(m, a + k, a + k + 1, b + k);
        put(m, a + k + 1, b + k + 1, b + k);
    }
    if (closed) {
        put(m, a + n - 1, a, b + n - 1);
        put(m, a, b, b + n - 1);
    }
}

void fan(BareMesh& m, std::uint32_t first, std::uint32_t n, std::uint32_t stride = 1) {
    for (std::uint32_t k = 1; k + 1 < n; ++k) {
        put(m, first, first + k * stride, first + (k + 1) * stride);
    }
}

Frame frameAlong(const HxGePoint3D& o, const HxGeVector3D& axis) {
    const HxGeVector3D z = axis.normal();
    const HxGeVector3D x = z.perpVector().normal();
    return {o, x, z.crossProduct(x), z};
}

struct Disc {
    HxGePoint3D center;
    HxGeVector3D u, v;
};

void cone(BareMesh& m, const Disc& a, const Disc& b, double radius) {
    const std::uint32_t n = chords(radius, 2 * pi);
    around.fill(0, 2 * pi, n);
    const auto first = static_cast<std::uint32_t>(m.pointCount());
    ring(m, a.center, a.u, a.v, n);
    ring(m, b.center, b.u, b.v, n);
    strip(m, first, first + n, n, true);
    fan(m, first, n);
    fan(m, first + n, n);
}

void cone(BareMesh& m, const HxGePoint3D& start, const HxGePoint3D& end, double startRadius, double endRadius) {
    const Frame f = frameAlong(start, end - start);
    cone(m, {start, f.x * startRadius, f.y * startRadius}, {end, f.x * endRadius, f.y * endRadius},
         std::max(startRadius, endRadius));
}

void sloped(BareMesh& m, const HextScylinder3D& c) {
    const Frame f = frameAlong(c.startPoint, c.endPoint - c.startPoint);
    const double r = c.diameter / 2;
    const double down = c.vect.dotProduct(f.z);
    const HxGeVector3D u = f.x * r - f.z * (c.vect.dotProduct(f.x) * r / down);
    const HxGeVector3D v = f.y * r - f.z * (c.vect.dotProduct(f.y) * r / down);
    cone(m, {c.startPoint, u, v}, {c.endPoint, f.x * r, f.y * r}, std::max(u.length(), v.length()));
}

void eccentric(BareMesh& m, const HextEcone3D& c) {
    const HxGeVector3D axis = c.endPoint - c.startPoint;
    const HxGeVector3D v = c.vect.normal();
    const HxGeVector3D h = (axis - v * v.dotProduct(axis)).normal();
    const HxGeVector3D w = h.crossProduct(v);
    const double r0 = c.startDiameter / 2;
    const double r1 = c.endDiameter / 2;
    cone(m, {c.startPoint, v * r0, w * r0}, {c.endPoint, v * r1, w * r1}, std::max(r0, r1));
}

constexpr std::uint8_t blockTriangles[12][3] = {{0, 3, 2}, {0, 2, 1}, {4, 5, 6}, {4, 6, 7}, {0, 1, 5}, {0, 5, 4},
                                                {1, 2, 6}, {1, 6, 5}, {2, 3, 7}, {2, 7, 6}, {3, 0, 4}, {3, 4, 7}};

void rectangle(BareMesh& m, const HxGePoint3D& o, const HxGeVector3D& x, const HxGeVector3D& y) {
    put(m, o - x - y);
    put(m, o + x - y);
    put(m, o + x + y);
    put(m, o - x + y);
}

void blockFaces(BareMesh& m, std::uint32_t first) {
    for (const auto& t : blockTriangles) {
        put(m, first + t[0], first + t[1], first + t[2]);
    }
}

void box(BareMesh& m, const HextBox3D& b) {
    const auto first = static_cast<std::uint32_t>(m.pointCount());
    const HxGeVector3D x = b.xAxis.normal();
    const HxGeVector3D y = b.yAxis.normal();
    const HxGeVector3D z = x.crossProduct(y) * (b.zLength / 2);
    const HxGePoint3D c = b.center();
    rectangle(m, c - z, x * (b.xLength / 2), y * (b.yLength / 2));
    rectangle(m, c + z, x * (b.xLength / 2), y * (b.yLength / 2));
    blockFaces(m, first);
}

void frustum(BareMesh& m, const HextSqucone3D& f) {
    const auto first = static_cast<std::uint32_t>(m.pointCount());
    const HxGeVector3D z = f.zAxis.normal();
    const HxGeVector3D x = f.xAxis.normal();
    const HxGeVector3D y = z.crossProduct(x);
    rectangle(m, f.point, x * (f.bottomX / 2), y * (f.bottomY / 2));
    rectangle(m, f.topCenter(), x * (f.topX / 2), y * (f.topY / 2));
    blockFaces(m, first);
}

// Points of the lower loop are written; the upper loop, the sides and the two ends follow.
void extrude(BareMesh& m, std::uint32_t first, const HxGeVector3D& by) {
    const auto n = static_cast<std::uint32_t>(m.pointCount()) - first;
    const double* p = m.points.data() + 3 * std::size_t{first};
    for (std::uint32_t k = 0; k < n; ++k, p += 3) {
        put(m, HxGePoint3D(p[0] + by.x, p[1] + by.y, p[2] + by.z));
    }
    strip(m, first, first + n, n, true);
    fan(m, first, n);
    fan(m, first + n, n);
}

void wedge(BareMesh& m, const HextWedge3D& w) {
    const auto first = static_cast<std::uint32_t>(m.pointCount());
    put(m, w.point1);
    put(m, w.point2);
    put(m, w.point3);
    const HxGeVector3D normal = (w.point3 - w.point2).crossProduct(w.point1 - w.point2).normal();
    extrude(m, first, normal * w.wedgeSize);
}

void prism(BareMesh& m, const HextPrism3D& p) {
    const auto first = static_cast<std::uint32_t>(m.pointCount());
    const HxGeVector3D u = p.vertexPoint - p.endPoint;
    const HxGeVector3D v = (p.startPoint - p.endPoint).normal().crossProduct(u);
    around.fill(0, 2 * pi, static_cast<std::uint32_t>(p.sides));
    ring(m, p.endPoint, u, v, static_cast<std::uint32_t>(p.sides));
    extrude(m, first, p.startPoint - p.endPoint);
}

void arc(BareMesh& m, const TlGeCircArc3d& circle, const HxGePoint3D& from, double sweep) {
    const std::uint32_t n = chords(circle.radius(), sweep);
    around.fill(0, sweep, n);
    const HxGeVector3D u = from - circle.center();
    ring(m, circle.center(), u, circle.normal().crossProduct(u), n);
}

void loop(BareMesh& m, const HextVertexList& list, const Frame& f) {
    const auto at = [&](std::size_t i) {
        const HxGePoint3D& p = list[i % list.size()].point;
        return f.o + f.x * p.x + f.y * p.y + f.z * p.z;
    };
    for (std::size_t i = 0; i < list.size();) {
        const int kind = list[i].kind;
        if (kind == 6 || kind == 2 || kind == 5) {
            const TlGeCircArc3d circle(at(i), at(i + 1), at(i + 2));
            const HxGeVector3D u = at(i) - circle.center();
            const HxGeVector3D e = at(i + 2) - circle.center();
            const double angle = std::atan2(circle.normal().crossProduct(u).dotProduct(e), u.dotProduct(e));
            arc(m, circle, at(i), kind == 6 ? 2 * pi : angle < 0 ? angle + 2 * pi : angle);
            i += kind == 6 ? list.size() : 2;
        } else {
            put(m, at(i));
            ++i;
        }
    }
}

bool polygon(BareMesh& m, const HextSpolygon& p) {
    if (!p.outline) {
        return false;
    }
    const Frame f{p.origin, p.xAxis.normal(), p.yAxis.normal(), p.xAxis.crossProduct(p.yAxis).normal()};
    const auto first = static_cast<std::uint32_t>(m.pointCount());
    loop(m, *p.outline, f);
    for (std::size_t i = 0; p.holes && i < p.holes->size(); ++i) {
        loop(m, (*p.holes)[i], f);
    }
    extrude(m, first, p.direction.normal() * p.height);
    return true;
}

void saddle(BareMesh& m, const HextSaddle3D& s) {
    const auto first = static_cast<std::uint32_t>(m.pointCount());
    const HxGeVector3D x = s.sectionAxis.normal();
    const HxGeVector3D z = s.axis.normal();
    const HxGeVector3D y = z.crossProduct(x) * s.sectionHeight;
    const double half = std::min(s.circleRadius, s.sectionLength / 2);
    const double rise = std::sqrt(s.circleRadius * s.circleRadius - half * half);
    put(m, s.point);
    put(m, s.point + x * s.sectionLength);
    put(m, s.point + x * s.sectionLength + y);
    const HxGePoint3D middle = s.point + x * (s.sectionLength / 2) + y;
    const HxGeVector3D low = y.normal() * (rise - s.circleRadius);
    arc(m, TlGeCircArc3d(middle + x * half, middle + low, middle - x * half), middle + x * half,
        2 * std::asin(half / s.circleRadius));
    put(m, middle - x * half);
    put(m, s.point + y);
    extrude(m, first, z * s.length);
}

// Points of a profile, away from the axis and along it, about which they turn.
struct Turn {
    Frame f;
    double sweep;
};

void turn(BareMesh& m, const Turn& t, const double (*profile)[2], std::uint32_t count, std::uint32_t n, bool closed) {
    along.fill(0, t.sweep, n);
    const bool whole = t.sweep >= 2 * pi - 1e-9;
    const std::uint32_t perRing = whole ? n : n + 1;
    const auto first = static_cast<std::uint32_t>(m.pointCount());
    for (std::uint32_t i = 0; i < count; ++i) {
        const HxGePoint3D middle = t.f.o + t.f.z * profile[i][1];
        const HxGeVector3D u = t.f.x * profile[i][0];
        const HxGeVector3D v = t.f.y * profile[i][0];
        for (std::uint32_t k = 0; k < perRing; ++k) {
            put(m, middle + u * along.c[k] + v * along.s[k]);
        }
    }
    for (std::uint32_t i = 0; i + 1 < count; ++i) {
        strip(m, first + i * perRing, first + (i + 1) * perRing, perRing, whole);
    }
    if (closed) {
        strip(m, first + (count - 1) * perRing, first, perRing, whole);
        if (!whole) {
            fan(m, first, count, perRing);
            fan(m, first + n, count, perRing);
        }
    }
}

double profilePoints[mostChords + 1][2];

// The inner points of a dome's profile, a disc or a tip on each side.
void dome(BareMesh& m, const Frame& f, double radial, double axial, double from) {
    const double sweep = pi / 2 - from;
    const std::uint32_t steps = chords(std::max(radial, axial), sweep);
    const std::uint32_t n = chords(radial, 2 * pi);
    const double base = axial * std::sin(from);
    around.fill(from, sweep, steps);
    for (std::uint32_t i = 0; i < steps; ++i) {
        profilePoints[i][0] = radial * around.c[i];
        profilePoints[i][1] = axial * around.s[i] - base;
    }
    const auto first = static_cast<std::uint32_t>(m.pointCount());
    turn(m, {f, 2 * pi}, profilePoints, steps, n, false);
    const auto tip = static_cast<std::uint32_t>(m.pointCount());
    put(m, f.o + f.z * (axial - base));
    for (std::uint32_t k = 0; k < n; ++k) {
        put(m, tip - n + k, tip - n + (k + 1) % n, tip);
    }
    fan(m, first, n);
}

void sphere(BareMesh& m, const HextSphere3D& s) {
    const std::uint32_t n = chords(s.radius, 2 * pi);
    const std::uint32_t steps = (n + 1) / 2;
    around.fill(-pi / 2, pi, steps);
    for (std::uint32_t i = 1; i < steps; ++i) {
        profilePoints[i - 1][0] = s.radius * around.c[i];
        profilePoints[i - 1][1] = s.radius * around.s[i];
    }
    const auto first = static_cast<std::uint32_t>(m.pointCount());
    turn(m, {{s.center, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, 2 * pi}, profilePoints, steps - 1, n, false);
    const auto tip = static_cast<std::uint32_t>(m.pointCount());
    put(m, s.center - HxGeVector3D(0, 0, s.radius));
    put(m, s.center + HxGeVector3D(0, 0, s.radius));
    for (std::uint32_t k = 0; k < n; ++k) {
        put(m, tip, first + (k + 1) % n, first + k);
        put(m, tip - n + k, tip - n + (k + 1) % n, tip + 1);
    }
}

void head(BareMesh& m, const HextOval3D& h) {
    dome(m, frameAlong(h.point, h.vect), h.radialRadius, h.axialRadius,
         std::acos(std::min(h.baseRadius / h.radialRadius, 1.0)));
}

template <typename Torus>
bool turnOf(const Torus& t, Turn& out) {
    if (t.form != 0 || t.arcKind == 1) {
        return false;
    }
    const HxGeVector3D from = t.startPoint - t.center;
    const HxGeVector3D to = t.thirdField - t.center;
    const bool byAxis = t.arcKind >= 2;
    const HxGeVector3D z = byAxis ? t.thirdField.asVector().normal() : from.crossProduct(to).normal();
    const HxGeVector3D x = from.normal();
    out.f = {t.center, x, z.crossProduct(x), z};
    out.sweep = t.arcKind == 2 ? 2 * pi : t.arcKind == 3 ? pi : from.angleTo(to);
    return true;
}

bool torus(BareMesh& m, const HextTorus3D& t) {
    Turn way;
    if (!turnOf(t, way)) {
        return false;
    }
    const double radius = t.startPoint.distanceTo(t.center);
    const double r = t.startDiameter / 2;
    const std::uint32_t count = chords(r, 2 * pi);
    around.fill(0, 2 * pi, count);
    for (std::uint32_t i = 0; i < count; ++i) {
        profilePoints[i][0] = radius + r * around.c[i];
        profilePoints[i][1] = r * around.s[i];
    }
    turn(m, way, profilePoints, count, chords(radius + r, way.sweep), true);
    return true;
}

bool squareTorus(BareMesh& m, const HextSqutorus3D& t) {
    Turn way;
    if (!turnOf(t, way)) {
        return false;
    }
    const double radius = t.startPoint.distanceTo(t.center);
    const double w = t.startWidth / 2;
    const double h = t.startHeight / 2;
    const double corners[4][2] = {{radius - w, -h}, {radius + w, -h}, {radius + w, h}, {radius - w, h}};
    turn(m, way, corners, 4, chords(radius + w, way.sweep), true);
    return true;
}

bool revolve(BareMesh& m, const HextRevolve& r) {
    if (!r.profile) {
        return false;
    }
    const HxGeVector3D z = r.axis.normal();
    HxGeVector3D x;
    double largest = 0;
    std::uint32_t count = 0;
    for (const HextVertex& v : *r.profile) {
        const HxGeVector3D d = v.point - r.center;
        const HxGeVector3D across = d - z * d.dotProduct(z);
        profilePoints[count][0] = across.length();
        profilePoints[count++][1] = d.dotProduct(z);
        if (across.length() > largest) {
            largest = across.length();
            x = across / largest;
        }
    }
    turn(m, {{r.center, x, z.crossProduct(x), z}, r.angle}, profilePoints, count, chords(largest, r.angle), true);
    return true;
}

void squareRound(BareMesh& m, const HextSqucir3D& t) {
    const HxGeVector3D x = t.xAxis.normal();
    const HxGeVector3D y = t.baseNormal.normal().crossProduct(x);
    const std::uint32_t n = chords(t.topRadius, pi / 2);
    const auto first = static_cast<std::uint32_t>(m.pointCount());
    rectangle(m, t.basePoint, x * (t.xLength / 2), y * (t.yLength / 2));
    around.fill(0, 2 * pi, 4 * n);
    ring(m, t.topCenter, x * t.topRadius, y * t.topRadius, 4 * n);
    fan(m, first, 4);
    fan(m, first + 4, 4 * n);
    for (std::uint32_t k = 0; k < 4 * n; ++k) {
        put(m, first + (k / n + 2) % 4, first + 4 + (k + 1) % (4 * n), first + 4 + k);
    }
    for (std::uint32_t k = 0; k < 4; ++k) {
        put(m, first + (k + 2) % 4, first + (k + 3) % 4, first + 4 + (k + 1) * n % (4 * n));
    }
}

template <typename Class>
const Class* as(const HextPrimary3D& p) {
    return p.isA() == Class::desc() ? static_cast<const Class*>(&p) : nullptr;
}

}  // namespace

void BareMesh::reserve(std::size_t triangles) {
    points.resize(3 * (triangles + 16));
    indices.resize(3 * (triangles + 16));
    clear();
}

void BareMesh::clear() {
    nextPoint = points.data();
    nextIndex = indices.data();
}

bool bareTessellate(const HextPrimary3D& p, BareMesh& m) {
    if (const auto* c = as<HextCylinder3D>(p)) {
        cone(m, c->startPoint, c->endPoint, c->diameter / 2, c->diameter / 2);
    } else if (const auto* b = as<HextBox3D>(p)) {
        box(m, *b);
    } else if (const auto* t = as<HextTorus3D>(p)) {
        return torus(m, *t);
    } else if (const auto* cc = as<HextConcone3D>(p)) {
        cone(m, cc->startPoint, cc->endPoint, cc->startDiameter / 2, cc->endDiameter / 2);
    } else if (const auto* e = as<HextEcone3D>(p)) {
        eccentric(m, *e);
    } else if (const auto* s = as<HextSpolygon>(p)) {
        return polygon(m, *s);
    } else if (const auto* sc = as<HextScylinder3D>(p)) {
        sloped(m, *sc);
    } else if (const auto* sp = as<HextSphere3D>(p)) {
        sphere(m, *sp);
    } else if (const auto* o = as<HextOval3D>(p)) {
        head(m, *o);
    } else if (const auto* r = as<HextRevolve>(p)) {
        return revolve(m, *r);
    } else if (const auto* pr = as<HextPrism3D>(p)) {
        prism(m, *pr);
    } else if (const auto* w = as<HextWedge3D>(p)) {
        wedge(m, *w);
    } else if (const auto* f = as<HextSqucone3D>(p)) {
        frustum(m, *f);
    } else if (const auto* st = as<HextSqutorus3D>(p)) {
        return squareTorus(m, *st);
    } else if (const auto* sa = as<HextSaddle3D>(p)) {
        saddle(m, *sa);
    } else if (const auto* sr = as<HextSqucir3D>(p)) {
        squareRound(m, *sr);
    } else {
        return false;
    }
    return true;
}

}  // namespace bench
