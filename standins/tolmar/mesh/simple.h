// Meshes of the bodies of few faces.
#pragma once

#include "tolmar/mesh/circle.h"
#include "tolmar/mesh/strip.h"

namespace tolmar {

MeshStatus meshBlock(const BlockBody& body, TriangleMesh& mesh);
MeshStatus meshCone(const ConeBody& body, double tolerance, ArcTables& arcs, TriangleMesh& mesh);
MeshStatus meshSquareRound(const SquareRoundBody& body, double tolerance, ArcTables& arcs, TriangleMesh& mesh);

}  // namespace tolmar
