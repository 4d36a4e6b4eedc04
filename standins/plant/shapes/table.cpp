#include "plant/shapes/builder.h"

namespace plant {

namespace {

struct Builder {
    const TlRxClass* type;
    Tl::ErrorStatus (*build)(const HextPrimary3D& primitive, tolmar::Body& body);
};

template <typename Class, auto Build>
constexpr Builder row() {
    return {&Class::classRecord, [](const HextPrimary3D& primitive, tolmar::Body& body) {
                return Build(static_cast<const Class&>(primitive), body);
            }};
}

// The most frequent first; a derived class before its base.
constexpr Builder builders[] = {
    row<HextScylinder3D, buildSlopedCylinder>(),
    row<HextCylinder3D, buildCylinder>(),
    row<HextBox3D, buildBox>(),
    row<HextTorus3D, buildTorus>(),
    row<HextConcone3D, buildCone>(),
    row<HextSpolygon, buildExtrusion>(),
    row<HextEcone3D, buildEccentricCone>(),
    row<HextSphere3D, buildSphere>(),
    row<HextOval3D, buildHead>(),
    row<HextRevolve, buildRevolve>(),
    row<HextPrism3D, buildPrism>(),
    row<HextWedge3D, buildWedge>(),
    row<HextSqucone3D, buildFrustum>(),
    row<HextSqutorus3D, buildSquareTorus>(),
    row<HextSaddle3D, buildSaddle>(),
    row<HextSqucir3D, buildSquareRound>(),
};

}  // namespace

Tl::ErrorStatus buildBody(const HextPrimary3D& primitive, tolmar::Body& body) {
    for (const Builder& builder : builders) {
        if (primitive.isKindOf(builder.type)) {
            return builder.build(primitive, body);
        }
    }
    return Tl::eUnknownClass;
}

}  // namespace plant
