#include "scene_store.h"

#include "json_writer.h"

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
    JsonWriter json(out);
    json.beginObject().key("pbrMetallicRoughness").beginObject().key("baseColorFactor").beginArray();
    json.number(linearOf(color[0])).number(linearOf(color[1])).number(linearOf(color[2]));
    json.number(1.0 - material.transparency).endArray().key("metallicFactor").count(0).endObject();
    json.key("doubleSided").yes();
    if (material.transparency > 0.0) {
        json.key("alphaMode").plain("BLEND");
    }
    json.key("extras").beginObject().key("diffuse").numbers(color).key("ambient").numbers(material.ambient);
    json.key("transparency").number(material.transparency).endObject().endObject();
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
    const std::uint32_t material = nodeMaterial != noNumber ? nodeMaterial : pieces[0].material;
    // The same vertices may be drawn in two ways; materials are few enough to leave room for the mode.
    const std::uint64_t key = std::uint64_t{pieces[0].shape} << 32U | static_cast<std::uint32_t>(material + 1U) << 3U |
                              static_cast<std::uint32_t>(pieces[0].mode);
    const auto [place, isNew] = meshes_.try_emplace(key, meshCount_);
    return isNew ? writeMesh(pieces, nodeMaterial) : place->second;
}

// {"primitives":[{"attributes":{"POSITION":A},"indices":A,"material":M,"mode":1}]}, triangles without a mode.
std::uint32_t SceneStore::writeMesh(std::span<const Piece> pieces, std::uint32_t nodeMaterial) {
    json_.assign(meshCount_ == 0 ? "" : ",");
    JsonWriter json(json_);
    json.beginObject().key("primitives").beginArray();
    for (const Piece& piece : pieces) {
        const ShapeAccessors accessors = shapes.accessors(piece.shape);
        json.beginObject().key("attributes").beginObject().key("POSITION").count(accessors.positions).endObject();
        if (accessors.indices != ShapeAccessors::none) {
            json.key("indices").count(accessors.indices);
        }
        const std::uint32_t material = nodeMaterial != noNumber ? nodeMaterial : piece.material;
        if (material != noNumber) {
            json.key("material").count(material);
        }
        if (piece.mode != DrawMode::Triangles) {
            json.key("mode").count(static_cast<std::uint64_t>(piece.mode));
        }
        json.endObject();
    }
    json.endArray().endObject();
    meshJson_.append(json_);
    return meshCount_++;
}

std::uint32_t SceneStore::addNode(std::string_view json) {
    if (nodeCount_ > 0) {
        nodeJson_.append(",");
    }
    nodeJson_.append(json);
    return nodeCount_++;
}

// {"mesh":M,"translation":[x,y,z]}
std::uint32_t SceneStore::addShapeNode(std::uint32_t mesh, const Vec3& origin) {
    json_.clear();
    JsonWriter json(json_);
    json.beginObject().key("mesh").count(mesh);
    if (origin != Vec3{}) {
        json.key("translation").metres(origin);
    }
    json.endObject();
    return addNode(json_);
}

std::string SceneStore::failure() const {
    const std::string inShapes = shapes.failure();
    if (!inShapes.empty()) {
        return inShapes;
    }
    return meshJson_.failure().empty() ? nodeJson_.failure() : meshJson_.failure();
}

}  // namespace nwcreate
