#include "generator/plan.h"

#include <cmath>

namespace plant::generator {

Point rounded(const Point& p) {
    constexpr double parts = 1000;
    const auto round = [](double value) { return static_cast<double>(std::llround(value * parts)) / parts; };
    return {round(p.x), round(p.y), round(p.z)};
}

Vector acrossOf(const Vector& v) {
    const Vector level = up.crossProduct(v);
    return level.length() < 1e-6 ? east : level.normal();
}

}  // namespace plant::generator
