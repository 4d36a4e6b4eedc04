#include "obmsdk/mesh_store.h"

#include "gltf/glb.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace obm {

namespace {

constexpr std::size_t shortVertices = 65535;  // up to here a vertex number takes two bytes
constexpr std::uint64_t vectorSize = 12;
constexpr float unitTolerance = 1e-4F;
constexpr std::array<const char*, ViewCount> viewEndings = {".positions", ".facets", ".normals"};

bool isFinite(const OBMFloat3& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

bool isGood(const OBMTriangleMesh& mesh) {
    const auto count = static_cast<std::uint64_t>(mesh.vertices().size());
    const auto inRange = [count](int vertex) { return vertex >= 0 && static_cast<std::uint64_t>(vertex) < count; };
    return std::all_of(mesh.vertices().begin(), mesh.vertices().end(), isFinite) &&
           std::all_of(mesh.facets().begin(), mesh.facets().end(), [&inRange](const OBMInt3& facet) {
               return inRange(facet.a) && inRange(facet.b) && inRange(facet.c);
           });
}

// Lowest byte first.
template <typename Word>
char* put(char* at, Word value) {
    for (unsigned shift = 0; shift < 8 * sizeof(Word); shift += 8) {
        *at++ = static_cast<char>(static_cast<unsigned char>(value >> shift));
    }
    return at;
}

char* putVector(char* at, const OBMFloat3& v) {
    at = put(at, std::bit_cast<std::uint32_t>(v.x));
    at = put(at, std::bit_cast<std::uint32_t>(v.y));
    return put(at, std::bit_cast<std::uint32_t>(v.z));
}

template <typename Word>
void putFacets(const std::vector<OBMInt3>& facets, std::string& bytes) {
    bytes.resize(gltf::padded(facets.size() * 3 * sizeof(Word)));
    char* at = bytes.data();
    for (const OBMInt3& facet : facets) {
        at = put(at, static_cast<Word>(facet.a));
        at = put(at, static_cast<Word>(facet.b));
        at = put(at, static_cast<Word>(facet.c));
    }
    std::fill(at, bytes.data() + bytes.size(), '\0');
}

// Scenes hold unit normals only. A vertex whose triangles face opposite ways has a sum without direction.
OBMFloat3 unitNormal(const OBMFloat3& n) {
    const float length2 = n.x * n.x + n.y * n.y + n.z * n.z;
    if (std::abs(length2 - 1) <= unitTolerance) {
        return n;
    }
    const double length = std::sqrt(double{n.x} * n.x + double{n.y} * n.y + double{n.z} * n.z);
    if (!(length > 0) || !std::isfinite(length)) {
        return {0, 0, 1};
    }
    return {static_cast<float>(n.x / length), static_cast<float>(n.y / length), static_cast<float>(n.z / length)};
}

struct Bounds {
    OBMFloat3 low;
    OBMFloat3 high;
};

Bounds boundsOf(const std::vector<OBMFloat3>& vertices) {
    Bounds bounds{vertices.front(), vertices.front()};
    for (const OBMFloat3& v : vertices) {
        bounds.low = {std::min(bounds.low.x, v.x), std::min(bounds.low.y, v.y), std::min(bounds.low.z, v.z)};
        bounds.high = {std::max(bounds.high.x, v.x), std::max(bounds.high.y, v.y), std::max(bounds.high.z, v.z)};
    }
    return bounds;
}

// The numbers as doubles, so that a reader of doubles finds exactly the floats of the data.
void appendVector(gltf::JsonText& json, const OBMFloat3& v) {
    json.beginArray().number(double{v.x}).number(double{v.y}).number(double{v.z}).endArray();
}

std::uint64_t sizeBound(const OBMTriangleMesh& mesh) {
    return vectorSize * (mesh.vertices().size() + mesh.normals().size() + mesh.facets().size());
}

}  // namespace

std::filesystem::path ScenePart::viewFile(std::size_t view) const {
    return base.string() + viewEndings[view];
}

std::filesystem::path ScenePart::accessorFile() const {
    return base.string() + ".accessors";
}

int MeshStore::add(const OBMTriangleMesh& mesh) {
    if (!isGood(mesh)) {
        return OBMBadMesh;
    }
    if (sizeBound(mesh) > limit_) {
        return OBMTooLarge;
    }
    const auto [at, isNew] = rows_.try_emplace(mesh.getGeometryId());
    if (!isNew || mesh.getGeometryId().empty()) {
        return OBMNoId;
    }
    if (!isPartOpen_ || parts_.back().binSize() + sizeBound(mesh) > limit_) {
        failed_ = !endPart() || failed_;
        beginPart();
    }
    write(mesh, at.value());
    failed_ = failed_ || accessorFile_.failed() || viewFiles_[PositionView].failed();
    return failed_ ? OBMNotWritten : OBMOk;
}

void MeshStore::beginPart() {
    ScenePart& part = parts_.emplace_back();
    part.base = folder_ / ("meshes-" + std::to_string(parts_.size()));
    for (std::size_t view = 0; view < ViewCount; ++view) {
        viewFiles_[view].open(part.viewFile(view));
    }
    accessorFile_.open(part.accessorFile());
    text_.clear();
    json_.restart();
    json_.beginArray();
    isPartOpen_ = true;
}

bool MeshStore::endPart() {
    if (!isPartOpen_) {
        return true;
    }
    isPartOpen_ = false;
    json_.endArray();
    accessorFile_.write(text_);
    bool good = accessorFile_.close();
    for (WorkingFile& file : viewFiles_) {
        good = file.close() && good;
    }
    return good;
}

int MeshStore::finish() {
    if (parts_.empty()) {
        beginPart();
    }
    failed_ = !endPart() || failed_;
    return failed_ ? OBMNotWritten : OBMOk;
}

const GeometryRow* MeshStore::find(const std::string& geometryId) const {
    const auto at = rows_.find(geometryId);
    return at != rows_.end() ? &at->second : nullptr;
}

void MeshStore::removeFiles(std::size_t part) const {
    std::error_code ignored;
    for (std::size_t view = 0; view < ViewCount; ++view) {
        std::filesystem::remove(parts_[part].viewFile(view), ignored);
    }
    std::filesystem::remove(parts_[part].accessorFile(), ignored);
}

// A mesh without facets has a row and no data.
void MeshStore::write(const OBMTriangleMesh& mesh, GeometryRow& row) {
    row.part = static_cast<std::uint32_t>(parts_.size() - 1);
    if (mesh.facets().empty()) {
        return;
    }
    row.accessor = parts_.back().accessors;
    row.hasNormals = mesh.normals().size() == mesh.vertices().size();
    writePositions(mesh.vertices());
    writeFacets(mesh.facets(), mesh.vertices().size());
    if (row.hasNormals) {
        writeNormals(mesh.normals());
    }
    accessorFile_.write(text_);
    text_.clear();
}

gltf::JsonText& MeshStore::beginAccessor(std::size_t view, int componentType, std::size_t count) {
    ScenePart& part = parts_.back();
    ++part.accessors;
    return json_.newLine()
        .beginObject()
        .key("bufferView")
        .number(view)
        .key("byteOffset")
        .number(part.sizes[view])
        .key("componentType")
        .number(componentType)
        .key("count")
        .number(count)
        .key("type");
}

void MeshStore::flush(View view) {
    viewFiles_[view].write(bytes_);
    parts_.back().sizes[view] += bytes_.size();
}

void MeshStore::writePositions(const std::vector<OBMFloat3>& vertices) {
    const Bounds bounds = boundsOf(vertices);
    beginAccessor(PositionView, gltf::Float, vertices.size()).string("VEC3").key("min");
    appendVector(json_, bounds.low);
    json_.key("max");
    appendVector(json_, bounds.high);
    json_.endObject();
    bytes_.resize(vectorSize * vertices.size());
    char* at = bytes_.data();
    for (const OBMFloat3& v : vertices) {
        at = putVector(at, v);
    }
    flush(PositionView);
}

void MeshStore::writeFacets(const std::vector<OBMInt3>& facets, std::size_t vertexCount) {
    const bool isShort = vertexCount <= shortVertices;
    beginAccessor(FacetView, isShort ? gltf::UnsignedShort : gltf::UnsignedInt, 3 * facets.size())
        .string("SCALAR")
        .endObject();
    isShort ? putFacets<std::uint16_t>(facets, bytes_) : putFacets<std::uint32_t>(facets, bytes_);
    flush(FacetView);
}

void MeshStore::writeNormals(const std::vector<OBMFloat3>& normals) {
    beginAccessor(NormalView, gltf::Float, normals.size()).string("VEC3").endObject();
    bytes_.resize(vectorSize * normals.size());
    char* at = bytes_.data();
    for (const OBMFloat3& n : normals) {
        at = putVector(at, unitNormal(n));
    }
    flush(NormalView);
}

}  // namespace obm
