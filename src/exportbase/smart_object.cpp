#include "exportbase/smart_object.h"

#include "platform/left_out.h"

const HxDbSmrtlnEntity* smartObject(const HxDbObject* object) {
    const HxDbSmrtlnEntity* smart = HxDbSmrtlnEntity::cast(object);
    if (smart == nullptr && object != nullptr && !object->isKindOf(HextNameNode::desc())) {
        reportLeftOut(object, "object", "it is no smart object");
    }
    return smart;
}
