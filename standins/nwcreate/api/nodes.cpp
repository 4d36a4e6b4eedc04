// Nodes, their attributes, materials and properties.
#include "gltf/json_escape.h"
#include "gltf/json_text.h"
#include "nwcreate/writing/node_tree.h"

using namespace nwcreate;

namespace {

LiNwcNode createNode(const char* call, bool isGeometry) {
    return guardedHandle<LiNwcNode>(call, [&](Library& lib) -> LiNwcNode {
        if (lib.current == nullptr) {
            badOrder(call, "there is no scene");
            return nullptr;
        }
        NodeSlot& slot = lib.nodes.create();
        slot.record.store = lib.current;
        slot.record.isGeometry = isGeometry;
        return give(lib, lib.nodes, slot);
    });
}

LiNwcStatus destroyNode(const char* call, LiNwcNode node) {
    return withRecord(call, &Library::nodes, node, [](Library& lib, NodeSlot& slot) {
        releaseNode(lib, slot);
        return LI_NWC_OK;
    });
}

LiNwcAttribute createAttribute(const char* call, bool isMaterial) {
    return guardedHandle<LiNwcAttribute>(call, [isMaterial](Library& lib) {
        auto& slot = lib.attributes.create();
        slot.record.isMaterial = isMaterial;
        return give(lib, lib.attributes, slot);
    });
}

template <typename Body>
LiNwcStatus withAttribute(const char* call, LiNwcAttribute attribute, bool isMaterial, Body&& body) {
    return withRecord(call, &Library::attributes, attribute, [&](Library& lib, auto& slot) -> LiNwcStatus {
        return slot.record.isMaterial == isMaterial ? body(lib, slot.record) : badHandle(call);
    });
}

bool isPart(double value) {
    return value >= 0.0 && value <= 1.0;
}

LiNwcStatus setColor(const char* call, LiNwcMaterial material, Vec3 Material::*which, const Vec3& color) {
    return withAttribute(call, material, true, [&](Library&, AttributeRecord& record) -> LiNwcStatus {
        if (!isPart(color[0]) || !isPart(color[1]) || !isPart(color[2])) {
            return badValue(call, "no colour");
        }
        record.material.*which = color;
        record.numberedIn = nullptr;
        return LI_NWC_OK;
    });
}

// {"key":"...","value":"..."}, with "internalKey" and "internalValue" where there are some.
void addProperty(const char16_t* userName, const char16_t* internalName, const DataRecord& data, std::string& out) {
    out += out.empty() ? "" : ",";
    gltf::JsonText json(out);
    json.beginObject().key("key").string(textOf(userName));
    if (!textOf(internalName).empty()) {
        json.key("internalKey").string(textOf(internalName));
    }
    json.key("value").escaped(data.value);
    if (!data.internalName.empty()) {
        json.key("internalValue").escaped(data.internalName);
    }
    json.endObject();
}

}  // namespace

LiNwcGroup LiNwcGroupCreate(void) {
    return createNode(__func__, false);
}

LiNwcGeometry LiNwcGeometryCreate(void) {
    return createNode(__func__, true);
}

