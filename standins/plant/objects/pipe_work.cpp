// The platform's knowledge of pipe work.
#include "platform/smrtln.h"

#include "plant/model/class_table.h"
#include "plant/model/data.h"
#include "platform/hxcom.h"
#include "tolmar/text.h"

#include <cstring>

using plant::currentModel;
using plant::Member;
using plant::ObjectData;
using plant::PartKind;
using plant::Property;

namespace {

bool isItem(const HxDbObject& object, const char* word) {
    const char* item = object.data().attributeText("item");
    return item != nullptr && std::strcmp(item, word) == 0;
}

// Where the model does not tell: by class, and what is neither pipe nor nozzle by its item.
bool isUsually(const HxDbObject& object, PartKind kind) {
    const bool pipe = object.isKindOf(HxDbPipeSpec::desc());
    const bool nozzle = !pipe && object.isKindOf(HxDbNozzleModel::desc());
    switch (kind) {
    case PartKind::Pipe:
        return pipe;
    case PartKind::Nozzle:
        return nozzle;
    case PartKind::Olet:
        return !pipe && !nozzle && isItem(object, "OLET");
    case PartKind::Boss:
        return !pipe && !nozzle && isItem(object, "BOSS");
    default:
        return false;
    }
}

bool isOfKind(const HxDbObject* object, PartKind kind) {
    if (object == nullptr || !object->isKindOf(HxDbSmrtlnEntity::desc())) {
        return false;
    }
    const PartKind given = object->data().kind;
    return given != PartKind::Default ? given == kind : isUsually(*object, kind);
}

const ObjectData* objectData(HxDbObjectId id) {
    HxDbObject* object = nullptr;
    return hxdbOpenObject(id, object, 3) == Hext::eOk ? &object->data() : nullptr;
}

std::vector<HxDbObjectId> idsOf(const plant::ReferenceList& list) {
    std::vector<HxDbObjectId> ids;
    ids.reserve(list.count);
    for (std::uint32_t i = 0; i < list.count; ++i) {
        ids.emplace_back(list.items[i].object->id);
    }
    return ids;
}

// The attribute of an end, or what its tube specification gives, or the attribute of an object with one end.
const char* endText(const HxDbTubeModel* model, int number, const char* key,
                    const char* (HxDbTubeSpecification::*ofSpecification)(int) const) {
    if (model == nullptr) {
        return nullptr;
    }
    if (const char* text = model->data().attributeText(key + std::to_string(number))) {
        return text;
    }
    const auto* withSpecification = HxDbTubeModelSpec::cast(model);
    const HxDbTubeSpecification* specification = withSpecification != nullptr ? withSpecification->getSpec() : nullptr;
    const char* text = specification != nullptr ? (specification->*ofSpecification)(number) : nullptr;
    return text != nullptr ? text : model->data().attributeText(key);
}

}  // namespace

