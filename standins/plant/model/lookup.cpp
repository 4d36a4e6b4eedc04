#include "plant/model/class_table.h"
#include "plant/model/data.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <unordered_set>

namespace plant {

namespace {

Model* current = nullptr;

std::string sixDecimals(double value) {
    char buffer[400];  // the longest double in fixed notation has 309 digits before the point
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 6).ptr};
}

}  // namespace

void ModelDeleter::operator()(Model* model) const {
    if (current == model) {
        current = nullptr;
    }
    delete model;
}

void setCurrentModel(Model* model) {
    current = model;
}
Model* currentModel() {
    return current;
}

std::size_t objectCount(const Model& model) {
    return model.objects.size();
}

Model::~Model() {
    for (HextPrimary* primitive : withDestructor) {
        primitive->~HextPrimary();
    }
}

HxDbObject* Model::find(std::int64_t id) {
    if (ObjectData* object = objects.find(id)) {
        return object->opened();
    }
    if (const auto at = nodeIds.find(id); at != nodeIds.end()) {
        return &at->second->node;
    }
    ObjectData* object = id > nodeIdOffset ? objects.find(id - nodeIdOffset) : nullptr;
    return object != nullptr && object->inTree() && !object->hasNodeId ? &object->node : nullptr;
}

std::int64_t Model::nodeId(const ObjectData& object) const {
    return object.hasNodeId ? idsOfNodes.at(object.id) : object.id + nodeIdOffset;
}

DatabaseData& ObjectData::database() const {
    const ObjectData* top = this;
    while (top->parent != nullptr) {
        top = top->parent;
    }
    for (DatabaseData& database : model->databases) {
        if (database.root.object == top) {
            return database;
        }
    }
    return *model->main;
}

const Property* ObjectData::find(Member member) const {
    for (const Property* property = properties; property != properties + propertyCount; ++property) {
        if (property->member == member) {
            return property;
        }
    }
    return nullptr;
}

const char* ObjectData::text(Member member) const {
    const Property* property = find(member);
    return property != nullptr ? property->text : nullptr;
}

double ObjectData::number(Member member) const {
    const Property* property = find(member);
    return property != nullptr ? property->number : 0;
}

std::int64_t ObjectData::whole(Member member, std::int64_t otherwise) const {
    const Property* property = find(member);
    return property != nullptr ? property->whole : otherwise;
}

HxDbObject* ObjectData::reference(Member member) const {
    const Property* property = find(member);
    return property != nullptr ? property->reference.object->opened() : nullptr;
}

const smrtln::BomRecord* ObjectData::attribute(std::string_view key) const {
    const auto number = model->attributes.keys.find(key);
    if (!number) {
        return nullptr;
    }
    const auto* end = records + recordCount;
    const auto* at = std::find_if(records, end, [&](const smrtln::BomRecord& record) { return record.key == *number; });
    return at == end ? nullptr : at;
}

// Numbers get a text that lives with the model.
const char* ObjectData::attributeText(std::string_view key) const {
    const smrtln::BomRecord* record = attribute(key);
    if (record == nullptr) {
        return nullptr;
    }
    switch (record->type) {
    case KVParams::Text:
    case KVParams::Bytes:
        return record->text;
    case KVParams::Short:
    case KVParams::ShortAlias:
    case KVParams::Int:
    case KVParams::Int64:
        return model->numberTexts.try_emplace(record, std::to_string(record->integer)).first->second.c_str();
    case KVParams::Double:
        return model->numberTexts.try_emplace(record, sixDecimals(record->number)).first->second.c_str();
    default:
        return nullptr;
    }
}

std::vector<ObjectData*> ObjectData::sons() const {
    std::vector<ObjectData*> found;
    std::unordered_set<const ObjectData*> seen;
    const bool bent = model->relinked;
    for (ObjectData* one = son; one != nullptr && (!bent || seen.insert(one).second); one = one->brother) {
        found.push_back(one);
    }
    return found;
}

std::int64_t idOfText(const char* text) {
    if (text == nullptr) {
        return 0;
    }
    double value = 0;
    std::from_chars(text, text + std::strlen(text), value);
    return value >= 1 && value <= static_cast<double>(largestId) ? static_cast<std::int64_t>(value) : 0;
}

void setAttribute(Model& model, std::int64_t object, std::string_view key, std::string_view value) {
    ObjectData* data = model.objects.find(object);
    const auto number = model.attributes.keys.intern(key, model.texts);
    if (data == nullptr || !number) {
        return;
    }
    std::vector<smrtln::BomRecord> records(data->records, data->records + data->recordCount);
    auto at = std::find_if(records.begin(), records.end(), [&](const auto& record) { return record.key == *number; });
    if (at == records.end()) {
        at = records.insert(records.end(), smrtln::BomRecord{});
        at->key = *number;
    }
    at->type = KVParams::Text;
    at->text = model.texts.copyText(value);
    at->length = static_cast<std::uint32_t>(value.size());
    data->records = model.arena.copy(records);
    data->recordCount = static_cast<std::uint32_t>(records.size());
}

void makeUnavailable(Model& model, std::int64_t object) {
    if (ObjectData* data = model.objects.find(object)) {
        data->available = false;
    }
}

void relinkSon(Model& model, HxDbTreeNode& node, HxDbTreeNode* son) {
    dataOf(node).son = son != nullptr ? &dataOf(*son) : nullptr;
    model.relinked = true;
}

void relinkBrother(Model& model, HxDbTreeNode& node, HxDbTreeNode* brother) {
    dataOf(node).brother = brother != nullptr ? &dataOf(*brother) : nullptr;
    model.relinked = true;
}

}  // namespace plant
