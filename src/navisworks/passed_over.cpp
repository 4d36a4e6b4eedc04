#include "navisworks/passed_over.h"

#include "platform/objects.h"
#include "tolmar/run_report.h"

namespace nv {

void reportPassedOver(const HxDbObject* object, const char* what, const std::string& why) {
    const HxDbObjectId id = object != nullptr ? object->objectId() : HxDbObjectId();
    const char* name = object != nullptr ? object->getDisplayName() : nullptr;
    tolmar::runReport().passedOver(id.toInt(), name != nullptr ? name : "", what, why);
}

}  // namespace nv
