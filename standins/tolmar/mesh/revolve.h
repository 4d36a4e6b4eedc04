// Meshes of revolved profiles.
#pragma once

#include "tolmar/mesh/profile.h"

namespace tolmar {

MeshStatus meshRevolved(const RevolvedBody& body, double tolerance, MeshScratch& scratch, Profile& profile,
                        TriangleMesh& mesh);

}  // namespace tolmar
