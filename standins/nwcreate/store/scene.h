// What a scene is made of so far: shapes, meshes and settled nodes on disk, materials and settings in memory.
//
// The calls of the library (api/) turn what they are given into pieces, nodes and materials of this store; each gets
// the number under which it stands in the scene file, and equal ones get one number. Shapes and nodes go out to spools
// as they come, so that a scene may be larger than memory; writing/ puts the parts together into files.
#pragma once

#include "nwcreate/numbers/vectors.h"
#include "nwcreate/store/shapes.h"

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace nwcreate {

enum class DrawMode : std::uint8_t { Lines = 1, LineLoop = 2, LineStrip = 3, Triangles = 4 };

inline constexpr std::uint32_t noNumber = 0xFFFFFFFF;

// Colours in sRGB, 0 to 1.
struct Material {
    Vec3 ambient{0.5, 0.5, 0.5};
    Vec3 diffuse{0.5, 0.5, 0.5};
    double transparency = 0.0;
    auto operator<=>(const Material&) const = default;
};

struct Piece {
    std::uint32_t shape = 0;
    DrawMode mode = DrawMode::Triangles;
    std::uint32_t material = noNumber;  // of the section; the node's goes before it
};

struct View {
    Vec3 worldUp{0, 0, 1};
    Vec3 position{0, 0, 0};
    Vec3 target{0, 1, 0};
    bool operator==(const View&) const = default;
};

// A child or root: the slot of a node that is open, or the number of one that is settled.
struct NodeLink {
    std::uint32_t number = 0;
    bool isSettled = false;
};

struct SceneSettings {
    std::optional<std::array<Vec3, 4>> background;
    std::optional<Vec3> ambient;
    std::optional<View> currentView;
    std::optional<View> homeView;
};

class SceneStore {
public:
    SceneStore(const std::string& spoolFolder, std::uint64_t fileLimit);

    // Numbers in the arrays of the scene.
    std::uint32_t materialNumber(const Material& material);
    std::uint32_t meshNumber(std::span<const Piece> pieces, std::uint32_t nodeMaterial);
    std::uint32_t addNode(std::string_view json);
    // A node of at most so many bytes is written to the place; `keepNode` takes it up to `end`.
    char* nodeRoom(std::size_t size);
    std::uint32_t keepNode(const char* end);
    // A node with nothing but a mesh and a place, in scene units.
    std::uint32_t addShapeNode(std::uint32_t mesh, const Vec3& origin);

    std::uint32_t nodeCount() const { return nodeCount_; }
    std::uint32_t meshCount() const { return meshCount_; }
    std::size_t materialCount() const { return materials_.size(); }
    std::uint64_t fileLimit() const { return fileLimit_; }
    std::string failure() const;

    // Values of the arrays, separated by commas.
    const std::string& materialJson() const { return materialJson_; }
    Spool& meshJson() { return meshJson_; }
    Spool& nodeJson() { return nodeJson_; }

    ShapeStore shapes;
    SceneSettings settings;
    std::vector<NodeLink> roots;

private:
    // A mesh of one piece.
    struct SingleMesh {
        std::uint32_t material;
        DrawMode mode;
        std::uint32_t number;
        std::uint32_t next;  // of the same shape
    };

    std::uint32_t writeMesh(std::span<const Piece> pieces, std::uint32_t nodeMaterial);

    std::uint64_t fileLimit_;
    std::map<Material, std::uint32_t> materials_;
    std::string materialJson_;
    std::vector<std::uint32_t> firstMeshes_;  // by shape
    std::vector<SingleMesh> meshes_;
    Spool meshJson_;
    Spool nodeJson_;
    std::uint32_t meshCount_ = 0;
    std::uint32_t nodeCount_ = 0;
};

}  // namespace nwcreate
