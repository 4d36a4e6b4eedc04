// Names that are unique among siblings, for readers that find an element by its name.
#pragma once

#include <string>
#include <unordered_map>

namespace rvm {

class SiblingNames {
public:
    // The name itself at its first use, later the name with "_2", "_3" and so on, whichever is free.
    std::string unique(const std::string& name);
    void clear() { uses_.clear(); }

private:
    std::unordered_map<std::string, unsigned> uses_;
};

}  // namespace rvm
