// What the model keeps. Everything lives in the model's arenas and goes with it; nothing here owns memory of its own
// but the Model itself.
#pragma once

#include "plant/memory/arena.h"
#include "plant/memory/attribute_tables.h"
#include "plant/memory/id_index.h"
#include "plant/model.h"
#include "plant/model/members.h"
#include "plant/model/object_table.h"
#include "platform/bom_record.h"
#include "platform/objects.h"
#include "platform/primitives.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <tsl/robin_map.h>
#include <unordered_map>
#include <vector>

namespace plant {

struct ClassRow;

// An object by its id while a file is read, by its address once references are resolved.
union Reference {
    std::int64_t id;
    ObjectData* object;
};
struct ReferenceList {
    Reference* items = nullptr;
    std::uint32_t count = 0;
};

// One object that hangs at another one. `point` and `element` tell where the file says so.
struct Connection {
    Reference to;
    std::int16_t number;         // of the connection point; 0 where the other side alone tells
    std::uint16_t point;         // index in `points`
    std::uint32_t element : 30;  // index in an array of `to`
    std::uint32_t inArray : 1;   // `to` is an array
    std::uint32_t repeated : 1;  // the same object stands earlier among the connections
};
static_assert(sizeof(Connection) == 16);

struct AttributeList {
    const smrtln::BomRecord* records = nullptr;
    std::uint32_t count = 0;
    std::span<const smrtln::BomRecord> span() const { return {records, count}; }
};

struct Insulation {
    double thickness = 0;
    const char* material = nullptr;
    const char* code = nullptr;
};

struct TubeEnd {
    const char* size = nullptr;
    const char* endType = nullptr;
    double outer = 0;
    double inner = 0;
    std::int32_t section = 0;
    bool hasOuter = false;
};

struct PipeRun {
    const char* name = nullptr;
    ReferenceList items;
    AttributeList attributes;
};

struct Property {
    Member member;
    std::uint32_t count;  // elements of a list
    union {
        const char* text;
        double number;
        std::int64_t whole;
        Reference reference;
        Reference* references;
        const double* vector;  // three numbers
        const Insulation* insulation;
        const TubeEnd* ends;
        const HxDbSmrtlnPoint* points;
        ReferenceList* branches;
        PipeRun* runs;
    };
};
static_assert(sizeof(Property) == 16);

// One object. The platform's object and the tree node that stands for it lie inside.
struct ObjectData {
    ObjectData() : node(*this) {}
    ObjectData(const ObjectData&) = delete;
    ObjectData& operator=(const ObjectData&) = delete;

    HxDbObject& object() { return *std::launder(reinterpret_cast<HxDbObject*>(self)); }
    const HxDbObject& object() const { return *std::launder(reinterpret_cast<const HxDbObject*>(self)); }
    // That of the tree in which the object stands; the main one for an object without a tree.
    DatabaseData& database() const;
    // Null for an object that cannot be opened.
    HxDbObject* opened() { return available ? &object() : nullptr; }
    bool inTree() const { return parent != nullptr || son != nullptr || isRoot; }

    const Property* find(Member member) const;
    const char* text(Member member) const;
    double number(Member member) const;
    std::int64_t whole(Member member, std::int64_t otherwise = 0) const;
    // Null when there is none, and for an object that cannot be opened.
    HxDbObject* reference(Member member) const;
    // The first record of a key; null when there is none.
    const smrtln::BomRecord* attribute(std::string_view key) const;
    // The text of an attribute, also of one that is a number; null when there is none.
    const char* attributeText(std::string_view key) const;
    // The objects directly below in the tree. Ends also where a test has bent the tree into a cycle.
    std::vector<ObjectData*> sons() const;

    std::span<const HxDbSmrtlnPoint> pointSpan() const { return {points, pointCount}; }
    std::span<const Connection> connectionSpan() const { return {connections, connectionCount}; }
    std::span<Connection> connectionSpan() { return {connections, connectionCount}; }
    std::span<Property> propertySpan() { return {properties, propertyCount}; }
    std::span<HextPrimary* const> primitiveSpan() const { return {primitives, primitiveCount}; }

    alignas(HxDbObject) std::byte self[sizeof(HxDbObject)];
    HxDbTreeNode node;
    std::int64_t id = 0;
    Model* model = nullptr;
    ObjectData* parent = nullptr;
    ObjectData* son = nullptr;
    ObjectData* lastSon = nullptr;
    ObjectData* brother = nullptr;
    const char* name = nullptr;
    const smrtln::BomRecord* records = nullptr;
    const HxDbSmrtlnPoint* points = nullptr;
    Connection* connections = nullptr;
    HextPrimary** primitives = nullptr;
    Property* properties = nullptr;
    std::uint32_t recordCount = 0;
    std::uint32_t connectionCount = 0;
    std::uint32_t primitiveCount = 0;
    std::uint16_t pointCount = 0;
    std::int16_t color = 0;
    std::uint8_t classRow = 0;  // in classRows()
    std::uint8_t propertyCount = 0;
    std::uint8_t depth = 0;  // objects above it in the tree
    PartKind kind = PartKind::Default;
    bool available : 1 = true;
    bool hasShape : 1 = false;
    bool hasNodeId : 1 = false;   // the node's id stands in the model's list
    bool isRoot : 1 = false;      // of a database
    bool isResolved : 1 = false;  // connections hold addresses, while a file is read
};

inline ObjectData& ObjectTable::operator[](std::size_t index) const {
    return chunks_[index / chunkSize][index % chunkSize];
}

struct DatabaseData {
    DatabaseData(Model& m) : model(&m), object(*this) {}
    Model* model;
    HxDbDataBase object;
    const char* name = "";
    const char* shortName = "";
    Reference root{};  // id 0 or null: the database holds no data
};

using TextMap = std::map<std::string, const char*, std::less<>>;

struct ProjectData {
    const char* name = "project";
    const char* path = "";
    const char* user = "user";
    const char* platformPath = "";
    const char* database = nullptr;  // null: the main database's name
    int module = 65;
    int weldColor = 0;  // 0: none
    Reference currentManager{};
    TextMap designItems;
    TextMap projectItems;
};

class Model {
public:
    Model() = default;
    ~Model();
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;

    // By id of the object or of its node; null when there is none.
    HxDbObject* find(std::int64_t id);
    DatabaseData& mainDatabase() { return *main; }
    std::int64_t nodeId(const ObjectData& object) const;

    Arena arena;
    Arena texts;
    AttributeTables attributes;
    ObjectTable objects{arena};
    tsl::robin_map<std::int64_t, ObjectData*, SpreadId> nodeIds;      // those that a source gives
    tsl::robin_map<std::int64_t, std::int64_t, SpreadId> idsOfNodes;  // the same the other way, by object id
    std::deque<DatabaseData> databases;
    DatabaseData* main = nullptr;
    ProjectData project;
    std::vector<HextPrimary*> withDestructor;                               // primitives that own memory
    std::unordered_map<const smrtln::BomRecord*, std::string> numberTexts;  // texts stay where they are
    bool relinked = false;  // a test has bent the tree, which may now have a cycle
};

// The platform hands its objects out for reading; to itself they are its own.
inline ObjectData& dataOf(const HxDbObject& object) {
    return const_cast<ObjectData&>(object.data());
}

// An id held as decimal text: read as floating point and cut; 0 for what is no id.
std::int64_t idOfText(const char* text);

// Ids of nodes that the file does not give: that of the object and this.
inline constexpr std::int64_t nodeIdOffset = std::int64_t{1} << 46;

}  // namespace plant
