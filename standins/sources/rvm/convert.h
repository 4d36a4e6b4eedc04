// From a primitive of the file to primitives of the model: the parametric one that says it exactly, else a mesh.
#pragma once

#include "sources/rvm/primitive.h"
#include "sources/rvm/shape_output.h"

namespace plant::rvm {

enum class Conversion : std::uint8_t {
    Taken,
    NotFinite,
    Singular,
    ZeroSize,
    NegativeSize,
    BadAngle,
    Empty,
    Crossing,  // taken all the same
    Coarse     // taken all the same
};
inline bool isTaken(Conversion conversion) {
    return conversion == Conversion::Taken || conversion >= Conversion::Crossing;
}

// Nothing is put out where the result is not taken. Refuses facets that are not as long as their chunk says.
Conversion convertPrimitive(const Primitive& primitive, ShapeOutput& output);

struct ConversionText {
    const char* code;
    const char* text;  // what it is, and what became of it
};
ConversionText textOf(Conversion conversion);

// RVMOUT writes lines along X, and in its default form, which has no bounding boxes, radii of spheres. Turns such
// primitives into the usual form.
void adaptOwnDialect(Primitive& primitive);

// The families. Each is called for kinds of its own with finite numbers and a placement that is not singular; false
// where no parametric solid says the primitive.
bool putPyramid(const Primitive& primitive, ShapeOutput& output);
bool putBox(const Primitive& primitive, ShapeOutput& output);
bool putRectangularTorus(const Primitive& primitive, ShapeOutput& output);
bool putCircularTorus(const Primitive& primitive, ShapeOutput& output);
bool putEllipticalDish(const Primitive& primitive, ShapeOutput& output);
bool putSphericalDish(const Primitive& primitive, ShapeOutput& output);
bool putSnout(const Primitive& primitive, ShapeOutput& output);
bool putCylinder(const Primitive& primitive, ShapeOutput& output);
bool putSphere(const Primitive& primitive, ShapeOutput& output);
Conversion convertLine(const Primitive& primitive, ShapeOutput& output);
Conversion convertFacets(const Primitive& primitive, ShapeOutput& output);

// Sizes up to this count as nothing, in millimetres; the platform makes no solid of them.
inline constexpr double leastLength = 1e-6;

}  // namespace plant::rvm
