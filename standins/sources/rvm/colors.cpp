#include "sources/rvm/colors.h"

#include "platform/hxcom.h"

#include <algorithm>
#include <limits>

namespace plant::rvm {

namespace {

constexpr int firstIndex = 1;
constexpr int lastIndex = 254;
constexpr std::array<std::uint32_t, 10> ownMaterials = {0, 25, 4, 5, 6, 7, 16, 17, 18, 19};

using Palette = std::array<Rgb, lastIndex + 1>;

const Palette& palette() {
    static const Palette colors = [] {
        Palette made{};
        for (int i = firstIndex; i <= lastIndex; ++i) {
            const unsigned rgb = hxcad::transAcadColorIdx2RGB(i);
            made[static_cast<std::size_t>(i)] = {static_cast<std::uint8_t>(rgb), static_cast<std::uint8_t>(rgb >> 8U),
                                                 static_cast<std::uint8_t>(rgb >> 16U)};
        }
        return made;
    }();
    return colors;
}

int distance(Rgb a, Rgb b) {
    const int red = a.red - b.red;
    const int green = a.green - b.green;
    const int blue = a.blue - b.blue;
    return red * red + green * green + blue * blue;
}

}  // namespace

int nearestPaletteIndex(Rgb color) {
    int best = firstIndex;
    int bestDistance = std::numeric_limits<int>::max();
    for (int i = firstIndex; i <= lastIndex; ++i) {
        const int here = distance(color, palette()[static_cast<std::size_t>(i)]);
        if (here < bestDistance) {
            best = i;
            bestDistance = here;
        }
    }
    return best;
}

int ColorTable::indexOf(std::uint32_t material) const {
    if (const auto row = rows_.find(material); row != rows_.end()) {
        return row->second.index;
    }
    return material <= static_cast<std::uint32_t>(lastIndex) ? static_cast<int>(material) : 0;
}

std::optional<Rgb> ColorTable::exact(std::uint32_t material) const {
    const auto row = rows_.find(material);
    return row != rows_.end() ? std::optional<Rgb>(row->second.color) : std::nullopt;
}

std::uint32_t ownIndexOf(std::uint32_t material) {
    const auto at = std::find(ownMaterials.begin(), ownMaterials.end(), material);
    return at != ownMaterials.end() ? static_cast<std::uint32_t>(at - ownMaterials.begin()) : material;
}

}  // namespace plant::rvm
