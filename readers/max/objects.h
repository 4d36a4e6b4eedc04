// The two files of MAXOUT as plant objects: the objects of the property file with the shapes that the geometry file has
// under their ids. A plant object is named as in the geometry file, without its station and id.
#pragma once

#include "readers/object.h"

namespace readers::max {

// Either may be empty: then the other stands alone. Both must outlive the call. Both are read front to back, so that
// memory goes with the size of an object.
void readObjects(std::string_view geometry, std::string_view properties, ToUtf8 toUtf8, const ObjectVisitor& visit,
                 Findings& findings);

}  // namespace readers::max
