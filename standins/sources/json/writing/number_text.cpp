#include "sources/json/writing/number_text.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace plant {

namespace {

// Doubles tell decimal numbers of up to fifteen digits apart, so one that gives the value is the shortest, once the
// zeros at its end are gone.
constexpr double fifteenDigits = 1e15;

char* writeUnsigned(char* at, std::uint64_t value) {
    const auto small = static_cast<std::uint32_t>(value);
    return small == value ? std::to_chars(at, at + longestNumber, small).ptr
                          : std::to_chars(at, at + longestNumber, value).ptr;
}

// `parts` counts units of 1/`unit`, a power of ten; zeros at the end are left out.
template <std::uint32_t unit>
char* writeDecimals(char* at, std::uint64_t parts) {
    at = writeUnsigned(at, parts / unit);
    auto rest = static_cast<std::uint32_t>(parts % unit);
    if (rest == 0) {
        return at;
    }
    // A digit before those of the rest keeps the zeros at its start.
    char* const end = writeUnsigned(at, unit + rest);
    *at = '.';
    at = end;
    while (at[-1] == '0') {
        --at;
    }
    return at;
}

// Null when `value`, which is not below zero, is no number of decimals down to 1/`unit`.
template <std::uint32_t unit>
char* tryDecimals(char* at, double value) {
    constexpr double divisor = unit;
    const double scaled = value * divisor;
    if (!(scaled < fifteenDigits)) {
        return nullptr;
    }
    const auto parts = static_cast<std::uint64_t>(static_cast<std::int64_t>(scaled + 0.5));
    return static_cast<double>(static_cast<std::int64_t>(parts)) / divisor == value ? writeDecimals<unit>(at, parts)
                                                                                    : nullptr;
}

char* writeAnyNumber(char* at, double value) {
    constexpr double smallestPlain = 1e-7;
    const bool plain = value >= smallestPlain && value < firstWithExponent;
    return std::to_chars(at, at + longestNumber, value,
                         plain ? std::chars_format::fixed : std::chars_format::scientific)
        .ptr;
}

}  // namespace

char* writeWhole(char* at, std::int64_t value) {
    return std::to_chars(at, at + longestNumber, value).ptr;
}

char* writeNumber(char* at, double value) {
    if (std::signbit(value)) {
        *at++ = '-';
        value = -value;
        if (value == 0) {
            std::memcpy(at, "0.0", 3);
            return at + 3;
        }
    }
    if (value < fifteenDigits) {
        const auto whole = static_cast<std::int64_t>(value);
        if (static_cast<double>(whole) == value) {
            return writeUnsigned(at, static_cast<std::uint64_t>(whole));
        }
    }
    if (char* end = tryDecimals<1000>(at, value)) {
        return end;
    }
    if (char* end = tryDecimals<1000000>(at, value)) {
        return end;
    }
    return writeAnyNumber(at, value);
}

}  // namespace plant
