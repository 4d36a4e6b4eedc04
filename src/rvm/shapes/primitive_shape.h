// Primitives that have an exact counterpart in the RVM format: kind, matrix and parameters of each.
#pragma once

#include "platform/primitives.h"
#include "rvm/format/writer.h"

#include <array>
#include <cstdint>
#include <span>

namespace rvm {

enum Kind : std::uint32_t {
    kindBox = 2,
    kindTorus = 4,
    kindDish = 5,
    kindSnout = 7,
    kindCylinder = 8,
    kindSphere = 9,
    kindLine = 10,
    kindFacets = 11,
};

// Lengths of the matrix are metres, parameters are millimetres (a sweep radians): the matrix scales them.
struct PrimitiveShape {
    Kind kind = kindFacets;
    Matrix matrix{};
    std::array<float, 9> parameters{};
    std::size_t parameterCount = 0;

    std::span<const float> used() const { return {parameters.data(), parameterCount}; }
    // True when nothing is NaN or infinite.
    bool isFinite() const;
};

// The matrix of a facet list, whose vertices are world millimetres.
const Matrix& facetMatrix();

// Each fills `shape` for an object of its class. Degenerate primitives (equal points, zero axes) give shapes as
// degenerate; sizes out of the range of single precision give shapes that are not finite. A torus of an unknown arc
// kind counts as one of kind 0.
void boxShape(const HextBox3D& box, PrimitiveShape& shape);
void cylinderShape(const HextCylinder3D& cylinder, PrimitiveShape& shape);
void coneShape(const HextConcone3D& cone, PrimitiveShape& shape);
void eccentricConeShape(const HextEcone3D& cone, PrimitiveShape& shape);
void dishShape(const HextOval3D& oval, PrimitiveShape& shape);
void sphereShape(const HextSphere3D& sphere, PrimitiveShape& shape);
void torusShape(const HextTorus3D& torus, PrimitiveShape& shape);
// A straight line between two points, of kind 10.
void lineShape(const HxGePoint3D& start, const HxGePoint3D& end, PrimitiveShape& shape);

// The box around a shape in its own frame, in millimetres before the matrix: kinds 2 to 10.
Box localBox(const PrimitiveShape& shape);

}  // namespace rvm
