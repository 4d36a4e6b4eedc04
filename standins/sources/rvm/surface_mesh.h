// A surface of triangles, and how it is made of rings of points.
#pragma once

#include "sources/rvm/placement.h"

#include <array>
#include <cstdint>
#include <vector>

namespace plant::rvm {

struct SurfaceMesh {
    std::vector<Point> points;
    std::vector<std::array<std::uint32_t, 3>> triangles;  // counter-clockwise seen from outside

    void clear() {
        points.clear();
        triangles.clear();
    }
    std::uint32_t add(const Point& point);
    // A triangle with two corners at one place is none.
    void triangle(std::uint32_t a, std::uint32_t b, std::uint32_t c);
    void quad(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d);
};

// Points of a closed or open line, by their numbers from `first` on. A line of one point stands for an apex.
struct Rim {
    std::uint32_t first = 0;
    std::uint32_t count = 0;
    bool isClosed = true;
};

// The band between two rims of equal number or an apex, outward when `lower` runs counter-clockwise seen from
// `upper`.
void stitch(SurfaceMesh& mesh, const Rim& lower, const Rim& upper);
// The plane inside of a closed rim; `up` when it runs counter-clockwise seen from outside.
void cap(SurfaceMesh& mesh, const Rim& rim, bool up);

// Chords of a whole circle that stand off it by at most `sag`; 12 at least, and no more than `most`.
std::uint32_t chordsOf(double radius, double sag, double most);

}  // namespace plant::rvm
