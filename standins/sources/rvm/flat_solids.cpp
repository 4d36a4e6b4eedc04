// Boxes, pyramids and lines.
#include "sources/rvm/convert.h"

#include <algorithm>
#include <cmath>

namespace plant::rvm {

namespace {

// The length of a line is its second parameter; some write 0 there and have it in the bounding box alone.
double lengthOf(const Primitive& line) {
    return line.p[1] != 0 ? std::fabs(line.p[1]) : std::fabs(line.box[5] - line.box[2]);
}

}  // namespace

bool putBox(const Primitive& primitive, ShapeOutput& output) {
    const Placement& at = primitive.placement;
    HextBox3D box;
    box.xLength = primitive.p[0] * at.sx;
    box.yLength = primitive.p[1] * at.sy;
    box.zLength = primitive.p[2] * at.sz;
    if (!at.isRightAngled || std::min({box.xLength, box.yLength, box.zLength}) <= leastLength) {
        return false;
    }
    // A box is its own mirror image.
    box.point = at.origin;
    box.pointKind = 1;
    box.xAxis = at.x;
    box.yAxis = at.y;
    output.put(box);
    return true;
}

bool putPyramid(const Primitive& primitive, ShapeOutput& output) {
    const Placement& at = primitive.placement;
    const auto& [bottomX, bottomY, topX, topY, offsetX, offsetY, height, _1, _2] = primitive.p;
    HextSqucone3D frustum;
    frustum.bottomX = bottomX * at.sx;
    frustum.bottomY = bottomY * at.sy;
    frustum.topX = topX * at.sx;
    frustum.topY = topY * at.sy;
    frustum.height = height * at.sz;
    const bool isFlat = frustum.height <= leastLength || std::max(frustum.bottomX, frustum.topX) <= leastLength ||
                        std::max(frustum.bottomY, frustum.topY) <= leastLength;
    if (!at.isRightAngled || isFlat) {
        return false;
    }
    frustum.point = at.at(-offsetX / 2, -offsetY / 2, -height / 2);
    frustum.zAxis = at.z;
    frustum.xAxis = at.x;
    const Vector offset = at.along(offsetX, offsetY, 0);
    frustum.offsetLength = offset.length();
    frustum.offsetDirection = frustum.offsetLength > 0 ? offset / frustum.offsetLength : at.x;
    output.put(frustum);
    return true;
}

Conversion convertLine(const Primitive& primitive, ShapeOutput& output) {
    const double half = lengthOf(primitive) / 2;
    if (!std::isfinite(half)) {
        return Conversion::NotFinite;
    }
    const Point start = primitive.placement.at(0, 0, -half);
    const Point end = primitive.placement.at(0, 0, half);
    if (start.distanceTo(end) <= leastLength) {
        return Conversion::ZeroSize;
    }
    output.putLine(start, end);
    return Conversion::Taken;
}

}  // namespace plant::rvm
