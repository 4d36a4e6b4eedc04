// A scene in binary glTF 2.0, read back into the arrays that the format has. Nothing is trusted: what hinders the
// reading becomes a finding, and what a number names need not be there.
//
//   file   = "glTF" word 2  word length  { chunk }
//   chunk  = word n  type  n bytes, n a multiple of four; the first is JSON, the second, if any, is the first buffer
//   JSON   = asset, scene, scenes, nodes, meshes, materials, accessors, bufferViews, buffers, cameras
//   buffer = the second chunk, or a file beside the scene that its "uri" names
//
// docs/scene.md tells what NVOUT puts there. glTF is in metres with Y up; readers/scene/objects.h gives plant objects.
#pragma once

#include "readers/finding.h"
#include "readers/mapped_file.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace readers::scene {

inline constexpr std::uint64_t none = ~std::uint64_t{0};

struct BufferView {
    std::uint64_t buffer = none;
    std::uint64_t offset = 0;
    std::uint64_t size = 0;
    std::uint64_t stride = 0;  // 0: as wide as an element
};

struct Accessor {
    std::uint64_t view = none;
    std::uint64_t offset = 0;
    std::uint64_t count = 0;
    std::uint64_t componentType = 0;
    std::uint64_t components = 0;  // 1 for "SCALAR", 3 for "VEC3"; 0: anything else
    std::vector<double> min;
    std::vector<double> max;
};

struct Primitive {
    std::uint64_t positions = none;  // accessor
    std::uint64_t indices = none;    // accessor
    std::uint64_t material = none;
    std::uint64_t mode = 4;
};

struct Mesh {
    std::vector<Primitive> primitives;
};

struct Material {
    std::array<double, 4> color{1, 1, 1, 1};
    bool isBlended = false;
    std::string extras;
};

struct Node {
    std::string name;
    std::vector<std::uint64_t> children;
    std::uint64_t mesh = none;
    std::uint64_t camera = none;
    std::array<double, 3> translation{};
    std::array<double, 4> rotation{0, 0, 0, 1};
    bool isLayer = false;
    std::string extras;  // JSON, as it stands but for blanks; empty when there are none
};

struct Scene {
    std::string title;
    std::string extras;
    std::vector<std::uint64_t> roots;
    std::vector<Node> nodes;
    std::vector<Mesh> meshes;
    std::vector<Material> materials;
    std::vector<Accessor> accessors;
    std::vector<BufferView> views;
    std::vector<std::string_view> buffers;           // in `files`
    std::vector<std::filesystem::path> bufferFiles;  // those beside the scene
    std::uint64_t cameras = 0;
    std::vector<std::unique_ptr<MappedFile>> files;

    Scene();
    ~Scene();
    Scene(Scene&&) noexcept;
    Scene& operator=(Scene&&) noexcept;
};

// Reads the file and its buffer files as far as it makes sense.
Scene readScene(const std::filesystem::path& path, Findings& findings);
inline constexpr std::uint64_t shortType = 5123;
inline constexpr std::uint64_t intType = 5125;
inline constexpr std::uint64_t floatType = 5126;
inline constexpr std::uint64_t trianglesMode = 4;

// Whether all elements of an accessor stand in a buffer. The other two ask for one of which that is true, of the type
// float and of three components, or of a type of whole numbers and one component.
bool isInBounds(const Scene& scene, const Accessor& accessor);
std::vector<std::array<float, 3>> positionsOf(const Scene& scene, const Accessor& accessor);
std::vector<std::uint32_t> indicesOf(const Scene& scene, const Accessor& accessor);

}  // namespace readers::scene
