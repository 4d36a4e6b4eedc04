// Places by a grid of cubes, so that what lies near a point is found without a look at everything.
#pragma once

#include "platform/geometry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <tsl/robin_map.h>
#include <vector>

namespace plant::pcf {

// Keeps numbers at points, or along straight pieces, and hands out those whose cube is that of a point or beside it:
// all within one cell of the point, and some that are farther away.
class PlaceIndex {
public:
    // `cell`: edge of a cube in millimetres, at least as long as the distance that will be asked for.
    explicit PlaceIndex(double cell) : cell_(cell) {}

    void add(const HxGePoint3D& at, std::uint32_t number) { put(keyOf(at), number); }
    // A number along a piece of at most 100,000 cells; longer pieces are kept at their ends and every so often between.
    void addAlong(const HxGePoint3D& from, const HxGePoint3D& to, std::uint32_t number) {
        constexpr double mostSteps = 100000;
        const HxGeVector3D way = to - from;
        const auto steps = static_cast<std::size_t>(std::min(std::ceil(2 * way.length() / cell_) + 1, mostSteps));
        Key last{};
        for (std::size_t i = 0; i <= steps; ++i) {
            const Key key = keyOf(from + way * (static_cast<double>(i) / static_cast<double>(steps)));
            if (i == 0 || !(key == last)) {
                put(key, number);
            }
            last = key;
        }
    }
    // Calls visit(number), those added last first in each cube; a number may come more than once.
    template <typename Visit>
    void near(const HxGePoint3D& at, Visit visit) const {
        const Key middle = keyOf(at);
        for (std::int64_t x = -1; x <= 1; ++x) {
            for (std::int64_t y = -1; y <= 1; ++y) {
                for (std::int64_t z = -1; z <= 1; ++z) {
                    const auto found = heads_.find({middle.x + x, middle.y + y, middle.z + z});
                    for (std::uint32_t i = found == heads_.end() ? none : found->second; i != none;
                         i = items_[i].next) {
                        visit(items_[i].number);
                    }
                }
            }
        }
    }

private:
    static constexpr std::uint32_t none = 0xFFFFFFFF;
    struct Key {
        std::int64_t x, y, z;
        bool operator==(const Key&) const = default;
    };
    struct Hash {
        std::size_t operator()(const Key& key) const {
            std::uint64_t value = static_cast<std::uint64_t>(key.x) * 0x9E3779B97F4A7C15ULL;
            value = (value ^ static_cast<std::uint64_t>(key.y)) * 0xC2B2AE3D27D4EB4FULL;
            value = (value ^ static_cast<std::uint64_t>(key.z)) * 0x165667B19E3779F9ULL;
            return static_cast<std::size_t>(value ^ value >> 32U);
        }
    };
    struct Item {
        std::uint32_t number;
        std::uint32_t next;
    };

    Key keyOf(const HxGePoint3D& at) const { return {cellOf(at.x), cellOf(at.y), cellOf(at.z)}; }
    std::int64_t cellOf(double value) const {
        constexpr double farthest = 1e15;
        return static_cast<std::int64_t>(std::floor(std::max(-farthest, std::min(farthest, value / cell_))));
    }
    void put(const Key& key, std::uint32_t number) {
        const auto index = static_cast<std::uint32_t>(items_.size());
        const auto [at, isNew] = heads_.try_emplace(key, index);
        items_.push_back({number, isNew ? none : at->second});
        at.value() = index;
    }

    double cell_;
    tsl::robin_map<Key, std::uint32_t, Hash> heads_;
    std::vector<Item> items_;
};

}  // namespace plant::pcf
