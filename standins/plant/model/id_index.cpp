#include "plant/model/id_index.h"

#include <algorithm>
#include <utility>

namespace plant {

namespace {

// The array may have this many places for each id, so that gaps do no harm and scattered ids no waste.
constexpr std::uint64_t placesOfId = 4;
constexpr std::size_t fewestPlaces = 1024;
constexpr std::size_t fewestSlots = 256;

// Murmur's finaliser: every bit of the id counts in every bit of the result.
std::uint64_t spread(std::uint64_t bits) {
    bits ^= bits >> 33U;
    bits *= 0xFF51AFD7ED558CCDULL;
    bits ^= bits >> 33U;
    bits *= 0xC4CEB9FE1A85EC53ULL;
    return bits ^ bits >> 33U;
}

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
        insertScattered(id, number);
        return true;
    }
    if (place >= dense_.size()) {
        const auto needed = static_cast<std::size_t>(place) + 1;
        dense_.resize(std::max({fewestPlaces, dense_.size() * 2, needed}), none);
    }
    dense_[place] = number;
    return true;
}

std::size_t IdIndex::slotOf(std::int64_t id) const {
    const std::size_t mask = slots_.size() - 1;
    auto slot = static_cast<std::size_t>(spread(static_cast<std::uint64_t>(id))) & mask;
    while (slots_[slot].id != 0 && slots_[slot].id != id) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

void IdIndex::insertScattered(std::int64_t id, std::uint32_t number) {
    if (usedSlots_ * 2 >= slots_.size()) {
        const std::vector<Slot> old =
            std::exchange(slots_, std::vector<Slot>(std::max(fewestSlots, slots_.size() * 2)));
        for (const Slot& slot : old) {
            if (slot.id != 0) {
                slots_[slotOf(slot.id)] = slot;
            }
        }
    }
    slots_[slotOf(id)] = {id, number};
    ++usedSlots_;
}

}  // namespace plant
