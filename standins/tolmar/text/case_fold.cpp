#include "tolmar/case_fold.h"

#include <algorithm>

namespace tolmar {

namespace {

// Upper-case letters of a range and how they become lower case: by a distance, or, in ranges where upper and lower case
// alternate, by setting the lowest bit of an even (or adding one to an odd) unit.
enum class Rule { Distance, EvenUpper, OddUpper };
struct FoldRange {
    char16_t first;
    char16_t last;
    Rule rule;
    int distance;
};

constexpr FoldRange ranges[] = {
    {0x00C0, 0x00D6, Rule::Distance, 32},   {0x00D8, 0x00DE, Rule::Distance, 32}, {0x0100, 0x012F, Rule::EvenUpper, 0},
    {0x0132, 0x0137, Rule::EvenUpper, 0},   {0x0139, 0x0148, Rule::OddUpper, 0},  {0x014A, 0x0177, Rule::EvenUpper, 0},
    {0x0178, 0x0178, Rule::Distance, -121}, {0x0179, 0x017E, Rule::OddUpper, 0},  {0x01CD, 0x01DC, Rule::OddUpper, 0},
    {0x01DE, 0x01EF, Rule::EvenUpper, 0},   {0x01F8, 0x021F, Rule::EvenUpper, 0}, {0x0222, 0x0233, Rule::EvenUpper, 0},
    {0x0370, 0x0373, Rule::EvenUpper, 0},   {0x0376, 0x0377, Rule::EvenUpper, 0}, {0x0386, 0x0386, Rule::Distance, 38},
    {0x0388, 0x038A, Rule::Distance, 37},   {0x038C, 0x038C, Rule::Distance, 64}, {0x038E, 0x038F, Rule::Distance, 63},
    {0x0391, 0x03A1, Rule::Distance, 32},   {0x03A3, 0x03AB, Rule::Distance, 32}, {0x03C2, 0x03C2, Rule::Distance, 1},
    {0x03D8, 0x03EF, Rule::EvenUpper, 0},   {0x0400, 0x040F, Rule::Distance, 80}, {0x0410, 0x042F, Rule::Distance, 32},
    {0x0460, 0x0481, Rule::EvenUpper, 0},   {0x048A, 0x04BF, Rule::EvenUpper, 0}, {0x04C1, 0x04CE, Rule::OddUpper, 0},
    {0x04D0, 0x052F, Rule::EvenUpper, 0},   {0x0531, 0x0556, Rule::Distance, 48}, {0x1E00, 0x1E95, Rule::EvenUpper, 0},
    {0x1EA0, 0x1EFF, Rule::EvenUpper, 0},   {0x2160, 0x216F, Rule::Distance, 16}, {0x24B6, 0x24CF, Rule::Distance, 26},
    {0xFF21, 0xFF3A, Rule::Distance, 32},
};

constexpr char asciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

}  // namespace

char16_t foldCaseBeyondAscii(char16_t unit) {
    const auto* range = std::lower_bound(std::begin(ranges), std::end(ranges), unit,
                                         [](const FoldRange& r, char16_t value) { return r.last < value; });
    if (range == std::end(ranges) || unit < range->first) {
        return unit;
    }
    switch (range->rule) {
    case Rule::Distance:
        return static_cast<char16_t>(unit + range->distance);
    case Rule::EvenUpper:
        return static_cast<char16_t>(unit | 1U);
    case Rule::OddUpper:
        return static_cast<char16_t>(unit + (unit & 1U));
    }
    return unit;
}

bool lessWithoutCase(std::u16string_view a, std::u16string_view b) {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char16_t x, char16_t y) { return foldCase(x) < foldCase(y); });
}

bool equalWithoutAsciiCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return asciiLower(x) == asciiLower(y); });
}

}  // namespace tolmar
