#include "sources/rvm/placement.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace plant::rvm {

namespace {

constexpr double millimetresPerMetre = 1000;
// Single precision leaves of a length of 1, and of an angle of 90 degrees, a few parts in ten million.
constexpr double lengthNoise = 2e-6;
constexpr double angleNoise = 2e-6;
constexpr double componentNoise = 2e-7;
constexpr double leastVolume = 1e-9;

double withoutNoise(double component) {
    return std::fabs(component) < componentNoise ? 0 : component;
}

// The direction of an axis; its length goes to `length`.
Vector directionOf(const double* numbers, double& length) {
    const Vector axis(numbers[0] * millimetresPerMetre, numbers[1] * millimetresPerMetre,
                      numbers[2] * millimetresPerMetre);
    length = axis.length();
    if (!(length > 0)) {
        return {};
    }
    const Vector unit = axis / length;
    if (std::fabs(length - 1) < lengthNoise) {
        length = 1;
    }
    const Vector clean(withoutNoise(unit.x), withoutNoise(unit.y), withoutNoise(unit.z));
    return clean / clean.length();
}

bool alike(double a, double b) {
    return std::fabs(a - b) <= lengthNoise * std::max(a, b);
}

}  // namespace

bool Placement::keepsCircles() const {
    return isRightAngled && alike(sx, sy);
}

bool Placement::keepsSpheres() const {
    return keepsCircles() && alike(sx, sz);
}

Placement placementOf(const double (&matrix)[12]) {
    Placement p;
    p.isFinite = std::all_of(std::begin(matrix), std::end(matrix), [](double number) { return std::isfinite(number); });
    if (!p.isFinite) {
        return p;
    }
    p.x = directionOf(matrix, p.sx);
    p.y = directionOf(matrix + 3, p.sy);
    p.z = directionOf(matrix + 6, p.sz);
    p.origin = {matrix[9] * millimetresPerMetre, matrix[10] * millimetresPerMetre, matrix[11] * millimetresPerMetre};
    const double volume = p.x.crossProduct(p.y).dotProduct(p.z);
    p.isSingular = std::fabs(volume) < leastVolume;
    p.isMirrored = volume < 0;
    p.isRightAngled = std::fabs(p.x.dotProduct(p.y)) < angleNoise && std::fabs(p.y.dotProduct(p.z)) < angleNoise &&
                      std::fabs(p.z.dotProduct(p.x)) < angleNoise;
    return p;
}

}  // namespace plant::rvm
