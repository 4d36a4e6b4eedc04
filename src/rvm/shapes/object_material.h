// RVM material numbers of colours and objects.
#pragma once

#include "platform/objects.h"

#include <cstdint>

namespace rvm {

// Indexes 1 to 9 map by a table; 0 and indexes above stand as they are. A negative index counts as 0.
std::uint32_t rvmMaterial(int colorIndex);

// By the colour of the object or of the name node that owns it.
std::uint32_t objectMaterial(const HxDbSmrtlnEntity& object);

}  // namespace rvm
