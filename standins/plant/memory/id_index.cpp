#include "plant/memory/id_index.h"

#include <algorithm>

namespace plant {

namespace {

// The array may have this many places for each id, so that gaps do no harm and scattered ids no waste.
constexpr std::uint64_t placesOfId = 4;
constexpr std::size_t fewestPlaces = 1024;

}  // namespace

bool IdIndex::insert(std::int64_t id, std::uint32_t number) {
    if (count_ == 0) {
        first_ = id;
    }
    if (find(id) != none) {
        return false;
    }
    ++count_;
    const std::uint64_t place = placeOf(id);
    if (place >= std::max<std::uint64_t>(fewestPlaces, placesOfId * count_)) {
        scattered_.emplace(id, number);
        return true;
    }
    if (place >= dense_.size()) {
        const auto needed = static_cast<std::size_t>(place) + 1;
        dense_.resize(std::max({fewestPlaces, dense_.size() * 2, needed}), none);
    }
    dense_[place] = number;
    return true;
}

}  // namespace plant
