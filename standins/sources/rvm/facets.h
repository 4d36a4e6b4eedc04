// Facet groups: polygons with holes into triangles.
//
//   body      word polygons, each: word contours, each: word vertices, each: 3 floats position, 3 floats normal
#pragma once

#include "sources/rvm/primitive.h"
#include "sources/rvm/surface_mesh.h"
#include "tolmar/mesh/sweep.h"

#include <string_view>
#include <vector>

namespace plant::rvm {

// The points of the polygons, each place once, and their triangles. A point that repeats the one before it is passed
// over; a polygon without an area has no triangles.
class FacetReader {
public:
    enum class Result : std::uint8_t { Ok, NotFinite, Crossing };
    // Refuses counts that the body cannot hold. `mesh` is emptied first.
    Result read(const Primitive& primitive, SurfaceMesh& mesh);

private:
    void begin(std::size_t bodySize);
    void readPolygon();
    void readContour(std::uint32_t vertices);
    std::uint32_t numberOf(const char* position);
    std::uint32_t count(std::size_t leastSize, const char* what);
    void close();
    void addPolygon();
    void addFan();
    bool addConvex();
    bool project();
    bool addRegion();
    void turnLoops();
    void addTriangles(bool isUnited);

    const Primitive* primitive_ = nullptr;
    SurfaceMesh* mesh_ = nullptr;
    const char* at_ = nullptr;
    const char* end_ = nullptr;
    bool isFinite_ = true;
    bool isCrossing_ = false;
    // Numbers of points by their place: an open table, and the places as they stand in the file.
    std::vector<std::uint32_t> slots_;
    std::vector<const char*> places_;
    // The polygon in hand.
    std::vector<std::uint32_t> corners_;
    std::vector<std::uint32_t> loopEnds_;
    Point base_;
    Vector across_, up_;
    tolmar::Region region_;
    tolmar::RegionSweep sweep_;
    tolmar::PointTriangles triangles_;
};

}  // namespace plant::rvm
