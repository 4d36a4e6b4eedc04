// A pair of RVMOUT as plant objects: the groups of the RVM file with the attributes of their elements.
//
// A leaf group that holds one primitive is that primitive's own: it becomes a solid of the object above, under the
// group's name. Every other group is an object. The class is what the attribute "Class" says.
#pragma once

#include "readers/object.h"

namespace readers::rvm {

// `attributes` may be empty: then the objects have none. Both must outlive the call. Memory goes with the number of
// groups and primitives; triangles are read object by object.
void readObjects(std::string_view rvm, std::string_view attributes, const ObjectVisitor& visit, Findings& findings);

}  // namespace readers::rvm
