// Meshes of extruded regions.
#pragma once

#include "tolmar/mesh/scratch.h"
#include "tolmar/mesh/strip.h"

namespace tolmar {

// A region that the outlines bound at this tolerance, and its triangles, in `scratch`. Outlines whose chords cross
// although they do not are tried at a finer tolerance; outlines that touch or cross are united. `touching` says whether
// points of equal position stand in the region.
MeshStatus makeRegion(const std::vector<Outline>& outlines, double tolerance, MeshScratch& scratch, bool& touching);

MeshStatus meshExtruded(const ExtrudedBody& body, double tolerance, MeshScratch& scratch, TriangleMesh& mesh);

// Gives nodes of equal position from `firstNode` on one number, and drops the triangles from `firstTriangle` on that
// then have two equal corners. `mesh.faces` from `firstFace` on follow.
void weldNodes(TriangleMesh& mesh, std::size_t firstNode, std::size_t firstTriangle, std::size_t firstFace);

}  // namespace tolmar
