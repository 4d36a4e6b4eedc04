#include "rebuilt_shape.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace {

constexpr int steps = 720;        // of a curve whose area counts
constexpr int coarseSteps = 240;  // of a curve that is turned
constexpr double stepsPerDegree = 2;

double radians(double degrees) {
    return degrees * tlGePi / 180;
}

template <typename At>
void ring(Shape& shape, double radius, At at, int count = steps) {
    for (int i = 0; i < count; ++i) {
        const double t = 2 * tlGePi * i / count;
        shape.points.push_back(at(radius * std::cos(t), radius * std::sin(t)));
    }
}

Shape box(double x, double y, double z) {
    Shape shape{x * y * z, {}};
    for (int i = 0; i < 8; ++i) {
        shape.points.emplace_back((i & 1 ? x : -x) / 2, (i & 2 ? y : -y) / 2, (i & 4 ? z : -z) / 2);
    }
    return shape;
}

struct Taper {
    double bottom, top, height, xoff = 0, yoff = 0;
};

Shape cone(const Taper& t) {
    Shape shape{tlGePi * t.height / 12 * (t.bottom * t.bottom + t.bottom * t.top + t.top * t.top), {}};
    ring(shape, t.bottom / 2,
         [&](double x, double y) { return HxGePoint3D(x - t.xoff / 2, y - t.yoff / 2, -t.height / 2); });
    ring(shape, t.top / 2,
         [&](double x, double y) { return HxGePoint3D(x + t.xoff / 2, y + t.yoff / 2, t.height / 2); });
    return shape;
}

Shape pyramid(const macro::Solid& s) {
    const double h = s.at("height"), x0 = s.at("xbottom"), y0 = s.at("ybottom"), x1 = s.at("xtop"), y1 = s.at("ytop");
    Shape shape{h / 6 * (x0 * y0 + (x0 + x1) * (y0 + y1) + x1 * y1), {}};
    for (int i = 0; i < 8; ++i) {
        const double up = i & 4 ? 1 : -1;
        shape.points.emplace_back(((i & 1 ? 1 : -1) * (i & 4 ? x1 : x0) + up * s.at("xoff")) / 2,
                                  ((i & 2 ? 1 : -1) * (i & 4 ? y1 : y0) + up * s.at("yoff")) / 2, up * h / 2);
    }
    return shape;
}

Shape slopedCylinder(const macro::Solid& s) {
    const double r = s.at("dia") / 2, h = s.at("height");
    Shape shape{tlGePi * r * r * h, {}};
    const auto slope = [&](double x, double y, const char* xShear, const char* yShear) {
        return x * std::tan(radians(s.at(xShear))) + y * std::tan(radians(s.at(yShear)));
    };
    ring(shape, r, [&](double x, double y) { return HxGePoint3D(x, y, h / 2 + slope(x, y, "xtshear", "ytshear")); });
    ring(shape, r, [&](double x, double y) { return HxGePoint3D(x, y, -h / 2 + slope(x, y, "xbshear", "ybshear")); });
    return shape;
}

// A part of a sphere on the disc at Z 0.
Shape dish(double dia, double height) {
    const double a = dia / 2, r = (a * a + height * height) / (2 * height);
    Shape shape{tlGePi * height * height * (3 * r - height) / 3, {}};
    for (int i = 0; i <= 180; ++i) {
        const double z = height * i / 180, d = z + r - height;
        ring(
            shape, std::sqrt(std::max(r * r - d * d, 0.0)), [&](double x, double y) { return HxGePoint3D(x, y, z); },
            coarseSteps);
    }
    return shape;
}

