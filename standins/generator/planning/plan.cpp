#include "generator/planning/plan.h"

namespace plant::generator {

Vector acrossOf(const Vector& v) {
    const Vector level = up.crossProduct(v);
    return level.length() < 1e-6 ? east : level.normal();
}

}  // namespace plant::generator
