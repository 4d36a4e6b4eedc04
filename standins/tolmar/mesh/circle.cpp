#include "tolmar/mesh/circle.h"

#include <bit>
#include <cmath>

namespace tolmar {

namespace {

constexpr std::uint32_t mostChords = 1u << 30;

constexpr double mostForSeries = 0.02;

// Steps between two calls of the trigonometric functions; a rotation carries from one to the next.
constexpr std::uint32_t carriedSteps = 8;

void fillArc(double sweep, std::uint32_t n, double* out) {
    const double step = sweep / n;
    const double stepCos = std::cos(step);
    const double stepSin = std::sin(step);
    double c = 1;
    double s = 0;
    for (std::uint32_t k = 0; k <= n; ++k) {
        if (k % carriedSteps == 0) {
            c = std::cos(sweep * k / n);
            s = std::sin(sweep * k / n);
        }
        out[2 * std::size_t{k}] = c;
        out[2 * std::size_t{k} + 1] = s;
        const double turned = c * stepCos - s * stepSin;
        s = c * stepSin + s * stepCos;
        c = turned;
    }
    if (sweep == twoPi) {
        out[2 * std::size_t{n}] = 1;
        out[2 * std::size_t{n} + 1] = 0;
    }
}

}  // namespace

double chordAngle(double radius, double sag) {
    if (radius <= 2 * sag) {
        return widestChord;
    }
    const double x = sag / (2 * radius);
    const double root = std::sqrt(x);
    if (x > mostForSeries) {
        return 4 * std::asin(root);
    }
    // The series of the arc sine; what it leaves out is below a part in 10^12.
    return 4 * root * (1 + x * (1.0 / 6 + x * (3.0 / 40 + x * (5.0 / 112 + x * (35.0 / 1152 + x * 63.0 / 2816)))));
}

std::uint32_t chordsOfAngle(double sweep, double angle) {
    // A hair off, so that a whole number of chords stays that number.
    const double chords = std::fabs(sweep) / angle - 1e-9;
    if (!(chords < mostChords)) {
        return mostChords;
    }
    const auto whole = static_cast<std::uint32_t>(std::max(chords, 0.0));
    return whole + (whole < chords || whole == 0 ? 1 : 0);
}

std::uint32_t arcChords(double radius, double sweep, double sag) {
    return chordsOfAngle(sweep, chordAngle(radius, sag));
}

const double* ArcTables::get(double sweep, std::uint32_t n) {
    const std::uint64_t bits = std::bit_cast<std::uint64_t>(sweep);
    const std::uint64_t key = (bits ^ (bits >> 29)) * 0x9E3779B97F4A7C15u + n;
    Slot& slot = slots_[(key ^ (key >> 32)) % slotCount];
    if (slot.n != n || slot.sweep != sweep) {
        slot.sweep = sweep;
        slot.n = n;
        slot.values.clear();
        fillArc(sweep, n, slot.values.extend(2 * (std::size_t{n} + 1)));
    }
    return slot.values.data();
}

}  // namespace tolmar
