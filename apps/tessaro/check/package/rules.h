// What the parts of a package promise each other, beyond being readable.
#pragma once

#include "readers/package/archive.h"

namespace check {

// Reads a package and holds its parts against each other: two views, a model tree and a scene in each model; ids once
// only; every property, node, material and geometry has what it belongs to; no entry that nothing names.
void packageParts(const std::filesystem::path& file, readers::Findings& findings);

}  // namespace check
