// Geometry classes of the host: points, vectors, matrices, tolerances. Lengths carry no unit of their own; the plant
// model uses millimetres. All value types, double precision, no allocation.
#pragma once

#include <cmath>

// Tolerance of comparisons: `equalPoint` for distances, `equalVector` for the difference of unit vectors.
class TlGeTol {
public:
    constexpr TlGeTol() = default;
    constexpr TlGeTol(double point, double vector) : equalPoint_(point), equalVector_(vector) {}
    constexpr double equalPoint() const { return equalPoint_; }
    constexpr double equalVector() const { return equalVector_; }
    constexpr void setEqualPoint(double value) { equalPoint_ = value; }
    constexpr void setEqualVector(double value) { equalVector_ = value; }

private:
    double equalPoint_ = 1.0e-10;
    double equalVector_ = 1.0e-10;
};

struct TlGeContext {
    static constexpr TlGeTol gTol{};
};

inline constexpr double tlGePi = 3.141592653589793;

class TlGePoint3d;

class TlGeVector3d {
public:
    double x = 0;
    double y = 0;
    double z = 0;

    constexpr TlGeVector3d() = default;
    constexpr TlGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

    static const TlGeVector3d kIdentity;
    static const TlGeVector3d kXAxis;
    static const TlGeVector3d kYAxis;
    static const TlGeVector3d kZAxis;

    constexpr TlGeVector3d operator+(const TlGeVector3d& o) const { return {x + o.x, y + o.y, z + o.z}; }
    constexpr TlGeVector3d operator-(const TlGeVector3d& o) const { return {x - o.x, y - o.y, z - o.z}; }
    constexpr TlGeVector3d operator-() const { return {-x, -y, -z}; }
    constexpr TlGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
    constexpr TlGeVector3d operator/(double s) const { return {x / s, y / s, z / s}; }
    constexpr TlGeVector3d& operator+=(const TlGeVector3d& o) { return *this = *this + o; }
    constexpr TlGeVector3d& operator-=(const TlGeVector3d& o) { return *this = *this - o; }
    constexpr TlGeVector3d& operator*=(double s) { return *this = *this * s; }

    constexpr double dotProduct(const TlGeVector3d& o) const { return x * o.x + y * o.y + z * o.z; }
    constexpr TlGeVector3d crossProduct(const TlGeVector3d& o) const {
        return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x};
    }
    constexpr double lengthSqrd() const { return dotProduct(*this); }
    double length() const { return std::sqrt(lengthSqrd()); }
    bool isZeroLength(const TlGeTol& tol = TlGeContext::gTol) const { return length() <= tol.equalPoint(); }
    // The vector at length 1; a vector of zero length under `tol` gives the zero vector.
    TlGeVector3d normal(const TlGeTol& tol = TlGeContext::gTol) const {
        const double len = length();
        return len <= tol.equalPoint() ? TlGeVector3d{} : *this / len;
    }
    TlGeVector3d& normalize(const TlGeTol& tol = TlGeContext::gTol) { return *this = normal(tol); }
    // Unsigned angle in radians, 0 to pi; 0 when either vector has no length.
    double angleTo(const TlGeVector3d& o) const;
    // True when the unit vectors agree, in the same or in opposite direction, within equalVector. A vector of zero
    // length is parallel to nothing.
    bool isParallelTo(const TlGeVector3d& o, const TlGeTol& tol = TlGeContext::gTol) const;
    bool isCodirectionalTo(const TlGeVector3d& o, const TlGeTol& tol = TlGeContext::gTol) const;
    bool isEqualTo(const TlGeVector3d& o, const TlGeTol& tol = TlGeContext::gTol) const {
        return (*this - o).length() <= tol.equalVector();
    }
    // A vector across this one, not normalised: world Z x v, or world Y x v when v runs along Z (|x| and |y| below
    // 1/64).
    TlGeVector3d perpVector() const;
    // Turned by `angle` radians about `axis` (any length but 0), right-handed.
    TlGeVector3d rotatedBy(double angle, const TlGeVector3d& axis) const;
};

