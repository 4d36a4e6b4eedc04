#include "sources/rvm/surface_mesh.h"

#include <algorithm>
#include <cmath>

namespace plant::rvm {

namespace {

constexpr double fewestChords = 12;

bool samePlace(const Point& a, const Point& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

}  // namespace

std::uint32_t SurfaceMesh::add(const Point& point) {
    points.push_back(point);
    return static_cast<std::uint32_t>(points.size() - 1);
}

void SurfaceMesh::triangle(std::uint32_t a, std::uint32_t b, std::uint32_t c) {
    if (!samePlace(points[a], points[b]) && !samePlace(points[b], points[c]) && !samePlace(points[c], points[a])) {
        triangles.push_back({a, b, c});
    }
}

void SurfaceMesh::quad(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
    triangle(a, b, c);
    triangle(a, c, d);
}

void stitch(SurfaceMesh& mesh, const Rim& lower, const Rim& upper) {
    const std::uint32_t count = std::max(lower.count, upper.count);
    const bool isClosed = lower.count > 1 ? lower.isClosed : upper.isClosed;
    const auto at = [](const Rim& rim, std::uint32_t i) { return rim.first + (rim.count == 1 ? 0 : i % rim.count); };
    for (std::uint32_t i = 0; i + (isClosed ? 0 : 1) < count; ++i) {
        mesh.quad(at(lower, i), at(lower, i + 1), at(upper, i + 1), at(upper, i));
    }
}

void cap(SurfaceMesh& mesh, const Rim& rim, bool up) {
    for (std::uint32_t i = 1; i + 1 < rim.count; ++i) {
        const std::uint32_t a = rim.first + i;
        up ? mesh.triangle(rim.first, a, a + 1) : mesh.triangle(rim.first, a + 1, a);
    }
}

std::uint32_t chordsOf(double radius, double sag, double most) {
    if (!(radius > sag)) {
        return static_cast<std::uint32_t>(fewestChords);
    }
    const double chords = std::ceil(tlGePi / std::acos(1 - sag / radius));
    return static_cast<std::uint32_t>(std::clamp(chords, fewestChords, most));
}

}  // namespace plant::rvm
