// The way of an object through the tree, as a text.
#pragma once

#include <string>

class HxDbTreeNode;

namespace nv {

inline constexpr char pathSeparator = '`';

// The names from the root down to the node, each with a separator behind it.
std::string objectPath(const HxDbTreeNode* node);

}  // namespace nv