// Turns points about an axis through the origin.
void turn(Shape& shape, const std::vector<HxGePoint3D>& section, double degrees, const HxGeVector3D& axis) {
    const int turns = std::max(1, static_cast<int>(degrees * stepsPerDegree));
    for (int i = 0; i <= turns; ++i) {
        const double angle = radians(degrees) * i / turns;
        const TlGeMatrix3d turned = TlGeMatrix3d::coordSystem({}, TlGeVector3d::kXAxis.rotatedBy(angle, axis),
                                                              TlGeVector3d::kYAxis.rotatedBy(angle, axis),
                                                              TlGeVector3d::kZAxis.rotatedBy(angle, axis));
        for (const HxGePoint3D& p : section) {
            shape.points.push_back(turned * p);
        }
    }
}

Shape torus(const macro::Solid& s) {
    const double r = (s.at("rOut") + s.at("rIn")) / 2, t = (s.at("rOut") - s.at("rIn")) / 2;
    Shape shape{tlGePi * t * t * r * radians(s.at("angle")), {}};
    Shape section;
    ring(
        section, t, [&](double x, double z) { return HxGePoint3D(r + x, 0, z); }, coarseSteps);
    turn(shape, section.points, s.at("angle"), TlGeVector3d::kZAxis);
    return shape;
}

Shape squareTorus(const macro::Solid& s) {
    const double in = s.at("rIn"), out = s.at("rOut"), z = s.at("height") / 2;
    Shape shape{(out * out - in * in) * z * radians(s.at("angle")), {}};
    turn(shape, {{in, 0, z}, {out, 0, z}, {out, 0, -z}, {in, 0, -z}}, s.at("angle"), TlGeVector3d::kZAxis);
    return shape;
}

struct Fillet {
    HxGeVector3D in, out;  // unit vectors from the corner along its edges
    double tangent = 0;    // how much of each edge it takes
};

Fillet filletAt(const std::vector<macro::Vertex>& loop, std::size_t i) {
    const HxGePoint3D& at = loop[i].at;
    Fillet fillet{(loop[(i + loop.size() - 1) % loop.size()].at - at).normal(),
                  (loop[(i + 1) % loop.size()].at - at).normal()};
    fillet.tangent = loop[i].frad > 0 ? loop[i].frad / std::tan(fillet.in.angleTo(fillet.out) / 2) : 0;
    return fillet;
}

std::vector<HxGePoint3D> outlineOf(const std::vector<macro::Vertex>& loop, int count = steps) {
    std::vector<HxGePoint3D> outline;
    for (std::size_t i = 0; i < loop.size(); ++i) {
        if (loop[i].frad <= 0) {
            outline.push_back(loop[i].at);
            continue;
        }
        const Fillet fillet = filletAt(loop, i);
        const HxGeVector3D toCenter = (fillet.in + fillet.out).normal();
        const HxGePoint3D center = loop[i].at + toCenter * std::hypot(loop[i].frad, fillet.tangent);
        const HxGeVector3D first = loop[i].at + fillet.in * fillet.tangent - center;
        const HxGeVector3D last = loop[i].at + fillet.out * fillet.tangent - center;
        for (int k = 0; k <= count; ++k) {
            outline.push_back(center + first.rotatedBy(first.angleTo(last) * k / count, first.crossProduct(last)));
        }
    }
    return outline;
}

// Signed area and, with `first`, the moment about X.
double areaOf(const std::vector<HxGePoint3D>& p, bool first = false) {
    double sum = 0;
    for (std::size_t i = 0; i < p.size(); ++i) {
        const HxGePoint3D& a = p[i];
        const HxGePoint3D& b = p[(i + 1) % p.size()];
        sum += (a.x * b.y - b.x * a.y) / 2 * (first ? (a.y + b.y) / 3 : 1);
    }
    return std::fabs(sum);
}

Shape extrusion(const macro::Solid& s) {
    const std::vector<HxGePoint3D> outline = outlineOf(s.loop);
    Shape shape{areaOf(outline) * s.at("height"), outline};
    for (const HxGePoint3D& p : outline) {
        shape.points.push_back(p + TlGeVector3d::kZAxis * s.at("height"));
    }
    return shape;
}

