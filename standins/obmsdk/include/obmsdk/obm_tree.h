// The two trees of a 3D package and the properties of its objects.
//
// A node made by createChildNode belongs to its parent; `destroy` on the root frees a whole tree that no package has
// taken over.
#pragma once

#include "obmsdk/obm_types.h"

#include <array>
#include <vector>

// Node of a model tree: what a user sees.
class OBMSDK_API OBMModelTreeNode {
public:
    // `kind` is 1 for a root and 0 for a child.
    enum NodeKind : int { Child = 0, Root = 1 };
    enum NodeType : int { Element = 4 };

    static OBMModelTreeNode* createNode(NodeKind kind);
    OBMModelTreeNode* createChildNode(NodeKind kind);
    void destroy();

    void setDatabaseId(obm::Id id) { databaseId_ = id; }
    void setNodeName(obm::WideView name) { name_ = name; }
    void setNodeType(NodeType type) { type_ = type; }

    const std::string& databaseId() const { return databaseId_; }
    const obm::WideText& nodeName() const { return name_; }
    NodeType nodeType() const { return type_; }
    const std::vector<OBMModelTreeNode*>& children() const { return children_; }

private:
    OBMModelTreeNode() = default;
    ~OBMModelTreeNode() = default;

    obm::WideText name_;
    std::string databaseId_;
    std::vector<OBMModelTreeNode*> children_;
    NodeType type_ = Element;
};

// Where a node of the instance tree stands in its parent.
class OBMSDK_API OBMAffineTransform {
public:
    // The identity.
    static OBMAffineTransform* create();
    void destroy();
    // Column by column; the last row is 0, 0, 0, 1.
    std::array<double, 16> matrix;

private:
    OBMAffineTransform();
    ~OBMAffineTransform() = default;
};

// Node of the instance tree: where which mesh stands in which material.
class OBMSDK_API OBMInstanceTreeNode {
public:
    enum NodeType : int { Group = 1, Geometry = 2 };

    // The transform passes to the node; null is the identity.
    static OBMInstanceTreeNode* createNode(OBMAffineTransform* transform);
    OBMInstanceTreeNode* createChildNode(OBMAffineTransform* transform);
    void destroy();

    void setDatabaseId(obm::Id id) { databaseId_ = id; }
    void setType(NodeType type) { type_ = type; }
    void setGeometryId(obm::Id id) { geometryId_ = id; }
    void setMaterialId(obm::Id id) { materialId_ = id; }

    const std::string& databaseId() const { return databaseId_; }
    // 0 for a node whose type was not set.
    int type() const { return type_; }
    const std::string& geometryId() const { return geometryId_; }
    const std::string& materialId() const { return materialId_; }
    // Null for the identity.
    const OBMAffineTransform* transform() const { return transform_; }
    const std::vector<OBMInstanceTreeNode*>& children() const { return children_; }

private:
    OBMInstanceTreeNode() = default;
    ~OBMInstanceTreeNode();

    std::string databaseId_;
    std::string geometryId_;
    std::string materialId_;
    std::vector<OBMInstanceTreeNode*> children_;
    OBMAffineTransform* transform_ = nullptr;
    int type_ = 0;
};

// A property of the object with that database id.
class OBMSDK_API OBMObjectProperty {
public:
    static OBMObjectProperty* create();
    void destroy();

    void setName(obm::WideView name) { name_ = name; }
    void setCategory(obm::WideView category) { category_ = category; }
    void setObjectDatabaseId(obm::Id id) { databaseId_ = id; }
    // Such as "String".
    void setValueType(obm::Id type) { valueType_ = type; }
    void setValue(obm::WideView value) { value_ = value; }

    const obm::WideText& name() const { return name_; }
    const obm::WideText& category() const { return category_; }
    const std::string& objectDatabaseId() const { return databaseId_; }
    const std::string& valueType() const { return valueType_; }
    const obm::WideText& value() const { return value_; }

private:
    OBMObjectProperty() = default;
    ~OBMObjectProperty() = default;

    obm::WideText name_;
    obm::WideText category_;
    obm::WideText value_;
    std::string databaseId_;
    std::string valueType_;
};
