// What an RVM file and its attribute file promise each other, beyond being readable.
#pragma once

#include "readers/rvm/attributes.h"

namespace check {

// Chunks and kinds that no export writes.
void rvmKinds(const readers::rvm::RvmContent& rvm, readers::Findings& findings);
// Both files hold the same tree: every element has its group, every group of an object its element, in the same order,
// and each primitive of an object stands in a group of its own.
void rvmPair(const readers::rvm::RvmContent& rvm, const readers::rvm::AttributeContent& text,
             readers::Findings& findings);
// What a reader wants that is stricter than the format: see the option rvmCompat.
void rvmStrictForm(const readers::rvm::RvmContent& rvm, const readers::rvm::AttributeContent& text,
                   readers::Findings& findings);

}  // namespace check
