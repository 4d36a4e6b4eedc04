// Solids of the primitive classes.
//
// Each operation fills a body from the fields of a primitive, or gives the reason why there is none; the body is then
// not to be used. Directions may have any length but 0.
#pragma once

#include "platform/primitives.h"
#include "tolmar/entity.h"
#include "tolmar/solid.h"

#include <initializer_list>

namespace plant {

// The body of any parametric solid; eUnknownClass for any other class.
[[nodiscard]] Tl::ErrorStatus buildBody(const HextPrimary3D& primitive, tolmar::Body& body);

[[nodiscard]] Tl::ErrorStatus buildBox(const HextBox3D& box, tolmar::Body& body);
[[nodiscard]] Tl::ErrorStatus buildFrustum(const HextSqucone3D& frustum, tolmar::Body& body);
[[nodiscard]] Tl::ErrorStatus buildSquareRound(const HextSqucir3D& transition, tolmar::Body& body);

[[nodiscard]] Tl::ErrorStatus buildCylinder(const HextCylinder3D& cylinder, tolmar::Body& body);
[[nodiscard]] Tl::ErrorStatus buildSlopedCylinder(const HextScylinder3D& cylinder, tolmar::Body& body);
[[nodiscard]] Tl::ErrorStatus buildCone(const HextConcone3D& cone, tolmar::Body& body);
[[nodiscard]] Tl::ErrorStatus buildEccentricCone(const HextEcone3D& cone, tolmar::Body& body);

[[nodiscard]] Tl::ErrorStatus buildSphere(const HextSphere3D& sphere, tolmar::Body& body);
[[nodiscard]] Tl::ErrorStatus buildHead(const HextOval3D& head, tolmar::Body& body);
[[nodiscard]] Tl::ErrorStatus buildTorus(const HextTorus3D& torus, tolmar::Body& body);
[[nodiscard]] Tl::ErrorStatus buildSquareTorus(const HextSqutorus3D& torus, tolmar::Body& body);
[[nodiscard]] Tl::ErrorStatus buildRevolve(const HextRevolve& revolve, tolmar::Body& body);

[[nodiscard]] Tl::ErrorStatus buildWedge(const HextWedge3D& wedge, tolmar::Body& body);
[[nodiscard]] Tl::ErrorStatus buildPrism(const HextPrism3D& prism, tolmar::Body& body);
[[nodiscard]] Tl::ErrorStatus buildSaddle(const HextSaddle3D& saddle, tolmar::Body& body);
[[nodiscard]] Tl::ErrorStatus buildExtrusion(const HextSpolygon& extrusion, tolmar::Body& body);

// Lengths up to this count as nothing.
inline constexpr double leastLength = 1e-6;
inline constexpr double wholeTurn = 2 * tlGePi;

// eOk, eNotFinite or eTooLarge.
[[nodiscard]] Tl::ErrorStatus checkNumbers(std::initializer_list<double> numbers);
[[nodiscard]] Tl::ErrorStatus checkPoints(std::initializer_list<HxGePoint3D> points);
[[nodiscard]] Tl::ErrorStatus checkDirections(std::initializer_list<HxGeVector3D> directions);

// The first of several checks that failed.
[[nodiscard]] inline Tl::ErrorStatus firstFailure(std::initializer_list<Tl::ErrorStatus> checks) {
    for (const Tl::ErrorStatus status : checks) {
        if (status != Tl::eOk) {
            return status;
        }
    }
    return Tl::eOk;
}

// The vector at length 1, however short it is; the zero vector for a zero vector.
HxGeVector3D unitOf(const HxGeVector3D& v);

// A right-handed frame of unit vectors.
struct Axes {
    HxGeVector3D x;
    HxGeVector3D y;
    HxGeVector3D z;
};
// Z as given, X the part of `x` across it. eZeroDirection when there is none.
[[nodiscard]] Tl::ErrorStatus makeAxes(const HxGeVector3D& z, const HxGeVector3D& x, Axes& axes);
// The same with any X across Z.
[[nodiscard]] Tl::ErrorStatus makeAxes(const HxGeVector3D& z, Axes& axes);

}  // namespace plant
