// All names handed out in a run, with their kind and whether their element is written.
#pragma once

#include "hextinterface/manager/name_entry.h"
#include "hextinterface/manager/text_table.h"

namespace naming {

class NameTable {
public:
    // The clash rule: an absent name is inserted, one of the same kind is found, any other throws ExportException
    // "%1% 存在命名冲突！".
    const std::string& put(std::string_view name, NameKind kind);
    // Inserts an absent name; a name that is there stays as it is, whatever its kind.
    const std::string& putUnchecked(std::string_view name, NameKind kind) { return names_[add(name, kind)]; }

    enum class OtherKind { Absent, Clash };
    // The name when it is there with this kind, else the empty text; a name of another kind counts as absent or throws.
    const std::string& query(std::string_view name, NameKind kind, OtherKind other) const;

    // The stored text of a name; null for an unknown one.
    const std::string* name(std::string_view name) const;
    const NameEntry* find(std::string_view name) const;
    NameEntry* find(std::string_view name);

private:
    std::uint32_t add(std::string_view name, NameKind kind);

    TextTable names_;
    std::vector<NameEntry> entries_;  // by number of the name
};

extern const std::string noName;

}  // namespace naming
