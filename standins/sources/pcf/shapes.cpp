#include "sources/pcf/shapes.h"

#include "sources/pcf/network.h"

#include <algorithm>
#include <cmath>

namespace plant::pcf {

namespace {

constexpr double smallest = 0.05;

class Solids {
public:
    explicit Solids(ModelBuilder& builder) : builder_(&builder) { builder.shape(); }

    void cylinder(const HxGePoint3D& from, const HxGePoint3D& to, double diameter) {
        if (from.distanceTo(to) < smallest || diameter < smallest) {
            return;
        }
        HextCylinder3D solid;
        solid.startPoint = from;
        solid.endPoint = to;
        solid.diameter = diameter;
        builder_->primitive(solid);
    }
    void cone(const HxGePoint3D& from, const HxGePoint3D& to, double startDiameter, double endDiameter) {
        if (from.distanceTo(to) < smallest) {
            return;
        }
        HextConcone3D solid;
        solid.startPoint = from;
        solid.endPoint = to;
        solid.startDiameter = startDiameter;
        solid.endDiameter = endDiameter;
        builder_->primitive(solid);
    }
    void eccentric(const HxGePoint3D& from, const HxGePoint3D& to, double startDiameter, double endDiameter,
                   const HxGeVector3D& offset) {
        HextEcone3D solid;
        solid.startPoint = from;
        solid.endPoint = to;
        solid.startDiameter = startDiameter;
        solid.endDiameter = endDiameter;
        solid.vect = offset;
        builder_->primitive(solid);
    }
    void arc(const Arc& arc, double startDiameter, double endDiameter) {
        HextTorus3D solid;
        solid.center = arc.centre;
        solid.startPoint = arc.start;
        solid.thirdField = arc.end;
        solid.startDiameter = startDiameter;
        solid.endDiameter = endDiameter;
        builder_->primitive(solid);
    }
    void head(const HxGePoint3D& base, const HxGeVector3D& towards, double height, double radius) {
        HextOval3D solid;
        solid.point = base;
        solid.vect = towards;
        solid.axialRadius = height;
        solid.radialRadius = radius;
        solid.baseRadius = radius;
        builder_->primitive(solid);
    }
    void sphere(const HxGePoint3D& centre, double radius) {
        HextSphere3D solid;
        solid.center = centre;
        solid.radius = radius;
        builder_->primitive(solid);
    }

private:
    ModelBuilder* builder_;
};

// A part seen from its point 1.
struct View {
    const Drawn& drawn;
    const Part& part = drawn.part;
    const End& one = part.ends[drawn.first];
    const End& two = part.ends[drawn.first == 0 ? 1 : 0];
    HxGeVector3D run = (two.at - one.at).normal();
    double length = (two.at - one.at).length();
    HxGePoint3D inner = innerPoint(part);

