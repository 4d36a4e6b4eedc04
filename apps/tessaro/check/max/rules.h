// What the two files of MAXOUT promise: each by itself, and that both hold the same tree.
#pragma once

#include "readers/max/events.h"

namespace check {

// What is wrong, with the line. Empty for a good file. The files are read through once; nothing of them is kept.
readers::Findings maxGeometry(std::string_view bytes);
readers::Findings maxProperties(std::string_view bytes);
// Of two files that are good by themselves. Ids and names of the objects of the property file are kept.
readers::Findings maxPair(std::string_view geometry, std::string_view properties);

}  // namespace check