namespace smrtln {

bool isPipe(const HxDbObject* object) {
    return isOfKind(object, PartKind::Pipe);
}
bool isBend(const HxDbObject* object) {
    return isOfKind(object, PartKind::Bend);
}
bool isGask(const HxDbObject* object) {
    return isOfKind(object, PartKind::Gasket);
}
bool isGaskVirtual(const HxDbObject* object) {
    return isOfKind(object, PartKind::VirtualGasket);
}
bool isFlan(const HxDbObject* object) {
    return isOfKind(object, PartKind::Flange);
}
bool isHose(const HxDbObject* object) {
    return isOfKind(object, PartKind::Hose);
}
bool isBoss(const HxDbObject* object) {
    return isOfKind(object, PartKind::Boss);
}
bool isOlet(const HxDbObject* object) {
    return isOfKind(object, PartKind::Olet);
}
bool isNozzle(const HxDbObject* object) {
    return isOfKind(object, PartKind::Nozzle);
}
bool isValve(const HxDbObject* object, bool& flag) {
    return flag = isOfKind(object, PartKind::Valve);
}

std::span<const std::string_view> bomKeys() {
    return currentModel() != nullptr ? currentModel()->attributes.keys.all() : std::span<const std::string_view>();
}

std::span<const BomRecord> getObjectBomRecords(const HxDbObject* object) {
    return object != nullptr ? std::span(object->data().records, object->data().recordCount)
                             : std::span<const BomRecord>();
}

bool getObjectBomData(const HxDbObject* object, std::vector<KVParams>& out) {
    out.clear();
    for (const BomRecord& record : getObjectBomRecords(object)) {
        out.push_back(toKVParams(record));
    }
    return object != nullptr;
}

bool getObjectBomData(HxDbObjectId id, std::vector<KVParams>& out) {
    HxDbObject* object = nullptr;
    hxdbOpenObject(id, object, 3);
    return getObjectBomData(object, out);
}

HxDbTubeModel* getPipelineStart(HxDbObjectId pipeline) {
    const ObjectData* data = objectData(pipeline);
    if (data == nullptr) {
        return nullptr;
    }
    if (data->find(Member::Start) != nullptr) {
        return HxDbTubeModel::cast(data->reference(Member::Start));
    }
    const Property* branches = data->find(Member::Branches);
    if (branches == nullptr || branches->count == 0 || branches->branches[0].count == 0) {
        return nullptr;
    }
    return HxDbTubeModel::cast(branches->branches[0].items[0].object->opened());
}

void getBranchOfPipeline_piping(HxDbObjectId pipeline, std::vector<std::vector<HxDbObjectId>>& out, void*, void*, int) {
    out.clear();
    const ObjectData* data = objectData(pipeline);
    const Property* branches = data != nullptr ? data->find(Member::Branches) : nullptr;
    for (std::uint32_t i = 0; branches != nullptr && i < branches->count; ++i) {
        out.push_back(idsOf(branches->branches[i]));
    }
}

bool getPiperunOfPipeline(HxDbObjectId pipeline, PipeRuns& runs, PipeRunParams& params, int) {
    runs.clear();
    params.clear();
    const ObjectData* data = objectData(pipeline);
    const Property* list = data != nullptr ? data->find(Member::Runs) : nullptr;
    for (std::uint32_t i = 0; list != nullptr && i < list->count; ++i) {
        const plant::PipeRun& run = list->runs[i];
        runs.emplace_back(run.name, idsOf(run.items));
        std::vector<KVParams>& ofRun = params[run.name];
        for (const BomRecord& record : run.attributes.span()) {
            ofRun.push_back(toKVParams(record));
        }
    }
    return !runs.empty();
}

const char* getSize(const HxDbTubeModel* model, int number) {
    return endText(model, number, "size", &HxDbTubeSpecification::getSize);
}

const char* getEndType(const HxDbTubeModel* model, int number) {
    return endText(model, number, "end", &HxDbTubeSpecification::getEndtype);
}

void getInsulation(const HxDbSmrtlnEntity* object, double& thickness, std::string& material) {
    const Property* given = object != nullptr ? object->data().find(Member::Insulation) : nullptr;
    const plant::Insulation insulation = given != nullptr ? *given->insulation : plant::Insulation();
    thickness = insulation.thickness;
    material = tolmar::textOrEmpty(insulation.material);
}

HxDbBoltNutModel* getAttachBoltNut(const HxDbTubeModelSpec* object) {
    return object != nullptr ? HxDbBoltNutModel::cast(object->data().reference(Member::Bolts)) : nullptr;
}

bool getCurrentWeldConfigColor(const HxDbTubeWeld* weld, short& color) {
    const int given = weld != nullptr ? weld->data().model->project.weldColor : 0;
    if (given != 0) {
        color = static_cast<short>(given);
    }
    return given != 0;
}

}  // namespace smrtln

void modeling::get_tube_insulcode(const HxDbTubeModel* model, std::string& code) {
    const Property* given = model != nullptr ? model->data().find(Member::Insulation) : nullptr;
    const char* text = given != nullptr ? given->insulation->code : nullptr;
    code = tolmar::textOrEmpty(text);
}
