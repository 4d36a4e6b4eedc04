// Members that only some objects have, and how what a builder is told of them becomes one.
#pragma once

#include "plant/model_builder.h"

#include <cstdint>

namespace plant {

// In the order of the builder's enumerations, one kind of value behind the other.
enum class Member : std::uint16_t {
    None,
    // TextMember
    DisplayName,
    Standard,
    ObjectName,
    No,
    Type,
    Stan,
    CName,
    PartSpec,
    Material,
    BoltSpec,
    Note,
    Size,
    Std,
    EndType,
    Rating,
    UnitText,
    // WholeMember
    InsNo,
    RefNo,
    UnitNumber,
    SortNo,
    BoltNum,
    NutNum,
    // NumberMember
    Weight,
    Price,
    // VectorMember
    RefVec,
    InsVec,
    InsPoint,
    // ReferenceMember
    Owner,
    Start,
    Spec,
    Bolts,
    SupItem,
    Bolt,
    Nut,
    Flange,
    // ListMember
    Members,
    Subs,
    // Records
    KeyPoints,
    Insulation,
    Ends,
    Branches,
    Runs,
};
inline constexpr std::size_t memberCount = static_cast<std::size_t>(Member::Runs) + 1;
static_assert(memberCount <= 64, "sets of members are kept in 64 bits");

// The member that stands for the first of each enumeration of the builder.
template <typename Told>
inline constexpr Member firstMember = Member::None;
template <>
inline constexpr Member firstMember<TextMember> = Member::DisplayName;
template <>
inline constexpr Member firstMember<WholeMember> = Member::InsNo;
template <>
inline constexpr Member firstMember<NumberMember> = Member::Weight;
template <>
inline constexpr Member firstMember<VectorMember> = Member::RefVec;
template <>
inline constexpr Member firstMember<ReferenceMember> = Member::Owner;
template <>
inline constexpr Member firstMember<ListMember> = Member::Members;

// From what a builder is told to the member, and back.
template <typename Told>
constexpr Member memberOf(Told told) {
    return static_cast<Member>(static_cast<int>(firstMember<Told>) + static_cast<int>(told));
}
template <typename Told>
constexpr Told toldAs(Member member) {
    return static_cast<Told>(static_cast<int>(member) - static_cast<int>(firstMember<Told>));
}

static_assert(memberOf(TextMember::UnitText) == Member::UnitText);
static_assert(memberOf(WholeMember::NutNum) == Member::NutNum);
static_assert(memberOf(NumberMember::Price) == Member::Price);
static_assert(memberOf(VectorMember::InsPoint) == Member::InsPoint);
static_assert(memberOf(ReferenceMember::Flange) == Member::Flange);
static_assert(memberOf(ListMember::Subs) == Member::Subs);

}  // namespace plant
