// The values of "nodes".
#pragma once

#include "nwcreate/store/library.h"

namespace nwcreate {

// Writes the node to a place that has room for it; its shape gets its mesh in the store. Gives the end. Open children
// must have their openNumber.
char* writeNode(Library& lib, NodeRecord& node, char* to);
std::size_t roomOfNode(const Library& lib, const NodeRecord& node);
// Adds the system and its lines as settled nodes; gives the number of the system's node.
std::uint32_t addGridNodes(SceneStore& store, const GridSystem& system);
// Appends a camera's node for the view, which shows what the camera of this number sees.
void writeViewNode(const View& view, std::string_view name, std::uint32_t camera, std::string& out);

}  // namespace nwcreate
