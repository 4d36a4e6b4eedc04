#include "readers/scene/objects.h"

#include "readers/scene/extras.h"
#include "readers/scene/shapes.h"

#include <algorithm>
#include <cmath>

namespace readers::scene {

namespace {

// glTF is in metres with Y up.
const Placement plantOfScene{{{{1000, 0, 0}, {0, 0, 1000}, {0, -1000, 0}}}, {}};

// The root turns the plant by a rotation that is written in decimals; what is a whole number but for that becomes one.
double withoutNoise(double value) {
    const double whole = std::round(value);
    return std::fabs(value - whole) < 1e-6 ? whole : value;
}

Placement placementOf(const Node& node, const Placement& around) {
    const auto [x, y, z, w] = node.rotation;
    const std::array<Point, 3> axes{{{1 - 2 * (y * y + z * z), 2 * (x * y + z * w), 2 * (x * z - y * w)},
                                     {2 * (x * y - z * w), 1 - 2 * (x * x + z * z), 2 * (y * z + x * w)},
                                     {2 * (x * z + y * w), 2 * (y * z - x * w), 1 - 2 * (x * x + y * y)}}};
    Placement placement;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        placement.axes[axis] = around.along(axes[axis]);
        for (double& part : placement.axes[axis]) {
            part = withoutNoise(part);
        }
    }
    placement.origin = around.at(node.translation);
    return placement;
}

class Walk {
public:
    Walk(const Scene& scene, const ObjectVisitor& visit, Findings& findings)
        : scene_(scene), visit_(visit), shapes_(scene, findings), wasMet_(scene.nodes.size()) {}

    void run() {
        open(scene_.roots, 0, plantOfScene);
        while (!open_.empty()) {
            const Step step = open_.back();
            open_.pop_back();
            tell(step);
        }
    }

private:
    struct Step {
        std::uint64_t node;
        std::size_t depth;
        Placement placement;  // of the node itself
    };

    const Node& node(std::uint64_t index) const { return scene_.nodes[index]; }
    bool isShape(std::uint64_t index) const { return node(index).mesh != none && node(index).children.empty(); }

    // Each node once, so that no loop and no second parent makes more of a scene than it holds.
    bool meet(std::uint64_t index) {
        const bool isNew = index < wasMet_.size() && !wasMet_[index];
        if (isNew) {
            wasMet_[index] = true;
        }
        return isNew;
    }

    void open(const std::vector<std::uint64_t>& nodes, std::size_t depth, const Placement& around) {
        const std::size_t first = open_.size();
        for (const std::uint64_t index : nodes) {
            if (meet(index) && node(index).camera == none) {
                open_.push_back({index, depth, placementOf(node(index), around)});
            }
        }
        std::reverse(open_.begin() + static_cast<std::ptrdiff_t>(first), open_.end());
    }

    void tell(const Step& step) {
        const Node& told = node(step.node);
        object_.path.resize(step.depth);
        object_.path.push_back(told.name);
        object_.name = told.name;
        object_.isLayer = told.isLayer;
        object_.place = atItem("nodes", static_cast<std::size_t>(step.node));
        object_.solids.clear();
        object_.texts.clear();
        extras_.read(told.extras, object_);
        addShape(step.node, step.placement);
        std::vector<std::uint64_t> groups;
        for (const std::uint64_t child : told.children) {
            if (child >= scene_.nodes.size() || !isShape(child)) {
                groups.push_back(child);
            } else if (meet(child)) {
                extras_.readTexts(node(child).extras, object_);
                addShape(child, placementOf(node(child), step.placement));
            }
        }
        visit_(object_);
        open(groups, step.depth + 1, step.placement);
    }

    void addShape(std::uint64_t index, const Placement& placement) {
        if (node(index).mesh >= scene_.meshes.size()) {
            return;
        }
        for (const Primitive& primitive : scene_.meshes[node(index).mesh].primitives) {
            Solid solid;
            solid.name = node(index).name;
            solid.place = atItem("nodes", static_cast<std::size_t>(index));
            if (shapes_.read(primitive, placement, solid)) {
                object_.solids.push_back(std::move(solid));
            }
        }
    }

    const Scene& scene_;
    const ObjectVisitor& visit_;
    ExtrasReader extras_;
    ShapeReader shapes_;
    std::vector<bool> wasMet_;
    Object object_;
    std::vector<Step> open_;
};

}  // namespace

void readObjects(const std::filesystem::path& scene, const ObjectVisitor& visit, Findings& findings) {
    const Scene content = readScene(scene, findings);
    Walk(content, visit, findings).run();
}

}  // namespace readers::scene
