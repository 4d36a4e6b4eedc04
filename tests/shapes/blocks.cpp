// Boxes, frustums, and squares that become round.
#include "shapes/truth.h"

#include <algorithm>
#include <cmath>

namespace truth {

namespace {

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
            h / 6 * (f.bx * f.by + 4 * middle + f.tx * f.ty),
            0,
            [triangles](double) { return triangles; }};
}

void addSquareRound(Shapes& out) {
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
                   h * (a * b + (a + b) * r + pi * r * r) / 3, 0,
                   [=](double s) { return 2 * 4 * std::ceil(chords(r * s) / 4) + 4; }});
}

}  // namespace

void addBlocks(Shapes& out) {
    out.push_back(boxCase("box", 1, 0));
    out.push_back(boxCase("box, left-handed", 0, 0));
    out.push_back(boxCase("box, centred", 1, 1));
    out.push_back(boxCase("box, centred and left-handed", 0, 1));
    out.push_back(pyramidCase("frustum", {0.8, 0.6, 0.3, 0.5}, 12));
    out.push_back(pyramidCase("frustum to an edge", {0.8, 0.6, 0.3, 0}, 8));
    out.push_back(pyramidCase("frustum to a tip", {0.8, 0.6, 0, 0}, 6));
    out.push_back(pyramidCase("frustum between edges", {0.8, 0, 0, 0.5}, 4));
    addSquareRound(out);
}

}  // namespace truth
