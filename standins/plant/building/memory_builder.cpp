#include "plant/building/memory_builder.h"

#include "plant/refusal.h"

#include <algorithm>
#include <set>
#include <utility>

namespace plant {

namespace {

// Far more than any plant has; operations climb and descend the tree level by level.
constexpr std::uint8_t deepestTree = 200;

// Objects that gather before their references are resolved: the objects that those name are still in the processor's
// cache then, and most stand near.
constexpr std::size_t resolvedTogether = 512;

int checkedModule(int module) {
    if (module != 48 && module != 65 && module != 73) {
        refuse("48, 65 or 73 expected, " + std::to_string(module) + " found");
    }
    return module;
}

}  // namespace

MemoryBuilder::MemoryBuilder(Model& model)
    : model_(&model), texts_(model.texts), keys_(model, texts_), attributes_(keys_), runAttributes_(keys_),
      primitives_(model, texts_), resolver_(model) {}

void MemoryBuilder::project(const ProjectFacts& facts) {
    checkOutside("the project");
    ProjectData& project = model_->project;
    const auto isFirst = [&](auto member) {
        const bool isNew = facts.*member && !(toldProject_.*member);
        if (isNew) {
            (toldProject_.*member).emplace();
        }
        return isNew;
    };
    const auto text = [&](auto member, const char*& kept) {
        if (isFirst(member)) {
            kept = keep(*(facts.*member));
        }
    };
    text(&ProjectFacts::name, project.name);
    text(&ProjectFacts::path, project.path);
    text(&ProjectFacts::user, project.user);
    text(&ProjectFacts::database, project.database);
    text(&ProjectFacts::platformPath, project.platformPath);
    if (isFirst(&ProjectFacts::module)) {
        within("module", [&] { project.module = checkedModule(*facts.module); });
    }
    if (isFirst(&ProjectFacts::weldColor)) {
        within("weldColor",
               [&] { project.weldColor = static_cast<int>(checkedWhole(*facts.weldColor, 1, largestWeldColor)); });
    }
    if (facts.currentManager != 0 && project.currentManager.id == 0) {
        within("currentManager", [&] { project.currentManager.id = checkedId(facts.currentManager); });
    }
    within("designItems", [&] { keepItems(facts.designItems, project.designItems); });
    within("projectItems", [&] { keepItems(facts.projectItems, project.projectItems); });
}

void MemoryBuilder::keepItems(std::span<const ProjectFacts::Item> items, TextMap& kept) {
    std::set<std::string_view> keys;
    for (const ProjectFacts::Item& item : items) {
        within(item.key, [&] {
            if (!keys.insert(item.key).second) {
                refuse("stands twice");
            }
            kept.try_emplace(inCodePage(item.key), keep(item.text));
        });
    }
}

void MemoryBuilder::attributeLabel(std::string_view key, std::string_view label) {
    checkOutside("a label");
    model_->attributes.labels.try_emplace(keys_[keys_.find(key)].number, texts_.keep(label));
}

void MemoryBuilder::database(const DatabaseFacts& facts) {
    checkOutside("a database");
    DatabaseData& database = model_->databases.emplace_back(*model_);
    database.name = keep(facts.name);
    database.shortName = facts.shortName ? keep(*facts.shortName) : database.name;
    if (facts.root != 0) {
        within("root", [&] { database.root.id = checkedId(facts.root); });
    }
    if (facts.main && std::exchange(model_->main, &database) != nullptr) {
        within("main", [] { refuse("another database is the main one already"); });
    }
    const auto isSame = [&](const DatabaseData& other) {
        return &other != &database && std::string_view(other.name) == database.name;
    };
    if (std::any_of(model_->databases.begin(), model_->databases.end(), isSame)) {
        refuse("another database has this name");
    }
}

ObjectId MemoryBuilder::newId() {
    reserved_ = std::max(reserved_, model_->objects.largestId());
    if (reserved_ == largestId) {
        refuse("no ids are left");
    }
    return ++reserved_;
}

void MemoryBuilder::reserveIds(ObjectId upTo) {
    reserved_ = std::max(reserved_, checkedId(upTo));
}

void MemoryBuilder::checkNewId(ObjectId id) const {
    if (const ObjectData* first = model_->objects.find(checkedId(id)); first != nullptr) [[unlikely]] {
        throw Refusal("id " + std::to_string(id) + " is that of ",
                      {RecordNumber::Kind::Object, model_->objects.indexOf(*first)});
    }
}

void MemoryBuilder::beginObject(ObjectId id, std::string_view className) {
    within("id", [&] { checkNewId(id); });
    const auto rows = classRows();
    const auto isNamed = [&](const ClassRow& row) { return row.name() == className; };
    const auto row = std::find_if(rows.begin(), rows.end(), isNamed);
    if (row == rows.end()) {
        within("class", [&] { refuse("the name of a class expected, \"" + std::string(className) + "\" found"); });
    }
    beginObject(id, *row);
}

void MemoryBuilder::beginObject(ObjectId id, const ClassRow& row) {
    checkOutside("an object");
    if (model_->objects.size() == IdIndex::none) {
        refuse("too many objects");
    }
    object_ = &model_->objects.append();
    object_->model = model_;
    model_->objects.giveId(*object_, id);
    row.construct(object_->self, *object_);
    object_->classRow = static_cast<std::uint8_t>(&row - classRows().data());
    current_.family = &familyTable(row.family);
    current_.open = current_.family->properties;
    current_.hasKeyPoints = false;
    properties_.clear();
    attributes_.begin();
    primitives_.begin();
}

void MemoryBuilder::parent(ObjectId id) {
    ObjectData& object = current();
    ObjectData* parent = lastParent_ != nullptr && lastParent_->id == id ? lastParent_ : model_->objects.find(id);
    if (parent == nullptr || parent == &object) {
        refuse("no object " + std::to_string(id) + " before this one");
    }
    if (object.parent != nullptr) {
        refuse("the object has a parent already");
    }
    if (parent->depth == deepestTree) {
        refuse("the tree is deeper than " + std::to_string(deepestTree) + " levels");
    }
    lastParent_ = parent;
    object.parent = parent;
    object.depth = static_cast<std::uint8_t>(parent->depth + 1);
    (parent->son == nullptr ? parent->son : parent->lastSon->brother) = &object;
    parent->lastSon = &object;
}

void MemoryBuilder::nodeId(ObjectId id) {
    ObjectData& object = current();
    if (object.hasNodeId) {
        refuse("the node has an id already");
    }
    if (!model_->nodeIds.emplace(checkedId(id), &object).second) {
        refuse("id " + std::to_string(id) + " is that of another node");
    }
    model_->idsOfNodes.emplace(object.id, id);
    object.hasNodeId = true;
    reserveIds(id);
}

void MemoryBuilder::color(std::int16_t index) {
    current().color = static_cast<std::int16_t>(checkedWhole(index, 0, largestColor));
}

void MemoryBuilder::whole(WholeMember member, std::int64_t value) {
    const MemberRow& row = memberRow(memberOf(member));
    add(member).whole = checkedWhole(value, row.low, row.high);
}

void MemoryBuilder::vector(VectorMember member, const Triple& value) {
    add(member).vector = model_->arena.copy(std::span<const double>(checkedTriple(value)));
}

void MemoryBuilder::references(ListMember member, std::span<const ObjectId> ids) {
    Property& property = add(member);
    const ReferenceList list = keepIds(ids);
    property.references = list.items;
    property.count = list.count;
}

ReferenceList MemoryBuilder::keepIds(std::span<const ObjectId> ids) {
    ReferenceList list{ids.empty() ? nullptr : model_->arena.allocate<Reference>(ids.size()),
                       static_cast<std::uint32_t>(ids.size())};
    for (std::size_t i = 0; i < ids.size(); ++i) {
        within(i, [&] { list.items[i].id = checkedId(ids[i]); });
    }
    return list;
}

void MemoryBuilder::insulation(const InsulationFacts& facts) {
    Property& property = addProperty(Member::Insulation);
    Insulation insulation;
    within("thickness", [&] { insulation.thickness = checkedNumber(facts.thickness); });
    insulation.material = facts.material ? keep(*facts.material) : nullptr;
    insulation.code = facts.code ? keep(*facts.code) : nullptr;
    property.insulation = model_->arena.copy(std::span<const Insulation>(&insulation, 1));
}

void MemoryBuilder::primitive(const HextPrimary& primitive) {
    smart("primitives");
    primitives_.copy(primitive);
}

void MemoryBuilder::endObject() {
    ObjectData& object = current();
    const AttributeList list = attributes_.keep();
    object.records = list.records;
    object.recordCount = list.count;
    if (current_.family != &familyTable(Family::Plain)) {
        primitives_.keep(object);
        keepPoints();
        keepRecords();
    }
    object.properties = model_->arena.copy(properties_);
    object.propertyCount = static_cast<std::uint8_t>(properties_.size());
    object_ = nullptr;
    current_ = {};
    if (model_->objects.size() % resolvedTogether == 0) {
        resolver_.resolveNew();
    }
}

void MemoryBuilder::finish() {
    checkOutside("the end");
    isFinished_ = true;
    if (model_->databases.empty()) {
        refuse("at least one database expected");
    }
    if (model_->main == nullptr) {
        model_->main = &model_->databases.front();
    }
    resolver_.finish();
}

void MemoryBuilder::checkOutside(const char* what) const {
    if (object_ != nullptr) [[unlikely]] {
        refuse(std::string("an object is not ended before ").append(what));
    }
    if (isFinished_) [[unlikely]] {
        refuse(std::string("the plant is complete before ").append(what));
    }
}

void MemoryBuilder::refuseOutside() {
    refuse("told of no object");
}

void MemoryBuilder::refuseMember(std::string_view member) const {
    if (object_ == nullptr) {
        refuseOutside();
    }
    refuse(std::string("no member \"").append(member).append("\" of ").append(current_.family->names.title()));
}

void MemoryBuilder::refuseProperty(Member member) const {
    const std::string_view name = memberRow(member).name;
    if ((current_.family->properties >> static_cast<unsigned>(member) & 1U) == 0 || object_ == nullptr) {
        refuseMember(name);
    }
    refuse(std::string("member \"").append(name).append("\" is told twice"));
}

}  // namespace plant
