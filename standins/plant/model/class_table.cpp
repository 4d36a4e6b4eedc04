#include "plant/model/class_table.h"

#include "plant/model/data.h"

#include <array>
#include <iterator>
#include <limits>

namespace plant {

namespace {

constexpr std::int64_t largestInt = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t smallestInt = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t mostBolts = 1000;  // of one flange; the catalogue has a line for each

constexpr MemberRow textMember(std::string_view name, Member member) {
    return {name, Reading::Text, member};
}
constexpr MemberRow numberMember(std::string_view name, Member member) {
    return {name, Reading::Number, member};
}
constexpr MemberRow vectorMember(std::string_view name, Member member) {
    return {name, Reading::Vector, member};
}
constexpr MemberRow wholeMember(std::string_view name, Member member, std::int64_t low = smallestInt,
                                std::int64_t high = largestInt) {
    return {name, Reading::Whole, member, low, high};
}
constexpr MemberRow referenceMember(std::string_view name, Member member, const HxRxClass* target = nullptr) {
    return {name, Reading::Reference, member, 0, 0, target};
}
constexpr MemberRow referencesMember(std::string_view name, Member member, const HxRxClass* target = nullptr) {
    return {name, Reading::References, member, 0, 0, target};
}

// "id" and "class" are the first two; identityNames relies on it.
constexpr MemberRow anyObject[] = {
    {"id", Reading::Id, Member::None, 0, 0, nullptr, true},
    {"class", Reading::ClassName, Member::None, 0, 0, nullptr, true},
    {"in", Reading::Parent},
    {"name", Reading::Name},
    {"node", Reading::NodeId},
    textMember("displayName", Member::DisplayName),
    referenceMember("owner", Member::Owner),
    referencesMember("members", Member::Members),
    {"available", Reading::Available},
    {"attrs", Reading::Attributes},
    textMember("standard", Member::Standard),
    {"color", Reading::Color, Member::None, 0, largestColor},
};

constexpr MemberRow pipeline[] = {
    referenceMember("start", Member::Start, &HxDbTubeModel::classRecord),
    {"branches", Reading::Branches, Member::Branches, 0, 0, &HxDbSmrtlnEntity::classRecord},
    {"runs", Reading::Runs, Member::Runs, 0, 0, &HxDbSmrtlnEntity::classRecord},
};

constexpr MemberRow smart[] = {
    {"kind", Reading::Kind},
    textMember("objectName", Member::ObjectName),
    textMember("no", Member::No),
    {"points", Reading::Points, Member::None, 0, 0, &HxDbSmrtlnEntity::classRecord},
    {"keyPoints", Reading::KeyPoints, Member::KeyPoints},
    wholeMember("insNo", Member::InsNo, 0, largestPointNumber),
    wholeMember("refNo", Member::RefNo, 0, largestPointNumber),
    vectorMember("refVec", Member::RefVec),
    vectorMember("insVec", Member::InsVec),
    vectorMember("insPoint", Member::InsPoint),
    referenceMember("spec", Member::Spec, &HxDbTubeSpecification::classRecord),
    {"insulation", Reading::Insulation, Member::Insulation},
    referenceMember("bolts", Member::Bolts, &HxDbBoltNutModel::classRecord),
    referenceMember("supItem", Member::SupItem, &HxDbSupportItem::classRecord),
    referencesMember("subs", Member::Subs),
    {"primitives", Reading::Primitives},
};

constexpr MemberRow boltSet[] = {
    referenceMember("bolt", Member::Bolt, &HextBolt::classRecord),
    referenceMember("nut", Member::Nut, &HextNut::classRecord),
    referenceMember("flange", Member::Flange, &HxDbFlan2BoltNut::classRecord),
};

constexpr MemberRow tubeSpecification[] = {{"ends", Reading::Ends, Member::Ends}};

constexpr MemberRow supportItem[] = {
    textMember("type", Member::Type),
    textMember("stan", Member::Stan),
};

constexpr MemberRow standardPart[] = {
    textMember("cname", Member::CName),       textMember("type", Member::Type),
    textMember("spec", Member::PartSpec),     textMember("stan", Member::Stan),
    textMember("material", Member::Material), wholeMember("unit", Member::UnitNumber),
    textMember("note", Member::Note),         numberMember("weight", Member::Weight),
    numberMember("price", Member::Price),     wholeMember("sortNo", Member::SortNo),
};

constexpr MemberRow boltOnly[] = {textMember("boltSpec", Member::BoltSpec)};

constexpr MemberRow flangeBolts[] = {
    wholeMember("boltNum", Member::BoltNum, 0, mostBolts),
    wholeMember("nutNum", Member::NutNum, 0, mostBolts),
    referenceMember("bolt", Member::Bolt, &HextBolt::classRecord),
    textMember("size", Member::Size),
    textMember("std", Member::Std),
    textMember("endType", Member::EndType),
    textMember("rating", Member::Rating),
    textMember("unit", Member::UnitText),
};

template <typename Class>
HxDbObject* construct(void* place, ObjectData& data) {
    static_assert(sizeof(Class) == sizeof(HxDbObject) && alignof(Class) == alignof(HxDbObject));
    return new (place) Class(data);
}

template <typename Class>
constexpr ClassRow row(Family family = Family::Plain) {
    return {&Class::classRecord, construct<Class>, family};
}

constexpr ClassRow classTable[] = {
    row<HextWorld>(),
    row<HextSite>(),
    row<HextZone>(),
    row<HextZoneDirectory>(),
    row<HextUnit>(),
    row<HextItem>(),
    row<HextStdFloor>(),
    row<HextPipeline>(Family::Pipeline),
    row<HextStruct>(),
    row<HextEquipe>(),
    row<HextSupport>(),
    row<HextAxiss>(),
    row<HextPIDPaperManager>(),
    row<HxDbTubeModel>(Family::Smart),
    row<HxDbTubeModelSpec>(Family::Smart),
    row<HxDbPipeSpec>(Family::Smart),
    row<HxDbNozzleModel>(Family::Smart),
    row<HxDbTubeGeneral>(Family::Smart),
    row<HxDbTubeWeld>(Family::Smart),
    row<HxDbTubeStop>(Family::Smart),
    row<HxDbBalloon>(Family::Smart),
    row<HxDbAssembly>(Family::Smart),
    row<HxDbSupportModel>(Family::Smart),
    row<HxDbEquipment>(Family::Smart),
    row<HxDbStruct>(Family::Smart),
    row<HxDbAxissLine>(Family::Smart),
    row<HxDbXGModel>(Family::Smart),
    row<HxDbNonTube>(Family::Smart),
    row<HxDbBoltNutModel>(Family::BoltSet),
    row<HxDbAcadSerialObject>(Family::Smart),
    row<HextAcadEntitySer>(Family::Smart),
    row<HxDbTubeSpecification>(Family::TubeSpecification),
    row<HxDbSupportItem>(Family::SupportItem),
    row<HextBolt>(Family::Bolt),
    row<HextNut>(Family::Nut),
    row<HxDbFlan2BoltNut>(Family::FlangeBolts),
    row<HxDbOther>(),
};

struct FamilyRow {
    const char* title;  // in messages
    std::vector<std::span<const MemberRow>> parts;
};

FamilyTable makeFamily(const FamilyRow& family) {
    std::vector<MemberRow> members(std::begin(anyObject), std::end(anyObject));
    for (const auto& part : family.parts) {
        members.insert(members.end(), part.begin(), part.end());
    }
    std::vector<NameRows::Name> names;
    std::uint64_t properties = 0;
    bool isSmart = false;
    for (const MemberRow& member : members) {
        names.push_back({member.name, member.required});
        properties |= member.member == Member::None ? 0 : std::uint64_t{1} << static_cast<unsigned>(member.member);
        isSmart = isSmart || member.reading == Reading::Points;
    }
    return {std::move(members), NameRows(family.title, std::move(names)), properties, isSmart};
}

// In the order of Family.
std::array<FamilyTable, familyCount> makeFamilies() {
    return {
        makeFamily({"an object of this class", {}}),
        makeFamily({"a pipeline", {pipeline}}),
        makeFamily({"a smart object", {smart}}),
        makeFamily({"a bolt set", {smart, boltSet}}),
        makeFamily({"a tube specification", {tubeSpecification}}),
        makeFamily({"a support item", {supportItem}}),
        makeFamily({"a bolt", {standardPart, boltOnly}}),
        makeFamily({"a nut", {standardPart}}),
        makeFamily({"the bolts of a flange", {flangeBolts}}),
    };
}

const std::array<FamilyTable, familyCount>& families() {
    static const std::array<FamilyTable, familyCount> tables = makeFamilies();
    return tables;
}

std::vector<const MemberRow*> makeRowsOfMembers() {
    std::vector<const MemberRow*> rows(memberCount);
    for (const FamilyTable& family : families()) {
        for (const MemberRow& member : family.members) {
            rows[static_cast<std::size_t>(member.member)] = &member;
        }
    }
    return rows;
}

NameRows makeClassNames() {
    std::vector<NameRows::Name> names;
    for (const ClassRow& row : classTable) {
        names.push_back({row.name()});
    }
    return {"the classes", std::move(names)};
}

}  // namespace

std::span<const ClassRow> classRows() {
    return classTable;
}

const NameRows& classNames() {
    static const NameRows names = makeClassNames();
    return names;
}

const FamilyTable& familyTable(Family family) {
    return families()[static_cast<std::size_t>(family)];
}

const NameRows& identityNames() {
    static const NameRows names("an object before \"id\" and \"class\", which stand first",
                                {{"id", true}, {"class", true}});
    return names;
}

const MemberRow& memberRow(Member member) {
    static const std::vector<const MemberRow*> rows = makeRowsOfMembers();
    return *rows[static_cast<std::size_t>(member)];
}

const NameRows& kindNames() {
    static const NameRows names("the kinds", {{"none"},
                                              {"pipe"},
                                              {"bend"},
                                              {"gasket"},
                                              {"virtualGasket"},
                                              {"flange"},
                                              {"hose"},
                                              {"boss"},
                                              {"olet"},
                                              {"nozzle"},
                                              {"valve"}});
    return names;
}

}  // namespace plant
