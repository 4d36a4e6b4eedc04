// Numbers and texts of EEM files, least significant byte first, put at a place in memory. Each gives the place behind.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

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
    at[0] = static_cast<char>(bits);
    at[1] = static_cast<char>(bits >> 8U);
    at[2] = static_cast<char>(bits >> 16U);
    at[3] = static_cast<char>(bits >> 24U);
    at[4] = static_cast<char>(bits >> 32U);
    at[5] = static_cast<char>(bits >> 40U);
    at[6] = static_cast<char>(bits >> 48U);
    at[7] = static_cast<char>(bits >> 56U);
    return at + 8;
}

inline char* putDouble(char* at, double value) {
    return putInt64(at, std::bit_cast<std::int64_t>(value));
}

// The length in bytes, then the bytes.
inline char* putString(char* at, std::string_view text) {
    return std::copy(text.begin(), text.end(), putInt(at, static_cast<std::int32_t>(text.size())));
}

// The same of a literal.
template <std::size_t size>
char* putTag(char* at, const char (&tag)[size]) {
    return std::copy_n(tag, size - 1, putInt(at, static_cast<std::int32_t>(size - 1)));
}

}  // namespace eem
