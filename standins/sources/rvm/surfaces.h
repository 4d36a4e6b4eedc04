// The surface of a primitive of any kind but lines and facets, as triangles that stand off it by at most a tenth of a
// millimetre: for what no parametric solid says. Corners, rims and ends are exact.
#pragma once

#include "sources/rvm/primitive.h"
#include "sources/rvm/surface_mesh.h"

namespace plant::rvm {

// The mesh in world coordinates; `mesh` is emptied first. Without triangles when the primitive has no area.
void surfaceOf(const Primitive& primitive, SurfaceMesh& mesh);

}  // namespace plant::rvm