class TlGePoint3d {
public:
    double x = 0;
    double y = 0;
    double z = 0;

    constexpr TlGePoint3d() = default;
    constexpr TlGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

    static const TlGePoint3d kOrigin;

    constexpr TlGePoint3d operator+(const TlGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    constexpr TlGePoint3d operator-(const TlGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    constexpr TlGeVector3d operator-(const TlGePoint3d& o) const { return {x - o.x, y - o.y, z - o.z}; }
    constexpr TlGePoint3d& operator+=(const TlGeVector3d& v) { return *this = *this + v; }
    constexpr TlGePoint3d& operator-=(const TlGeVector3d& v) { return *this = *this - v; }
    constexpr TlGeVector3d asVector() const { return {x, y, z}; }
    double distanceTo(const TlGePoint3d& o) const { return (*this - o).length(); }
    bool isEqualTo(const TlGePoint3d& o, const TlGeTol& tol = TlGeContext::gTol) const {
        return distanceTo(o) <= tol.equalPoint();
    }
    // The foot of the perpendicular on the plane through `planePoint` with `planeNormal` (any length but 0).
    TlGePoint3d orthoProject(const TlGePoint3d& planePoint, const TlGeVector3d& planeNormal) const;
    TlGePoint3d rotatedBy(double angle, const TlGeVector3d& axis, const TlGePoint3d& center) const;
};

// Affine map; `entry[row][column]`, points are columns.
class TlGeMatrix3d {
public:
    double entry[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};

    static TlGeMatrix3d translation(const TlGeVector3d& v);
    // Maps the world frame onto the frame given: column vectors are the axes, the last column is the origin.
    static TlGeMatrix3d coordSystem(const TlGePoint3d& origin, const TlGeVector3d& x, const TlGeVector3d& y,
                                    const TlGeVector3d& z);
    // The map that takes the first frame onto the second. Axes of both frames must be independent.
    static TlGeMatrix3d alignCoordSys(const TlGePoint3d& fromOrigin, const TlGeVector3d& fromX,
                                      const TlGeVector3d& fromY, const TlGeVector3d& fromZ, const TlGePoint3d& toOrigin,
                                      const TlGeVector3d& toX, const TlGeVector3d& toY, const TlGeVector3d& toZ);
    TlGeMatrix3d& setToAlignCoordSys(const TlGePoint3d& fromOrigin, const TlGeVector3d& fromX,
                                     const TlGeVector3d& fromY, const TlGeVector3d& fromZ, const TlGePoint3d& toOrigin,
                                     const TlGeVector3d& toX, const TlGeVector3d& toY, const TlGeVector3d& toZ) {
        return *this = alignCoordSys(fromOrigin, fromX, fromY, fromZ, toOrigin, toX, toY, toZ);
    }
    TlGeMatrix3d operator*(const TlGeMatrix3d& o) const;
    TlGePoint3d operator*(const TlGePoint3d& p) const;
    TlGeVector3d operator*(const TlGeVector3d& v) const;
    // The inverse map; a singular matrix gives the identity.
    TlGeMatrix3d inverse() const;
};

// Circle through three points. `isValid` is false for points on one line or equal points; centre, radius and normal
// are then zero. `normal` is the unit normal by which p1, p2, p3 run counter-clockwise.
class TlGeCircArc3d {
public:
    TlGeCircArc3d(const TlGePoint3d& p1, const TlGePoint3d& p2, const TlGePoint3d& p3);
    bool isValid() const { return valid_; }
    const TlGePoint3d& center() const { return center_; }
    const TlGeVector3d& normal() const { return normal_; }
    double radius() const { return radius_; }

private:
    TlGePoint3d center_;
    TlGeVector3d normal_;
    double radius_ = 0;
    bool valid_ = false;
};
