#include "plant/building/resolver.h"

#include "plant/model/class_table.h"
#include "plant/refusal.h"

#include <string>
#include <string_view>

namespace plant {

namespace {

// Calls visit(reference) for each element, with its place.
template <typename Visit>
void visitList(const ReferenceList& list, Visit visit) {
    for (std::size_t i = 0; i < list.count; ++i) {
        within(i, [&] { visit(list.items[i]); });
    }
}

// Calls visit(reference) for each reference of a property, with its place within the member.
template <typename Visit>
void visitProperty(Property& property, Reading reading, Visit visit) {
    switch (reading) {
    case Reading::Reference:
        return visit(property.reference);
    case Reading::References:
        return visitList({property.references, property.count}, visit);
    case Reading::Branches:
        for (std::size_t i = 0; i < property.count; ++i) {
            within(i, [&] { visitList(property.branches[i], visit); });
        }
        return;
    case Reading::Runs:
        for (std::size_t i = 0; i < property.count; ++i) {
            within(i, [&] { within(std::string_view("items"), [&] { visitList(property.runs[i].items, visit); }); });
        }
        return;
    default:
        return;
    }
}

void resolveReference(const Model& model, Reference& reference, const HxRxClass* target) {
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

void resolveConnection(const Model& model, Connection& connection) {
    try {
        resolveReference(model, connection.to, HxDbSmrtlnEntity::desc());
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

void resolveObject(const Model& model, ObjectData& object) {
    for (Property& property : object.propertySpan()) {
        const MemberRow& row = memberRow(property.member);
        within(row.name, [&] {
            visitProperty(property, row.reading,
                          [&](Reference& reference) { resolveReference(model, reference, row.target); });
        });
    }
    for (Connection& connection : object.connectionSpan()) {
        resolveConnection(model, connection);
    }
}

void resolveRoot(const Model& model, DatabaseData& database) {
    resolveReference(model, database.root, nullptr);
    ObjectData& root = *database.root.object;
    if (root.parent != nullptr || root.isRoot) {
        refuse("object " + std::to_string(root.id) + " has a place in a tree already");
    }
    root.isRoot = true;
}

void resolveRoots(Model& model) {
    for (std::size_t i = 0; i < model.databases.size(); ++i) {
        if (DatabaseData& database = model.databases[i]; database.root.id != 0) {
            about({RecordNumber::Kind::Database, i},
                  [&] { within(std::string_view("root"), [&] { resolveRoot(model, database); }); });
        }
    }
}

void resolveProject(Model& model) {
    Reference& manager = model.project.currentManager;
    if (manager.id != 0) {
        within(std::string_view("project.currentManager"), [&] { resolveReference(model, manager, nullptr); });
    }
}

// The nodes of the tree are objects with ids of their own; none may be that of an object or of another node.
void checkNodeId(const Model& model, const ObjectData& object) {
    const std::int64_t id = model.nodeId(object);
    const ObjectData* byDefault = id > nodeIdOffset ? model.objects.find(id - nodeIdOffset) : nullptr;
    const bool isTaken = object.hasNodeId ? byDefault != nullptr && byDefault->inTree() && !byDefault->hasNodeId
                                          : model.nodeIds.contains(id);
    if (id > largestId || isTaken || model.objects.find(id) != nullptr) {
        refuse("the id " + std::to_string(id) + " of the tree node is " + (id > largestId ? "too large" : "taken"));
    }
}

void checkNodeIds(const Model& model) {
    if (model.nodeIds.empty() && model.objects.largestId() <= nodeIdOffset) {
        return;
    }
    for (std::size_t i = 0; i < model.objects.size(); ++i) {
        const ObjectData& object = model.objects[i];
        if (object.hasNodeId || object.inTree()) {
            about({RecordNumber::Kind::Object, i},
                  [&] { within(std::string_view("node"), [&] { checkNodeId(model, object); }); });
        }
    }
}

}  // namespace

void Resolver::resolveNew() {
    for (; next_ < model_->objects.size(); ++next_) {
        ObjectData& object = model_->objects[next_];
        if (object.propertyCount == 0 && object.connectionCount == 0) {
            continue;
        }
        if (waits(object)) {
            waiting_.push_back(static_cast<std::uint32_t>(next_));
        } else {
            resolve(next_);
        }
    }
}

bool Resolver::waits(ObjectData& object) const {
    bool missing = false;
    for (Property& property : object.propertySpan()) {
        visitProperty(property, memberRow(property.member).reading, [&](const Reference& reference) {
            missing = missing || model_->objects.find(reference.id) == nullptr;
        });
    }
    for (const Connection& connection : object.connectionSpan()) {
        missing = missing || model_->objects.find(connection.to.id) == nullptr;
    }
    return missing;
}

void Resolver::resolve(std::size_t index) {
    ObjectData& object = model_->objects[index];
    about({RecordNumber::Kind::Object, index}, [&] { resolveObject(*model_, object); });
    tier_.visit(object, index);
}

void Resolver::finish() {
    resolveNew();
    resolveProject(*model_);
    resolveRoots(*model_);
    for (const std::uint32_t index : waiting_) {
        resolve(index);
    }
    checkNodeIds(*model_);
    tier_.tie(*model_);
}

}  // namespace plant
