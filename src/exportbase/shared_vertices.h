// Vertices that several solids of one mesh have in common.
#pragma once

#include "exportbase/mesher.h"

// Vertices at one place, as the host compares points, become the first of them; indices follow, and the sums and
// numbers of their normals, where the mesh has any, are added up. Triangles stay as many as they are.
void shareVertices(Mesh& mesh);
