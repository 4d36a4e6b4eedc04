// What the name manager knows of a name.
#pragma once

#include <cstdint>

// What sort of element a name stands for. One text has one kind; the same text under another kind is a clash.
enum class NameKind : std::uint8_t {
    Cata,
    Section,
    Component,  // component names, point set bases, bolt keys
    ConnTable,
    Coco,
    Spec,
    Short,
    Branch,
    Member,
    SiteName,
    ZoneName,
    Dtset,
    Scom,
    Spco,
    Gmset,
    Ptset,
    InsulSpec,
    InsulSpco,
    InsulScom,
    WeldSpec,
    Mdb,
    Mtset,
    BoltObject,
    Bltab,
    Blist,
    BoltItem,
    UdaGroup,
    Uda,
};

struct NameEntry {
    NameKind kind;
    bool created = false;  // the element has been written
};
