#include "readers/scene/reader.h"

#include "readers/mapped_file.h"
#include "readers/scene/json.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace readers::scene {

namespace {

namespace dom = simdjson::dom;
using json::count;
using json::forEach;
using json::numbers;
using json::text;

constexpr std::uint32_t glbMagic = 0x46546C67;
constexpr std::uint32_t jsonChunk = 0x4E4F534A;
constexpr std::uint32_t binaryChunk = 0x004E4942;

std::uint32_t wordAt(std::string_view bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;) {
        value = value << 8U | static_cast<unsigned char>(bytes[at + i]);
    }
    return value;
}

struct Chunks {
    std::string_view json;
    std::optional<std::string_view> binary;
};

// Head of 12 bytes: magic, version, length. Then chunks, each a length, a type and that many bytes; lengths are
// multiples of four.
Chunks readChunks(std::string_view bytes, Findings& findings) {
    Chunks chunks;
    if (bytes.size() < 20 || wordAt(bytes, 0) != glbMagic || wordAt(bytes, 4) != 2) {
        note(findings, "head", "this is no binary glTF 2.0");
        return chunks;
    }
    if (wordAt(bytes, 8) != bytes.size()) {
        note(findings, "head",
             "the length is " + std::to_string(wordAt(bytes, 8)) + ", the file has " + std::to_string(bytes.size()));
    }
    std::size_t number = 0;
    for (std::size_t at = 12; at < bytes.size(); ++number) {
        const std::string place = "chunk " + std::to_string(number + 1);
        const std::size_t left = bytes.size() - at;
        if (left < 8 || wordAt(bytes, at) > left - 8 || wordAt(bytes, at) % 4 != 0) {
            note(findings, place, "the file ends within it, or its length is no multiple of four");
            return chunks;
        }
        const std::string_view content = bytes.substr(at + 8, wordAt(bytes, at));
        const std::uint32_t type = wordAt(bytes, at + 4);
        if (number > 1 || type != (number == 0 ? jsonChunk : binaryChunk)) {
            note(findings, place, "unknown kind");
        } else if (number == 0) {
            chunks.json = content;
        } else {
            chunks.binary = content;
        }
        at += 8 + content.size();
    }
    return chunks;
}

template <std::size_t N>
void readNumbers(const dom::element& value, const char* key, std::array<double, N>& into) {
    const std::vector<double> found = json::numbers(value, key);
    if (found.size() == N) {
        std::copy(found.begin(), found.end(), into.begin());
    } else if (!found.empty()) {
        into.fill(std::numeric_limits<double>::quiet_NaN());
    }
}

std::vector<std::uint64_t> references(const dom::element& value, const char* key) {
    std::vector<std::uint64_t> found;
    forEach(value, key, [&found](const dom::element& item) {
        std::uint64_t number = 0;
        found.push_back(item.get_uint64().get(number) == simdjson::SUCCESS ? number : none);
    });
    return found;
}

std::string extrasOf(const dom::element& value) {
    dom::element extras;
    return value["extras"].get(extras) == simdjson::SUCCESS ? simdjson::minify(extras) : std::string();
}

Node nodeOf(const dom::element& value) {
    Node node;
    node.name = text(value, "name");
    node.children = references(value, "children");
    node.mesh = count(value, "mesh", none);
    node.camera = count(value, "camera", none);
    readNumbers(value, "translation", node.translation);
    readNumbers(value, "rotation", node.rotation);
    bool isLayer = false;
    node.isLayer = value["extras"]["layer"].get_bool().get(isLayer) == simdjson::SUCCESS && isLayer;
    node.extras = extrasOf(value);
    return node;
}

Mesh meshOf(const dom::element& value) {
    Mesh mesh;
    forEach(value, "primitives", [&mesh](const dom::element& item) {
        Primitive primitive;
        dom::element attributes;
        if (item["attributes"].get(attributes) == simdjson::SUCCESS) {
            primitive.positions = count(attributes, "POSITION", none);
        }
        primitive.indices = count(item, "indices", none);
        primitive.material = count(item, "material", none);
        primitive.mode = count(item, "mode", 4);
        mesh.primitives.push_back(primitive);
    });
    return mesh;
}

Material materialOf(const dom::element& value) {
    Material material;
    dom::element surface;
    if (value["pbrMetallicRoughness"].get(surface) == simdjson::SUCCESS) {
        readNumbers(surface, "baseColorFactor", material.color);
    }
    material.isBlended = text(value, "alphaMode") == "BLEND";
    material.extras = extrasOf(value);
    return material;
}

Accessor accessorOf(const dom::element& value) {
    const std::string_view type = text(value, "type");
    return {count(value, "bufferView", none),
            count(value, "byteOffset", 0),
            count(value, "count", 0),
            count(value, "componentType", 0),
            type == "SCALAR" ? 1U : (type == "VEC3" ? 3U : 0U),
            numbers(value, "min"),
            numbers(value, "max")};
}

// -1 for anything but a hexadecimal digit.
int digitOf(char c) {
    const std::size_t found = std::string_view("0123456789abcdefABCDEF").find(c);
    return found == std::string_view::npos ? -1 : static_cast<int>(found < 16 ? found : found - 6);
}

