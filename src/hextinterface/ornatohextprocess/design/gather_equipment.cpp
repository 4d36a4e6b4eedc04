#include "frame/exceptions.h"
#include "hextinterface/hextbasemethod/object_tests.h"
#include "hextinterface/hextcata/nozzle_list.h"
#include "hextinterface/manager/name_manager.h"
#include "hextinterface/manager/register/cleaned_texts.h"
#include "hextinterface/ornatohextprocess/design/gather.h"
#include "hextinterface/ornatohextprocess/design/gather_shapes.h"
#include "hextinterface/ornatohextprocess/design/nozzle_macro.h"
#include "platform/attribute_cache.h"
#include "platform/id_pages.h"
#include "platform/left_out.h"
#include "platform/primaries.h"

namespace design {
namespace {

struct Members {
    std::vector<HxDbEquipment*> bodies;
    std::vector<HxDbNozzleModel*> nozzles;
};

Members openMembers(const HxDbObject* equipment) {
    Members members;
    for (const HxDbObjectId id : equipment->getMemberIds()) {
        HxDbObject* object = openMember(id);
        if (HxDbNozzleModel* nozzle = HxDbNozzleModel::cast(object)) {
            members.nozzles.push_back(nozzle);
        } else if (HxDbEquipment* body = HxDbEquipment::cast(object)) {
            members.bodies.push_back(body);
        } else if (object != nullptr) {
            reportLeftOut(object, "member", std::string("is no equipment but ") + object->isA()->name());
        }
    }
    return members;
}

std::string attribute(const HxDbObject* object, const char* key) {
    return std::string(getBomValue(object, key));
}

void readUserAttributes(EquipRecord& record, const HxDbObject* equipment) {
    record.specNo = attribute(equipment, "eqno");
    cleanName(record.specNo);
    record.style = attribute(equipment, "leafnode");
    record.equipName = attribute(equipment, "eqname");
    record.attrs = {"设计温度1:" + attribute(equipment, "dtemp") + ";操作温度1:" + attribute(equipment, "otemp") + ";",
                    "设计压力1:" + attribute(equipment, "dpress") + ";操作压力1:" + attribute(equipment, "opress") +
                        ";"};
}

// A primitive that fails costs nothing but itself.
void addBody(EquipRecord& record, const HxDbEquipment* body) {
    PrimaryList shape;
    if (smrtln::getSmrtlnGraphy(body, "reality", shape.list()) != Hext::eOk) {
        return reportLeftOut(body, "equipment", "has no shape");
    }
    for (const HextPrimary* primitive : shape) {
        try {
            addPrimitive(record, *primitive, body);
        } catch (const ExportException& failure) {
            hxcad::hextPrintf("\n ID:%lld <%s>", idNumber(body), failure.what());
            reportLeftOut(body, "primitive", std::string(primitive->isA()->name()) + ": " + failure.what());
        }
    }
}

class EquipmentGatherer {
public:
    explicit EquipmentGatherer(DesignMacroSet& set) : set_(set) {
        for (const HxDbNozzleModel* nozzle : nozzlesWithSpec()) {
            known_.insert(nozzle->objectId());
        }
    }

    void gather(const HxDbObject* equipment) {
        const Members members = openMembers(equipment);
        if (members.bodies.empty()) {
            return reportLeftOut(equipment, "equipment", "has no member that is an equipment");
        }
        EquipRecord record = makeRecord(equipment, members);
        if (record.groups.empty()) {
            return reportLeftOut(equipment, "equipment", "has no solid, so that it and its nozzles are left out");
        }
        std::vector<EquipRecord> nozzles = makeNozzles(members, record);
        record.owner = set_.context.names.owners.getZoneNameOf(
            equipment, set_.context.names.owners.getDbZoneName(ExportDb::Equip));
        set_.equips.push_back(std::move(record));
        std::move(nozzles.begin(), nozzles.end(), std::back_inserter(set_.nozzles));
    }

private:
    EquipRecord makeRecord(const HxDbObject* equipment, const Members& members) const {
        EquipRecord record;
        record.objectId = equipment->objectId();
        record.name = set_.context.names.owners.getEqnoName(equipment);
        record.func = colourFunction("CLREQUI", members.bodies.front()->getColorIdx());
        readUserAttributes(record, equipment);
        for (const HxDbEquipment* body : members.bodies) {
            addBody(record, body);
        }
        finishRecord(record);
        return record;
    }

    // `equipment` stands at its reference point.
    std::vector<EquipRecord> makeNozzles(const Members& members, const EquipRecord& equipment) const {
        std::vector<EquipRecord> records;
        for (const HxDbNozzleModel* nozzle : members.nozzles) {
            if (!known_.contains(nozzle->objectId())) {
                reportLeftOut(nozzle, "nozzle", "has no catalogue entry");
                continue;
            }
            EquipRecord record;
            record.objectId = nozzle->objectId();
            PrimGroup group = makeNozzle(nozzle, equipment.objectId, equipment.frame.origin, set_.context);
            if (group.empty()) {
                reportLeftOut(nozzle, "nozzle", "is neither straight nor bent");
                continue;
            }
            record.groups.push_back(std::move(group));
            records.push_back(std::move(record));
        }
        return records;
    }

    DesignMacroSet& set_;
    IdMarks known_;
};

}  // namespace

void gatherEquipment(const ObjectList& equipment, DesignMacroSet& set) {
    EquipmentGatherer gatherer(set);
    for (const HxDbObject* object : equipment) {
        try {
            gatherer.gather(object);
        } catch (const ExportException& failure) {
            hxcad::hextPrintf("\n%s", failure.what());
            reportLeftOut(object, "equipment", failure.what());
        }
        finishManager(set);
    }
}

}  // namespace design
