#include "obm/package_writer.h"

#include "exportbase/color_table.h"
#include "exportbase/material_code.h"
#include "obmsdk/obmsdk.h"
#include "tolmar/code_page.h"

#include <memory>

namespace pmodel {

namespace {

constexpr float translucentAlpha = 0.25F;
constexpr float colorRange = 255;
constexpr const char16_t* modelTreeName = u"模型树";
constexpr const char16_t* propertyCategory = u"Orna属性";
constexpr const char* instanceRootId = "-2";

OBMColor colorOf(int code) {
    const bool isInverted = code >= inverseCode;
    code -= isInverted ? inverseCode : 0;
    const bool isTranslucent = code >= obstructionCode;
    code -= isTranslucent ? obstructionCode : 0;
    float rgb[3] = {0, 0, 0};
    colorToRgb(code, rgb);
    for (float& part : rgb) {
        part = (isInverted ? colorRange - part : part) / colorRange;
    }
    return {rgb[0], rgb[1], rgb[2], isTranslucent ? translucentAlpha : 1.0F};
}

void fillModelNode(OBMModelTreeNode& node, const ObmNode& record) {
    node.setDatabaseId(record.databaseId);
    node.setNodeName(record.name);
    node.setNodeType(OBMModelTreeNode::Element);
    for (const ObmNode* child : record.children) {
        fillModelNode(*node.createChildNode(OBMModelTreeNode::Child), *child);
    }
}

void addInstances(OBMInstanceTreeNode& node, const ObmNode& record) {
    for (std::size_t j = 0; j < record.geometryIds.size(); ++j) {
        OBMInstanceTreeNode* instance = node.createChildNode(OBMAffineTransform::create());
        instance->setType(OBMInstanceTreeNode::Geometry);
        instance->setGeometryId(record.geometryIds[j]);
        instance->setDatabaseId(record.databaseId);
        instance->setMaterialId(materialName(record.materials[j]));
    }
}

void addInstanceChildren(OBMInstanceTreeNode& node, const ObmNode& record) {
    for (const ObmNode* child : record.children) {
        OBMInstanceTreeNode* group = node.createChildNode(nullptr);
        group->setDatabaseId(child->databaseId);
        group->setType(OBMInstanceTreeNode::Group);
        addInstances(*group, *child);
        addInstanceChildren(*group, *child);
    }
}

struct DestroyProperty {
    void operator()(OBMObjectProperty* property) const { property->destroy(); }
};

void addProperty(OBM3dPackage& package, const ObmNode& record, const PropertyMap::Entry& entry) {
    const std::unique_ptr<OBMObjectProperty, DestroyProperty> property(OBMObjectProperty::create());
    property->setName(tolmar::toWide(*entry.name));
    property->setCategory(propertyCategory);
    property->setObjectDatabaseId(record.databaseId);
    property->setValueType("String");
    property->setValue(tolmar::toWide(entry.value));
    package.addObjectProperty(property.get());
}

}  // namespace

void writeMaterials(OBM3dPackage& package) {
    for (const int code : materialCodes()) {
        const OBMColor color = colorOf(code);
        OBMMaterial* material = OBMMaterial::create();
        material->setName(materialName(code));
        material->setId(materialName(code));
        material->setTextureColor(OBMMaterial::Diffuse, color);
        material->setTextureColor(OBMMaterial::Specular, {1, 1, 1, 1});
        material->setTextureColor(OBMMaterial::Ambient, color);
        material->setTransparency(1 - color.a);
        package.addMaterial(material);
    }
}

void writeModelTree(OBM3dPackage& package, const ObmNode& root) {
    OBMModelTreeNode* node = OBMModelTreeNode::createNode(OBMModelTreeNode::Root);
    fillModelNode(*node, root);
    package.addModelTree(modelTreeName, node);
}

void writeInstanceTree(OBM3dPackage& package, const ObmNode& root) {
    OBMInstanceTreeNode* node = OBMInstanceTreeNode::createNode(nullptr);
    node->setDatabaseId(instanceRootId);
    addInstanceChildren(*node, root);
    package.setInstanceTree(node);
}

void writeProperties(OBM3dPackage& package, const ObmNode& root) {
    for (const PropertyMap::Entry& entry : root.properties) {
        addProperty(package, root, entry);
    }
    for (const ObmNode* child : root.children) {
        writeProperties(package, *child);
    }
}

}  // namespace pmodel
