// Which element of an attribute file belongs to which group of the RVM file.
//
// Both files are written in one walk, so that pairing goes front to back. A group without an element is a manager
// without objects, an expanded pipeline (its branches have the elements) or a primitive's own group; a manager may have
// several elements of its name, one after the other, that share its objects.
#pragma once

#include "readers/rvm/attributes.h"

namespace readers::rvm {

struct Pairing {
    std::vector<std::uint32_t> elementOf;  // by group: its first element, or `none`
    Findings mismatches;                   // where the files do not hold the same tree
};

Pairing pairFiles(const RvmContent& rvm, const AttributeContent& text);

}  // namespace readers::rvm
