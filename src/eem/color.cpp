#include "eem/color.h"

#include "exportbase/color_table.h"
#include "exportbase/material_code.h"

#include <algorithm>
#include <limits>

namespace eem {

namespace {

constexpr std::uint32_t translucent = 0x33U << 24U;
constexpr std::int64_t lastIndex = 255;

// Codes from `from` up to the row before.
struct CodeRow {
    std::int64_t from;
    std::int64_t (*index)(std::int64_t code);
    std::uint32_t alpha;
};
constexpr CodeRow codeRows[] = {
    {inverseCode + obstructionCode, [](std::int64_t code) { return inverseCode + obstructionCode + lastIndex - code; },
     translucent},
    {inverseCode, [](std::int64_t code) { return inverseCode + lastIndex - code; }, 0},
    {obstructionCode, [](std::int64_t code) { return code - obstructionCode; }, translucent},
    {std::numeric_limits<std::int64_t>::min(), [](std::int64_t code) { return code; }, 0},
};

}  // namespace

std::uint32_t colorWord(std::int64_t code) {
    const CodeRow& row = *std::find_if(std::begin(codeRows), std::end(codeRows),
                                       [code](const CodeRow& candidate) { return code >= candidate.from; });
    float rgb[3] = {0, 0, 0};
    const std::int64_t index = row.index(code);
    if (index >= 0 && index <= lastIndex) {
        colorToRgb(static_cast<int>(index), rgb);
    }
    const auto part = [&rgb](unsigned i) { return static_cast<std::uint32_t>(rgb[i]) << (8U * i); };
    return part(0) | part(1) | part(2) | row.alpha;
}

}  // namespace eem
