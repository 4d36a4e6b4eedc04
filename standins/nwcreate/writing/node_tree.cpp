#include "nwcreate/writing/node_tree.h"

#include "nwcreate/writing/node_json.h"

#include <utility>

namespace nwcreate {

namespace {

void releaseAttributes(Library& lib, NodeRecord& node) {
    for (const std::uint32_t slot : node.attributes) {
        releaseAttribute(lib, lib.attributes.at(slot));
    }
    node.attributes.clear();
}

void cutStream(Library& lib, const NodeRecord& node) {
    if (node.stream != noSlot) {
        lib.streams.at(node.stream).record.geometry = noSlot;
    }
}

void recycle(Library& lib, NodeSlot& node) {
    cutStream(lib, node.record);
    releaseAttributes(lib, node.record);
    lib.nodes.recycle(node);
}

std::vector<NodeLink>& siblingsOf(Library& lib, NodeRecord& node) {
    return node.isRoot ? node.store->roots : lib.nodes.at(node.parent).record.children;
}

bool isReady(const NodeSlot& node) {
    return node.references == 0 && node.record.openChildren == 0;
}

// Settles the node, and then every ancestor that waited for it alone.
void settle(Library& lib, NodeSlot& first) {
    for (NodeSlot* node = &first; node != nullptr;) {
        NodeRecord& record = node->record;
        SceneStore& store = *record.store;
        const char* const end = writeNode(lib, record, store.nodeRoom(roomOfNode(lib, record)));
        siblingsOf(lib, record)[record.place] = {store.keepNode(end), true};
        NodeSlot* parent = record.isRoot ? nullptr : &lib.nodes.at(record.parent);
        recycle(lib, *node);
        node = nullptr;
        if (parent != nullptr && --parent->record.openChildren == 0 && isReady(*parent)) {
            node = parent;
        }
    }
}

// Drops a node that stands nowhere, with all below it that callers do not hold.
void drop(Library& lib, NodeSlot& first) {
    std::vector<std::uint32_t> open = {first.number};
    while (!open.empty()) {
        NodeSlot& node = lib.nodes.at(open.back());
        open.pop_back();
        for (const NodeLink& link : node.record.children) {
            if (link.isSettled) {
                continue;
            }
            NodeSlot& child = lib.nodes.at(link.number);
            child.record.parent = noSlot;
            if (child.references == 0) {
                open.push_back(child.number);
            }
        }
        recycle(lib, node);
    }
}

void leaveScene(Library& lib, NodeSlot& node) {
    if (node.references == 0) {
        recycle(lib, node);
        return;
    }
    NodeRecord& record = node.record;
    record.store = nullptr;
    record.parent = noSlot;
    record.isRoot = false;
    record.children.clear();
    record.openChildren = 0;
    record.shape.clear();
}

void standIn(std::vector<NodeLink>& siblings, NodeSlot& node) {
    node.record.place = static_cast<std::uint32_t>(siblings.size());
    siblings.push_back({node.number, false});
}

}  // namespace

void addChild(NodeSlot& parent, NodeSlot& child) {
    child.record.parent = parent.number;
    ++parent.record.openChildren;
    standIn(parent.record.children, child);
}

void addRoot(SceneStore& store, NodeSlot& child) {
    child.record.isRoot = true;
    standIn(store.roots, child);
}

bool isAbove(const Library& lib, const NodeSlot& upper, const NodeSlot& lower) {
    if (upper.record.openChildren == 0) {
        return upper.number == lower.number;
    }
    std::uint32_t at = lower.number;
    while (at != noSlot && at != upper.number) {
        at = lib.nodes.at(at).record.parent;
    }
    return at != noSlot;
}

void holdAttribute(NodeSlot& node, HandleTable<AttributeRecord, LiNwcAttribute>::Slot& attribute) {
    node.record.attributes.push_back(attribute.number);
    ++attribute.holders;
}

void releaseAttribute(Library& lib, HandleTable<AttributeRecord, LiNwcAttribute>::Slot& attribute) {
    if (--attribute.holders == 0 && attribute.references == 0) {
        lib.attributes.recycle(attribute);
    }
}

void releaseNode(Library& lib, NodeSlot& node) {
    if (!lib.nodes.release(node)) {
        return;
    }
    if (!node.record.isAttached()) {
        drop(lib, node);
    } else if (isReady(node)) {
        settle(lib, node);
    }
}

void leaveScene(Library& lib, const SceneStore& store) {
    lib.attributes.forEach([&store](auto& slot) {
        if (slot.record.numberedIn == &store) {
            slot.record.numberedIn = nullptr;
        }
    });
    lib.shapes.forEach([&store](auto& slot) {
        if (slot.record.store == &store) {
            slot.record.store = nullptr;
        }
    });
    lib.nodes.forEach([&lib, &store](NodeSlot& slot) {
        if (slot.record.store == &store) {
            leaveScene(lib, slot);
        }
    });
}

OpenNodes composeOpenNodes(Library& lib, SceneStore& store) {
    OpenNodes open;
    // Children first: a node is composed when all its open children have their numbers.
    std::vector<std::pair<std::uint32_t, std::size_t>> path;
    const auto finish = [&](NodeRecord& node) {
        node.openNumber = store.nodeCount() + open.count++;
        open.json += open.json.empty() ? "" : ",";
        const std::size_t before = open.json.size();
        open.json.resize(before + roomOfNode(lib, node));
        open.json.resize(static_cast<std::size_t>(writeNode(lib, node, open.json.data() + before) - open.json.data()));
    };
    for (const NodeLink& root : store.roots) {
        if (!root.isSettled) {
            path.emplace_back(root.number, 0);
        }
        while (!path.empty()) {
            NodeRecord& node = lib.nodes.at(path.back().first).record;
            if (path.back().second == node.children.size()) {
                finish(node);
                path.pop_back();
                continue;
            }
            const NodeLink& child = node.children[path.back().second++];
            if (!child.isSettled) {
                path.emplace_back(child.number, 0);
            }
        }
        open.roots.push_back(root.isSettled ? root.number : lib.nodes.at(root.number).record.openNumber);
    }
    return open;
}

}  // namespace nwcreate
