// The world that files without one of their own share.
#pragma once

#include "plant/model_builder.h"

#include <string_view>

namespace plant {

// Tells project, database and world where `world` is 0 still, and sets it; else nothing.
void tellWorld(std::string_view project, std::string_view database, ModelBuilder& builder, ObjectId& world);

}  // namespace plant
