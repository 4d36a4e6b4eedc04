// The shapes of source primitives, by their meshes.
#pragma once

#include "platform/primitives.h"
#include "rebuilt_shape.h"

// Meshed at 0.005 mm.
Shape sourceShape(const HextPrimary3D& primitive);

// How far the extents of two shapes differ at most, over the directions of a box and those between its sides.
double reachError(const Shape& a, const Shape& b);
