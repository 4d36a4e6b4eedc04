// The platform's knowledge of pipe work: class tests, attributes, branches, sizes, insulation.
//
// A null argument gives false, null, 0 or an empty result. Lists given as `out` are emptied first. Results that are
// pointers to text are null when there is nothing and live with the model.
#pragma once

#include "platform/bom_record.h"
#include "platform/objects.h"
#include "platform/primitives.h"

#include <map>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace smrtln {

// What kind of part an object is, by the platform's library.
bool isPipe(const HxDbObject* object);
bool isBend(const HxDbObject* object);
bool isGask(const HxDbObject* object);
bool isGaskVirtual(const HxDbObject* object);
bool isFlan(const HxDbObject* object);
bool isHose(const HxDbObject* object);
bool isBoss(const HxDbObject* object);
bool isOlet(const HxDbObject* object);
bool isNozzle(const HxDbObject* object);
// True for a valve; `flag` gets the same answer.
bool isValve(const HxDbObject* object, bool& flag);
inline bool isValve(const HxDbObject* object) {
    bool flag = false;
    return isValve(object, flag);
}

// The attributes of an object, in the platform's order, as records that live with the model. Attributes that change
// later get new records, so a list once taken stays what it was. False for a null or unknown object.
bool getObjectBomData(const HxDbObject* object, std::vector<KVParams>& out);
bool getObjectBomData(HxDbObjectId id, std::vector<KVParams>& out);

// The same list without a copy; the span lives with the model.
std::span<const BomRecord> getObjectBomRecords(const HxDbObject* object);
KVParams toKVParams(const BomRecord& record);

// The first tube model of a pipeline; null for an empty one.
HxDbTubeModel* getPipelineStart(HxDbObjectId pipeline);
// The branches of a pipeline: ids in connection order, the two ends first and last. Trailing arguments are not used.
void getBranchOfPipeline_piping(HxDbObjectId pipeline, std::vector<std::vector<HxDbObjectId>>& out, void* = nullptr,
                                void* = nullptr, int = 0);
using PipeRuns = std::vector<std::pair<std::string, std::vector<HxDbObjectId>>>;
using PipeRunParams = std::map<std::string, std::vector<KVParams>>;
// The named runs of a pipeline and the attributes of each run; false when the pipeline has no runs.
bool getPiperunOfPipeline(HxDbObjectId pipeline, PipeRuns& runs, PipeRunParams& params, int module);

// Size and end type at a connection (numbers from 1).
const char* getSize(const HxDbTubeModel* model, int number);
const char* getEndType(const HxDbTubeModel* model, int number);
// Outer and inner diameter and pipe section from a specification; false when it does not tell. `standard` and `module`
// are passed by every caller and do not matter here.
bool getOutDia(const char* standard, const HxDbTubeSpecification* specification, double& outer, double& inner,
               int& section, int number, int module);
// Thickness in millimetres (0 when there is none) and material of a component's insulation.
void getInsulation(const HxDbSmrtlnEntity* object, double& thickness, std::string& material);
// The bolt set on a flange; null when there is none.
HxDbBoltNutModel* getAttachBoltNut(const HxDbTubeModelSpec* object);
// Colour that the configuration gives to a weld; false when it gives none.
bool getCurrentWeldConfigColor(const HxDbTubeWeld* weld, short& color);

// Shapes. 0 on success, with primitives that belong to the caller appended to an emptied list.
Hext::ErrorStatus getSmrtlnGraphy(const HxDbSmrtlnEntity* entity, const char* kind, HextPrimaryArray& list,
                                  void* = nullptr);
Hext::ErrorStatus getEquipReality(const HxDbEquipment* equipment, HextPrimaryArray& list, bool = false);
Hext::ErrorStatus getStructReality(const HxDbStruct* structure, HextPrimaryArray& list);
Hext::ErrorStatus getSupportReality(const HxDbSupportModel* support, HextPrimaryArray& list, void* = nullptr,
                                    bool = false);
Hext::ErrorStatus getXGReality(const HxDbXGModel* model, HextPrimaryArray& list, void* = nullptr);
Hext::ErrorStatus getAxissReality(const HxDbAxissLine* line, HextPrimaryArray& list);
Hext::ErrorStatus getBalloonReality(const HxDbBalloon* balloon, HextPrimaryArray& list);
// The list of an object that holds serialised host content.
Hext::ErrorStatus getSerialPrimaries(const HxDbAcadSerialObject* object, HextPrimaryArray& list);

}  // namespace smrtln

namespace modeling {
// The insulation code of a component; empty when it has none.
void get_tube_insulcode(const HxDbTubeModel* model, std::string& code);
}  // namespace modeling

// What an object draws. `flags` is a bit set: 1 the plain shape, 2 with bolts, 4 with welds.
namespace CadGiDraw {
Hext::ErrorStatus getPrimarys(const HxDbObject* object, HextPrimaryArray& list, void*, int flags);
// The same for reading alone: nothing is copied, the primitives belong to the platform and live with the model. Empty
// when there is no shape.
Hext::ErrorStatus viewPrimarys(const HxDbObject* object, HextPrimaryView& view, int flags);
// Says that the shape will be wanted soon, so that memory brings it near meanwhile. Walks over many objects say so this
// many objects before the turn of each.
void expectPrimarys(const HxDbObject* object);
inline constexpr std::size_t shapesAhead = 8;
}  // namespace CadGiDraw
