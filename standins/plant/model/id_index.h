// The way from an id to the number of its object.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace plant {

// Ids are numbers that a double holds exactly.
inline constexpr std::int64_t largestId = (std::int64_t{1} << 53) - 1;

// Ids that run on from the first one, as most files have them, are looked up in an array, the others in a hash table.
class IdIndex {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    // The number of an id; `none` when it is not there.
    std::uint32_t find(std::int64_t id) const {
        const std::uint64_t place = placeOf(id);
        if (place < dense_.size() && dense_[place] != none) [[likely]] {
            return dense_[place];
        }
        return slots_.empty() ? none : slots_[slotOf(id)].number;
    }
    // False when the id is there already. Ids are positive.
    bool insert(std::int64_t id, std::uint32_t number);

private:
    struct Slot {
        std::int64_t id = 0;  // 0: empty
        std::uint32_t number = none;
    };
    // Ids below the first one get places beyond all others.
    std::uint64_t placeOf(std::int64_t id) const {
        return static_cast<std::uint64_t>(id) - static_cast<std::uint64_t>(first_);
    }
    // The slot of an id, or the empty one where it would go.
    std::size_t slotOf(std::int64_t id) const;
    void insertScattered(std::int64_t id, std::uint32_t number);

    std::int64_t first_ = 0;
    std::size_t count_ = 0;
    std::vector<std::uint32_t> dense_;  // by distance from the first id
    std::vector<Slot> slots_;           // a power of two, at most half of them in use
    std::size_t usedSlots_ = 0;
};

}  // namespace plant
