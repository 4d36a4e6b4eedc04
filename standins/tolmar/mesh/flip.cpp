// Triangles without area: three points on one line. The edge opposite the middle point goes over to the other diagonal
// of the two triangles that share it.
#include "tolmar/mesh/region.h"

#include <unordered_map>

namespace tolmar {

namespace {

constexpr int mostRounds = 8;

class Flipper {
public:
    Flipper(const Region& region, double least, PointTriangles& triangles)
        : points_(region.points.data()), least_(least), triangles_(triangles) {
        for (std::size_t t = 0; t < triangles.size(); t += 3) {
            enter(t);
        }
    }

    // The number of triangles that are still flat.
    std::size_t round() {
        std::size_t flat = 0;
        for (std::size_t t = 0; t < triangles_.size(); t += 3) {
            if (isFlat(triangles_[t], triangles_[t + 1], triangles_[t + 2]) && !turn(t)) {
                ++flat;
            }
        }
        return flat;
    }

private:
    static std::uint64_t key(std::uint32_t a, std::uint32_t b) { return (std::uint64_t{a} << 32) | b; }

    bool isFlat(std::uint32_t a, std::uint32_t b, std::uint32_t c) const {
        return cross(points_[a], points_[b], points_[c]) <= least_;
    }

    double lengthSquared(std::uint32_t a, std::uint32_t b) const {
        const double dx = points_[b].x - points_[a].x;
        const double dy = points_[b].y - points_[a].y;
        return dx * dx + dy * dy;
    }

    void enter(std::size_t t) {
        for (std::size_t k = 0; k < 3; ++k) {
            edges_[key(triangles_[t + k], triangles_[t + (k + 1) % 3])] = t;
        }
    }

    void put(std::size_t t, std::uint32_t a, std::uint32_t b, std::uint32_t c) {
        triangles_[t] = a;
        triangles_[t + 1] = b;
        triangles_[t + 2] = c;
        enter(t);
    }

    std::size_t longestEdge(std::size_t t) const {
        std::size_t longest = 0;
        double length = -1;
        for (std::size_t k = 0; k < 3; ++k) {
            const double l = lengthSquared(triangles_[t + k], triangles_[t + (k + 1) % 3]);
            if (l > length) {
                length = l;
                longest = k;
            }
        }
        return longest;
    }

    bool turn(std::size_t t) {
        const std::size_t k = longestEdge(t);
        const std::uint32_t a = triangles_[t + k];
        const std::uint32_t c = triangles_[t + (k + 1) % 3];
        const std::uint32_t middle = triangles_[t + (k + 2) % 3];
        const auto found = edges_.find(key(c, a));
        if (found == edges_.end()) {
            return false;
        }
        const std::size_t other = found->second;
        std::uint32_t far = 0;
        for (std::size_t j = 0; j < 3; ++j) {
            if (triangles_[other + j] != a && triangles_[other + j] != c) {
                far = triangles_[other + j];
            }
        }
        if (far == middle) {
            return false;
        }
        edges_.erase(key(a, c));
        edges_.erase(key(c, a));
        put(t, middle, a, far);
        put(other, c, middle, far);
        return !isFlat(middle, a, far) && !isFlat(c, middle, far);
    }

    const Point2* points_;
    double least_;
    PointTriangles& triangles_;
    std::unordered_map<std::uint64_t, std::size_t> edges_;
};

}  // namespace

bool removeFlatTriangles(const Region& region, double least, PointTriangles& triangles) {
    Flipper flipper(region, least, triangles);
    for (int round = 0; round < mostRounds; ++round) {
        if (flipper.round() == 0) {
            return true;
        }
    }
    return false;
}

}  // namespace tolmar
