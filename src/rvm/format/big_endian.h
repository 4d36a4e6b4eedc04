// Words and floats in the byte order of RVM files, most significant byte first, put at a place in memory.
#pragma once

#include <bit>
#include <cstdint>

namespace rvm {

inline char* putWord(char* at, std::uint32_t value) {
    at[0] = static_cast<char>(value >> 24U);
    at[1] = static_cast<char>(value >> 16U);
    at[2] = static_cast<char>(value >> 8U);
    at[3] = static_cast<char>(value);
    return at + 4;
}

inline char* putFloat(char* at, float value) {
    return putWord(at, std::bit_cast<std::uint32_t>(value));
}

}  // namespace rvm
