#include "resolver.h"

#include "class_table.h"
#include "connections.h"
#include "refusal.h"

#include <string>
#include <string_view>

namespace plant {

namespace {

// Calls `body`, giving a refusal its place within the object.
template <typename Body>
void inObject(std::size_t index, Body body) {
    try {
        body();
    } catch (Refusal& refusal) {
        refusal.within(index);
        refusal.within("objects");
        throw;
    }
}
template <typename Body>
void inMember(std::string_view member, Body body) {
    try {
        body();
    } catch (Refusal& refusal) {
        refusal.within(member);
        throw;
    }
}
template <typename Body>
void inElement(std::size_t index, Body body) {
    try {
        body();
    } catch (Refusal& refusal) {
        refusal.within(index);
        throw;
    }
}

void resolve(Model& model, Reference& reference, const HxRxClass* target) {
    const std::int64_t id = reference.id;
    ObjectData* object = model.objects.find(id);
    if (object == nullptr) {
        refuse("no object " + std::to_string(id));
    }
    if (target != nullptr && !object->object().isKindOf(target)) {
        refuse("object " + std::to_string(id) + " is a " + object->object().isA()->name() + ", a " + target->name() +
               " expected");
    }
    reference.object = object;
}

void resolveList(Model& model, const ReferenceList& list, const HxRxClass* target) {
    for (std::uint32_t i = 0; i < list.count; ++i) {
        inElement(i, [&] { resolve(model, list.items[i], target); });
    }
}

void resolveRuns(Model& model, const Property& property, const HxRxClass* target) {
    for (std::uint32_t i = 0; i < property.count; ++i) {
        inElement(i, [&] { inMember("items", [&] { resolveList(model, property.runs[i].items, target); }); });
    }
}

void resolveBranches(Model& model, const Property& property, const HxRxClass* target) {
    for (std::uint32_t i = 0; i < property.count; ++i) {
        inElement(i, [&] { resolveList(model, property.branches[i], target); });
    }
}

void resolveProperty(Model& model, Property& property) {
    const MemberRow& row = memberRow(property.member);
    switch (row.reading) {
    case Reading::Reference:
        return resolve(model, property.reference, row.target);
    case Reading::References:
        return resolveList(model, {property.references, property.count}, row.target);
    case Reading::Branches:
        return resolveBranches(model, property, row.target);
    case Reading::Runs:
        return resolveRuns(model, property, row.target);
    default:
        return;
    }
}

void resolveConnection(Model& model, Connection& connection) {
    try {
        resolve(model, connection.to, HxDbSmrtlnEntity::desc());
    } catch (Refusal& refusal) {
        if (connection.inArray) {
            refusal.within(std::size_t{connection.element});
        }
        refusal.within("to");
        refusal.within(std::size_t{connection.point});
        refusal.within("points");
        throw;
    }
}

// The nodes of the tree are objects with ids of their own; none may be that of an object or of another node.
void checkNodeId(const Model& model, const ObjectData& object) {
    const std::int64_t id = model.nodeId(object);
    const ObjectData* standsForId = id > nodeIdOffset ? model.objects.find(id - nodeIdOffset) : nullptr;
    const bool otherNode = object.hasNodeId ? standsForId != nullptr && !standsForId->hasNodeId : model.nodeIds.contains(id);
    if (id > largestId || otherNode || model.objects.find(id) != nullptr) {
        inMember("node", [&] {
            refuse("id " + std::to_string(id) + " of the tree node is " + (id > largestId ? "too large" : "taken"));
        });
    }
}

bool mayCollide(const Model& model, const ObjectData& object) {
    return object.hasNodeId || (object.inTree() && (model.objects.largestId() > nodeIdOffset || !model.nodeIds.empty()));
}

void resolveObject(Model& model, ObjectData& object) {
    for (Property& property : object.propertySpan()) {
        inMember(memberRow(property.member).name, [&] { resolveProperty(model, property); });
    }
    for (std::uint32_t i = 0; i < object.connectionCount; ++i) {
        resolveConnection(model, object.connections[i]);
    }
    if (mayCollide(model, object)) {
        checkNodeId(model, object);
    }
}

// Databases stand in the tree from the root down; parents stand earlier than their sons.
void findDatabase(Model& model, ObjectData& object) {
    if (object.parent != nullptr) {
        object.database = object.parent->database;
    } else if (!object.isRoot) {
        object.database = model.main;
    }
}

void resolveRoots(Model& model) {
    for (std::size_t i = 0; i < model.databases.size(); ++i) {
        DatabaseData& database = model.databases[i];
        if (database.root.id == 0) {
            continue;
        }
        try {
            resolve(model, database.root, nullptr);
            ObjectData& root = *database.root.object;
            if (root.parent != nullptr || root.isRoot) {
                refuse("object " + std::to_string(root.id) + " has a place in a tree already");
            }
            root.isRoot = true;
            root.database = &database;
        } catch (Refusal& refusal) {
            refusal.within("root");
            refusal.within(i);
            refusal.within("databases");
            throw;
        }
    }
}

void resolveProject(Model& model) {
    Reference& manager = model.project.currentManager;
    if (manager.id != 0) {
        inMember("project", [&] { inMember("currentManager", [&] { resolve(model, manager, nullptr); }); });
    }
}

}  // namespace

void resolveModel(Model& model) {
    resolveProject(model);
    resolveRoots(model);
    ConnectionTier tier;
    for (std::size_t i = 0; i < model.objects.size(); ++i) {
        ObjectData& object = model.objects[i];
        findDatabase(model, object);
        if (object.propertyCount != 0 || object.connectionCount != 0 || mayCollide(model, object)) {
            inObject(i, [&] { resolveObject(model, object); });
            tier.visit(object);
        }
    }
    tier.tie(model);
}

}  // namespace plant
