// Names of components and of their catalogue elements, and of the specification rows that point at them. Balloons and
// welds have component names of their own; the names of all others spell the key of their attributes.
#pragma once

#include "hextinterface/manager/names/component_key.h"
#include "hextinterface/manager/register/letter_codes.h"
#include "hextinterface/manager/register/names.h"
#include "platform/id_pages.h"
#include "platform/objects.h"

#include <string>

class TypeNames;

class ComponentNames {
public:
    // All must outlive the names.
    ComponentNames(NameRegister& names, naming::CodeTables& codes, TypeNames& types)
        : names_(names), codes_(codes), types_(types) {}

    const std::string& getCataName(const HxDbObject* object);
    const std::string& getSectionName(const HxDbObject* object);
    // ExportException for a HxDbBalloon that is connected to nothing.
    const std::string& getComponentName(const HxDbObject* object);
    // Short type code, not registered.
    const std::string& getStype(const HxDbObject* object);
    const std::string& getSpecName(const HxDbObject* object);
    const std::string& getSpcoShortName(const HxDbObject* object);
    // Specification, "/", short name.
    const std::string& getSpcoName(const HxDbObject* object);
    const std::string& getScomName(const HxDbObject* object);
    const std::string& getGmsetName(const HxDbObject* object);
    const std::string& getPtsetName(const HxDbObject* object);
    const std::string& getDtsetName(const HxDbObject* object);
    const std::string& getMtsetName(const HxDbObject* object);
    // Queries: empty when the name is not known (the names it is made of are registered all the same). findSpcoName
    // throws on a clash; the others give the empty text.
    const std::string& findSpcoName(const HxDbObject* object);
    const std::string& findScomName(const HxDbObject* object);
    const std::string& findDtsetName(const HxDbObject* object);
    const std::string& findMtsetName(const HxDbObject* object);

private:
    class Derived;

    // What components of equal attributes share.
    naming::ComponentEntry& entryOf(const HxDbObject* object);

    struct Known {
        naming::ComponentEntry* entry = nullptr;
    };
    NameRegister& names_;
    naming::CodeTables& codes_;
    TypeNames& types_;
    naming::ComponentTable table_;
    IdPages<Known> known_;
    naming::TextCounters gtypeCounters_, shortCounters_;
    naming::TextTable stypes_;
};
