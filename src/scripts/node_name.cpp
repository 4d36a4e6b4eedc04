#include "scripts/node_name.h"

#include "platform/objects.h"
#include "scripts/script_host.h"

std::string nodeName(const HxDbObject* object, bool isPipelineObject) {
    const HxDbObjectId id = object != nullptr ? object->objectId() : HxDbObjectId();
    std::string name = getNodeName(id, isPipelineObject);
    return name.empty() ? namelessName : name;
}
