// Standard sizes of pipes and flanges: what files that give a bore alone leave out. Steel pipe by nominal size with
// standard wall, flanges of the lowest usual rating; users put rows of their own in the place of these (settings.h).
#pragma once

#include <span>
#include <vector>

namespace plant::standards {

// All lengths in millimetres.
struct PipeSize {
    double dn = 0;    // nominal size
    double inch = 0;  // the same by the other name
    double outer = 0;
    double wall = 0;
    double flangeOuter = 0;
    double flangeThickness = 0;
    double boltCircle = 0;
    int bolts = 0;
    double bolt = 0;  // diameter
};

// By nominal size, rising.
std::span<const PipeSize> builtInSizes();

// A table of sizes and what is asked of it. Rows given later stand in the place of rows of the same nominal size.
class SizeTable {
public:
    SizeTable();
    void put(const PipeSize& row);

    // By inches, nominal millimetres or true outer diameter. A bore that is none of a row's gets a row made of its
    // neighbours, whose `dn` and `outer` are the bore: sizes of one's own occur. The bore is above 0.
    PipeSize ofInches(double inch) const;
    // A bore in millimetres may be a nominal size or an outer diameter, by the producer: what a row has as its nominal
    // size counts first.
    PipeSize ofMillimetres(double bore) const;

private:
    PipeSize between(double outer) const;

    std::vector<PipeSize> rows_;
};

}  // namespace plant::standards
