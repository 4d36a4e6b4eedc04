// Solids between two rectangles, and between a rectangle and a circle.
#include "plant/shapes/builder.h"

#include <algorithm>
#include <cmath>

namespace plant {

namespace {

// The four corners about `center`, counter-clockwise seen from the side of `x` cross `y`.
void putRectangle(const HxGePoint3D& center, const HxGeVector3D& halfX, const HxGeVector3D& halfY, TlGePoint3d* out) {
    out[0] = center - halfX - halfY;
    out[1] = center + halfX - halfY;
    out[2] = center + halfX + halfY;
    out[3] = center - halfX + halfY;
}

bool bothNothing(double a, double b) {
    return a <= leastLength && b <= leastLength;
}

double orNothing(double size) {
    return size <= leastLength ? 0 : size;
}

}  // namespace

Tl::ErrorStatus buildBox(const HextBox3D& box, tolmar::Body& body) {
    Axes axes;
    const Tl::ErrorStatus status = firstFailure({
        checkNumbers({box.xLength, box.yLength, box.zLength}),
        checkPoints({box.point}),
        checkDirections({box.xAxis, box.yAxis}),
    });
    if (status != Tl::eOk) {
        return status;
    }
    if (std::min({box.xLength, box.yLength, box.zLength}) <= leastLength) {
        return Tl::eZeroSize;
    }
    // The axes need not be perpendicular; the third one always is.
    if (makeAxes(box.xAxis, box.yAxis, axes) != Tl::eOk) {
        return Tl::eZeroDirection;
    }
    const bool mirrored = box.handedness == 0;
    const HxGeVector3D x = axes.z * box.xLength;
    const HxGeVector3D y = unitOf(box.yAxis) * box.yLength;
    const HxGeVector3D z = axes.y * (mirrored ? -box.zLength : box.zLength);
    const HxGePoint3D low = box.pointKind == 1 ? box.point - (x + y + z) / 2 : box.point;
    const HxGePoint3D middle = low + (x + y) / 2;
    tolmar::BlockBody block;
    putRectangle(middle, (mirrored ? y : x) / 2, (mirrored ? x : y) / 2, block.corner.data());
    for (int i = 0; i < 4; ++i) {
        block.corner[i + 4] = block.corner[i] + z;
    }
    body = block;
    return Tl::eOk;
}

Tl::ErrorStatus buildFrustum(const HextSqucone3D& f, tolmar::Body& body) {
    const Tl::ErrorStatus status = firstFailure({
        checkNumbers({f.bottomX, f.bottomY, f.topX, f.topY, f.height, f.offsetLength}),
        checkPoints({f.point}),
        checkDirections({f.zAxis, f.xAxis, f.offsetDirection}),
    });
    if (status != Tl::eOk) {
        return status;
    }
    const bool negative = std::min({f.bottomX, f.bottomY, f.topX, f.topY}) < 0;
    if (negative || f.height <= leastLength || bothNothing(f.bottomX, f.topX) || bothNothing(f.bottomY, f.topY)) {
        return Tl::eZeroSize;
    }
    Axes axes;
    if (makeAxes(f.zAxis, f.xAxis, axes) != Tl::eOk) {
        return Tl::eZeroDirection;
    }
    HxGePoint3D top = f.point + axes.z * f.height;
    if (f.offsetLength != 0) {
        const HxGeVector3D along = unitOf(f.offsetDirection);
        if (along.lengthSqrd() == 0) {
            return Tl::eZeroDirection;
        }
        top += along * f.offsetLength;
    }
    if ((top - f.point).dotProduct(axes.z) <= leastLength) {
        return Tl::eZeroSize;
    }
    tolmar::BlockBody block;
    putRectangle(f.point, axes.x * (orNothing(f.bottomX) / 2), axes.y * (orNothing(f.bottomY) / 2),
                 block.corner.data());
    putRectangle(top, axes.x * (orNothing(f.topX) / 2), axes.y * (orNothing(f.topY) / 2), block.corner.data() + 4);
    body = block;
    return Tl::eOk;
}

Tl::ErrorStatus buildSquareRound(const HextSqucir3D& t, tolmar::Body& body) {
    const Tl::ErrorStatus status = firstFailure({
        checkNumbers({t.xLength, t.yLength, t.topRadius}),
        checkPoints({t.basePoint, t.topCenter}),
        checkDirections({t.xAxis, t.baseNormal}),
    });
    if (status != Tl::eOk) {
        return status;
    }
    if (std::min({t.xLength, t.yLength, t.topRadius}) <= leastLength) {
        return Tl::eZeroSize;
    }
    Axes axes;
    if (makeAxes(t.baseNormal, t.xAxis, axes) != Tl::eOk) {
        return Tl::eZeroDirection;
    }
    const double height = (t.topCenter - t.basePoint).dotProduct(axes.z);
    if (std::fabs(height) <= leastLength) {
        return Tl::eZeroSize;
    }
    const HxGeVector3D y = height > 0 ? axes.y : -axes.y;
    const HxGeVector3D halfX = axes.x * (t.xLength / 2);
    const HxGeVector3D halfY = y * (t.yLength / 2);
    tolmar::SquareRoundBody transition;
    transition.corner = {t.basePoint + halfX + halfY, t.basePoint - halfX + halfY, t.basePoint - halfX - halfY,
                         t.basePoint + halfX - halfY};
    transition.top = {t.topCenter, axes.x * t.topRadius, y * t.topRadius};
    body = transition;
    return Tl::eOk;
}

}  // namespace plant
