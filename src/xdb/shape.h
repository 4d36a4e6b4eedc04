// The geometry entries of XDBOUT.
#pragma once

#include "exportbase/mesher.h"
#include "platform/objects.h"
#include "platform/primitives.h"
#include "xdb/export.h"

class ORNACadPrimary3D;
class TlDbEntity;
class TlDbSubDMesh;

namespace xdb {

class ShapeWriter {
public:
    explicit ShapeWriter(const XdbArrays& arrays) : arrays_(arrays) {}

    // One entry for each sub-division mesh of the list, and one for all solids, even if there are none. A primitive
    // that gives no triangles goes into the run report.
    void write(const HxDbSmrtlnEntity& object, const HextPrimaryArray& list);

private:
    // Each gives the reason why there are no triangles, or null.
    const char* writeEntity(const TlDbEntity* entity);
    const char* meshParametric(const ORNACadPrimary3D& entity);
    const char* writeSubDMesh(const TlDbSubDMesh& entity);
    void writeSolids();

    const XdbArrays& arrays_;
    std::uint64_t color_ = 0;  // of the object in hand
    Mesh mesh_;                // its solids
};

}  // namespace xdb
