// Solids of every primitive class in any size and place, with what geometry books say of them.
#pragma once

#include "platform/primitives.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

// Where a shape stands: points of its own frame go through `at`, directions through `along`.
struct Place {
    TlGePoint3d origin;
    TlGeVector3d x{1, 0, 0};
    TlGeVector3d y{0, 1, 0};
    TlGeVector3d z{0, 0, 1};

    TlGePoint3d at(double px, double py, double pz) const { return origin + x * px + y * py + z * pz; }
    TlGeVector3d along(double px, double py, double pz) const { return x * px + y * py + z * pz; }
    TlGePoint3d local(const TlGePoint3d& p) const {
        const TlGeVector3d v = p - origin;
        return {v.dotProduct(x), v.dotProduct(y), v.dotProduct(z)};
    }
};

// All in the shape's own frame, for the size 1 and to be scaled.
struct ShapeCase {
    std::string name;
    std::function<std::unique_ptr<HextPrimary3D>(const Place& place, double size)> make;
    // An upper bound of the distance from the true surface, exact near it, of a point inside or on the solid.
    std::function<double(const TlGePoint3d& p)> offSurface;
    double volume = 0;
    double area = 0;  // 0: no closed formula
    // Triangles by the chord rule at the radius in millimetres of the size given; 0 when there is no rule.
    std::function<double(double size)> chordRule;
    // How many times the rule's triangles the mesh may take.
    double overRule = 1.1;
};

const std::vector<ShapeCase>& shapeCases();

// n of the chord rule at the tolerance 1 mm.
double chords(double radius);
