#include "readers/package/glb.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <fmt/core.h>
#include <simdjson.h>

namespace readers::glb {

namespace {

using simdjson::dom::array;
using simdjson::dom::element;
using simdjson::dom::object;

constexpr std::uint32_t jsonChunk = 0x4E4F534A;
constexpr std::uint32_t binaryChunk = 0x004E4942;
constexpr int shortType = 5123;
constexpr int intType = 5125;
constexpr int floatType = 5126;
constexpr std::uint64_t longestStride = 252;
constexpr double unitTolerance = 1e-3;

std::uint32_t wordAt(std::string_view bytes, std::size_t at) {
    std::uint32_t word = 0;
    for (std::size_t i = 4; i-- > 0;) {
        word = (word << 8U) | static_cast<unsigned char>(bytes[at + i]);
    }
    return word;
}

struct Chunks {
    std::string_view json;
    std::string_view binary;
};

// False when the frame is broken.
bool splitChunks(std::string_view bytes, Chunks& chunks, Findings& findings) {
    if (bytes.size() < 20 || bytes.substr(0, 4) != "glTF" || wordAt(bytes, 4) != 2) {
        note(findings, {}, "no binary glTF 2.0 file");
        return false;
    }
    if (wordAt(bytes, 8) != bytes.size()) {
        note(findings, {}, fmt::format("length {} in the head, {} bytes in the file", wordAt(bytes, 8), bytes.size()));
        return false;
    }
    std::string_view* const parts[] = {&chunks.json, &chunks.binary};
    constexpr std::uint32_t types[] = {jsonChunk, binaryChunk};
    std::size_t at = 12;
    for (std::size_t i = 0; i < 2 && at < bytes.size(); ++i) {
        const std::size_t left = bytes.size() - at;
        if (left < 8 || wordAt(bytes, at + 4) != types[i] || wordAt(bytes, at) % 4 != 0 ||
            wordAt(bytes, at) > left - 8) {
            note(findings, {}, fmt::format("chunk {} is broken", i));
            return false;
        }
        *parts[i] = bytes.substr(at + 8, wordAt(bytes, at));
        at += 8 + parts[i]->size();
    }
    return true;
}

std::uint64_t numberOr(const object& from, std::string_view key, std::uint64_t otherwise) {
    const auto found = from.at_key(key);
    return found.error() == simdjson::NO_SUCH_FIELD ? otherwise : std::uint64_t{found.get_uint64()};
}

std::string textOr(const object& from, std::string_view key) {
    const auto found = from.at_key(key);
    return found.error() == simdjson::NO_SUCH_FIELD ? std::string() : std::string(std::string_view(found.get_string()));
}

std::vector<double> numbersOr(const object& from, std::string_view key) {
    std::vector<double> numbers;
    const auto found = from.at_key(key);
    if (found.error() != simdjson::NO_SUCH_FIELD) {
        for (const element item : found.get_array()) {
            numbers.push_back(item.get_double());
        }
    }
    return numbers;
}

// The elements of a top-level array; an empty array is a fault of the format.
std::vector<object> itemsOf(const object& document, std::string_view key, Findings& findings) {
    std::vector<object> items;
    const auto found = document.at_key(key);
    if (found.error() == simdjson::NO_SUCH_FIELD) {
        return items;
    }
    for (const element item : found.get_array()) {
        items.push_back(item.get_object());
    }
    if (items.empty()) {
        note(findings, std::string(key), "an empty array");
    }
    return items;
}

class Reader {
public:
    Reader(Scene& scene, Findings& findings) : scene_(scene), findings_(findings) {}

    void read(const object& document) {
        if (std::string_view(document["asset"]["version"]) != "2.0") {
            fault("asset.version", "2.0 expected");
        }
        readAccessors(document);
        readMaterials(document);
        readMeshes(document);
        readNodes(document);
    }

private:
    template <typename... Args>
    void fault(std::string place, fmt::format_string<Args...> format, Args&&... args) {
        note(findings_, std::move(place), fmt::format(format, std::forward<Args>(args)...));
    }

