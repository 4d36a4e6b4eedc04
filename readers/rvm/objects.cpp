#include "readers/rvm/objects.h"

#include "readers/rvm/pairing.h"

namespace readers::rvm {

namespace {

constexpr float millimetresPerMetre = 1000.0F;

// In single precision, as the way there was: that gives back the millimetres that were meant.
double millimetres(float metres) {
    return static_cast<double>(metres * millimetresPerMetre);
}

Placement placementOf(const std::array<float, 12>& matrix) {
    Placement placement;
    for (std::size_t i = 0; i < 9; ++i) {
        placement.axes[i / 3][i % 3] = millimetres(matrix[i]);
    }
    for (std::size_t i = 0; i < 3; ++i) {
        placement.origin[i] = millimetres(matrix[9 + i]);
    }
    return placement;
}

class Walk {
public:
    Walk(std::string_view bytes, const RvmContent& rvm, const AttributeContent& text, const ObjectVisitor& visit)
        : bytes_(bytes), rvm_(rvm), text_(text), visit_(visit) {}

    void run(const std::vector<std::uint32_t>& elementOf) {
        open(rvm_.tops, 0);
        while (!open_.empty()) {
            const auto [group, depth] = open_.back();
            open_.pop_back();
            tell(group, depth, elementOf.empty() ? none : elementOf[group]);
            open(rvm_.groups[group].children, depth + 1);
        }
    }

private:
    struct Step {
        std::uint32_t group;
        std::size_t depth;
    };

    bool isPrimitivesOwn(const Group& group) const {
        return group.children.empty() && group.primitives.size() == 1 && group.parent != none &&
               rvm_.groups[group.parent].primitives.empty();
    }
    void open(const std::vector<std::uint32_t>& groups, std::size_t depth) {
        for (auto at = groups.rbegin(); at != groups.rend(); ++at) {
            if (!isPrimitivesOwn(rvm_.groups[*at])) {
                open_.push_back({*at, depth});
            }
        }
    }

    void tell(std::uint32_t index, std::size_t depth, std::uint32_t element) {
        const Group& group = rvm_.groups[index];
        object_.path.resize(depth);
        object_.path.push_back(group.name);
        object_.name = group.name;
        object_.look.material = std::to_string(group.material);
        object_.place = atByte(group.offset);
        addAttributes(element);
        object_.solids.clear();
        addSolids(group);
        for (const std::uint32_t child : group.children) {
            if (isPrimitivesOwn(rvm_.groups[child])) {
                addSolids(rvm_.groups[child]);
            }
        }
        visit_(object_);
    }
    void addAttributes(std::uint32_t element) {
        object_.attributes.clear();
        object_.className.clear();
        if (element == none) {
            return;
        }
        for (const auto& [key, value] : text_.elements[element].attributes) {
            object_.attributes.push_back({{}, key, value, {}, {}, {}});
            if (key == "Class") {
                object_.className = value;
            }
        }
    }
    void addSolids(const Group& group) {
        for (const std::uint32_t index : group.primitives) {
            const Primitive& primitive = rvm_.primitives[index];
            Solid& solid = object_.solids.emplace_back();
            solid.name = group.name;
            solid.look.material = std::to_string(group.material);
            solid.isObstruction = primitive.use == Use::Obstruction;
            solid.isInsulation = primitive.use == Use::Insulation;
            solid.kind = static_cast<std::int32_t>(primitive.kind);
            solid.placement = placementOf(primitive.matrix);
            solid.place = atByte(primitive.offset);
            if (primitive.kind == kindFacets) {
                addTriangles(primitive, solid);
            } else {
                solid.form = SolidForm::Rvm;
                solid.numbers.assign(primitive.parameters.begin(),
                                     primitive.parameters.begin() +
                                         static_cast<std::ptrdiff_t>(primitive.parameterCount));
            }
        }
    }
    void addTriangles(const Primitive& primitive, Solid& solid) const {
        const std::vector<float> numbers = facetsOf(bytes_, primitive);
        for (std::size_t i = 0; i < numbers.size(); i += 6) {
            solid.indices.push_back(static_cast<std::uint32_t>(solid.points.size()));
            solid.points.push_back(solid.placement.at({numbers[i], numbers[i + 1], numbers[i + 2]}));
        }
    }

    std::string_view bytes_;
    const RvmContent& rvm_;
    const AttributeContent& text_;
    const ObjectVisitor& visit_;
    Object object_;
    std::vector<Step> open_;
};

}  // namespace

void readObjects(std::string_view rvm, std::string_view attributes, const ObjectVisitor& visit, Findings& findings) {
    const RvmContent content = readRvm(rvm, findings);
    const AttributeContent text = readAttributes(attributes, findings);
    Pairing pairing;
    if (!text.elements.empty()) {
        pairing = pairFiles(content, text);
        findings.insert(findings.end(), pairing.mismatches.begin(), pairing.mismatches.end());
    }
    Walk(rvm, content, text, visit).run(pairing.elementOf);
}

}  // namespace readers::rvm
