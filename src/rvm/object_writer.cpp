#include "rvm/object_writer.h"

#include "exportbase/left_out_shapes.h"
#include "platform/left_out.h"
#include "platform/primaries.h"
#include "platform/smrtln.h"
#include "rvm/shapes/object_material.h"
#include "tolmar/code_page.h"

#include <algorithm>

namespace rvm {

void ObjectWriter::writeObjects(const std::vector<HxDbObject*>& objects, HxDbObjectId id, std::string_view name,
                                bool isPipeline) {
    if (objects.empty()) {
        return;
    }
    pair_.text().writeElementStart(name, elementIndent(levelManager));
    pair_.text().writeElementAttributes(id, levelManager);
    nameTable_.clear();
    siblings_.clear();
    std::for_each_n(objects.begin(), std::min(CadGiDraw::shapesAhead, objects.size()), CadGiDraw::expectPrimarys);
    for (std::size_t i = 0; i < objects.size(); ++i) {
        if (i + CadGiDraw::shapesAhead < objects.size()) {
            CadGiDraw::expectPrimarys(objects[i + CadGiDraw::shapesAhead]);
        }
        const HxDbSmrtlnEntity* smart = HxDbSmrtlnEntity::cast(objects[i]);
        if (smart == nullptr) {
            reportNoSmartObject(objects[i]);
        } else if (!smart->isKindOf(HxDbTubeWeld::desc())) {
            writeObject(*smart, isPipeline);
        }
    }
    pair_.text().writeElementEnd(elementIndent(levelManager));
}

void ObjectWriter::writeObject(const HxDbSmrtlnEntity& object, bool isPipeline) {
    if (!takeShape(object)) {
        return;
    }
    const std::string name = objectName(object, isPipeline);
    const std::string_view indent = elementIndent(levelObject);
    pair_.text().writeElementStart(name, indent);
    pair_.text().writeElementAttributes(object.objectId(), levelObject);
    pair_.text().writeElementEnd(indent);
    writeGroup(object, name);
}

// Items that are no solids stand in the run report alone.
bool ObjectWriter::takeShape(const HxDbSmrtlnEntity& object) {
    obstructions_.clear();
    solids_.clear();
    HextPrimaryView shape;
    const Hext::ErrorStatus status = viewPrimaries(&object, shape, false, false);
    if (status != Hext::eOk) {
        reportLeftOut(&object, "object",
                      status == eNotWanted ? "bolts have no place in an RVM file" : "it has no shape");
        return false;
    }
    for (const HextPrimary* primitive : shape) {
        if (const HextPrimary3D* solid = HextPrimary3D::cast(primitive)) {
            (isObstruction(*solid) ? obstructions_ : solids_).push_back(solid);
        } else {
            leftOut_.add(*primitive, "it is no solid");
        }
    }
    leftOut_.report(object);
    return true;
}

std::string ObjectWriter::objectName(const HxDbSmrtlnEntity& object, bool isPipeline) {
    std::string name = pair_.nameOf(&object, isPipeline);
    if (isPipeline) {
        const int use = ++nameTable_[name];
        if (use > 1) {
            name += std::to_string(use);
        }
    }
    return pair_.options().compat ? siblings_.unique(name) : name;
}

void ObjectWriter::writeGroup(const HxDbSmrtlnEntity& object, const std::string& name) {
    const std::uint32_t material = objectMaterial(object);
    pair_.rvm().writeGroupBegin(tolmar::toUtf8(name), material);
    pair_.primitives().startObject(object.objectId().toInt(), name);
    if (!obstructions_.empty()) {
        pair_.primitives().writePrimitiveList(obstructions_, true, material);
    }
    pair_.primitives().writePrimitiveList(solids_, false, material);
    pair_.rvm().writeGroupEnd();
}

}  // namespace rvm