    void readAccessors(const object& document) {
        readViews(document);
        for (const object& item : itemsOf(document, "accessors", findings_)) {
            readAccessor(item);
        }
    }

    void readViews(const object& document) {
        const std::vector<object> buffers = itemsOf(document, "buffers", findings_);
        const std::uint64_t size = buffers.empty() ? 0 : std::uint64_t{buffers.front()["byteLength"]};
        if (buffers.size() > 1 || size > scene_.binary.size() || scene_.binary.size() - size > 3) {
            fault({}, "the buffer is not the binary chunk");
        }
        for (const object& item : itemsOf(document, "bufferViews", findings_)) {
            View view{numberOr(item, "byteOffset", 0), std::uint64_t{item["byteLength"]},
                      numberOr(item, "byteStride", 0)};
            if (view.offset > scene_.binary.size() || view.size > scene_.binary.size() - view.offset) {
                fault(atItem("bufferViews", views_.size()), "beyond its buffer");
                view = {};
            } else if (view.stride > longestStride) {
                fault(atItem("bufferViews", views_.size()), "a stride of {}", view.stride);
                view = {};
            }
            views_.push_back(view);
        }
    }

    void readAccessor(const object& item) {
        const std::size_t number = scene_.accessors.size();
        Accessor accessor;
        accessor.count = item["count"];
        accessor.componentType = static_cast<int>(std::int64_t{item["componentType"]});
        accessor.isVector = std::string_view(item["type"]) == "VEC3";
        accessor.low = numbersOr(item, "min");
        accessor.high = numbersOr(item, "max");
        const std::uint64_t component = accessor.componentType == shortType ? 2 : 4;
        const std::uint64_t size = component * (accessor.isVector ? 3 : 1);
        const std::uint64_t view = item["bufferView"];
        const std::uint64_t offset = numberOr(item, "byteOffset", 0);
        if (view >= views_.size()) {
            fault(atItem("accessors", number), "no such buffer view");
            accessor.count = 0;
        } else {
            accessor.stride = views_[view].stride != 0 ? views_[view].stride : size;
            accessor.offset = views_[view].offset + offset;
            // The last element needs its own size alone.
            const std::uint64_t last = accessor.count == 0 ? 0 : accessor.count - 1;
            const bool fits = accessor.count <= views_[view].size && offset <= views_[view].size &&
                              last * accessor.stride + size <= views_[view].size - offset;
            if (!fits || accessor.count == 0 || accessor.offset % component != 0) {
                fault(atItem("accessors", number), "it does not fit its buffer view");
                accessor.count = 0;
            }
        }
        scene_.accessors.push_back(std::move(accessor));
    }

    void readMaterials(const object& document) {
        for (const object& item : itemsOf(document, "materials", findings_)) {
            Material material;
            material.name = textOr(item, "name");
            const object look = item["pbrMetallicRoughness"];
            const std::vector<double> color = numbersOr(look, "baseColorFactor");
            if (color.size() == 4 &&
                std::all_of(color.begin(), color.end(), [](double c) { return c >= 0 && c <= 1; })) {
                std::copy(color.begin(), color.end(), material.color.begin());
            } else {
                fault(atItem("materials", scene_.materials.size()), "four colour parts from 0 to 1 expected");
            }
            material.isBlended = textOr(item, "alphaMode") == "BLEND";
            scene_.materials.push_back(std::move(material));
        }
    }

    void readMeshes(const object& document) {
        for (const object& item : itemsOf(document, "meshes", findings_)) {
            const array primitives = item["primitives"];
            if (primitives.size() != 1) {
                fault(atItem("meshes", scene_.meshes.size()), "one primitive expected");
                scene_.meshes.emplace_back();
                continue;
            }
            const object primitive = primitives.at(0);
            const object attributes = primitive["attributes"];
            MeshContent mesh;
            mesh.positions = static_cast<std::uint32_t>(numberOr(attributes, "POSITION", none));
            mesh.normals = static_cast<std::uint32_t>(numberOr(attributes, "NORMAL", none));
            mesh.indices = static_cast<std::uint32_t>(numberOr(primitive, "indices", none));
            mesh.material = static_cast<std::uint32_t>(numberOr(primitive, "material", none));
            checkMesh(mesh);
            scene_.meshes.push_back(mesh);
        }
    }

