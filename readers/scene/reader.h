// Reader of scenes in binary glTF that trusts nothing: what a viewer would stumble over becomes a finding. It shares no
// code with the writer.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace gltfcheck {

// Something wrong: `place` is a part of the scene ("nodes[17]") or of the file ("chunk 2").
struct Finding {
    std::string place;
    std::string text;
};
using Findings = std::vector<Finding>;

// More than these are not noted.
inline constexpr std::size_t mostFindings = 100;
void note(Findings& findings, std::string place, std::string text);
// "nodes[17]"
std::string placeOf(std::string_view array, std::size_t index);

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

class MappedFile;

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
// Everything that numbers in a scene that was read promise: what they name is there, is whole and fits.
void checkScene(const Scene& scene, Findings& findings);

// Bytes of an element of an accessor, which must be in bounds: whether they are, and reading them.
bool isInBounds(const Scene& scene, const Accessor& accessor);
std::vector<std::array<float, 3>> positionsOf(const Scene& scene, const Accessor& accessor);
std::vector<std::uint32_t> indicesOf(const Scene& scene, const Accessor& accessor);

}  // namespace gltfcheck
