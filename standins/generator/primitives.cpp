#include "generator/primitives.h"

#include <cmath>

namespace plant::generator {

namespace {
constexpr std::string_view none;
}

Primitives::Primitives(Output& out) : out_(&out) {
    out_->text(",\"primitives\":[");
}

Primitives::~Primitives() {
    out_->text("]");
}

Output& Primitives::begin(std::string_view type) {
    out_->text(first_ ? none : ",").text("{\"type\":\"").text(type).text("\"");
    first_ = false;
    return *out_;
}

void Primitives::end() {
    if (growth_ > 0) {
        out_->text(",\"material\":\"hext_temp_material\"");
    }
    out_->text("}");
}

void Primitives::twoEnds(std::string_view type, const Point& start, const Point& end) {
    begin(type).text(",\"startPoint\":").point(start).text(",\"endPoint\":").point(end);
}

void Primitives::cylinder(const Point& start, const Point& end_, double diameter) {
    twoEnds("HextCylinder3D", start, end_);
    out_->text(",\"diameter\":").number(diameter + growth_);
    end();
}

void Primitives::slopedCylinder(const Point& start, const Point& end_, double diameter, const Vector& normal) {
    twoEnds("HextScylinder3D", start, end_);
    out_->text(",\"diameter\":").number(diameter).text(",\"vect\":").direction(normal);
    end();
}

void Primitives::cone(const Point& start, const Point& end_, double startDiameter, double endDiameter) {
    twoEnds("HextConcone3D", start, end_);
    out_->text(",\"startDiameter\":").number(startDiameter + growth_);
    out_->text(",\"endDiameter\":").number(endDiameter + growth_);
    end();
}

void Primitives::eccentricCone(const Point& start, const Point& end_, double startDiameter, double endDiameter,
                               const Vector& offset) {
    twoEnds("HextEcone3D", start, end_);
    out_->text(",\"startDiameter\":").number(startDiameter + growth_);
    out_->text(",\"endDiameter\":").number(endDiameter + growth_).text(",\"vect\":").direction(offset);
    end();
}

void Primitives::arc(const Point& center, const Point& start, const Point& end_, double diameter) {
    begin("HextTorus3D").text(",\"center\":").point(center).text(",\"startPoint\":").point(start);
    out_->text(",\"thirdField\":").point(end_).text(",\"startDiameter\":").number(diameter + growth_);
    out_->text(",\"endDiameter\":").number(diameter + growth_);
    end();
}

void Primitives::ring(const Point& center, double radius, const Vector& axis, double diameter) {
    const Vector outward = axis.perpVector().normal();
    begin("HextTorus3D").text(",\"center\":").point(center);
    out_->text(",\"startPoint\":").point(center + outward * radius).text(",\"thirdField\":").direction(axis);
    out_->text(",\"startDiameter\":").number(diameter).text(",\"endDiameter\":").number(diameter);
    out_->text(",\"arcKind\":2");
    end();
}

void Primitives::box(const Point& center, const Vector& size, const Vector& x, const Vector& y) {
    begin("HextBox3D").text(",\"point\":").point(center).text(",\"xLength\":").number(size.x);
    out_->text(",\"yLength\":").number(size.y).text(",\"zLength\":").number(size.z);
    if (!x.isEqualTo(east) || !y.isEqualTo(north)) {
        out_->text(",\"xAxis\":").direction(x).text(",\"yAxis\":").direction(y);
    }
    out_->text(",\"pointKind\":1");
    end();
}

void Primitives::head(const Point& base, const Vector& towards, double height, double radius) {
    begin("HextOval3D").text(",\"point\":").point(base).text(",\"vect\":").direction(towards);
    out_->text(",\"axialRadius\":").number(height).text(",\"radialRadius\":").number(radius);
    out_->text(",\"baseRadius\":").number(radius);
    end();
}

void Primitives::sphere(const Point& center, double radius) {
    begin("HextSphere3D").text(",\"center\":").point(center).text(",\"radius\":").number(radius);
    end();
}

void Primitives::frustum(const Point& base, const Vector& bottom, const Vector& top, double height) {
    begin("HextSqucone3D").text(",\"point\":").point(base).text(",\"bottomX\":").number(bottom.x);
    out_->text(",\"bottomY\":").number(bottom.y).text(",\"topX\":").number(top.x).text(",\"topY\":").number(top.y);
    out_->text(",\"height\":").number(height);
    end();
}

void Primitives::wedge(const Point& corner, const Vector& along, const Vector& upwards, double width) {
    begin("HextWedge3D").text(",\"point1\":").point(corner + upwards).text(",\"point2\":").point(corner);
    out_->text(",\"point3\":").point(corner + along).text(",\"wedgeSize\":").number(width);
    end();
}

void Primitives::prism(const Point& start, const Point& end_, double radius, int sides) {
    const Point vertex = end_ + acrossOf(end_ - start) * radius;
    twoEnds("HextPrism3D", start, end_);
    out_->text(",\"vertexPoint\":").point(vertex).text(",\"sides\":").whole(sides);
    end();
}

void Primitives::saddle(const Point& corner, double length, double width, double height, double radius) {
    begin("HextSaddle3D").text(",\"point\":").point(corner).text(",\"axis\":[1,0,0],\"sectionAxis\":[0,1,0]");
    out_->text(",\"length\":").number(length).text(",\"sectionLength\":").number(width);
    out_->text(",\"sectionHeight\":").number(height).text(",\"circleRadius\":").number(radius);
    end();
}

void Primitives::squareToRound(const Point& base, const Point& top, const Vector& x, OutlinePoint size, double radius) {
    begin("HextSqucir3D").text(",\"basePoint\":").point(base).text(",\"topCenter\":").point(top);
    out_->text(",\"xAxis\":").direction(x).text(",\"baseNormal\":").direction((top - base).normal());
    out_->text(",\"xLength\":").number(size.x).text(",\"yLength\":").number(size.y);
    out_->text(",\"topRadius\":").number(radius);
    end();
}

void Primitives::squareBend(const Point& center, const Point& start, const Point& end_, OutlinePoint section) {
    begin("HextSqutorus3D").text(",\"center\":").point(center).text(",\"startPoint\":").point(start);
    out_->text(",\"thirdField\":").point(end_);
    out_->text(",\"startWidth\":").number(section.x).text(",\"startHeight\":").number(section.y);
    out_->text(",\"endWidth\":").number(section.x).text(",\"endHeight\":").number(section.y);
    end();
}

void Primitives::outline(std::span<const OutlinePoint> points) {
    out_->text("[");
    for (std::size_t i = 0; i < points.size(); ++i) {
        const bool isLast = i + 1 == points.size();
        out_->text(i == 0 ? none : ",").text(isLast ? "[4," : "[1,");
        out_->number(points[i].x).text(",").number(points[i].y).text(",0]");
    }
    out_->text("]");
}

void Primitives::circle(double radius) {
    out_->text("[[6,").number(radius).text(",0,0],[6,0,").number(radius).text(",0],[6,").number(-radius).text(",0,0]]");
}

void Primitives::extrusion(const Point& origin, const Vector& x, const Vector& y, double height,
                           std::span<const OutlinePoint> points, std::span<const OutlinePoint> hole) {
    begin("HextSpolygon").text(",\"origin\":").point(origin);
    if (!x.isEqualTo(east) || !y.isEqualTo(north)) {
        out_->text(",\"xAxis\":").direction(x).text(",\"yAxis\":").direction(y);
        out_->text(",\"direction\":").direction(x.crossProduct(y));
    }
    out_->text(",\"height\":").number(height).text(",\"outline\":");
    outline(points);
    if (!hole.empty()) {
        out_->text(",\"holes\":[");
        outline(hole);
        out_->text("]");
    }
    end();
}

void Primitives::disc(const Point& origin, double height, double radius, double inner) {
    begin("HextSpolygon").text(",\"origin\":").point(origin).text(",\"height\":").number(height);
    out_->text(",\"outline\":");
    circle(radius);
    if (inner > 0) {
        out_->text(",\"holes\":[");
        circle(inner);
        out_->text("]");
    }
    end();
}

void Primitives::cover(const Point& center, double radius, double height) {
    const Point rim = center + east * radius;
    const Point profile[] = {center, rim, rim + up * height, center + up * (2 * height)};
    begin("HextRevolve").text(",\"center\":").point(center).text(",\"axis\":[0,0,1],\"angle\":6.283185307179586");
    out_->text(",\"profile\":[");
    for (const Point& p : profile) {
        const bool isLast = &p == &profile[3];
        out_->text(isLast ? "[4," : "[1,").number(p.x).text(",").number(p.y).text(",").number(p.z);
        out_->text(isLast ? "]" : "],");
    }
    out_->text("]");
    end();
}

void Primitives::line(const Point& start, const Point& end_) {
    twoEnds("HextPrimaryLine", start, end_);
    out_->text("}");
}

void Primitives::text(std::string_view text, const Point& at, double height, const Vector& normal) {
    begin("HextPrimaryText").text(",\"text\":\"").text(text).text("\",\"position\":").point(at);
    out_->text(",\"normal\":").direction(normal).text(",\"height\":").number(height).text("}");
}

void Primitives::hostBox(std::string_view type, const Point& center, const Vector& size) {
    const bool block = type == "HextAcadBlockReference";
    begin(type).text(block ? ",\"entity\":{\"type\":\"block\",\"parts\":[{" : ",\"entity\":{");
    out_->text("\"type\":\"solid\",\"primitive\":{\"type\":\"HextBox3D\",\"point\":").point(center);
    out_->text(",\"xLength\":").number(size.x).text(",\"yLength\":").number(size.y);
    out_->text(",\"zLength\":").number(size.z).text(",\"pointKind\":1}}").text(block ? "]}}" : "}");
}

void Primitives::hostLine(const Point& start, const Point& end_) {
    begin("HextPrimaryAcadEntity").text(",\"entity\":{\"type\":\"line\",\"startPoint\":").point(start);
    out_->text(",\"endPoint\":").point(end_).text("}}");
}

}  // namespace plant::generator
