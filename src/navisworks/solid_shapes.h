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
    // Looks for a solid that equals that of the primitive; false when none is known.
    bool look(const HextPrimary& primitive);
    // Adds a node for the primitive that the last look found an equal solid for.
    void addKnown(LiNwcMaterial material, LiNwcGroup group) const;
    // The shape of the primitive that the last look found nothing for; null when it has none to show again.
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
    const Known* found_ = nullptr;
    std::vector<std::uint32_t> buckets_;
    std::vector<Known> known_;
    std::vector<std::uint64_t> words_;
};

}  // namespace nv
