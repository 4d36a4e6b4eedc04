// Handles of the scene library that give themselves back.
#pragma once

#include "nwcreate/nwcreate.h"
#include "nwcreate/shapes.h"

#include <utility>

namespace nv {

// One reference on a handle; null when the library gave none, and then nothing is given back.
template <typename Handle, LiNwcStatus (*Destroy)(Handle)>
class Owned {
public:
    Owned() = default;
    explicit Owned(Handle handle) : handle_(handle) {}
    ~Owned() { reset(); }
    Owned(Owned&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Owned& operator=(Owned&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;

    Handle get() const { return handle_; }
    void reset() {
        if (handle_ != nullptr) {
            Destroy(std::exchange(handle_, nullptr));
        }
    }

private:
    Handle handle_ = nullptr;
};

using OwnedScene = Owned<LiNwcScene, LiNwcSceneDestroy>;
using OwnedView = Owned<LiNwcView, LiNwcSavedViewDestroy>;
using OwnedGroup = Owned<LiNwcGroup, LiNwcGroupDestroy>;
using OwnedGeometry = Owned<LiNwcGeometry, LiNwcNodeDestroy>;
using OwnedAttribute = Owned<LiNwcAttribute, LiNwcAttributeDestroy>;
using OwnedData = Owned<LiNwcData, LiNwcDataDestroy>;
using OwnedTextStyle = Owned<LiNwcTextStyle, LiNwcTextStyleDestroy>;
using OwnedGridSystem = Owned<LiNwcGridSystem, LiNwcGridSystemDestroy>;
using OwnedGridLine = Owned<LiNwcGridLine, LiNwcGridLineDestroy>;
using OwnedShape = Owned<LiNwcShape, LiNwcShapeDestroy>;
using OwnedGridLevel = Owned<LiNwcGridLevel, LiNwcGridLevelDestroy>;

}  // namespace nv
