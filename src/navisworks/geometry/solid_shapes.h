// Solids that were shown once, for showing equal ones without meshing them again.
//
// For each primitive: look, and then either addKnown, or mesh it and remember the shape that came of it.
#pragma once

#include "exportbase/solid_key.h"
#include "navisworks/library/handles.h"

#include <tsl/robin_map.h>

#include <cstdint>
#include <vector>

namespace nv {

// Holds some ten thousands of solids and no more: those that come later are meshed each time. Dies before the library
// session ends.
class SolidShapes {
public:
    // Looks for a solid that equals that of the primitive; false when none is known.
    bool look(const HextPrimary& primitive);
    // Adds a node for the primitive that the last look found an equal solid for.
    void addKnown(LiNwcMaterial material, LiNwcGroup group) const;
    // The shape of the primitive that the last look found nothing for; null when it has none to show again.
    void remember(OwnedShape shape);

private:
    struct Known {
        OwnedShape shape;
        HxGePoint3D place;
    };
    struct HashWords {
        std::size_t operator()(const std::vector<std::uint64_t>& words) const;
    };

    SolidKey key_;  // in hand
    bool hasKey_ = false;
    const Known* found_ = nullptr;  // by the last look
    tsl::robin_map<std::vector<std::uint64_t>, Known, HashWords> shapes_;
};

}  // namespace nv
