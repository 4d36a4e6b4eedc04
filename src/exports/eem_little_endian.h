// Numbers in the byte order of EEM files, least significant byte first, put at a place in memory.
#pragma once

#include <bit>
#include <cstdint>

namespace eem {

inline char* putInt(char* at, std::int32_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    at[0] = static_cast<char>(bits);
    at[1] = static_cast<char>(bits >> 8U);
    at[2] = static_cast<char>(bits >> 16U);
    at[3] = static_cast<char>(bits >> 24U);
    return at + 4;
}

inline char* putInt64(char* at, std::int64_t value) {
    const auto bits = static_cast<std::uint64_t>(value);
    at = putInt(at, static_cast<std::int32_t>(static_cast<std::uint32_t>(bits)));
    return putInt(at, static_cast<std::int32_t>(static_cast<std::uint32_t>(bits >> 32U)));
}

inline char* putDouble(char* at, double value) {
    return putInt64(at, std::bit_cast<std::int64_t>(value));
}

}  // namespace eem