std::string unescaped(std::string_view uri) {
    std::string plain;
    for (std::size_t i = 0; i < uri.size(); ++i) {
        const bool isCode = uri[i] == '%' && i + 2 < uri.size() && digitOf(uri[i + 1]) >= 0 && digitOf(uri[i + 2]) >= 0;
        plain += isCode ? static_cast<char>(digitOf(uri[i + 1]) * 16 + digitOf(uri[i + 2])) : uri[i];
        i += isCode ? 2 : 0;
    }
    return plain;
}

class SceneReader {
public:
    SceneReader(const std::filesystem::path& path, Findings& findings) : path_(path), findings_(findings) {}

    Scene run() {
        scene_.files.push_back(std::make_unique<MappedFile>(path_));
        if (!scene_.files[0]->isGood()) {
            note(findings_, "file", std::string("it ") + scene_.files[0]->fault());
            return std::move(scene_);
        }
        const Chunks chunks = readChunks(scene_.files[0]->bytes(), findings_);
        if (chunks.json.empty()) {
            note(findings_, "chunk 1", "no JSON");
            return std::move(scene_);
        }
        dom::parser parser;
        dom::element root;
        const auto error = parser.parse(chunks.json.data(), chunks.json.size()).get(root);
        if (error != simdjson::SUCCESS || !root.is_object()) {
            note(findings_, "chunk 1", std::string("no JSON: ") + simdjson::error_message(error));
            return std::move(scene_);
        }
        readScenes(root);
        readArrays(root);
        readBuffers(root, chunks.binary);
        return std::move(scene_);
    }

private:
    void readScenes(const dom::element& root) {
        dom::element asset;
        if (root["asset"].get(asset) != simdjson::SUCCESS || text(asset, "version") != "2.0") {
            note(findings_, "asset", "the version is not 2.0");
        }
        const std::uint64_t shown = count(root, "scene", none);
        std::uint64_t number = 0;
        forEach(root, "scenes", [&](const dom::element& item) {
            if (number++ == shown) {
                scene_.title = text(item, "name");
                scene_.roots = references(item, "nodes");
                scene_.extras = extrasOf(item);
            }
        });
        if (shown >= number) {
            note(findings_, "scene", "there is none to show");
        }
    }

    void readArrays(const dom::element& root) {
        forEach(root, "nodes", [this](const dom::element& item) { scene_.nodes.push_back(nodeOf(item)); });
        forEach(root, "meshes", [this](const dom::element& item) { scene_.meshes.push_back(meshOf(item)); });
        forEach(root, "materials", [this](const dom::element& item) { scene_.materials.push_back(materialOf(item)); });
        forEach(root, "accessors", [this](const dom::element& item) { scene_.accessors.push_back(accessorOf(item)); });
        forEach(root, "cameras", [this](const dom::element&) { ++scene_.cameras; });
        forEach(root, "bufferViews", [this](const dom::element& item) {
            scene_.views.push_back({count(item, "buffer", none), count(item, "byteOffset", 0),
                                    count(item, "byteLength", 0), count(item, "byteStride", 0)});
        });
    }

    // A buffer has a file of its own, or is the second chunk, which may have up to three bytes more.
    void readBuffers(const dom::element& root, const std::optional<std::string_view>& binary) {
        bool usesChunk = false;
        forEach(root, "buffers", [&](const dom::element& item) {
            const std::string place = atItem("buffers", scene_.buffers.size());
            const std::uint64_t size = count(item, "byteLength", 0);
            const std::string_view uri = text(item, "uri");
            const bool isInside = uri.empty() && scene_.buffers.empty() && binary;
            const std::string_view bytes = isInside ? *binary : readBufferFile(uri, place);
            const std::uint64_t slack = isInside ? 3 : 0;
            usesChunk = usesChunk || isInside;
            if (size == 0 || bytes.size() < size || bytes.size() > size + slack) {
                note(findings_, place,
                     std::to_string(size) + " bytes expected, " + std::to_string(bytes.size()) + " found");
            }
            scene_.buffers.push_back(
                bytes.substr(0, static_cast<std::size_t>(std::min<std::uint64_t>(size, bytes.size()))));
        });
        if (binary && !usesChunk) {
            note(findings_, "chunk 2", "no buffer uses it");
        }
    }

    std::string_view readBufferFile(std::string_view uri, const std::string& place) {
        if (uri.empty()) {
            note(findings_, place, "it is nowhere");
            return {};
        }
        const std::string name = unescaped(uri);
        if (name.find_first_of("/\\:") != std::string::npos) {
            note(findings_, place, "its file does not stand beside the scene");
            return {};
        }
        scene_.bufferFiles.push_back(path_.parent_path() / name);
        scene_.files.push_back(std::make_unique<MappedFile>(scene_.bufferFiles.back()));
        if (!scene_.files.back()->isGood()) {
            note(findings_, place, "its file " + name + " " + scene_.files.back()->fault());
        }
        return scene_.files.back()->bytes();
    }

    std::filesystem::path path_;
    Findings& findings_;
    Scene scene_;
};

}  // namespace

Scene::Scene() = default;
Scene::~Scene() = default;
Scene::Scene(Scene&&) noexcept = default;
Scene& Scene::operator=(Scene&&) noexcept = default;

Scene readScene(const std::filesystem::path& path, Findings& findings) {
    return SceneReader(path, findings).run();
}

}  // namespace readers::scene
