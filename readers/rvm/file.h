// An RVM file read back. Words have 32 bits, numbers single precision, both with the most significant byte first:
//
//   file       = HEAD MODL { group } END:
//   HEAD       = tag next 1 2  text info  text note  text date  text user  text encoding
//   MODL       = tag next 1 1  text project  text database
//   group      = CNTB { group | primitive } CNTE
//   CNTB       = tag next 1 2  text name  number translation[3]  word material
//   CNTE       = tag next 1 2
//   END:       = tag next 1 1
//   primitive  = (PRIM | OBST | INSU) tag next 1 1  word kind  number matrix[12]  number box[6]
//                [word 25, in OBST alone]  parameters
//   tag        = four words whose last bytes are the characters
//   next       = word, the offset of the first byte behind the chunk
//   text       = word n, n words of UTF-8, filled with zero bytes
//
//   kind           parameters                                              frame
//    1 pyramid     bottom x, bottom y, top x, top y, offset x, offset y,    Z up, middle between the two faces
//                  height
//    2 box         x, y, z                                                 centre
//    3 rectangular inner radius, outer radius, height, angle               Z the axis, X to the start
//      torus
//    4 torus       radius of the centre line, radius of the tube, angle    likewise
//    5 elliptical  radius, height                                          base in the middle, Z to the crown
//      dish
//    6 spherical   radius, height                                          likewise
//      dish
//    7 snout       bottom radius, top radius, height, offset x, offset y,  Z up, middle between the centres
//                  slopes of the bottom in x, y, of the top in x, y
//    8 cylinder    radius, height                                          centre
//    9 sphere      radius; diameter in the form for strict readers         centre
//   10 line        width, length                                           centre
//   11 facets      word n, n triangles: 1, 3, three times position and     world millimetres
//                  normal
//
// The matrix takes local millimetres to world metres: images of X, Y and Z and the origin, three numbers each. Angles
// are radians. RVMOUT writes neither kinds 1, 3 and 6 nor INSU; they are read for the sake of other files.
#pragma once

#include "readers/finding.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace readers::rvm {

inline constexpr std::uint32_t none = 0xFFFFFFFF;

enum class Use { Solid, Obstruction, Insulation };

inline constexpr std::uint32_t kindFacets = 11;

struct Primitive {
    std::uint32_t kind = 0;
    Use use = Use::Solid;
    std::array<float, 12> matrix{};
    std::array<float, 6> box{};
    std::array<float, 9> parameters{};  // kinds other than 11
    std::size_t parameterCount = 0;
    std::uint32_t triangles = 0;    // kind 11
    std::array<float, 6> extent{};  // of its vertices
    std::uint64_t facetsAt = 0;     // where its triangles begin
    std::uint64_t offset = 0;       // of the chunk

    bool isObstruction() const { return use == Use::Obstruction; }
};

struct Group {
    std::string name;
    std::array<float, 3> translation{};
    std::uint32_t material = 0;
    std::uint32_t parent = none;
    std::vector<std::uint32_t> children;    // indexes of groups
    std::vector<std::uint32_t> primitives;  // indexes of primitives
    std::uint64_t offset = 0;
};

struct RvmContent {
    std::array<std::string, 5> headTexts;  // info, note, date, user, encoding
    std::string project;
    std::string database;
    std::vector<Group> groups;  // parents before children
    std::vector<Primitive> primitives;
    std::vector<std::uint32_t> tops;  // groups without a parent
    bool isWhole = false;             // END: was reached

    std::map<std::uint32_t, std::size_t> kinds() const;
    // Names from the top down, separated by "/".
    std::string pathOf(std::uint32_t group) const;
};

// Reads as far as it makes sense; a fault in the chain of chunks ends it. Triangles stay in the file, so that memory
// goes with the number of primitives.
RvmContent readRvm(std::string_view bytes, Findings& findings);

// 18 numbers a triangle, of a primitive that was read from the same bytes.
std::vector<float> facetsOf(std::string_view bytes, const Primitive& primitive);

}  // namespace readers::rvm