Shape revolution(const macro::Solid& s) {
    Shape shape{areaOf(outlineOf(s.loop), true) * radians(s.at("angle")), {}};
    turn(shape, outlineOf(s.loop, coarseSteps / 4), s.at("angle"), TlGeVector3d::kXAxis);
    return shape;
}

Shape wholeSolid(const macro::Solid& s) {
    const std::map<std::string, Shape (*)(const macro::Solid&)> builders = {
        {"Box", [](const macro::Solid& b) { return box(b.at("xlen"), b.at("ylen"), b.at("zlen")); }},
        {"Cyli",
         [](const macro::Solid& c) {
             return cone({c.at("dia"), c.at("dia"), c.at("height")});
         }},
        {"Cone",
         [](const macro::Solid& c) {
             return cone({c.at("dBottom"), c.at("dTop"), c.at("height")});
         }},
        {"Snou",
         [](const macro::Solid& c) {
             return cone({c.at("dBottom"), c.at("dTop"), c.at("height"), c.at("xoff"), c.at("yoff")});
         }},
        {"Dish", [](const macro::Solid& d) { return dish(d.at("dia"), d.at("height")); }},
        {"Ctor", torus},
        {"Rtor", squareTorus},
        {"Pyra", pyramid},
        {"Slcy", slopedCylinder},
        {"Extru", extrusion},
        {"Revo", revolution},
    };
    return builders.at(s.function)(s);
}

}  // namespace

double Shape::reach(const HxGeVector3D& direction) const {
    double most = -1e300;
    for (const HxGePoint3D& p : points) {
        most = std::max(most, p.asVector().dotProduct(direction));
    }
    return most;
}

void Shape::add(const Shape& other, const CoordFrame& frame) {
    const TlGeMatrix3d place = TlGeMatrix3d::coordSystem(frame.origin, frame.xAxis, frame.yAxis, frame.zAxis);
    volume += other.volume;
    for (const HxGePoint3D& p : other.points) {
        points.push_back(place * p);
    }
}

Shape rebuild(const macro::Solid& solid) {
    Shape shape = wholeSolid(solid);
    for (const macro::Solid& cut : solid.cuts) {
        Shape placed;
        placed.add(rebuild(cut), cut.frame);
        for (const HxGeVector3D& axis : {TlGeVector3d::kXAxis, TlGeVector3d::kYAxis, TlGeVector3d::kZAxis}) {
            if (placed.reach(axis) > shape.reach(axis) + 1e-6 || placed.reach(-axis) > shape.reach(-axis) + 1e-6) {
                throw std::runtime_error("a cut reaches out of its solid");
            }
        }
        shape.volume -= placed.volume;
    }
    return shape;
}

Shape rebuild(const macro::Element& element) {
    Shape whole;
    for (const macro::Solid& solid : element.solids) {
        Shape inElement;
        inElement.add(rebuild(solid), solid.frame);
        whole.add(inElement, element.frame);
    }
    return whole;
}

std::string faultsOf(const std::vector<macro::Vertex>& loop) {
    std::string faults;
    for (std::size_t i = 0; i < loop.size(); ++i) {
        const std::size_t next = (i + 1) % loop.size();
        const double edge = loop[i].at.distanceTo(loop[next].at);
        if (edge < 1e-6) {
            faults += "vertices " + std::to_string(i) + " and " + std::to_string(next) + " coincide; ";
        } else if (filletAt(loop, i).tangent + filletAt(loop, next).tangent > edge) {
            faults += "fillets overlap between " + std::to_string(i) + " and " + std::to_string(next) + "; ";
        }
    }
    return faults;
}

double filletSurplus(const std::vector<macro::Vertex>& loop) {
    double surplus = 0;
    for (std::size_t i = 0; i < loop.size(); ++i) {
        if (loop[i].frad > 0) {
            const double meant = loop[i].frad + 0.01;
            const double half = std::atan(filletAt(loop, i).tangent / loop[i].frad);
            surplus += (meant * meant - loop[i].frad * loop[i].frad) * (std::tan(half) - half);
        }
    }
    return surplus;
}
