// A package of OBMOUT as plant objects: the nodes of its model trees with their properties and the meshes of their
// instances in the scenes.
#pragma once

#include "readers/object.h"

#include <filesystem>

namespace readers::package {

// Trees and properties are held as a whole, of the scenes one at a time.
void readObjects(const std::filesystem::path& package, const ObjectVisitor& visit, Findings& findings);

}  // namespace readers::package
