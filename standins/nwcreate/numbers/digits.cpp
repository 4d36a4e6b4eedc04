#include "nwcreate/numbers/digits.h"

#include "nwcreate/numbers/vectors.h"

namespace nwcreate {

namespace {

constexpr double nanometresPerUnit = 1e6;
constexpr double unitsPerMetre = 1000.0;
constexpr std::uint64_t nanometresPerMetre = 1'000'000'000;

// A point and up to nine digits, without the zeros at their end; nothing for 0.
char* putBillionths(char* to, std::uint32_t value) {
    if (value == 0) {
        return to;
    }
    *to++ = '.';
    const std::uint32_t millionths = value / thousand;
    const std::uint32_t billionths = value % thousand;
    to = putTriple(to, millionths / thousand);
    if (millionths % thousand != 0 || billionths != 0) {
        to = putTriple(to, millionths % thousand);
    }
    if (billionths != 0) {
        to = putTriple(to, billionths);
    }
    while (to[-1] == '0') {
        --to;
    }
    return to;
}

}  // namespace

char* putNumber(char* to, float value) {
    if (value == 0.0F) {
        *to = '0';
        return to + 1;
    }
    return std::to_chars(to, to + numberRoom, value).ptr;
}

char* putMetres(char* to, double length) {
    // Beyond a million kilometres all digits stay.
    constexpr double most = 1e18;
    const double nanometres = rounded(length * nanometresPerUnit);
    if (!(std::fabs(nanometres) < most)) {
        return std::to_chars(to, to + numberRoom, length / unitsPerMetre).ptr;
    }
    const auto whole = static_cast<std::int64_t>(nanometres);
    if (whole < 0) {
        *to++ = '-';
    }
    const auto size = static_cast<std::uint64_t>(whole < 0 ? -whole : whole);
    to = putCount(to, size / nanometresPerMetre);
    return putBillionths(to, static_cast<std::uint32_t>(size % nanometresPerMetre));
}

}  // namespace nwcreate
