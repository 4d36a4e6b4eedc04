#include "mesh_checker.h"

#include <algorithm>
#include <tuple>

namespace {

TlGeVector3d twiceArea(const PlainMesh& mesh, std::size_t t) {
    const auto& [a, b, c] = mesh.triangles[t];
    return (mesh.points[b] - mesh.points[a]).crossProduct(mesh.points[c] - mesh.points[a]);
}

double longestEdge(const PlainMesh& mesh, std::size_t t) {
    const auto& [a, b, c] = mesh.triangles[t];
    return std::max({mesh.points[a].distanceTo(mesh.points[b]), mesh.points[b].distanceTo(mesh.points[c]),
                     mesh.points[c].distanceTo(mesh.points[a])});
}

::testing::AssertionResult hasAreas(const PlainMesh& mesh) {
    for (std::size_t t = 0; t < mesh.triangles.size(); ++t) {
        const double height = twiceArea(mesh, t).length() / longestEdge(mesh, t);
        // At most a thousand-millionth of the longest edge high: the points stand on one line.
        if (!(height > 1e-9 * longestEdge(mesh, t))) {
            return ::testing::AssertionFailure() << "triangle " << t << " has no area";
        }
    }
    return ::testing::AssertionSuccess();
}

::testing::AssertionResult hasOwnPlaces(const PlainMesh& mesh) {
    std::vector<std::tuple<double, double, double>> places;
    for (const TlGePoint3d& p : mesh.points) {
        places.emplace_back(p.x, p.y, p.z);
    }
    std::sort(places.begin(), places.end());
    if (std::adjacent_find(places.begin(), places.end()) != places.end()) {
        return ::testing::AssertionFailure() << "two points stand at one place";
    }
    std::vector<bool> used(mesh.points.size(), false);
    for (const auto& triangle : mesh.triangles) {
        for (const std::uint32_t corner : triangle) {
            if (corner >= used.size()) {
                return ::testing::AssertionFailure() << "point " << corner << " is not there";
            }
            used[corner] = true;
        }
    }
    const auto unused = std::find(used.begin(), used.end(), false);
    if (unused != used.end()) {
        return ::testing::AssertionFailure() << "point " << unused - used.begin() << " is not used";
    }
    return ::testing::AssertionSuccess();
}

// Undirected edge, with the number of its runs: forward minus backward, and all.
::testing::AssertionResult hasMatchedEdges(const PlainMesh& mesh, std::size_t mostRuns) {
    std::vector<std::uint64_t> runs;
    runs.reserve(3 * mesh.triangles.size());
    for (const auto& triangle : mesh.triangles) {
        for (int k = 0; k < 3; ++k) {
            const std::uint64_t a = triangle[k];
            const std::uint64_t b = triangle[(k + 1) % 3];
            if (a == b) {
                return ::testing::AssertionFailure() << "a triangle names a point twice";
            }
            runs.push_back(std::min(a, b) << 33 | std::max(a, b) << 1 | (a < b ? 1 : 0));
        }
    }
    std::sort(runs.begin(), runs.end());
    for (std::size_t i = 0; i < runs.size();) {
        std::size_t j = i;
        long balance = 0;
        for (; j < runs.size() && runs[j] >> 1 == runs[i] >> 1; ++j) {
            balance += (runs[j] & 1) != 0 ? 1 : -1;
        }
        if (balance != 0 || j - i > mostRuns) {
            return ::testing::AssertionFailure()
                   << "the edge of points " << (runs[i] >> 33) << " and " << (runs[i] >> 1 & 0xFFFFFFFF) << " is run "
                   << j - i << " times, balance " << balance;
        }
        i = j;
    }
    return ::testing::AssertionSuccess();
}

::testing::AssertionResult isGood(const PlainMesh& mesh, std::size_t mostRuns) {
    if (mesh.triangles.empty()) {
        return ::testing::AssertionFailure() << "no triangles";
    }
    if (auto result = hasMatchedEdges(mesh, mostRuns); !result) {
        return result;
    }
    if (auto result = hasOwnPlaces(mesh); !result) {
        return result;
    }
    return hasAreas(mesh);
}

}  // namespace

PlainMesh plainMesh(const tolmar::TriangleMesh& mesh) {
    PlainMesh plain;
    for (std::size_t i = 0; i < mesh.nodes.size(); i += 3) {
        plain.points.emplace_back(mesh.nodes[i], mesh.nodes[i + 1], mesh.nodes[i + 2]);
    }
    for (std::size_t i = 0; i < mesh.triangles.size(); i += 3) {
        plain.triangles.push_back({mesh.triangles[i], mesh.triangles[i + 1], mesh.triangles[i + 2]});
    }
    return plain;
}

::testing::AssertionResult isClosed(const PlainMesh& mesh) {
    return isGood(mesh, SIZE_MAX);
}

::testing::AssertionResult isRunBothWays(const PlainMesh& mesh) {
    return hasMatchedEdges(mesh, SIZE_MAX);
}

::testing::AssertionResult isManifold(const PlainMesh& mesh) {
    return isGood(mesh, 2);
}

double volumeOf(const PlainMesh& mesh) {
    double sixfold = 0;
    const TlGePoint3d origin = mesh.points.front();
    for (const auto& [a, b, c] : mesh.triangles) {
        sixfold +=
            (mesh.points[a] - origin).dotProduct((mesh.points[b] - origin).crossProduct(mesh.points[c] - origin));
    }
    return sixfold / 6;
}

double areaOf(const PlainMesh& mesh) {
    double twice = 0;
    for (std::size_t t = 0; t < mesh.triangles.size(); ++t) {
        twice += twiceArea(mesh, t).length();
    }
    return twice / 2;
}
