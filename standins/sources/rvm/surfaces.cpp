#include "sources/rvm/surfaces.h"

#include <algorithm>
#include <cmath>

namespace plant::rvm {

namespace {

constexpr double mostSag = 0.1;
constexpr double wholeTurn = 2 * tlGePi;

// What a maker knows: the parameters, and the sag in the primitive's own frame.
struct Job {
    const std::array<double, 9>& p;
    double sag;
    Fineness fineness;
    SurfaceMesh& mesh;

    std::uint32_t chords(double radius) const { return chordsOf(radius, sag, fineness == Fineness::Usual ? 4096 : 24); }
    // Of a surface that is curved both ways.
    std::uint32_t fewChords(double radius) const {
        return chordsOf(radius, sag, fineness == Fineness::Usual ? 720 : 24);
    }
};

struct Disc {
    Point center;
    double radius = 0;
    // How much higher a point stands for each unit of x and y.
    double slopeX = 0;
    double slopeY = 0;
};

// A circle about Z, counter-clockwise from above; one point for a radius of zero.
Rim addCircle(SurfaceMesh& mesh, const Disc& disc, std::uint32_t chords) {
    const Rim rim{static_cast<std::uint32_t>(mesh.points.size()), disc.radius > 0 ? chords : 1};
    for (std::uint32_t i = 0; i < rim.count; ++i) {
        const double turn = wholeTurn * i / chords;
        const double x = disc.radius * std::cos(turn);
        const double y = disc.radius * std::sin(turn);
        mesh.add(disc.center + Vector(x, y, disc.slopeX * x + disc.slopeY * y));
    }
    return rim;
}

void frustum(const Job& job, const Disc& lower, const Disc& upper) {
    const std::uint32_t chords = job.chords(std::max(lower.radius, upper.radius));
    const Rim below = addCircle(job.mesh, lower, chords);
    cap(job.mesh, below, false);
    const Rim above = addCircle(job.mesh, upper, chords);
    if (!(lower.center.isEqualTo(upper.center) && lower.radius == upper.radius)) {
        stitch(job.mesh, below, above);
        cap(job.mesh, above, true);
    }
}

Rim addRectangle(SurfaceMesh& mesh, const Point& center, double x, double y) {
    const Rim rim{static_cast<std::uint32_t>(mesh.points.size()), 4};
    for (const Vector& corner : {Vector(-x, -y, 0), Vector(x, -y, 0), Vector(x, y, 0), Vector(-x, y, 0)}) {
        mesh.add(center + corner / 2);
    }
    return rim;
}

void makePyramid(const Job& job) {
    const auto& [bottomX, bottomY, topX, topY, offsetX, offsetY, height, _1, _2] = job.p;
    const Vector toTop(offsetX / 2, offsetY / 2, height / 2);
    const Rim lower = addRectangle(job.mesh, Point() - toTop, bottomX, bottomY);
    const Rim upper = addRectangle(job.mesh, Point() + toTop, topX, topY);
    cap(job.mesh, lower, false);
    stitch(job.mesh, lower, upper);
    cap(job.mesh, upper, true);
}

void makeBox(const Job& job) {
    const Vector up(0, 0, job.p[2] / 2);
    const Rim lower = addRectangle(job.mesh, Point() - up, job.p[0], job.p[1]);
    const Rim upper = addRectangle(job.mesh, Point() + up, job.p[0], job.p[1]);
    cap(job.mesh, lower, false);
    stitch(job.mesh, lower, upper);
    if (job.p[2] != 0) {
        cap(job.mesh, upper, true);
    }
}

void makeCylinder(const Job& job) {
    const Vector up(0, 0, job.p[1] / 2);
    frustum(job, {Point() - up, job.p[0]}, {Point() + up, job.p[0]});
}

void makeSnout(const Job& job) {
    const Vector toTop(job.p[3] / 2, job.p[4] / 2, job.p[2] / 2);
    frustum(job, {Point() - toTop, job.p[0], std::tan(job.p[5]), std::tan(job.p[6])},
            {Point() + toTop, job.p[1], std::tan(job.p[7]), std::tan(job.p[8])});
}

// A cap of a ball or ellipsoid: from the angle `from` at the rim up to the crown.
struct Dome {
    Point center;
    double radius = 0;
    double height = 0;  // half axis
    double from = 0;    // angle above the centre's plane, -pi/2 at the lower pole
};

void addDome(const Job& job, const Dome& dome) {
    const std::uint32_t chords = job.fewChords(std::max(dome.radius, dome.height));
    const double sweep = tlGePi / 2 - dome.from;
    const auto steps = std::max(2U, static_cast<std::uint32_t>(std::ceil(chords * sweep / wholeTurn)));
    Rim before;
    for (std::uint32_t i = 0; i <= steps; ++i) {
        const double angle = dome.from + sweep * i / steps;
        const bool isPole = i == steps || (i == 0 && dome.from == -tlGePi / 2);
        const double radius = isPole ? 0 : dome.radius * std::cos(angle);
        const Rim rim =
            addCircle(job.mesh, {dome.center + Vector(0, 0, dome.height * std::sin(angle)), radius}, chords);
        if (i == 0) {
            cap(job.mesh, rim, false);
        } else {
            stitch(job.mesh, before, rim);
        }
        before = rim;
    }
}

void makeEllipticalDish(const Job& job) {
    if (job.p[1] == 0) {
        return frustum(job, {Point(), job.p[0]}, {Point(), job.p[0]});
    }
    addDome(job, {Point(), job.p[0], job.p[1], 0});
}

void makeSphericalDish(const Job& job) {
    const double base = job.p[0];
    const double height = job.p[1];
    if (height == 0) {
        return frustum(job, {Point(), base}, {Point(), base});
    }
    const double radius = (base * base + height * height) / (2 * height);
    addDome(job, {{0, 0, height - radius}, std::fabs(radius), radius, std::asin((radius - height) / radius)});
}

void makeSphere(const Job& job) {
    addDome(job, {Point(), job.p[0] / 2, job.p[0] / 2, -tlGePi / 2});
}

// A closed profile in the plane of X and Z, counter-clockwise seen against Y, turned about Z.
void sweep(const Job& job, const std::vector<Point>& profile, double angle) {
    constexpr std::size_t mostCorners = 4;
    double reach = 0;
    for (const Point& point : profile) {
        reach = std::max(reach, std::fabs(point.x));
    }
    const std::uint32_t chords = profile.size() > mostCorners ? job.fewChords(reach) : job.chords(reach);
    const bool isWhole = angle >= wholeTurn;
    const auto steps = std::max(2U, static_cast<std::uint32_t>(std::ceil(chords * std::min(angle / wholeTurn, 1.0))));
    const auto rimAt = [&](std::uint32_t i) {
        const double turn = (isWhole ? wholeTurn : angle) * i / steps;
        const Rim rim{static_cast<std::uint32_t>(job.mesh.points.size()), static_cast<std::uint32_t>(profile.size())};
        for (const Point& point : profile) {
            job.mesh.add({point.x * std::cos(turn), point.x * std::sin(turn), point.z});
        }
        return rim;
    };
    const Rim first = rimAt(0);
    Rim before = first;
    for (std::uint32_t i = 1; i <= steps; ++i) {
        const Rim rim = isWhole && i == steps ? first : rimAt(i);
        stitch(job.mesh, rim, before);
        before = rim;
    }
    if (!isWhole) {
        cap(job.mesh, first, true);
        cap(job.mesh, before, false);
    }
}

void makeRectangularTorus(const Job& job) {
    const double low = -job.p[2] / 2;
    const double inner = job.p[0];
    const double outer = job.p[1];
    sweep(job, {{inner, 0, low}, {outer, 0, low}, {outer, 0, -low}, {inner, 0, -low}}, job.p[3]);
}

void makeCircularTorus(const Job& job) {
    const std::uint32_t chords = job.fewChords(job.p[1]);
    std::vector<Point> profile;
    for (std::uint32_t i = 0; i < chords; ++i) {
        const double turn = wholeTurn * i / chords;
        profile.emplace_back(job.p[0] + job.p[1] * std::cos(turn), 0, job.p[1] * std::sin(turn));
    }
    sweep(job, profile, job.p[2]);
}

struct Maker {
    Kind kind;
    void (*make)(const Job& job);
};
constexpr Maker makers[] = {
    {Kind::Pyramid, makePyramid},
    {Kind::Box, makeBox},
    {Kind::RectangularTorus, makeRectangularTorus},
    {Kind::CircularTorus, makeCircularTorus},
    {Kind::EllipticalDish, makeEllipticalDish},
    {Kind::SphericalDish, makeSphericalDish},
    {Kind::Snout, makeSnout},
    {Kind::Cylinder, makeCylinder},
    {Kind::Sphere, makeSphere},
};

// Into the world; a mirrored frame turns the triangles round.
void place(const Placement& placement, SurfaceMesh& mesh) {
    for (Point& point : mesh.points) {
        point = placement.at(point.x, point.y, point.z);
    }
    if (placement.isMirrored) {
        for (auto& triangle : mesh.triangles) {
            std::swap(triangle[1], triangle[2]);
        }
    }
}

}  // namespace

void surfaceOf(const Primitive& primitive, Fineness fineness, SurfaceMesh& mesh) {
    mesh.clear();
    const Placement& placement = primitive.placement;
    const Job job{primitive.p, mostSag / std::max({placement.sx, placement.sy, placement.sz}), fineness, mesh};
    const auto* maker = std::find_if(std::begin(makers), std::end(makers),
                                     [&](const Maker& row) { return row.kind == primitive.kind; });
    if (maker != std::end(makers)) {
        maker->make(job);
        place(placement, mesh);
    }
}

}  // namespace plant::rvm
