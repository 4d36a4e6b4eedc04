// Numbers by the hash of what they stand for. Different content of one hash shares an entry: whoever keeps the numbers
// chains them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace nwcreate {

class HashIndex {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    // The number of a hash, `none` when there is none.
    std::uint32_t find(std::uint64_t hash) { return entries_.empty() ? none : entryOf(hash).number; }
    // Gives a hash its number; the one before, `none` for the first.
    std::uint32_t exchange(std::uint64_t hash, std::uint32_t number) {
        if (2 * (used_ + 1) > entries_.size()) {
            grow();
        }
        Entry& entry = entryOf(hash);
        entry.hash = hash;
        used_ += entry.number == none ? 1 : 0;
        return std::exchange(entry.number, number);
    }

private:
    struct Entry {
        std::uint64_t hash = 0;
        std::uint32_t number = none;
    };

    Entry& entryOf(std::uint64_t hash) {
        std::size_t at = hash & (entries_.size() - 1);
        while (entries_[at].number != none && entries_[at].hash != hash) {
            at = (at + 1) & (entries_.size() - 1);
        }
        return entries_[at];
    }

    void grow() {
        constexpr std::size_t fewest = 1024;
        const std::vector<Entry> old = std::move(entries_);
        entries_ = std::vector<Entry>(old.empty() ? fewest : 2 * old.size());
        for (const Entry& entry : old) {
            if (entry.number != none) {
                entryOf(entry.hash) = entry;
            }
        }
    }

    std::vector<Entry> entries_;  // a power of two of them
    std::size_t used_ = 0;
};

}  // namespace nwcreate
