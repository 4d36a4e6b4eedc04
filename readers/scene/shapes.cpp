#include "readers/scene/shapes.h"

#include "readers/scene/extras.h"

#include <algorithm>
#include <numeric>

namespace readers::scene {

namespace {

enum Mode : std::uint64_t { Points = 0, Lines = 1, LineLoop = 2, LineStrip = 3, Strip = 5, Fan = 6 };

bool isOf(const Scene& scene, std::uint64_t number, std::uint64_t components, bool isFloat) {
    return number < scene.accessors.size() && isInBounds(scene, scene.accessors[number]) &&
           scene.accessors[number].components == components &&
           (scene.accessors[number].componentType == floatType) == isFloat;
}

using Corners = std::vector<std::uint32_t>;

Corners linesOf(const Corners& strip, bool isClosed) {
    Corners lines;
    for (std::size_t i = 1; i < strip.size(); ++i) {
        lines.insert(lines.end(), {strip[i - 1], strip[i]});
    }
    if (isClosed && strip.size() > 2) {
        lines.insert(lines.end(), {strip.back(), strip.front()});
    }
    return lines;
}

// Every other triangle of a strip is turned over.
Corners trianglesOf(const Corners& corners, bool isFan) {
    Corners triangles;
    for (std::size_t i = 2; i < corners.size(); ++i) {
        const bool isTurned = !isFan && i % 2 == 1;
        const std::uint32_t first = isFan ? corners[0] : corners[i - 2];
        triangles.insert(triangles.end(),
                         {isTurned ? corners[i - 1] : first, isTurned ? first : corners[i - 1], corners[i]});
    }
    return triangles;
}

void setForm(std::uint64_t mode, Corners corners, Solid& solid) {
    switch (mode) {
    case Points:
        solid.form = SolidForm::Points;
        break;
    case Lines:
    case LineLoop:
    case LineStrip:
        solid.form = SolidForm::Lines;
        solid.indices = mode == Lines ? std::move(corners) : linesOf(corners, mode == LineLoop);
        break;
    default:
        solid.form = SolidForm::Triangles;
        solid.indices = mode == trianglesMode ? std::move(corners) : trianglesOf(corners, mode == Fan);
    }
    const std::size_t corner = solid.form == SolidForm::Triangles ? 3 : 2;
    solid.indices.resize(solid.indices.size() / corner * corner);
}

}  // namespace

ShapeReader::ShapeReader(const Scene& scene, Findings& findings) : scene_(scene), findings_(findings) {
    ExtrasReader extras;
    for (const Material& material : scene.materials) {
        looks_.push_back(extras.lookOf(material));
    }
}

bool ShapeReader::readCorners(const Primitive& primitive, std::size_t vertices, Corners& corners) const {
    if (primitive.indices == none) {
        corners.resize(vertices);
        std::iota(corners.begin(), corners.end(), 0U);
        return true;
    }
    if (!isOf(scene_, primitive.indices, 1, false)) {
        return false;
    }
    corners = indicesOf(scene_, scene_.accessors[primitive.indices]);
    return std::all_of(corners.begin(), corners.end(), [vertices](std::uint32_t corner) { return corner < vertices; });
}

bool ShapeReader::read(const Primitive& primitive, const Placement& placement, Solid& solid) {
    if (!isOf(scene_, primitive.positions, 3, true)) {
        note(findings_, solid.place, "the positions of its mesh cannot be used");
        return false;
    }
    const std::vector<std::array<float, 3>> local = positionsOf(scene_, scene_.accessors[primitive.positions]);
    Corners corners;
    if (!readCorners(primitive, local.size(), corners) || primitive.mode > Fan) {
        note(findings_, solid.place, "the indices of its mesh cannot be used");
        return false;
    }
    solid.points.reserve(local.size());
    for (const std::array<float, 3>& p : local) {
        solid.points.push_back(placement.at({p[0], p[1], p[2]}));
    }
    setForm(primitive.mode, std::move(corners), solid);
    if (primitive.material < looks_.size()) {
        solid.look = looks_[primitive.material];
    }
    return true;
}

}  // namespace readers::scene
