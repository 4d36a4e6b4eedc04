#include "generator/telling/primitives.h"

#include "generator/telling/text_line.h"

#include <numbers>
#include <string>

namespace plant::generator {

namespace {

template <typename Solid>
Solid betweenEnds(const Point& start, const Point& end) {
    Solid solid;
    solid.startPoint = rounded(start);
    solid.endPoint = rounded(end);
    return solid;
}

template <typename Cone>
Cone coneBetween(const Point& start, const Point& end, double startDiameter, double endDiameter) {
    Cone cone = betweenEnds<Cone>(start, end);
    cone.startDiameter = thousandths(startDiameter);
    cone.endDiameter = thousandths(endDiameter);
    return cone;
}

HextTorus3D torus(const Point& center, const Point& start, double diameter) {
    HextTorus3D torus;
    torus.center = rounded(center);
    torus.startPoint = rounded(start);
    torus.startDiameter = torus.endDiameter = thousandths(diameter);
    return torus;
}

// Corners in their order; the last one is marked as such.
HextVertexList polygon(std::span<const Point> corners) {
    HextVertexList list;
    for (const Point& corner : corners) {
        list.push_back({1, rounded(corner)});
    }
    list.back().kind = 4;
    return list;
}

HextVertexList polygon(std::span<const OutlinePoint> corners) {
    HextVertexList list;
    list.reserve(corners.size());
    for (const OutlinePoint& corner : corners) {
        list.push_back({1, rounded(Point(corner.x, corner.y, 0))});
    }
    list.back().kind = 4;
    return list;
}

HextVertexList circle(double radius) {
    return {{6, rounded(Point(radius, 0, 0))}, {6, rounded(Point(0, radius, 0))}, {6, rounded(Point(-radius, 0, 0))}};
}

std::string pointText(const Point& p) {
    return std::string(TextLine("[", p.x, ",", p.y, ",", p.z, "]"));
}

// The serialised form of a host solid.
std::string boxEntity(const Point& center, const Vector& size) {
    return "{\"type\":\"solid\",\"primitive\":{\"type\":\"HextBox3D\",\"point\":" + pointText(center) +
           std::string(TextLine(",\"xLength\":", size.x, ",\"yLength\":", size.y, ",\"zLength\":", size.z)) +
           ",\"pointKind\":1}}";
}

}  // namespace

void Primitives::add(HextPrimary3D& solid) {
    if (growth_ > 0) {
        solid.material = obstructionMaterial;
    }
    model_->primitive(solid);
}

void Primitives::cylinder(const Point& start, const Point& end, double diameter) {
    auto solid = betweenEnds<HextCylinder3D>(start, end);
    solid.diameter = thousandths(diameter + growth_);
    add(solid);
}

void Primitives::slopedCylinder(const Point& start, const Point& end, double diameter, const Vector& normal) {
    auto solid = betweenEnds<HextScylinder3D>(start, end);
    solid.diameter = thousandths(diameter);
    solid.vect = rounded(normal);
    add(solid);
}

void Primitives::cone(const Point& start, const Point& end, double startDiameter, double endDiameter) {
    auto solid = coneBetween<HextConcone3D>(start, end, startDiameter + growth_, endDiameter + growth_);
    add(solid);
}

void Primitives::eccentricCone(const Point& start, const Point& end, double startDiameter, double endDiameter,
                               const Vector& offset) {
    auto solid = coneBetween<HextEcone3D>(start, end, startDiameter + growth_, endDiameter + growth_);
    solid.vect = rounded(offset);
    add(solid);
}

void Primitives::arc(const Point& center, const Point& start, const Point& end, double diameter) {
    HextTorus3D solid = torus(center, start, diameter + growth_);
    solid.thirdField = rounded(end);
    add(solid);
}

void Primitives::ring(const Point& center, double radius, const Vector& axis, double diameter) {
    constexpr int wholeCircle = 2;
    const Vector outward = axis.perpVector().normal();
    const Vector direction = rounded(axis);
    HextTorus3D solid = torus(center, center + outward * radius, diameter);
    solid.thirdField = {direction.x, direction.y, direction.z};
    solid.arcKind = wholeCircle;
    add(solid);
}

void Primitives::box(const Point& center, const Vector& size, const Vector& x, const Vector& y) {
    constexpr int atTheCenter = 1;
    HextBox3D solid;
    solid.point = rounded(center);
    solid.xLength = thousandths(size.x);
    solid.yLength = thousandths(size.y);
    solid.zLength = thousandths(size.z);
    solid.xAxis = rounded(x);
    solid.yAxis = rounded(y);
    solid.pointKind = atTheCenter;
    add(solid);
}

void Primitives::head(const Point& base, const Vector& towards, double height, double radius) {
    HextOval3D solid;
    solid.point = rounded(base);
    solid.vect = rounded(towards);
    solid.axialRadius = thousandths(height);
    solid.radialRadius = solid.baseRadius = thousandths(radius);
    add(solid);
}

void Primitives::sphere(const Point& center, double radius) {
    HextSphere3D solid;
    solid.center = rounded(center);
    solid.radius = thousandths(radius);
    add(solid);
}

void Primitives::frustum(const Point& base, const Vector& bottom, const Vector& top, double height) {
    HextSqucone3D solid;
    solid.point = rounded(base);
    solid.bottomX = thousandths(bottom.x);
    solid.bottomY = thousandths(bottom.y);
    solid.topX = thousandths(top.x);
    solid.topY = thousandths(top.y);
    solid.height = thousandths(height);
    add(solid);
}

void Primitives::wedge(const Point& corner, const Vector& along, const Vector& upwards, double width) {
    HextWedge3D solid;
    solid.point1 = rounded(corner + upwards);
    solid.point2 = rounded(corner);
    solid.point3 = rounded(corner + along);
    solid.wedgeSize = thousandths(width);
    add(solid);
}

void Primitives::prism(const Point& start, const Point& end, double radius, int sides) {
    auto solid = betweenEnds<HextPrism3D>(start, end);
    solid.vertexPoint = rounded(end + acrossOf(end - start) * radius);
    solid.sides = sides;
    add(solid);
}

void Primitives::saddle(const Point& corner, double length, double width, double height, double radius) {
    HextSaddle3D solid;
    solid.point = rounded(corner);
    solid.axis = east;
    solid.sectionAxis = north;
    solid.length = thousandths(length);
    solid.sectionLength = thousandths(width);
    solid.sectionHeight = thousandths(height);
    solid.circleRadius = thousandths(radius);
    add(solid);
}

void Primitives::squareToRound(const Point& base, const Point& top, const Vector& x, OutlinePoint size, double radius) {
    HextSqucir3D solid;
    solid.basePoint = rounded(base);
    solid.topCenter = rounded(top);
    solid.xAxis = rounded(x);
    solid.baseNormal = rounded((top - base).normal());
    solid.xLength = thousandths(size.x);
    solid.yLength = thousandths(size.y);
    solid.topRadius = thousandths(radius);
    add(solid);
}

void Primitives::squareBend(const Point& center, const Point& start, const Point& end, OutlinePoint section) {
    HextSqutorus3D solid;
    solid.center = rounded(center);
    solid.startPoint = rounded(start);
    solid.thirdField = rounded(end);
    solid.startWidth = solid.endWidth = thousandths(section.x);
    solid.startHeight = solid.endHeight = thousandths(section.y);
    add(solid);
}

void Primitives::extrusion(const Point& origin, const Vector& x, const Vector& y, double height,
                           std::span<const OutlinePoint> outline, std::span<const OutlinePoint> hole) {
    HextSpolygon solid;
    solid.origin = rounded(origin);
    solid.xAxis = rounded(x);
    solid.yAxis = rounded(y);
    solid.direction = rounded(x.crossProduct(y));
    solid.height = thousandths(height);
    solid.outline = polygon(outline);
    if (!hole.empty()) {
        solid.holes = std::vector<HextVertexList>{polygon(hole)};
    }
    add(solid);
}

void Primitives::disc(const Point& origin, double height, double radius, double inner) {
    HextSpolygon solid;
    solid.origin = rounded(origin);
    solid.height = thousandths(height);
    solid.outline = circle(radius);
    if (inner > 0) {
        solid.holes = std::vector<HextVertexList>{circle(inner)};
    }
    add(solid);
}

void Primitives::cover(const Point& center, double radius, double height) {
    const Point rim = center + east * radius;
    const Point profile[] = {center, rim, rim + up * height, center + up * (2 * height)};
    HextRevolve solid;
    solid.center = rounded(center);
    solid.axis = up;
    solid.angle = 2 * std::numbers::pi;
    solid.profile = polygon(profile);
    add(solid);
}

void Primitives::line(const Point& start, const Point& end) {
    model_->primitive(betweenEnds<HextPrimaryLine>(start, end));
}

void Primitives::text(std::string_view text, const Point& at, double height, const Vector& normal) {
    HextPrimaryText item;
    item.text = text;
    item.position = rounded(at);
    item.normal = rounded(normal);
    item.height = thousandths(height);
    model_->primitive(item);
}

void Primitives::hostBox(const Point& center, const Vector& size) {
    HextPrimaryAcad box;
    box.serial = boxEntity(center, size);
    model_->primitive(box);
}

void Primitives::hostSolid(const Point& center, const Vector& size) {
    HextPrimaryAcadSolid3D solid;
    solid.serial = boxEntity(center, size);
    model_->primitive(solid);
}

void Primitives::hostBlock(const Point& center, const Vector& size) {
    HextAcadBlockReference block;
    block.serial = "{\"type\":\"block\",\"parts\":[" + boxEntity(center, size) + "]}";
    model_->primitive(block);
}

void Primitives::hostLine(const Point& start, const Point& end) {
    HextPrimaryAcadEntity line;
    line.serial = "{\"type\":\"line\",\"startPoint\":" + pointText(start) + ",\"endPoint\":" + pointText(end) + "}";
    model_->primitive(line);
}

}  // namespace plant::generator
