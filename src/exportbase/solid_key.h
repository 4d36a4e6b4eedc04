// What a parametric solid is apart from its place, so that equal solids are known before they are meshed.
#pragma once

#include "platform/primitives.h"

#include <cstdint>
#include <vector>

// Two solids with equal words have the same shape; the one stands off the other by the difference of their places.
// Their points may differ by what adding up coordinates loses: they count on a grid of 2^-24 mm.
struct SolidKey {
    HxGePoint3D place;
    std::vector<std::uint64_t> words;
};

// False for a primitive without a key: no parametric solid, one with a point that is none, or one of very many numbers.
bool makeSolidKey(const HextPrimary& primitive, SolidKey& key);
