// Storage that lives from one mesh to the next.
#pragma once

#include "tolmar/mesh/sweep.h"

namespace tolmar {

struct MeshScratch {
    ArcTables arcs;
    Region region;
    RegionSweep sweep;
    PointTriangles regionTriangles;
};

}  // namespace tolmar
