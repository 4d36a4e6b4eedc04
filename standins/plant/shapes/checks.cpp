#include "plant/shapes/builder.h"

#include <algorithm>
#include <cmath>

namespace plant {

namespace {

// Two directions whose angle is below this count as parallel.
constexpr double leastAngle = 1e-9;

Tl::ErrorStatus checkNumber(double value) {
    if (!std::isfinite(value)) {
        return Tl::eNotFinite;
    }
    return std::fabs(value) > tlMaxCoordinate ? Tl::eTooLarge : Tl::eOk;
}

}  // namespace

Tl::ErrorStatus checkNumbers(std::initializer_list<double> numbers) {
    for (const double number : numbers) {
        if (const Tl::ErrorStatus status = checkNumber(number); status != Tl::eOk) {
            return status;
        }
    }
    return Tl::eOk;
}

Tl::ErrorStatus checkPoints(std::initializer_list<HxGePoint3D> points) {
    for (const HxGePoint3D& p : points) {
        if (const Tl::ErrorStatus status = checkNumbers({p.x, p.y, p.z}); status != Tl::eOk) {
            return status;
        }
    }
    return Tl::eOk;
}

Tl::ErrorStatus checkDirections(std::initializer_list<HxGeVector3D> directions) {
    for (const HxGeVector3D& v : directions) {
        if (const Tl::ErrorStatus status = checkNumbers({v.x, v.y, v.z}); status != Tl::eOk) {
            return status;
        }
    }
    return Tl::eOk;
}

HxGeVector3D unitOf(const HxGeVector3D& v) {
    const double largest = std::max({std::fabs(v.x), std::fabs(v.y), std::fabs(v.z)});
    if (!(largest > 0)) {
        return {};
    }
    const HxGeVector3D scaled = v / largest;
    return scaled / scaled.length();
}

Tl::ErrorStatus makeAxes(const HxGeVector3D& z, const HxGeVector3D& x, Axes& axes) {
    axes.z = unitOf(z);
    const HxGeVector3D along = unitOf(x);
    const HxGeVector3D across = axes.z.crossProduct(along);
    if (across.length() < leastAngle) {
        return Tl::eZeroDirection;
    }
    axes.y = across / across.length();
    axes.x = axes.y.crossProduct(axes.z);
    return Tl::eOk;
}

Tl::ErrorStatus makeAxes(const HxGeVector3D& z, Axes& axes) {
    const HxGeVector3D along = unitOf(z);
    return along.lengthSqrd() > 0 ? makeAxes(along, along.perpVector(), axes) : Tl::eZeroDirection;
}

}  // namespace plant
