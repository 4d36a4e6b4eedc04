#include "text_cursor.h"

#include <array>

namespace nwcreate {

namespace {

constexpr double nanometresPerUnit = 1e6;
constexpr double unitsPerMetre = 1000.0;
constexpr std::uint64_t nanometresPerMetre = 1'000'000'000;
constexpr std::uint32_t thousand = 1000;

// The three digits of 0 to 999.
constexpr auto digitTriples = [] {
    std::array<char, std::size_t{3} * thousand> triples{};
    for (std::size_t i = 0; i < thousand; ++i) {
        triples[3 * i] = static_cast<char>('0' + i / 100);
        triples[3 * i + 1] = static_cast<char>('0' + i / 10 % 10);
        triples[3 * i + 2] = static_cast<char>('0' + i % 10);
    }
    return triples;
}();

void putTriple(char* to, std::uint32_t value) {
    std::memcpy(to, digitTriples.data() + std::size_t{3} * value, 3);
}

// A point and nine digits, without the zeros at their end; nothing for 0.
char* putBillionths(char* to, std::uint32_t value) {
    if (value == 0) {
        return to;
    }
    const std::uint32_t upper = value / thousand;
    const std::uint32_t lower = value % thousand;
    *to = '.';
    putTriple(to + 1, upper / thousand);
    putTriple(to + 4, upper % thousand);
    putTriple(to + 7, lower);
    char* end = to + (lower != 0 ? 10 : 7);
    while (end[-1] == '0') {
        --end;
    }
    return end;
}

}  // namespace

TextCursor& TextCursor::number(float value) {
    if (value == 0.0F) {
        *at_++ = '0';
    } else {
        at_ = std::to_chars(at_, at_ + numberRoom, value).ptr;
    }
    return *this;
}

TextCursor& TextCursor::metres(double length) {
    // Beyond a million kilometres all digits stay.
    constexpr double most = 1e18;
    const double nanometres = rounded(length * nanometresPerUnit);
    if (!(std::fabs(nanometres) < most)) {
        at_ = std::to_chars(at_, at_ + numberRoom, length / unitsPerMetre).ptr;
        return *this;
    }
    const auto whole = static_cast<std::int64_t>(nanometres);
    if (whole < 0) {
        *at_++ = '-';
    }
    const auto size = static_cast<std::uint64_t>(whole < 0 ? -whole : whole);
    count(size / nanometresPerMetre);
    at_ = putBillionths(at_, static_cast<std::uint32_t>(size % nanometresPerMetre));
    return *this;
}

TextCursor& TextCursor::metres(const Vec3& point) {
    return put("[").metres(point[0]).put(",").metres(point[1]).put(",").metres(point[2]).put("]");
}

}  // namespace nwcreate
