// What the material numbers of groups look like, and which colours of the host's palette come nearest.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <unordered_map>

namespace plant::rvm {

struct Rgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
};

// The index from 1 to 254 of the colour nearest to `color`; of equally near ones the lowest.
int nearestPaletteIndex(Rgb color);

class ColorTable {
public:
    void add(std::uint32_t material, Rgb color) { rows_[material] = {color, nearestPaletteIndex(color)}; }
    bool empty() const { return rows_.empty(); }
    // The colour index of a material: that of the file's table, else the number itself where it is one of the palette,
    // else 0.
    int indexOf(std::uint32_t material) const;
    std::optional<Rgb> exact(std::uint32_t material) const;

private:
    struct Row {
        Rgb color;
        int index;
    };
    std::unordered_map<std::uint32_t, Row> rows_;
};

// RVMOUT writes other numbers for the first ten colour indexes; the index that it wrote as `material`. Those that it
// writes for two indexes are taken for the lower one, which is by far the commoner.
std::uint32_t ownIndexOf(std::uint32_t material);

}  // namespace plant::rvm
