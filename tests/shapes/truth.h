// How far a point stands off true surfaces.
#pragma once

#include "shapes/cases.h"

#include <functional>
#include <vector>

namespace truth {

inline constexpr double pi = tlGePi;
using Points = std::vector<TlGePoint3d>;
using Off = std::function<double(const TlGePoint3d&)>;

template <typename Class>
std::unique_ptr<Class> make() {
    return std::make_unique<Class>();
}

inline double none(double) {
    return 0;
}

// A segment, or an arc that runs counter-clockwise, in a plane.
struct Stroke {
    TlGePoint3d a, b;
    double radius = 0;  // of an arc; 0 for a segment
    TlGePoint3d center;
};

std::vector<Stroke> polygon(const Points& corners);

// Strokes of the distance from the axis and the height along it, turned about the local Z axis from X on. A profile on
// the axis leaves out its part there.
Off revolvedOff(const std::vector<Stroke>& strokes, double angle);

// The region of strokes in X and Y, extruded along Z.
Off extrudedOff(const std::vector<Stroke>& strokes, double height);

// The parts of the table of shapes.
using Shapes = std::vector<ShapeCase>;
void addBlocks(Shapes& out);
void addRound(Shapes& out);
void addExtrusions(Shapes& out);
void addBends(Shapes& out);
void addRevolved(Shapes& out);

}  // namespace truth
