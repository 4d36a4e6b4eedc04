// An EEM file and the JSON file beside it as plant objects: each block with its member. The format keeps no tree, so
// the path of an object is its name.
#pragma once

#include "readers/object.h"

namespace readers::eem {

// `side` may be empty: then the objects have no attributes and classes. Both must outlive the call. One block is held
// at a time; the members are held as a whole.
void readObjects(std::string_view eem, std::string_view side, ToUtf8 toUtf8, const ObjectVisitor& visit,
                 Findings& findings);

}  // namespace readers::eem
