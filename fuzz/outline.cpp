// Outlines with arcs and holes, and profiles, into solids and meshes: whatever the numbers, the mesh is sound or
// absent.
#include "exportbase/mesher.h"
#include "platform/entities.h"
#include "scratch_file.h"

#include <cmath>
#include <cstring>
#include <memory>

namespace {

// Numbers from bytes: mostly small coordinates, now and then any double at all.
class Numbers {
public:
    Numbers(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
    bool empty() const { return at_ >= size_; }
    std::uint8_t byte() { return empty() ? 0 : data_[at_++]; }
    double number() {
        constexpr std::uint8_t anyDouble = 255;
        const std::uint8_t first = byte();
        if (first == anyDouble) {
            double value = 0;
            for (std::size_t i = 0; i < sizeof value; ++i) {
                const std::uint8_t part = byte();
                std::memcpy(reinterpret_cast<char*>(&value) + i, &part, 1);
            }
            return value;
        }
        return (first - 127) * 10.0 + byte() * 0.01;
    }
    HxGePoint3D point() {
        const double x = number();
        const double y = number();
        return {x, y, 0};
    }
    HextVertexList vertices() {
        HextVertexList list;
        for (std::size_t left = byte() % 24U; left > 0 && !empty(); --left) {
            const auto kind = static_cast<std::int16_t>(byte() % 9);
            list.push_back({kind, point()});
        }
        return list;
    }

private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t at_ = 0;
};

void requireSound(const HextPrimary3D& primitive) {
    const std::unique_ptr<TlDbEntity> entity(transHextPrimary3D(&primitive));
    if (entity == nullptr) {
        return;
    }
    TlDb3dSolid* solid = nullptr;
    const auto* parametric = static_cast<const ORNACadPrimary3D*>(entity.get());
    if (parametric->getSolid(solid) != Tl::eOk) {
        fuzz::require(solid == nullptr);
        return;
    }
    const std::unique_ptr<TlDb3dSolid> owned(solid);
    Mesh mesh;
    meshVertices(*solid, mesh);
    for (const std::uint32_t index : mesh.indices) {
        fuzz::require(index < mesh.vertexCount());
    }
    for (const double value : mesh.positions) {
        fuzz::require(std::isfinite(value));
    }
}

void extrude(Numbers& numbers) {
    HextSpolygon polygon;
    polygon.height = numbers.number();
    polygon.outline = numbers.vertices();
    std::vector<HextVertexList> holes;
    for (std::size_t left = numbers.byte() % 4U; left > 0 && !numbers.empty(); --left) {
        holes.push_back(numbers.vertices());
    }
    polygon.holes = std::move(holes);
    requireSound(polygon);
}

void revolve(Numbers& numbers) {
    HextRevolve revolved;
    revolved.angle = numbers.number() / 100;
    revolved.axis = {numbers.number(), numbers.number(), 0};
    revolved.profile = numbers.vertices();
    requireSound(revolved);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Numbers numbers(data, size);
    if (numbers.byte() % 2 == 0) {
        extrude(numbers);
    } else {
        revolve(numbers);
    }
    return 0;
}
