#include "frame/exceptions.h"
#include "hextinterface/hextbasemethod/object_tests.h"
#include "hextinterface/hextbasemethod/used_colours.h"
#include "hextinterface/manager/name_manager.h"
#include "hextinterface/ornatohextprocess/design/gather.h"
#include "hextinterface/ornatohextprocess/design/gather_shapes.h"
#include "platform/attribute_cache.h"
#include "platform/left_out.h"
#include "platform/primaries.h"
#include "tolmar/text.h"

#include <iterator>

namespace design {
namespace {

using tolmar::textOrEmpty;

constexpr int plainShape = 1;
constexpr const char* windowName = "window";

void addShape(EquipRecord& record, const HxDbObject* object) {
    PrimaryList shape;
    if (CadGiDraw::getPrimarys(object, shape.list(), nullptr, plainShape) != Hext::eOk) {
        return reportLeftOut(object, "structure", "has no shape");
    }
    addPrimitives(record, shape.list(), object);
}

// Makes the solids relative; false, and told to the run report, when there are none.
bool isWhole(EquipRecord& record, const HxDbObject* source, const char* what) {
    finishRecord(record);
    if (record.groups.empty()) {
        reportLeftOut(source, what, "has no solid");
    }
    return !record.groups.empty();
}

// The Hvac and Cable objects of a pipeline make one element.
std::vector<EquipRecord> pipelineRecords(const HxDbObject* pipeline, const ObjectList& objects) {
    EquipRecord record;
    record.objectId = pipeline->objectId();
    record.name = std::string("CH_") + textOrEmpty(pipeline->getDisplayName());
    for (const HxDbObject* object : objects) {
        if (const HxDbTubeModelSpec* model = HxDbTubeModelSpec::cast(object)) {
            record.func = colourFunction("CLRSTRU", model->getColorIdx());
            addShape(record, model);
        } else {
            reportLeftOut(object, "structure", std::string("is of class ") + object->isA()->name());
        }
    }
    std::vector<EquipRecord> records;
    if (isWhole(record, pipeline, "structure")) {
        records.push_back(std::move(record));
    }
    return records;
}

void setNameAndColour(EquipRecord& record, const HxDbSmrtlnEntity* object) {
    const bool isStruct = object->isKindOf(HxDbStruct::desc());
    record.name = isStruct ? std::string(textOrEmpty(object->getObjectName()))
                           : "HC_" + std::string(getBomValue(object, "mtype"));
    const int index = object->getColorIdx();
    const bool isWindow = record.name == windowName;
    record.func = colourFunction(isWindow ? "CLRASTRU" : "CLRSTRU", index);
    if (isWindow) {
        useColour(ColourClass::Window, index);
    }
}

// Every object of a structure makes an element of its own.
std::vector<EquipRecord> structureRecords(const ObjectList& objects) {
    std::vector<EquipRecord> records;
    for (const HxDbObject* object : objects) {
        if (!object->isKindOf(HxDbStruct::desc()) && !object->isKindOf(HxDbTubeModelSpec::desc())) {
            if (object->isKindOf(HxDbSmrtlnEntity::desc())) {
                reportLeftOut(object, "structure", std::string("is of class ") + object->isA()->name());
            }
            continue;
        }
        EquipRecord record;
        record.objectId = object->objectId();
        setNameAndColour(record, HxDbSmrtlnEntity::cast(object));
        addShape(record, object);
        if (isWhole(record, object, "structure")) {
            records.push_back(std::move(record));
        }
    }
    return records;
}

void gatherContainer(const HxDbObject* container, const ObjectList& objects, DesignMacroSet& set) {
    NameManager& names = set.context.names;
    std::vector<EquipRecord> records =
        container->isKindOf(HextPipeline::desc()) ? pipelineRecords(container, objects) : structureRecords(objects);
    const std::string owner = names.owners.getZoneNameOf(container, names.owners.getDbZoneName(ExportDb::EquipStru));
    for (EquipRecord& record : records) {
        record.owner = owner;
    }
    std::move(records.begin(), records.end(), std::back_inserter(set.structs));
}

// A primitive that fails costs the member.
void gatherMember(HxDbObject* object, const std::string& owner, DesignMacroSet& set) {
    const HxDbSmrtlnEntity* member = HxDbSmrtlnEntity::cast(object);
    if (member == nullptr) {
        return reportLeftOut(object, "member", std::string("is of class ") + object->isA()->name());
    }
    EquipRecord record;
    record.objectId = member->objectId();
    record.name = set.context.names.owners.getSupportName(member);
    record.owner = owner;
    record.func = colourFunction("CLREQUI", member->getColorIdx());
    PrimaryList shape;
    if (smrtln::getSmrtlnGraphy(member, "reality", shape.list()) != Hext::eOk) {
        return reportLeftOut(member, "support", "has no shape");
    }
    try {
        addPrimitives(record, shape.list(), member);
    } catch (const ExportException& failure) {
        hxcad::hextPrintf("\n ID:%lld <%s>", idNumber(member), failure.what());
        return reportLeftOut(member, "support", failure.what());
    }
    if (isWhole(record, member, "support")) {
        set.supports.push_back(std::move(record));
    }
}

}  // namespace

void gatherStructures(const ObjectMap& containers, DesignMacroSet& set) {
    for (const auto& [container, objects] : containers) {
        try {
            gatherContainer(container, objects, set);
        } catch (const ExportException& failure) {
            hxcad::hextPrintf("\n%s", failure.what());
            reportLeftOut(container, "structure", failure.what());
        }
        finishManager(set);
    }
}

void gatherSupports(const ObjectList& supports, DesignMacroSet& set) {
    NameManager& names = set.context.names;
    for (const HxDbObject* support : supports) {
        const std::string owner = names.owners.getZoneNameOf(support, names.owners.getDbZoneName(ExportDb::EquipSupp));
        for (const HxDbObjectId id : support->getMemberIds()) {
            if (HxDbObject* member = openMember(id)) {
                gatherMember(member, owner, set);
            }
        }
        finishManager(set);
    }
}

}  // namespace design
