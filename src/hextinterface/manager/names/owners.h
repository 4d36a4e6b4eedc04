// Names of what owns the elements - sites, zones, supports, equipment -, of the target databases, and of colours.
// Nothing here is registered.
#pragma once

#include "hextinterface/manager/register/unique_texts.h"
#include "platform/objects.h"

#include <string>

class TlCmColor;

// The categories of target databases that macro files address.
enum class ExportDb : int { Cata, Spec, Equip, EquipStru, Supp, EquipSupp, Pipe, EquipBase, Common };

class OwnerNames {
public:
    // The line number of a pipeline, made unique. Empty for null.
    const std::string& getPipeName(const HxDbObject* pipeline);
    // The display name without blanks behind "ORNA_SITE_" or "ORNA_ZONE_", made unique.
    const std::string& getSiteName(const HxDbObject* site);
    const std::string& getZoneName(const HxDbObject* zone);
    // The name of the zone that holds a manager; `fallback` when no zone does.
    std::string getZoneNameOf(const HxDbObject* manager, const std::string& fallback);
    std::string getDbZoneName(ExportDb category) const;
    std::string getDbTitle(ExportDb category) const;
    // Empty when the owner is not a HextSupport.
    std::string getSupportName(const HxDbObject* object) const;
    std::string getEqnoName(const HxDbObject* object) const;
    std::string getNozzleName(const HxDbObject* nozzle) const;
    // The colour's index. ExportException for a colour that is no plain index.
    std::string getColourName(const TlCmColor& colour) const;

private:
    int sharedNumber_ = 0;  // one counter makes pipes, sites and zones unique
    naming::UniqueTexts pipes_, sites_, zones_;
};
