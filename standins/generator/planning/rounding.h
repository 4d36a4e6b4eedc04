// Generated lengths are whole micrometres and directions whole millionths, so that their texts are short and what two
// objects share is the same in both.
#pragma once

#include "plant/model_builder.h"
#include "tolmar/ge.h"

#include <cmath>

namespace plant::generator {

// To three decimals. Never minus zero.
inline double thousandths(double value) {
    constexpr double parts = 1000;
    return static_cast<double>(std::llround(value * parts)) / parts;
}

// To six decimals. Never minus zero.
inline double millionths(double value) {
    constexpr double parts = 1000000;
    return static_cast<double>(std::llround(value * parts)) / parts;
}

inline TlGePoint3d rounded(const TlGePoint3d& p) {
    return {thousandths(p.x), thousandths(p.y), thousandths(p.z)};
}
inline TlGeVector3d rounded(const TlGeVector3d& v) {
    return {millionths(v.x), millionths(v.y), millionths(v.z)};
}

// Rounded, as a builder takes them.
inline Triple triple(const TlGePoint3d& p) {
    return {thousandths(p.x), thousandths(p.y), thousandths(p.z)};
}
inline Triple triple(const TlGeVector3d& v) {
    return {millionths(v.x), millionths(v.y), millionths(v.z)};
}

}  // namespace plant::generator
