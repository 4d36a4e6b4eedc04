// The values of "nodes".
#pragma once

#include "library.h"

namespace nwcreate {

// Appends the node; its shape gets its mesh in the store. Open children must have their openNumber.
void writeNode(Library& lib, NodeRecord& node, std::string& out);
// Adds the system and its lines as settled nodes; gives the number of the system's node.
std::uint32_t addGridNodes(SceneStore& store, const GridSystem& system);
// Appends a camera's node for the view, which shows what the camera of this number sees.
void writeViewNode(const View& view, std::string_view name, std::uint32_t camera, std::string& out);

}  // namespace nwcreate
