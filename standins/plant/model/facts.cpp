#include "plant/model/facts.h"

#include "plant/shapes/primitive_table.h"
#include "tolmar/code_page.h"

#include <algorithm>
#include <unordered_map>

namespace plant {

namespace {

constexpr std::string_view keysOfExports[] = {
    "item",   "itype", "smrtln", "module", "specname",  "specid",   "standard",  "stanserial", "flanstd",  "end",
    "end1",   "end2",  "end3",   "end4",   "size",      "size1",    "size2",     "size3",      "size4",    "rating",
    "sch",    "thick", "radius", "angle",  "length",    "material", "name",      "tag",        "note",     "serial",
    "stan",   "unit",  "mtype",  "stype",  "skey",      "eqno",     "eqno1",     "eqname",     "nozno",    "leafnode",
    "lineno", "owner", "zoneid", "insul",  "insulcode", "minsul",   "destemp",   "oprtemp",    "despress", "oprpress",
    "dtemp",  "otemp", "dpress", "opress", "P1",        "P2",       "std_serial"};

// Fields that hold a point of the shape itself.
std::vector<const FieldRow*> pointFields(const PrimitiveClass& type) {
    std::vector<const FieldRow*> fields;
    for (const FieldRow& field : type.fields) {
        if (field.type == FieldType::Point && field.name != "thirdField") {
            fields.push_back(&field);
        }
    }
    return fields;
}

class Counter {
public:
    explicit Counter(const Model& model) : model_(&model) {
        for (const PrimitiveClass& type : primitiveClasses()) {
            types_.emplace(type.record, Type{0, pointFields(type)});
        }
    }
    ModelFacts count();

private:
    struct Type {
        std::size_t count;
        std::vector<const FieldRow*> points;
    };
    void countObject(const ObjectData& object);
    void countShape(const ObjectData& object);
    void countPipeline(const ObjectData& object);
    void countName(const ObjectData& object);
    void countDatabases();
    void finish();

    const Model* model_;
    ModelFacts facts_;
    std::unordered_map<const TlRxClass*, std::size_t> classes_;
    std::unordered_map<const TlRxClass*, Type> types_;
    std::unordered_map<const DatabaseData*, std::size_t> databases_;
    std::vector<bool> usedKeys_;
    Counts names_;
};

void Counter::countShape(const ObjectData& object) {
    if (!object.hasShape) {
        ++facts_.withoutShape[object.object().isA()->name()];
    }
    for (const HxDbSmrtlnPoint& point : object.pointSpan()) {
        facts_.bounds.add(point.getCoord());
    }
    for (HextPrimary* primitive : object.primitiveSpan()) {
        Type& type = types_.at(primitive->isA());
        ++type.count;
        for (const FieldRow* field : type.points) {
            facts_.bounds.add(*static_cast<const HxGePoint3D*>(field->place(*primitive)));
        }
    }
}

void Counter::countPipeline(const ObjectData& object) {
    const Property* branches = object.find(Member::Branches);
    const std::size_t count = branches != nullptr ? branches->count : 0;
    ++facts_.pipelines;
    facts_.branches += count;
    facts_.emptyPipelines += count == 0 ? 1 : 0;
}

void Counter::countName(const ObjectData& object) {
    if (object.name == nullptr || *object.name == '\0') {
        ++facts_.unnamedManagers;
        return;
    }
    ++names_[std::string(object.object().isA()->name()).append(" ").append(tolmar::toUtf8(object.name))];
}

void Counter::countObject(const ObjectData& object) {
    const HxDbObject& self = object.object();
    ++classes_[self.isA()];
    if (object.inTree()) {
        ++databases_[&object.database()];
    }
    facts_.attributes += object.recordCount;
    facts_.connections += object.connectionCount;
    for (std::uint32_t i = 0; i < object.recordCount; ++i) {
        usedKeys_[object.records[i].key] = true;
    }
    if (self.isKindOf(HxDbSmrtlnEntity::desc())) {
        countShape(object);
    } else if (self.isKindOf(HextNameNode::desc())) {
        countName(object);
    }
    if (self.isKindOf(HextPipeline::desc())) {
        countPipeline(object);
    }
}

void Counter::countDatabases() {
    for (const DatabaseData& database : model_->databases) {
        facts_.databases.push_back({tolmar::toUtf8(database.name), tolmar::toUtf8(database.shortName),
                                    &database == model_->main, databases_[&database]});
    }
}

void Counter::finish() {
    for (const auto& [type, count] : classes_) {
        facts_.objects[type->name()] = count;
    }
    for (const auto& [type, found] : types_) {
        if (found.count != 0) {
            facts_.primitives[type->name()] = found.count;
        }
    }
    for (const auto& [name, count] : names_) {
        if (count > 1) {
            facts_.repeatedNames[name] = count;
        }
    }
    for (const std::string_view key : keysOfExports) {
        const auto number = model_->attributes.keys.find(key);
        if (!number || !usedKeys_[*number]) {
            facts_.missingAttributes.emplace_back(key);
        }
    }
}

ModelFacts Counter::count() {
    facts_.project = tolmar::toUtf8(model_->project.name);
    usedKeys_.resize(model_->attributes.keys.all().size());
    for (std::size_t i = 0; i < model_->objects.size(); ++i) {
        countObject(model_->objects[i]);
    }
    countDatabases();
    finish();
    return std::move(facts_);
}

}  // namespace

void Bounds::add(const HxGePoint3D& point) {
    if (isEmpty) {
        low = high = point;
        isEmpty = false;
        return;
    }
    low = {std::min(low.x, point.x), std::min(low.y, point.y), std::min(low.z, point.z)};
    high = {std::max(high.x, point.x), std::max(high.y, point.y), std::max(high.z, point.z)};
}

double Bounds::distance() const {
    return (low + (high - low) / 2).asVector().length();
}

ModelFacts factsOf(const Model& model) {
    return Counter(model).count();
}

}  // namespace plant
