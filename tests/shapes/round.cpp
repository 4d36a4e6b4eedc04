// Cylinders, cones, spheres and heads.
#include "shapes/truth.h"

#include <algorithm>
#include <cmath>

namespace truth {

namespace {

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
            f.volume(),
            f.lean == 0 ? f.area() : 0,
            [f](double s) { return f.rule(s); }};
}

void addCones(Shapes& out) {
    const Frustum cylinder{0.4, 0.4, 1, 0};
    out.push_back({"cylinder",
                   [](const Place& at, double s) {
                       auto c = make<HextCylinder3D>();
                       c->startPoint = at.at(0, 0, 0);
                       c->endPoint = at.at(0, 0, s);
                       c->diameter = 0.8 * s;
                       return c;
                   },
                   cylinder.off(), cylinder.volume(), cylinder.area(),
                   [cylinder](double s) { return cylinder.rule(s); }});
    out.push_back(coneCase<HextConcone3D>("cone", {0.5, 0.2, 0.8, 0}));
    out.push_back(coneCase<HextConcone3D>("cone, slight", {0.5, 0.4975, 0.8, 0}));
    out.push_back(coneCase<HextConcone3D>("cone to a tip", {0.5, 0, 0.8, 0}));
    out.push_back(coneCase<HextConcone3D>("cone from a tip", {0, 0.5, 0.8, 0}));
    out.push_back(coneCase<HextEcone3D>("eccentric cone", {0.5, 0.3, 0.8, 0.25}));
    out.push_back(coneCase<HextEcone3D>("eccentric cone to a tip", {0.3, 0, 0.8, -0.5}));
}

void addSlopedCylinder(Shapes& out) {
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
                   pi * r * r, 2 * pi * r + pi * r * r * (1 + std::sqrt(5.0) / 2),
                   [r](double s) { return 2 * chords(r * s) + 2 * chords(r * s * std::sqrt(5.0) / 2) - 4; }});
}

void addSphereAndHeads(Shapes& out) {
    out.push_back({"sphere",
                   [](const Place& at, double s) {
                       auto sphere = make<HextSphere3D>();
                       sphere->center = at.at(0, 0, 0);
                       sphere->radius = 0.5 * s;
                       return sphere;
                   },
                   [](const TlGePoint3d& p) { return std::fabs(p.asVector().length() - 0.5); }, pi / 6, pi,
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
                       off, pi * h.b * h.b * (rise - (h.a * h.a * h.a - z0 * z0 * z0) / (3 * h.a * h.a)), 0, none});
    }
}

}  // namespace

void addRound(Shapes& out) {
    addCones(out);
    addSlopedCylinder(out);
    addSphereAndHeads(out);
}

}  // namespace truth
