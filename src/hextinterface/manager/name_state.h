// What a NameManager holds, and what its source files share.
#pragma once

#include "hextinterface/manager/component_key.h"
#include "hextinterface/manager/name_manager.h"
#include "hextinterface/manager/name_table.h"
#include "hextinterface/manager/type_mapping.h"
#include "platform/attribute_cache.h"
#include "platform/id_pages.h"

#include <unordered_map>
#include <utility>
#include <vector>

namespace naming {

template <typename T>
bool isA(const HxDbObject* object) {
    return T::cast(object) != nullptr;
}
HxDbObjectId idOf(const HxDbObject* object);  // invalid for null
// A platform text that may be null.
inline std::string_view textOf(const char* text) {
    return text != nullptr ? text : std::string_view();
}

// Longest stem in front of a suffix that tells the element's type.
inline constexpr std::size_t stemLength = 46;
std::string stemWith(std::string_view stem, std::string_view suffix, std::size_t length = stemLength);

inline constexpr std::string_view namePrefix = "ORNA_";
std::string_view withoutPrefix(std::string_view name);

void removeBlanks(std::string& text);

// Texts by object id, no two of which are equal when they are given.
class UniqueTexts {
public:
    // Null when the id has none.
    const std::string* find(HxDbObjectId id) const;
    // Stores the text; one that some id has already gets `separator` and the number behind it, which counts up.
    const std::string& add(HxDbObjectId id, std::string text, std::string_view separator, int& number);

private:
    TextTable texts_;
    std::unordered_map<HxDbObjectId, std::uint32_t> numbers_;
};

// What is known of a stop at the end of a branch. The platform does not tell any of it, so records stay as they are
// made, and an end tag other than 1 and 2 meets nothing.
struct BranchStop {
    int number = 0;
    int endTag = 0;
    std::string text;
    HxGePoint3D position;
    HxGeVector3D direction;
};
BranchStop readBranchStop(const HxDbTubeStop& stop);
bool meets(const BranchStop& a, const BranchStop& b);

// Final equipment names by object, and by base name.
class BoundEquipment {
public:
    // False when the name is taken.
    bool bind(HxDbObjectId id, std::string_view baseName, std::string_view finalName);
    const std::string& finalName(HxDbObjectId id) const;
    bool hasBase(std::string_view baseName) const;

private:
    struct Names {
        std::string base, full;
    };
    void count(const Names& names, int by);

    std::unordered_map<HxDbObjectId, Names> bound_;
    // How many objects have a base name, and how many a base name with a final name.
    std::map<std::string, int, std::less<>> bases_;
    std::map<std::pair<std::string, std::string>, int> pairs_;
};

// What is known of one object; null where it has not been asked for.
struct ObjectFacts {
    ComponentEntry* entry = nullptr;
    const std::string* gtype = nullptr;
    const std::string* branch = nullptr;
    const std::string* member = nullptr;
};

// Members of a branch by GType, counted from 1. Texts are told apart by their place, of which each has one.
class MemberCounters {
public:
    std::uint32_t next(const std::string* branch, const std::string* gtype);

private:
    struct Row {
        const std::string* branch;
        const std::string* gtype;
        std::uint32_t count;
    };
    FlatIndex index_;
    std::vector<Row> rows_;
};

}  // namespace naming

struct NameManager::State {
    naming::NameTable m_nameCreatedFlagMap;
    naming::CodeTables codes;
    naming::ComponentTable components;
    naming::TypeMapping mapping;

    naming::TextCounters gtypeCounters, shortCounters, branchCounters;
    naming::MemberCounters memberCounters;
    naming::TextTable gtypes, stypes;

    int sharedNumber = 0;  // one counter for pipes, sites and zones
    naming::UniqueTexts pipeNames, siteNames, zoneNames;

    IdPages<naming::ObjectFacts> facts;
    std::vector<std::pair<naming::BranchStop, const std::string*>> branchStops;

    std::string scratch;  // a name in the making, of an operation that calls no other

    InsulationTable insulation;
    naming::TextTable boltTexts;          // what a bolt stype stands for
    std::vector<std::string> boltStypes;  // by number of the text
    naming::BoundEquipment equipment;

    const std::string& put(std::string_view name, NameKind kind) { return m_nameCreatedFlagMap.put(name, kind); }
    naming::ObjectFacts& factsOf(const HxDbObject* object) { return facts[naming::idOf(object)]; }
    naming::ComponentEntry& entryOf(const HxDbObject* object);
    void setBranch(std::span<HxDbSmrtlnEntity* const> list, const std::string& branch);
    const std::string* branchOf(const HxDbObject* object) const;
};
