#include "sources/json/number_text.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace plant {

namespace {

// Doubles tell decimal numbers of up to fifteen digits apart, so one that gives the value is the shortest, once the
// zeros at its end are gone.
constexpr double fifteenDigits = 1e15;

char* writeUnsigned(char* at, std::uint64_t value) {
    return std::to_chars(at, at + longestNumber, value).ptr;
}

// `parts` counts units of 1/`unit`; zeros at the end are left out.
char* writeDecimals(char* at, std::uint64_t parts, std::uint64_t unit) {
    at = writeUnsigned(at, parts / unit);
    std::uint64_t rest = parts % unit;
    if (rest == 0) {
        return at;
    }
    *at++ = '.';
    for (unit /= 10; rest != 0; unit /= 10) {
        *at++ = static_cast<char>('0' + rest / unit);
        rest %= unit;
    }
    return at;
}

// Null when `value`, which is not below zero, is no number of decimals down to 1/`unit`.
char* tryDecimals(char* at, double value, std::uint64_t unit) {
    const auto divisor = static_cast<double>(unit);
    const double scaled = value * divisor;
    if (!(scaled < fifteenDigits)) {
        return nullptr;
    }
    const auto parts = static_cast<std::uint64_t>(scaled + 0.5);
    return static_cast<double>(parts) / divisor == value ? writeDecimals(at, parts, unit) : nullptr;
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
        const auto whole = static_cast<std::uint64_t>(value);
        if (static_cast<double>(whole) == value) {
            return writeUnsigned(at, whole);
        }
    }
    if (char* end = tryDecimals(at, value, 1000)) {
        return end;
    }
    if (char* end = tryDecimals(at, value, 1000000)) {
        return end;
    }
    return writeAnyNumber(at, value);
}

}  // namespace plant
