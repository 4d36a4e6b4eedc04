// The solids that macro text describes, rebuilt: their volume, and points of their surface that tell their extent.
#pragma once

#include "macro_reader.h"

#include <string>
#include <vector>

struct Shape {
    double volume = 0;
    std::vector<HxGePoint3D> points;

    // How far the points reach along a direction.
    double reach(const HxGeVector3D& direction) const;
    void add(const Shape& other, const CoordFrame& frame = worldFrame);
};

// In the solid's own frame; cut by its cuts, which must lie inside it.
Shape rebuild(const macro::Solid& solid);
// In world coordinates. Volumes add up, so solids must not overlap.
Shape rebuild(const macro::Element& element);

// What is wrong with a loop: vertices that coincide, fillets larger than their edges allow. Empty for a good one.
std::string faultsOf(const std::vector<macro::Vertex>& loop);

// The area by which a loop of convex corners is larger than its outline, since fillets are written 0.01 too small.
double filletSurplus(const std::vector<macro::Vertex>& loop);
