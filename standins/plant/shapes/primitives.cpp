#include "platform/primitives.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>
#include <utility>

#if defined(__SANITIZE_ADDRESS__)
#define PLANT_KEEPS_CELLS 0
#elif defined(__has_feature)
#define PLANT_KEEPS_CELLS (!__has_feature(address_sanitizer))
#else
#define PLANT_KEEPS_CELLS 1
#endif

namespace {

// Freed memory by size in steps of 16 bytes, as chains. The sanitizer wants to see every use of memory by itself.
class CellStore {
public:
    void* take(std::size_t size) {
        Cell*& first = first_[classOf(size)];
        if (first == nullptr) {
            return ::operator new(keeps(size) ? (classOf(size) + 1) * step : size);
        }
        return std::exchange(first, first->next);
    }
    void giveBack(void* place, std::size_t size) {
        if (!keeps(size)) {
            ::operator delete(place);
            return;
        }
        Cell*& first = first_[classOf(size)];
        first = ::new (place) Cell{first};
    }

private:
    struct Cell {
        Cell* next;
    };
    static constexpr std::size_t step = 16;
    static constexpr std::size_t classes = 32;
    // Larger ones share the last class, which stays empty.
    static std::size_t classOf(std::size_t size) { return std::min((size - 1) / step, classes - 1); }
    static bool keeps(std::size_t size) { return PLANT_KEEPS_CELLS != 0 && classOf(size) + 1 < classes; }

    std::array<Cell*, classes> first_{};
};
constinit CellStore cells;

}  // namespace

void* HextPrimary::operator new(std::size_t size) {
    return cells.take(size);
}

void HextPrimary::operator delete(void* place, std::size_t size) {
    cells.giveBack(place, size);
}

HxGePoint3D HextBox3D::center() const {
    if (pointKind == 1) {
        return point;
    }
    const HxGeVector3D third = xAxis.crossProduct(yAxis).normal() * (handedness == 0 ? -1.0 : 1.0);
    return point + xAxis.normal() * (xLength / 2) + yAxis.normal() * (yLength / 2) + third * (zLength / 2);
}

HxGePoint3D HextSqucone3D::topCenter() const {
    return point + zAxis.normal() * height + offsetDirection.normal() * offsetLength;
}

double HextOval3D::getHeadHeight(double r) const {
    if (radialRadius == 0) {
        return axialRadius;
    }
    const double radicand = radialRadius * radialRadius - r * r;
    return axialRadius - axialRadius / radialRadius * std::sqrt(std::max(radicand, 0.0));
}

void freeHextPrimaryArray(HextPrimaryArray& list) {
    for (HextPrimary* primitive : list) {
        delete primitive;
    }
    list.clear();
}
