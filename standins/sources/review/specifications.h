// The tube specifications that parts refer to: one for each specification, sizes and types of ends that occur.
#pragma once

#include "plant/model_builder.h"

#include <array>
#include <string>
#include <string_view>
#include <unordered_map>

namespace plant::review {

struct PartEnds {
    std::size_t count = 0;
    std::array<std::string, 4> sizes;  // empty for unknown
    std::array<std::string_view, 4> types;
};

class Specifications {
public:
    explicit Specifications(ModelBuilder& builder) : builder_(&builder) {}
    // Told to the builder when it is new, so no object is in hand.
    ObjectId idOf(std::string_view name, const PartEnds& ends);

private:
    ModelBuilder* builder_;
    std::unordered_map<std::string, ObjectId> ids_;
};

}  // namespace plant::review
