#include "rvm/format/sibling_names.h"

namespace rvm {

std::string SiblingNames::unique(const std::string& name) {
    const auto [first, isNew] = uses_.try_emplace(name, 1);
    if (isNew) {
        return name;
    }
    // References to entries outlive the growth of the table, iterators do not.
    unsigned& count = first->second;
    std::string candidate;
    do {
        candidate = name + "_" + std::to_string(++count);
    } while (!uses_.try_emplace(candidate, 1).second);
    return candidate;
}

}  // namespace rvm
