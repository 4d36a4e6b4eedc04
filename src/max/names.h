// What MAXOUT calls plant objects.
#pragma once

#include "platform/objects.h"

namespace maxfile {

// By the first class of the table that the object is of; empty where the object has no such text, "Other" for any other
// class. Lives with the model.
const char* objectName(const HxDbObject& object);

}  // namespace maxfile
