// One stored attribute as the platform keeps it: 16 bytes, its key and label as numbers into tables of the platform.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace smrtln {

struct BomRecord {
    union {
        const char* text;      // types 4 and 9; zero-terminated, may be null
        double number;         // type 2
        std::int64_t integer;  // types 1, 5, 7 and 8
        const double* point;   // type 3
        const void* pointer;   // type 6
    };
    std::uint32_t length : 28;  // of a text in bytes
    std::uint32_t type : 4;     // KVParams::ValueType
    std::uint16_t key;          // index into bomKeys()
    std::uint16_t description;  // index into the platform's labels, 0 for none
};
static_assert(sizeof(BomRecord) == 16);

// The attribute keys of the current model by number; index 0 is the empty key. Valid until the current model changes
// or an attribute is set.
std::span<const std::string_view> bomKeys();

}  // namespace smrtln
