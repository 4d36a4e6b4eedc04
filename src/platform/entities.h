// From primitives to host entities. Every entity is new and belongs to the caller, who deletes it.
//
// An entity may look at its primitive: it stays valid only while the primitive lives.
#pragma once

#include "platform/primitives.h"
#include "tolmar/entity.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

// An ORNACadPrimary3D for a parametric solid, whatever its sizes: a primitive that makes no solid says why when its
// solid is asked for. Primitives that carry host content give that content, or null when it cannot be read. Null for
// null.
TlDbEntity* transHextPrimary3D(const HextPrimary3D* primitive);
// The same for any primitive: lines and texts too.
TlDbEntity* transHextPrimary(const HextPrimary* primitive);

// The entities of a list.
class TransHextPrimary {
public:
    explicit TransHextPrimary(const HextPrimaryArray& list);
    // One entity for each primitive in list order, null where there is none. They belong to the caller.
    const std::vector<TlDbEntity*>& get() const { return entities_; }

private:
    std::vector<TlDbEntity*> entities_;
};

namespace hxcad {

// The entity of a HextPrimaryAcadSolid3D; null for any other class and for content that cannot be read.
TlDbEntity* trans_solid_to_primary(const HextPrimary* primitive);
// Rebuilds an entity from the bytes of getSer(); null on failure.
TlDbEntity* setEntitySerialString(std::string_view serial);

}  // namespace hxcad
