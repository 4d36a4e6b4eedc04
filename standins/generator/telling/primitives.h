// Tells the primitives of one object, their lengths and directions rounded.
#pragma once

#include "generator/planning/plan.h"
#include "plant/model_builder.h"

#include <span>

namespace plant::generator {

struct OutlinePoint {
    double x;
    double y;
};

class Primitives {
public:
    // The object has a shape from here on, were it an empty one.
    explicit Primitives(ModelBuilder& model) : model_(&model) { model.shape(); }

    // From here on all solids belong to the insulation, thicker by `growth` across; 0 ends that.
    void insulation(double growth) { growth_ = growth; }
    double growth() const { return growth_; }

    void cylinder(const Point& start, const Point& end, double diameter);
    void slopedCylinder(const Point& start, const Point& end, double diameter, const Vector& normal);
    void cone(const Point& start, const Point& end, double startDiameter, double endDiameter);
    void eccentricCone(const Point& start, const Point& end, double startDiameter, double endDiameter,
                       const Vector& offset);
    // A quarter of a ring, or any arc below half a turn, from point to point.
    void arc(const Point& center, const Point& start, const Point& end, double diameter);
    void ring(const Point& center, double radius, const Vector& axis, double diameter);
    void box(const Point& center, const Vector& size, const Vector& x = east, const Vector& y = north);
    void head(const Point& base, const Vector& towards, double height, double radius);
    void sphere(const Point& center, double radius);
    void frustum(const Point& base, const Vector& bottom, const Vector& top, double height);
    void wedge(const Point& corner, const Vector& along, const Vector& upwards, double width);
    void prism(const Point& start, const Point& end, double radius, int sides);
    void saddle(const Point& corner, double length, double width, double height, double radius);
    void squareToRound(const Point& base, const Point& top, const Vector& x, OutlinePoint size, double radius);
    void squareBend(const Point& center, const Point& start, const Point& end, OutlinePoint section);
    // The outline in the plane of x and y, pushed along x cross y.
    void extrusion(const Point& origin, const Vector& x, const Vector& y, double height,
                   std::span<const OutlinePoint> outline, std::span<const OutlinePoint> hole = {});
    // A disc or, with an inner radius, a ring standing on its plane.
    void disc(const Point& origin, double height, double radius, double inner);
    // A shallow cover turned about the vertical through `center`.
    void cover(const Point& center, double radius, double height);
    void line(const Point& start, const Point& end);
    void text(std::string_view text, const Point& at, double height, const Vector& normal);
    // Host entities carried as primitives: a block of one kind or another, and a line.
    void hostBox(const Point& center, const Vector& size);
    void hostSolid(const Point& center, const Vector& size);
    void hostBlock(const Point& center, const Vector& size);
    void hostLine(const Point& start, const Point& end);

private:
    void add(HextPrimary3D& solid);

    ModelBuilder* model_;
    double growth_ = 0;
};

}  // namespace plant::generator
