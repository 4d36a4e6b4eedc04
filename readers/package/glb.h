// A scene of a package read back: binary glTF 2.0 with one buffer, the second chunk.
//
//   file = "glTF" word 2  word length  chunk JSON  [ chunk BIN ]
//   node = name (a database id), children, mesh, matrix, extras: type (1 a group, 2 a mesh), geometry, material
//
// Meshes have one primitive of triangles with positions, indices and maybe normals. Nothing is trusted: what a viewer
// would stumble over becomes a finding, and a range of bytes that does not fit has no elements. docs/obm-format.md
// tells more.
#pragma once

#include "readers/finding.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace readers::glb {

inline constexpr std::uint32_t none = 0xFFFFFFFF;
// Of a node that shows a mesh.
inline constexpr int instanceType = 2;

// A typed range of the binary chunk, whose place and size were checked.
struct Accessor {
    std::uint64_t offset = 0;  // in the chunk
    std::uint64_t count = 0;
    std::uint64_t stride = 0;
    int componentType = 0;
    bool isVector = false;  // three floats; a single number otherwise
    std::vector<double> low;
    std::vector<double> high;

    bool holdsVectors() const;  // of floats
    bool holdsIndices() const;
};

struct Material {
    std::string name;
    std::array<double, 4> color{1, 1, 1, 1};
    bool isBlended = false;
};

// A mesh of one primitive.
struct MeshContent {
    std::uint32_t positions = none;  // accessors
    std::uint32_t normals = none;
    std::uint32_t indices = none;
    std::uint32_t material = none;
};

struct Node {
    std::string name;
    std::vector<std::uint32_t> children;
    std::uint32_t parent = none;
    std::uint32_t mesh = none;
    std::vector<double> matrix;  // empty for the identity
    int type = 0;                // of `extras`
    std::string geometry;
    std::string material;
};

struct Scene {
    std::vector<Node> nodes;
    std::vector<MeshContent> meshes;
    std::vector<Material> materials;
    std::vector<Accessor> accessors;
    std::vector<std::uint32_t> roots;
    std::string binary;

    // Of an accessor that holds such.
    std::array<float, 3> vectorAt(const Accessor& accessor, std::uint64_t i) const;
    std::uint32_t indexAt(const Accessor& accessor, std::uint64_t i) const;
    std::vector<std::array<float, 3>> vectors(std::uint32_t accessor) const;
    std::vector<std::uint32_t> indices(std::uint32_t accessor) const;
};

// Reads as far as it makes sense.
Scene readGlb(std::string bytes, Findings& findings);

}  // namespace readers::glb
