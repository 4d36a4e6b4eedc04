#include "obmsdk/scene_writer.h"

#include "gltf/glb.h"

#include <tsl/robin_map.h>

namespace obm {

namespace {

constexpr std::uint32_t noNode = 0xFFFFFFFF;
constexpr std::size_t pieceSize = std::size_t{64} << 10U;
// Column by column: x, y, z in millimetres become x, z, -y in metres.
constexpr std::string_view rootMatrix = "[0.001,0,0,0,0,0,-0.001,0,0,0.001,0,0,0,0,0,1]";

// Gives the material's number to a node with a mesh.
int resolve(InstanceRow& row, const MeshStore& meshes, const MaterialNumbers& materials) {
    if (row.node->geometryId().empty()) {
        return OBMOk;
    }
    row.geometry = meshes.find(row.node->geometryId());
    if (row.geometry == nullptr) {
        return OBMUnknownGeometry;
    }
    const auto material = materials.find(row.node->materialId());
    if (material == materials.end()) {
        return OBMUnknownMaterial;
    }
    row.material = material->second;
    return OBMOk;
}

// Both halves of the key count up from 0, and the table looks at the low bits.
struct MixedKey {
    std::size_t operator()(std::uint64_t key) const {
        key *= 0x9E3779B97F4A7C15U;
        return key ^ (key >> 32U);
    }
};

// The meshes of a scene: a geometry in a material. Nearly every geometry stands in one material alone.
class MeshTable {
public:
    struct Row {
        const GeometryRow* geometry;
        std::uint32_t material;
    };
    std::uint32_t numberOf(const InstanceRow& row) {
        const std::uint64_t key = (std::uint64_t{row.geometry->accessor} << 32U) | row.material;
        const auto [at, isNew] = numbers_.try_emplace(key, static_cast<std::uint32_t>(rows_.size()));
        if (isNew) {
            rows_.push_back({row.geometry, row.material});
        }
        return at->second;
    }
    const std::vector<Row>& rows() const { return rows_; }

private:
    tsl::robin_map<std::uint64_t, std::uint32_t, MixedKey> numbers_;
    std::vector<Row> rows_;
};

class SceneWriter {
public:
    SceneWriter(const SceneContent& content, const ScenePart& part, std::uint32_t number)
        : content_(content), part_(part), number_(number) {}

    int write(const std::filesystem::path& path) {
        file_.open(path);
        file_.write(gltf::glbHead(0, 0));  // its place; the sizes are not known yet
        const std::uint64_t head = file_.size();
        writeDocument();
        const std::uint64_t jsonSize = file_.size() - head;
        file_.write(std::string(gltf::padded(jsonSize) - jsonSize, ' '));
        if (gltf::glbSize(jsonSize, part_.binSize()) > gltf::glbMaxSize) {
            return OBMTooLarge;
        }
        file_.write(gltf::glbBinHead(part_.binSize()));
        for (std::size_t view = 0; view < ViewCount; ++view) {
            file_.append(part_.viewFile(view));
        }
        file_.overwriteStart(gltf::glbHead(jsonSize, part_.binSize()));
        return file_.close() ? OBMOk : OBMNotWritten;
    }

private:
    void writeDocument() {
        json_.beginObject();
        json_.key("asset")
            .beginObject()
            .key("version")
            .string("2.0")
            .key("generator")
            .string("tessaro obmsdk")
            .endObject();
        json_.key("scene").number(0).key("scenes").raw(R"([{"nodes":[0]}])");
        numberNodes();
        writeNodes();
        writeMeshes();
        writeMaterials();
        writeAccessors();
        writeViews();
        json_.endObject();
        flush();
    }

    void flush() {
        file_.write(text_);
        text_.clear();
    }
    void flushPiece() {
        if (text_.size() >= pieceSize) {
            flush();
        }
    }

    bool isOwn(const InstanceRow& row) const {
        return row.geometry != nullptr ? row.geometry->part == number_ : number_ == 0;
    }

    // A node is in the scene when it, or one below it, is the scene's own.
    void numberNodes() {
        const std::vector<InstanceRow>& rows = content_.instances;
        numbers_.assign(rows.size(), noNode);
        for (std::size_t i = rows.size(); i-- > 0;) {
            if (i == 0 || numbers_[i] == 0 || isOwn(rows[i])) {
                numbers_[i] = numbers_[rows[i].parent] = 0;
            }
        }
        std::uint32_t next = 0;
        for (std::uint32_t& number : numbers_) {
            number = number == noNode ? noNode : next++;
        }
    }

    void writeNodes() {
        json_.key("nodes").beginArray();
        for (std::size_t i = 0; i < numbers_.size(); ++i) {
            if (numbers_[i] != noNode) {
                writeNode(i);
                flushPiece();
            }
        }
        json_.endArray();
    }

    void writeNode(std::size_t i) {
        const InstanceRow& row = content_.instances[i];
        json_.newLine().beginObject().key("name").string(row.node->databaseId());
        if (i == 0) {
            json_.key("matrix").raw(rootMatrix);
        } else if (row.node->transform() != nullptr) {
            writeMatrix(*row.node->transform());
        }
        if (row.geometry != nullptr && row.geometry->accessor != noMesh && isOwn(row)) {
            json_.key("mesh").number(meshes_.numberOf(row));
        }
        writeChildren(i);
        writeExtras(*row.node);
        json_.endObject();
    }

