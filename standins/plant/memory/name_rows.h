// The member names that one kind of JSON object in a model file may have.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace plant {

// Finds a name's row in a few instructions: by length and first eight letters.
class NameRows {
public:
    struct Name {
        std::string_view text;
        bool required = false;
    };
    static constexpr int none = -1;
    static constexpr std::size_t mostNames = 64;

    // Rows are numbered as the names stand, at most 64. `title` names the kind, "point" for example.
    NameRows(std::string title, std::vector<Name> names);

    // The row of a name, or `none`. At least eight bytes must be readable at `text`, whatever `size` is.
    int find(const char* text, std::size_t size) const {
        const std::uint64_t start = firstLetters(text, size);
        for (std::size_t slot = slotOf(start, size);; slot = (slot + 1) % slotCount) {
            const int row = slots_[slot];
            if (row == none || (keys_[static_cast<std::size_t>(row)].is(start, size) && tailIs(row, text, size))) {
                return row;
            }
        }
    }
    const std::string& title() const { return title_; }
    const std::vector<Name>& names() const { return names_; }
    std::string_view nameOf(int row) const { return names_[static_cast<std::size_t>(row)].text; }
    // Bit `row` of each name that must be there.
    std::uint64_t required() const { return required_; }

private:
    static constexpr std::size_t slotCount = 256;
    static constexpr std::size_t lettersOfKey = 8;

    struct Key {
        std::uint64_t start;
        std::size_t size;
        bool is(std::uint64_t otherStart, std::size_t otherSize) const {
            return start == otherStart && size == otherSize;
        }
    };
    static std::uint64_t firstLetters(const char* text, std::size_t size);
    static std::size_t slotOf(std::uint64_t start, std::size_t size) {
        return static_cast<std::size_t>((start + size) * 0x9E3779B97F4A7C15ULL >> 56U);
    }
    bool tailIs(int row, const char* text, std::size_t size) const {
        return size <= lettersOfKey ||
               std::memcmp(nameOf(row).data() + lettersOfKey, text + lettersOfKey, size - lettersOfKey) == 0;
    }

    std::string title_;
    std::vector<Name> names_;
    std::vector<Key> keys_;
    std::array<std::int8_t, slotCount> slots_;
    std::uint64_t required_ = 0;
};

inline std::uint64_t NameRows::firstLetters(const char* text, std::size_t size) {
    std::uint64_t start;
    std::memcpy(&start, text, lettersOfKey);
    if (size >= lettersOfKey) {
        return start;
    }
    if (size == 0) {
        return 0;
    }
    const unsigned unused = static_cast<unsigned>(8 * (lettersOfKey - size));
    return std::endian::native == std::endian::little ? start << unused >> unused : start >> unused << unused;
}

}  // namespace plant
