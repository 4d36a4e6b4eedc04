#include "navisworks/geometry/solid_shapes.h"

#include <utility>

namespace nv {

namespace {

constexpr std::size_t mostShapes = 49152;

}  // namespace

// Which solids are compared; nothing else depends on it.
std::size_t SolidShapes::HashWords::operator()(const std::vector<std::uint64_t>& words) const {
    std::uint64_t hash = words.size();
    for (const std::uint64_t word : words) {
        hash = (hash ^ word) * 0x9E3779B97F4A7C15U;
        hash ^= hash >> 29U;
    }
    return hash;
}

bool SolidShapes::look(const HextPrimary& primitive) {
    found_ = nullptr;
    hasKey_ = makeSolidKey(primitive, key_);
    if (hasKey_) {
        const auto known = shapes_.find(key_.words);
        found_ = known != shapes_.end() ? &known->second : nullptr;
    }
    return found_ != nullptr;
}

void SolidShapes::addKnown(LiNwcMaterial material, LiNwcGroup group) const {
    const HxGeVector3D apart = key_.place - found_->place;
    LiNwcGroupAddShape(group, found_->shape.get(), material, apart.x, apart.y, apart.z);
}

void SolidShapes::remember(OwnedShape shape) {
    if (std::exchange(hasKey_, false) && shape.get() != nullptr && shapes_.size() < mostShapes) {
        shapes_.emplace(key_.words, Known{std::move(shape), key_.place});
    }
}

}  // namespace nv
