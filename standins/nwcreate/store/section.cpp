#include "nwcreate/store/section.h"

#include "gltf/json_text.h"

#include <algorithm>
#include <numbers>

namespace nwcreate {

namespace {

// The mesher's tolerance of chords, in scene units.
constexpr double chordTolerance = 1.0;
constexpr int fewestSides = 12;
constexpr int mostSides = 256;
// Local positions stand on a grid of about a micrometre, so that the rounding of places far away does not make equal
// shapes differ. A power of two, so that every scene unit is on it.
constexpr double gridPerUnit = 1024.0;
constexpr double metrePerGrid = 0.001 / gridPerUnit;

int sidesOf(double radius) {
    if (radius <= chordTolerance) {
        return fewestSides;
    }
    const double half = std::acos(1.0 - chordTolerance / radius);
    return static_cast<int>(std::clamp(std::ceil(std::numbers::pi / half), double{fewestSides}, double{mostSides}));
}

// A unit vector across a unit vector.
Vec3 acrossOf(const Vec3& normal) {
    constexpr double small = 1.0 / 64.0;
    const bool isUpright = std::fabs(normal[0]) < small && std::fabs(normal[1]) < small;
    const Vec3 across = cross(isUpright ? Vec3{0, 1, 0} : Vec3{0, 0, 1}, normal);
    return across * (1.0 / length(across));
}

void put(NumberList<double>& to, const Vec3& point) {
    to.append(point);
}

// Two places nearer than this are nearer to each other than `mostRounded`, counted in the grid.
constexpr double farthestNear = 1e12;

void toLocal(const double* first, std::size_t count, const Vec3& origin, float* local) {
    for (std::size_t i = 0; i < count; i += 3) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const double grid = rounded((first[i + axis] - origin[axis]) * gridPerUnit);
            local[i + axis] = static_cast<float>(grid * metrePerGrid + 0.0);
        }
    }
}

// The same for near places, without a choice for each number; false, and all for nothing, when one is far.
bool nearToLocal(const double* first, std::size_t count, const Vec3& origin, float* local) {
    constexpr std::size_t pair = 6;  // two vertices at a time suit the processor
    const double origins[pair] = {origin[0], origin[1], origin[2], origin[0], origin[1], origin[2]};
    const std::size_t whole = count / pair * pair;
    for (std::size_t i = 0; i < whole; i += pair) {
        for (std::size_t k = 0; k < pair; ++k) {
            const double grid = ((first[i + k] - origins[k]) * gridPerUnit + roundingShift) - roundingShift;
            local[i + k] = static_cast<float>(grid * metrePerGrid + 0.0);
        }
    }
    for (std::size_t i = whole; i < count; ++i) {
        const double grid = ((first[i] - origins[i - whole]) * gridPerUnit + roundingShift) - roundingShift;
        local[i] = static_cast<float>(grid * metrePerGrid + 0.0);
    }
    return areWithin({first, count}, farthestNear) && areWithin(origin, farthestNear);
}

std::span<const float> localPositions(const double* first, std::size_t count, const Vec3& origin) {
    static std::vector<float> local;
    if (local.size() < count) {
        local.resize(count);
    }
    if (!nearToLocal(first, count, origin, local.data())) {
        toLocal(first, count, origin, local.data());
    }
    return {local.data(), count};
}

bool isCountingUp(std::span<const std::uint32_t> indices) {
    for (std::size_t i = 0; i < indices.size(); ++i) {
        if (indices[i] != i) {
            return false;
        }
    }
    return true;
}

// Sign bits in the place of comparisons: one is set by an index beyond the last vertex, or beyond half of all numbers.
bool areBelow(std::span<const std::uint32_t> indices, std::size_t count) {
    if (indices.empty() || count == 0) {
        return indices.empty();
    }
    const auto last = static_cast<std::uint32_t>(std::min<std::size_t>(count - 1, 0x7FFFFFFF));
    std::uint32_t beyond = 0;
    for (const std::uint32_t index : indices) {
        beyond |= (last - index) | index;
    }
    return beyond >> 31U == 0;
}

class PieceAdder {
public:
    PieceAdder(SceneStore& store, NodeShape& shape, std::uint32_t material)
        : store_(store), shape_(shape), material_(material) {}

    void add(DrawMode mode, const double* first, std::size_t count, std::span<const std::uint32_t> indices) {
        if (!shape_.hasOrigin) {
            shape_.hasOrigin = true;
            shape_.origin = {first[0], first[1], first[2]};
        }
        const std::span<const float> local = localPositions(first, count, shape_.origin);
        shape_.pieces.push_back({store_.shapes.add(local, indices), mode, material_});
    }

private:
    SceneStore& store_;
    NodeShape& shape_;
    std::uint32_t material_;
};

}  // namespace

