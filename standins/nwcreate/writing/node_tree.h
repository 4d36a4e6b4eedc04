// The life of nodes: standing below one another, being settled (written to the scene's spool, the record gone) and
// being dropped.
//
// A node is settled when its callers have given it back, it stands below something, and all its children are settled.
#pragma once

#include "nwcreate/store/library.h"

namespace nwcreate {

using NodeSlot = HandleTable<NodeRecord, LiNwcNode>::Slot;

// Both nodes of one scene, the child without a parent and not above the parent.
void addChild(NodeSlot& parent, NodeSlot& child);
void addRoot(SceneStore& store, NodeSlot& child);
bool isAbove(const Library& lib, const NodeSlot& upper, const NodeSlot& lower);

// With a group; a geometry is a handle of another kind here.
template <typename Body>
LiNwcStatus withGroup(const char* call, LiNwcGroup group, Body&& body) {
    return withRecord(call, &Library::nodes, group, [&](Library& lib, NodeSlot& slot) -> LiNwcStatus {
        return slot.record.isGeometry ? badHandle(call) : body(lib, slot);
    });
}

void holdAttribute(NodeSlot& node, HandleTable<AttributeRecord, LiNwcAttribute>::Slot& attribute);
void releaseAttribute(Library& lib, HandleTable<AttributeRecord, LiNwcAttribute>::Slot& attribute);

// A caller gives a reference back.
void releaseNode(Library& lib, NodeSlot& node);
// The scene is about to go: its nodes that callers still have become nodes of nothing.
void leaveScene(Library& lib, const SceneStore& store);

// What still is open in the tree of a scene, for writing it: the nodes follow the settled ones in numbering.
struct OpenNodes {
    std::string json;  // values of "nodes", separated by commas
    std::uint32_t count = 0;
    std::vector<std::uint32_t> roots;  // numbers of all roots in their order, settled ones among them
};
OpenNodes composeOpenNodes(Library& lib, SceneStore& store);

}  // namespace nwcreate
