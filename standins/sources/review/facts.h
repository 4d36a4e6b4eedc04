// What the attributes of one element say that the reader itself needs, as texts without quotes.
#pragma once

#include "sources/attributes/index.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace plant::review {

enum class Key : std::uint8_t {
    Position,
    Orientation,
    ArrivePosition,
    LeavePosition,
    ArriveBore,
    LeaveBore,
    Arrive,
    Leave,
    HeadPosition,
    TailPosition,
    HeadDirection,
    TailDirection,
    HeadBore,
    TailBore,
    HeadConnection,
    TailConnection,
    HeadReference,
    TailReference,
    BranchReference,
    SpecificationPart,
    LeaveTube,
    HeadTube,
    PipeSpecification,
    InsulationSpecification,
    Insulation,
    Bore,
    Temperature,
    Pressure,
    Description,
    DetailText,
    MaterialText,
    Angle,
    Radius,
    Height,
    Item,
    ItemType,
};
inline constexpr std::size_t keyCount = static_cast<std::size_t>(Key::ItemType) + 1;

class Facts {
public:
    std::string_view operator[](Key key) const { return texts_[static_cast<std::size_t>(key)]; }
    bool has(Key key) const { return !(*this)[key].empty(); }
    void set(Key key, std::string_view text) { texts_[static_cast<std::size_t>(key)] = text; }

private:
    std::array<std::string_view, keyCount> texts_;
};

// Of a key that repeats, the first.
Facts readFacts(const attributes::Index& index, const attributes::Block& block);

// True for a text that says that there is nothing: empty, "unset", "Nulref", "=0/0", "=0".
bool saysNothing(std::string_view text);
// "/A3B" of "/A3B/ELBOW:50"; without the stroke in front.
std::string_view specificationName(std::string_view text);
// A name without the stroke in front.
std::string_view withoutStroke(std::string_view name);

}  // namespace plant::review
