// Host entities in their serialised form, a JSON text; docs/model-format.md describes it.
#pragma once

#include "platform/primitives.h"
#include "tolmar/entity.h"

#include <memory>
#include <string_view>

namespace plant {

// A new entity that belongs to the caller; null when the text is not one. Any bytes may be given.
TlDbEntity* readEntity(std::string_view serial);

// A parametric entity that shares its primitive.
ORNACadPrimary3D* newParametricSolid(std::shared_ptr<const HextPrimary3D> primitive);

}  // namespace plant
