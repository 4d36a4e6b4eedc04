// The classes that a model file can name and the members that objects of each may have: what the reader reads, what
// references may lead to, and what the format's description must tell.
#pragma once

#include "plant/model/data.h"
#include "plant/model/name_rows.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace plant {

// How a member is read and kept.
enum class Reading : std::uint8_t {
    Id,
    ClassName,
    Parent,
    Name,
    NodeId,
    Attributes,
    Color,
    Available,
    Kind,
    Points,
    Primitives,
    // Properties, by the type of their value:
    Text,
    Whole,
    Number,
    Vector,
    Reference,
    References,
    KeyPoints,
    Insulation,
    Ends,
    Branches,
    Runs,
};

struct MemberRow {
    std::string_view name;
    Reading reading;
    Member member = Member::None;  // the property that it becomes
    std::int64_t low = 0;          // limits of a whole number
    std::int64_t high = 0;
    const HxRxClass* target = nullptr;  // class of the objects that references lead to; null for any
    bool required = false;
};

// Which members an object has.
enum class Family : std::uint8_t {
    Plain,
    Pipeline,
    Smart,
    BoltSet,
    TubeSpecification,
    SupportItem,
    Bolt,
    Nut,
    FlangeBolts,
};
inline constexpr std::size_t familyCount = 9;

struct ClassRow {
    const HxRxClass* record;
    HxDbObject* (*construct)(void* place, ObjectData& data);
    Family family;
    const char* name() const { return record->name(); }
};

std::span<const ClassRow> classRows();
// The row of a class; Shape::none when there is none of the name.
const Shape& classNames();

struct FamilyTable {
    std::vector<MemberRow> members;
    Shape shape;  // rows as `members`; "id" and "class" are the first
};
const FamilyTable& familyTable(Family family);
// The members that may stand before the class is known.
const Shape& identityShape();
// The row that a property was read by.
const MemberRow& memberRow(Member member);

// Words of the member "kind", in the order of PartKind from None on.
const Shape& kindNames();

// Shapes of the smaller objects; the enumerations number their rows.
namespace shapes {

enum class Top { Format, Version, Project, AttributeLabels, Databases, Objects };
enum class Project {
    Name,
    Path,
    User,
    Module,
    Database,
    DesignItems,
    ProjectItems,
    WeldColor,
    CurrentManager,
    PlatformPath
};
enum class Database { Name, ShortName, Main, Root };
enum class Attribute { Key, Value, Type, Description };
enum class Point { No, At, Flow, To };
enum class KeyPoint { No, At };
enum class Insulation { Thickness, Material, Code };
enum class End { Size, EndType, Outer, Inner, Section };
enum class Run { Name, Items, Attrs };

const Shape& top();
const Shape& project();
const Shape& database();
const Shape& attribute();
const Shape& point();
const Shape& keyPoint();
const Shape& insulation();
const Shape& end();
const Shape& run();

}  // namespace shapes

}  // namespace plant