    // Null, with a finding, for what is no accessor of that kind.
    const Accessor* accessorOf(std::uint32_t number, bool isVector) {
        const Accessor* accessor = number < scene_.accessors.size() ? &scene_.accessors[number] : nullptr;
        const bool isGood = accessor != nullptr && (isVector ? accessor->holdsVectors() : accessor->holdsIndices());
        if (!isGood) {
            fault(atItem("meshes", scene_.meshes.size()), "accessor {} is not of its kind", number);
        }
        return isGood ? accessor : nullptr;
    }

    void checkMesh(const MeshContent& mesh) {
        const Accessor* positions = accessorOf(mesh.positions, true);
        const Accessor* indices = accessorOf(mesh.indices, false);
        if (positions != nullptr) {
            checkPositions(*positions);
        }
        if (mesh.normals != none) {
            checkNormals(accessorOf(mesh.normals, true), positions);
        }
        if (positions != nullptr && indices != nullptr) {
            checkIndices(*indices, positions->count);
        }
        if (mesh.material != none && mesh.material >= scene_.materials.size()) {
            fault(atItem("meshes", scene_.meshes.size()), "no such material");
        }
    }

    void checkPositions(const Accessor& positions) {
        std::array<float, 3> low{INFINITY, INFINITY, INFINITY};
        std::array<float, 3> high{-INFINITY, -INFINITY, -INFINITY};
        for (std::uint64_t i = 0; i < positions.count; ++i) {
            const std::array<float, 3> v = scene_.vectorAt(positions, i);
            for (std::size_t k = 0; k < 3; ++k) {
                if (!std::isfinite(v[k])) {
                    return fault(atItem("meshes", scene_.meshes.size()), "a coordinate is not finite");
                }
                low[k] = std::min(low[k], v[k]);
                high[k] = std::max(high[k], v[k]);
            }
        }
        if (!std::equal(low.begin(), low.end(), positions.low.begin(), positions.low.end()) ||
            !std::equal(high.begin(), high.end(), positions.high.begin(), positions.high.end())) {
            fault(atItem("meshes", scene_.meshes.size()), "min and max are not those of its positions");
        }
    }

    void checkNormals(const Accessor* normals, const Accessor* positions) {
        if (normals == nullptr || positions == nullptr || normals->count != positions->count) {
            return fault(atItem("meshes", scene_.meshes.size()), "one normal for each position expected");
        }
        for (std::uint64_t i = 0; i < normals->count; ++i) {
            const std::array<float, 3> n = scene_.vectorAt(*normals, i);
            if (!(std::abs(std::hypot(n[0], n[1], n[2]) - 1) < unitTolerance)) {
                return fault(atItem("meshes", scene_.meshes.size()), "a normal is no unit vector");
            }
        }
    }

    void checkIndices(const Accessor& indices, std::uint64_t vertices) {
        if (indices.count % 3 != 0) {
            fault(atItem("meshes", scene_.meshes.size()), "{} indices make no triangles", indices.count);
        }
        for (std::uint64_t i = 0; i < indices.count; ++i) {
            if (scene_.indexAt(indices, i) >= vertices) {
                return fault(atItem("meshes", scene_.meshes.size()), "an index without its vertex");
            }
        }
    }

    void readNodes(const object& document) {
        for (const object& item : itemsOf(document, "nodes", findings_)) {
            Node& node = scene_.nodes.emplace_back();
            node.name = textOr(item, "name");
            node.mesh = static_cast<std::uint32_t>(numberOr(item, "mesh", none));
            node.matrix = numbersOr(item, "matrix");
            if (const auto children = item.at_key("children"); children.error() == simdjson::SUCCESS) {
                for (const element child : children.get_array()) {
                    node.children.push_back(static_cast<std::uint32_t>(std::uint64_t{child}));
                }
            }
            if (const auto extras = item.at_key("extras"); extras.error() == simdjson::SUCCESS) {
                const object more = extras.get_object();
                node.type = static_cast<int>(numberOr(more, "type", 0));
                node.geometry = textOr(more, "geometry");
                node.material = textOr(more, "material");
            }
            if (node.mesh != none && node.mesh >= scene_.meshes.size()) {
                fault(atItem("nodes", scene_.nodes.size() - 1), "no such mesh");
            }
        }
        for (const element root : array(document["scenes"].at(0)["nodes"])) {
            scene_.roots.push_back(static_cast<std::uint32_t>(std::uint64_t{root}));
        }
        checkTree();
    }

