// Flat hash tables whose entries are numbered in the order of their coming. Nothing here ever depends on the order of
// hashes.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace naming {

// Numbers by hash; the keys themselves are the owner's. Open addressing, at most half full.
class FlatIndex {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    // The number whose key matches, or none. `matches` takes a number.
    template <typename Matches>
    std::uint32_t find(std::uint64_t hash, Matches&& matches) const {
        const std::uint32_t tag = tagOf(hash);
        for (std::size_t at = tag & mask_;; at = (at + 1) & mask_) {
            const Slot& slot = slots_[at];
            if (slot.number == none || (slot.tag == tag && matches(slot.number))) {
                return slot.number;
            }
        }
    }
    // Adds a number whose key is not there yet.
    void add(std::uint64_t hash, std::uint32_t number);

private:
    struct Slot {
        std::uint32_t tag = 0;
        std::uint32_t number = none;
    };
    static std::uint32_t tagOf(std::uint64_t hash) {
        return static_cast<std::uint32_t>((hash * 0x9E3779B97F4A7C15ULL) >> 32);
    }
    void place(Slot slot);

    std::vector<Slot> slots_ = std::vector<Slot>(16);
    std::size_t mask_ = 15;
    std::size_t used_ = 0;
};

// Distinct texts, numbered from 0. References to texts stay valid as long as the table.
class TextTable {
public:
    static constexpr std::uint32_t none = FlatIndex::none;

    struct Added {
        std::uint32_t number;
        bool isNew;
    };
    Added add(std::string_view text);
    std::uint32_t find(std::string_view text) const;
    bool contains(std::string_view text) const { return find(text) != none; }
    const std::string& operator[](std::uint32_t number) const { return texts_[number]; }
    std::size_t size() const { return texts_.size(); }

private:
    std::uint32_t find(std::string_view text, std::uint64_t hash) const {
        return index_.find(hash, [&](std::uint32_t number) { return texts_[number] == text; });
    }

    std::deque<std::string> texts_;
    FlatIndex index_;
};

// A number from 1 upward for each text, counted one by one.
class TextCounters {
public:
    // Counts the text up and gives its new count.
    std::uint32_t next(std::string_view text);

private:
    TextTable texts_;
    std::vector<std::uint32_t> counts_;
};

}  // namespace naming
