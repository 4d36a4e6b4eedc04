// Values at the edge of what a plant may hold, as JSON text.
#pragma once

#include "generator/planning/random.h"

#include <string>

namespace plant::generator {

class OddValues {
public:
    explicit OddValues(std::uint64_t seed) : random_(seed) {}

    Random& random() { return random_; }
    // Each appends one value.
    void number(std::string& out);
    void point(std::string& out);
    // In quotes: empty, very long, or with characters that some output must escape, replace or refuse.
    void text(std::string& out);
    // A primitive of any class, whose fields are odd more often than not.
    void primitive(std::string& out);
    // `[[1,x,y,z],...]` of no, one or a few points.
    void outline(std::string& out);

private:
    void entity(std::string& out);

    Random random_;
};

}  // namespace plant::generator
