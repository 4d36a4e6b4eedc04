// Triangle meshes of bodies.
//
// Every curve is divided by one rule, the chord rule: a full circle of radius r takes ceil(pi / acos(1 - tol / r))
// chords, at least 3, and an arc its share. Neighbouring faces take the points of their common edge from one place, so
// that a closed body gives a closed mesh, oriented outward.
#pragma once

#include "tolmar/solid.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>
#include <vector>

namespace tolmar {

// A growing array of plain values whose new elements are not initialised, and which keeps its storage when cleared.
template <typename T>
class PlainBuffer {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    T* data() { return data_.get(); }
    const T* data() const { return data_.get(); }
    T& operator[](std::size_t i) { return data_[i]; }
    const T& operator[](std::size_t i) const { return data_[i]; }
    const T* begin() const { return data_.get(); }
    const T* end() const { return data_.get() + size_; }
    void clear() { size_ = 0; }
    // Drops what lies behind the first `count` elements.
    void truncate(std::size_t count) { size_ = std::min(size_, count); }
    // Appends `count` elements and gives the first; they are the caller's to fill.
    T* extend(std::size_t count) {
        if (size_ + count > capacity_) {
            grow(size_ + count);
        }
        T* first = data_.get() + size_;
        size_ += count;
        return first;
    }
    void push_back(const T& value) { *extend(1) = value; }

private:
    void grow(std::size_t needed) {
        const std::size_t capacity = std::max(needed, capacity_ + capacity_ / 2 + 64);
        std::unique_ptr<T[]> bigger(new T[capacity]);
        if (size_ > 0) {
            std::memcpy(bigger.get(), data_.get(), size_ * sizeof(T));
        }
        data_ = std::move(bigger);
        capacity_ = capacity;
    }

    std::unique_ptr<T[]> data_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

// The triangles of one face, from `firstTriangle` up to the next face's. `normal` is the unit normal of all of them
// where `flat` is set.
struct MeshFace {
    std::uint32_t firstTriangle;
    bool flat;
    double normal[3];
};

// Nodes are three coordinates each, triangles three node numbers, counter-clockwise seen from outside. No two nodes of
// one body stand at the same place.
struct TriangleMesh {
    PlainBuffer<double> nodes;
    PlainBuffer<std::uint32_t> triangles;
    PlainBuffer<MeshFace> faces;

    std::size_t nodeCount() const { return nodes.size() / 3; }
    std::size_t triangleCount() const { return triangles.size() / 3; }
    void clear() {
        nodes.clear();
        triangles.clear();
        faces.clear();
    }
};

// One body never takes more triangles than this; a finer demand is refused.
inline constexpr std::size_t maxTriangles = std::size_t{1} << 25;

enum class MeshStatus { Ok, TooManyTriangles, BadRegion };

// Appends the mesh of a body; `tolerance` is above 0. On failure nothing is added. `mesh.faces` gets faceCount(body)
// entries.
[[nodiscard]] MeshStatus meshBody(const Body& body, double tolerance, TriangleMesh& mesh);

}  // namespace tolmar
