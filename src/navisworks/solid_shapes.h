// Solids that were shown once, for showing equal ones without meshing them again.
#pragma once

#include "exportbase/solid_key.h"
#include "navisworks/handles.h"

#include <cstdint>
#include <vector>

namespace nv {

// Holds so many solids and no more: those that come later are meshed each time. Dies before the library session ends.
class SolidShapes {
public:
    SolidShapes();
    // Adds a node when an equal solid is known. False, and nothing is added, when there is none.
    bool addKnown(const HextPrimary& primitive, LiNwcMaterial material, LiNwcGroup group);
    // The shape of the primitive that the last addKnown did not know; null when it has none to show again.
    void remember(OwnedShape shape);

private:
    struct Known {
        std::uint64_t hash;
        std::uint32_t firstWord;
        std::uint32_t wordCount;
        std::uint32_t next;  // of the same bucket
        HxGePoint3D place;
        OwnedShape shape;
    };

    const Known* find() const;

    SolidKey key_;  // in hand
    bool hasKey_ = false;
    std::uint64_t hash_ = 0;
    std::vector<std::uint32_t> buckets_;
    std::vector<Known> known_;
    std::vector<std::uint64_t> words_;
};

}  // namespace nv
