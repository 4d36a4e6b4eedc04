#include "xdb/export.h"

#include "exportbase/left_out_shapes.h"
#include "frame/progress_slot.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/model_tests.h"
#include "platform/primaries.h"
#include "platform/smrtln.h"
#include "platform/tree_walker.h"
#include "tolmar/run_report.h"
#include "xdb/records.h"
#include "xdb/shape.h"

#include <algorithm>
#include <optional>
#include <span>

namespace xdb {

namespace {

using tolmar::RunOutcome;
using tolmar::runReport;

constexpr int progressRange = 100;

using Names = std::span<const std::string_view>;

constexpr std::string_view noShapeNames[] = {"weld_shop", "weld_field", "GASK"};
constexpr std::string_view pipeNames[] = {"TPPE", "BEND_BW"};
constexpr std::string_view wallNames[] = {"wall_lean", "wall_rect"};
constexpr std::string_view beamNames[] = {"arbeam_rect", "arbeam_gjhz3", "stbeam_gzx",    "stbeam_hxg",
                                          "stbeamxg",    "stbeam_cg",    "stbeam_nanggy", "stbeam_nanggx",
                                          "stbeam_angg", "stbeam_rectp", "stbeam_circp"};
constexpr std::string_view columnNames[] = {"arcolumn_rect", "arcolumn_gjhz3", "stcolumn_gzx",    "stcolumn_hxg",
                                            "stcolumnxg",    "stcolumn_cg",    "stcolumn_nanggy", "stcolumn_nanggx",
                                            "stcolumn_angg", "stcolumn_rectp", "stcolumn_circp"};
constexpr std::string_view plateNames[] = {"plat_rect", "plat_rect2", "plat_arc", "plat_arc1", "PLATE11"};

constexpr std::string_view wallKeys[] = {"P3", "P2", "kpt_1", "kpt_2"};
constexpr std::string_view beamKeys[] = {"inspt", "P2", "P4", "kpt_1", "kpt_2"};
constexpr std::string_view columnKeys[] = {"P2", "P4", "kpt_1", "kpt_2"};
constexpr std::string_view plateKeys[] = {"P3"};

// Structural objects by name, in the order in which the lists are searched, and the attributes of their records.
struct FieldList {
    Names names;
    Names keys;
};
constexpr FieldList fieldLists[] = {
    {wallNames, wallKeys}, {beamNames, beamKeys}, {columnNames, columnKeys}, {plateNames, plateKeys}};

bool holds(Names names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// Objects that have no place in what the caller builds.
bool hasNoPlace(const HxDbSmrtlnEntity& object) {
    const char* name = object.getObjectName();
    return name != nullptr && (holds(noShapeNames, name) || equalNoCase(name, "balloon\\A-1") ||
                               smrtln::isFlan(&object) || object.isKindOf(HxDbAxissLine::desc()));
}

// Nothing hands them out, and no scope dialog has told of them.
void reportUnopened(HxDbTreeNode& manager) {
    for (TreeWalker walker(&manager); !walker.done(); walker.next()) {
        const HxDbTreeNode& node = *walker.current();
        if (objectOfNode(&node) == nullptr) {
            reportLeftOutNode(node, "object", "it cannot be opened");
        }
    }
}

// Welds and stops are nothing but places in a pipe.
bool isMarkOnly(const HxDbSmrtlnEntity& object) {
    return object.isKindOf(HxDbTubeWeld::desc()) || object.isKindOf(HxDbTubeStop::desc());
}

enum class Step {
    Shape,    // the shape goes out
    NoShape,  // it does not
    Failed,   // the error of a record ends the export
};

class XdbWalk {
public:
    XdbWalk(const XdbArrays& arrays, int strict) : arrays_(arrays), records_(arrays.data, strict), shapes_(arrays) {}

    bool run(HxDbTreeNode& manager) {
        reportUnopened(manager);
        std::vector<HxDbObject*> objects;
        getAllSubObjects(&manager, objects);
        progressSlot()->openProgress(progressRange, "提取模型数据:", 0);
        for (std::size_t i = 0; i < objects.size(); ++i) {
            progressSlot()->setBar(static_cast<int>(i * 100 / objects.size()), 0);
            const HxDbSmrtlnEntity* object = HxDbSmrtlnEntity::cast(objects[i]);
            if (object == nullptr) {
                reportNoSmartObject(objects[i]);
            } else if (!writeObject(*object)) {
                runReport().ended(RunOutcome::Failed, "an object's data has an error: see the message");
                return false;
            }
        }
        return true;
    }

private:
    bool writeObject(const HxDbSmrtlnEntity& object) {
        if (getObjectPrimaries(&object, shape_.list()) != Hext::eOk) {
            if (!isMarkOnly(object) && !hasNoPlace(object)) {
                reportLeftOut(&object, "object", "it has no shape");
            }
            return true;
        }
        const Step step = writeKind(object);
        if (step == Step::Shape) {
            shapes_.write(object, shape_.list());
        }
        return step != Step::Failed;
    }

    // Kind and record of an object.
    Step writeKind(const HxDbSmrtlnEntity& object) {
        if (object.isKindOf(HxDbEquipment::desc())) {
            arrays_.types.emplace_back("proxy");
            arrays_.data.emplace_back();
            return Step::Shape;
        }
        if (object.getObjectName() == nullptr) {
            return Step::Shape;
        }
        return hasNoPlace(object) ? Step::NoShape : writeNamed(object, object.getObjectName());
    }

    Step writeNamed(const HxDbSmrtlnEntity& object, std::string_view name) {
        if (holds(pipeNames, name)) {
            arrays_.types.emplace_back(name);
            return records_.writePipeData(&object) ? Step::Shape : Step::Failed;
        }
        if (object.isKindOf(HxDbTubeModelSpec::desc())) {
            arrays_.types.emplace_back("fitting");
            return records_.writeFittingData(object) ? Step::Shape : Step::Failed;
        }
        arrays_.types.emplace_back(name);
        for (const FieldList& list : fieldLists) {
            if (holds(list.names, name)) {
                records_.writeFields(object, list.keys);
                break;
            }
        }
        return Step::Shape;
    }

    const XdbArrays& arrays_;
    RecordWriter records_;
    ShapeWriter shapes_;
    PrimaryList shape_;
};

HxDbTreeNode* currentManager() {
    const hxcad::ManagerTreeNodeFunc function = hxcad::getManagerTreeNodeGetFunc();
    return function != nullptr ? function() : nullptr;
}

}  // namespace

bool exportXdb(const XdbArrays& arrays, int strict) {
    HxDbTreeNode* manager = currentManager();
    if (manager == nullptr) {
        runReport().ended(RunOutcome::Refused, "no manager is the current one");
        return false;
    }
    // A caller inside another command has its progress object in the slot already.
    std::optional<ProgressScope> scope;
    if (progressSlot() == nullptr) {
        scope.emplace();
    }
    bool isWhole = false;
    try {
        isWhole = XdbWalk(arrays, strict).run(*manager);
    } catch (const ProgressCancelException&) {
        runReport().ended(RunOutcome::Cancelled);
    }
    progressSlot()->close();
    return isWhole;
}

}  // namespace xdb
