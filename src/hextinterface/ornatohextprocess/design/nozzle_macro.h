// Nozzles: elements of their own under an equipment, written behind all equipment.
#pragma once

#include "hextinterface/manager/context.h"
#include "hextinterface/ornatohextprocess/solids/equip_prims.h"
#include "platform/objects.h"

#include <map>

// Travels through records and groups like a solid, and writes a call of its own form.
class _PNozzle final : public _PPrimBase {
public:
    std::string catref;  // specification component
    std::string height;  // as the model gives it
    double temp = -10000;
    double press = 0;
    std::string ispe;
    std::string uNo;    // the nozzle's number
    std::string uName;  // its specification's name
    HxDbObjectId equipmentId;

    // `names` must outlive the nozzle.
    _PNozzle(HxDbObjectId equipment, NameManager& names) : equipmentId(equipment), names_(&names) {}

    void clear() override;
    // ExportException "管嘴设备关系错误" when the equipment has no final name, "命名错误" when the nozzle's is too
    // long.
    void write(std::string& out) const override;

private:
    std::string finalName(const std::string& equipName) const;

    NameManager* names_;
};

// How often each full name of a nozzle has been given. Module-wide; emptied when equip.txt is begun.
std::map<std::string, int>& nozzleNames();

// One group with the nozzle, placed relative to `referencePoint`. Empty for an object that is no nozzle and for one
// that is neither straight nor bent. ExportException "无效方向" when its key points give no directions.
PrimGroup makeNozzle(const HxDbNozzleModel* nozzle, HxDbObjectId equipmentId, const HxGePoint3D& referencePoint,
                     const ExportContext& context);
