// Turns the ids of references into addresses and ties connections from both sides.
#pragma once

#include "plant/model/data.h"
#include "plant/objects/connections.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace plant {

// Most references lead to objects nearby, so they are resolved while those are still at hand in the processor's cache.
// All operations throw a Refusal with the place of what is wrong.
class Resolver {
public:
    explicit Resolver(Model& model) : model_(&model) {}
    // Resolves the objects that were told since the last call; those that refer to objects yet to come wait.
    void resolveNew();
    // Resolves what is left, when all is told.
    void finish();

private:
    bool waits(ObjectData& object) const;
    void resolve(std::size_t index);

    Model* model_;
    ConnectionTier tier_;
    std::size_t next_ = 0;
    std::vector<std::uint32_t> waiting_;
};

}  // namespace plant