    void writeMatrix(const OBMAffineTransform& transform) {
        json_.key("matrix").beginArray();
        for (const double value : transform.matrix) {
            json_.number(value);
        }
        json_.endArray();
    }

    void writeChildren(std::size_t i) {
        const std::vector<InstanceRow>& rows = content_.instances;
        bool any = false;
        for (std::size_t child = i + 1; child < rows[i].behind; child = rows[child].behind) {
            if (numbers_[child] == noNode) {
                continue;
            }
            if (!any) {
                json_.key("children").beginArray();
                any = true;
            }
            json_.number(numbers_[child]);
            flushPiece();
        }
        if (any) {
            json_.endArray();
        }
    }

    void writeExtras(const OBMInstanceTreeNode& node) {
        if (node.type() == 0 && node.geometryId().empty()) {
            return;
        }
        json_.key("extras").beginObject().key("type").number(node.type());
        if (!node.geometryId().empty()) {
            json_.key("geometry").string(node.geometryId()).key("material").string(node.materialId());
        }
        json_.endObject();
    }

    void writeMeshes() {
        if (meshes_.rows().empty()) {
            return;
        }
        json_.newLine().key("meshes").beginArray();
        for (const MeshTable::Row& row : meshes_.rows()) {
            const std::uint32_t first = row.geometry->accessor;
            json_.newLine().beginObject().key("primitives").beginArray().beginObject().key("attributes").beginObject();
            json_.key("POSITION").number(first);
            if (row.geometry->hasNormals) {
                json_.key("NORMAL").number(first + 2);
            }
            json_.endObject().key("indices").number(first + 1).key("material").number(row.material);
            json_.endObject().endArray().endObject();
            flushPiece();
        }
        json_.endArray();
    }

    void writeMaterials() {
        if (content_.materials.empty()) {
            return;
        }
        json_.newLine().key("materials").beginArray();
        for (const OBMMaterial* material : content_.materials) {
            const OBMColor& color = material->textureColor(OBMMaterial::Diffuse);
            const double alpha = 1.0 - double{material->transparency()};
            json_.newLine().beginObject().key("name").string(material->name());
            json_.key("pbrMetallicRoughness").beginObject().key("baseColorFactor").beginArray();
            json_.number(double{color.r}).number(double{color.g}).number(double{color.b}).number(alpha).endArray();
            json_.key("metallicFactor").number(0).endObject();
            if (alpha < 1) {
                json_.key("alphaMode").string("BLEND");
            }
            json_.key("doubleSided").boolean(true).endObject();
        }
        json_.endArray();
    }

    void writeAccessors() {
        if (part_.accessors == 0) {
            return;
        }
        json_.newLine().key("accessors").raw("");
        flush();
        file_.append(part_.accessorFile());
    }

    void writeViews() {
        if (part_.binSize() == 0) {
            return;
        }
        json_.newLine().key("bufferViews").beginArray();
        std::uint64_t offset = 0;
        for (std::size_t view = 0; view < ViewCount; ++view) {
            if (part_.sizes[view] == 0) {
                continue;
            }
            json_.beginObject().key("buffer").number(0).key("byteOffset").number(offset);
            json_.key("byteLength").number(part_.sizes[view]);
            if (view == FacetView) {
                json_.key("target").number(static_cast<int>(gltf::ElementArrayBuffer));
            } else {
                json_.key("byteStride").number(12).key("target").number(static_cast<int>(gltf::ArrayBuffer));
            }
            json_.endObject();
            offset += part_.sizes[view];
        }
        json_.endArray()
            .key("buffers")
            .beginArray()
            .beginObject()
            .key("byteLength")
            .number(offset)
            .endObject()
            .endArray();
    }

    const SceneContent& content_;
    const ScenePart& part_;
    std::uint32_t number_;
    WorkingFile file_;
    std::string text_;  // on its way into the file
    gltf::JsonText json_{text_};
    std::vector<std::uint32_t> numbers_;  // of the nodes in the scene; noNode for those that are not in it
    MeshTable meshes_;
};

}  // namespace

int layOut(const OBMInstanceTreeNode* root, const MeshStore& meshes, const MaterialNumbers& materials,
           std::vector<InstanceRow>& rows) {
    struct Open {
        const OBMInstanceTreeNode* node;
        std::uint32_t parent;
    };
    std::vector<Open> open{{root, 0}};
    while (!open.empty()) {
        const Open next = open.back();
        open.pop_back();
        const auto number = static_cast<std::uint32_t>(rows.size());
        InstanceRow& row = rows.emplace_back();
        row.node = next.node;
        row.parent = next.parent;
        row.behind = number + 1;
        if (const int status = resolve(row, meshes, materials); status != OBMOk) {
            return status;
        }
        const auto& children = next.node->children();
        for (std::size_t i = children.size(); i-- > 0;) {
            open.push_back({children[i], number});
        }
    }
    // From the last row up, every row knows its own end before its parent asks.
    for (std::size_t i = rows.size(); i-- > 1;) {
        InstanceRow& parent = rows[rows[i].parent];
        parent.behind = std::max(parent.behind, rows[i].behind);
    }
    return OBMOk;
}

int writeScene(const std::filesystem::path& file, const SceneContent& content, const MeshStore& meshes,
               std::uint32_t part) {
    return SceneWriter(content, meshes.parts()[part], part).write(file);
}

}  // namespace obm
