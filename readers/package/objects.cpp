#include "readers/package/objects.h"

#include "readers/package/archive.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace readers::package {

namespace {

// A mesh that belongs to an object.
struct Instance {
    std::size_t scene;
    std::uint32_t node;
};

// All but the meshes.
class Parts final : public PackageVisitor {
public:
    std::unordered_map<std::string, Look> looks;
    std::vector<Tree> trees;
    std::vector<std::string> treeFiles;
    std::unordered_map<std::string, std::vector<Attribute>> attributes;
    std::vector<std::string> scenes;  // entries
    std::unordered_map<std::string, std::vector<Instance>> instances;

private:
    void material(const std::string&, Material&& material) override {
        Look look;
        look.color = {material.diffuse[0], material.diffuse[1], material.diffuse[2]};
        look.material = material.id;
        look.transparency = material.transparency;
        looks.try_emplace(material.id, std::move(look));
    }
    void startTree(std::string&& name) override { trees.push_back({std::move(name), {}}); }
    void node(const std::string& file, TreeNode&& node) override {
        treeFiles.resize(trees.size(), file);
        trees.back().nodes.push_back(std::move(node));
    }
    void property(const std::string&, Property&& row) override {
        attributes[row.databaseId].push_back(
            {std::move(row.category), std::move(row.name), std::move(row.value), {}, {}, std::move(row.valueType)});
    }
    void scene(const std::string& file, glb::Scene&& scene) override {
        for (std::uint32_t i = 0; i < scene.nodes.size(); ++i) {
            if (scene.nodes[i].mesh != glb::none) {
                instances[scene.nodes[i].name].push_back({scenes.size(), i});
            }
        }
        scenes.push_back(file);
    }
};

// Column by column, as glTF has it.
using Matrix = std::array<double, 16>;

Matrix product(const Matrix& a, const Matrix& b) {
    Matrix c{};
    for (std::size_t column = 0; column < 4; ++column) {
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t i = 0; i < 4; ++i) {
                c[4 * column + row] += a[4 * i + row] * b[4 * column + i];
            }
        }
    }
    return c;
}

// Metres with Y up into millimetres with Z up.
constexpr Matrix plantOfScene{1000, 0, 0, 0, 0, 0, 1000, 0, 0, -1000, 0, 0, 0, 0, 0, 1};

// The root's matrix is this one's inverse in decimals; what is a whole number but for that becomes one.
Placement placementOf(const Matrix& m) {
    Placement placement;
    for (std::size_t i = 0; i < 9; ++i) {
        const double value = m[4 * (i / 3) + i % 3];
        placement.axes[i / 3][i % 3] = std::fabs(value - std::round(value)) < 1e-9 ? std::round(value) : value;
    }
    placement.origin = {m[12], m[13], m[14]};
    return placement;
}

