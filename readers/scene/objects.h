// A scene of NVOUT as plant objects. Groups are objects, and so are grid systems (class "grid"); the shapes that stand
// directly in one are its solids. Views are left out. docs/scene.md tells what the nodes and their `extras` hold.
#pragma once

#include "readers/object.h"

#include <filesystem>

namespace readers::scene {

// The tree of nodes is held as a whole, meshes are read object by object. A node that is named twice, or stands below
// itself, is told where it is met first.
void readObjects(const std::filesystem::path& scene, const ObjectVisitor& visit, Findings& findings);

}  // namespace readers::scene