LiNwcStatus LiNwcGroupDestroy(LiNwcGroup group) {
    return withGroup(__func__, group, [](Library& lib, NodeSlot& slot) {
        releaseNode(lib, slot);
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcGroupAddNode(LiNwcGroup group, LiNwcNode node) {
    const char* const call = __func__;
    return withGroup(call, group, [&](Library& lib, NodeSlot& parent) -> LiNwcStatus {
        NodeSlot* child = lib.nodes.find(node);
        if (child == nullptr) {
            return badHandle(call);
        }
        const SceneStore* const store = parent.record.store;
        if (store == nullptr || child->record.store != store || child->record.isAttached() ||
            isAbove(lib, *child, parent)) {
            return badValue(call, "the node has a place already, or another scene, or would stand below itself");
        }
        addChild(parent, *child);
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcGroupSetLayer(LiNwcGroup group, int layer) {
    return withGroup(__func__, group, [layer](Library&, NodeSlot& slot) {
        slot.record.isLayer = layer != 0;
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcNodeSetName(LiNwcNode node, const char16_t* name) {
    return withRecord(__func__, &Library::nodes, node, [name](Library&, NodeSlot& slot) {
        slot.record.name.clear();
        gltf::appendEscaped(slot.record.name, textOf(name));
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcNodeAddAttribute(LiNwcNode node, LiNwcAttribute attribute) {
    const char* const call = __func__;
    return withRecord(call, &Library::nodes, node, [&](Library& lib, NodeSlot& slot) -> LiNwcStatus {
        auto* found = lib.attributes.find(attribute);
        if (found == nullptr) {
            return badHandle(call);
        }
        holdAttribute(slot, *found);
        return LI_NWC_OK;
    });
}

LiNwcNode LiNwcNodeCreateRef(LiNwcNode node) {
    return referenceTo(__func__, &Library::nodes, node);
}

LiNwcStatus LiNwcNodeDestroy(LiNwcNode node) {
    return destroyNode(__func__, node);
}

LiNwcMaterial LiNwcMaterialCreate(void) {
    return createAttribute(__func__, true);
}

LiNwcStatus LiNwcMaterialSetAmbientColor(LiNwcMaterial material, double r, double g, double b) {
    return setColor(__func__, material, &Material::ambient, {r, g, b});
}

LiNwcStatus LiNwcMaterialSetDiffuseColor(LiNwcMaterial material, double r, double g, double b) {
    return setColor(__func__, material, &Material::diffuse, {r, g, b});
}

LiNwcStatus LiNwcMaterialSetTransparency(LiNwcMaterial material, double transparency) {
    const char* const call = __func__;
    return withAttribute(call, material, true, [&](Library&, AttributeRecord& record) -> LiNwcStatus {
        if (!isPart(transparency)) {
            return badValue(call, "no transparency");
        }
        record.material.transparency = transparency;
        record.numberedIn = nullptr;
        return LI_NWC_OK;
    });
}

LiNwcPropertyAttribute LiNwcPropertyAttributeCreate(void) {
    return createAttribute(__func__, false);
}

LiNwcStatus LiNwcAttributeSetClassName(LiNwcAttribute attribute, const char16_t* userName,
                                       const char16_t* internalName) {
    return withRecord(__func__, &Library::attributes, attribute, [&](Library& lib, auto& slot) {
        slot.record.classNumber = lib.classes.numberOf(textOf(userName), textOf(internalName));
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcPropertyAttributeAddProperty(LiNwcPropertyAttribute attribute, const char16_t* userName,
                                              const char16_t* internalName, LiNwcData data) {
    const char* const call = __func__;
    return withAttribute(call, attribute, false, [&](Library& lib, AttributeRecord& record) -> LiNwcStatus {
        const auto* found = lib.data.find(data);
        if (found == nullptr) {
            return badHandle(call);
        }
        addProperty(userName, internalName, found->record, record.properties);
        return LI_NWC_OK;
    });
}

LiNwcAttribute LiNwcAttributeCreateRef(LiNwcAttribute attribute) {
    return referenceTo(__func__, &Library::attributes, attribute);
}

LiNwcStatus LiNwcAttributeDestroy(LiNwcAttribute attribute) {
    return withRecord(__func__, &Library::attributes, attribute, [](Library& lib, auto& slot) {
        if (lib.attributes.release(slot) && slot.holders == 0) {
            lib.attributes.recycle(slot);
        }
        return LI_NWC_OK;
    });
}

LiNwcData LiNwcDataCreate(void) {
    return guardedHandle<LiNwcData>(__func__, [](Library& lib) { return give(lib, lib.data, lib.data.create()); });
}

LiNwcStatus LiNwcDataSetName(LiNwcData data, const char16_t* value, const char16_t* internalName) {
    return withRecord(__func__, &Library::data, data, [&](Library&, auto& slot) {
        slot.record.clear();
        gltf::appendEscaped(slot.record.value, textOf(value));
        gltf::appendEscaped(slot.record.internalName, textOf(internalName));
        return LI_NWC_OK;
    });
}

LiNwcStatus LiNwcDataDestroy(LiNwcData data) {
    return destroyPlain(__func__, &Library::data, data);
}