Placement placementIn(const glb::Scene& scene, std::uint32_t node) {
    Matrix matrix{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    std::size_t left = deepestTree;
    for (; node < scene.nodes.size() && left > 0; node = scene.nodes[node].parent, --left) {
        const std::vector<double>& own = scene.nodes[node].matrix;
        if (own.size() == 16) {
            Matrix step;
            std::copy(own.begin(), own.end(), step.begin());
            matrix = product(step, matrix);
        }
    }
    return placementOf(product(plantOfScene, matrix));
}

class Teller {
public:
    Teller(const std::filesystem::path& file, Parts& parts, const ObjectVisitor& visit, Findings& findings)
        : file_(file), parts_(parts), visit_(visit), findings_(findings) {}

    void tell(const Tree& tree, const std::string& treeFile) {
        std::vector<std::size_t> depths;
        for (std::size_t i = 0; i < tree.nodes.size(); ++i) {
            const TreeNode& node = tree.nodes[i];
            depths.push_back(depthOf(node, depths));
            Object object;
            object.place = treeFile + ": " + atItem("nodes", i);
            if (depths[i] == deepestTree) {
                note(findings_, object.place, "it stands deeper than in any tree");
                depths[i] = 0;
            }
            addPath(tree, depths, i, object.path);
            object.name = node.name;
            object.id = node.databaseId;
            fill(object);
            visit_(object);
        }
    }

private:
    static std::size_t depthOf(const TreeNode& node, const std::vector<std::size_t>& depths) {
        const bool hasParent = node.parent >= 0 && static_cast<std::size_t>(node.parent) < depths.size();
        return hasParent ? depths[static_cast<std::size_t>(node.parent)] + 1 : 0;
    }
    static void addPath(const Tree& tree, const std::vector<std::size_t>& depths, std::size_t node,
                        std::vector<std::string>& path) {
        path.resize(depths[node] + 1);
        for (std::size_t level = path.size(); level-- > 0;) {
            path[level] = tree.nodes[node].name;
            node = level > 0 ? static_cast<std::size_t>(tree.nodes[node].parent) : node;
        }
    }

    void fill(Object& object) {
        if (const auto at = parts_.attributes.find(object.id); at != parts_.attributes.end()) {
            object.attributes = std::move(at->second);
            parts_.attributes.erase(at);
        }
        if (const auto at = parts_.instances.find(object.id); at != parts_.instances.end()) {
            for (const Instance& instance : at->second) {
                addMesh(instance, object);
            }
            parts_.instances.erase(at);
        }
    }

    const glb::Scene& sceneOf(std::size_t number) {
        if (number != loaded_) {
            Findings known;
            scene_ = readScene(file_, parts_.scenes[number], known);
            loaded_ = number;
        }
        return scene_;
    }

    void addMesh(const Instance& instance, Object& object) {
        const glb::Scene& scene = sceneOf(instance.scene);
        if (instance.node >= scene.nodes.size() || scene.nodes[instance.node].mesh >= scene.meshes.size()) {
            return;
        }
        const glb::Node& node = scene.nodes[instance.node];
        const glb::MeshContent& mesh = scene.meshes[node.mesh];
        Solid solid;
        solid.name = node.geometry;
        solid.place = parts_.scenes[instance.scene] + ": " + atItem("nodes", instance.node);
        if (const auto look = parts_.looks.find(node.material); look != parts_.looks.end()) {
            solid.look = look->second;
        }
        if (!readMesh(scene, mesh, placementIn(scene, instance.node), solid)) {
            return note(findings_, solid.place, "its mesh cannot be used");
        }
        object.solids.push_back(std::move(solid));
    }

    static bool readMesh(const glb::Scene& scene, const glb::MeshContent& mesh, const Placement& placement,
                         Solid& solid) {
        const auto& accessors = scene.accessors;
        if (mesh.positions >= accessors.size() || mesh.indices >= accessors.size() ||
            !accessors[mesh.positions].holdsVectors() || !accessors[mesh.indices].holdsIndices()) {
            return false;
        }
        for (const std::array<float, 3>& p : scene.vectors(mesh.positions)) {
            solid.points.push_back(placement.at({p[0], p[1], p[2]}));
        }
        solid.indices = scene.indices(mesh.indices);
        solid.indices.resize(solid.indices.size() / 3 * 3);
        return std::all_of(solid.indices.begin(), solid.indices.end(),
                           [&solid](std::uint32_t index) { return index < solid.points.size(); });
    }

    std::filesystem::path file_;
    Parts& parts_;
    const ObjectVisitor& visit_;
    Findings& findings_;
    glb::Scene scene_;
    std::size_t loaded_ = static_cast<std::size_t>(-1);
};

}  // namespace

void readObjects(const std::filesystem::path& package, const ObjectVisitor& visit, Findings& findings) {
    Parts parts;
    readPackage(package, parts, findings);
    parts.treeFiles.resize(parts.trees.size());
    Teller teller(package, parts, visit, findings);
    for (std::size_t i = 0; i < parts.trees.size(); ++i) {
        teller.tell(parts.trees[i], parts.treeFiles[i]);
    }
}

}  // namespace readers::package
