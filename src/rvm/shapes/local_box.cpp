#include "rvm/shapes/primitive_shape.h"

#include <algorithm>
#include <cmath>

namespace rvm {

namespace {

struct Range {
    double low = 0;
    double high = 0;
    void add(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
};

Range around(double size) {
    const double half = std::fabs(size) / 2;
    return {-half, half};
}

Box boxOf(const Range& x, const Range& y, const Range& z) {
    return {static_cast<float>(x.low),  static_cast<float>(y.low),  static_cast<float>(z.low),
            static_cast<float>(x.high), static_cast<float>(y.high), static_cast<float>(z.high)};
}

// Both discs of a snout stand half the offset away from its axis, in opposite directions.
Range snoutRange(double bottomRadius, double topRadius, double offset) {
    const double bottom = std::fabs(bottomRadius);
    const double top = std::fabs(topRadius);
    return {std::min(-offset / 2 - bottom, offset / 2 - top), std::max(-offset / 2 + bottom, offset / 2 + top)};
}

// The tube's inner and outer circle, from angle 0 to the sweep; extremes lie at the ends and at whole quarters.
Box torusBox(double radius, double tube, double sweep) {
    const double outer = radius + std::fabs(tube);
    const double inner = radius - std::fabs(tube);
    Range x{inner, outer};
    Range y;
    const auto visit = [&](double angle) {
        for (const double r : {inner, outer}) {
            x.add(r * std::cos(angle));
            y.add(r * std::sin(angle));
        }
    };
    visit(sweep);
    const int quarters = static_cast<int>(std::min(4.0, std::fabs(sweep) / (tlGePi / 2)));
    for (int i = 1; i <= quarters; ++i) {
        visit(std::copysign(i * tlGePi / 2, sweep));
    }
    return boxOf(x, y, around(2 * tube));
}

}  // namespace

Box localBox(const PrimitiveShape& shape) {
    const auto& p = shape.parameters;
    switch (shape.kind) {
    case kindBox:
        return boxOf(around(p[0]), around(p[1]), around(p[2]));
    case kindTorus:
        return torusBox(p[0], p[1], p[2]);
    case kindDish: {
        Range z;
        z.add(p[1]);
        return boxOf(around(2.0 * p[0]), around(2.0 * p[0]), z);
    }
    case kindSnout:
        return boxOf(snoutRange(p[0], p[1], p[3]), snoutRange(p[0], p[1], p[4]), around(p[2]));
    case kindCylinder:
        return boxOf(around(2.0 * p[0]), around(2.0 * p[0]), around(p[1]));
    case kindSphere:
        return boxOf(around(2.0 * p[0]), around(2.0 * p[0]), around(2.0 * p[0]));
    case kindLine:
        return boxOf(around(p[1]), {}, {});
    case kindFacets:
        break;
    }
    return {};
}

}  // namespace rvm
