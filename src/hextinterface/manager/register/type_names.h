// Skey and GType of objects: which kind of component the target takes an object for. By class for a few, by the tables
// of the project configuration for the rest.
#pragma once

#include "hextinterface/manager/register/type_tables.h"
#include "platform/id_pages.h"
#include "platform/objects.h"

#include <string>

class TypeNames {
public:
    // Both read the project configuration; its exceptions pass.
    void loadSkeyTable();
    void loadTypeTable();
    // Prints the types without GType, then those without Skey, on the command line.
    void reportLostMappings() const;
    // Nothing here is registered. Empty when no row matches. ExportException when both "item" and "itype" are empty.
    std::string getSkey(const HxDbObject* object);
    const std::string& getGtype(const HxDbObject* object);

private:
    struct Known {
        const std::string* gtype = nullptr;  // null where it has not been asked for
    };
    naming::TypeMapping mapping_;
    naming::TextTable gtypes_;  // each text once, so that GTypes compare by their place
    IdPages<Known> known_;
};
