// Digits of numbers, put at a place that has room for them; each gives the end.
#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace nwcreate {

// Room that a number takes at most, and what is written behind its end meanwhile.
inline constexpr std::size_t numberRoom = 32;

inline constexpr std::uint32_t thousand = 1000;
// The three digits of 0 to 999, and one character more.
inline constexpr auto digitTriples = [] {
    std::array<char, 3 * std::size_t{thousand} + 1> triples{};
    for (std::size_t i = 0; i < thousand; ++i) {
        triples[3 * i] = static_cast<char>('0' + i / 100);
        triples[3 * i + 1] = static_cast<char>('0' + i / 10 % 10);
        triples[3 * i + 2] = static_cast<char>('0' + i % 10);
    }
    return triples;
}();

inline char* putTriple(char* to, std::uint32_t value) {
    std::memcpy(to, digitTriples.data() + std::size_t{3} * value, 3);
    return to + 3;
}

// Below a thousand, without zeros before it. Writes four characters.
inline char* putShort(char* to, std::uint32_t value) {
    const std::size_t skipped = value < 10 ? 2 : value < 100 ? 1 : 0;
    std::uint32_t digits = 0;
    std::memcpy(&digits, digitTriples.data() + std::size_t{3} * value, sizeof digits);
    digits >>= 8 * skipped;
    std::memcpy(to, &digits, sizeof digits);
    return to + (3 - skipped);
}

inline char* putCount(char* to, std::uint32_t value) {
    if (value < thousand) {
        return putShort(to, value);
    }
    if (value < thousand * thousand) {
        return putTriple(putShort(to, value / thousand), value % thousand);
    }
    return std::to_chars(to, to + numberRoom, value).ptr;
}

inline char* putCount(char* to, std::uint64_t value) {
    return value <= 0xFFFFFFFF ? putCount(to, static_cast<std::uint32_t>(value))
                               : std::to_chars(to, to + numberRoom, value).ptr;
}

// In its shortest form that reads back the same; minus zero becomes zero. The number must be finite.
char* putNumber(char* to, float value);
// A length in scene units, written in metres and to the nanometre.
char* putMetres(char* to, double length);

}  // namespace nwcreate
