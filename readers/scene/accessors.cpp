#include "readers/scene/reader.h"

#include <cstring>

namespace readers::scene {

namespace {

// 0 for types that no accessor of a scene has.
std::uint64_t componentSize(std::uint64_t type) {
    return type == shortType ? 2 : (type == intType || type == floatType ? 4 : 0);
}

std::uint64_t strideOf(const Scene& scene, const Accessor& accessor) {
    const std::uint64_t stride = scene.views[accessor.view].stride;
    return stride != 0 ? stride : componentSize(accessor.componentType) * accessor.components;
}

const char* startOf(const Scene& scene, const Accessor& accessor) {
    const BufferView& view = scene.views[accessor.view];
    return scene.buffers[view.buffer].data() + view.offset + accessor.offset;
}

}  // namespace

bool isInBounds(const Scene& scene, const Accessor& accessor) {
    const std::uint64_t size = componentSize(accessor.componentType);
    if (accessor.view >= scene.views.size() || size == 0 || accessor.components == 0 || accessor.count == 0) {
        return false;
    }
    const BufferView& view = scene.views[accessor.view];
    if (view.buffer >= scene.buffers.size() || accessor.offset > view.size) {
        return false;
    }
    const std::uint64_t available = scene.buffers[view.buffer].size();
    if (view.offset > available || view.size > available - view.offset || (view.offset + accessor.offset) % size != 0) {
        return false;
    }
    const std::uint64_t stride = strideOf(scene, accessor);
    const std::uint64_t element = size * accessor.components;
    const std::uint64_t room = view.size - accessor.offset;
    return stride >= element && room >= element && accessor.count - 1 <= (room - element) / stride;
}

std::vector<std::array<float, 3>> positionsOf(const Scene& scene, const Accessor& accessor) {
    std::vector<std::array<float, 3>> positions(accessor.count);
    const char* at = startOf(scene, accessor);
    for (std::array<float, 3>& position : positions) {
        std::memcpy(position.data(), at, sizeof position);
        at += strideOf(scene, accessor);
    }
    return positions;
}

std::vector<std::uint32_t> indicesOf(const Scene& scene, const Accessor& accessor) {
    std::vector<std::uint32_t> indices(accessor.count);
    const char* at = startOf(scene, accessor);
    for (std::uint32_t& index : indices) {
        std::memcpy(&index, at, static_cast<std::size_t>(componentSize(accessor.componentType)));
        at += strideOf(scene, accessor);
    }
    return indices;
}

}  // namespace readers::scene
