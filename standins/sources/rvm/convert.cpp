#include "sources/rvm/convert.h"

#include "sources/rvm/surfaces.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace plant::rvm {

namespace {

constexpr int none = -1;
// A primitive of some hundred bytes may make a mesh of half a million points: all meshes of a file together have so
// many before they get coarser. Facets do not count, since the file holds their points.
constexpr std::size_t mostSurfacePoints = 20'000'000;

// How a kind is taken. `sizes` parameters from the first on must not be negative, but for the one at `height`, which
// may turn the primitive over.
struct KindRow {
    bool (*put)(const Primitive& primitive, ShapeOutput& output);
    int sizes;
    int height;
    int angle;
};
constexpr std::array<KindRow, lastKind + 1> kindRows = {{
    {nullptr, 0, none, none},
    {putPyramid, 4, 6, none},
    {putBox, 3, none, none},
    {putRectangularTorus, 3, none, 3},
    {putCircularTorus, 2, none, 2},
    {putEllipticalDish, 1, 1, none},
    {putSphericalDish, 1, 1, none},
    {putSnout, 2, 2, none},
    {putCylinder, 1, 1, none},
    {putSphere, 1, none, none},
    {nullptr, 0, none, none},
    {nullptr, 0, none, none},
}};

constexpr std::array<ConversionText, 9> texts = {{
    {"", ""},
    {"rvm.not-finite", "a primitive with a number that is not finite; left out"},
    {"rvm.singular-matrix", "a primitive whose axes have no length or lie in one plane; left out"},
    {"rvm.zero-size", "a primitive without extent; left out"},
    {"rvm.negative-size", "a primitive with a negative size; left out"},
    {"rvm.bad-angle", "a primitive with an angle that makes no shape; left out"},
    {"rvm.empty-facets", "facets without an area; left out"},
    {"rvm.crossing-facet", "a facet whose outlines cross too often; taken as a fan about its first corner"},
    {"rvm.coarse-mesh", "a surface beyond the points that meshes of one file may have; taken coarser than usual"},
}};

// Turned over so that the height is positive.
void turnOver(Primitive& primitive, const KindRow& row) {
    if (row.height == none || !(primitive.p[static_cast<std::size_t>(row.height)] < 0)) {
        return;
    }
    double& height = primitive.p[static_cast<std::size_t>(row.height)];
    height = -height;
    primitive.placement.z = -primitive.placement.z;
    primitive.placement.isMirrored = !primitive.placement.isMirrored;
    if (primitive.kind == Kind::Snout) {
        for (std::size_t shear = 5; shear < 9; ++shear) {
            primitive.p[shear] = -primitive.p[shear];
        }
    }
}

Conversion check(const Primitive& primitive, const KindRow& row) {
    const std::span sizes(primitive.p.data(), static_cast<std::size_t>(row.sizes));
    if (std::any_of(sizes.begin(), sizes.end(), [](double size) { return size < 0; })) {
        return Conversion::NegativeSize;
    }
    if (row.angle != none && !(primitive.p[static_cast<std::size_t>(row.angle)] > 0)) {
        return Conversion::BadAngle;
    }
    constexpr double steepest = 1.57;
    const auto isSteep = [](double shear) { return std::fabs(shear) > steepest; };
    const bool isCut =
        primitive.kind == Kind::Snout && std::any_of(primitive.p.begin() + 5, primitive.p.end(), isSteep);
    return isCut ? Conversion::BadAngle : Conversion::Taken;
}

Conversion putSurface(const Primitive& primitive, ShapeOutput& output) {
    SurfaceMesh& mesh = output.scratchMesh();
    const bool isCoarse = output.surfacePoints() > mostSurfacePoints;
    surfaceOf(primitive, isCoarse ? Fineness::Coarse : Fineness::Usual, mesh);
    if (mesh.triangles.empty()) {
        return Conversion::ZeroSize;
    }
    output.surfacePoints() += mesh.points.size();
    output.put(mesh);
    return isCoarse ? Conversion::Coarse : Conversion::Taken;
}

Conversion convertSolid(Primitive primitive, const KindRow& row, ShapeOutput& output) {
    turnOver(primitive, row);
    if (const Conversion checked = check(primitive, row); checked != Conversion::Taken) {
        return checked;
    }
    return row.put(primitive, output) ? Conversion::Taken : putSurface(primitive, output);
}

}  // namespace

ConversionText textOf(Conversion conversion) {
    return texts[static_cast<std::size_t>(conversion)];
}

Conversion convertPrimitive(const Primitive& primitive, ShapeOutput& output) {
    if (!primitive.placement.isFinite || !primitive.hasFiniteNumbers) {
        return Conversion::NotFinite;
    }
    if (primitive.placement.isSingular) {
        return Conversion::Singular;
    }
    if (primitive.kind == Kind::Line) {
        return convertLine(primitive, output);
    }
    if (primitive.kind == Kind::Facets) {
        return convertFacets(primitive, output);
    }
    return convertSolid(primitive, kindRows[static_cast<std::size_t>(primitive.kind)], output);
}

void adaptOwnDialect(Primitive& primitive) {
    Placement& placement = primitive.placement;
    const bool hasBox = std::any_of(primitive.box.begin(), primitive.box.end(), [](double side) { return side != 0; });
    if (primitive.kind == Kind::Sphere && !hasBox) {
        primitive.p[0] *= 2;
    }
    if (primitive.kind == Kind::Line) {
        std::rotate(&primitive.box[0], &primitive.box[1], &primitive.box[3]);
        std::rotate(&primitive.box[3], &primitive.box[4], &primitive.box[5] + 1);
        const Vector along = placement.x;
        placement.x = placement.y;
        placement.y = placement.z;
        placement.z = along;
        const double length = placement.sx;
        placement.sx = placement.sy;
        placement.sy = placement.sz;
        placement.sz = length;
    }
}

}  // namespace plant::rvm
