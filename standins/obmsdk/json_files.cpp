#include "obmsdk/json_files.h"

#include "tolmar/code_page.h"

namespace obm {

namespace {

constexpr std::size_t pieceSize = std::size_t{64} << 10U;

void appendColor(gltf::JsonText& json, const OBMColor& color) {
    json.beginArray();
    for (const float part : {color.r, color.g, color.b, color.a}) {
        json.number(double{part});
    }
    json.endArray();
}

void appendWide(gltf::JsonText& json, WideView text) {
    json.string(tolmar::wideToUtf8(text));
}

}  // namespace

void RowFile::open(const std::filesystem::path& path, std::string_view start) {
    file_.open(path);
    file_.write(start);
    isOpen_ = true;
}

gltf::JsonText& RowFile::beginRow() {
    return json_.newLine();
}

void RowFile::endRow() {
    if (text_.size() >= pieceSize) {
        file_.write(text_);
        text_.clear();
    }
}

bool RowFile::close(std::string_view end) {
    file_.write(text_);
    file_.write(end);
    return file_.close();
}

void ModelTreeFile::open(const std::filesystem::path& path) {
    rows_.open(path, R"({"columns":["parent","databaseId","name","type"],"trees":[)");
}

void ModelTreeFile::add(WideView name, const OBMModelTreeNode& root) {
    gltf::JsonText& json = rows_.beginRow();
    json.beginObject().key("name");
    appendWide(json, name);
    json.key("nodes").beginArray();
    struct Open {
        const OBMModelTreeNode* node;
        std::int64_t parent;
    };
    std::vector<Open> open{{&root, -1}};
    for (std::int64_t number = 0; !open.empty(); ++number) {
        const Open next = open.back();
        open.pop_back();
        json.newLine().beginArray().number(next.parent).string(next.node->databaseId());
        appendWide(json, next.node->nodeName());
        json.number(static_cast<int>(next.node->nodeType())).endArray();
        rows_.endRow();
        const auto& children = next.node->children();
        for (std::size_t i = children.size(); i-- > 0;) {
            open.push_back({children[i], number});
        }
    }
    json.endArray().endObject();
    rows_.endRow();
}

bool ModelTreeFile::close() {
    return rows_.close("]}\n");
}

void PropertyFile::open(const std::filesystem::path& path) {
    rows_.open(path, R"({"columns":["databaseId","category","name","valueType","value"],"rows":[)");
}

void PropertyFile::add(const OBMObjectProperty& property) {
    if (category_ != property.category()) {
        category_ = property.category();
        categoryText_.clear();
        gltf::JsonText text(categoryText_);
        appendWide(text, category_);
    }
    gltf::JsonText& json = rows_.beginRow();
    json.beginArray().string(property.objectDatabaseId()).raw(categoryText_);
    appendWide(json, property.name());
    json.string(property.valueType());
    appendWide(json, property.value());
    json.endArray();
    rows_.endRow();
}

bool PropertyFile::close() {
    return rows_.close("]}\n");
}

bool writeMaterials(const std::filesystem::path& path, const std::vector<OBMMaterial*>& materials) {
    RowFile rows;
    rows.open(path, R"({"materials":[)");
    for (const OBMMaterial* material : materials) {
        gltf::JsonText& json = rows.beginRow();
        json.beginObject().key("id").string(material->id()).key("name").string(material->name());
        json.key("ambient");
        appendColor(json, material->textureColor(OBMMaterial::Ambient));
        json.key("diffuse");
        appendColor(json, material->textureColor(OBMMaterial::Diffuse));
        json.key("specular");
        appendColor(json, material->textureColor(OBMMaterial::Specular));
        json.key("transparency").number(double{material->transparency()}).endObject();
        rows.endRow();
    }
    return rows.close("]}\n");
}

}  // namespace obm
