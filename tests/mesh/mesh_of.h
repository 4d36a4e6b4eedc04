// The mesh of a primitive, by way of its entity and solid.
#pragma once

#include "mesh_checker.h"
#include "platform/entities.h"

struct Meshed {
    Tl::ErrorStatus solid = Tl::eOk;  // why there is no solid
    tolmar::MeshStatus status = tolmar::MeshStatus::BadRegion;
    PlainMesh mesh;  // empty unless both are well
};

Meshed meshOf(const HextPrimary3D& primitive, double tolerance = 1.0);
