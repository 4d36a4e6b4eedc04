#include "obmsdk/obm_tree.h"

#include "obmsdk/free_tree.h"

OBMModelTreeNode* OBMModelTreeNode::createNode(NodeKind) {
    return new OBMModelTreeNode;
}

OBMModelTreeNode* OBMModelTreeNode::createChildNode(NodeKind kind) {
    children_.push_back(createNode(kind));
    return children_.back();
}

void OBMModelTreeNode::destroy() {
    obm::freeTree(this, [](OBMModelTreeNode* node) { delete node; });
}

OBMAffineTransform::OBMAffineTransform() : matrix{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1} {}

OBMAffineTransform* OBMAffineTransform::create() {
    return new OBMAffineTransform;
}

void OBMAffineTransform::destroy() {
    delete this;
}

namespace {

bool isIdentity(const OBMAffineTransform& transform) {
    for (std::size_t i = 0; i < transform.matrix.size(); ++i) {
        if (transform.matrix[i] != (i % 5 == 0 ? 1.0 : 0.0)) {
            return false;
        }
    }
    return true;
}

}  // namespace

OBMInstanceTreeNode::~OBMInstanceTreeNode() {
    if (transform_ != nullptr) {
        transform_->destroy();
    }
}

// Nearly all transforms are the identity: they need no place in memory.
OBMInstanceTreeNode* OBMInstanceTreeNode::createNode(OBMAffineTransform* transform) {
    auto* node = new OBMInstanceTreeNode;
    if (transform != nullptr && isIdentity(*transform)) {
        transform->destroy();
        transform = nullptr;
    }
    node->transform_ = transform;
    return node;
}

OBMInstanceTreeNode* OBMInstanceTreeNode::createChildNode(OBMAffineTransform* transform) {
    children_.push_back(createNode(transform));
    return children_.back();
}

void OBMInstanceTreeNode::destroy() {
    obm::freeTree(this, [](OBMInstanceTreeNode* node) { delete node; });
}

OBMObjectProperty* OBMObjectProperty::create() {
    return new OBMObjectProperty;
}

void OBMObjectProperty::destroy() {
    delete this;
}
