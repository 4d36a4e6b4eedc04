// Ties the connections of a model from both sides.
#pragma once

#include "plant/model/data.h"

#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace plant {

// A connection that one side alone tells of is made known to the other side, with number 0.
class ConnectionTier {
public:
    // Called for each object with connections, which is number `index`, as soon as its references are resolved.
    void visit(ObjectData& object, std::size_t index);
    // Called at the end.
    void tie(Model& model);

private:
    struct Backward {
        ObjectData* object;  // that does not tell of the other
        ObjectData* other;
        std::size_t index;  // of the other
    };
    bool tells(const ObjectData& object, std::int64_t other);

    std::vector<Backward> backward_;
    // What objects with many connections tell of.
    std::unordered_map<const ObjectData*, std::unordered_set<std::int64_t>> told_;
};

}  // namespace plant
