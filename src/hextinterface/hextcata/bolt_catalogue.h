// Bolts in the catalogue: bolt table, bolt list, bolt sets with their points, categories with their texts, bolt items.
#pragma once

#include "hextinterface/hextcata/stream.h"
#include "hextinterface/manager/name_manager.h"
#include "platform/objects.h"
#include "scripts/project_config.h"

#include <cstdint>
#include <string>
#include <vector>

// One part of a bolt set. The field names are the variables of the text templates, too.
struct BoltData {
    std::string name;
    std::string item;
    std::string size;
    std::string code;
    std::string mater;
    double weight = 0;
    double price = 0;
    std::int32_t sortNo = 0;
    std::int32_t setsOf = 0;
    std::string notes;
    std::string unit;
    std::string type;
};

// False, with nothing filled, for a null bolt set or one without bolt, nut or flange record.
bool readBoltData(const HxDbBoltNutModel* boltSet, BoltData& bolt, BoltData& nut);
// The flange record, but for `spec` and `unit`, which differ between catalogue and specification.
FlangeData readFlangeData(const HxDbFlan2BoltNut* record);
// The specification that the bolts of a flange record stand in; empty without one.
std::string boltSpecOf(const HxDbFlan2BoltNut* record);
// The bolt diameter of every part.
int boltDiameter(const BoltData& part);
// A template with its variables in angle brackets replaced; an unknown one gives nothing.
std::string expandTemplate(std::string_view text, const BoltData& part);

class BoltCatalogue {
public:
    // `withRows`: the run writes bolt specifications, whose rows name texts and items by the bolts' specification; they
    // are written beside those by the bolts' size.
    BoltCatalogue(NameManager& names, const ConfigTexts& templates, bool withRows)
        : names_(names), templates_(templates), withRows_(withRows) {}
    // All bolt lines for the object that carries the bolt set.
    void write(const HxDbBoltNutModel* boltSet, const HxDbSmrtlnEntity* object, CataStream& out);

private:
    void writeRoots(CataStream& out);
    void writeSet(const HxDbBoltNutModel* boltSet, const HxDbSmrtlnEntity* object, CataStream& out);
    void writePoints(CataStream& out, const std::string& set, const FlangeData& flange, const BoltData& bolt);
    void writeCategoryOf(CataStream& out, const FlangeData& flange, const BoltData& bolt, const BoltData& nut);
    void writeTexts(CataStream& out, const char* kind, const BoltData& part, const std::string& category,
                    const std::string& dtset);
    void writeItem(CataStream& out, const FlangeData& flange, const BoltData& bolt, const BoltData& nut);

    NameManager& names_;
    const ConfigTexts& templates_;
    bool withRows_;
    std::vector<std::string> references_;
};
