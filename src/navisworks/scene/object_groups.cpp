#include "navisworks/scene/object_groups.h"

#include "exportbase/left_out_shapes.h"
#include "exportbase/object_properties.h"
#include "navisworks/library/session.h"
#include "navisworks/properties/attribute.h"
#include "navisworks/properties/object_path.h"
#include "platform/smrtln.h"
#include "scripts/node_name.h"
#include "tolmar/code_page.h"

namespace nv {

void ObjectGroups::addObjects(const HxDbTreeNode* treeNode, LiNwcGroup group, const std::vector<HxDbObject*>& objects) {
    const std::string path = objectPath(treeNode);
    for (const HxDbObject* object : objects) {
        steps_.takeAhead();
        const HxDbSmrtlnEntity* smart = HxDbSmrtlnEntity::cast(object);
        if (smart == nullptr) {
            reportNoSmartObject(object);
        } else if (isWanted(*smart)) {
            addObject(*smart, group, path);
        }
    }
}

bool ObjectGroups::isWanted(const HxDbSmrtlnEntity& object) const {
    const bool isUnwantedWeld = !options_.withWelds && object.isKindOf(HxDbTubeWeld::desc());
    return !isUnwantedWeld && !object.isKindOf(HxDbTubeStop::desc());
}

void ObjectGroups::addObject(const HxDbSmrtlnEntity& object, LiNwcGroup parent, const std::string& path) {
    const OwnedAttribute attribute = newPropertyAttribute();
    addObjectGroup(object, attribute.get(), parent, path);
    const HxDbBoltNutModel* bolts = smrtln::getAttachBoltNut(HxDbTubeModelSpec::cast(&object));
    if (bolts != nullptr) {
        addLayer(*bolts, nameOf(*bolts), attribute.get(), parent);
    }
    LibrarySession::check();
}

void ObjectGroups::addObjectGroup(const HxDbSmrtlnEntity& object, LiNwcPropertyAttribute attribute,
                                  LiNwcGroup parentGroup, const std::string& path) {
    if (options_.asksProperties) {
        getObjectProperties(object.objectId(), properties_);
    }
    const std::string name = nameOf(object);
    file_.beginObject(path, name);
    fillProperties(object, attribute);
    file_.endObject();
    addLayer(object, name, attribute, parentGroup);
}

void ObjectGroups::fillProperties(const HxDbSmrtlnEntity& object, LiNwcPropertyAttribute attribute) {
    for (const KVParams& entry : properties_) {
        value_.clear();
        appendKvText(value_, entry);
        const std::string_view key = propertyKey(&object, entry.key);
        const bool isPipelineId = isPipelineNumber(&object, entry.key);
        addProperty({key, value_, isPipelineId ? pipelineIdKey : std::string_view()}, attribute);
        file_.addText(key, value_);
    }
}

void ObjectGroups::addLayer(const HxDbSmrtlnEntity& object, const std::string& name, LiNwcPropertyAttribute attribute,
                            LiNwcGroup parent) {
    LibrarySession::setCurrentObject(&object);
    const OwnedGroup group(LiNwcGroupCreate());
    LiNwcNodeSetName(group.get(), tolmar::toWide(name).c_str());
    LiNwcNodeAddAttribute(group.get(), attribute);
    shapes_.addShape(object, group.get());
    LiNwcGroupAddNode(parent, group.get());
    LiNwcGroupSetLayer(group.get(), 1);
    LibrarySession::setCurrentObject(nullptr);
}

OwnedAttribute ObjectGroups::propertiesOf(const HxDbObject& object) {
    OwnedAttribute attribute = newPropertyAttribute();
    if (options_.asksProperties) {
        getObjectProperties(object.objectId(), properties_);
        addProperties(properties_.entries(), attribute.get());
    }
    return attribute;
}

std::string ObjectGroups::nameOf(const HxDbObject& object) const {
    return options_.asksNames ? nodeName(&object, true) : namelessName;
}

}  // namespace nv