    double outer() const { return one.size.outer; }
};

void drawPipe(const View& v, Solids& out) {
    out.cylinder(v.one.at, v.two.at, v.outer());
}

void drawReducer(const View& v, Solids& out) {
    out.cone(v.one.at, v.two.at, v.one.size.outer, v.two.size.outer);
}

void drawEccentric(const View& v, Solids& out) {
    const HxGeVector3D offset = v.drawn.across;
    if (offset.isZeroLength()) {
        return drawReducer(v, out);
    }
    out.eccentric(v.one.at, v.two.at, v.one.size.outer, v.two.size.outer, offset);
}

void drawTurned(const View& v, Solids& out) {
    const std::optional<Arc> arc = arcOf(v.part);
    const double widest = std::max(v.part.ends[0].size.outer, v.part.ends[1].size.outer);
    if (!arc || 2 * arc->radius < widest || v.part.type->smrtln != "Arc") {
        out.cylinder(v.part.ends[0].at, v.inner, v.part.ends[0].size.outer);
        return out.cylinder(v.inner, v.part.ends[1].at, v.part.ends[1].size.outer);
    }
    out.cylinder(v.part.ends[0].at, arc->start, v.part.ends[0].size.outer);
    out.arc(*arc, v.part.ends[0].size.outer, v.part.ends[1].size.outer);
    out.cylinder(arc->end, v.part.ends[1].at, v.part.ends[1].size.outer);
}

void drawBranched(const View& v, Solids& out) {
    out.cylinder(v.one.at, v.inner, v.one.size.outer);
    out.cylinder(v.inner, v.two.at, v.two.size.outer);
    for (const std::uint8_t slot : {2, 3}) {
        if (v.part.ends[slot].isThere) {
            out.cylinder(v.inner, v.part.ends[slot].at, v.part.ends[slot].size.outer);
        }
    }
}

void drawSetOn(const View& v, Solids& out) {
    const End& outlet = v.part.ends[2];
    out.cylinder(v.one.at, v.two.at, v.outer());
    if (outlet.isThere) {
        out.cone(v.inner, outlet.at, outlet.size.outer * 1.4, outlet.size.outer);
    }
}

void drawFlange(const View& v, Solids& out) {
    const double rim = std::min(v.one.size.flangeThickness, v.length);
    const HxGePoint3D back = v.one.at + v.run * rim;
    out.cylinder(v.one.at, back, v.one.size.flangeOuter);
    out.cone(back, v.two.at, v.one.size.outer * 1.2, v.two.size.outer);
}

void drawBlind(const View& v, Solids& out) {
    out.cylinder(v.one.at, v.two.at, v.one.size.flangeOuter);
}

void drawGasket(const View& v, Solids& out) {
    out.cylinder(v.one.at, v.two.at, std::max(v.one.size.boltCircle - v.one.size.bolt - 4, v.outer()));
}

void drawCap(const View& v, Solids& out) {
    const double height = std::min(v.length, v.outer() / 4);
    const HxGePoint3D base = v.two.at - v.run * height;
    out.cylinder(v.one.at, base, v.outer());
    if (height > smallest) {
        out.head(base, v.run, height, v.outer() / 2);
    }
}

void drawSocket(const View& v, Solids& out) {
    constexpr double wall = 12;
    out.cylinder(v.one.at, v.two.at, v.outer() + wall);
}

void drawValve(const View& v, Solids& out) {
    const double rimOne = v.drawn.flanged[0] ? std::min(v.one.size.flangeThickness, v.length / 4) : 0;
    const double rimTwo = v.drawn.flanged[1] ? std::min(v.two.size.flangeThickness, v.length / 4) : 0;
    const HxGePoint3D from = v.one.at + v.run * rimOne;
    const HxGePoint3D to = v.two.at - v.run * rimTwo;
    const HxGePoint3D waist = from + (to - from) * 0.5;
    out.cylinder(v.one.at, from, v.one.size.flangeOuter);
    out.cone(from, waist, v.one.size.outer, v.one.size.outer * 0.6);
    out.cone(waist, to, v.two.size.outer * 0.6, v.two.size.outer);
    out.cylinder(to, v.two.at, v.two.size.flangeOuter);
    const HxGePoint3D top = waist + v.drawn.across * (v.outer() * 1.5 + 40);
    out.cylinder(waist, top, v.outer() * 0.25 + 8);
    out.cylinder(top, top + v.drawn.across * 12, v.outer() * 0.9 + 30);
}

void drawBody(const View& v, Solids& out) {
    out.cylinder(v.one.at, v.two.at, v.outer() * 1.2);
    out.sphere(v.inner, v.outer() * 0.8);
}

struct DrawingRow {
    std::string_view item;
    std::string_view itype;  // empty: any
    void (*draw)(const View&, Solids&);
};
constexpr DrawingRow drawings[] = {
    {"FLANGE", "BLIND", drawBlind}, {"FLANGE", "", drawFlange}, {"GASK", "", drawGasket},
    {"CAP", "", drawCap},           {"PLUG", "", drawSocket},   {"COUPLING", "STUBEND", drawPipe},
    {"COUPLING", "", drawSocket},   {"UNION", "", drawSocket},  {"CRED", "", drawReducer},
    {"ERED", "", drawEccentric},    {"VALVE", "", drawValve},   {"CONTROL", "", drawValve},
    {"STRAINER", "", drawBody},     {"TRAP", "", drawBody},     {"FLOWMETER", "", drawBody},
    {"PIPE", "", drawPipe},
};

void drawStraight(const View& v, Solids& out) {
    for (const DrawingRow& row : drawings) {
        if (row.item == v.part.type->item && (row.itype.empty() || row.itype == v.part.type->itype)) {
            return row.draw(v, out);
        }
    }
    drawPipe(v, out);
}

}  // namespace

std::optional<Arc> arcOf(const Part& part) {
    if (!part.centre) {
        return {};
    }
    const HxGeVector3D in = part.ends[0].at - *part.centre;
    const HxGeVector3D out = part.ends[1].at - *part.centre;
    const double tangent = std::min(in.length(), out.length());
    const double half = in.angleTo(out) / 2;
    constexpr double flattest = 1e-4;
    if (tangent < smallest || half < flattest || half > tlGePi / 2 - flattest) {
        return {};
    }
    const HxGeVector3D u = in.normal();
    const HxGeVector3D w = out.normal();
    Arc arc;
    arc.start = *part.centre + u * tangent;
    arc.end = *part.centre + w * tangent;
    arc.radius = tangent * std::tan(half);
    arc.centre = *part.centre + (u + w).normal() * (tangent / std::cos(half));
    arc.angle = tlGePi - 2 * half;
    return arc;
}

void tellShape(const Drawn& drawn, ModelBuilder& builder) {
    Solids out(builder);
    const View view{drawn};
    switch (drawn.part.kind->form) {
    case Form::Turned:
        return drawTurned(view, out);
    case Form::Branched:
        return drawBranched(view, out);
    case Form::SetOn:
        return drawn.part.ends[2].isThere ? drawSetOn(view, out) : drawReducer(view, out);
    case Form::Straight:
    case Form::Closing:
        return drawStraight(view, out);
    case Form::Weld:
    case Form::Place:
        return;
    }
}

void tellBoltShape(const HxGePoint3D& face, const HxGeVector3D& out, const standards::PipeSize& size, int count,
                   ModelBuilder& builder) {
    constexpr int mostDrawn = 100;
    Solids solids(builder);
    const HxGeVector3D u = out.perpVector().normal();
    const HxGeVector3D w = out.crossProduct(u);
    const double grip = size.flangeThickness + size.bolt;
    for (int i = 0; i < std::min(count, mostDrawn); ++i) {
        const double angle = tlGePi * (2 * i + 1) / count;
        const HxGePoint3D hole = face + (u * std::cos(angle) + w * std::sin(angle)) * (size.boltCircle / 2);
        solids.cylinder(hole - out * grip, hole + out * grip, size.bolt);
    }
}

void tellSupportShape(const Part& pipe, const HxGePoint3D& at, ModelBuilder& builder) {
    const HxGeVector3D run = (pipe.ends[1].at - pipe.ends[0].at).normal();
    const HxGeVector3D down(0, 0, -1);
    const HxGeVector3D level = down - run * down.dotProduct(run);
    const HxGeVector3D away = level.length() > 0.1 ? level.normal() : run.perpVector().normal();
    const double outer = std::max(pipe.ends[0].size.outer, 20.0);
    HextBox3D block;
    block.pointKind = 1;
    block.point = at + away * outer;
    block.xAxis = run;
    block.yAxis = run.crossProduct(away).normal();
    block.xLength = outer;
    block.yLength = outer * 0.6;
    block.zLength = outer;
    builder.primitive(block);
}

}  // namespace plant::pcf
