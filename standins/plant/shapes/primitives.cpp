#include "platform/primitives.h"

#include <algorithm>
#include <cmath>

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
