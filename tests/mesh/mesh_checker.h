// What a good mesh is, worked out here anew: nothing of the mesher is used.
#pragma once

#include "tolmar/ge.h"
#include "tolmar/mesh.h"

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

struct PlainMesh {
    std::vector<TlGePoint3d> points;
    std::vector<std::array<std::uint32_t, 3>> triangles;
};

PlainMesh plainMesh(const tolmar::TriangleMesh& mesh);

// Every edge is run through as often one way as the other, every triangle has an area, every point is used, and no two
// points stand at one place.
::testing::AssertionResult isClosed(const PlainMesh& mesh);
// The first part of that: no hole in it, though triangles may have no area to speak of.
::testing::AssertionResult isRunBothWays(const PlainMesh& mesh);
// All of that, and no edge belongs to more than two triangles.
::testing::AssertionResult isManifold(const PlainMesh& mesh);

double volumeOf(const PlainMesh& mesh);
double areaOf(const PlainMesh& mesh);

// Calls probe(point) for a grid of points on each triangle: corners, middles of edges, inner points.
template <typename Probe>
void eachSample(const PlainMesh& mesh, std::size_t everyTriangle, Probe probe) {
    constexpr int steps = 4;
    for (std::size_t t = 0; t < mesh.triangles.size(); t += everyTriangle) {
        const auto& [a, b, c] = mesh.triangles[t];
        const TlGeVector3d u = mesh.points[b] - mesh.points[a];
        const TlGeVector3d v = mesh.points[c] - mesh.points[a];
        for (int i = 0; i <= steps; ++i) {
            for (int j = 0; i + j <= steps; ++j) {
                probe(mesh.points[a] + u * (double(i) / steps) + v * (double(j) / steps));
            }
        }
    }
}
