// Primitive lists of objects, the common entry of the exports, and their way to host entities.
#pragma once

#include "platform/objects.h"
#include "platform/primitives.h"

class TlDbEntity;

// Status of getPrimaries and getObjectPrimaries beside the platform's own.
inline constexpr Hext::ErrorStatus eNoShape = 18;
inline constexpr Hext::ErrorStatus eNotWanted = 2;

// What an object draws. 18 for a null object; 2 for a bolt set without `withBolts` and a weld without `withWelds`;
// otherwise the platform's status, 0 on success. The list is emptied first and belongs to the caller.
Hext::ErrorStatus getPrimaries(const HxDbObject* object, HextPrimaryArray& list, bool withBolts, bool withWelds);

// The same for exports that only read: nothing is copied, the primitives belong to the platform and live with the
// model. The view is empty when the status is not 0.
Hext::ErrorStatus viewPrimaries(const HxDbObject* object, HextPrimaryView& view, bool withBolts, bool withWelds);

// The shape by class of object. 0 with a non-empty list, or for a support that has sub-objects; otherwise 18, reported
// on the command line unless the object is a weld. The list is emptied first and belongs to the caller.
Hext::ErrorStatus getObjectPrimaries(const HxDbObject* object, HextPrimaryArray& list);

// Whether a primitive is a solid of the obstruction volume of its object, such as insulation: by its material.
bool isObstruction(const HextPrimary& primitive);

// A list of primitives that frees itself.
class PrimaryList {
public:
    PrimaryList() = default;
    ~PrimaryList() { freeHextPrimaryArray(list_); }
    PrimaryList(const PrimaryList&) = delete;
    PrimaryList& operator=(const PrimaryList&) = delete;
    HextPrimaryArray& list() { return list_; }
    auto begin() const { return list_.begin(); }
    auto end() const { return list_.end(); }
    std::size_t size() const { return list_.size(); }
    bool empty() const { return list_.empty(); }

private:
    HextPrimaryArray list_;
};
