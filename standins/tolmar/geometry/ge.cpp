#include "tolmar/ge.h"

#include <algorithm>

const TlGeVector3d TlGeVector3d::kIdentity{0, 0, 0};
const TlGeVector3d TlGeVector3d::kXAxis{1, 0, 0};
const TlGeVector3d TlGeVector3d::kYAxis{0, 1, 0};
const TlGeVector3d TlGeVector3d::kZAxis{0, 0, 1};
const TlGePoint3d TlGePoint3d::kOrigin{0, 0, 0};

namespace {

// At a size of 1, so that products of it overflow nowhere.
TlGeVector3d scaledDown(const TlGeVector3d& v) {
    return v / std::max({std::fabs(v.x), std::fabs(v.y), std::fabs(v.z)});
}

}  // namespace

double TlGeVector3d::angleTo(const TlGeVector3d& o) const {
    constexpr double largestProduct = 1e150;  // its square is a number
    const double lengths = length() * o.length();
    if (!(lengths > 0)) {
        return 0;
    }
    if (lengths > largestProduct) {
        return scaledDown(*this).angleTo(scaledDown(o));
    }
    // acos loses half the digits near 0 and pi, atan2 of cross and dot does not.
    return std::atan2(crossProduct(o).length() / lengths, dotProduct(o) / lengths);
}

bool TlGeVector3d::isParallelTo(const TlGeVector3d& o, const TlGeTol& tol) const {
    return isCodirectionalTo(o, tol) || isCodirectionalTo(-o, tol);
}

bool TlGeVector3d::isCodirectionalTo(const TlGeVector3d& o, const TlGeTol& tol) const {
    const double a = length();
    const double b = o.length();
    return a > 0 && b > 0 && (*this / a - o / b).length() <= tol.equalVector();
}

TlGeVector3d TlGeVector3d::perpVector() const {
    constexpr double nearZ = 1.0 / 64.0;
    const bool acrossZ = std::fabs(x) >= nearZ || std::fabs(y) >= nearZ;
    return (acrossZ ? kZAxis : kYAxis).crossProduct(*this);
}

TlGeVector3d TlGeVector3d::rotatedBy(double angle, const TlGeVector3d& axis) const {
    const TlGeVector3d k = axis.normal();
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return *this * c + k.crossProduct(*this) * s + k * (k.dotProduct(*this) * (1 - c));
}

TlGePoint3d TlGePoint3d::orthoProject(const TlGePoint3d& planePoint, const TlGeVector3d& planeNormal) const {
    const TlGeVector3d n = planeNormal.normal();
    return *this - n * n.dotProduct(*this - planePoint);
}

TlGePoint3d TlGePoint3d::rotatedBy(double angle, const TlGeVector3d& axis, const TlGePoint3d& center) const {
    return center + (*this - center).rotatedBy(angle, axis);
}

TlGeMatrix3d TlGeMatrix3d::translation(const TlGeVector3d& v) {
    TlGeMatrix3d m;
    m.entry[0][3] = v.x;
    m.entry[1][3] = v.y;
    m.entry[2][3] = v.z;
    return m;
}

TlGeMatrix3d TlGeMatrix3d::coordSystem(const TlGePoint3d& origin, const TlGeVector3d& x, const TlGeVector3d& y,
                                       const TlGeVector3d& z) {
    TlGeMatrix3d m;
    const TlGeVector3d columns[3] = {x, y, z};
    for (int c = 0; c < 3; ++c) {
        m.entry[0][c] = columns[c].x;
        m.entry[1][c] = columns[c].y;
        m.entry[2][c] = columns[c].z;
    }
    m.entry[0][3] = origin.x;
    m.entry[1][3] = origin.y;
    m.entry[2][3] = origin.z;
    return m;
}

TlGeMatrix3d TlGeMatrix3d::alignCoordSys(const TlGePoint3d& fromOrigin, const TlGeVector3d& fromX,
                                         const TlGeVector3d& fromY, const TlGeVector3d& fromZ,
                                         const TlGePoint3d& toOrigin, const TlGeVector3d& toX, const TlGeVector3d& toY,
                                         const TlGeVector3d& toZ) {
    return coordSystem(toOrigin, toX, toY, toZ) * coordSystem(fromOrigin, fromX, fromY, fromZ).inverse();
}

TlGeMatrix3d TlGeMatrix3d::operator*(const TlGeMatrix3d& o) const {
    TlGeMatrix3d result;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            double sum = 0;
            for (int k = 0; k < 4; ++k) {
                sum += entry[r][k] * o.entry[k][c];
            }
            result.entry[r][c] = sum;
        }
    }
    return result;
}

TlGePoint3d TlGeMatrix3d::operator*(const TlGePoint3d& p) const {
    return TlGePoint3d{entry[0][3], entry[1][3], entry[2][3]} + *this * p.asVector();
}

TlGeVector3d TlGeMatrix3d::operator*(const TlGeVector3d& v) const {
    return {entry[0][0] * v.x + entry[0][1] * v.y + entry[0][2] * v.z,
            entry[1][0] * v.x + entry[1][1] * v.y + entry[1][2] * v.z,
            entry[2][0] * v.x + entry[2][1] * v.y + entry[2][2] * v.z};
}

TlGeMatrix3d TlGeMatrix3d::inverse() const {
    const TlGeVector3d x{entry[0][0], entry[1][0], entry[2][0]};
    const TlGeVector3d y{entry[0][1], entry[1][1], entry[2][1]};
    const TlGeVector3d z{entry[0][2], entry[1][2], entry[2][2]};
    const TlGeVector3d origin{entry[0][3], entry[1][3], entry[2][3]};
    const double det = x.dotProduct(y.crossProduct(z));
    if (det == 0) {
        return {};
    }
    const TlGeVector3d rows[3] = {y.crossProduct(z) / det, z.crossProduct(x) / det, x.crossProduct(y) / det};
    TlGeMatrix3d m;
    for (int r = 0; r < 3; ++r) {
        m.entry[r][0] = rows[r].x;
        m.entry[r][1] = rows[r].y;
        m.entry[r][2] = rows[r].z;
        m.entry[r][3] = -rows[r].dotProduct(origin);
    }
    return m;
}

TlGeCircArc3d::TlGeCircArc3d(const TlGePoint3d& p1, const TlGePoint3d& p2, const TlGePoint3d& p3) {
    const TlGeVector3d a = p2 - p1;
    const TlGeVector3d b = p3 - p1;
    const TlGeVector3d n = a.crossProduct(b);
    const double scale = a.length() * b.length();
    if (!(n.length() > 1e-12 * scale) || !(scale > 0)) {
        return;
    }
    const TlGeVector3d toCenter =
        (n.crossProduct(a) * b.lengthSqrd() + b.crossProduct(n) * a.lengthSqrd()) / (2 * n.lengthSqrd());
    center_ = p1 + toCenter;
    radius_ = toCenter.length();
    normal_ = n / n.length();
    valid_ = std::isfinite(radius_);
}
