// Small vectors and matrices of doubles, as the calls of the library pass them.
#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <span>

namespace nwcreate {

using Vec3 = std::array<double, 3>;
// The images of X, Y, Z and the origin, four numbers each.
using Matrix = std::array<double, 16>;

inline constexpr Matrix unitMatrix = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
// Further out than any plant; a float in metres still has it.
inline constexpr double farthest = 1e15;

inline Vec3 operator+(const Vec3& a, const Vec3& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
inline Vec3 operator-(const Vec3& a, const Vec3& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
inline Vec3 operator*(const Vec3& a, double factor) {
    return {a[0] * factor, a[1] * factor, a[2] * factor};
}
inline Vec3 cross(const Vec3& a, const Vec3& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline double length(const Vec3& a) {
    return std::hypot(a[0], a[1], a[2]);
}

// False for what is not finite, too.
inline bool isPlace(double value) {
    return std::fabs(value) <= farthest;
}
// The magnitudes of doubles order like their bits, and what is not finite comes last. Whole numbers make the loop one
// without branches.
inline bool areWithin(std::span<const double> values, double most) {
    constexpr std::uint64_t magnitude = ~std::uint64_t{0} >> 1U;
    const auto limit = std::bit_cast<std::uint64_t>(most);
    std::uint64_t beyond = 0;  // the sign bit is set once a difference was negative
    for (const double value : values) {
        beyond |= limit - (std::bit_cast<std::uint64_t>(value) & magnitude);
    }
    return beyond >> 63U == 0;
}
inline bool arePlaces(std::span<const double> values) {
    return areWithin(values, farthest);
}

// Adding and taking away this rounds to whole numbers, below `mostRounded`.
inline constexpr double roundingShift = 6755399441055744.0;  // 1.5 * 2^52
inline constexpr double mostRounded = 2251799813685248.0;    // 2^51
// To a whole number; what is beyond all fractions stays.
inline double rounded(double value) {
    return std::fabs(value) < mostRounded ? (value + roundingShift) - roundingShift : value;
}

inline Vec3 transformed(const Matrix& m, const Vec3& p) {
    Vec3 image;
    for (std::size_t i = 0; i < 3; ++i) {
        image[i] = m[i] * p[0] + m[4 + i] * p[1] + m[8 + i] * p[2] + m[12 + i];
    }
    return image;
}
// First `inner`, then `outer`; both with (0, 0, 0, 1) in the fourth places.
inline Matrix combined(const Matrix& outer, const Matrix& inner) {
    Matrix result = unitMatrix;
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t i = 0; i < 3; ++i) {
            result[4 * row + i] = outer[i] * inner[4 * row] + outer[4 + i] * inner[4 * row + 1] +
                                  outer[8 + i] * inner[4 * row + 2] + (row == 3 ? outer[12 + i] : 0.0);
        }
    }
    return result;
}

}  // namespace nwcreate
