// The triangles of one plant object for MAXOUT.
#pragma once

#include "exportbase/mesher.h"
#include "platform/objects.h"

namespace maxfile {

// Appends all solids of the object to one mesh, vertices that they have in common once. False when the object has no
// list of primitives. A primitive that makes no triangles goes into the run report.
bool meshObject(const HxDbSmrtlnEntity& object, Mesh& mesh);

}  // namespace maxfile
