#include "sources/rvm/facets.h"

#include "sources/rvm/convert.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace plant::rvm {

namespace {

constexpr std::size_t wordSize = 4;
constexpr std::size_t positionSize = 3 * wordSize;
constexpr std::size_t vertexSize = 2 * positionSize;
constexpr std::uint32_t freeSlot = 0xFFFFFFFF;
constexpr std::size_t leastSlots = 16;

std::uint64_t hashOf(const char* position) {
    std::uint64_t first;
    std::uint32_t last;
    std::memcpy(&first, position, sizeof first);
    std::memcpy(&last, position + sizeof first, sizeof last);
    std::uint64_t mixed = (first ^ std::uint64_t{last} * 0x9E3779B97F4A7C15ULL) * 0xFF51AFD7ED558CCDULL;
    return mixed ^ mixed >> 32U;
}

// Twice the area of a loop as a vector.
Vector areaOf(const std::vector<Point>& points, const std::uint32_t* first, const std::uint32_t* last) {
    Vector area;
    const Point base = points[*first];
    for (const std::uint32_t* corner = first + 1; corner + 1 < last; ++corner) {
        area += (points[corner[0]] - base).crossProduct(points[corner[1]] - base);
    }
    return area;
}

double signedArea(const tolmar::Region& region, std::uint32_t first, std::uint32_t last) {
    double area = 0;
    for (std::uint32_t i = first; i < last; ++i) {
        const tolmar::Point2& a = region.points[i];
        const tolmar::Point2& b = region.points[i + 1 == last ? first : i + 1];
        area += a.x * b.y - b.x * a.y;
    }
    return area;
}

}  // namespace

std::uint32_t FacetReader::count(std::size_t leastSize, const char* what) {
    const auto left = static_cast<std::size_t>(end_ - at_);
    const std::uint32_t number = left >= wordSize ? wordAt(at_) : 0;
    if (left < wordSize || number > (left - wordSize) / leastSize) {
        refuseAt(primitive_->offset, "facets of " + std::to_string(number) + " " + what + ", with " +
                                         std::to_string(left) + " bytes left in the chunk");
    }
    at_ += wordSize;
    return number;
}

FacetReader::Result FacetReader::read(const Primitive& primitive, SurfaceMesh& mesh) {
    primitive_ = &primitive;
    mesh_ = &mesh;
    begin(primitive.facets.size());
    const std::uint32_t polygons = count(wordSize, "polygons");
    for (std::uint32_t i = 0; i < polygons; ++i) {
        readPolygon();
    }
    if (at_ != end_) {
        refuseAt(primitive.offset, "facets that end " + std::to_string(end_ - at_) + " bytes before their chunk");
    }
    if (!isFinite_) {
        return Result::NotFinite;
    }
    return isCrossing_ ? Result::Crossing : Result::Ok;
}

void FacetReader::begin(std::size_t bodySize) {
    at_ = primitive_->facets.data();
    end_ = at_ + bodySize;
    isFinite_ = true;
    isCrossing_ = false;
    mesh_->clear();
    places_.clear();
    slots_.assign(std::bit_ceil(std::max(leastSlots, 2 * bodySize / vertexSize)), freeSlot);
}

void FacetReader::readPolygon() {
    corners_.clear();
    loopEnds_.clear();
    const std::uint32_t contours = count(wordSize, "contours");
    for (std::uint32_t i = 0; i < contours; ++i) {
        readContour(count(vertexSize, "vertices"));
    }
    close();
    if (isFinite_ && !loopEnds_.empty()) {
        addPolygon();
    }
}

void FacetReader::readContour(std::uint32_t vertices) {
    const std::size_t first = corners_.size();
    for (std::uint32_t i = 0; i < vertices; ++i, at_ += vertexSize) {
        const std::uint32_t corner = numberOf(at_);
        if (corners_.size() == first || corners_.back() != corner) {
            corners_.push_back(corner);
        }
    }
    while (corners_.size() > first + 1 && corners_.back() == corners_[first]) {
        corners_.pop_back();
    }
    if (corners_.size() < first + 3) {
        corners_.resize(first);
    }
    loopEnds_.push_back(static_cast<std::uint32_t>(corners_.size()));
}

// Without outline there are no holes either; empty holes are none.
void FacetReader::close() {
    if (loopEnds_.empty() || loopEnds_.front() == 0) {
        loopEnds_.clear();
        return;
    }
    loopEnds_.erase(std::unique(loopEnds_.begin(), loopEnds_.end()), loopEnds_.end());
}

std::uint32_t FacetReader::numberOf(const char* position) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = hashOf(position) & mask;
    for (; slots_[slot] != freeSlot; slot = (slot + 1) & mask) {
        if (std::memcmp(places_[slots_[slot]], position, positionSize) == 0) {
            return slots_[slot];
        }
    }
    const double x = static_cast<double>(floatAt(position));
    const double y = static_cast<double>(floatAt(position + wordSize));
    const double z = static_cast<double>(floatAt(position + 2 * wordSize));
    isFinite_ = isFinite_ && std::isfinite(x) && std::isfinite(y) && std::isfinite(z);
    places_.push_back(position);
    return slots_[slot] = mesh_->add(primitive_->placement.at(x, y, z));
}

