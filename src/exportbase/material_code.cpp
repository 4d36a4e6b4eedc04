#include "exportbase/material_code.h"

#include "platform/primaries.h"
#include "platform/smrtln.h"

int colorIndexOf(const HxDbSmrtlnEntity& object, int pipelineColor) {
    const int own = object.getColorIdx();
    return own == 0 && object.isKindOf(HxDbTubeModelSpec::desc()) ? pipelineColor : own;
}

ObjectColor objectColor(const HxDbSmrtlnEntity& object, int index) {
    const bool isPipe = object.isKindOf(HxDbPipeSpec::desc());
    const bool isFitting = !isPipe && object.isKindOf(HxDbTubeModelSpec::desc()) && !smrtln::isValve(&object);
    return {std::int64_t{index} + (isFitting ? inverseCode : 0), isPipe};
}

std::int64_t materialCode(const HextPrimary& primitive, const ObjectColor& color) {
    const std::int64_t code = color.baseCode + (isObstruction(primitive) ? obstructionCode : 0);
    const bool isForeign = color.isPipe && !primitive.isKindOf(HextCylinder3D::desc());
    return isForeign && code < inverseCode ? code + inverseCode : code;
}
