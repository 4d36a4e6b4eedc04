// Checks of what a builder is told: each gives the value on, or refuses it.
#pragma once

#include "plant/memory/id_index.h"
#include "plant/model_builder.h"

#include <cmath>
#include <cstdint>
#include <string_view>

namespace plant {

[[noreturn]] void refuseId(ObjectId id);
[[noreturn]] void refuseWhole(std::int64_t value, std::int64_t low, std::int64_t high);
[[noreturn]] void refuseNumber(double value);

inline ObjectId checkedId(ObjectId id) {
    if (id < 1 || id > largestId) [[unlikely]] {
        refuseId(id);
    }
    return id;
}
inline std::int64_t checkedWhole(std::int64_t value, std::int64_t low, std::int64_t high) {
    if (value < low || value > high) [[unlikely]] {
        refuseWhole(value, low, high);
    }
    return value;
}
inline double checkedNumber(double value) {
    if (!std::isfinite(value)) [[unlikely]] {
        refuseNumber(value);
    }
    return value;
}
inline const Triple& checkedTriple(const Triple& value) {
    for (const double number : value) {
        checkedNumber(number);
    }
    return value;
}

}  // namespace plant
