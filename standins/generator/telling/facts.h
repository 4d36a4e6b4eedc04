// What those who tell the objects of a generated plant have in common.
#pragma once

#include "generator/planning/plan.h"
#include "generator/telling/text_line.h"
#include "plant/model_builder.h"

#include <initializer_list>
#include <string_view>

namespace plant::generator {

struct KeyText {
    std::string_view key;
    std::string_view text;
};

inline void tellAttributes(ModelBuilder& model, std::initializer_list<KeyText> attributes) {
    for (const KeyText& one : attributes) {
        model.attribute(one.key, one.text);
    }
}

// Begins an object of a tree.
inline void beginObject(ModelBuilder& model, Id id, std::string_view className, Id in) {
    model.beginObject(id, className);
    model.parent(in);
}

// A point of number `no`, at which `to` hangs if it is not 0.
inline void tellPoint(ModelBuilder& model, int no, const Point& at, Id to = 0) {
    PointFacts facts{.no = static_cast<std::int16_t>(no), .at = triple(at)};
    if (to != 0) {
        facts.to = {&to, 1};
    }
    model.point(facts);
}

}  // namespace plant::generator
