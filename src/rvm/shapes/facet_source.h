// Triangles of the primitives that have no exact counterpart in the RVM format.
#pragma once

#include "exportbase/mesher.h"
#include "platform/primitives.h"

#include <stdexcept>
#include <string>

namespace rvm {

// A class that is no polygon body: the message names it. Ends the export.
class NoPolygonBody final : public std::runtime_error {
public:
    explicit NoPolygonBody(const char* className);
};

// Whether a class, and not one above it, is a polygon body.
bool isPolygonBody(const TlRxClass* type);

// Why a primitive has no or fewer triangles than it should; null when all went well. The text lives with the program.
using MeshTrouble = const char*;

// Appends one array to each list for every solid of the primitive. False when the primitive yields no mesh at all; true
// with nothing added when its solid cannot be made. `trouble`, when given, gets the reason in both cases. Throws
// NoPolygonBody for a class that is none.
bool meshPrimitive(const HextPrimary& primitive, MeshIndices& indices, MeshPositions& positions, MeshNormals& normals,
                   MeshTrouble* trouble = nullptr);

// The same from the entity that the primitive's serialised content became.
bool meshEntity(const TlDbEntity& entity, MeshIndices& indices, MeshPositions& positions, MeshNormals& normals,
                MeshTrouble* trouble = nullptr);

}  // namespace rvm
