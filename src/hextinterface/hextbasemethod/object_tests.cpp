#include "hextinterface/hextbasemethod/object_tests.h"

#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "tolmar/text.h"

#include <string_view>

long long idNumber(const HxDbObject* object) {
    return object->objectId().toInt();
}

bool isWeld(const HxDbObject* object) {
    return object->isKindOf(HxDbTubeWeld::desc());
}

bool isTubeStop(const HxDbObject* object) {
    return object->isKindOf(HxDbTubeStop::desc());
}

bool hasPlainSize(const HxDbObject* object) {
    return getBomValue(object, "size1").find('*') == std::string_view::npos;
}

bool isObstruction(const HextPrimary3D& solid) {
    return std::string_view(tolmar::textOrEmpty(solid.getMaterial())) == obstructionMaterial;
}

HxDbObject* objectOf(const HxDbTreeNode& node) {
    HxDbObject* object = nullptr;
    return hxdbOpenObject(node.getTreeNodeValue(), object, 2) == Hext::eOk ? object : nullptr;
}