    // Every node has one parent or is a root, and is reached from one.
    void checkTree() {
        for (std::uint32_t i = 0; i < scene_.nodes.size(); ++i) {
            for (const std::uint32_t child : scene_.nodes[i].children) {
                if (child >= scene_.nodes.size() || scene_.nodes[child].parent != none) {
                    return fault(atItem("nodes", i), "child {} is not there or has another parent", child);
                }
                scene_.nodes[child].parent = i;
            }
        }
        std::vector<std::uint32_t> open = scene_.roots;
        std::size_t reached = 0;
        while (!open.empty()) {
            const std::uint32_t next = open.back();
            open.pop_back();
            if (next >= scene_.nodes.size() || ++reached > scene_.nodes.size()) {
                return fault({}, "the nodes are no tree");
            }
            open.insert(open.end(), scene_.nodes[next].children.begin(), scene_.nodes[next].children.end());
        }
        if (reached != scene_.nodes.size()) {
            fault({}, "{} of {} nodes hang under a root", reached, scene_.nodes.size());
        }
    }

    struct View {
        std::uint64_t offset = 0;
        std::uint64_t size = 0;
        std::uint64_t stride = 0;
    };
    Scene& scene_;
    Findings& findings_;
    std::vector<View> views_;
};

}  // namespace

bool Accessor::holdsVectors() const {
    return isVector && componentType == floatType;
}

bool Accessor::holdsIndices() const {
    return !isVector && (componentType == shortType || componentType == intType);
}

std::array<float, 3> Scene::vectorAt(const Accessor& accessor, std::uint64_t i) const {
    std::array<float, 3> vector{};
    for (std::size_t k = 0; k < 3; ++k) {
        vector[k] = std::bit_cast<float>(wordAt(binary, accessor.offset + i * accessor.stride + 4 * k));
    }
    return vector;
}

std::uint32_t Scene::indexAt(const Accessor& accessor, std::uint64_t i) const {
    const std::size_t at = accessor.offset + i * accessor.stride;
    if (accessor.componentType == intType) {
        return wordAt(binary, at);
    }
    return static_cast<unsigned char>(binary[at]) |
           static_cast<std::uint32_t>(static_cast<unsigned char>(binary[at + 1])) << 8U;
}

std::vector<std::array<float, 3>> Scene::vectors(std::uint32_t accessor) const {
    std::vector<std::array<float, 3>> all;
    for (std::uint64_t i = 0; i < accessors.at(accessor).count; ++i) {
        all.push_back(vectorAt(accessors[accessor], i));
    }
    return all;
}

std::vector<std::uint32_t> Scene::indices(std::uint32_t accessor) const {
    std::vector<std::uint32_t> all;
    for (std::uint64_t i = 0; i < accessors.at(accessor).count; ++i) {
        all.push_back(indexAt(accessors[accessor], i));
    }
    return all;
}

Scene readGlb(std::string bytes, Findings& findings) {
    Scene scene;
    Chunks chunks;
    if (!splitChunks(bytes, chunks, findings)) {
        return scene;
    }
    simdjson::dom::parser parser;
    try {
        const simdjson::padded_string json(chunks.json);
        scene.binary.assign(chunks.binary);
        std::string().swap(bytes);
        const object document = parser.parse(json).get_object();
        Reader(scene, findings).read(document);
    } catch (const simdjson::simdjson_error& error) {
        note(findings, {}, fmt::format("the JSON chunk is not as it should be: {}", error.what()));
    }
    return scene;
}

}  // namespace readers::glb
