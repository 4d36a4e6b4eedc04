#include "max/tree.h"

#include "max/names.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/tree_walker.h"
#include "tolmar/text.h"

namespace maxfile {

namespace {

// Whether getAllSubObjects of the node would give anything, at the price of the way to the first object.
bool hasObjectsBelow(HxDbTreeNode& node) {
    TreeWalker walker(&node);
    for (walker.next(); !walker.done(); walker.next()) {
        if (objectOfNode(walker.current()) != nullptr) {
            return true;
        }
    }
    return false;
}

bool isBareNode(const HxDbObject& object) {
    return object.isKindOf(HextSite::desc()) || object.isKindOf(HextZone::desc()) ||
           object.isKindOf(HextZoneDirectory::desc());
}

// Managers below a node have elements of their own.
void reportObject(const HxDbObject& object, const char* why) {
    if (!object.isKindOf(HextNameNode::desc())) {
        reportLeftOut({&object, objectName(object), "object"}, why);
    }
}

}  // namespace

void MaxTreeWriter::writeTree(HxDbTreeNode* root) {
    for (TreeWalker walker(root); !walker.done(); walker.next()) {
        HxDbTreeNode& node = *walker.current();
        const HxDbObject* object = objectOfNode(&node);
        if (object == nullptr) {
            reportLeftOutNode(node, "node", "its object does not open");
        } else if (hasObjectsBelow(node)) {
            writeNode(node, *object);
            ++id_;
        }
    }
}

void MaxTreeWriter::writeNode(const HxDbTreeNode& node, const HxDbObject& object) {
    const std::size_t replaced = geometry_.replacedTexts();
    const bool isWorld = object.isKindOf(HextWorld::desc());
    const ElementPair elements = isWorld ? addWorld(node, object) : addNode(node);
    if (geometry_.replacedTexts() != replaced) {
        reportLeftOutNode(node, "node", "its name holds characters that XML cannot hold");
    }
    if (elements.geometry == nullptr) {
        reportLeftOutNode(node, "node", "its parent has no element");
    }
    if (!isWorld && !isBareNode(object)) {
        writeObjects(node, elements);
    }
}

ElementPair MaxTreeWriter::addElements(const ElementPair& parents, std::string_view name) {
    const auto add = [&](MaxDocument& document, XmlNode* parent) {
        XmlNode* element = document.element("object");
        document.addInteger(*element, "id", id_);
        document.addText(*element, "Name", name);
        parent->append_node(element);
        return element;
    };
    return {add(geometry_, parents.geometry), add(properties_, parents.properties)};
}

ElementPair MaxTreeWriter::addWorld(const HxDbTreeNode& node, const HxDbObject& object) {
    const char* name = node.getName();
    if (name == nullptr) {
        name = object.database()->dbName();
    }
    return elements_[node.getTreeNodeValue()] =
               addElements({&geometry_.top(), &properties_.top()}, tolmar::textOrEmpty(name));
}

ElementPair MaxTreeWriter::addNode(const HxDbTreeNode& node) {
    const HxDbTreeNode* parent = node.getParent();
    const auto found = parent != nullptr ? elements_.find(parent->getTreeNodeValue()) : elements_.end();
    if (found == elements_.end()) {
        return {};
    }
    const ElementPair parents = found->second;
    return elements_[node.getTreeNodeValue()] =
               addElements(parents, std::string(tolmar::textOrEmpty(node.getName())) + "_" + std::to_string(id_));
}

void MaxTreeWriter::writeObjects(const HxDbTreeNode& node, const ElementPair& parents) {
    getAllSubObjects(&node, below_);
    for (const HxDbObject* object : below_) {
        if (object == nullptr) {
            continue;
        }
        ++id_;
        const HxDbSmrtlnEntity* smart = HxDbSmrtlnEntity::cast(object);
        if (smart == nullptr) {
            reportObject(*object, "it is no smart object");
        } else if (parents.geometry == nullptr) {
            reportObject(*object, "its manager has no element");
        } else {
            objects_.write(*smart, parents, id_);
        }
    }
}

}  // namespace maxfile
