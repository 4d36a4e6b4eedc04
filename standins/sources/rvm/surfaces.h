// The surface of a primitive of any kind but lines and facets, as triangles that stand off it by at most a tenth of a
// millimetre: for what no parametric solid says. Corners, rims and ends are exact. Beyond the chords that a circle may
// have, the distance grows: at a radius of 10 m where the surface is curved both ways, of 300 m elsewhere.
#pragma once

#include "sources/rvm/primitive.h"
#include "sources/rvm/surface_mesh.h"

namespace plant::rvm {

enum class Fineness : std::uint8_t { Usual, Coarse };

// The mesh in world coordinates; `mesh` is emptied first. Without triangles when the primitive has no area.
void surfaceOf(const Primitive& primitive, Fineness fineness, SurfaceMesh& mesh);

}  // namespace plant::rvm
