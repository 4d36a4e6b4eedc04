// All names handed out in a run, with their kind and whether their element is written. This is the only memory between
// objects, branches and writers: a writer asks for a name, marks it, and writes the element when it was the first to do
// so. Texts are 8-bit in the code page and told apart byte for byte.
#pragma once

#include "hextinterface/manager/register/numbered_texts.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

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

class NameRegister {
public:
    // ------------------------------------------------------------------------------------------- for the writers
    // RunException for a name that is not known or has been created already.
    void markNameCreated(std::string_view name);
    // Marks a name that is not created yet; false for one that is. RunException for an unknown name.
    bool markIfNotCreated(std::string_view name);
    // False for an unknown name.
    bool isNameCreated(std::string_view name) const;
    bool isNameKnown(std::string_view name) const { return find(name) != nullptr; }
    // ExportException for a known name.
    void addUdaName(std::string_view name);
    // Null for an unknown name.
    const NameEntry* find(std::string_view name) const;

    // --------------------------------------------------------------------------------- for the makers of names
    // References stay valid as long as the register.

    // The clash rule: an absent name is inserted, one of the same kind is found, any other throws ExportException
    // "%1% 存在命名冲突！".
    const std::string& put(std::string_view name, NameKind kind);
    // Inserts an absent name; a name that is there stays as it is, whatever its kind.
    const std::string& putUnchecked(std::string_view name, NameKind kind) { return names_[add(name, kind)]; }

    enum class OtherKind { Absent, Clash };
    // The name when it is there with this kind, else the empty text; a name of another kind counts as absent or throws.
    const std::string& query(std::string_view name, NameKind kind, OtherKind other) const;
    // The stored text of a name; null for an unknown one.
    const std::string* text(std::string_view name) const;

private:
    std::uint32_t add(std::string_view name, NameKind kind);

    naming::TextTable names_;
    std::vector<NameEntry> entries_;  // by number of the name
};

namespace naming {
// What stands in for a name that there is not.
extern const std::string noName;
}  // namespace naming
