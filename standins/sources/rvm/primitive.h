// One primitive as it stands in the file.
#pragma once

#include "sources/rvm/chunks.h"
#include "sources/rvm/placement.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace plant::rvm {

enum class Kind : std::uint32_t {
    Pyramid = 1,
    Box,
    RectangularTorus,
    CircularTorus,
    EllipticalDish,
    SphericalDish,
    Snout,
    Cylinder,
    Sphere,
    Line,
    Facets
};
inline constexpr std::uint32_t lastKind = 11;

struct Primitive {
    Tag role = Tag::Primitive;  // Primitive, Obstruction or Insulation
    Kind kind = Kind::Box;
    std::uint64_t offset = 0;
    Placement placement;
    std::array<double, 6> box{};  // low and high corner in its own frame; all zero where the file tells none
    std::array<double, 9> p{};    // parameters in the order of the format
    std::string_view facets;      // body of a facet group
    bool hasFiniteNumbers = true;
};

// False for a kind that is not known. Refuses a body that is not as long as its chunk says. The contents of facet
// groups are checked where they are read.
bool readPrimitive(std::string_view bytes, const Chunk& chunk, Primitive& primitive);

}  // namespace plant::rvm
