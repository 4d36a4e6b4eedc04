#include "nwcreate/store/scene.h"

#include "gltf/json_text.h"
#include "nwcreate/numbers/text_cursor.h"

#include <cmath>

namespace nwcreate {

namespace {

// Of a part of a colour, rounded to what a screen can tell apart many times over, so that every machine gives the same.
double linearOf(double srgb) {
    const double linear = srgb <= 0.04045 ? srgb / 12.92 : std::pow((srgb + 0.055) / 1.055, 2.4);
    return std::round(linear * 1e6) / 1e6;
}

// {"pbrMetallicRoughness":{"baseColorFactor":[r,g,b,a],"metallicFactor":0},"doubleSided":true,"alphaMode":"BLEND",
// "extras":{"diffuse":[r,g,b],"ambient":[r,g,b],"transparency":t}}
void writeMaterial(const Material& material, std::string& out) {
    const Vec3& color = material.diffuse;
    gltf::JsonText json(out);
    json.beginObject().key("pbrMetallicRoughness").beginObject().key("baseColorFactor").beginArray();
    json.decimal(linearOf(color[0])).decimal(linearOf(color[1])).decimal(linearOf(color[2]));
    json.decimal(1.0 - material.transparency).endArray().key("metallicFactor").number(0).endObject();
    json.key("doubleSided").boolean(true);
    if (material.transparency > 0.0) {
        json.key("alphaMode").escaped("BLEND");
    }
    json.key("extras").beginObject().key("diffuse").decimals(color).key("ambient").decimals(material.ambient);
    json.key("transparency").decimal(material.transparency).endObject().endObject();
}

}  // namespace

SceneStore::SceneStore(const std::string& spoolFolder, std::uint64_t fileLimit)
    : shapes(spoolFolder, fileLimit / 4 * 3), fileLimit_(fileLimit), meshJson_(spoolFolder), nodeJson_(spoolFolder) {}

std::uint32_t SceneStore::materialNumber(const Material& material) {
    const auto [place, isNew] = materials_.try_emplace(material, static_cast<std::uint32_t>(materials_.size()));
    if (isNew) {
        materialJson_ += materials_.size() > 1 ? "," : "";
        writeMaterial(material, materialJson_);
    }
    return place->second;
}

std::uint32_t SceneStore::meshNumber(std::span<const Piece> pieces, std::uint32_t nodeMaterial) {
    if (pieces.size() != 1) {
        return writeMesh(pieces, nodeMaterial);
    }
    const Piece& piece = pieces[0];
    const std::uint32_t material = nodeMaterial != noNumber ? nodeMaterial : piece.material;
    if (firstMeshes_.size() <= piece.shape) {
        firstMeshes_.resize(shapes.shapeCount(), noNumber);
    }
    std::uint32_t& first = firstMeshes_[piece.shape];
    for (std::uint32_t at = first; at != noNumber; at = meshes_[at].next) {
        if (meshes_[at].material == material && meshes_[at].mode == piece.mode) {
            return meshes_[at].number;
        }
    }
    meshes_.push_back({material, piece.mode, meshCount_, first});
    first = static_cast<std::uint32_t>(meshes_.size() - 1);
    return writeMesh(pieces, nodeMaterial);
}

// {"primitives":[{"attributes":{"POSITION":A},"indices":A,"material":M,"mode":1}]}, triangles without a mode.
std::uint32_t SceneStore::writeMesh(std::span<const Piece> pieces, std::uint32_t nodeMaterial) {
    constexpr std::size_t frameRoom = 64;
    constexpr std::size_t pieceRoom = 128;
    TextCursor json(meshJson_.room(frameRoom + pieces.size() * pieceRoom));
    json.put(meshCount_ == 0 ? "{" : ",{").put(R"("primitives":[)");
    for (const Piece& piece : pieces) {
        const ShapeAccessors accessors = shapes.accessors(piece.shape);
        json.put(&piece == pieces.data() ? "" : ",").put(R"({"attributes":{"POSITION":)").count(accessors.positions);
        json.put("}");
        if (accessors.indices != ShapeAccessors::none) {
            json.put(R"(,"indices":)").count(accessors.indices);
        }
        const std::uint32_t material = nodeMaterial != noNumber ? nodeMaterial : piece.material;
        if (material != noNumber) {
            json.put(R"(,"material":)").count(material);
        }
        if (piece.mode != DrawMode::Triangles) {
            json.put(R"(,"mode":)").count(static_cast<std::uint32_t>(piece.mode));
        }
        json.put("}");
    }
    json.put("]}");
    meshJson_.keep(json.at());
    return meshCount_++;
}

char* SceneStore::nodeRoom(std::size_t size) {
    char* to = nodeJson_.room(size + 1);
    if (nodeCount_ > 0) {
        *to++ = ',';
    }
    return to;
}

std::uint32_t SceneStore::keepNode(const char* end) {
    nodeJson_.keep(end);
    return nodeCount_++;
}

std::uint32_t SceneStore::addNode(std::string_view json) {
    return keepNode(std::copy(json.begin(), json.end(), nodeRoom(json.size())));
}

// {"mesh":M,"translation":[x,y,z]}
std::uint32_t SceneStore::addShapeNode(std::uint32_t mesh, const Vec3& origin) {
    constexpr std::size_t mostRoom = 256;
    TextCursor json(nodeRoom(mostRoom));
    json.put(R"({"mesh":)").count(mesh);
    if (origin != Vec3{}) {
        json.put(R"(,"translation":)").metres(origin);
    }
    json.put("}");
    return keepNode(json.at());
}

std::string SceneStore::failure() const {
    const std::string inShapes = shapes.failure();
    if (!inShapes.empty()) {
        return inShapes;
    }
    return meshJson_.failure().empty() ? nodeJson_.failure() : meshJson_.failure();
}

}  // namespace nwcreate
