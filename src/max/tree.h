// The model tree in both documents of MAXOUT, under the same running ids.
#pragma once

#include "max/object.h"
#include "platform/objects.h"

#include <unordered_map>

namespace maxfile {

class MaxTreeWriter {
public:
    // The documents and the texts must outlive the writer.
    MaxTreeWriter(MaxDocument& geometry, MaxDocument& properties, const ProjectCodes& codes)
        : geometry_(geometry), properties_(properties), objects_(geometry, properties, codes) {}

    // Adds the tree of a root, parents before children. Nodes with no object below them have no element and no id.
    void writeTree(HxDbTreeNode* root);

private:
    void writeNode(const HxDbTreeNode& node, const HxDbObject& object);
    ElementPair addWorld(const HxDbTreeNode& node, const HxDbObject& object);
    // Under the elements of the parent node; null when there are none.
    ElementPair addNode(const HxDbTreeNode& node);
    ElementPair addElements(const ElementPair& parents, std::string_view name);
    void writeObjects(const HxDbTreeNode& node, const ElementPair& parents);

    MaxDocument& geometry_;
    MaxDocument& properties_;
    MaxObjectWriter objects_;
    std::unordered_map<HxDbObjectId, ElementPair> elements_;  // by the value of the tree node
    std::vector<HxDbObject*> below_;
    std::int64_t id_ = 1;
};

}  // namespace maxfile
