#include "navisworks/geometry/solid_shapes.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace nv {

namespace {

constexpr std::size_t placeCount = std::size_t{1} << 16U;
constexpr std::size_t mostShapes = placeCount / 4 * 3;
// A place is the number of a record's first word, 0 for none, and a tag above it.
constexpr unsigned recordBits = 20;
constexpr std::size_t mostRecordWords = std::size_t{1} << recordBits;
constexpr std::uint32_t recordMask = mostRecordWords - 1;

std::uint32_t placeOf(std::uint64_t hash, std::uint32_t record) {
    return static_cast<std::uint32_t>(hash >> 32U) << recordBits | record;
}

struct Head {
    std::uint64_t wordCount;
    LiNwcShape shape;
    HxGePoint3D place;
};
constexpr std::size_t headWords = sizeof(Head) / sizeof(std::uint64_t);

Head headAt(const std::vector<std::uint64_t>& records, std::uint32_t record) {
    Head head;
    std::memcpy(static_cast<void*>(&head), records.data() + record, sizeof head);
    return head;
}

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

// Record 0 is none.
SolidShapes::SolidShapes() : places_(placeCount), records_(1) {}

std::uint32_t& SolidShapes::findPlace() {
    const auto isEqual = [this](std::uint32_t place) {
        const std::uint32_t record = place & recordMask;
        return place == placeOf(hash_, record) && records_[record] == key_.words.size() &&
               std::equal(key_.words.begin(), key_.words.end(), records_.begin() + record + headWords);
    };
    std::size_t at = hash_ % placeCount;
    while (places_[at] != 0 && !isEqual(places_[at])) {
        at = (at + 1) % placeCount;
    }
    return places_[at];
}

bool SolidShapes::look(const HextPrimary& primitive) {
    found_ = 0;
    hasKey_ = makeSolidKey(primitive, key_);
    if (hasKey_) {
        hash_ = hashOf(key_.words);
        found_ = findPlace() & recordMask;
    }
    return found_ != 0;
}

void SolidShapes::addKnown(LiNwcMaterial material, LiNwcGroup group) const {
    const Head known = headAt(records_, found_);
    const HxGeVector3D apart = key_.place - known.place;
    LiNwcGroupAddShape(group, known.shape, material, apart.x, apart.y, apart.z);
}

void SolidShapes::remember(OwnedShape shape) {
    const std::size_t size = headWords + key_.words.size();
    const bool isFull = shapes_.size() == mostShapes || records_.size() + size > mostRecordWords;
    if (!std::exchange(hasKey_, false) || shape.get() == nullptr || isFull) {
        return;
    }
    const auto record = static_cast<std::uint32_t>(records_.size());
    findPlace() = placeOf(hash_, record);
    const Head head{key_.words.size(), shape.get(), key_.place};
    records_.resize(record + headWords);
    std::memcpy(records_.data() + record, &head, sizeof head);
    records_.insert(records_.end(), key_.words.begin(), key_.words.end());
    shapes_.push_back(std::move(shape));
}

}  // namespace nv
