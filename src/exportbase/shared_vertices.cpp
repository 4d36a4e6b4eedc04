#include "exportbase/shared_vertices.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

namespace {

constexpr std::uint32_t none = 0xFFFFFFFF;
constexpr double cellsPerMillimetre = 1 << 20;
// Round coordinates stand well within their cells, so that nearly every place is looked for in one cell alone.
constexpr double cellShift = 0.37;

using Cell = std::array<double, 3>;

double cellOf(double coordinate) {
    return std::floor(coordinate * cellsPerMillimetre + cellShift);
}

std::uint64_t hashOf(const Cell& cell) {
    std::uint64_t hash = 0;
    for (const double number : cell) {
        // + 0.0 makes one of the two zeros.
        hash = (hash ^ std::bit_cast<std::uint64_t>(number + 0.0)) * 0x9E3779B97F4A7C15U;
        hash ^= hash >> 31U;
    }
    return hash;
}

// The vertices kept so far, by the cell of space in which they stand.
class PlaceTable {
public:
    // For as many places as there are; `positions` holds those that are kept from its start on.
    explicit PlaceTable(const std::vector<double>& positions)
        : positions_(positions), slots_(std::bit_ceil(positions.size() + 1), none) {}

    void insert(std::uint32_t number) {
        const double* p = positions_.data() + 3 * std::size_t{number};
        std::size_t slot = slotOf({cellOf(p[0]), cellOf(p[1]), cellOf(p[2])});
        while (slots_[slot] != none) {
            slot = next(slot);
        }
        slots_[slot] = number;
    }

    // The first vertex at a place, or `none`: in its cell, and where it stands at the rim of one, in those beside it.
    std::uint32_t find(const HxGePoint3D& p) const {
        const double reach = TlGeContext::gTol.equalPoint();
        const std::array<Cell, 2> ends = {Cell{cellOf(p.x - reach), cellOf(p.y - reach), cellOf(p.z - reach)},
                                          Cell{cellOf(p.x + reach), cellOf(p.y + reach), cellOf(p.z + reach)}};
        return ends[0] == ends[1] ? findIn(ends[0], p) : findAtRim(ends, p);
    }

private:
    std::size_t slotOf(const Cell& cell) const { return hashOf(cell) & (slots_.size() - 1); }
    std::size_t next(std::size_t slot) const { return (slot + 1) & (slots_.size() - 1); }

    std::uint32_t findIn(const Cell& cell, const HxGePoint3D& p) const {
        std::uint32_t first = none;
        for (std::size_t slot = slotOf(cell); slots_[slot] != none; slot = next(slot)) {
            const double* q = positions_.data() + 3 * std::size_t{slots_[slot]};
            if (p.isEqualTo({q[0], q[1], q[2]})) {
                first = std::min(first, slots_[slot]);
            }
        }
        return first;
    }

    std::uint32_t findAtRim(const std::array<Cell, 2>& ends, const HxGePoint3D& p) const {
        std::uint32_t first = none;
        for (std::size_t corner = 0; corner < 8; ++corner) {
            Cell cell;
            for (std::size_t axis = 0; axis < 3; ++axis) {
                cell[axis] = ends[corner >> axis & 1U][axis];
            }
            first = std::min(first, findIn(cell, p));
        }
        return first;
    }

    const std::vector<double>& positions_;
    std::vector<std::uint32_t> slots_;
};

void moveNormals(Mesh& mesh, std::size_t from, std::size_t to) {
    std::copy_n(mesh.normalSums.begin() + static_cast<std::ptrdiff_t>(3 * from), 3,
                mesh.normalSums.begin() + static_cast<std::ptrdiff_t>(3 * to));
    mesh.normalCounts[to] = mesh.normalCounts[from];
}

void addNormals(Mesh& mesh, std::size_t from, std::size_t to) {
    for (std::size_t k = 0; k < 3; ++k) {
        mesh.normalSums[3 * to + k] += mesh.normalSums[3 * from + k];
    }
    mesh.normalCounts[to] += mesh.normalCounts[from];
}

// Moves the vertices that are kept to the front; gives the new number of each.
std::vector<std::uint32_t> keepFirst(Mesh& mesh) {
    PlaceTable table(mesh.positions);
    std::vector<std::uint32_t> numbers(mesh.vertexCount());
    const bool hasNormals = !mesh.normalCounts.empty();
    std::uint32_t used = 0;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        double* kept = mesh.positions.data() + 3 * std::size_t{used};
        const double* p = mesh.positions.data() + 3 * i;
        const std::uint32_t known = table.find({p[0], p[1], p[2]});
        numbers[i] = known == none ? used : known;
        if (hasNormals) {
            known == none ? moveNormals(mesh, i, used) : addNormals(mesh, i, known);
        }
        if (known == none) {
            std::copy_n(p, 3, kept);
            table.insert(used++);
        }
    }
    mesh.positions.resize(3 * std::size_t{used});
    if (hasNormals) {
        mesh.normalSums.resize(mesh.positions.size());
        mesh.normalCounts.resize(used);
    }
    return numbers;
}

}  // namespace

void shareVertices(Mesh& mesh) {
    const std::vector<std::uint32_t> numbers = keepFirst(mesh);
    for (std::uint32_t& index : mesh.indices) {
        index = numbers[index];
    }
}
