// Frames of macro solids, and the conversions by family. For convertPrimary alone.
#pragma once

#include "hextinterface/ornatohextprocess/solids/equip_prims.h"
#include "platform/primitives.h"

namespace design {

inline HxGePoint3D midpoint(const HxGePoint3D& a, const HxGePoint3D& b) {
    return a + (b - a) * 0.5;
}

// Z along `z`, any X across it. ExportException for a direction of zero length, here and below.
CoordFrame frameAlong(const HxGePoint3D& origin, const HxGeVector3D& z);
// X and Z as given, Y = Z x X.
CoordFrame frameXZ(const HxGePoint3D& origin, const HxGeVector3D& x, const HxGeVector3D& z);
// Y and Z as given, X = Y x Z.
CoordFrame frameYZ(const HxGePoint3D& origin, const HxGeVector3D& y, const HxGeVector3D& z);

// Where some axes lie along world axes and others do not, one axis is made anew from the other two.
void repairAxes(HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z);

template <typename Solid>
PrimGroup oneSolid(Solid solid) {
    PrimGroup group;
    group.addSolid(std::move(solid));
    return group;
}

PrimGroup convertTorus(const HextTorus3D& torus);
PrimGroup convertSqutorus(const HextSqutorus3D& torus);
PrimGroup convertOval(const HextOval3D& oval);
PrimGroup convertSphere(const HextSphere3D& sphere);

PrimGroup convertPrism(const HextPrism3D& prism);
PrimGroup convertWedge(const HextWedge3D& wedge);
PrimGroup convertSaddle(const HextSaddle3D& saddle);
PrimGroup convertRevolve(const HextRevolve& revolve);
PrimGroup convertSpolygon(const HextSpolygon& polygon);

}  // namespace design
