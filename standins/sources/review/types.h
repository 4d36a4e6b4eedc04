// What the types of elements in review models mean for the plant: their place in the tree, their class, and for parts
// of pipes what kind of part they are.
#pragma once

#include "plant/model_builder.h"

#include <array>
#include <string_view>

namespace plant::review {

enum class Role : std::uint8_t { Unknown, World, Site, Zone, Directory, Manager, Branch, Object };

struct TypeRow {
    std::string_view type;  // the text of TYPE in capitals, or a run-time class that RVMOUT's script wrote
    std::string_view word;  // as in "FLANGE 2 of BRANCH /X/B1"; empty for the type itself
    Role role;
    std::string_view className;  // empty: that of its manager's objects
    std::string_view bodyClass;  // of the objects of a manager
    std::string_view module;     // of the objects of a manager that is a pipeline
    std::string_view above;      // type of what holds it; empty when that may be several
    bool isShape = false;        // a primitive of what holds it
};

// Null for a type that is not known.
const TypeRow* typeRow(std::string_view type);
const TypeRow* typeRowOfWord(std::string_view word);
// What managers of no known type are.
const TypeRow& plainManager();

// How the ends of a part are numbered: which of ours the first, second, third and fourth point is.
enum class Ports : std::uint8_t { Straight, Bent };

struct PartRow {
    std::string_view type;
    std::string_view item;
    std::string_view itype;
    std::string_view smrtln;
    PartKind kind = PartKind::Default;
    std::array<std::string_view, 3> ends;
    std::string_view group = "fitting";  // attribute mtype
    std::string_view className = "HxDbTubeModelSpec";
    Ports ports = Ports::Straight;
};

// Null where the type is no part of a pipe.
const PartRow* partRow(std::string_view type);
// A tube between two parts.
const PartRow& tubeRow();
// The kind of an object that has this item; Default where its class or item tell it.
PartKind kindOfItem(std::string_view item, std::string_view itype);
// "GATE" for "GATE VALVE, CLASS 150": what kind of valve a text tells of; empty for none.
std::string_view valveTypeOf(std::string_view text);

// "FLANGE 2 of BRANCH /X/B1": `word` FLANGE, `ownerWord` BRANCH, `owner` "/X/B1". All empty for a given name.
struct UngivenName {
    std::string_view word;
    std::string_view number;
    std::string_view ownerWord;
    std::string_view owner;
};
UngivenName readUngivenName(std::string_view name);

}  // namespace plant::review
