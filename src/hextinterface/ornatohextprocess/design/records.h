// Equipment, structures, supports and nozzles as the macro files need them.
#pragma once

#include "hextinterface/manager/context.h"
#include "hextinterface/ornatohextprocess/solids/equip_prims.h"
#include "platform/ids.h"

#include <functional>
#include <string>
#include <vector>

// One element. Its solids are world solids until finishRecord makes them relative.
struct EquipRecord {
    std::vector<PrimGroup> groups;  // in the order of the source
    HxDbObjectId objectId;
    std::string name;   // the file writers add to it
    std::string owner;  // name of the zone
    CoordFrame frame;
    std::string func = "unset";  // colour function
    std::string specNo, style, equipName, notes;
    std::vector<std::string> attrs;
};

// Result of gathering, input of the file writers. The context must outlive it.
struct DesignMacroSet {
    explicit DesignMacroSet(const ExportContext& of) : context(of) {}

    // Called, where it is set, whenever one manager's records have been gathered; it may write and drop them. What it
    // throws ends the gathering.
    std::function<void()> whenManagerGathered;

    ExportContext context;
    std::vector<EquipRecord> equips;
    std::vector<EquipRecord> structs;
    std::vector<EquipRecord> nozzles;  // one group with one nozzle each
    std::vector<EquipRecord> supports;
};

// Moves the element to the origin of its first solid and makes every solid relative to that point. Cutting solids
// stand relative to their solid and stay. Nothing happens to a record without solids.
void finishRecord(EquipRecord& record);
