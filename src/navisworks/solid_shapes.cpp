#include "navisworks/solid_shapes.h"

#include <algorithm>
#include <utility>

namespace nv {

namespace {

constexpr std::uint32_t none = 0xFFFFFFFF;
constexpr std::size_t bucketCount = std::size_t{1} << 16U;
constexpr std::size_t mostKnown = std::size_t{1} << 16U;
constexpr std::size_t mostWords = std::size_t{1} << 20U;

// Which solids are compared; nothing else depends on it.
std::uint64_t hashOf(const std::vector<std::uint64_t>& words) {
    std::uint64_t hash = words.size();
    for (const std::uint64_t word : words) {
        hash = (hash ^ word) * 0x9E3779B97F4A7C15U;
        hash ^= hash >> 29U;
    }
    return hash;
}

}  // namespace

SolidShapes::SolidShapes() : buckets_(bucketCount, none) {}

const SolidShapes::Known* SolidShapes::find() const {
    for (std::uint32_t at = buckets_[hash_ % bucketCount]; at != none; at = known_[at].next) {
        const Known& known = known_[at];
        if (known.hash == hash_ && known.wordCount == key_.words.size() &&
            std::equal(key_.words.begin(), key_.words.end(), words_.begin() + known.firstWord)) {
            return &known;
        }
    }
    return nullptr;
}

bool SolidShapes::look(const HextPrimary& primitive) {
    found_ = nullptr;
    hasKey_ = makeSolidKey(primitive, key_);
    if (hasKey_) {
        hash_ = hashOf(key_.words);
        found_ = find();
    }
    return found_ != nullptr;
}

void SolidShapes::addKnown(LiNwcMaterial material, LiNwcGroup group) const {
    const HxGeVector3D apart = key_.place - found_->place;
    LiNwcGroupAddShape(group, found_->shape.get(), material, apart.x, apart.y, apart.z);
}

void SolidShapes::remember(OwnedShape shape) {
    if (!hasKey_ || shape.get() == nullptr || known_.size() == mostKnown ||
        words_.size() + key_.words.size() > mostWords) {
        return;
    }
    std::uint32_t& bucket = buckets_[hash_ % bucketCount];
    known_.push_back({hash_, static_cast<std::uint32_t>(words_.size()), static_cast<std::uint32_t>(key_.words.size()),
                      bucket, key_.place, std::move(shape)});
    bucket = static_cast<std::uint32_t>(known_.size() - 1);
    words_.insert(words_.end(), key_.words.begin(), key_.words.end());
    hasKey_ = false;
}

}  // namespace nv
