#include "generator/telling/shapes.h"

#include "generator/telling/primitives.h"
#include "generator/telling/text_line.h"

#include <algorithm>
#include <cmath>

namespace plant::generator {

namespace {

// A part with what all drawings need of it.
struct Drawing {
    Primitives& shape;
    const Part& part;
    const PipeSize& size = pipeSizes[part.size1];
    const PipeSize& second = pipeSizes[part.size2];

    const Point& at(int no) const { return part.at(no); }
    Point along(double length) const { return part.at(1) + direction() * length; }
    Vector direction() const { return (part.at(2) - part.at(1)).normal(); }
};

// -------------------------------------------------------------------------------------------------- pipes and fittings

void drawPipe(const Drawing& d) {
    d.shape.cylinder(d.at(1), d.at(2), d.size.outer);
}

void drawFlangedPipe(const Drawing& d) {
    const double rim = d.size.flange.thickness;
    d.shape.cylinder(d.at(1), d.along(rim), d.size.flange.outer);
    d.shape.cylinder(d.along(rim), d.along(d.part.length - rim), d.size.outer);
    d.shape.cylinder(d.along(d.part.length - rim), d.at(2), d.size.flange.outer);
}

void drawMiter(const Drawing& d) {
    d.shape.cylinder(d.at(1), d.at(0), d.size.outer);
    d.shape.sphere(d.at(0), d.size.outer / 2);
    d.shape.cylinder(d.at(0), d.at(3), d.size.outer);
}

void drawArc(const Drawing& d) {
    const double radius = d.part.bendRadius * d.size.dn;
    if (d.size.outer + d.shape.growth() > 2 * radius) {  // insulation that has no room on the inside
        d.shape.cylinder(d.at(1), d.at(0), d.size.outer);
        return d.shape.cylinder(d.at(0), d.at(3), d.size.outer);
    }
    const Vector in = (d.at(0) - d.at(1)).normal();
    const Vector out = (d.at(3) - d.at(0)).normal();
    const Vector inward = (out - in * out.dotProduct(in)).normal();
    d.shape.arc(rounded(d.at(1) + inward * radius), d.at(1), d.at(3), d.size.outer);
}

void drawTee(const Drawing& d) {
    d.shape.cylinder(d.at(1), d.at(2), d.size.outer);
    d.shape.cylinder(d.at(0), d.at(3), d.second.outer);
}

void drawYPiece(const Drawing& d) {
    d.shape.cylinder(d.at(1), d.at(0), d.size.outer);
    d.shape.cylinder(d.at(0), d.at(3), d.size.outer);
    d.shape.cylinder(d.at(0), d.at(4), d.size.outer);
}

void drawCross(const Drawing& d) {
    d.shape.cylinder(d.at(1), d.at(2), d.size.outer);
    d.shape.cylinder(d.at(4), d.at(3), d.second.outer);
}

void drawOlet(const Drawing& d) {
    d.shape.cylinder(d.at(1), d.at(2), d.size.outer);
    const Point foot = rounded(d.at(0) + d.part.across * (d.size.outer * 0.4));
    d.shape.cone(foot, d.at(3), d.second.outer * 1.5, d.second.outer);
}

void drawConcentric(const Drawing& d) {
    d.shape.cone(d.at(1), d.at(2), d.size.outer, d.second.outer);
}

void drawEccentric(const Drawing& d) {
    d.shape.eccentricCone(d.at(1), d.at(2), d.size.outer, d.second.outer, d.part.across);
}

void drawCap(const Drawing& d) {
    d.shape.cylinder(d.at(1), d.at(0), d.size.outer);
    d.shape.head(d.at(0), d.direction(), d.part.length / 2, d.size.outer / 2);
}

void drawSocket(const Drawing& d) {
    constexpr double wall = 12;
    d.shape.cylinder(d.at(1), d.at(2), d.size.outer + wall);
}

void drawUnion(const Drawing& d) {
    drawSocket(d);
    d.shape.prism(d.along(d.part.length * 0.4), d.along(d.part.length * 0.6), d.size.outer / 2 + 14, 6);
}

// ------------------------------------------------------------------------------------------------- flanges and gaskets

void drawFlange(const Drawing& d) {
    constexpr double hub = 16;
    const double rim = d.size.flange.thickness;
    d.shape.cylinder(d.at(1), d.along(rim), d.size.flange.outer);
    d.shape.cone(d.along(rim), d.at(2), d.size.outer + hub, d.size.outer);
}

void drawBlindFlange(const Drawing& d) {
    d.shape.cylinder(d.at(1), d.at(2), d.size.flange.outer);
}

double insideBolts(const PipeSize& size) {
    return size.flange.circle - size.flange.bolt - 4;
}

void drawGasket(const Drawing& d) {
    d.shape.cylinder(d.at(1), d.at(2), insideBolts(d.size));
}

void drawNothing(const Drawing&) {}

// -------------------------------------------------------------------------------------------------------------- valves

// The two flanges of a body that has them; gives their thickness.
double drawEndFlanges(const Drawing& d) {
    if (d.part.ends != Ends::Flange) {
        return 0;
    }
    const double rim = std::min(d.size.flange.thickness, d.part.length / 4);
    d.shape.cylinder(d.at(1), d.along(rim), d.size.flange.outer);
    d.shape.cylinder(d.along(d.part.length - rim), d.at(2), d.size.flange.outer);
    return rim;
}

void drawBowTie(const Drawing& d) {
    const double rim = drawEndFlanges(d);
    d.shape.cone(d.along(rim), d.at(0), d.size.outer, d.size.outer * 0.6);
    d.shape.cone(d.at(0), d.along(d.part.length - rim), d.size.outer * 0.6, d.size.outer);
}

void drawWheelValve(const Drawing& d) {
    drawBowTie(d);
    const Point top = d.at(0) + d.part.across * (2.2 * d.size.dn + 60);
    d.shape.cylinder(d.at(0), top, d.size.dn * 0.3 + 8);
    d.shape.ring(top, d.size.dn * 0.6 + 30, d.part.across, 12);
}

void drawBallValve(const Drawing& d) {
    drawEndFlanges(d);
    const Vector& lift = d.part.across;
    const Vector run = d.direction();
    d.shape.sphere(d.at(0), d.size.outer * 0.75);
    d.shape.cylinder(d.at(0), d.at(0) + lift * (d.size.dn + 40), 16);
    const Point lever = d.at(0) + lift * (d.size.dn + 45) + run * (d.size.dn + 30);
    d.shape.box(lever, {2.0 * d.size.dn + 60, 24, 10}, run, lift.crossProduct(run));
}

void drawCheckValve(const Drawing& d) {
    const double rim = drawEndFlanges(d);
    d.shape.cylinder(d.along(rim), d.along(d.part.length - rim), d.size.outer * 1.1);
    d.shape.cylinder(d.at(0), d.at(0) + d.part.across * (d.size.dn * 0.9), d.size.outer);
}

void drawButterflyValve(const Drawing& d) {
    const Vector run = d.direction();
    d.shape.cylinder(d.at(1), d.at(2), insideBolts(d.size));
    d.shape.cylinder(d.at(0), d.at(0) + d.part.across * (d.size.dn + 120), 30);
    d.shape.box(d.at(0) + d.part.across * (d.size.dn + 160), {120, 100, 80}, run, d.part.across.crossProduct(run));
}

void drawSafetyValve(const Drawing& d) {
    const Vector in = (d.at(0) - d.at(1)).normal();
    const double rim = d.size.flange.thickness;
    const double half = d.size.outer / 2;
    const Point outlet = d.at(3) - d.part.across * rim;
    d.shape.cylinder(d.at(1), d.at(1) + in * rim, d.size.flange.outer);
    d.shape.cone(d.at(1) + in * rim, d.at(0), d.size.outer, d.size.outer * 0.9);
    d.shape.sphere(d.at(0), d.size.outer * 0.7);
    d.shape.cylinder(d.at(0), outlet, d.size.outer);
    d.shape.cylinder(outlet, d.at(3), d.size.flange.outer);
    d.shape.cylinder(d.at(0) + in * half, d.at(0) + in * (half + 180), d.size.outer * 0.9);
    d.shape.head(d.at(0) + in * (half + 180), in, half / 2, half * 0.9);
}

void drawControlValve(const Drawing& d) {
    drawBowTie(d);
    const auto above = [&d](double height) { return d.at(0) + d.part.across * height; };
    d.shape.cylinder(d.at(0), above(300), 50);
    d.shape.cone(above(300), above(380), 120, 320);
    d.shape.cone(above(380), above(440), 320, 160);
}

void drawOrifice(const Drawing& d) {
    const double radius = insideBolts(d.size);
    const Vector run = d.direction();
    d.shape.cylinder(d.at(1), d.at(2), radius);
    const Point tab = d.at(0) + d.part.across * (radius / 2 + 60);
    d.shape.box(tab, {d.part.length, 60, 120}, run, d.part.across.crossProduct(run));
}

void drawStrainer(const Drawing& d) {
    const double rim = drawEndFlanges(d);
    const Vector leg = (d.direction() + d.part.across).normal();
    d.shape.cylinder(d.along(rim), d.along(d.part.length - rim), d.size.outer);
    d.shape.cylinder(d.at(0), d.at(0) + leg * (d.size.dn * 1.3), d.size.outer * 0.8);
}

void drawTrap(const Drawing& d) {
    d.shape.cylinder(d.at(1), d.at(2), d.size.outer);
    d.shape.sphere(d.at(0), d.size.outer * 1.2);
}

void drawHose(const Drawing& d) {
    const double rim = d.size.flange.thickness;
    d.shape.cylinder(d.at(1), d.along(rim), d.size.flange.outer);
    d.shape.cylinder(d.along(rim), d.along(d.part.length - rim), d.size.outer + 10);
    d.shape.cylinder(d.along(d.part.length - rim), d.at(2), d.size.flange.outer);
}

// ---------------------------------------------------------------------------------------------- welds, stops, balloons

void drawWeld(const Drawing& d) {
    d.shape.cylinder(d.at(1), d.at(2), d.size.outer + 4);
    if (d.part.fieldWeld) {
        const Point beside = d.at(1) + d.part.across * (d.size.outer / 2 + 60);
        d.shape.text(TextLine("W", d.part.number), beside, 50, up);
    }
}

void drawStop(const Drawing& d) {
    const Vector u = d.part.across * d.size.outer;
    const Vector v = d.part.along.crossProduct(u);
    d.shape.line(d.at(1) - u, d.at(1) + u);
    d.shape.line(d.at(1) - v, d.at(1) + v);
}

void drawBalloon(const Drawing& d) {
    constexpr int corners = 6;
    constexpr double radius = 120;
    const Point center = balloonCenter(d.part);
    const Vector& u = d.part.across;
    const Vector& v = d.part.along;
    const auto corner = [&](int i) {
        const double angle = 2 * tlGePi * i / corners;
        return center + u * (radius * std::sin(angle)) - v * (radius * std::cos(angle));
    };
    d.shape.line(d.at(1), corner(0));
    for (int i = 0; i < corners; ++i) {
        d.shape.line(corner(i), corner((i + 1) % corners));
    }
    d.shape.text(TextLine("PI-", d.part.number), center - u * (radius * 0.6), 50, u.crossProduct(v));
}

struct DrawingRow {
    void (*draw)(const Drawing&);
    bool insulated;  // the insulation has the same shape
};

const DrawingRow drawings[familyCount] = {
    {drawPipe, true},         {drawFlangedPipe, true},   {drawArc, true},         {drawArc, true},
    {drawArc, true},          {drawMiter, false},        {drawTee, true},         {drawTee, true},
    {drawTee, true},          {drawYPiece, true},        {drawCross, true},       {drawCross, true},
    {drawOlet, false},        {drawOlet, false},         {drawOlet, false},       {drawOlet, false},
    {drawConcentric, true},   {drawEccentric, true},     {drawConcentric, false}, {drawCap, false},
    {drawSocket, false},      {drawUnion, false},        {drawSocket, false},     {drawFlange, false},
    {drawBlindFlange, false}, {drawGasket, false},       {drawNothing, false},    {drawWheelValve, false},
    {drawWheelValve, false},  {drawBallValve, false},    {drawCheckValve, false}, {drawButterflyValve, false},
    {drawSafetyValve, false}, {drawControlValve, false}, {drawOrifice, false},    {drawStrainer, false},
    {drawTrap, false},        {drawHose, false},         {drawWeld, false},       {drawStop, false},
    {drawBalloon, false},
};

}  // namespace

Point balloonCenter(const Part& balloon) {
    constexpr double height = 250;
    return balloon.at(1) + balloon.along * height;
}

void tellShape(ModelBuilder& model, const Part& part, const PipelinePlan& pipeline) {
    Primitives shape(model);
    const Drawing drawing{shape, part};
    const DrawingRow& row = drawings[static_cast<int>(part.family)];
    row.draw(drawing);
    if (pipeline.insulated && row.insulated) {
        shape.insulation(2.0 * pipeline.carries().thickness);
        row.draw(drawing);
    }
}

void tellBoltShape(ModelBuilder& model, const Part& flange) {
    const PipeSize& size = pipeSizes[flange.size1];
    const Vector outward = (flange.at(1) - flange.at(2)).normal();
    const Vector u = acrossOf(outward);
    const Vector v = outward.crossProduct(u);
    const double grip = size.flange.thickness + size.flange.bolt;
    Primitives shape(model);
    for (int i = 0; i < size.flange.bolts; ++i) {
        const double angle = tlGePi * (2 * i + 1) / size.flange.bolts;
        const Vector spoke = u * std::cos(angle) + v * std::sin(angle);
        const Point hole = flange.at(1) + spoke * (size.flange.circle / 2);
        shape.cylinder(hole - outward * grip, hole + outward * (grip + gasketThickness), size.flange.bolt);
    }
}

}  // namespace plant::generator
