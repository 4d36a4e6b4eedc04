#include "tessaro/check/scene/rules.h"

#include <algorithm>
#include <cmath>

namespace check {

namespace {

using namespace readers::scene;
using readers::Findings;

class SceneCheck {
public:
    SceneCheck(const Scene& scene, Findings& findings) : scene_(scene), findings_(findings) {}

    void run() {
        checkViews();
        checkAccessors();
        checkMeshes();
        checkNodes();
        checkTree();
    }

private:
    void expect(bool good, const char* array, std::size_t index, std::string text) {
        if (!good) {
            readers::note(findings_, readers::atItem(array, index), std::move(text));
        }
    }

    void checkViews() {
        for (std::size_t i = 0; i < scene_.views.size(); ++i) {
            const BufferView& view = scene_.views[i];
            const std::uint64_t room = view.buffer < scene_.buffers.size() ? scene_.buffers[view.buffer].size() : 0;
            expect(view.size > 0 && view.offset <= room && view.size <= room - view.offset, "bufferViews", i,
                   "it does not fit into its buffer");
            expect(view.stride % 4 == 0 && view.stride <= 252, "bufferViews", i, "a stride that cannot be");
        }
    }

    void checkAccessors() {
        isGood_.resize(scene_.accessors.size());
        for (std::size_t i = 0; i < scene_.accessors.size(); ++i) {
            const Accessor& accessor = scene_.accessors[i];
            isGood_[i] = isInBounds(scene_, accessor);
            expect(isGood_[i], "accessors", i, "it does not fit into its buffer view, or is of an unknown type");
        }
    }

    bool isUsable(std::uint64_t accessor, std::uint64_t components) const {
        return accessor < isGood_.size() && isGood_[accessor] && scene_.accessors[accessor].components == components;
    }

    void checkMeshes() {
        isMeasured_.resize(scene_.accessors.size());
        for (std::size_t i = 0; i < scene_.meshes.size(); ++i) {
            expect(!scene_.meshes[i].primitives.empty(), "meshes", i, "it has no primitives");
            for (const Primitive& primitive : scene_.meshes[i].primitives) {
                checkPrimitive(primitive, i);
            }
        }
    }

    void checkPrimitive(const Primitive& primitive, std::size_t mesh) {
        expect(primitive.material == none || primitive.material < scene_.materials.size(), "meshes", mesh,
               "its material is not there");
        if (!isUsable(primitive.positions, 3) || scene_.accessors[primitive.positions].componentType != floatType) {
            expect(false, "meshes", mesh, "its positions cannot be used");
            return;
        }
        const std::uint64_t vertices = scene_.accessors[primitive.positions].count;
        std::uint64_t drawn = vertices;
        if (primitive.indices != none) {
            if (!isUsable(primitive.indices, 1) || scene_.accessors[primitive.indices].componentType == floatType) {
                expect(false, "meshes", mesh, "its indices cannot be used");
                return;
            }
            drawn = scene_.accessors[primitive.indices].count;
            checkIndices(primitive.indices, vertices, mesh);
        }
        checkPositions(primitive.positions);
        expect(primitive.mode <= 6, "meshes", mesh, "an unknown mode");
        expect(primitive.mode != trianglesMode || drawn % 3 == 0, "meshes", mesh, "its triangles are not whole");
        expect(primitive.mode != 1 || drawn % 2 == 0, "meshes", mesh, "its lines are not whole");
        expect(primitive.mode == 0 || drawn >= 2, "meshes", mesh, "a line of one point");
    }

    void checkIndices(std::uint64_t number, std::uint64_t vertices, std::size_t mesh) {
        for (const std::uint32_t index : indicesOf(scene_, scene_.accessors[number])) {
            if (index >= vertices) {
                expect(false, "meshes", mesh, "the index " + std::to_string(index) + " names no vertex");
                return;
            }
        }
    }

    // Each accessor once, however many meshes use it.
    void checkPositions(std::uint64_t number) {
        if (isMeasured_[number]) {
            return;
        }
        isMeasured_[number] = true;
        const Accessor& accessor = scene_.accessors[number];
        const std::vector<std::array<float, 3>> positions = positionsOf(scene_, accessor);
        std::array<float, 3> low = positions[0];
        std::array<float, 3> high = positions[0];
        for (const std::array<float, 3>& position : positions) {
            for (std::size_t axis = 0; axis < 3; ++axis) {
                if (!std::isfinite(position[axis])) {
                    expect(false, "accessors", number, "a position that is not finite");
                    return;
                }
                low[axis] = std::min(low[axis], position[axis]);
                high[axis] = std::max(high[axis], position[axis]);
            }
        }
        const auto isSame = [](const std::vector<double>& said, const std::array<float, 3>& found) {
            return said.size() == 3 && std::equal(said.begin(), said.end(), found.begin(),
                                                  [](double a, float b) { return static_cast<float>(a) == b; });
        };
        expect(isSame(accessor.min, low) && isSame(accessor.max, high), "accessors", number,
               "min and max are not those of its positions");
    }

    void checkNodes() {
        for (std::size_t i = 0; i < scene_.nodes.size(); ++i) {
            const Node& node = scene_.nodes[i];
            expect(node.mesh == none || node.mesh < scene_.meshes.size(), "nodes", i, "its mesh is not there");
            expect(node.camera == none || node.camera < scene_.cameras, "nodes", i, "its camera is not there");
            double square = 0.0;
            for (const double part : node.rotation) {
                square += part * part;
            }
            expect(std::fabs(square - 1.0) < 1e-6, "nodes", i, "its rotation is none");
            expect(std::all_of(node.translation.begin(), node.translation.end(),
                               [](double part) { return std::isfinite(part); }),
                   "nodes", i, "its translation is not finite");
            expect(!node.isLayer || !node.name.empty(), "nodes", i, "an object without a name");
        }
    }

    // Every node has one parent at most, the roots have none, and no node stands below itself.
    void checkTree() {
        std::vector<std::uint64_t> parents(scene_.nodes.size(), none);
        for (std::size_t i = 0; i < scene_.nodes.size(); ++i) {
            for (const std::uint64_t child : scene_.nodes[i].children) {
                if (child >= parents.size()) {
                    expect(false, "nodes", i, "a child is not there");
                } else {
                    expect(parents[child] == none, "nodes", static_cast<std::size_t>(child), "it has two parents");
                    parents[child] = i;
                }
            }
        }
        for (const std::uint64_t root : scene_.roots) {
            if (root >= parents.size() || parents[root] != none) {
                readers::note(findings_, "scene", "a root is not there, or stands below a node");
            }
        }
        checkLoops(parents);
    }

    void checkLoops(const std::vector<std::uint64_t>& parents) {
        // The walk from which a node was first met; meeting one of the same walk again closes a loop.
        std::vector<std::uint64_t> metIn(parents.size(), none);
        for (std::size_t i = 0; i < parents.size(); ++i) {
            std::uint64_t at = i;
            while (at != none && metIn[at] == none) {
                metIn[at] = i;
                at = parents[at];
            }
            expect(at == none || metIn[at] != i, "nodes", i, "it stands below itself");
        }
    }

    const Scene& scene_;
    Findings& findings_;
    std::vector<bool> isGood_;
    std::vector<bool> isMeasured_;
};

}  // namespace

void sceneNumbers(const readers::scene::Scene& scene, Findings& findings) {
    SceneCheck(scene, findings).run();
}

}  // namespace check
