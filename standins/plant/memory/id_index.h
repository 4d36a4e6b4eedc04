// The way from an id to the number of its object.
#pragma once

#include <cstddef>
#include <cstdint>
#include <tsl/robin_map.h>
#include <vector>

namespace plant {

// Ids are numbers that a double holds exactly.
inline constexpr std::int64_t largestId = (std::int64_t{1} << 53) - 1;

// Murmur's finaliser for tables by id: every bit of the id counts in every bit of the result.
struct SpreadId {
    std::size_t operator()(std::int64_t id) const {
        auto bits = static_cast<std::uint64_t>(id);
        bits ^= bits >> 33U;
        bits *= 0xFF51AFD7ED558CCDULL;
        bits ^= bits >> 33U;
        bits *= 0xC4CEB9FE1A85EC53ULL;
        return static_cast<std::size_t>(bits ^ bits >> 33U);
    }
};

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
        const auto at = scattered_.find(id);
        return at == scattered_.end() ? none : at->second;
    }
    // False when the id is there already. Ids are positive.
    bool insert(std::int64_t id, std::uint32_t number);

private:
    // Ids below the first one get places beyond all others.
    std::uint64_t placeOf(std::int64_t id) const {
        return static_cast<std::uint64_t>(id) - static_cast<std::uint64_t>(first_);
    }

    std::int64_t first_ = 0;
    std::size_t count_ = 0;
    std::vector<std::uint32_t> dense_;  // by distance from the first id
    tsl::robin_map<std::int64_t, std::uint32_t, SpreadId> scattered_;
};

}  // namespace plant
