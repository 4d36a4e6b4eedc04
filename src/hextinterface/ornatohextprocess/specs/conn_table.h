// The connection compatibility table: which pairs of end types may be joined.
#pragma once

#include "hextinterface/hextbasemethod/object_lists.h"
#include "hextinterface/manager/name_manager.h"
#include "hextinterface/ornatohextprocess/specs/file.h"

class ConnTableWriter {
public:
    ConnTableWriter(const std::string& path, NameManager& names) : out_(path), names_(names) {}
    // Writes the table from the end types of these objects; only the first call with objects does.
    void writeBranchConnections(const ComponentList& objects);
    bool close() { return out_.close(); }

private:
    SpecFile out_;
    NameManager& names_;
};