void FacetReader::addPolygon() {
    if (corners_.size() == 3) {
        return mesh_->triangle(corners_[0], corners_[1], corners_[2]);
    }
    if (loopEnds_.size() == 1 && addConvex()) {
        return;
    }
    if (project() && !addRegion()) {
        isCrossing_ = true;
        addFan();
    }
}

void FacetReader::addFan() {
    for (std::uint32_t i = 1; i + 1 < loopEnds_.front(); ++i) {
        mesh_->triangle(corners_[0], corners_[i], corners_[i + 1]);
    }
}

// A fan, where every corner turns the same way and the loop goes round once.
bool FacetReader::addConvex() {
    const auto count = static_cast<std::uint32_t>(corners_.size());
    constexpr std::uint32_t most = 64;
    if (count > most) {
        return false;
    }
    const std::vector<Point>& points = mesh_->points;
    const Vector normal = areaOf(points, corners_.data(), corners_.data() + count);
    double turned = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        const Vector in = points[corners_[(i + 1) % count]] - points[corners_[i]];
        const Vector out = points[corners_[(i + 2) % count]] - points[corners_[(i + 1) % count]];
        if (!(in.crossProduct(out).dotProduct(normal) > 0)) {
            return false;
        }
        turned += in.angleTo(out);
    }
    if (turned > 3 * tlGePi) {
        return false;
    }
    addFan();
    return true;
}

// Into the plane of the outline, seen from outside. False when it has no area.
bool FacetReader::project() {
    const std::vector<Point>& points = mesh_->points;
    const Vector area = areaOf(points, corners_.data(), corners_.data() + loopEnds_.front());
    const double size = area.length();
    if (!(size > leastLength * leastLength)) {
        return false;
    }
    const Vector normal = area / size;
    base_ = points[corners_.front()];
    across_ = normal.perpVector().normal();
    up_ = normal.crossProduct(across_);
    region_.clear();
    for (const std::uint32_t corner : corners_) {
        const Vector v = points[corner] - base_;
        region_.points.push_back({v.dotProduct(across_), v.dotProduct(up_)});
    }
    region_.loopEnds = loopEnds_;
    region_.edgeOfPiece.assign(1, 0);
    region_.edgeOfPiece.push_back(static_cast<std::uint32_t>(corners_.size()));
    turnLoops();
    return true;
}

// Holes run clockwise.
void FacetReader::turnLoops() {
    for (std::size_t loop = 1; loop < loopEnds_.size(); ++loop) {
        const std::uint32_t first = loopEnds_[loop - 1];
        const std::uint32_t last = loopEnds_[loop];
        if (signedArea(region_, first, last) > 0) {
            std::reverse(region_.points.data() + first, region_.points.data() + last);
            std::reverse(corners_.data() + first, corners_.data() + last);
        }
    }
}

bool FacetReader::addRegion() {
    const auto isMade = [&] { return sweep_.run(region_, triangles_) != tolmar::RegionCheck::Failed; };
    if (isMade()) {
        addTriangles(false);
        return true;
    }
    if (!tolmar::uniteOutlines(region_) || !(isMade() || tolmar::tessellateRegion(region_, triangles_))) {
        return false;
    }
    addTriangles(true);
    return true;
}

// The points of a region that was united are not those of the file any more.
void FacetReader::addTriangles(bool isUnited) {
    const auto first = static_cast<std::uint32_t>(mesh_->points.size());
    for (std::size_t i = 0; isUnited && i < region_.pointCount(); ++i) {
        mesh_->add(base_ + across_ * region_.points[i].x + up_ * region_.points[i].y);
    }
    const auto corner = [&](std::uint32_t number) { return isUnited ? first + number : corners_[number]; };
    for (std::size_t i = 0; i < triangles_.size(); i += 3) {
        mesh_->triangle(corner(triangles_[i]), corner(triangles_[i + 1]), corner(triangles_[i + 2]));
    }
}

Conversion convertFacets(const Primitive& primitive, ShapeOutput& output) {
    SurfaceMesh& mesh = output.scratchMesh();
    const FacetReader::Result result = output.facetReader().read(primitive, mesh);
    if (result == FacetReader::Result::NotFinite) {
        return Conversion::NotFinite;
    }
    if (mesh.triangles.empty()) {
        return Conversion::Empty;
    }
    if (primitive.placement.isMirrored) {
        for (auto& triangle : mesh.triangles) {
            std::swap(triangle[1], triangle[2]);
        }
    }
    output.put(mesh);
    return result == FacetReader::Result::Crossing ? Conversion::Crossing : Conversion::Taken;
}

}  // namespace plant::rvm
