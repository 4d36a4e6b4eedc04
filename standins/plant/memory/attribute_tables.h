// The attribute keys and labels of a model by number, so that a record needs two bytes for each.
#pragma once

#include "plant/memory/arena.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <tsl/robin_map.h>
#include <vector>

namespace plant {

// Texts by number from 0; number 0 is the empty text.
class NumberedTexts {
public:
    NumberedTexts();
    // The number of a text; nothing when it is not there.
    std::optional<std::uint16_t> find(std::string_view text) const;
    // The same, putting it in; nothing when all numbers are in use. The text is copied into the arena.
    std::optional<std::uint16_t> intern(std::string_view text, Arena& arena);
    std::span<const std::string_view> all() const { return texts_; }
    std::string_view operator[](std::size_t number) const { return texts_[number]; }

private:
    std::vector<std::string_view> texts_;
    tsl::robin_map<std::string_view, std::uint16_t> numbers_;
};

struct AttributeTables {
    NumberedTexts keys;
    NumberedTexts descriptions;
    tsl::robin_map<std::uint16_t, std::string_view> labels;  // of a key, where the record has no description

    std::string_view labelOf(std::uint16_t key) const;
};

}  // namespace plant
