// The chord rule, and the unit circle in equal steps.
#pragma once

#include "tolmar/mesh.h"

#include <array>
#include <cstdint>

namespace tolmar {

// Sizes and distances up to this count as nothing.
inline constexpr double leastSize = 1e-6;
inline constexpr double twoPi = 2 * tlGePi;
// No chord spans more than a third of a circle.
inline constexpr double widestChord = twoPi / 3;

// Angle under a chord that stands off its circle by at most `sag`.
double chordAngle(double radius, double sag);
// Chords for an arc; at least 1, and 3 for a whole circle. Far above maxTriangles for an absurd demand, never an
// overflow.
std::uint32_t arcChords(double radius, double sweep, double sag);
// Chords of `angle` each that an arc takes.
std::uint32_t chordsOfAngle(double sweep, double angle);

// cos and sin of sweep * k / n for k = 0..n, pairwise, kept from call to call.
class ArcTables {
public:
    // Valid until the next call. The last pair of a whole circle equals the first.
    const double* get(double sweep, std::uint32_t n);

private:
    struct Slot {
        double sweep = 0;
        std::uint32_t n = 0;
        PlainBuffer<double> values;
    };
    static constexpr std::size_t slotCount = 256;
    std::array<Slot, slotCount> slots_;
};

}  // namespace tolmar
