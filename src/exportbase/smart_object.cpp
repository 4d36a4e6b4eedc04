#include "exportbase/smart_object.h"

#include "tolmar/run_report.h"

const HxDbSmrtlnEntity* smartObject(const HxDbObject* object) {
    const HxDbSmrtlnEntity* smart = HxDbSmrtlnEntity::cast(object);
    if (smart == nullptr && object != nullptr && !object->isKindOf(HextNameNode::desc())) {
        const char* name = object->getDisplayName();
        tolmar::runReport().passedOver(object->objectId().toInt(), name != nullptr ? name : "", "object",
                                       "it is no smart object");
    }
    return smart;
}
