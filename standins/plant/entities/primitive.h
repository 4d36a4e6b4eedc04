// Primitives inside serialised entities.
#pragma once

#include "platform/primitives.h"

#include <memory>
#include <simdjson.h>

namespace plant {

// A parametric solid with the members that it has in a model file. Throws Unreadable for anything else.
std::shared_ptr<const HextPrimary3D> readSolidPrimitive(simdjson::dom::element value);

}  // namespace plant