void Section::clear() {
    vertices.clear();
    triangles.clear();
    stripVertices.clear();
    strip.clear();
    loopVertices.clear();
    loopEnds.clear();
    texts.clear();
    fault = nullptr;
    hasColor = false;
    color = Material();
}

void NodeShape::clear() {
    pieces.clear();
    hasOrigin = false;
    texts.clear();
}

void addCircle(Section& section, const Matrix& transform, const Vec3& center, const Vec3& normal, double radius) {
    const double size = length(normal);
    if (!(radius > 0.0) || !(size > 0.0) || !isPlace(radius) || !isPlace(size)) {
        section.fault = "a circle without a radius or a normal";
        return;
    }
    const Vec3 up = normal * (1.0 / size);
    const Vec3 xAxis = acrossOf(up);
    const Vec3 yAxis = cross(up, xAxis);
    const int sides = sidesOf(radius);
    for (int i = 0; i < sides; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / sides;
        const Vec3 arm = xAxis * (radius * std::cos(angle)) + yAxis * (radius * std::sin(angle));
        put(section.loopVertices, transformed(transform, center + arm));
    }
    section.loopEnds.push_back(section.loopVertices.size());
}

void addText(Section& section, const Matrix& transform, const TextStyle& style, std::u16string_view text) {
    if (text.empty()) {
        return;
    }
    if (!arePlaces(transform)) {
        section.fault = "a text without a place";
        return;
    }
    // Chinese characters are as wide as high; letters and digits somewhat more than half of that.
    double width = 0.0;
    for (const char16_t unit : text) {
        width += unit < 0x80 ? 0.6 * style.height : style.height;
    }
    for (const Vec3& corner :
         {Vec3{0, 0, 0}, Vec3{width, 0, 0}, Vec3{width, style.height, 0}, Vec3{0, style.height, 0}}) {
        put(section.loopVertices, transformed(transform, corner));
    }
    section.loopEnds.push_back(section.loopVertices.size());
    section.texts += section.texts.empty() ? "" : ",";
    gltf::JsonText json(section.texts);
    json.beginObject().key("text").string(text).key("font").escaped(style.font).key("height").decimal(style.height);
    json.key("transform").decimals(transform).endObject();
}

const char* faultOf(const Section& section) {
    if (section.fault != nullptr) {
        return section.fault;
    }
    if (!arePlaces(section.vertices) || !arePlaces(section.stripVertices) || !arePlaces(section.loopVertices)) {
        return "a vertex that is no place";
    }
    if (!areBelow(section.triangles, section.vertices.size() / 3) ||
        !areBelow(section.strip, section.stripVertices.size() / 3)) {
        return "an index that names no vertex";
    }
    if (section.triangles.size() % 3 != 0) {
        return "indices that are no multiple of three";
    }
    return section.strip.size() == 1 ? "a line strip of one point" : nullptr;
}

void addSection(SceneStore& store, const Section& section, NodeShape& shape) {
    const bool isEmpty = section.triangles.empty() && section.strip.empty() && section.loopEnds.empty();
    PieceAdder adder(store, shape, section.hasColor && !isEmpty ? store.materialNumber(section.color) : noNumber);
    if (!section.triangles.empty()) {
        adder.add(DrawMode::Triangles, section.vertices.data(), section.vertices.size(), section.triangles);
    }
    if (!section.strip.empty()) {
        const bool isWhole = section.strip.size() * 3 == section.stripVertices.size() && isCountingUp(section.strip);
        adder.add(DrawMode::LineStrip, section.stripVertices.data(), section.stripVertices.size(),
                  isWhole ? std::span<const std::uint32_t>() : section.strip);
    }
    std::size_t from = 0;
    for (const std::size_t to : section.loopEnds) {
        adder.add(DrawMode::LineLoop, section.loopVertices.data() + from, to - from, {});
        from = to;
    }
    shape.texts += !shape.texts.empty() && !section.texts.empty() ? "," : "";
    shape.texts += section.texts;
}

void addSegments(SceneStore& store, const std::vector<double>& vertices, NodeShape& shape) {
    const Material grey{{0.4, 0.4, 0.4}, {0.4, 0.4, 0.4}, 0.0};
    if (!vertices.empty()) {
        PieceAdder(store, shape, store.materialNumber(grey)).add(DrawMode::Lines, vertices.data(), vertices.size(), {});
    }
}

}  // namespace nwcreate
