// Distinct texts with numbers in the order of their coming.
#pragma once

#include <tsl/robin_map.h>

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace naming {

// Distinct texts, numbered from 0. References to texts stay valid as long as the table.
class TextTable {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    struct Added {
        std::uint32_t number;
        bool isNew;
    };
    Added add(std::string_view text);
    // The number of a text, or none.
    std::uint32_t find(std::string_view text) const;
    bool contains(std::string_view text) const { return find(text) != none; }
    const std::string& operator[](std::uint32_t number) const { return texts_[number]; }

private:
    std::deque<std::string> texts_;
    tsl::robin_map<std::string_view, std::uint32_t> numbers_;  // views of texts_, which never move
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
