#include "exportbase/object_properties.h"

#include "scripts/script_host.h"

void getObjectProperties(HxDbObjectId id, ParamList& list) {
    callGetReference(id, list);
}

bool isPipelineNumber(const HxDbObject* object, std::string_view key) {
    return key == "管线号" && object != nullptr && object->isKindOf(HxDbPipeSpec::desc());
}

std::string_view propertyKey(const HxDbObject* object, std::string_view key) {
    return isPipelineNumber(object, key) ? pipelineIdKey : key;
}
