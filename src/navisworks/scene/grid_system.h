// A grid as a grid system of the scene.
#pragma once

#include "nwcreate/nwcreate.h"
#include "platform/objects.h"

namespace nv {

// A line for each axis line below the manager and one level at height 0. Axis lines without a line in their shape stand
// in the run report.
void addGrid(const HxDbObject& axissObject, const HxDbTreeNode* treeNode, const std::string& name, LiNwcScene scene);

}  // namespace nv
