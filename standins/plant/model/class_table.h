// The classes of objects and the members that objects of each may have: what a builder takes, what references may lead
// to, how the members of a model file are named and read, and what the format's description must tell.
#pragma once

#include "plant/memory/name_rows.h"
#include "plant/model/members.h"
#include "platform/objects.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace plant {

// What a builder and a reader of model files hold true of numbers.
inline constexpr std::int64_t largestPointNumber = 32767;
inline constexpr std::int64_t largestSection = 2147483647;
inline constexpr std::int64_t largestColor = 255;
inline constexpr std::int64_t largestWeldColor = 255;

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
// The row of a class; NameRows::none when there is none of the name.
const NameRows& classNames();

struct FamilyTable {
    std::vector<MemberRow> members;
    NameRows names;                // rows as `members`; "id" and "class" are the first
    std::uint64_t properties = 0;  // a bit for each Member among them
    bool isSmart = false;          // has points, key points, a kind and a shape
};
const FamilyTable& familyTable(Family family);
// The members that may stand before the class is known.
const NameRows& identityNames();
// The row that a property was read by.
const MemberRow& memberRow(Member member);

// Words of the member "kind", in the order of PartKind from None on.
const NameRows& kindNames();

}  // namespace plant
