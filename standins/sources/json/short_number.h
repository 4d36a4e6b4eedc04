// Numbers of few digits, read fast.
#pragma once

#include <cstdint>

namespace plant {

// Reads a JSON number of at most 15 digits without an exponent; the result is the nearest double, since the digits and
// the power of ten are both exact. False for any other text, which is left to a complete reader.
inline bool shortNumber(const char* at, double& number) {
    constexpr int mostDigits = 15;
    static constexpr double powers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                        1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const auto digitAt = [&at] { return static_cast<unsigned>(static_cast<unsigned char>(*at)) - '0'; };
    const bool negative = *at == '-';
    at += negative ? 1 : 0;
    const char* const start = at;
    std::uint64_t digits = 0;
    for (unsigned digit = digitAt(); digit <= 9; digit = digitAt()) {
        digits = digits * 10 + digit;
        ++at;
    }
    auto count = at - start;
    // "0" stands before a point alone.
    if (count == 0 || count > mostDigits || (count > 1 && *start == '0')) {
        return false;
    }
    std::int64_t decimals = 0;
    if (*at == '.') {
        const char* const point = ++at;
        for (unsigned digit = digitAt(); digit <= 9; digit = digitAt()) {
            digits = digits * 10 + digit;
            ++at;
        }
        decimals = at - point;
        count += decimals;
        if (decimals == 0 || count > mostDigits) {
            return false;
        }
    }
    const bool ends = *at == ',' || *at == ']' || *at == '}' || *at == ' ' || *at == '\n' || *at == '\r' || *at == '\t';
    if (!ends) {
        return false;
    }
    const double value = static_cast<double>(digits) / powers[decimals];
    number = negative ? -value : value;
    return true;
}

}  // namespace plant
