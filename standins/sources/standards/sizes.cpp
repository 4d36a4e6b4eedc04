#include "sources/standards/sizes.h"

#include <algorithm>
#include <cmath>

namespace plant::standards {

namespace {

constexpr PipeSize rows[] = {
    {6, 0.125, 10.3, 1.73, 75, 8, 50, 4, 10},           {8, 0.25, 13.7, 2.24, 80, 8, 55, 4, 10},
    {10, 0.375, 17.1, 2.31, 85, 9, 58, 4, 12},          {15, 0.5, 21.3, 2.77, 89, 11.2, 60.3, 4, 14},
    {20, 0.75, 26.7, 2.87, 98, 12.7, 69.9, 4, 14},      {25, 1, 33.4, 3.38, 108, 14.2, 79.4, 4, 14},
    {32, 1.25, 42.2, 3.56, 117, 15.7, 88.9, 4, 14},     {40, 1.5, 48.3, 3.68, 127, 17.5, 98.4, 4, 14},
    {50, 2, 60.3, 3.91, 152, 19.1, 120.7, 4, 16},       {65, 2.5, 73, 5.16, 178, 22.4, 139.7, 4, 16},
    {80, 3, 88.9, 5.49, 190, 23.9, 152.4, 4, 16},       {90, 3.5, 101.6, 5.74, 216, 23.9, 177.8, 8, 16},
    {100, 4, 114.3, 6.02, 229, 23.9, 190.5, 8, 16},     {125, 5, 141.3, 6.55, 254, 23.9, 215.9, 8, 20},
    {150, 6, 168.3, 7.11, 279, 25.4, 241.3, 8, 20},     {200, 8, 219.1, 8.18, 343, 28.4, 298.5, 8, 20},
    {250, 10, 273, 9.27, 406, 30.2, 362, 12, 24},       {300, 12, 323.8, 9.53, 483, 31.8, 431.8, 12, 24},
    {350, 14, 355.6, 9.53, 533, 35.1, 476.3, 12, 27},   {400, 16, 406.4, 9.53, 597, 36.6, 539.8, 16, 27},
    {450, 18, 457, 9.53, 635, 39.6, 577.9, 16, 30},     {500, 20, 508, 9.53, 699, 42.9, 635, 20, 30},
    {550, 22, 559, 9.53, 749, 46, 692.2, 20, 33},       {600, 24, 610, 9.53, 813, 47.8, 749.3, 20, 33},
    {650, 26, 660, 9.53, 870, 68.3, 806.4, 24, 33},     {700, 28, 711, 9.53, 927, 71.4, 863.6, 28, 33},
    {750, 30, 762, 9.53, 984, 74.7, 914.4, 28, 33},     {800, 32, 813, 9.53, 1060, 81, 977.9, 28, 39},
    {850, 34, 864, 9.53, 1111, 82.5, 1028.7, 32, 39},   {900, 36, 914, 9.53, 1168, 90.4, 1085.8, 32, 39},
    {950, 38, 965, 9.53, 1238, 87.4, 1149.4, 32, 39},   {1000, 40, 1016, 9.53, 1289, 90.4, 1200.2, 36, 39},
    {1050, 42, 1067, 9.53, 1346, 96.8, 1257.3, 36, 39}, {1100, 44, 1118, 9.53, 1403, 101.6, 1314.5, 40, 39},
    {1200, 48, 1219, 9.53, 1511, 108, 1422.4, 44, 39},
};

// How far a bore may be off and still be meant.
constexpr double inchTolerance = 0.01;
constexpr double nominalTolerance = 0.05;
constexpr double outerTolerance = 1.1;  // producers round outer diameters, and two standards differ by as much

double share(double from, double to, double part) {
    return from + (to - from) * part;
}

}  // namespace

std::span<const PipeSize> builtInSizes() {
    return rows;
}

SizeTable::SizeTable() : rows_(std::begin(rows), std::end(rows)) {}

void SizeTable::put(const PipeSize& row) {
    const auto at = std::lower_bound(rows_.begin(), rows_.end(), row.dn,
                                     [](const PipeSize& one, double dn) { return one.dn < dn; });
    if (at != rows_.end() && at->dn == row.dn) {
        *at = row;
    } else {
        rows_.insert(at, row);
    }
}

PipeSize SizeTable::ofInches(double inch) const {
    for (const PipeSize& row : rows_) {
        if (std::abs(row.inch - inch) <= inchTolerance) {
            return row;
        }
    }
    constexpr double millimetresOfInch = 25.4;
    return ofMillimetres(inch * millimetresOfInch);
}

PipeSize SizeTable::ofMillimetres(double bore) const {
    for (const PipeSize& row : rows_) {
        if (std::abs(row.dn - bore) <= nominalTolerance) {
            return row;
        }
    }
    const PipeSize* nearest = &rows_.front();
    for (const PipeSize& row : rows_) {
        if (std::abs(row.outer - bore) < std::abs(nearest->outer - bore)) {
            nearest = &row;
        }
    }
    return std::abs(nearest->outer - bore) <= outerTolerance ? *nearest : between(bore);
}

PipeSize SizeTable::between(double outer) const {
    const auto above = std::find_if(rows_.begin(), rows_.end(), [&](const PipeSize& row) { return row.outer > outer; });
    const PipeSize& high = above == rows_.end() ? rows_.back() : *above;
    const PipeSize& low = above == rows_.begin() || above == rows_.end() ? high : *(above - 1);
    const bool inside = low.outer < high.outer;
    const double part = inside ? (outer - low.outer) / (high.outer - low.outer) : 0;
    const double scale = inside ? 1 : outer / high.outer;
    PipeSize row = high;
    row.dn = outer;
    row.inch = 0;
    row.outer = outer;
    row.wall = share(low.wall, high.wall, part) * scale;
    row.flangeOuter = share(low.flangeOuter, high.flangeOuter, part) * scale;
    row.flangeThickness = share(low.flangeThickness, high.flangeThickness, part) * scale;
    row.boltCircle = share(low.boltCircle, high.boltCircle, part) * scale;
    row.bolt = share(low.bolt, high.bolt, part) * scale;
    return row;
}

}  // namespace plant::standards
