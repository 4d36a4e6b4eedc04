#include "sources/review/element_teller.h"

#include "sources/attributes/values.h"
#include "sources/review/part_teller.h"

#include <algorithm>
#include <cmath>

namespace plant::review {

namespace {

constexpr double noTemperature = -99999;

struct ItemOfClass {
    std::string_view className;
    std::string_view item;
};
// What an object is to the exports where the file does not say it in their words.
constexpr ItemOfClass itemsOfClasses[] = {
    {"HxDbEquipment", "EQUIP"}, {"HxDbStruct", "STRUCT"}, {"HxDbSupportModel", "SUPPORT"}};

bool isPipeline(const TypeRow& row) {
    return row.className == "HextPipeline";
}

bool isOfRole(const Node& node, Role role) {
    return node.type != nullptr && node.type->role == role;
}

}  // namespace

ElementTeller::ElementTeller(File& file, Tree& tree, const Piping& piping, ModelBuilder& builder)
    : file_(file), tree_(tree), piping_(piping), builder_(builder), shapes_(file, builder), attributes_(file, builder),
      specifications_(builder), branches_({file, tree, piping, builder, shapes_, attributes_, specifications_}),
      nozzles_(builder, piping, shapes_, specifications_), isOwnGroup_(file.survey.groups.size()) {}

void ElementTeller::tell(ObjectId world, const std::string& siteName) {
    siteName_ = siteName;
    Place place{Level::World, world, siteName};
    for (std::uint32_t top = tree_.firstTop(); top != noNode; top = tree_.nodes()[top].brother) {
        tellNode(top, place);
    }
}

Facts ElementTeller::factsOf(const Node& node) const {
    return node.block != attributes::noBlock ? readFacts(*file_.index, file_.index->blocks()[node.block]) : Facts();
}

std::string ElementTeller::nameOf(const Node& node) {
    return std::string(withoutStroke(file_.nameOf(tree_, node)));
}

// The class that RVMOUT's script wrote, where it is one that the plant knows.
bool ElementTeller::hasClass(const Node& node) const {
    const std::uint16_t word =
        node.block != attributes::noBlock ? file_.index->blocks()[node.block].classType : std::uint16_t{0};
    return word != 0 && typeRow(file_.index->wordOf(word)) != nullptr;
}

void ElementTeller::take(const Node& node) {
    file_.report->balance("groups").taken += node.group != rvm::noGroup ? 1 : 0;
}

// ------------------------------------------------------------------------------------------------ world, sites, zones

// By depth where nothing else tells: a group with primitives of its own is no site and no zone.
Role ElementTeller::roleOf(const Node& node, const Place& place) const {
    if (node.type != nullptr) {
        return node.type->role;
    }
    const bool isRootOfOwn = file_.survey.isOwn && node.parent == noNode && node.brother == noNode;
    if (isRootOfOwn && &node == &tree_.nodes()[tree_.firstTop()]) {
        return Role::World;
    }
    if (place.level == Level::Zone || tree_.ownPrimitives(node) > 0) {
        return Role::Manager;
    }
    return place.level == Level::World ? Role::Site : Role::Zone;
}

void ElementTeller::tellNode(std::uint32_t number, Place& place) {
    const Role role = roleOf(tree_.nodes()[number], place);
    switch (role) {
    case Role::World:
        return tellWorldNode(number, place);
    case Role::Site:
    case Role::Zone:
    case Role::Directory:
        return tellContainer(number, role, place);
    default:
        return tellManager(number, place);
    }
}

void ElementTeller::tellSons(std::uint32_t number, Place& place) {
    for (std::uint32_t son = tree_.nodes()[number].son; son != noNode; son = tree_.nodes()[son].brother) {
        tellNode(son, place);
    }
}

// The plant has one world, and it is told already.
void ElementTeller::tellWorldNode(std::uint32_t number, Place& place) {
    const Node& node = tree_.nodes()[number];
    take(node);
    if (node.block != attributes::noBlock) {
        const attributes::Block& block = file_.index->blocks()[node.block];
        ++file_.report->balance("blocks").told;
        file_.report->balance("attributes").told += block.attributes;
        file_.tellLine("review.world", SourceGrade::Note, block.line,
                       "a world of the file; what it holds stands in the plant's, its attributes are left out");
    }
    tellSons(number, place);
    tellLoose(number, place);
}

ObjectId ElementTeller::tellImplied(std::string_view className, ObjectId parent, const std::string& name) {
    const ObjectId id = builder_.newId();
    builder_.beginObject(id, className);
    builder_.parent(parent);
    builder_.name(name);
    builder_.endObject();
    return id;
}

ElementTeller::Place& ElementTeller::siteOf(Place& place) {
    if (place.level != Level::World) {
        return place;
    }
    if (implied_.id == 0) {
        implied_ = {Level::Site, tellImplied("HextSite", place.id, siteName_), siteName_};
    }
    return implied_;
}

ObjectId ElementTeller::zoneOf(Place& place) {
    if (place.level == Level::Zone) {
        return place.id;
    }
    Place& site = siteOf(place);
    if (site.impliedZone == 0) {
        site.impliedZone = tellImplied("HextZone", site.id, site.name);
    }
    return site.impliedZone;
}

// A site in a site counts as a zone, and a zone in a zone as a directory.
void ElementTeller::tellContainer(std::uint32_t number, Role role, Place& place) {
    const Node& node = tree_.nodes()[number];
    const bool isSite = role == Role::Site && place.level == Level::World;
    Place& around = isSite ? place : role == Role::Directory && place.level != Level::Zone ? place : siteOf(place);
    const bool isDirectory = around.level == Level::Zone || role == Role::Directory;
    const ObjectId parent = isDirectory ? zoneOf(around) : around.id;
    std::string_view className = isSite ? "HextSite" : isDirectory ? "HextZoneDirectory" : "HextZone";
    if (node.type != nullptr && node.type->role == role && !node.type->className.empty() &&
        (role == Role::Directory) == isDirectory && isSite == (role == Role::Site)) {
        className = node.type->className;
    }
    take(node);
    const std::string name = nameOf(node);
    builder_.beginObject(node.id, className);
    builder_.parent(parent);
    builder_.name(name);
    if (node.block != attributes::noBlock) {
        attributes_.tellBlock(node.block, {.hasClass = hasClass(node), .line = {}});
    }
    builder_.endObject();
    Place inside{isSite ? Level::Site : Level::Zone, node.id, name};
    tellSons(number, inside);
    tellLoose(number, inside);
}

// Primitives that stand in a site or zone itself go to a manager of its name.
void ElementTeller::tellLoose(std::uint32_t number, Place& place) {
    const Node& node = tree_.nodes()[number];
    if (tree_.ownPrimitives(node) == 0) {
        return;
    }
    const TypeRow& row = plainManager();
    const std::string name = nameOf(node);
    const ObjectId manager = tellImplied(row.className, zoneOf(place), name);
    const std::vector<LoosePrimitive> primitives = shapes_.loosePrimitives(node.group);
    builder_.beginObject(builder_.newId(), row.bodyClass);
    builder_.parent(manager);
    builder_.name(name);
    shapes_.tellColor(node.group);
    shapes_.tellLook(node.group);
    builder_.shape();
    shapes_.tellPrimitives(primitives);
    builder_.endObject();
}

// ----------------------------------------------------------------------------------------------------------- managers

const TypeRow& ElementTeller::managerRow(const Node& node) const {
    if (isOfRole(node, Role::Manager)) {
        return *node.type;
    }
    if (!isOfRole(node, Role::Branch)) {
        return plainManager();
    }
    const TypeRow* above = typeRow(node.type->above);
    return above != nullptr ? *above : plainManager();
}

void ElementTeller::tellManager(std::uint32_t number, Place& place) {
    const TypeRow& row = managerRow(tree_.nodes()[number]);
    const ObjectId zone = zoneOf(place);
    objects_.clear();
    branchNodes_.clear();
    const bool isBranchItself = isOfRole(tree_.nodes()[number], Role::Branch);
    if (isBranchItself) {
        branchNodes_.push_back(number);
    }
    for (std::uint32_t son = tree_.nodes()[number].son; son != noNode; son = tree_.nodes()[son].brother) {
        const bool isPart = isBranchItself && tree_.nodes()[son].part != nullptr;
        if (isPart) {
            tellFolded(son);
        } else {
            collectOwn(son, true, isPipeline(row));
        }
    }
    tellManagerObject(number, row, zone);
    tellContents(number, row);
}

// What stands below a manager, whatever its depth: branches of pipelines, and elements that are objects of their own.
void ElementTeller::collectOwn(std::uint32_t number, bool isDirect, bool isPipeline) {
    const Node& node = tree_.nodes()[number];
    const bool isBranch = isPipeline && isOfRole(node, Role::Branch);
    const bool isObject = !isBranch && isOwn(node, isDirect);
    if (isBranch) {
        branchNodes_.push_back(number);
    } else if (isObject) {
        objects_.push_back(number);
    }
    if ((isBranch || isObject) && node.group != rvm::noGroup) {
        isOwnGroup_[node.group] = true;
    }
    for (std::uint32_t son = node.son; son != noNode; son = tree_.nodes()[son].brother) {
        const Node& one = tree_.nodes()[son];
        const bool isPart = isBranch && one.part != nullptr;
        if (isPart || (isBranch && tree_.isLoose(one))) {
            tellFolded(son);
        } else {
            collectOwn(son, isBranch, isPipeline);
        }
    }
}

// Blocks within what is one object.
void ElementTeller::tellFolded(std::uint32_t number) {
    for (std::uint32_t son = tree_.nodes()[number].son; son != noNode; son = tree_.nodes()[son].brother) {
        const Node& node = tree_.nodes()[son];
        if (node.block != attributes::noBlock) {
            const attributes::Block& block = file_.index->blocks()[node.block];
            ++file_.report->balance("blocks").told;
            file_.report->balance("attributes").told += block.attributes;
            file_.tellLine(
                "review.element-in-part", SourceGrade::Loss, block.line,
                "an element within a part of a pipe; its shape is part of that, its attributes are left out");
        }
        tellFolded(son);
    }
}

bool ElementTeller::isOwn(const Node& node, bool isDirect) const {
    const bool isElement = node.type != nullptr && !node.type->isShape;
    return node.block != attributes::noBlock || isElement || (isDirect && node.type == nullptr);
}

void ElementTeller::tellManagerObject(std::uint32_t number, const TypeRow& row, ObjectId zone) {
    const Node& node = tree_.nodes()[number];
    take(node);
    builder_.beginObject(node.id, row.className);
    builder_.parent(zone);
    builder_.name(nameOf(node));
    shapes_.tellColor(node.group);
    const Facts facts = factsOf(node);
    const bool isOwnClass = hasClass(node);
    if (!isOwnClass && row.className == "HextEquipe") {
        tellEquipmentFacts(node);
    }
    if (!isOwnClass && isPipeline(row)) {
        tellPipelineFacts(node, facts);
    }
    const bool isRun = isOfRole(node, Role::Branch);
    if (node.block != attributes::noBlock && !isRun) {
        attributes_.tellBlock(node.block, {.hasClass = isOwnClass, .line = {}});
    }
    shapes_.tellLook(node.group);
    if (isPipeline(row)) {
        tellBranches(number);
    }
    builder_.endObject();
}

void ElementTeller::tellEquipmentFacts(const Node& node) {
    const Facts facts = factsOf(node);
    builder_.attribute("eqno", std::string_view(nameOf(node)));
    if (facts.has(Key::Description)) {
        builder_.attribute("eqname", texts_.decode(facts[Key::Description]));
    }
}

void ElementTeller::tellPipelineFacts(const Node& node, const Facts& facts) {
    builder_.attribute("lineno", std::string_view(nameOf(node)));
    const std::string specification(texts_.decode(specificationName(facts[Key::PipeSpecification])));
    if (!specification.empty()) {
        builder_.attribute("specname", std::string_view(specification));
    }
    const std::string insulation(texts_.decode(specificationName(facts[Key::InsulationSpecification])));
    builder_.attribute("insul", insulation.empty() ? std::string_view("0") : std::string_view("1"));
    if (!insulation.empty()) {
        builder_.attribute("insulcode", std::string_view(insulation));
    }
    const auto temperature = attributes::readMeasure(facts[Key::Temperature]);
    if (temperature && temperature->value > noTemperature) {
        builder_.attribute("destemp", std::string_view(shortNumber(temperature->value)));
    }
    const auto pressure = attributes::readMeasure(facts[Key::Pressure]);
    if (pressure && pressure->value > 0) {
        builder_.attribute("despress", std::string_view(shortNumber(pressure->value)));
    }
}

std::string ElementTeller::runName(std::uint32_t branch, std::size_t at) {
    std::string name = nameOf(tree_.nodes()[branch]);
    if (name.empty() || std::find(runNames_.begin(), runNames_.end(), name) != runNames_.end()) {
        name += "_" + std::to_string(at + 1);
    }
    runNames_.push_back(name);
    return name;
}

void ElementTeller::tellBranches(std::uint32_t) {
    std::vector<ObjectId> ids;
    const auto idsOf = [&](const Branch& branch) -> std::span<const ObjectId> {
        ids.clear();
        for (const Item& item : piping_.itemsOf(branch)) {
            ids.push_back(item.id);
        }
        return ids;
    };
    for (const std::uint32_t number : branchNodes_) {
        const Branch* branch = piping_.branchOf(number);
        if (branch != nullptr && branch->isPlaced && branch->itemCount > 0) {
            builder_.branch(idsOf(*branch));
        }
    }
    runNames_.clear();
    for (std::size_t i = 0; i < branchNodes_.size(); ++i) {
        const std::uint32_t number = branchNodes_[i];
        const Branch* branch = piping_.branchOf(number);
        builder_.run(runName(number, i), branch != nullptr ? idsOf(*branch) : std::span<const ObjectId>());
        if (const std::uint32_t block = tree_.nodes()[number].block; block != attributes::noBlock) {
            attributes_.tellRunBlock(block);
        }
    }
}

// ------------------------------------------------------------------------------------------------------------ objects

Line ElementTeller::lineOf(std::uint32_t number, const TypeRow& row) {
    const Facts facts = factsOf(tree_.nodes()[number]);
    Line line;
    line.id = tree_.nodes()[number].id;
    line.specification = texts_.decode(specificationName(facts[Key::PipeSpecification]));
    line.insulation = texts_.decode(specificationName(facts[Key::InsulationSpecification]));
    line.module = row.module;
    return line;
}

void ElementTeller::tellContents(std::uint32_t number, const TypeRow& row) {
    const Node& node = tree_.nodes()[number];
    const bool isBranch = isOfRole(node, Role::Branch);
    if (!isBranch && node.group != rvm::noGroup && hasBody(node.group)) {
        tellBody(number, row);
    }
    const std::vector<std::uint32_t> branches = branchNodes_;
    const std::vector<std::uint32_t> objects = objects_;
    const Line line = lineOf(number, row);
    for (const std::uint32_t branch : branches) {
        if (const Branch* planned = piping_.branchOf(branch)) {
            if (branch != number) {
                take(tree_.nodes()[branch]);
            }
            for (const Item& item : piping_.itemsOf(*planned)) {
                if (!item.isTube()) {
                    take(tree_.nodes()[item.node]);
                }
            }
            branches_.tell(*planned, line);
        }
    }
    for (const std::uint32_t object : objects) {
        tellObject(object, row, number);
    }
}

// True when the group has a primitive that no object in it takes.
bool ElementTeller::hasBody(std::uint32_t group) const {
    const std::vector<rvm::Group>& groups = file_.survey.groups;
    if (groups[group].primitives > 0) {
        return true;
    }
    for (std::uint32_t son = groups[group].son; son != rvm::noGroup; son = groups[son].brother) {
        if (!isOwnGroup_[son] && hasBody(son)) {
            return true;
        }
    }
    return false;
}

void ElementTeller::tellBody(std::uint32_t number, const TypeRow& row) {
    const Node& node = tree_.nodes()[number];
    builder_.beginObject(builder_.newId(), row.bodyClass);
    builder_.parent(node.id);
    builder_.name(nameOf(node));
    shapes_.tellColor(node.group);
    tellObjectFacts(number, row, row.bodyClass);
    shapes_.tellLook(node.group);
    builder_.shape();
    shapes_.tellGroup(node.group, [this](std::uint32_t group) { return bool(isOwnGroup_[group]); });
    builder_.endObject();
}

// Attributes that the exports sort objects by.
void ElementTeller::tellObjectFacts(std::uint32_t number, const TypeRow& row, std::string_view className) {
    const auto* item = std::find_if(std::begin(itemsOfClasses), std::end(itemsOfClasses),
                                    [&](const ItemOfClass& one) { return one.className == className; });
    if (item != std::end(itemsOfClasses)) {
        builder_.attribute("item", item->item);
    }
    if (!row.module.empty()) {
        builder_.attribute("module", row.module);
    }
    if (className == "HxDbEquipment") {
        builder_.attribute("eqno", std::string_view(nameOf(tree_.nodes()[number])));
    }
}

void ElementTeller::tellObject(std::uint32_t number, const TypeRow& row, std::uint32_t manager) {
    const Node& node = tree_.nodes()[number];
    const bool hasBlock = node.block != attributes::noBlock;
    const bool isOwnClass = hasClass(node);
    const bool isTyped = isOfRole(node, Role::Object) && !node.type->className.empty();
    const std::string_view className = isTyped ? node.type->className : row.bodyClass;
    const bool isNozzle = !isOwnClass && className == "HxDbNozzleModel";
    const Facts facts = isNozzle || isOwnClass ? factsOf(node) : Facts();
    const std::string name = nameOf(node);
    if (isNozzle) {
        nozzles_.prepare(node, facts, name, nameOf(tree_.nodes()[manager]));
    }
    take(node);
    builder_.beginObject(node.id, className);
    builder_.parent(tree_.nodes()[manager].id);
    builder_.name(name);
    shapes_.tellColor(node.group);
    const PartKind kind = isOwnClass ? kindOfItem(facts[Key::Item], facts[Key::ItemType]) : PartKind::Default;
    if (kind != PartKind::Default) {
        builder_.kind(kind);
    }
    if (isNozzle) {
        nozzles_.tellMembers();
        nozzles_.tellAttributes();
    } else if (!isOwnClass) {
        tellObjectFacts(number, row, className);
    }
    if (hasBlock) {
        const bool isInLine = isOwnClass && isPipeline(row);
        attributes_.tellBlock(
            node.block,
            {.hasClass = isOwnClass, .line = isInLine ? std::to_string(tree_.nodes()[manager].id) : std::string()});
    }
    shapes_.tellLook(node.group);
    if (isNozzle) {
        nozzles_.tellPoints();
    }
    builder_.shape();
    if (node.group != rvm::noGroup) {
        shapes_.tellGroup(node.group, [this](std::uint32_t group) { return bool(isOwnGroup_[group]); });
    }
    builder_.endObject();
}

}  // namespace plant::review
