// Where and how a primitive stands: three axes that may have any length, lean or be mirrored, and an origin; in world
// millimetres and in double precision.
#pragma once

#include "platform/geometry.h"

namespace plant::rvm {

using Point = HxGePoint3D;
using Vector = HxGeVector3D;

struct Placement {
    Vector x, y, z;                 // unit vectors
    double sx = 1, sy = 1, sz = 1;  // how much longer than in the file's usual form an axis is
    Point origin;
    bool isFinite = false;
    bool isSingular = false;  // an axis has no length, or all lie in a plane
    bool isRightAngled = false;
    bool isMirrored = false;

    // A point of the primitive's own frame.
    Point at(double u, double v, double w) const { return origin + x * (u * sx) + y * (v * sy) + z * (w * sz); }
    Vector along(double u, double v, double w) const { return x * (u * sx) + y * (v * sy) + z * (w * sz); }
    // Circles across the Z axis stay circles.
    bool keepsCircles() const;
    // Spheres stay spheres.
    bool keepsSpheres() const;
};

// From twelve numbers as they stand in the file: X, Y and Z axis at a length of 0.001, origin in metres.
Placement placementOf(const double (&matrix)[12]);

}  // namespace plant::rvm
