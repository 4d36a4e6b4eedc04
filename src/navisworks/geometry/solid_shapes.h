// Solids that were shown once, for showing equal ones without meshing them again.
#pragma once

#include "exportbase/solid_key.h"
#include "navisworks/handles.h"

#include <cstdint>
#include <vector>

namespace nv {

// Holds some ten thousands of solids and no more: those that come later are meshed each time. Dies before the library
// session ends.
class SolidShapes {
public:
    SolidShapes();
    // Looks for a solid that equals that of the primitive; false when none is known.
    bool look(const HextPrimary& primitive);
    // Adds a node for the primitive that the last look found an equal solid for.
    void addKnown(LiNwcMaterial material, LiNwcGroup group) const;
    // The shape of the primitive that the last look found nothing for; null when it has none to show again.
    void remember(OwnedShape shape);

private:
    // The place of the key in hand: that of an equal solid, or where the next one of its hash goes.
    std::uint32_t& findPlace();

    SolidKey key_;  // in hand
    bool hasKey_ = false;
    std::uint64_t hash_ = 0;
    std::uint32_t found_ = 0;
    // Few and small, so that they stay near the processor: where a record begins, and above that a part of the hash.
    std::vector<std::uint32_t> places_;
    // The head of a record, and behind it its words: a look touches one place in memory.
    std::vector<std::uint64_t> records_;
    std::vector<OwnedShape> shapes_;
};

}  // namespace nv
